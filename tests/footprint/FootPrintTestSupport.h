// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Helpers for the footprint tests.
#pragma once
#include <initializer_list>

#include "KFootPrint.h"

namespace kutil::test {

inline _D3DVECTOR vec(float x, float y, float z) {
  _D3DVECTOR v;
  v.x = x;
  v.y = y;
  v.z = z;
  return v;
}

/// Initialises fp with the given points (x, y, z triples) and updates its dependencies.
inline int makeFootPrint(CKFootPrint& fp, std::initializer_list<_D3DVECTOR> points, bool update = true) {
  fp.FPInitialise();
  for (const _D3DVECTOR& p : points) fp.FPAddVertex(&p);
  return update ? fp.FPUpdateVertexDependencies() : 1;
}

/// The square (0, 0)-(10, 10) in x-z at height y.
inline int makeSquare(CKFootPrint& fp, float y = 0.0f) {
  return makeFootPrint(fp, {vec(0, y, 0), vec(10, y, 0), vec(10, y, 10), vec(0, y, 10)});
}

}  // namespace kutil::test
