// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The tessellation's inline crossing test must answer exactly as the
// footprint's FPDoLinesCross, and the footprint's answer for lines meeting in
// one point must not depend on the order of the two segments (the chord
// removal tests each such pair once).
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "tess.h"

using kutil::detail::TessFootPrint;
using kutil::detail::TessLine;

namespace {

// Segments laid on the floor, rich in the awkward cases: vertical and
// horizontal ones, collinear overlaps, shared ends, near-parallel slopes,
// points on a coarse grid (exact touches) and very large coordinates.
std::vector<std::pair<_D3DVECTOR, _D3DVECTOR>> awkwardSegments() {
  std::mt19937 rng(20260101);
  std::uniform_int_distribution<int> grid(-4, 4);
  std::uniform_real_distribution<float> real(-5.0f, 5.0f);
  std::uniform_real_distribution<float> tiny(-0.0015f, 0.0015f);
  std::vector<std::pair<_D3DVECTOR, _D3DVECTOR>> out;
  auto p = [](float x, float z) { return _D3DVECTOR{x, 0.0f, z}; };
  for (int k = 0; k < 120; ++k) {
    const float x0 = static_cast<float>(grid(rng)), z0 = static_cast<float>(grid(rng));
    const float x1 = static_cast<float>(grid(rng)), z1 = static_cast<float>(grid(rng));
    out.push_back({p(x0, z0), p(x1, z1)});                      // grid: exact touches and overlaps
    out.push_back({p(x0, z0), p(x0 + tiny(rng), z1 + 2.0f)});    // (nearly) vertical
    out.push_back({p(x0, z0), p(x1 + 3.0f, z0 + tiny(rng))});    // (nearly) horizontal
    out.push_back({p(real(rng), real(rng)), p(real(rng), real(rng))});
    const float g = real(rng);
    out.push_back({p(0.5f * k, g * 0.5f * k), p(0.5f * k + 2, g * (0.5f * k + 2) + tiny(rng))});  // near-parallel
  }
  out.push_back({p(-3e37f, 1e37f), p(3e37f, -2e37f)});
  out.push_back({p(1e30f, 1e30f), p(-1e30f, 2e30f)});
  out.push_back({p(1e6f, 1e6f), p(1e6f + 1, 1e6f + 0.0001f)});
  return out;
}

}  // namespace

TEST(KVTessellationCrossing, InlineTestAnswersAsTheFootPrint) {
  const auto segs = awkwardSegments();
  TessFootPrint fp;
  fp.FPInitialise();
  std::vector<TessLine> lines(segs.size());
  for (std::size_t i = 0; i < segs.size(); ++i) {
    kutil::detail::prepareTessLine(fp, segs[i].first, segs[i].second, -1, -1, &lines[i]);
  }
  int mismatches = 0, crossings = 0, pointPairs = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    for (std::size_t j = 0; j < lines.size(); ++j) {
      const int expected = fp.FPDoLinesCross(&segs[i].first, &segs[i].second, &segs[j].first, &segs[j].second);
      int expectedKind = -1;
      fp.FPGetCoincidenceKind(&expectedKind);
      int kind = -1;
      const int actual = kutil::detail::tessLinesCross(fp, lines[i], lines[j], &kind);
      if (actual != expected || kind != expectedKind) {
        if (++mismatches < 5) {
          const TessLine& a = lines[i];
          const TessLine& b = lines[j];
          _D3DVECTOR cp;
          fp.FPDoLinesCross(&segs[i].first, &segs[i].second, &segs[j].first, &segs[j].second);
          fp.FPGetCrossingPoint(&cp);
          ADD_FAILURE() << "pair " << i << ", " << j << ": " << actual << " vs " << expected << " kinds " << kind
                        << " " << expectedKind << " a=(" << a.eq.start.x << "," << a.eq.start.z << ")-(" << a.eq.end.x
                        << "," << a.eq.end.z << ") k" << a.eq.kind << " b=(" << b.eq.start.x << "," << b.eq.start.z
                        << ")-(" << b.eq.end.x << "," << b.eq.end.z << ") k" << b.eq.kind << " cp " << cp.x << ","
                        << cp.z << " win " << a.xLow << " " << a.xHigh << " / " << b.xLow << " " << b.xHigh;
        }
      }
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
