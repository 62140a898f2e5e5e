// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "Allocation.h"
#include "FootPrintTestSupport.h"

using namespace kutil::test;

TEST(FootPrintEdges, PropertiesCursorAndWalks) {
  using F = CKFootPrint;
  CKFootPrint fp;
  fp.FPInitialise();
  int value = -5, count = -1;
  EXPECT_EQ(seq({fp.FPSetAllEdgeResist(1), fp.FPSetAllAccess(1), fp.FPUpdateVertexDependencies(),
                 fp.FPSelectFirstEdge(), fp.FPSelectNextEdgeNoWrap(), fp.FPDeleteSelectedEdge(),
                 fp.FPSetThisEdgeResist(1), fp.FPGetThisEdgeResist(&value), fp.FPSelectNextEdgeWrapping()}),
            "0 0 0 0 0 0 0 0 0");
  makeSquare(fp);
  // Unset access is not written; a type of -1 is unset.
  EXPECT_EQ(
      seq({fp.FPSelectFirstEdge(), fp.FPGetThisEdgeResist(&value), fp.FPGetThisEdgeProperty(&count), value,
           count, fp.FPGetThisEdgeSectorAccess(&value), fp.FPGetThisEdgeItemAccess(&value), value}),
      "1 1 1 999 3 0 0 999");
  EXPECT_EQ(seq({fp.FPGetType(&value), value, fp.FPSetType(-1), fp.FPGetType(&value), fp.FPSetType(4),
                 fp.FPGetType(&value), value}),
            "1 0 1 0 1 1 4");
  // Wrapping and non-wrapping steps: each answer, then the cursor ("*" on the first edge).
  std::string walk;
  for (auto step :
       {&F::FPSelectPreviousEdgeNoWrap, &F::FPSelectPreviousEdgeWrapping, &F::FPSelectNextEdgeNoWrap,
        &F::FPSelectPreviousEdgeNoWrap, &F::FPSelectPreviousEdgeWrapping, &F::FPSelectNextEdgeWrapping,
        &F::FPSelectNextEdgeWrapping, &F::FPSelectNextEdgeWrapping, &F::FPSelectNextEdgeNoWrap})
    walk += seq({(fp.*step)(), edgeFrom(fp) + (fp.FPIsSelectedTheFirst() == 1 ? "*" : "")}) + "; ";
  EXPECT_EQ(walk,
            "0 0,0,0*; 1 0,0,10; 0 0,0,10; 1 10,0,10; 1 10,0,0; 1 10,0,10; 1 0,0,10; 1 0,0,0*; 1 10,0,0; ");
  _D3DVECTOR to;
  EXPECT_EQ(seq({fp.FPGetEdgeToVector(&to), to, fp.FPSetAllAccess(6), fp.FPSetAllEdgeResist(7),
                 fp.FPUpdateVertexDependencies(), edgeFrom(fp), fp.FPGetThisEdgeSectorAccess(&value),
                 fp.FPGetThisEdgeResist(&count), value, count, fp.FPGetThisEdgeItemAccess(&value)}),
            "1 10,0,10 1 1 1 10,0,0 1 1 6 7 0")
      << "walks restore the cursor; only sector access is set for all";
  const _D3DVECTOR moved = {10, 2, -1};
  // The successor takes a deleted edge's place; deleting does not count down.
  EXPECT_EQ(seq({fp.FPUpdateEdgeFromVector(&moved), edgeFrom(fp), fp.FPDeleteSelectedEdge(), edgeFrom(fp),
                 fp.FPSelectFirstEdge(), fp.FPDeleteSelectedEdge(), fp.FPIsSelectedTheFirst(),
                 fp.FPGetVertexCount(&count), edgeFrom(fp), count}),
            "1 10,2,-1 1 10,0,10 1 1 1 1 10,0,10 4");
}

TEST(FootPrintLines, LineEquationsHaveTheirThreeKinds) {
  CKFootPrint fp;
  fp.FPInitialise();
  const struct {
    _D3DVECTOR a, b;
    int kind;
    float gradient, constant;  // x intercept, or the constant z for kind 2
  } rows[] = {{{1, 0, 0}, {1, 0, 5}, 1, 999.0f, 1.0f}, {{0, 0, 2}, {5, 0, 2}, 2, 0.001f, 2.0f},
              {{0, 0, 0}, {2, 0, 2}, 0, 1.0f, 0.0f},   {{1, 0, 4}, {3, 0, 0}, 0, -2.0f, 3.0f},
              {{2, 0, 1}, {2.0005f, 0, 9}, 1, 999, 2}, {{0, 0, 3}, {4, 0, 3.0005f}, 2, 0.001f, 3}};
  for (const auto& r : rows) {
    tagKLineEquation line;
    EXPECT_EQ(seq({fp.FPMakeLineEquation(&line, &r.a, &r.b), line.kind, line.gradient,
                   r.kind == 2 ? line.constZ : line.xIntercept, line.start, line.end}),
              seq({1, r.kind, r.gradient, r.constant, r.a, r.b}));
  }
}

TEST(FootPrintBox, BoxCentreClearanceAndExternalVertex) {
  CKFootPrint fp;
  _D3DRMBOX* box = nullptr;
  makeFootPrint(fp, {{0, 0, 0}, {4, 1, -2}, {0, 0, 2}, {-1, -3, 0}});
  _D3DVECTOR centre, *external = nullptr;
  float top = 0, bottom = 0;
  ASSERT_EQ(seq({fp.FPGetCentreOfGravity(&centre), fp.FPGetBox(&box), fp.FPGetExternalVertex(&external),
                 fp.FPGetClearance(&top, &bottom), top, bottom}),
            "1 1 1 1 1 -3");
  EXPECT_EQ(seq({centre, box->min, box->max}),
            "1.5,-1,0 -1,-3,-2 4,1,2");  // the box centre, not the centroid
  // Beyond the box's maximum by fixed odd offsets, so that no edge can pass through it.
  EXPECT_EQ(seq({external->x - 4, external->y - 1, external->z - 2}), "17.3133 6.5504 103.003");

  // The clearance alone is not a box until the horizontal extent comes; then the clearance stays.
  CKFootPrint other;
  other.FPInitialise();
  EXPECT_EQ(seq({other.FPGetClearance(&top, &bottom), other.FPSet2DBoxFromVertices(),
                 other.FPSetClearance(3.0f, -1.0f), other.FPGetBox(&box)}),
            "0 0 1 0");
  other.FPAddVertex(5, 0, 6);
  other.FPAddVertex(-5, 9, 7);
  ASSERT_EQ(seq({other.FPSet2DBoxFromVertices(), other.FPGetBox(&box)}), "1 1");
  EXPECT_EQ(seq({box->min, box->max}), "-5,-1,6 5,3,7");

  // A box given whole, moved by an offset, is at once a full box; out of memory no vertex is added.
  const _D3DRMBOX given = *box;
  CKFootPrint fresh;
  fresh.FPInitialise();
  int added = 1, count = -1;
  {
    kutil::test::AllocationFailure noMemory;
    added = fresh.FPAddVertex(1, 0, 1);
  }
  EXPECT_EQ(seq({fresh.FPSetBox(&given, 1, 2, 3), fresh.FPGetBox(&box), added, fresh.FPGetVertexCount(&count),
                 count}),
            "1 1 0 1 0");
  EXPECT_EQ(seq({box->min, box->max}), "-4,1,9 6,5,10");
}

TEST(FootPrintPlane, KindsSolutionsAndConstantHeightVector) {
  CKFootPrint fp;
  ASSERT_EQ(makeFootPrint(fp, {{0, 0, 0}, {1, 0, 0}, {1, 0, 1}, {0, 0, 1}}), 1);
  tagKPlaneEquation *own = nullptr, plane;
  ASSERT_EQ(seq({fp.FPGetPlaneEquation(&own), fp.FPIsPlaneEquationInUse()}), "1 1");
  EXPECT_EQ(own->kind, 2);  // a level square
  _D3DVECTOR o = {0, 0, 0}, x = {1, 0, 0}, y = {0, 1, 0}, z = {0, 0, 1}, steep = {1, 3, 0}, slope = {2, 1, 0};
  _D3DVECTOR onLine = {2, 0, 0}, at = {4, 0, 7}, solved = {9, 9, 9};
  const struct {
    _D3DVECTOR *p1, *p2, *p3, *p4;
    int result, kind;
  } planes[] = {
      {&o, &x, &y, nullptr, 1, 0},     {&o, &z, &steep, nullptr, 1, 1},
      {&z, &slope, &x, nullptr, 1, 3}, {&o, &x, &onLine, nullptr, 0, 3},  // collinear: the kind stays
      {&o, &o, &x, &y, 1, 0},          {&o, &z, &z, &steep, 1, 1},
      {&z, &slope, &slope, &x, 1, 3},  {&o, &o, &x, &x, 0, 3}};
  ASSERT_EQ(fp.FPInitPlaneEquation(&plane), 1);
  for (const auto& p : planes)
    EXPECT_EQ(seq({p.p4 ? fp.FPMakePlaneEquation(&plane, p.p1, p.p2, p.p3, p.p4)
                        : fp.FPMakePlaneEquation(&plane, p.p1, p.p2, p.p3),
                   plane.kind, plane.made}),
              seq({p.result, p.kind, 1}));
  // Through (0, 0, 1), (2, 1, 0), (1, 0, 0): -x + y - z = -1, that is y = x + z - 1.
  EXPECT_EQ(seq({plane.a, plane.b, plane.c, plane.d, fp.FPSolvePlaneEquation(&plane, &at, &solved), solved,
                 fp.FPSolvePlaneEquationBroadly(&plane, &x, &solved), solved}),
            "-1 1 -1 -1 1 4,10,7 1 1,0,0");
  fp.FPMakePlaneEquation(&plane, &o, &x, &y);  // vertical: no height to solve for
  EXPECT_EQ(seq({fp.FPSolvePlaneEquation(&plane, &at, &solved),
                 fp.FPSolvePlaneEquationBroadly(&plane, &at, &solved), solved}),
            "0 0 1,0,0");
  makeFootPrint(fp, {{0, 0, 0}, {1, 0, 0}});  // too few vertices: the plane is reset
  EXPECT_EQ(seq({fp.FPIsPlaneEquationInUse(), own->kind}), "0 -1");

  // The level direction of a sloping plane, in the sense nearer the reference.
  const struct {
    float a, c;
    _D3DVECTOR reference;
    const char* out;
  } levels[] = {{2, 3, {1, 0, 0}, "1 0.8321,0,-0.5547"},    // from (1, 0, (a - d) / c)
                {5, 3, {0, 0, -1}, "1 -0.1961,0,-0.9806"},  // from ((d - c) / a, 0, 1)
                {5, 0.005f, {-1, 0, 0.2f}, "1 -1,0,0"},
                {0.005f, 2, {-1, 0, 0.2f}, "1 0,0,1"}};
  for (const auto& l : levels) {
    plane = {4.0f, l.a, 1.0f, l.c, 3, 1};
    EXPECT_EQ(seq({fp.FPGetConstYVector(&plane, &l.reference, &solved), solved}), l.out);
  }
  plane.kind = 2;
  EXPECT_EQ(seq({fp.FPGetConstYVector(&plane, &x, &solved), solved}), "0 0,0,1");
}

TEST(FootPrintCopy, CopiesEverythingButItemAccessAndMovesEveryVertex) {
  CKFootPrint source, copy;
  makeSquare(source);
  source.FPSelectFirstEdge();
  source.FPSelectNextEdgeNoWrap();
  EXPECT_EQ(seq({source.FPSetThisEdgeItemAccess(7), source.FPSetThisEdgeSectorAccess(4),
                 source.FPSetThisEdgeResist(5), source.FPSetThisEdgeProperty(6)}),
            "1 1 1 1");
  copy.FPInitialise();
  copy.FPAddVertex(50, 50, 50);
  int count = 0, sector = 0, resist = 0, property = 0;
  // The copied count is raised again by every vertex added; item access is deliberately not copied.
  EXPECT_EQ(seq({copy.FPCopyFrom(nullptr), copy.FPCopyFrom(&source), edgeFrom(source),
                 copy.FPGetVertexCount(&count), count, copy.FPSelectFirstEdge(),
                 copy.FPSelectNextEdgeNoWrap(), copy.FPGetThisEdgeItemAccess(&count),
                 copy.FPGetThisEdgeSectorAccess(&sector), copy.FPGetThisEdgeResist(&resist),
                 copy.FPGetThisEdgeProperty(&property), sector, resist, property}),
            "0 1 10,0,0 1 8 1 1 0 1 1 1 4 5 6");
  tagKLineEquation *line = nullptr, *original = nullptr;
  ASSERT_EQ(copy.FPGetThisEdgeLineEquation(&line) * source.FPGetThisEdgeLineEquation(&original), 1);
  EXPECT_EQ(seq({line->kind, line->xIntercept}), seq({original->kind, original->xIntercept}));
  _D3DRMBOX* box = nullptr;
  _D3DVECTOR in = {5, 0, 5}, *external = nullptr;
  ASSERT_EQ(seq({copy.FPGetBox(&box), copy.FPIsPlaneEquationInUse(), copy.FPGetExternalVertex(&external)}),
            "1 1 1");
  EXPECT_EQ(seq({box->max, *external, copy.FPIsPointInside(&in)}), "10,0,10 27.3133,6.5504,113.003 1");

  makeFootPrint(copy, {{1, 0, 0}, {0, 2, 0}}, false);
  const _D3DVECTOR shift = {1, 1, 1};
  // (2, 1, 1) a quarter turn about y; (1, 3, -1) rolled, turned over about x, doubled.
  EXPECT_EQ(seq({copy.FPTranslate(&shift), copy.FPRotateHorizontal(1.57079632679f), copy.FPSelectFirstEdge(),
                 edgeFrom(copy), copy.FPSelectNextEdgeNoWrap(), copy.FPRoll(1.57079632679f),
                 copy.FPElevate(3.14159265359f), copy.FPResize(2), edgeFrom(copy)}),
            "1 1 1 1,1,-2 1 1 1 1 -6,-2,2");
}
