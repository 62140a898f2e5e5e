// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Helpers for the footprint tests.
#pragma once
#include <cmath>
#include <cstdio>
#include <initializer_list>
#include <string>
#include <utility>

#include "KFootPrint.h"
#include "TestSupport.h"

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

/// "x,y,z" rounded to four decimals, so that rounding noise does not show.
inline std::string str(const _D3DVECTOR& v) { return Shown(v).text; }

/// The current edge's start, or "none".
inline std::string edgeFrom(CKFootPrint& fp) {
  _D3DVECTOR v;
  return fp.FPGetEdgeFromVector(&v) == 1 ? str(v) : "none";
}

}  // namespace kutil::test
