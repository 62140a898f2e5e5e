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
inline std::string str(const _D3DVECTOR& v) {
  const auto r = [](float f) { return std::round(f * 1e4) / 1e4 + 0.0; };
  char text[96];
  std::snprintf(text, sizeof text, "%g,%g,%g", r(v.x), r(v.y), r(v.z));
  return text;
}

/// One value of a seq(): a number, a vector or a text.
struct Shown {
  std::string text;
  Shown(double v) {  // NOLINT: implicit on purpose
    char t[32];
    std::snprintf(t, sizeof t, "%g", std::round(v * 1e4) / 1e4 + 0.0);
    text = t;
  }
  Shown(int v) : text(std::to_string(v)) {}     // NOLINT
  Shown(const _D3DVECTOR& v) : text(str(v)) {}  // NOLINT
  Shown(std::string t) : text(std::move(t)) {}  // NOLINT
};

/// The values blank-separated. A braced list is evaluated left to right, so calls and the outputs
/// they write can be listed in the order they happen.
inline std::string seq(std::initializer_list<Shown> values) {
  std::string out;
  for (const Shown& v : values) out += (&v == values.begin() ? "" : " ") + v.text;
  return out;
}

/// The current edge's start, or "none".
inline std::string edgeFrom(CKFootPrint& fp) {
  _D3DVECTOR v;
  return fp.FPGetEdgeFromVector(&v) == 1 ? str(v) : "none";
}

}  // namespace kutil::test
