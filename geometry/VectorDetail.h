// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Small vector helpers shared by the geometry, footprint and generator code.
#pragma once
#include "KUtilBase.h"

namespace kutil::detail {

/// The vector (x, y, z), each component rounded to float once (a float argument passes unchanged).
inline _D3DVECTOR makeVector(double x, double y, double z) {
  _D3DVECTOR v;
  v.x = static_cast<float>(x);
  v.y = static_cast<float>(y);
  v.z = static_cast<float>(z);
  return v;
}

}  // namespace kutil::detail
