// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The library's tessellation must give exactly the triangles (same triples, same order) of the
// step-by-step method that re-counts every crossing after each removal, on seeds well-formed and not.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "KVGen.h"
#include "LiteralTessellation.h"
#include "Tessellation.h"

using kutil::test::Triple;

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr int kMaxConvex = 18;  // the reference is slow under the sanitizers
constexpr int kMaxRandom = 24;
#else
constexpr int kMaxConvex = 32;
constexpr int kMaxRandom = 48;
#endif

using Seed = std::vector<_D3DVECTOR>;
struct Case {
  std::string name;
  Seed seed;
};

_D3DVECTOR v(float x, float y) { return _D3DVECTOR{x, y, 0.0f}; }

std::vector<Case> wellFormedCases() {
  using namespace kutil::test;
  std::vector<Case> c;
  auto add = [&c](const std::string& name, int k, Seed s) {
    c.push_back({name + std::to_string(k), std::move(s)});
  };
  for (int n = 3; n <= kMaxConvex; ++n) add("convex", n, convexSeed(n));
  for (int n = 5; n <= kMaxConvex - 8; n += 3) add("convex-turned", n, convexSeed(n, 7.5f, 0.3));
  for (int s = 1; s <= 6; ++s) add("jittered", s, jitteredConvexSeed(8 + 3 * s, s));
  for (int n = 6; n <= 14; n += 4) add("convex-cw", n, reversedSeed(convexSeed(n)));
  for (int r = 1; r <= 8; ++r) add("globe", r, globeSeed(r, 5.0f));
  for (int r = 2; r <= 20; r += 3) add("half-disc", r, halfDiscSeed(r, 5.0f));
  for (int p = 3; p <= 9; ++p) add("star", p, starSeed(p));
  add("star-cw", 6, reversedSeed(starSeed(6)));
  for (int parts = 1; parts <= 3; ++parts) {
    add("L", parts, lShapeSeed(6, 5, 2, parts));
    add("L-thin", parts, lShapeSeed(10, 10, 0.5f, parts));
  }
  for (int t = 1; t <= 5; ++t) add("comb", t, combSeed(t));
  for (int k = 2; k <= 6; ++k) add("collinear-square", k, collinearSquareSeed(k));
  for (int n = 5; n <= kMaxRandom; ++n)
    for (int s = 0; s < 3; ++s) add("random" + std::to_string(n) + "-", s, randomSimpleSeed(n, 1000 * n + s));
  return c;
}

std::vector<Case> badCases() {
  const float nan = std::nanf(""), inf = HUGE_VALF;
  Seed pentagram = kutil::test::convexSeed(5);
  std::swap(pentagram[1], pentagram[2]);
  std::swap(pentagram[2], pentagram[4]);
  return {
      {"coincident", {v(0, 0), v(4, 0), v(4, 0), v(4, 4), v(0, 4)}},
      {"all-coincident", {v(1, 1), v(1, 1), v(1, 1), v(1, 1)}},
      {"collinear-run", {v(0, 0), v(1, 0), v(2, 0), v(3, 0), v(3, 3), v(0, 3)}},
      {"zero-area", {v(0, 0), v(1, 1), v(2, 2), v(3, 3)}},
      {"bow-tie", {v(0, 0), v(2, 2), v(2, 0), v(0, 2)}},
      {"pentagram", pentagram},
      {"doubling-back", {v(0, 0), v(4, 0), v(4, 4), v(2, 0.0f), v(0, 4)}},
      {"huge", {v(-3e37f, -3e37f), v(3e37f, -3e37f), v(3e37f, 3e37f), v(-3e37f, 3e37f), v(0, 3.3e37f)}},
      {"nan-vertex", {v(0, 0), v(4, 0), v(nan, 2), v(4, 4), v(0, 4), v(-1, 2)}},
      {"infinite-vertex", {v(0, 0), v(4, 0), v(inf, 2), v(4, 4), v(0, 4)}},
      {"tiny", {v(0, 0), v(1e-4f, 0), v(1e-4f, 1e-4f), v(0, 1e-4f), v(-5e-5f, 5e-5f)}},
      {"spike", {v(0, 0), v(10, 0), v(10, 1), v(5, 1), v(5, 1.0001f), v(10, 1.0002f), v(10, 2), v(0, 2)}},
  };
}

// Through the public methods; the stored triples ascend, so a reversal is undone by sorting.
int libraryTriangles(const Seed& seed, std::vector<Triple>* out) {
  out->clear();
  CKVGen g;
  g.KVInitialise();
  for (const _D3DVECTOR& p : seed) g.KVAddSeedVertex(&p);
  const int ok = g.KVTesselateSeedPlane();
  Triple t;
  if (ok && g.KVGetFirstTesselatedTriangle(&t[0], &t[1], &t[2])) {
    do {
      std::sort(t.begin(), t.end());
      out->push_back(t);
    } while (g.KVGetNextTesselatedTriangle(&t[0], &t[1], &t[2]));
  }
  g.KVTerminate();
  return ok;
}

int engineTriangles(const Seed& seed, std::size_t matrixLimit, std::vector<Triple>* out) {
  out->clear();
  CKFootPrint fp;
  fp.FPInitialise();
  kutil::detail::fillLaidFootPrint(fp, seed);
  kutil::detail::TessOptions options;
  options.matrixLimitBytes = matrixLimit;
  kutil::detail::TessResult result;
  const int ok = kutil::detail::tessellateSeed(seed, fp, &result, options);
  for (const auto& t : result.triangles) out->push_back({t.v[0], t.v[1], t.v[2]});
  fp.FPTerminate();
  return ok;
}

// Returns the library's status after checking it and its triangles against the reference.
int expectSame(const Case& c) {
  std::vector<Triple> expected, actual;
  const int expectedOk = kutil::test::literalTessellate(c.seed, &expected);
  const int actualOk = libraryTriangles(c.seed, &actual);
  EXPECT_EQ(actualOk, expectedOk) << c.name;
  EXPECT_EQ(actual, expected) << c.name;
  return actualOk && actual.size() + 2 == c.seed.size() ? 2 : actualOk;
}

}  // namespace

TEST(KVTessellationSameness, WellFormedSeedsMatchTheRecountingMethod) {
  int succeeded = 0, offCount = 0;
  for (const Case& c : wellFormedCases()) {
    const int r = expectSame(c);
    succeeded += r > 0;
    offCount += r == 1;
  }
  // Nearly all give n - 2 triangles; the few that do not (a chord within 1 % of a far edge,
  // the flat globe) must still match.
  EXPECT_GT(succeeded, 100);
  EXPECT_LT(offCount, succeeded / 4);
}

TEST(KVTessellationSameness, BadSeedsTerminateAndMatchTheRecountingMethod) {
  for (const Case& c : badCases()) {
    const int r = expectSame(c);
    EXPECT_TRUE(r == 0 || (c.name != "bow-tie" && c.name != "zero-area")) << c.name;
  }
}

TEST(KVTessellationSameness, GlobeSeedFailsFromThreeRingsUpWhileTheHalfDiscWorks) {
  std::vector<Triple> t;
  EXPECT_EQ(libraryTriangles(kutil::test::globeSeed(1, 3.0f), &t), 0);  // two vertices
  EXPECT_EQ(libraryTriangles(kutil::test::globeSeed(2, 3.0f), &t), 1);  // three, flat but accepted
  EXPECT_EQ(t, (std::vector<Triple>{{0, 1, 2}}));
  for (int rings = 3; rings <= 12; ++rings) {
    EXPECT_EQ(libraryTriangles(kutil::test::globeSeed(rings, 3.0f), &t), 0) << rings;
    ASSERT_EQ(libraryTriangles(kutil::test::halfDiscSeed(rings, 3.0f), &t), 1) << rings;
    EXPECT_EQ(t.size(), static_cast<std::size_t>(rings - 1)) << rings;
  }
}

TEST(KVTessellationSameness, LowMemoryPathGivesTheSameTriangles) {
  using namespace kutil::test;
  // Also beyond the reference's reach: large convex seeds still give n - 2 triangles.
  const Seed seeds[] = {convexSeed(20),          starSeed(7),    combSeed(4),   collinearSquareSeed(5),
                        randomSimpleSeed(40, 7), convexSeed(60), convexSeed(80)};
  for (const Seed& s : seeds) {
    SCOPED_TRACE(s.size());
    std::vector<Triple> withMatrix, without;
    const int a = engineTriangles(s, std::size_t(1) << 30, &withMatrix);
    EXPECT_EQ(engineTriangles(s, 0, &without), a);
    EXPECT_EQ(withMatrix, without);
    EXPECT_TRUE(s.size() < 60 || withMatrix.size() == s.size() - 2);
  }
}
