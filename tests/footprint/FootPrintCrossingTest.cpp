// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "FootPrintTestSupport.h"
#include "KFootPrint.h"

using kutil::test::makeFootPrint;
using kutil::test::makeSquare;
using kutil::test::vec;

TEST(FootPrintCrossing, SquareWithAndWithoutTheMargin) {
  CKFootPrint fp;
  ASSERT_EQ(makeSquare(fp), 1);
  const struct {
    _D3DVECTOR pos, step;
    int margin, noMargin;
  } rows[] = {
      {vec(5, 0, 5), vec(0, 0, 4.8f), 1, 0},  // ends within 0.3 of the wall
      {vec(5, 0, 5), vec(0, 0, 4.6f), 0, 0},
      {vec(5, 0, 5), vec(0, 0, 6), 0, 1},          // the margin form looks only at where the step ends
      {vec(5, 0, 5), vec(5.2f, 0, -5.25f), 0, 1},  // beyond a corner the perpendicular foot misses
      {vec(9.9f, 3, 5), vec(0, 0, 0), 1, 0},       // standing still beside a wall
  };
  for (const auto& r : rows) {
    SCOPED_TRACE(::testing::Message() << "step " << r.step.x << "," << r.step.z);
    EXPECT_EQ(r.margin, fp.FPIsBoundaryCrossed(&r.pos, &r.step));
    EXPECT_EQ(r.noMargin, fp.FPIsBoundaryCrossedNoMargin(&r.pos, &r.step));
  }
  _D3DVECTOR in = vec(5, 0, 5), out = vec(15, 0, 5), high = vec(5, 40, 5);
  EXPECT_EQ(fp.FPIsPointInside(&high), 1);  // y is never tested
  EXPECT_EQ(fp.FPIsPointInside(&out), 0);
  EXPECT_EQ(fp.FPPointsAreOnTheSameSide(&in, &high), 1);
  EXPECT_EQ(fp.FPPointsAreOnTheSameSide(&in, &out), 0);
}

TEST(FootPrintCrossing, LineIntersectionKinds) {
  CKFootPrint fp;
  fp.FPInitialise();
  int kind = 9;
  _D3DVECTOR c, a1 = vec(0, 5, 0), a2 = vec(4, 5, 4), b1 = vec(0, 0, 4), b2 = vec(4, 0, 0);
  ASSERT_EQ(fp.FPDoLinesCross(&a1, &a2, &b1, &b2), 1);
  fp.FPGetCrossingPoint(&c);
  EXPECT_FLOAT_EQ(c.x, 2.0f);
  EXPECT_FLOAT_EQ(c.y, 0.0f);                       // the second line's height
  _D3DVECTOR s1 = vec(0, 0, 0), s2 = vec(1, 0, 1);  // the lines meet beyond this segment
  EXPECT_EQ(fp.FPDoLinesCross(&s1, &s2, &b1, &b2), 0);

  _D3DVECTOR v1 = vec(1, 0, -5), v2 = vec(1, 0, 5);  // constant x against a general line
  tagKLineEquation vertical, la, lb;
  fp.FPMakeLineEquation(&vertical, &v1, &v2);
  ASSERT_EQ(fp.FPDoLinesCross(&vertical, &a1, &a2), 1);
  fp.FPGetCrossingPoint(&c);
  EXPECT_FLOAT_EQ(c.z, 1.0f);

  _D3DVECTOR h1 = vec(0, 0, 0), h2 = vec(4, 0, 0), h3 = vec(2, 0, 0), h4 = vec(6, 0, 0);
  fp.FPMakeLineEquation(&la, &h1, &h2);
  fp.FPMakeLineEquation(&lb, &h3, &h4);
  ASSERT_EQ(fp.FPDoLinesCross(&la, &lb), 1);  // collinear overlap: kind 1 at the first segment's end
  fp.FPGetCoincidenceKind(&kind);
  EXPECT_EQ(kind, 1);
  fp.FPGetCrossingPoint(&c);
  EXPECT_FLOAT_EQ(c.x, 4.0f);
  _D3DVECTOR p1 = vec(0, 0, 1), p2 = vec(4, 0, 1);
  EXPECT_EQ(fp.FPDoLinesCross(&h1, &h2, &p1, &p2), 0);  // parallel apart: kind 2
  fp.FPGetCoincidenceKind(&kind);
  EXPECT_EQ(kind, 2);
}

TEST(FootPrintSlide, StepKeepsOnlyItsComponentAlongTheWall) {
  _D3DVECTOR a = vec(0, 0, 0), b = vec(10, 0, 0);
  const struct {
    _D3DVECTOR wallEnd, step, want;
  } rows[] = {
      {b, vec(1, 0.5f, 1), vec(1, 0.5f, 0)},
      {b, vec(-1, 0.5f, 1), vec(-1, 0.5f, 0)},
      {a, vec(3, 2, 4), vec(0, 2, 0)},  // a wall of no length keeps only the vertical part
  };
  for (const auto& r : rows) {
    _D3DVECTOR step = r.step;
    EXPECT_EQ(CKFootPrint::FPAdjustTranslation(&a, &r.wallEnd, &step), 1);
    EXPECT_FLOAT_EQ(step.x, r.want.x);
    EXPECT_FLOAT_EQ(step.y, r.want.y);
    EXPECT_FLOAT_EQ(step.z, r.want.z);
  }
}

TEST(FootPrintSlide, RandomSlidesNeverPushIntoTheWall) {
  std::mt19937 rng(1234);
  std::uniform_real_distribution<float> coord(-20.0f, 20.0f);
  for (int i = 0; i < 2000; ++i) {
    const float y = coord(rng);
    _D3DVECTOR a = vec(coord(rng), y, coord(rng)), b = vec(coord(rng), y, coord(rng));
    const _D3DVECTOR before = vec(coord(rng) / 4, coord(rng), coord(rng) / 4);
    _D3DVECTOR step = before;
    CKFootPrint::FPAdjustTranslation(&a, &b, &step);
    const double ex = b.x - a.x, ez = b.z - a.z, len = std::hypot(ex, ez);
    if (len < 0.01) continue;
    EXPECT_NEAR((step.x * ez - step.z * ex) / len, 0.0, 1e-4);  // nothing square to the wall
    EXPECT_GE((step.x * ex + step.z * ez) * (before.x * ex + before.z * ez), -1e-6);  // sense kept
    EXPECT_LE(std::hypot(step.x, step.z), std::hypot(before.x, before.z) + 1e-4);
    EXPECT_EQ(step.y, before.y);
  }
}

TEST(FootPrintEdgeQueries, HeightDistanceAndCoincidentEdge) {
  CKFootPrint fp;
  makeFootPrint(fp, {vec(0, 0, 0), vec(0, 4, 8), vec(5, 0, 0)});
  _D3DVECTOR p = vec(0, 99, 2);
  fp.FPSelectFirstEdge();
  ASSERT_EQ(fp.FPUpdateYFromSelectedEdgeCrossing(&p), 1);  // constant x: interpolated along z
  EXPECT_FLOAT_EQ(p.y, 1.0f);
  float distance = -1;
  fp.FPSelectNextEdgeNoWrap();
  fp.FPSelectNextEdgeNoWrap();  // (5, 0, 0) -> (0, 0, 0)
  p = vec(-3, 0, 4);
  ASSERT_EQ(fp.FPGetEdgeSampleDistance(&p, &distance), 1);
  EXPECT_FLOAT_EQ(distance, 5.0f);  // nearest to the end point
  _D3DVECTOR p1 = vec(0, 0, 5), p2 = vec(10, 0, 5), q1 = vec(3, 2, 0), q2 = vec(3, 2, 10);
  _D3DVECTOR far1 = vec(12, 0, 5), far2 = vec(14, 0, 5);  // collinear but apart
  ASSERT_EQ(fp.FPDistanceToEdge(&p1, &p2, &q1, &q2, &distance), 1);
  EXPECT_FLOAT_EQ(distance, std::sqrt(29.0f));  // q1's height counts
  EXPECT_EQ(fp.FPDistanceToEdge(&p1, &p2, &far1, &far2, &distance), 0);

  makeSquare(fp);
  _D3DVECTOR a = vec(10, 0, 10), b = vec(12, 0, 10), cursor;  // touches an edge at its end only
  EXPECT_EQ(fp.FPSelectCoincidentEdge(&a, &b), 0);
  a = vec(6, 0, 10), b = vec(5.5f, 3, 10);
  ASSERT_EQ(fp.FPSelectCoincidentEdge(&a, &b), 1);
  fp.FPGetEdgeFromVector(&cursor);
  EXPECT_FLOAT_EQ(cursor.x, 10.0f);
  EXPECT_FLOAT_EQ(cursor.z, 10.0f);
}

TEST(FootPrintClearance, WallBoxCrossingAndSlopingFloorModes) {
  CKFootPrint wall;
  ASSERT_EQ(makeFootPrint(wall, {vec(0, 0, 0), vec(10, 0, 0), vec(10, 3, 0), vec(0, 3, 0)}), 1);
  _D3DVECTOR from = vec(5, 1, -1), to = vec(5, 1, 1), on = vec(5, 1, 0), top, bottom;
  _D3DRMBOX box;
  ASSERT_EQ(wall.FPBoxBoundaryCrossingExclusive(&from, &to, &box), 1);
  EXPECT_FLOAT_EQ(box.min.y, 0.0f);  // the crossed edges' heights
  EXPECT_FLOAT_EQ(box.max.y, 3.0f);
  EXPECT_EQ(wall.FPBoxBoundaryCrossingExclusive(&on, &to, &box), 0);  // own end points ignored
  EXPECT_EQ(wall.FPBoxBoundaryCrossingInclusive(&on, &to, &box), 1);
  EXPECT_EQ(wall.FPBoxBoundaryCrossingInclusive(&on, &on, &box), 1);
  EXPECT_EQ(wall.FPGetFaceClearance(&from, &to, &top, &bottom, 1), 0);  // cannot solve a vertical plane
  EXPECT_EQ(wall.FPGetFaceClearance(&from, &to, &top, &bottom, 7), 0);

  CKFootPrint floor;  // y = x / 2
  ASSERT_EQ(makeFootPrint(floor, {vec(0, 0, 0), vec(10, 5, 0), vec(10, 5, 10), vec(0, 0, 10)}), 1);
  from = vec(5, 0, 5), to = vec(12, 0, 5), on = vec(6, 0, 5);
  const float modes[][3] = {{0, 5.0f, 2.5f}, {1, 2.5f, 2.5f}};  // mode 0: the crossed edge over the plane
  for (const auto& m : modes) {
    ASSERT_EQ(floor.FPGetFaceClearance(&from, &to, &top, &bottom, static_cast<int>(m[0])), 1);
    EXPECT_FLOAT_EQ(top.y, m[1]);
    EXPECT_FLOAT_EQ(bottom.y, m[2]);
  }
  EXPECT_EQ(floor.FPGetFaceClearance(&from, &on, &top, &bottom, 0), 0);  // nothing crossed ...
  ASSERT_EQ(floor.FPGetClearance(&from, &on, &top, &bottom, 0, 0), 1);   // ... so the box answers
  EXPECT_FLOAT_EQ(top.y, 5.0f);
  EXPECT_FLOAT_EQ(bottom.y, 0.0f);
}

TEST(FootPrintBadInput, DegenerateFootPrintsGiveTheDocumentedAnswers) {
  CKFootPrint fp;
  fp.FPInitialise();
  _D3DVECTOR p = vec(1, 0, 1), q = vec(5, 0, 5), zero = vec(0, 0, 0);
  _D3DRMBOX box;
  float distance;
  EXPECT_EQ(fp.FPIsPointInside(&p) + fp.FPIsBoundaryCrossed(&p, &q) + fp.FPIsBoundaryCrossedNoMargin(&p, &q),
            0);
  EXPECT_EQ(fp.FPPointsAreOnTheSameSide(&p, &q), 1);
  EXPECT_EQ(fp.FPBoxBoundaryCrossingInclusive(&p, &q, &box) + fp.FPSelectCoincidentEdge(&p, &q), 0);
  EXPECT_EQ(fp.FPGetEdgeSampleDistance(&p, &distance), 0);
  EXPECT_EQ(fp.FPIsPointInside(nullptr) + fp.FPDoLinesCross(nullptr, &p, &q), 0);

  makeFootPrint(fp, {vec(1, 0, 1)});  // one vertex: a zero-length edge to itself
  EXPECT_EQ(fp.FPIsBoundaryCrossed(&p, &q) + fp.FPIsPointInside(&p), 0);
  EXPECT_EQ(fp.FPBoxBoundaryCrossingExclusive(&p, &p, &box), 0);

  makeFootPrint(fp, {vec(0, 0, 0), vec(10, 0, 0)});  // two vertices: a wall with no inside
  _D3DVECTOR nearWall = vec(5, 0, 0.2f), across = vec(0, 0, -1), below = vec(5, 0, -1);
  EXPECT_EQ(fp.FPIsBoundaryCrossed(&nearWall, &zero), 1);
  EXPECT_EQ(fp.FPIsBoundaryCrossedNoMargin(&nearWall, &across), 1);
  EXPECT_EQ(fp.FPIsPointInside(&nearWall), 0);
  EXPECT_EQ(fp.FPPointsAreOnTheSameSide(&nearWall, &below), 1);

  ASSERT_EQ(makeFootPrint(fp, {vec(0, 0, 0), vec(10, 0, 0), vec(10, 0, 0), vec(10, 0, 10), vec(0, 0, 10)}),
            1);
  _D3DVECTOR in = vec(5, 0, 5), out = vec(15, 0, 5);  // a repeated vertex changes nothing
  EXPECT_EQ(fp.FPIsPointInside(&in), 1);
  EXPECT_EQ(fp.FPIsPointInside(&out), 0);
  EXPECT_EQ(fp.FPIsBoundaryCrossed(&in, &zero), 0);
}

namespace {

// Even-odd test with a ray towards +x, in double precision.
bool evenOdd(const std::vector<double>& xs, const std::vector<double>& zs, double px, double pz) {
  bool inside = false;
  for (size_t i = 0, j = xs.size() - 1; i < xs.size(); j = i++)
    if ((zs[i] > pz) != (zs[j] > pz) && px < xs[j] + (pz - zs[j]) * (xs[i] - xs[j]) / (zs[i] - zs[j]))
      inside = !inside;
  return inside;
}

double distanceToBoundary(const std::vector<double>& xs, const std::vector<double>& zs, double px,
                          double pz) {
  double best = 1e300;
  for (size_t i = 0; i < xs.size(); ++i) {
    const size_t j = (i + 1) % xs.size();
    const double ex = xs[j] - xs[i], ez = zs[j] - zs[i], len2 = ex * ex + ez * ez;
    const double t = std::clamp(len2 > 0 ? ((px - xs[i]) * ex + (pz - zs[i]) * ez) / len2 : 0.0, 0.0, 1.0);
    best = std::min(best, std::hypot(px - xs[i] - t * ex, pz - zs[i] - t * ez));
  }
  return best;
}

}  // namespace

TEST(FootPrintCrossing, InsideAgreesWithEvenOddOnRandomStarPolygons) {
  std::mt19937 rng(20260422);
  std::uniform_real_distribution<double> unit(0.0, 1.0);
  int checked = 0;
  for (int polygon = 0; polygon < 150; ++polygon) {
    const int n = 3 + static_cast<int>(unit(rng) * 40);
    // Sorted angles with every gap below pi: star-shaped about the centre, hence simple.
    std::vector<double> angles(n);
    double widestGap = 0.0;
    do {
      for (double& a : angles) a = unit(rng) * 6.283185307179586;
      std::sort(angles.begin(), angles.end());
      widestGap = angles[0] + 6.283185307179586 - angles[n - 1];
      for (int i = 1; i < n; ++i) widestGap = std::max(widestGap, angles[i] - angles[i - 1]);
    } while (widestGap >= 3.14159);
    const double cx = unit(rng) * 40 - 20, cz = unit(rng) * 40 - 20;
    std::vector<double> xs(n), zs(n);
    CKFootPrint fp;
    fp.FPInitialise();
    for (int i = 0; i < n; ++i) {
      const double r = 2.0 + unit(rng) * 8.0;
      xs[i] = static_cast<float>(cx + r * std::cos(angles[i]));
      zs[i] = static_cast<float>(cz + r * std::sin(angles[i]));
      fp.FPAddVertex(static_cast<float>(xs[i]), 0.0f, static_cast<float>(zs[i]));
    }
    ASSERT_EQ(fp.FPUpdateVertexDependencies(), 1);
    for (int k = 0; k < 60; ++k) {
      const double px = cx + unit(rng) * 24 - 12, pz = cz + unit(rng) * 24 - 12;
      if (distanceToBoundary(xs, zs, px, pz) < 0.01) continue;
      const _D3DVECTOR p = vec(static_cast<float>(px), 0.0f, static_cast<float>(pz));
      ASSERT_EQ(fp.FPIsPointInside(&p) == 1, evenOdd(xs, zs, p.x, p.z))
          << polygon << ": " << px << ", " << pz;
      ++checked;
    }
  }
  EXPECT_GT(checked, 8000);
}
