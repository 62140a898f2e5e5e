// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "FootPrintTestSupport.h"

using namespace kutil::test;

TEST(FootPrintCrossing, SquareWithAndWithoutTheMargin) {
  CKFootPrint fp;
  ASSERT_EQ(makeSquare(fp), 1);
  const struct {
    _D3DVECTOR pos, step;
    int margin, noMargin;
  } rows[] = {
      {{5, 0, 5}, {0, 0, 4.8f}, 1, 0},  // ends within 0.3 of the wall
      {{5, 0, 5}, {0, 0, 4.6f}, 0, 0},
      {{5, 0, 5}, {0, 0, 6}, 0, 1},          // the margin form looks only at where the step ends
      {{5, 0, 5}, {5.2f, 0, -5.25f}, 0, 1},  // beyond a corner the perpendicular foot misses
      {{9.9f, 3, 5}, {0, 0, 0}, 1, 0},       // standing still beside a wall
      {{5, 0, 5}, {-4.8f, 0, 0}, 1, 0},
      {{5, 0, 5}, {4.75f, 0, 0.5f}, 1, 0},
      {{5, 0, 5}, {-6, 0, 1}, 0, 1},
      {{0, 0, 10}, {0, 0, 0}, 0, 1},  // on a corner
  };
  for (const auto& r : rows) {
    SCOPED_TRACE(::testing::Message() << "step " << r.step.x << "," << r.step.z);
    EXPECT_EQ(r.margin, fp.FPIsBoundaryCrossed(&r.pos, &r.step));
    EXPECT_EQ(r.noMargin, fp.FPIsBoundaryCrossedNoMargin(&r.pos, &r.step));
  }
  _D3DVECTOR in = {5, 0, 5}, out = {15, 0, 5}, high = {5, 40, 5};
  EXPECT_EQ(fp.FPIsPointInside(&high), 1);  // y is never tested
  EXPECT_EQ(fp.FPIsPointInside(&out), 0);
  EXPECT_EQ(fp.FPPointsAreOnTheSameSide(&in, &high), 1);
  EXPECT_EQ(fp.FPPointsAreOnTheSameSide(&in, &out), 0);
}

TEST(FootPrintCrossing, SegmentsCrossingKindPointAndDistance) {
  const float untouched = -7.0f;
  const struct {
    _D3DVECTOR p1, p2, q1, q2;
    int cross, kind;
    float x, z, distance;  // the crossing point; the distance from q1, or untouched
  } rows[] = {
      {{0, 5, 0}, {4, 5, 4}, {0, 2, 4}, {4, 2, 0}, 1, 0, 2, 2, std::sqrt(12.0f)},   // q1's height counts
      {{2, 0, 2}, {4, 0, 4}, {0, 0, 4}, {4, 0, 0}, 1, 0, 2, 2, std::sqrt(8.0f)},    // at an end point
      {{0, 0, 0}, {1, 0, 1}, {0, 0, 4}, {4, 0, 0}, 0, 0, 2, 2, untouched},          // beyond the first
      {{0, 0, 0}, {4, 0, 4}, {0, 0, 4}, {1, 0, 3}, 0, 0, 2, 2, untouched},          // beyond the second
      {{1, 0, -5}, {1, 0, 5}, {0, 5, 0}, {4, 5, 4}, 1, 0, 1, 1, std::sqrt(27.0f)},  // constant x
      {{0, 5, 0}, {4, 5, 4}, {1, 0, -5}, {1, 0, 5}, 1, 0, 1, 1, 6},
      {{3, 0, -1}, {3, 0, 9}, {0, 0, 5}, {10, 0, 5}, 1, 0, 3, 5, 3},  // constant x against constant z
      {{0, 0, 5}, {10, 0, 5}, {3, 0, -1}, {3, 0, 9}, 1, 0, 3, 5, 6},
      {{0, 0, 1}, {4, 0, 1}, {0, 0, -2}, {4, 0, 6}, 1, 0, 1.5f, 1, std::sqrt(11.25f)},  // constant z
      {{0, 0, 1}, {4, 0, 1}, {5, 0, 0}, {9, 0, 8}, 0, 0, 5.5f, 1, untouched},
      {{0, 0, 0}, {4, 0, 0}, {2, 0, 0}, {6, 0, 0}, 1, 1, 4, 0, 0},  // collinear overlap: the first's end
      {{6, 0, 0}, {3, 0, 0}, {0, 0, 0}, {4, 0, 0}, 1, 1, 3, 0, 0},
      {{0, 0, 5}, {10, 0, 5}, {12, 0, 5}, {14, 0, 5}, 0, 1, -1, -1, untouched},  // collinear apart
      {{0, 0, 0}, {4, 0, 0}, {0, 0, 1}, {4, 0, 1}, 0, 2, 0, 0, untouched},       // parallel apart
      {{1, 0, 0}, {1, 0, 4}, {2, 0, 0}, {2, 0, 4}, 0, 2, 0, 0, untouched},
      {{0, 0, 0}, {2, 0, 2}, {0, 0, 1}, {2, 0, 3}, 0, 2, 0, 0, untouched},
      {{0, 0, 0}, {2, 0, 2}, {1, 0, 1}, {3, 0, 3}, 1, 1, 2, 2, 0},
  };
  for (const auto& r : rows) {
    SCOPED_TRACE(::testing::Message() << r.p1.x << "," << r.p1.z << " " << r.q1.x << "," << r.q1.z);
    CKFootPrint fp;
    fp.FPInitialise();
    tagKLineEquation a, b;
    ASSERT_EQ(fp.FPMakeLineEquation(&a, &r.p1, &r.p2) + fp.FPMakeLineEquation(&b, &r.q1, &r.q2), 2);
    EXPECT_EQ(fp.FPDoLinesCross(&r.p1, &r.p2, &r.q1, &r.q2), r.cross);
    EXPECT_EQ(fp.FPDoLinesCross(&a, &r.q1, &r.q2), r.cross);
    EXPECT_EQ(fp.FPDoLinesCross(&a, &b), r.cross);
    int kind = -5;
    EXPECT_EQ(fp.FPGetCoincidenceKind(&kind), 1);
    EXPECT_EQ(kind, r.kind);
    _D3DVECTOR c = {-9, -9, -9};
    EXPECT_EQ(fp.FPGetCrossingPoint(&c), 1);
    if (r.x != -1) {
      EXPECT_NEAR(c.x, r.x, 1e-5);
      EXPECT_NEAR(c.z, r.z, 1e-5);
      EXPECT_EQ(c.y, 0.0f);
    }
    float distance = untouched;
    EXPECT_EQ(fp.FPDistanceToEdge(&r.p1, &r.p2, &r.q1, &r.q2, &distance), r.distance == untouched ? 0 : 1);
    EXPECT_NEAR(distance, r.distance, 1e-5);
  }
  CKFootPrint fresh;
  fresh.FPInitialise();
  int kind = 9;
  EXPECT_EQ(fresh.FPGetCoincidenceKind(&kind), 0) << "no lines met yet";
  EXPECT_EQ(kind, 9);
}

TEST(FootPrintSlide, StepKeepsOnlyItsComponentAlongTheWall) {
  _D3DVECTOR a = {0, 0, 0};
  const struct {
    _D3DVECTOR wallEnd, step;
    const char* slide;
  } rows[] = {{{10, 0, 0}, {1, 0.5f, 1}, "1,0.5,0"}, {{10, 0, 0}, {-1, 0.5f, 1}, "-1,0.5,0"},
              {{0, 0, 10}, {3, -1, 4}, "0,-1,4"},    {{0, 0, 10}, {3, 2, -4}, "0,2,-4"},
              {{3, 0, 4}, {5, 0, 0}, "1.8,0,2.4"},   {a, {3, 2, 4}, "0,2,0"}};  // no wall: only y is left
  for (const auto& r : rows) {
    _D3DVECTOR step = r.step;
    EXPECT_EQ(CKFootPrint::FPAdjustTranslation(&a, &r.wallEnd, &step), 1);
    EXPECT_EQ(str(step), r.slide);
  }
  // Any wall, any step: the slide runs along the wall with the step's part along it; y is kept.
  std::mt19937 rng(1234);
  std::uniform_real_distribution<float> coord(-20.0f, 20.0f);
  for (int i = 0; i < 2000; ++i) {
    const float y = coord(rng);
    _D3DVECTOR s = {coord(rng), y, coord(rng)}, e = {coord(rng), y, coord(rng)};
    const _D3DVECTOR before = {coord(rng) / 4, coord(rng), coord(rng) / 4};
    _D3DVECTOR step = before;
    CKFootPrint::FPAdjustTranslation(&s, &e, &step);
    const double ex = e.x - s.x, ez = e.z - s.z, len = std::hypot(ex, ez);
    if (len < 0.01) continue;
    EXPECT_NEAR((step.x * ez - step.z * ex) / len, 0.0, 1e-4);
    EXPECT_NEAR((step.x * ex + step.z * ez) / len, (before.x * ex + before.z * ez) / len, 1e-4);
    EXPECT_EQ(step.y, before.y);
  }
}

TEST(FootPrintEdgeQueries, HeightSampleDistanceAndCoincidentEdge) {
  CKFootPrint fp;
  makeFootPrint(fp, {{0, 0, 1}, {0, 4, 9}, {2, 4, 1}, {6, 0, 1}, {6, 0, 1}});
  _D3DVECTOR p = {0, 99, 2};
  EXPECT_EQ(fp.FPUpdateYFromSelectedEdgeCrossing(&p), 0) << "no current edge";
  // Along z on a constant-x edge, along x, and the start's height on an edge of no length.
  const _D3DVECTOR points[] = {{0, 99, 3}, {1, 99, 5}, {3, 99, 1}, {7, 99, 7}};
  std::string heights;
  fp.FPSelectFirstEdge();
  for (_D3DVECTOR q : points) {
    EXPECT_EQ(fp.FPUpdateYFromSelectedEdgeCrossing(&q), 1);
    heights += str(q) + " ";
    fp.FPSelectNextEdgeNoWrap();
  }
  EXPECT_EQ(heights, "0,1,3 1,4,5 3,3,1 7,0,7 ");
  // The last edge, (6, 0, 1) -> (0, 0, 1): the nearest end, or straight across.
  const struct {
    _D3DVECTOR at;
    float distance;
  } samples[] = {{{-3, 0, 5}, 5}, {{2, 7, -2}, 3}, {{9, 0, 5}, 5}};
  for (const auto& s : samples) {
    float distance = -1;
    ASSERT_EQ(fp.FPGetEdgeSampleDistance(&s.at, &distance), 1);
    EXPECT_FLOAT_EQ(distance, s.distance);
  }
  makeSquare(fp);
  _D3DVECTOR a = {10, 0, 10}, b = {12, 0, 10};  // touches an edge at its end only
  EXPECT_EQ(fp.FPSelectCoincidentEdge(&a, &b), 0);
  a = {6, 0, 10}, b = {5.5f, 3, 10};
  ASSERT_EQ(fp.FPSelectCoincidentEdge(&a, &b), 1);
  EXPECT_EQ(edgeFrom(fp), "10,0,10");
}

TEST(FootPrintClearance, WallBoxCrossingAndSlopingFloorModes) {
  CKFootPrint wall, floor;  // a wall in x-y, and a floor rising as y = x / 2
  ASSERT_EQ(makeFootPrint(wall, {{0, 0, 0}, {10, 0, 0}, {10, 3, 0}, {0, 3, 0}}), 1);
  ASSERT_EQ(makeFootPrint(floor, {{0, 0, 0}, {10, 5, 0}, {10, 5, 10}, {0, 0, 10}}), 1);
  _D3DVECTOR from = {5, 1, -1}, to = {5, 1, 1}, on = {5, 1, 0}, top, bottom;
  _D3DRMBOX box;
  ASSERT_EQ(wall.FPBoxBoundaryCrossingExclusive(&from, &to, &box), 1);
  EXPECT_EQ(str(box.min) + " " + str(box.max), "5,0,0 5,3,0");        // the crossed edges' heights
  EXPECT_EQ(wall.FPBoxBoundaryCrossingExclusive(&on, &to, &box), 0);  // own end points ignored
  EXPECT_EQ(wall.FPBoxBoundaryCrossingInclusive(&on, &to, &box) +
                wall.FPBoxBoundaryCrossingInclusive(&on, &on, &box),
            2);
  _D3DVECTOR inside = {5, 0, 5}, out = {12, 0, 5}, near = {6, 0, 5}, left = {-2, 0, 5};
  _D3DVECTOR back = {4, 0, 9}, beyond = {4, 0, 11};
  const struct {
    CKFootPrint* fp;
    _D3DVECTOR *from, *to;
    int mode, prefer, result;
    const char* clearance;  // top and bottom; only their heights are ever written
  } rows[] = {{&wall, &from, &to, 1, -1, 0, "9,9,9 9,9,9"},  // a vertical plane cannot be solved
              {&wall, &from, &to, 7, -1, 0, "9,9,9 9,9,9"},
              {&wall, &from, &to, 1, 1, 1, "9,3,9 9,0,9"},  // upright: crossing
              {&floor, &inside, &out, 0, -1, 1, "9,5,9 9,2.5,9"},
              {&floor, &out, &inside, 0, -1, 1, "9,5,9 9,2.5,9"},
              {&floor, &inside, &out, 1, -1, 1, "9,2.5,9 9,2.5,9"},
              {&floor, &inside, &out, 2, -1, 1, "9,5,9 9,5,9"},
              {&floor, &left, &out, 0, -1, 1, "9,5,9 9,0,9"},
              {&floor, &inside, &near, 0, -1, 0, "9,9,9 9,9,9"},
              {&floor, &left, &left, 0, -1, 0, "9,9,9 9,9,9"},
              {&floor, &inside, &near, 2, -1, 0, "9,9,9 9,9,9"},
              {&floor, &inside, &near, 0, 0, 1, "9,5,9 9,0,9"},    // nothing crossed: the box answers
              {&floor, &back, &beyond, 2, -1, 1, "9,2,9 9,2,9"}};  // across (10, 5, 10)-(0, 0, 10) at x = 4
  for (const auto& r : rows) {
    SCOPED_TRACE(r.mode);
    top = bottom = {9, 9, 9};
    EXPECT_EQ(r.prefer < 0 ? r.fp->FPGetFaceClearance(r.from, r.to, &top, &bottom, r.mode)
                           : r.fp->FPGetClearance(r.from, r.to, &top, &bottom, r.mode, r.prefer),
              r.result);
    EXPECT_EQ(str(top) + " " + str(bottom), r.clearance);
  }
}

TEST(FootPrintBadInput, DegenerateFootPrintsGiveTheDocumentedAnswers) {
  CKFootPrint fp;
  fp.FPInitialise();
  _D3DVECTOR p = {1, 0, 1}, q = {5, 0, 5}, zero = {0, 0, 0}, top, bottom;
  _D3DRMBOX box;
  float distance;
  EXPECT_EQ(fp.FPIsPointInside(&p) + fp.FPIsBoundaryCrossed(&p, &q) + fp.FPIsBoundaryCrossedNoMargin(&p, &q),
            0);
  EXPECT_EQ(fp.FPPointsAreOnTheSameSide(&p, &q), 1);
  EXPECT_EQ(fp.FPBoxBoundaryCrossingInclusive(&p, &q, &box) + fp.FPSelectCoincidentEdge(&p, &q), 0);
  EXPECT_EQ(fp.FPGetEdgeSampleDistance(&p, &distance) + fp.FPGetClearance(&p, &q, &top, &bottom, 0, 0), 0);
  EXPECT_EQ(fp.FPIsPointInside(nullptr) + fp.FPDoLinesCross(nullptr, &p, &q), 0);

  makeFootPrint(fp, {{1, 0, 1}});  // one vertex: a zero-length edge to itself
  EXPECT_EQ(fp.FPIsBoundaryCrossed(&p, &q) + fp.FPIsPointInside(&p), 0);
  EXPECT_EQ(fp.FPBoxBoundaryCrossingExclusive(&p, &p, &box), 0);

  makeFootPrint(fp, {{0, 0, 0}, {10, 0, 0}});  // two vertices: a wall with no inside
  _D3DVECTOR nearWall = {5, 0, 0.2f}, across = {0, 0, -1}, below = {5, 0, -1};
  EXPECT_EQ(fp.FPIsBoundaryCrossed(&nearWall, &zero), 1);
  EXPECT_EQ(fp.FPIsBoundaryCrossedNoMargin(&nearWall, &across), 1);
  EXPECT_EQ(fp.FPIsPointInside(&nearWall), 0);
  EXPECT_EQ(fp.FPPointsAreOnTheSameSide(&nearWall, &below), 1);

  // A missing argument answers 0 where all present answer 1.
  makeSquare(fp);
  _D3DVECTOR v[4] = {{1, 0, 1}, {5, 0, 5}, {1, 0, 5}, {5, 0, 1}};
  for (int k = 0; k <= 5; ++k) {
    _D3DVECTOR* a[4] = {&v[0], &v[1], &v[2], &v[3]};
    if (k < 4) a[k] = nullptr;
    EXPECT_EQ(fp.FPDistanceToEdge(a[0], a[1], a[2], a[3], k == 4 ? nullptr : &distance) +
                  fp.FPDoLinesCross(a[0], a[1], a[2], a[3]) +
                  fp.FPGetFaceClearance(a[0], a[1], a[2], a[3], 1) +
                  fp.FPGetClearance(a[0], a[1], a[2], a[3], 0, 0),
              k < 4    ? 0
              : k == 4 ? 3
                       : 4)
        << k;
  }
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

}  // namespace

// Random simple polygons (jittered angles about a centre, random radii): the parity test agrees with
// an even-odd count, and moving both the polygon and the point keeps the answer.
TEST(FootPrintCrossing, InsideAgreesWithEvenOddAndSurvivesTranslation) {
  std::mt19937 rng(20260422);
  std::uniform_real_distribution<double> unit(0.0, 1.0);
  int checked = 0;
  for (int polygon = 0; polygon < 150; ++polygon) {
    const int n = 4 + static_cast<int>(unit(rng) * 40);
    const double cx = unit(rng) * 40 - 20, cz = unit(rng) * 40 - 20;
    std::vector<double> xs(n), zs(n);
    CKFootPrint fp;
    fp.FPInitialise();
    for (int i = 0; i < n; ++i) {
      const double angle = 6.283185307179586 * (i + 0.8 * unit(rng)) / n, r = 2.0 + unit(rng) * 8.0;
      xs[i] = static_cast<float>(cx + r * std::cos(angle));
      zs[i] = static_cast<float>(cz + r * std::sin(angle));
      fp.FPAddVertex(static_cast<float>(xs[i]), 0.0f, static_cast<float>(zs[i]));
    }
    ASSERT_EQ(fp.FPUpdateVertexDependencies(), 1);
    CKFootPrint moved;
    ASSERT_EQ(moved.FPCopyFrom(&fp), 1);
    const _D3DVECTOR shift = {static_cast<float>(unit(rng) * 16 - 8), 1,
                              static_cast<float>(unit(rng) * 16 - 8)};
    ASSERT_EQ(moved.FPTranslate(&shift), 1);
    ASSERT_EQ(moved.FPUpdateVertexDependencies(), 1);
    for (int k = 0; k < 60; ++k) {
      const double px = cx + unit(rng) * 24 - 12, pz = cz + unit(rng) * 24 - 12;
      // Points within 0.01 of the boundary are left out: float rounding may put them either side.
      const bool inside = evenOdd(xs, zs, px, pz);
      bool clear = true;
      for (double d : {-0.01, 0.01})
        clear = clear && evenOdd(xs, zs, px + d, pz) == inside && evenOdd(xs, zs, px, pz + d) == inside;
      if (!clear) continue;
      const _D3DVECTOR p = {static_cast<float>(px), 0.0f, static_cast<float>(pz)};
      const _D3DVECTOR q = {p.x + shift.x, 0.0f, p.z + shift.z};
      ASSERT_EQ(fp.FPIsPointInside(&p), inside ? 1 : 0) << polygon << ": " << px << ", " << pz;
      EXPECT_EQ(moved.FPIsPointInside(&q), inside ? 1 : 0);
      ++checked;
    }
  }
  EXPECT_GT(checked, 8000);
}
