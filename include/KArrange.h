// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KArrange.h
/// CKArrange: the arrangement grid.
#pragma once
#include "KUtilBase.h"

/// The parameters by which a run of items is laid out: item type, first
/// position and orientation, and per-item, per-row and per-column steps.
/// Values are stored as given, never validated. Call CAInitialise first.
class KUTIL_API CKArrange {
 public:
  /// Sets the defaults (type 0, first position (0, -0.8, -0.4), direction +z,
  /// up +y, translation steps (12, 1), (5, 1), (2, 1), zero orientation steps). Returns 1.
  int CAInitialise();
  /// Nothing to release. Returns 1.
  int CATerminate();

  /// Stores the item type (-1 means unset). Returns 1.
  int CASetItemType(int type);
  /// Copies the item type out; 0 with out untouched while the type is -1 (or out is null).
  int CAGetItemType(int* type);

  /// Stores the first item's position. Returns 1.
  int CASetFirstPosition(float x, float y, float z);
  /// Copies the first item's position out. Returns 1, or 0 for a null pointer.
  int CAGetFirstPosition(float* x, float* y, float* z);

  /// Stores copies of the first item's direction and up (unnormalised). Returns 1, or 0 for a null pointer.
  int CASetFirstOrientation(const _D3DVECTOR* direction, const _D3DVECTOR* up);
  /// Copies the first item's direction and up out. Returns 1, or 0 for a null pointer.
  int CAGetFirstOrientation(_D3DVECTOR* direction, _D3DVECTOR* up);

  /// Stores the per-item orientation step. Returns 1.
  int CASetDeltaOrientation(int selector, float amount);
  /// Copies the per-item orientation step out. Returns 1, or 0 for a null pointer.
  int CAGetDeltaOrientation(int* selector, float* amount);
  /// Stores the per-item translation step. Returns 1.
  int CASetDeltaTranslation(int selector, float amount);
  /// Copies the per-item translation step out. Returns 1, or 0 for a null pointer.
  int CAGetDeltaTranslation(int* selector, float* amount);
  /// Stores the row-to-row orientation step. Returns 1.
  int CASetDRowOrientation(int selector, float amount);
  /// Copies the row-to-row orientation step out. Returns 1, or 0 for a null pointer.
  int CAGetDRowOrientation(int* selector, float* amount);
  /// Stores the row-to-row translation step. Returns 1.
  int CASetDRowTranslation(int selector, float amount);
  /// Copies the row-to-row translation step out. Returns 1, or 0 for a null pointer.
  int CAGetDRowTranslation(int* selector, float* amount);
  /// Stores the column-to-column orientation step. Returns 1.
  int CASetDColOrientation(int selector, float amount);
  /// Copies the column-to-column orientation step out. Returns 1, or 0 for a null pointer.
  int CAGetDColOrientation(int* selector, float* amount);
  /// Stores the column-to-column translation step. Returns 1.
  int CASetDColTranslation(int selector, float amount);
  /// Copies the column-to-column translation step out. Returns 1, or 0 for a null pointer.
  int CAGetDColTranslation(int* selector, float* amount);

 private:
  friend struct kutil::detail::Internals<CKArrange>;

  /// A step: what kind of change (the application's selector) and how much.
  struct Step {
    int selector;  ///< meaning defined by the laying-out application
    float amount;  ///< size of the step
  };

  int m_itemType{};            ///< item type, -1 when unset
  float m_firstPosition[3]{};  ///< first position stored x, z, y (raw copies of the record rely on it)
  _D3DVECTOR m_direction{};    ///< first orientation, direction
  _D3DVECTOR m_up{};           ///< first orientation, up
  Step m_deltaOrientation{};   ///< per-item orientation step
  Step m_deltaTranslation{};   ///< per-item translation step
  Step m_rowOrientation{};     ///< row orientation step
  Step m_rowTranslation{};     ///< row translation step
  Step m_colOrientation{};     ///< column orientation step
  Step m_colTranslation{};     ///< column translation step
};
