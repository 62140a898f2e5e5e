// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Seed tessellation through CKVGen: the small exact cases, failures and the triangle iteration.
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "LiteralTessellation.h"
#include "Tessellation.h"
#include "VGenTestSupport.h"

using namespace kutil::test;

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
  for (const auto& s : GenInternals::tessellation(g)->segments)
    if (s.first == i && s.second == j) return &s;
  return nullptr;
}

}  // namespace

TEST(KVTessellation, SquareDropsTheFirstDiagonalAndReversalDescends) {
  Gen g;
  addSquare(g.g);
  ASSERT_EQ(g->KVTesselateSeedPlane(), 1);
  EXPECT_EQ(allTriangles(g.g), (std::vector<Triple>{{0, 1, 3}, {1, 2, 3}}));
  ASSERT_EQ(GenInternals::tessellation(*g)->segments.size(), 6u);  // four edges, two diagonals
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
  EXPECT_EQ(GenInternals::tessellation(*g)->triangleCursor, 1);
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
  EXPECT_EQ(GenInternals::tessellation(*sq), nullptr);
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

// The inline crossing test must answer exactly as FPDoLinesCross, whose answer for lines
// meeting in one point must not depend on the segments' order.
TEST(KVTessellationCrossing, InlineTestAnswersAsTheFootPrint) {
  // Grid points (exact touches, overlaps), near-vertical, near-horizontal, random,
  // near-parallel and huge segments on the floor.
  std::mt19937 rng(20260101);
  std::uniform_int_distribution<int> grid(-4, 4);
  std::uniform_real_distribution<float> real(-5.0f, 5.0f), tiny(-0.0015f, 0.0015f);
  std::vector<std::pair<_D3DVECTOR, _D3DVECTOR>> segs;
  auto p = [](float x, float z) { return _D3DVECTOR{x, 0.0f, z}; };
  for (int k = 0; k < 120; ++k) {
    const float x0 = float(grid(rng)), z0 = float(grid(rng)), x1 = float(grid(rng)), z1 = float(grid(rng));
    segs.push_back({p(x0, z0), p(x1, z1)});
    segs.push_back({p(x0, z0), p(x0 + tiny(rng), z1 + 2.0f)});
    segs.push_back({p(x0, z0), p(x1 + 3.0f, z0 + tiny(rng))});
    segs.push_back({p(real(rng), real(rng)), p(real(rng), real(rng))});
    const float g = real(rng), s = 0.5f * k;
    segs.push_back({p(s, g * s), p(s + 2, g * (s + 2) + tiny(rng))});
  }
  segs.push_back({p(-3e37f, 1e37f), p(3e37f, -2e37f)});
  segs.push_back({p(1e30f, 1e30f), p(-1e30f, 2e30f)});
  segs.push_back({p(1e6f, 1e6f), p(1e6f + 1, 1e6f + 0.0001f)});

  CKFootPrint fp;
  fp.FPInitialise();
  std::vector<kutil::detail::TessLine> lines(segs.size());
  for (std::size_t i = 0; i < segs.size(); ++i)
    kutil::detail::prepareTessLine(fp, segs[i].first, segs[i].second, -1, -1, &lines[i]);
  int mismatches = 0, crossings = 0, pointPairs = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    for (std::size_t j = 0; j < lines.size(); ++j) {
      const int expected =
          fp.FPDoLinesCross(&segs[i].first, &segs[i].second, &segs[j].first, &segs[j].second);
      int expectedKind = -1, kind = -1;
      fp.FPGetCoincidenceKind(&expectedKind);
      const int actual = kutil::detail::tessLinesCross(fp, lines[i], lines[j], &kind);
      if ((actual != expected || kind != expectedKind) && ++mismatches < 5)
        ADD_FAILURE() << "pair " << i << ", " << j << ": " << actual << " vs " << expected;
      crossings += expected;
      if (expectedKind == 0) {
        ++pointPairs;
        const int reverse =
            fp.FPDoLinesCross(&segs[j].first, &segs[j].second, &segs[i].first, &segs[i].second);
        if (reverse != expected && ++mismatches < 5) ADD_FAILURE() << "order matters for " << i << ", " << j;
      }
    }
  }
  EXPECT_EQ(mismatches, 0);
  // The sample must exercise both answers and all three intersection kinds.
  EXPECT_GT(crossings, 1000);
  EXPECT_GT(pointPairs, 100000);
  EXPECT_LT(pointPairs, static_cast<int>(lines.size() * lines.size()));
  fp.FPTerminate();
}
