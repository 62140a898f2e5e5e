// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Seed tessellation through CKVGen: the documented small cases, failures, and
// triangle iteration with and without normal reversal.
#include <gtest/gtest.h>

#include <array>
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

TEST(KVTessellation, SquareDropsTheFirstDiagonalAndGivesTwoTriangles) {
  Gen g;
  addSquare(g.g);
  ASSERT_EQ(g->KVTesselateSeedPlane(), 1);
  EXPECT_EQ(allTriangles(g.g), (std::vector<Triple>{{0, 1, 3}, {1, 2, 3}}));
  // Four edges and both diagonals were candidates; 0-2 went, 1-3 stayed.
  ASSERT_EQ(g->m_tessellation->segments.size(), 6u);
  const auto* d02 = findSegment(g.g, 0, 2);
  const auto* d13 = findSegment(g.g, 1, 3);
  const auto* closing = findSegment(g.g, 0, 3);
  ASSERT_TRUE(d02 && d13 && closing);
  EXPECT_EQ(d02->removed, 1);
  EXPECT_EQ(d02->boundary, 0);
  EXPECT_EQ(d13->removed, 0);
  EXPECT_EQ(d13->crossings, 0);
  EXPECT_EQ(closing->boundary, 1);
  EXPECT_EQ(closing->crossings, -1);
  EXPECT_NE(g->m_seedOrientation, -1);  // refreshed from the first triangle
}

TEST(KVTessellation, NormalReversalHandsOutDescendingTriples) {
  Gen g;
  addSquare(g.g);
  g->KVSetNormalDirection(0);
  ASSERT_EQ(g->KVTesselateSeedPlane(), 1);
  ASSERT_EQ(g->KVIsNormalReversalActive(), 1);
  EXPECT_EQ(allTriangles(g.g), (std::vector<Triple>{{3, 1, 0}, {3, 2, 1}}));
  g->KVSetNormalDirection(1);
  ASSERT_EQ(g->KVIsNormalReversalActive(), 0);
  EXPECT_EQ(allTriangles(g.g), (std::vector<Triple>{{0, 1, 3}, {1, 2, 3}}));
}

TEST(KVTessellation, TriangleSeedGivesOneTriangle) {
  Gen g;
  addSeed(g.g, {vec(0, 0, 0), vec(4, 0, 0), vec(1, 3, 0)});
  ASSERT_EQ(g->KVTesselateSeedPlane(), 1);
  EXPECT_EQ(allTriangles(g.g), (std::vector<Triple>{{0, 1, 2}}));
}

TEST(KVTessellation, TooFewVerticesOrCrossedOutlineFail) {
  Gen g;
  EXPECT_EQ(g->KVTesselateSeedPlane(), 0);  // no seed at all
  addSeed(g.g, {vec(0, 0, 0), vec(4, 0, 0)});
  EXPECT_EQ(g->KVTesselateSeedPlane(), 0);
  EXPECT_EQ(g->m_tessellation, nullptr);
  EXPECT_EQ(g->KVIsValid(3), 0);

  Gen bowTie;
  addSeed(bowTie.g, {vec(0, 0, 0), vec(2, 2, 0), vec(2, 0, 0), vec(0, 2, 0)});
  EXPECT_EQ(bowTie->KVTesselateSeedPlane(), 0);
  int a, b, c;
  EXPECT_EQ(bowTie->KVGetFirstTesselatedTriangle(&a, &b, &c), 0);
}

TEST(KVTessellation, FailureDiscardsTheEarlierTessellation) {
  Gen g;
  addSquare(g.g);
  ASSERT_EQ(g->KVTesselateSeedPlane(), 1);
  // Swap the last two corners: the outline now crosses itself.
  const _D3DVECTOR p = vec(0, 2, 0), q = vec(2, 2, 0);
  ASSERT_EQ(g->KVSelectSeedVertexByNumber(2), 1);
  ASSERT_EQ(g->KVUpdateSelectedSeedVertex(&p), 1);
  ASSERT_EQ(g->KVSelectSeedVertexByNumber(3), 1);
  ASSERT_EQ(g->KVUpdateSelectedSeedVertex(&q), 1);
  EXPECT_EQ(g->KVTesselateSeedPlane(), 0);
  EXPECT_EQ(g->m_tessellation, nullptr);
  int a, b, c;
  EXPECT_EQ(g->KVGetFirstTesselatedTriangle(&a, &b, &c), 0);
  EXPECT_EQ(g->KVGetNextTesselatedTriangle(&a, &b, &c), 0);
}

TEST(KVTessellation, IterationStopsAtTheEndAndKeepsItsPlace) {
  Gen g;
  addSeed(g.g, {vec(0, 0, 0), vec(4, 0, 0), vec(5, 3, 0), vec(2, 5, 0), vec(-1, 3, 0)});
  ASSERT_EQ(g->KVTesselateSeedPlane(), 1);
  int a = -7, b = -7, c = -7;
  g->m_tessellation->triangleCursor = -1;
  EXPECT_EQ(g->KVGetNextTesselatedTriangle(&a, &b, &c), 0);  // nothing to step on from
  EXPECT_EQ(a, -7);
  const std::vector<Triple> all = allTriangles(g.g);
  ASSERT_EQ(all.size(), 3u);
  EXPECT_EQ(g->KVGetNextTesselatedTriangle(&a, &b, &c), 0);
  EXPECT_EQ(g->m_tessellation->triangleCursor, 2);
  EXPECT_EQ(g->KVGetNextTesselatedTriangle(nullptr, &b, &c), 0);
  ASSERT_EQ(g->KVGetFirstTesselatedTriangle(&a, &b, &c), 1);
  EXPECT_EQ((Triple{a, b, c}), all[0]);
  for (const Triple& t : all) EXPECT_TRUE(t[0] < t[1] && t[1] < t[2]);
}

TEST(KVTessellation, ConcaveSeedKeepsOnlyInsideChords) {
  // The L's reflex corner is vertex 3; chords across the notch must not survive.
  Gen g;
  for (const _D3DVECTOR& p : kutil::test::lShapeSeed(6, 6, 2)) ASSERT_EQ(g->KVAddSeedVertex(&p), 1);
  ASSERT_EQ(g->KVTesselateSeedPlane(), 1);
  EXPECT_EQ(allTriangles(g.g).size(), 4u);
  CKFootPrint laid;
  laid.FPInitialise();
  ASSERT_EQ(g->KVFootPrintFromSeed(&laid, 1), 1);
  int inner = 0;
  for (const auto& s : g->m_tessellation->segments) {
    if (s.boundary) continue;
    ++inner;
    const _D3DVECTOR mid = {(s.start.x + s.end.x) / 2, 0.0f, (s.start.y + s.end.y) / 2};
    EXPECT_EQ(laid.FPIsPointInside(&mid), 1) << s.first << "-" << s.second;
  }
  EXPECT_GT(inner, 0);
  EXPECT_EQ(findSegment(g.g, 2, 4), nullptr);  // straight across the notch
  laid.FPTerminate();
}

TEST(KVTessellation, OutsidePointLiesBeyondTheBox) {
  CKFootPrint fp;
  fp.FPInitialise();
  EXPECT_EQ(kutil::detail::fillLaidFootPrint(fp, {}), 0);
  _D3DVECTOR ref = kutil::detail::outsideReference(fp);
  EXPECT_EQ(ref.x, 0.0f);
  EXPECT_EQ(ref.z, 0.0f);
  ASSERT_EQ(kutil::detail::fillLaidFootPrint(fp, {vec(-1, -2, 9), vec(3, 5, 9), vec(0, 4, 9)}), 1);
  ref = kutil::detail::outsideReference(fp);
  EXPECT_EQ(ref.x, static_cast<float>(3 + 17.3133));
  EXPECT_EQ(ref.y, 0.0f);
  EXPECT_EQ(ref.z, static_cast<float>(5 + 103.00314));
  fp.FPTerminate();
}
