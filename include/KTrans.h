// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KTrans.h
/// CKTrans: the camera transform between world and screen.
#pragma once
#include "KUtilBase.h"
#include "KVector.h"

/// A perspective camera (position, direction, up, zoom, view rectangle) that
/// converts points between world space and its screen. Call KTInitialise first.
class KUTIL_API CKTrans {
 public:
  /// Sets the defaults: camera at the origin looking along +z with +y up,
  /// zoom 1.1, view 640 x 480 with aspect 1.0. Deliberately returns 0.
  int KTInitialise();
  /// Stores the camera position. Returns 1.
  int KTSetCameraPosition(float x, float y, float z);
  /// Stores direction and up as given (not normalised). Returns 1, or 0 for a null pointer.
  int KTSetCameraOrientation(const _D3DVECTOR* direction, const _D3DVECTOR* up);
  /// Stores the zoom factor; the field of view is 45 degrees per unit of zoom. Returns 1.
  int KTSetZoomFactor(double zoom);
  /// Stores the view rectangle, its width and the aspect width / height
  /// (infinite for a zero height). Returns 1, or 0 for a null pointer.
  int KTSetAspectRatio(const RECT* rect);
  /// Field of view and horizontal field of view (degrees), the view's half-width
  /// and half-height at the near plane, and the stored aspect. Returns 1, or 0 for a null pointer.
  int KTGetFieldOfView(double* fov, double* horizontalFov, float* halfWidth, float* halfHeight,
                       double* aspect);
  /// Projects a world point: out = (s*x, s*y, z, w) with s = width * 0.14705881;
  /// the caller divides x and y by w and adds the view centre. Returns 1, or 0 for a null pointer.
  int KTWorld2Screen(_D3DRMVECTOR4D* out, const _D3DVECTOR* world);
  /// Inverse of KTWorld2Screen with the angles and half-width its last call
  /// left behind. Returns 1, or 0 for a null pointer.
  int KTScreen2World(_D3DVECTOR* out, const _D3DRMVECTOR4D* screen);

 private:
  friend struct kutil::detail::Internals<CKTrans>;

  void fieldOfView(double* fov, double* horizontalFov, float* halfWidth, float* halfHeight,
                   double* aspect) const;

  int m_reserved[3]{};          ///< unused words kept for record compatibility
  _D3DVECTOR m_position{};      ///< camera position
  _D3DVECTOR m_direction{};     ///< camera direction, not normalised
  _D3DVECTOR m_up{};            ///< camera up, not normalised
  double m_zoom{};              ///< zoom factor
  double m_spare{};             ///< a setting this class does not read
  RECT m_view{};                ///< view rectangle
  int m_width{};                ///< view width in pixels
  double m_aspect{};            ///< width / height
  double m_yaw{};               ///< yaw of the last world-to-screen call
  double m_pitch{};             ///< pitch of the last world-to-screen call
  double m_roll{};              ///< roll of the last world-to-screen call
  tagKFMATRIX m_translate{};    ///< last translation matrix
  tagKFMATRIX m_yawMatrix{};    ///< last yaw matrix
  tagKFMATRIX m_pitchMatrix{};  ///< last pitch matrix
  tagKFMATRIX m_rollMatrix{};   ///< last roll matrix
  tagKFMATRIX m_projection{};   ///< last projection matrix
  _D3DVECTOR m_scratch[2];      ///< intermediate points of the last conversion
  float m_halfWidth{};          ///< view half-width at the near plane
  float m_halfHeight{};         ///< view half-height at the near plane
  double m_fov{};               ///< field of view, degrees
  double m_horizontalFov{};     ///< horizontal field of view, degrees
  double m_aspectCopy{};        ///< aspect as last reported
};
