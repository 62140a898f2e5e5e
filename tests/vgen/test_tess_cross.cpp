// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The tessellation's inline crossing test must answer exactly as FPDoLinesCross, whose
// answer for lines meeting in one point must not depend on the segments' order.
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "tess.h"

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

  kutil::detail::TessFootPrint fp;
  fp.FPInitialise();
  std::vector<kutil::detail::TessLine> lines(segs.size());
  for (std::size_t i = 0; i < segs.size(); ++i)
    kutil::detail::prepareTessLine(fp, segs[i].first, segs[i].second, -1, -1, &lines[i]);
  int mismatches = 0, crossings = 0, pointPairs = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    for (std::size_t j = 0; j < lines.size(); ++j) {
      const int expected = fp.FPDoLinesCross(&segs[i].first, &segs[i].second, &segs[j].first, &segs[j].second);
      int expectedKind = -1, kind = -1;
      fp.FPGetCoincidenceKind(&expectedKind);
      const int actual = kutil::detail::tessLinesCross(fp, lines[i], lines[j], &kind);
      if ((actual != expected || kind != expectedKind) && ++mismatches < 5)
        ADD_FAILURE() << "pair " << i << ", " << j << ": " << actual << " vs " << expected;
      crossings += expected;
      if (expectedKind == 0) {
        ++pointPairs;
        const int reverse = fp.FPDoLinesCross(&segs[j].first, &segs[j].second, &segs[i].first, &segs[i].second);
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
