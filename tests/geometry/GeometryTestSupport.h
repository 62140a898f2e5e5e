// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Small helpers shared by the geometry tests.
#pragma once
#include <gtest/gtest.h>

#include <cmath>

#include "KVector.h"

namespace kutil::test {

inline _D3DVECTOR vec(float x, float y, float z) {
  _D3DVECTOR v;
  v.x = x;
  v.y = y;
  v.z = z;
  return v;
}

inline ::testing::AssertionResult nearVec(const _D3DVECTOR& a, float x, float y, float z, float tol = 1e-5f) {
  if (std::fabs(a.x - x) <= tol && std::fabs(a.y - y) <= tol && std::fabs(a.z - z) <= tol)
    return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "(" << a.x << ", " << a.y << ", " << a.z << ") is not within "
                                       << tol << " of (" << x << ", " << y << ", " << z << ")";
}

inline ::testing::AssertionResult nearVec(const _D3DVECTOR& a, const _D3DVECTOR& b, float tol = 1e-5f) {
  return nearVec(a, b.x, b.y, b.z, tol);
}

}  // namespace kutil::test
