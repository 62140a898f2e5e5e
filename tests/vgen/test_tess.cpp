// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Seed tessellation through CKVGen: the small exact cases, failures and the triangle iteration.
#include <gtest/gtest.h>

#include <vector>

#include "VGenTestUtil.h"
#include "literal_tess.h"
#include "tess.h"

using kutil::test::addSeed;
using kutil::test::addSquare;
using kutil::test::Gen;
using kutil::test::Triple;
using kutil::test::vec;

namespace {

std::vector<Triple> allTriangles(CKVGen& g) {
  std::vector<Triple> out;
  Triple t;
  if (!g.KVGetFirstTesselatedTriangle(&t[0], &t[1], &t[2])) return out;
  do out.push_back(t);
  while (g.KVGetNextTesselatedTriangle(&t[0], &t[1], &t[2]) && out.size() < 100000);
  return out;
}

const kutil::detail::TessSegment* findSegment(CKVGen& g, int i, int j) {
  for (const auto& s : g.m_tessellation->segments)
    if (s.first == i && s.second == j) return &s;
  return nullptr;
}

}  // namespace

TEST(KVTessellation, SquareDropsTheFirstDiagonalAndReversalDescends) {
  Gen g;
  addSquare(g.g);
  ASSERT_EQ(g->KVTesselateSeedPlane(), 1);
  EXPECT_EQ(allTriangles(g.g), (std::vector<Triple>{{0, 1, 3}, {1, 2, 3}}));
  ASSERT_EQ(g->m_tessellation->segments.size(), 6u);  // four edges, two diagonals
  const auto* d02 = findSegment(g.g, 0, 2);
  const auto* d13 = findSegment(g.g, 1, 3);
  const auto* closing = findSegment(g.g, 0, 3);
  ASSERT_TRUE(d02 && d13 && closing);
  EXPECT_EQ(d02->removed, 1);
  EXPECT_EQ(d13->removed, 0);
  EXPECT_EQ(closing->boundary, 1);
  EXPECT_EQ(closing->crossings, -1);
  int a = -7, b = -7, c = -7;
  EXPECT_EQ(g->KVGetNextTesselatedTriangle(&a, &b, &c), 0);  // past the end, the cursor stays
  EXPECT_EQ(g->m_tessellation->triangleCursor, 1);
  EXPECT_EQ(g->KVGetNextTesselatedTriangle(nullptr, &b, &c), 0);

  g->KVSetNormalDirection(0);
  ASSERT_EQ(g->KVIsNormalReversalActive(), 1);
  EXPECT_EQ(allTriangles(g.g), (std::vector<Triple>{{3, 1, 0}, {3, 2, 1}}));
}

TEST(KVTessellation, FailureLeavesNoTessellation) {
  Gen g;
  EXPECT_EQ(g->KVTesselateSeedPlane(), 0);  // no seed at all
  addSeed(g.g, {vec(0, 0, 0), vec(4, 0, 0)});
  EXPECT_EQ(g->KVTesselateSeedPlane(), 0);
  EXPECT_EQ(g->KVIsValid(3), 0);

  // A good square made self-crossing by swapping its last two corners drops the old result.
  Gen sq;
  addSquare(sq.g);
  ASSERT_EQ(sq->KVTesselateSeedPlane(), 1);
  const _D3DVECTOR p = vec(0, 2, 0), q = vec(2, 2, 0);
  sq->KVSelectSeedVertexByNumber(2);
  sq->KVUpdateSelectedSeedVertex(&p);
  sq->KVSelectSeedVertexByNumber(3);
  sq->KVUpdateSelectedSeedVertex(&q);
  EXPECT_EQ(sq->KVTesselateSeedPlane(), 0);
  EXPECT_EQ(sq->m_tessellation, nullptr);
  int a, b, c;
  EXPECT_EQ(sq->KVGetFirstTesselatedTriangle(&a, &b, &c), 0);
  EXPECT_EQ(sq->KVGetNextTesselatedTriangle(&a, &b, &c), 0);
}

TEST(KVTessellation, OutsidePointLiesBeyondTheBox) {
  CKFootPrint fp;
  fp.FPInitialise();
  EXPECT_EQ(kutil::detail::fillLaidFootPrint(fp, {}), 0);
  ASSERT_EQ(kutil::detail::fillLaidFootPrint(fp, {vec(-1, -2, 9), vec(3, 5, 9), vec(0, 4, 9)}), 1);
  const _D3DVECTOR ref = kutil::detail::outsideReference(fp);
  EXPECT_EQ(ref.x, static_cast<float>(3 + 17.3133));
  EXPECT_EQ(ref.y, 0.0f);
  EXPECT_EQ(ref.z, static_cast<float>(5 + 103.00314));
  fp.FPTerminate();
}
