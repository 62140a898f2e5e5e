// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "FootPrintTestUtil.h"
#include "KFootPrint.h"
#include "KVector.h"

using kutil::test::makeFootPrint;
using kutil::test::makeSquare;
using kutil::test::vec;

TEST(FootPrintCrossing, MarginCatchesStepsEndingCloseToAWall) {
  CKFootPrint fp;
  ASSERT_EQ(makeSquare(fp), 1);
  _D3DVECTOR pos = vec(5, 0, 5);
  _D3DVECTOR closeStep = vec(0, 0, 4.8f), clear = vec(0, 0, 4.6f), out = vec(0, 0, 6);
  EXPECT_EQ(fp.FPIsBoundaryCrossed(&pos, &closeStep), 1);
  EXPECT_EQ(fp.FPIsBoundaryCrossed(&pos, &clear), 0);
  EXPECT_EQ(fp.FPIsBoundaryCrossedNoMargin(&pos, &closeStep), 0);
  EXPECT_EQ(fp.FPIsBoundaryCrossedNoMargin(&pos, &clear), 0);
  EXPECT_EQ(fp.FPIsBoundaryCrossedNoMargin(&pos, &out), 1);
  // Beyond a corner the foot of the perpendicular misses both edges.
  _D3DVECTOR corner = vec(5.2f, 0, -5.2f);
  EXPECT_EQ(fp.FPIsBoundaryCrossed(&pos, &corner), 0);
  _D3DVECTOR zero = vec(0, 0, 0), wallSide = vec(9.9f, 3, 5);
  EXPECT_EQ(fp.FPIsBoundaryCrossed(&wallSide, &zero), 1);
  EXPECT_EQ(fp.FPIsBoundaryCrossedNoMargin(&wallSide, &zero), 0);
}

TEST(FootPrintCrossing, InsideNeedsCurrentDependencies) {
  CKFootPrint fp;
  makeSquare(fp);
  _D3DVECTOR in = vec(5, 0, 5), out = vec(15, 0, 5), high = vec(5, 40, 5);
  EXPECT_EQ(fp.FPIsPointInside(&in), 1);
  EXPECT_EQ(fp.FPIsPointInside(&high), 1);  // y is never tested
  EXPECT_EQ(fp.FPIsPointInside(&out), 0);
  EXPECT_EQ(fp.FPPointsAreOnTheSameSide(&in, &high), 1);
  EXPECT_EQ(fp.FPPointsAreOnTheSameSide(&in, &out), 0);
}

TEST(FootPrintCrossing, LineIntersectionKinds) {
  CKFootPrint fp;
  fp.FPInitialise();
  int kind = 9;
  EXPECT_EQ(fp.FPGetCoincidenceKind(&kind), 0);
  _D3DVECTOR c;
  _D3DVECTOR a1 = vec(0, 5, 0), a2 = vec(4, 5, 4), b1 = vec(0, 0, 4), b2 = vec(4, 0, 0);
  ASSERT_EQ(fp.FPDoLinesCross(&a1, &a2, &b1, &b2), 1);
  fp.FPGetCrossingPoint(&c);
  EXPECT_FLOAT_EQ(c.x, 2.0f);
  EXPECT_FLOAT_EQ(c.y, 0.0f);
  EXPECT_FLOAT_EQ(c.z, 2.0f);
  fp.FPGetCoincidenceKind(&kind);
  EXPECT_EQ(kind, 0);

  _D3DVECTOR s1 = vec(0, 0, 0), s2 = vec(1, 0, 1);  // lines meet beyond this segment
  EXPECT_EQ(fp.FPDoLinesCross(&s1, &s2, &b1, &b2), 0);

  _D3DVECTOR v1 = vec(1, 0, -5), v2 = vec(1, 0, 5);  // constant x against a general line
  tagKLineEquation vertical;
  fp.FPMakeLineEquation(&vertical, &v1, &v2);
  ASSERT_EQ(fp.FPDoLinesCross(&vertical, &a1, &a2), 1);
  fp.FPGetCrossingPoint(&c);
  EXPECT_FLOAT_EQ(c.z, 1.0f);

  _D3DVECTOR h1 = vec(0, 0, 0), h2 = vec(4, 0, 0), h3 = vec(2, 0, 0), h4 = vec(6, 0, 0);
  tagKLineEquation la, lb;
  fp.FPMakeLineEquation(&la, &h1, &h2);
  fp.FPMakeLineEquation(&lb, &h3, &h4);
  ASSERT_EQ(fp.FPDoLinesCross(&la, &lb), 1);  // collinear overlap
  fp.FPGetCoincidenceKind(&kind);
  EXPECT_EQ(kind, 1);
  fp.FPGetCrossingPoint(&c);
  EXPECT_FLOAT_EQ(c.x, 4.0f);  // the first segment's end

  _D3DVECTOR p1 = vec(0, 0, 1), p2 = vec(4, 0, 1);
  EXPECT_EQ(fp.FPDoLinesCross(&h1, &h2, &p1, &p2), 0);
  fp.FPGetCoincidenceKind(&kind);
  EXPECT_EQ(kind, 2);
  fp.FPGetCrossingPoint(&c);
  EXPECT_FLOAT_EQ(c.z, 0.0f);
}

TEST(FootPrintSlide, StepKeepsOnlyItsComponentAlongTheWall) {
  _D3DVECTOR a = vec(0, 0, 0), b = vec(10, 0, 0);
  _D3DVECTOR step = vec(1, 0.5f, 1);
  EXPECT_EQ(CKFootPrint::FPAdjustTranslation(&a, &b, &step), 1);
  EXPECT_FLOAT_EQ(step.x, 1.0f);
  EXPECT_FLOAT_EQ(step.y, 0.5f);
  EXPECT_FLOAT_EQ(step.z, 0.0f);
  step = vec(-1, 0.5f, 1);
  CKFootPrint::FPAdjustTranslation(&a, &b, &step);
  EXPECT_FLOAT_EQ(step.x, -1.0f);
  EXPECT_FLOAT_EQ(step.y, 0.5f);
  EXPECT_FLOAT_EQ(step.z, 0.0f);
  step = vec(3, 2, 4);  // a wall of no length keeps only the vertical part
  CKFootPrint::FPAdjustTranslation(&a, &a, &step);
  EXPECT_FLOAT_EQ(step.x, 0.0f);
  EXPECT_FLOAT_EQ(step.y, 2.0f);
  EXPECT_FLOAT_EQ(step.z, 0.0f);
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
    const double across = (step.x * ez - step.z * ex) / len;  // component square to the wall
    EXPECT_NEAR(across, 0.0, 1e-4);
    EXPECT_GE((step.x * ex + step.z * ez) * (before.x * ex + before.z * ez), -1e-6);  // sense kept
    EXPECT_LE(std::hypot(step.x, step.z), std::hypot(before.x, before.z) + 1e-4);
    EXPECT_EQ(step.y, before.y);
  }
}

TEST(FootPrintEdgeQueries, HeightDistanceAndSampleDistance) {
  CKFootPrint fp;
  makeFootPrint(fp, {vec(0, 0, 0), vec(0, 4, 8), vec(5, 0, 0)});
  _D3DVECTOR p = vec(0, 99, 2);
  EXPECT_EQ(fp.FPUpdateYFromSelectedEdgeCrossing(&p), 0);  // no cursor
  fp.FPSelectFirstEdge();
  ASSERT_EQ(fp.FPUpdateYFromSelectedEdgeCrossing(&p), 1);  // constant x: interpolated along z
  EXPECT_FLOAT_EQ(p.y, 1.0f);
  fp.FPSelectNextEdgeNoWrap();  // (0, 4, 8) -> (5, 0, 0): along x
  p = vec(2.5f, 0, 123);
  fp.FPUpdateYFromSelectedEdgeCrossing(&p);
  EXPECT_FLOAT_EQ(p.y, 2.0f);
  EXPECT_FLOAT_EQ(p.z, 123.0f);

  float distance = -1;
  fp.FPSelectNextEdgeNoWrap();  // (5, 0, 0) -> (0, 0, 0)
  p = vec(2, 7, 3);
  ASSERT_EQ(fp.FPGetEdgeSampleDistance(&p, &distance), 1);
  EXPECT_FLOAT_EQ(distance, 3.0f);
  p = vec(-3, 0, 4);
  fp.FPGetEdgeSampleDistance(&p, &distance);
  EXPECT_FLOAT_EQ(distance, 5.0f);  // nearest to the end point

  _D3DVECTOR p1 = vec(0, 0, 5), p2 = vec(10, 0, 5), q1 = vec(3, 2, 0), q2 = vec(3, 2, 10);
  ASSERT_EQ(fp.FPDistanceToEdge(&p1, &p2, &q1, &q2, &distance), 1);
  EXPECT_FLOAT_EQ(distance, std::sqrt(29.0f));  // q1's height counts
  _D3DVECTOR c1 = vec(0, 0, 0), c2 = vec(4, 0, 0), c3 = vec(2, 0, 0), c4 = vec(6, 0, 0);
  ASSERT_EQ(fp.FPDistanceToEdge(&c1, &c2, &c3, &c4, &distance), 1);
  EXPECT_FLOAT_EQ(distance, 0.0f);
  _D3DVECTOR beyond = vec(12, 0, 0);
  EXPECT_EQ(fp.FPDistanceToEdge(&c1, &c2, &c4, &beyond, &distance), 0);
}

TEST(FootPrintEdgeQueries, CoincidentEdgeNeedsAUsableOverlap) {
  CKFootPrint fp;
  makeSquare(fp);
  fp.FPSelectFirstEdge();
  fp.FPSelectNextEdgeNoWrap();
  _D3DVECTOR a = vec(10, 0, 10), b = vec(12, 0, 10);  // touches the top edge at its end only
  EXPECT_EQ(fp.FPSelectCoincidentEdge(&a, &b), 0);
  _D3DVECTOR cursor;
  fp.FPGetEdgeFromVector(&cursor);
  EXPECT_FLOAT_EQ(cursor.x, 10.0f);
  EXPECT_FLOAT_EQ(cursor.z, 0.0f);
  a = vec(6, 0, 10), b = vec(5.5f, 3, 10);
  ASSERT_EQ(fp.FPSelectCoincidentEdge(&a, &b), 1);
  fp.FPGetEdgeFromVector(&cursor);
  EXPECT_FLOAT_EQ(cursor.z, 10.0f);
  EXPECT_FLOAT_EQ(cursor.x, 10.0f);
  a = vec(2, 0, 0.5f), b = vec(8, 0, 0.5f);  // parallel, off the line
  EXPECT_EQ(fp.FPSelectCoincidentEdge(&a, &b), 0);
}

TEST(FootPrintClearance, BoxCrossingOfAWallFaceSpansItsHeight) {
  CKFootPrint wall;
  ASSERT_EQ(makeFootPrint(wall, {vec(0, 0, 0), vec(10, 0, 0), vec(10, 3, 0), vec(0, 3, 0)}), 1);
  _D3DVECTOR from = vec(5, 1, -1), to = vec(5, 1, 1), on = vec(5, 1, 0);
  _D3DRMBOX box;
  ASSERT_EQ(wall.FPBoxBoundaryCrossingExclusive(&from, &to, &box), 1);
  EXPECT_FLOAT_EQ(box.min.y, 0.0f);
  EXPECT_FLOAT_EQ(box.max.y, 3.0f);
  EXPECT_FLOAT_EQ(box.min.x, 5.0f);
  EXPECT_FLOAT_EQ(box.max.z, 0.0f);
  EXPECT_EQ(wall.FPBoxBoundaryCrossingExclusive(&on, &to, &box), 0);
  EXPECT_EQ(wall.FPBoxBoundaryCrossingExclusive(&from, &on, &box), 0);
  EXPECT_EQ(wall.FPBoxBoundaryCrossingInclusive(&on, &to, &box), 1);
  EXPECT_EQ(wall.FPBoxBoundaryCrossingInclusive(&on, &on, &box), 1);  // a zero step on the wall

  _D3DVECTOR top = vec(0, -1, 0), bottom = vec(0, -1, 0);
  ASSERT_EQ(wall.FPGetClearance(&from, &to, &top, &bottom, 1, 1), 1);  // vertical: crossing preferred
  EXPECT_FLOAT_EQ(top.y, 3.0f);
  EXPECT_FLOAT_EQ(bottom.y, 0.0f);
  EXPECT_FLOAT_EQ(top.x, 0.0f);                                         // only y is written
  EXPECT_EQ(wall.FPGetFaceClearance(&from, &to, &top, &bottom, 1), 0);  // cannot solve a vertical plane
  EXPECT_EQ(wall.FPGetFaceClearance(&from, &to, &top, &bottom, 7), 0);
}

TEST(FootPrintClearance, SlopingFloorModesAndTheBoxFallback) {
  CKFootPrint floor;  // y = x / 2
  ASSERT_EQ(makeFootPrint(floor, {vec(0, 0, 0), vec(10, 5, 0), vec(10, 5, 10), vec(0, 0, 10)}), 1);
  _D3DVECTOR from = vec(5, 0, 5), to = vec(12, 0, 5), inside = vec(6, 0, 5);
  _D3DVECTOR top, bottom;
  ASSERT_EQ(floor.FPGetFaceClearance(&from, &to, &top, &bottom, 0), 1);
  EXPECT_FLOAT_EQ(top.y, 5.0f);     // the crossed edge
  EXPECT_FLOAT_EQ(bottom.y, 2.5f);  // the plane at the inside end
  ASSERT_EQ(floor.FPGetFaceClearance(&from, &to, &top, &bottom, 1), 1);
  EXPECT_FLOAT_EQ(top.y, 2.5f);
  EXPECT_FLOAT_EQ(bottom.y, 2.5f);
  EXPECT_EQ(floor.FPGetFaceClearance(&from, &inside, &top, &bottom, 0), 0);  // nothing crossed
  ASSERT_EQ(floor.FPGetClearance(&from, &inside, &top, &bottom, 0, 0), 1);   // the box instead
  EXPECT_FLOAT_EQ(top.y, 5.0f);
  EXPECT_FLOAT_EQ(bottom.y, 0.0f);

  CKFootPrint empty;
  empty.FPInitialise();
  EXPECT_EQ(empty.FPGetClearance(&from, &to, &top, &bottom, 0, 0), 0);
  empty.FPSetClearance(4.0f, 1.0f);
  ASSERT_EQ(empty.FPGetClearance(&from, &to, &top, &bottom, 0, 0), 1);
  EXPECT_FLOAT_EQ(top.y, 4.0f);
}

TEST(FootPrintBadInput, DegenerateFootPrintsGiveTheDocumentedAnswers) {
  CKFootPrint fp;
  fp.FPInitialise();
  _D3DVECTOR p = vec(0, 0, 0), q = vec(5, 0, 5), step = vec(0.1f, 0, 0);
  _D3DRMBOX box;
  float distance;
  EXPECT_EQ(fp.FPIsPointInside(&p), 0);
  EXPECT_EQ(fp.FPIsBoundaryCrossed(&p, &step), 0);
  EXPECT_EQ(fp.FPIsBoundaryCrossedNoMargin(&p, &step), 0);
  EXPECT_EQ(fp.FPPointsAreOnTheSameSide(&p, &q), 1);
  EXPECT_EQ(fp.FPBoxBoundaryCrossingInclusive(&p, &q, &box), 0);
  EXPECT_EQ(fp.FPSelectCoincidentEdge(&p, &q), 0);
  EXPECT_EQ(fp.FPGetEdgeSampleDistance(&p, &distance), 0);
  EXPECT_EQ(fp.FPIsPointInside(nullptr), 0);
  EXPECT_EQ(fp.FPDoLinesCross(nullptr, &p, &q), 0);

  makeFootPrint(fp, {vec(1, 0, 1)});  // one vertex: a zero-length edge to itself
  _D3DVECTOR onVertex = vec(1, 0, 1);
  EXPECT_EQ(fp.FPIsBoundaryCrossed(&onVertex, &step), 0);
  EXPECT_EQ(fp.FPIsPointInside(&onVertex), 0);
  _D3DVECTOR zero = vec(0, 0, 0);
  EXPECT_EQ(fp.FPBoxBoundaryCrossingExclusive(&onVertex, &onVertex, &box), 0);

  makeFootPrint(fp, {vec(0, 0, 0), vec(10, 0, 0)});  // two vertices: a wall with no inside
  _D3DVECTOR nearWall = vec(5, 0, 0.2f), across = vec(0, 0, -1);
  EXPECT_EQ(fp.FPIsBoundaryCrossed(&nearWall, &zero), 1);
  EXPECT_EQ(fp.FPIsBoundaryCrossedNoMargin(&nearWall, &across), 1);
  EXPECT_EQ(fp.FPIsPointInside(&nearWall), 0);
  _D3DVECTOR below = vec(5, 0, -1);
  EXPECT_EQ(fp.FPPointsAreOnTheSameSide(&nearWall, &below), 1);

  // A repeated vertex and a zero-length step change nothing.
  ASSERT_EQ(makeFootPrint(fp, {vec(0, 0, 0), vec(10, 0, 0), vec(10, 0, 0), vec(10, 0, 10), vec(0, 0, 10)}),
            1);
  _D3DVECTOR in = vec(5, 0, 5), out = vec(15, 0, 5);
  EXPECT_EQ(fp.FPIsPointInside(&in), 1);
  EXPECT_EQ(fp.FPIsPointInside(&out), 0);
  EXPECT_EQ(fp.FPIsBoundaryCrossedNoMargin(&in, &zero), 0);
  EXPECT_EQ(fp.FPIsBoundaryCrossed(&in, &zero), 0);
}

namespace {

// Even-odd test with a ray towards +x, in double precision.
bool evenOdd(const std::vector<double>& xs, const std::vector<double>& zs, double px, double pz) {
  bool inside = false;
  const size_t n = xs.size();
  for (size_t i = 0, j = n - 1; i < n; j = i++) {
    if ((zs[i] > pz) != (zs[j] > pz)) {
      const double x = xs[j] + (pz - zs[j]) * (xs[i] - xs[j]) / (zs[i] - zs[j]);
      if (px < x) inside = !inside;
    }
  }
  return inside;
}

double distanceToBoundary(const std::vector<double>& xs, const std::vector<double>& zs, double px,
                          double pz) {
  double best = 1e300;
  const size_t n = xs.size();
  for (size_t i = 0; i < n; ++i) {
    const size_t j = (i + 1) % n;
    const double ex = xs[j] - xs[i], ez = zs[j] - zs[i], len2 = ex * ex + ez * ez;
    double t = len2 > 0 ? ((px - xs[i]) * ex + (pz - zs[i]) * ez) / len2 : 0.0;
    t = std::clamp(t, 0.0, 1.0);
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
          << "polygon " << polygon << " point " << px << ", " << pz;
      ++checked;
    }
  }
  EXPECT_GT(checked, 8000);
}

namespace {

// The margin test as plainly stated: headings for the distance, then the foot.
int marginReference(const std::vector<_D3DVECTOR>& v, const _D3DVECTOR& target) {
  const size_t n = v.size();
  for (size_t i = 0; i < n; ++i) {
    const _D3DVECTOR& a = v[i];
    const _D3DVECTOR& b = v[(i + 1) % n];
    double pe = 0, pt = 0;
    KUGetRotationalAngle(b.z - a.z, b.x - a.x, &pe);
    KUGetRotationalAngle(target.z - a.z, target.x - a.x, &pt);
    const double vx = target.x - a.x, vz = target.z - a.z;
    if (std::fabs(std::sin(pt - pe)) * std::sqrt(vx * vx + vz * vz) > 0.3) continue;
    const double ux = a.x - b.x, uz = a.z - b.z, wx = b.x - target.x, wz = b.z - target.z;
    const double uu = ux * ux + uz * uz, vv = vx * vx + vz * vz, ww = wx * wx + wz * wz;
    if (ww < uu + vv && vv < uu + ww) return 1;
  }
  return 0;
}

}  // namespace

TEST(FootPrintCrossing, MarginTestMatchesTheHeadingFormulaOnRandomSteps) {
  std::mt19937 rng(77);
  std::uniform_real_distribution<float> coord(-6.0f, 6.0f);
  std::uniform_int_distribution<int> grid(-4, 4);
  int caught = 0;
  for (int polygon = 0; polygon < 100; ++polygon) {
    std::vector<_D3DVECTOR> v;
    CKFootPrint fp;
    fp.FPInitialise();
    for (int i = 0; i < 6; ++i) {
      // Every other polygon sits on a coarse grid, so edges run exactly along the axes.
      const _D3DVECTOR p = (polygon % 2)
                               ? vec(static_cast<float>(grid(rng)), 0, static_cast<float>(grid(rng)))
                               : vec(coord(rng), 0, coord(rng));
      v.push_back(p);
      fp.FPAddVertex(&p);
    }
    for (int k = 0; k < 200; ++k) {
      const _D3DVECTOR pos = vec(0, 0, 0);
      const _D3DVECTOR step = vec(coord(rng), 0, (k % 3 == 0) ? 0.0f : coord(rng));
      const int got = fp.FPIsBoundaryCrossed(&pos, &step);
      ASSERT_EQ(got, marginReference(v, step)) << polygon << " " << step.x << " " << step.z;
      caught += got;
    }
  }
  EXPECT_GT(caught, 100);
}
