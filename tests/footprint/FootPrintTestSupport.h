// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Helpers for the footprint tests.
#pragma once
#include <initializer_list>

#include "KFootPrint.h"

namespace kutil::test {

/// Initialises fp with the given points and, unless told not to, updates its dependencies.
inline int makeFootPrint(CKFootPrint& fp, std::initializer_list<_D3DVECTOR> points, bool update = true) {
  fp.FPInitialise();
  for (const _D3DVECTOR& p : points) fp.FPAddVertex(&p);
  return update ? fp.FPUpdateVertexDependencies() : 1;
}

/// The square (0, 0)-(10, 10) in x-z at height 0.
inline int makeSquare(CKFootPrint& fp) {
  return makeFootPrint(fp, {{0, 0, 0}, {10, 0, 0}, {10, 0, 10}, {0, 0, 10}});
}

}  // namespace kutil::test
