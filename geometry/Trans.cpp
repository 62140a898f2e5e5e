// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The camera transform: world -> camera -> perspective -> screen scale and back.

#include <cmath>
#include <cstring>

#include "KTrans.h"
#include "VectorDetail.h"

using kutil::detail::makeVector;

namespace {

constexpr double kNearPlane = 0.7;
constexpr double kFarPlane = 750.0;
constexpr double kDegreesPerZoom = 45.0;
constexpr double kScreenScale = 0.14705881;  // about 1/6.8 per pixel of view width
constexpr double kPi = 3.14159265358979323846;
constexpr double kDegreesPerRadian = 57.29577951308232;

void setZero(tagKFMATRIX* m) { std::memset(m->m, 0, sizeof m->m); }

}  // namespace

int CKTrans::KTInitialise() {
  m_reserved[0] = m_reserved[1] = m_reserved[2] = 0;
  m_position = makeVector(0.0, 0.0, 0.0);
  m_direction = makeVector(0.0, 0.0, 1.0);
  m_up = makeVector(0.0, 1.0, 0.0);
  m_zoom = 1.1;
  m_spare = 56.5;
  m_view.left = 0;
  m_view.top = 0;
  m_view.right = 640;
  m_view.bottom = 480;
  m_width = 640;
  // Deliberately 1.0, not 640/480: the aspect only changes through KTSetAspectRatio.
  m_aspect = 1.0;
  m_yaw = m_pitch = m_roll = 0.0;
  setZero(&m_translate);
  setZero(&m_yawMatrix);
  setZero(&m_pitchMatrix);
  setZero(&m_rollMatrix);
  setZero(&m_projection);
  m_scratch[0] = m_scratch[1] = makeVector(0.0, 0.0, 0.0);
  m_halfWidth = m_halfHeight = 1.0f;
  m_fov = m_horizontalFov = m_aspectCopy = 1.0;
  // Callers ignore the result; it has always been 0.
  return 0;
}

int CKTrans::KTSetCameraPosition(float x, float y, float z) {
  m_position = makeVector(x, y, z);
  return 1;
}

int CKTrans::KTSetCameraOrientation(const _D3DVECTOR* direction, const _D3DVECTOR* up) {
  if (!direction || !up) return 0;
  m_direction = *direction;
  m_up = *up;
  return 1;
}

int CKTrans::KTSetZoomFactor(double zoom) {
  m_zoom = zoom;
  return 1;
}

int CKTrans::KTSetAspectRatio(const RECT* rect) {
  if (!rect) return 0;
  m_view = *rect;
  m_width = static_cast<int>(rect->right - rect->left);
  // A zero height is not guarded: the aspect becomes infinite (or NaN).
  m_aspect = static_cast<double>(m_width) / static_cast<double>(rect->bottom - rect->top);
  return 1;
}

void CKTrans::fieldOfView(double* fov, double* horizontalFov, float* halfWidth, float* halfHeight,
                          double* aspect) const {
  *fov = m_zoom * kDegreesPerZoom;
  *halfHeight = static_cast<float>(std::tan(*fov * kPi / 180.0 / 2.0) * kNearPlane);
  *halfWidth = static_cast<float>(static_cast<double>(*halfHeight) * m_aspect);
  *horizontalFov = 2.0 * std::atan(static_cast<double>(*halfWidth) / kNearPlane) * kDegreesPerRadian;
  *aspect = m_aspect;
}

int CKTrans::KTGetFieldOfView(double* fov, double* horizontalFov, float* halfWidth, float* halfHeight,
                              double* aspect) {
  if (!fov || !horizontalFov || !halfWidth || !halfHeight || !aspect) return 0;
  fieldOfView(fov, horizontalFov, halfWidth, halfHeight, aspect);
  return 1;
}

int CKTrans::KTWorld2Screen(_D3DRMVECTOR4D* out, const _D3DVECTOR* world) {
  if (!out || !world) return 0;
  const _D3DVECTOR back = makeVector(-m_position.x, -m_position.y, -m_position.z);
  KUMtxMakeTranslate(&back, &m_translate);

  const float dx = m_direction.x, dy = m_direction.y, dz = m_direction.z;
  KUGetRotationalAngle(dz, dx, &m_yaw);
  KUMtxMakeYRot(-m_yaw, &m_yawMatrix);
  const double level = std::sqrt(static_cast<double>(dx) * dx + static_cast<double>(dz) * dz);
  KUGetRotationalAngle(static_cast<float>(level), dy, &m_pitch);
  KUMtxMakeXRot(m_pitch, &m_pitchMatrix);

  KUMtxMultiplyVect(&m_up, &m_yawMatrix, &m_scratch[0]);
  KUMtxMultiplyVect(&m_scratch[0], &m_pitchMatrix, &m_scratch[1]);
  KUGetRotationalAngle(m_scratch[1].y, m_scratch[1].x, &m_roll);
  KUMtxMakeZRot(m_roll, &m_rollMatrix);

  fieldOfView(&m_fov, &m_horizontalFov, &m_halfWidth, &m_halfHeight, &m_aspectCopy);
  // The horizontal half-width serves both screen axes: the aspect is carried
  // by the view width alone.
  const _D3DVECTOR frustum = makeVector(kNearPlane, m_halfWidth, kFarPlane);
  KUMtxMakeFrustrumToView(&frustum, &m_projection);

  KUMtxMultiplyVect(world, &m_translate, &m_scratch[0]);
  KUMtxMultiplyVect(&m_scratch[0], &m_yawMatrix, &m_scratch[1]);
  KUMtxMultiplyVect(&m_scratch[1], &m_pitchMatrix, &m_scratch[0]);
  KUMtxMultiplyVect(&m_scratch[0], &m_rollMatrix, &m_scratch[1]);
  const _D3DRMVECTOR4D v = {m_scratch[1].x, m_scratch[1].y, m_scratch[1].z, 1.0f};
  _D3DRMVECTOR4D h;
  KUMtxMultiplyVectHomog(&v, &m_projection, &h);

  // No division by w and no shift to the view centre: callers do both.
  const double s = m_width * kScreenScale;
  out->x = static_cast<float>(s * h.x);
  out->y = static_cast<float>(s * h.y);
  out->z = h.z;
  out->w = h.w;
  return 1;
}

int CKTrans::KTScreen2World(_D3DVECTOR* out, const _D3DRMVECTOR4D* screen) {
  if (!out || !screen) return 0;
  tagKFMATRIX T, Y, X, Z, Q;
  KUMtxMakeTranslate(&m_position, &T);
  KUMtxMakeYRot(m_yaw, &Y);
  KUMtxMakeXRot(-m_pitch, &X);
  KUMtxMakeZRot(-m_roll, &Z);
  const _D3DVECTOR frustum = makeVector(kNearPlane, m_halfWidth, kFarPlane);
  KUMtxMakeViewToFrustrum(&frustum, &Q);

  const double s = m_width * kScreenScale;
  const _D3DRMVECTOR4D scaled = {static_cast<float>(screen->x / s), static_cast<float>(screen->y / s),
                                 screen->z, screen->w};
  _D3DRMVECTOR4D h;
  KUMtxMultiplyVectHomog(&scaled, &Q, &h);

  // The matrices are exact inverses, so h.w is 1 for a projected point; it is
  // not divided out.
  _D3DVECTOR a = makeVector(h.x, h.y, h.z), b;
  KUMtxMultiplyVect(&a, &Z, &b);
  KUMtxMultiplyVect(&b, &X, &a);
  KUMtxMultiplyVect(&a, &Y, &b);
  KUMtxMultiplyVect(&b, &T, out);
  return 1;
}
