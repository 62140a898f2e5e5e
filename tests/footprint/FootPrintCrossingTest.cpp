// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>

#include "FootPrintTestSupport.h"

using namespace kutil::test;

TEST(FootPrintCrossing, SquareWithAndWithoutTheMargin) {
  CKFootPrint fp;
  ASSERT_EQ(makeSquare(fp), 1);
  // Ends within 0.3 of the wall, or not; the margin form looks only at where the step ends; beyond a
  // corner the perpendicular foot misses; standing still beside a wall.
  const struct {
    _D3DVECTOR pos, step;
    int margin, noMargin;
  } rows[] = {
      {{5, 0, 5}, {0, 0, 4.8f}, 1, 0},      {{5, 0, 5}, {0, 0, 4.6f}, 0, 0}, {{5, 0, 5}, {0, 0, 6}, 0, 1},
      {{5, 0, 5}, {5.2f, 0, -5.25f}, 0, 1}, {{9.9f, 3, 5}, {0, 0, 0}, 1, 0}, {{5, 0, 5}, {-4.8f, 0, 0}, 1, 0},
      {{5, 0, 5}, {4.75f, 0, 0.5f}, 1, 0},  {{5, 0, 5}, {-6, 0, 1}, 0, 1},   {{0, 0, 10}, {0, 0, 0}, 0, 1}};
  for (const auto& r : rows)
    EXPECT_EQ(seq({fp.FPIsBoundaryCrossed(&r.pos, &r.step), fp.FPIsBoundaryCrossedNoMargin(&r.pos, &r.step)}),
              seq({r.margin, r.noMargin}))
        << "step " << str(r.step);
  _D3DVECTOR in = {5, 0, 5}, out = {15, 0, 5}, high = {5, 40, 5};  // y is never tested
  EXPECT_EQ(seq({fp.FPIsPointInside(&high), fp.FPIsPointInside(&out), fp.FPPointsAreOnTheSameSide(&in, &high),
                 fp.FPPointsAreOnTheSameSide(&in, &out)}),
            "1 0 1 0");
}

TEST(FootPrintCrossing, SegmentsCrossingKindPointAndDistance) {
  // Rows: meeting with q1's height counted, at an end point, beyond the first, beyond the second;
  // constant x against general and constant z; constant z; collinear overlap (the first's end) and
  // apart; parallel apart in all three kinds.
  const float untouched = -7.0f;
  const struct {
    _D3DVECTOR p1, p2, q1, q2;
    int cross, kind;
    float x, z, distance;  // the crossing point; the distance from q1, or untouched
  } rows[] = {{{0, 5, 0}, {4, 5, 4}, {0, 2, 4}, {4, 2, 0}, 1, 0, 2, 2, std::sqrt(12.0f)},
              {{2, 0, 2}, {4, 0, 4}, {0, 0, 4}, {4, 0, 0}, 1, 0, 2, 2, std::sqrt(8.0f)},
              {{0, 0, 0}, {1, 0, 1}, {0, 0, 4}, {4, 0, 0}, 0, 0, 2, 2, untouched},
              {{0, 0, 0}, {4, 0, 4}, {0, 0, 4}, {1, 0, 3}, 0, 0, 2, 2, untouched},
              {{1, 0, -5}, {1, 0, 5}, {0, 5, 0}, {4, 5, 4}, 1, 0, 1, 1, std::sqrt(27.0f)},
              {{0, 5, 0}, {4, 5, 4}, {1, 0, -5}, {1, 0, 5}, 1, 0, 1, 1, 6},
              {{3, 0, -1}, {3, 0, 9}, {0, 0, 5}, {10, 0, 5}, 1, 0, 3, 5, 3},
              {{0, 0, 5}, {10, 0, 5}, {3, 0, -1}, {3, 0, 9}, 1, 0, 3, 5, 6},
              {{0, 0, 1}, {4, 0, 1}, {0, 0, -2}, {4, 0, 6}, 1, 0, 1.5f, 1, std::sqrt(11.25f)},
              {{0, 0, 1}, {4, 0, 1}, {5, 0, 0}, {9, 0, 8}, 0, 0, 5.5f, 1, untouched},
              {{0, 0, 0}, {4, 0, 0}, {2, 0, 0}, {6, 0, 0}, 1, 1, 4, 0, 0},
              {{6, 0, 0}, {3, 0, 0}, {0, 0, 0}, {4, 0, 0}, 1, 1, 3, 0, 0},
              {{0, 0, 5}, {10, 0, 5}, {12, 0, 5}, {14, 0, 5}, 0, 1, -1, -1, untouched},
              {{0, 0, 0}, {4, 0, 0}, {0, 0, 1}, {4, 0, 1}, 0, 2, 0, 0, untouched},
              {{1, 0, 0}, {1, 0, 4}, {2, 0, 0}, {2, 0, 4}, 0, 2, 0, 0, untouched},
              {{0, 0, 0}, {2, 0, 2}, {0, 0, 1}, {2, 0, 3}, 0, 2, 0, 0, untouched},
              {{0, 0, 0}, {2, 0, 2}, {1, 0, 1}, {3, 0, 3}, 1, 1, 2, 2, 0}};
  for (const auto& r : rows) {
    CKFootPrint fp;
    fp.FPInitialise();
    tagKLineEquation a, b;
    int kind = -5;
    _D3DVECTOR c = {-9, -9, -9};
    float distance = untouched;
    // Every form answers alike; then the kind, the crossing point and the distance it leaves.
    EXPECT_EQ(seq({fp.FPMakeLineEquation(&a, &r.p1, &r.p2), fp.FPMakeLineEquation(&b, &r.q1, &r.q2),
                   fp.FPDoLinesCross(&r.p1, &r.p2, &r.q1, &r.q2), fp.FPDoLinesCross(&a, &r.q1, &r.q2),
                   fp.FPDoLinesCross(&a, &b), fp.FPGetCoincidenceKind(&kind), kind, fp.FPGetCrossingPoint(&c),
                   r.x == -1 ? "any" : str(c), fp.FPDistanceToEdge(&r.p1, &r.p2, &r.q1, &r.q2, &distance),
                   distance}),
              seq({1, 1, r.cross, r.cross, r.cross, 1, r.kind, 1, r.x == -1 ? "any" : str({r.x, 0, r.z}),
                   r.distance == untouched ? 0 : 1, r.distance}))
        << str(r.p1) << " " << str(r.q1);
  }
  CKFootPrint fresh;
  fresh.FPInitialise();
  int kind = 9;
  EXPECT_EQ(seq({fresh.FPGetCoincidenceKind(&kind), kind}), "0 9") << "no lines met yet";
}

// With no wall only y is left; a sloping wall's own height counts in its direction and in the
// step's part along it.
TEST(FootPrintSlide, StepKeepsOnlyItsComponentAlongTheWall) {
  _D3DVECTOR a = {0, 0, 0};
  const struct {
    _D3DVECTOR wallEnd, step;
    const char* slide;
  } rows[] = {{{10, 0, 0}, {-1, 0.5f, 1}, "-1,0.5,0"}, {{0, 0, 10}, {3, -1, 4}, "0,-1,4"},
              {{3, 0, 4}, {5, 0, 0}, "1.8,0,2.4"},     {a, {3, 2, 4}, "0,2,0"},
              {{0, 3, 4}, {1, 2, 5}, "0,2,4.16"},      {{0, 3, 4}, {1, 2, -5}, "0,2,-2.24"}};
  for (const auto& r : rows) {
    _D3DVECTOR step = r.step;
    EXPECT_EQ(seq({CKFootPrint::FPAdjustTranslation(&a, &r.wallEnd, &step), step}),
              "1 " + std::string(r.slide));
  }
}

TEST(FootPrintEdgeQueries, HeightSampleDistanceAndCoincidentEdge) {
  CKFootPrint fp;
  makeFootPrint(fp, {{0, 0, 1}, {0, 4, 9}, {2, 4, 1}, {6, 0, 1}, {6, 0, 1}});
  _D3DVECTOR p = {0, 99, 2};
  EXPECT_EQ(seq({fp.FPUpdateYFromSelectedEdgeCrossing(&p), p}), "0 0,99,2") << "no current edge";
  // Along z on a constant-x edge, along x, and the start's height on an edge of no length.
  std::string heights;
  fp.FPSelectFirstEdge();
  for (_D3DVECTOR q :
       {_D3DVECTOR{0, 99, 3}, _D3DVECTOR{1, 99, 5}, _D3DVECTOR{3, 99, 1}, _D3DVECTOR{7, 99, 7}})
    heights += seq({fp.FPUpdateYFromSelectedEdgeCrossing(&q), q, fp.FPSelectNextEdgeNoWrap()}) + "; ";
  EXPECT_EQ(heights, "1 0,1,3 1; 1 1,4,5 1; 1 3,3,1 1; 1 7,0,7 1; ");
  // The last edge, (6, 0, 1) -> (0, 0, 1): the nearest end, or straight across.
  const _D3DVECTOR beforeStart = {-3, 0, 5}, across = {2, 7, -2}, beyondEnd = {9, 0, 5};
  float d1 = -1, d2 = -1, d3 = -1;
  EXPECT_EQ(seq({fp.FPGetEdgeSampleDistance(&beforeStart, &d1), d1, fp.FPGetEdgeSampleDistance(&across, &d2),
                 d2, fp.FPGetEdgeSampleDistance(&beyondEnd, &d3), d3}),
            "1 5 1 3 1 5");
  makeSquare(fp);
  // Touching an edge at its end only is not coincidence.
  _D3DVECTOR a = {10, 0, 10}, b = {12, 0, 10}, c = {6, 0, 10}, d = {5.5f, 3, 10};
  EXPECT_EQ(seq({fp.FPSelectCoincidentEdge(&a, &b), fp.FPSelectCoincidentEdge(&c, &d), edgeFrom(fp)}),
            "0 1 10,0,10");
}

TEST(FootPrintClearance, WallBoxCrossingAndSlopingFloorModes) {
  CKFootPrint wall, floor;  // a wall in x-y, and a floor rising as y = x / 2
  ASSERT_EQ(makeFootPrint(wall, {{0, 0, 0}, {10, 0, 0}, {10, 3, 0}, {0, 3, 0}}), 1);
  ASSERT_EQ(makeFootPrint(floor, {{0, 0, 0}, {10, 5, 0}, {10, 5, 10}, {0, 0, 10}}), 1);
  _D3DVECTOR from = {5, 1, -1}, to = {5, 1, 1}, on = {5, 1, 0}, top, bottom;
  _D3DRMBOX box;
  // The crossed edges' heights; its own end points are ignored by the exclusive form.
  EXPECT_EQ(seq({wall.FPBoxBoundaryCrossingExclusive(&from, &to, &box), box.min, box.max,
                 wall.FPBoxBoundaryCrossingExclusive(&on, &to, &box),
                 wall.FPBoxBoundaryCrossingInclusive(&on, &to, &box),
                 wall.FPBoxBoundaryCrossingInclusive(&on, &on, &box)}),
            "1 5,0,0 5,3,0 0 1 1");
  _D3DVECTOR inside = {5, 0, 5}, out = {12, 0, 5}, nearby = {6, 0, 5}, left = {-2, 0, 5};
  _D3DVECTOR back = {4, 0, 9}, beyond = {4, 0, 11};
  // A vertical plane cannot be solved; upright: crossing; nothing crossed: the box answers; the last row
  // goes across (10, 5, 10)-(0, 0, 10) at x = 4.
  const struct {
    CKFootPrint* fp;
    _D3DVECTOR *from, *to;
    int mode, prefer;
    const char* clearance;  // the result, top and bottom; only their heights are ever written
  } rows[] = {
      {&wall, &from, &to, 1, -1, "0 9,9,9 9,9,9"},         {&wall, &from, &to, 1, 1, "1 9,3,9 9,0,9"},
      {&floor, &inside, &out, 0, -1, "1 9,5,9 9,2.5,9"},   {&floor, &out, &inside, 0, -1, "1 9,5,9 9,2.5,9"},
      {&floor, &inside, &out, 1, -1, "1 9,2.5,9 9,2.5,9"}, {&floor, &inside, &out, 2, -1, "1 9,5,9 9,5,9"},
      {&floor, &left, &out, 0, -1, "1 9,5,9 9,0,9"},       {&floor, &inside, &nearby, 0, -1, "0 9,9,9 9,9,9"},
      {&floor, &left, &left, 0, -1, "0 9,9,9 9,9,9"},      {&floor, &inside, &nearby, 2, -1, "0 9,9,9 9,9,9"},
      {&floor, &inside, &nearby, 0, 0, "1 9,5,9 9,0,9"},   {&floor, &back, &beyond, 2, -1, "1 9,2,9 9,2,9"}};
  for (const auto& r : rows) {
    top = bottom = {9, 9, 9};
    EXPECT_EQ(seq({r.prefer < 0 ? r.fp->FPGetFaceClearance(r.from, r.to, &top, &bottom, r.mode)
                                : r.fp->FPGetClearance(r.from, r.to, &top, &bottom, r.mode, r.prefer),
                   top, bottom}),
              r.clearance)
        << r.mode;
  }
}

TEST(FootPrintBadInput, DegenerateFootPrintsGiveTheDocumentedAnswers) {
  CKFootPrint fp;
  fp.FPInitialise();
  _D3DVECTOR p = {1, 0, 1}, q = {5, 0, 5}, zero = {0, 0, 0}, top, bottom;
  _D3DRMBOX box;
  float distance;
  EXPECT_EQ(seq({fp.FPIsPointInside(&p), fp.FPIsBoundaryCrossed(&p, &q),
                 fp.FPIsBoundaryCrossedNoMargin(&p, &q), fp.FPPointsAreOnTheSameSide(&p, &q),
                 fp.FPBoxBoundaryCrossingInclusive(&p, &q, &box), fp.FPSelectCoincidentEdge(&p, &q),
                 fp.FPGetEdgeSampleDistance(&p, &distance), fp.FPGetClearance(&p, &q, &top, &bottom, 0, 0)}),
            "0 0 0 1 0 0 0 0");
  makeFootPrint(fp, {{1, 0, 1}});  // one vertex: a zero-length edge to itself
  EXPECT_EQ(seq({fp.FPIsBoundaryCrossed(&p, &q), fp.FPIsPointInside(&p),
                 fp.FPBoxBoundaryCrossingExclusive(&p, &p, &box)}),
            "0 0 0");
  makeFootPrint(fp, {{0, 0, 0}, {10, 0, 0}});  // two vertices: a wall with no inside
  _D3DVECTOR nearWall = {5, 0, 0.2f}, across = {0, 0, -1}, below = {5, 0, -1};
  EXPECT_EQ(seq({fp.FPIsBoundaryCrossed(&nearWall, &zero), fp.FPIsBoundaryCrossedNoMargin(&nearWall, &across),
                 fp.FPIsPointInside(&nearWall), fp.FPPointsAreOnTheSameSide(&nearWall, &below)}),
            "1 1 0 1");
}

// A concave polygon with notches above and below and slanted edges that never pass through the
// centre of a unit cell; each cell centre's answer as drawn, rows by z from -1 up, columns by x from -1.
TEST(FootPrintCrossing, InsideMatchesTheDrawing) {
  CKFootPrint fp;
  const std::initializer_list<_D3DVECTOR> shape = {{0, 0, 0},  {4, 0, 0},  {6, 0, 1}, {8, 0, 0},
                                                   {12, 0, 0}, {12, 0, 8}, {8, 0, 8}, {6, 0, 4},
                                                   {4, 0, 8},  {0, 0, 8},  {2, 0, 4}};
  ASSERT_EQ(makeFootPrint(fp, shape), 1);
  const char* const drawing[] = {"..............", ".#####..#####.", "..###########.", "..###########.",
                                 "...##########.", "...##########.", "..####..#####.", "..####..#####.",
                                 ".####....####.", ".............."};
  for (int row = 0; row < 10; ++row) {
    std::string seen;
    for (int column = 0; column < 14; ++column) {
      const _D3DVECTOR p = {column - 0.5f, 7, row - 0.5f};
      seen += fp.FPIsPointInside(&p) == 1 ? '#' : fp.FPIsPointInside(&p) == 0 ? '.' : '?';
    }
    EXPECT_EQ(seen, drawing[row]) << "z = " << row - 0.5;
  }
}
