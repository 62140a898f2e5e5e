// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Small helpers shared by the generator tests.
#pragma once
#include <gtest/gtest.h>

#include <initializer_list>
#include <vector>

#include "KVGen.h"
#include "VGenInternals.h"

namespace kutil::test {

/// The generator's planes, cursors and tessellation, for checks the methods cannot make.
using GenInternals = detail::Internals<CKVGen>;

const float kPi = 3.14159265358979f;
const _D3DVECTOR kNoAxis = {0.0f, 0.0f, 0.0f};

/// A generator initialised on construction (the destructor terminates it).
struct Gen {
  CKVGen g;
  Gen() { g.KVInitialise(); }
  CKVGen* operator->() { return &g; }
  CKVGen& operator*() { return g; }
};

inline _D3DVECTOR vec(float x, float y, float z) { return _D3DVECTOR{x, y, z}; }

inline void addSeed(CKVGen& g, std::initializer_list<_D3DVECTOR> points) {
  for (const _D3DVECTOR& p : points) ASSERT_EQ(g.KVAddSeedVertex(&p), 1);
}

/// The square (0, 0) - (2, 2) in the x-y plane, counter-clockwise.
inline void addSquare(CKVGen& g) { addSeed(g, {vec(0, 0, 0), vec(2, 0, 0), vec(2, 2, 0), vec(0, 2, 0)}); }

/// The current plane's vertices in order.
inline std::vector<_D3DVECTOR> planeVertices(CKVGen& g) {
  std::vector<_D3DVECTOR> out;
  _D3DVECTOR p;
  for (int i = 0; i < 1000 && g.KVGetGenVertexByNumber(i, &p) == 1; ++i) out.push_back(p);
  return out;
}

inline void expectNear(const _D3DVECTOR& a, const _D3DVECTOR& b, float tol = 1e-4f) {
  EXPECT_NEAR(a.x, b.x, tol);
  EXPECT_NEAR(a.y, b.y, tol);
  EXPECT_NEAR(a.z, b.z, tol);
}

}  // namespace kutil::test
