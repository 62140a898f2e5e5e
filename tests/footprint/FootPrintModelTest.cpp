// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "FootPrintTestSupport.h"

using namespace kutil::test;

TEST(FootPrintEdges, PropertiesCursorAndWalks) {
  CKFootPrint fp;
  fp.FPInitialise();
  int value = -5, count = -1;
  EXPECT_EQ(fp.FPSetAllEdgeResist(1) + fp.FPSetAllAccess(1) + fp.FPUpdateVertexDependencies(), 0);
  EXPECT_EQ(fp.FPSelectFirstEdge() + fp.FPSelectNextEdgeNoWrap() + fp.FPDeleteSelectedEdge(), 0);
  EXPECT_EQ(fp.FPSetThisEdgeResist(1) + fp.FPGetThisEdgeResist(&value) + fp.FPSelectNextEdgeWrapping(), 0);
  makeSquare(fp);
  ASSERT_EQ(fp.FPSelectFirstEdge(), 1);
  EXPECT_EQ(fp.FPGetThisEdgeResist(&value) + fp.FPGetThisEdgeProperty(&count), 2);
  EXPECT_EQ(value * 10 + count, 9993);
  EXPECT_EQ(fp.FPGetThisEdgeSectorAccess(&value) + fp.FPGetThisEdgeItemAccess(&value), 0);
  EXPECT_EQ(value, 999) << "unset access is not written";
  EXPECT_EQ(fp.FPGetType(&value), 1);
  EXPECT_EQ(value, 0);
  EXPECT_EQ(fp.FPSetType(-1), 1);
  EXPECT_EQ(fp.FPGetType(&value), 0) << "-1 is unset";
  EXPECT_EQ(fp.FPSetType(4), 1);
  EXPECT_EQ(fp.FPGetType(&value), 1);
  EXPECT_EQ(value, 4);
  // Wrapping and non-wrapping steps; each answer, then the cursor.
  const struct {
    int (CKFootPrint::*step)();
    int result;
    const char* at;
  } walk[] = {{&CKFootPrint::FPSelectPreviousEdgeNoWrap, 0, "0,0,0"},
              {&CKFootPrint::FPSelectPreviousEdgeWrapping, 1, "0,0,10"},
              {&CKFootPrint::FPSelectNextEdgeNoWrap, 0, "0,0,10"},
              {&CKFootPrint::FPSelectPreviousEdgeNoWrap, 1, "10,0,10"},
              {&CKFootPrint::FPSelectPreviousEdgeWrapping, 1, "10,0,0"},
              {&CKFootPrint::FPSelectNextEdgeWrapping, 1, "10,0,10"},
              {&CKFootPrint::FPSelectNextEdgeWrapping, 1, "0,0,10"},
              {&CKFootPrint::FPSelectNextEdgeWrapping, 1, "0,0,0"},
              {&CKFootPrint::FPSelectNextEdgeNoWrap, 1, "10,0,0"}};
  for (const auto& w : walk) {
    EXPECT_EQ((fp.*w.step)(), w.result);
    EXPECT_EQ(edgeFrom(fp) + (fp.FPIsSelectedTheFirst() == 1 ? " first" : ""),
              w.at + std::string(w.at == std::string("0,0,0") ? " first" : ""));
  }
  _D3DVECTOR to;
  ASSERT_EQ(fp.FPGetEdgeToVector(&to), 1);
  EXPECT_EQ(str(to), "10,0,10");
  EXPECT_EQ(fp.FPSetAllAccess(6) + fp.FPSetAllEdgeResist(7) + fp.FPUpdateVertexDependencies(), 3);
  EXPECT_EQ(edgeFrom(fp), "10,0,0") << "walks restore the cursor";
  EXPECT_EQ(fp.FPGetThisEdgeSectorAccess(&value) + fp.FPGetThisEdgeResist(&count), 2);
  EXPECT_EQ(value * 10 + count, 67);
  EXPECT_EQ(fp.FPGetThisEdgeItemAccess(&value), 0) << "only sector access is set for all";
  const _D3DVECTOR moved = {10, 2, -1};
  ASSERT_EQ(fp.FPUpdateEdgeFromVector(&moved), 1);
  EXPECT_EQ(edgeFrom(fp), "10,2,-1");
  ASSERT_EQ(fp.FPDeleteSelectedEdge(), 1);
  EXPECT_EQ(edgeFrom(fp), "10,0,10") << "the successor takes its place";
  fp.FPSelectFirstEdge();
  ASSERT_EQ(fp.FPDeleteSelectedEdge(), 1);
  ASSERT_EQ(fp.FPIsSelectedTheFirst() * fp.FPGetVertexCount(&count), 1);
  EXPECT_EQ(edgeFrom(fp) + " " + std::to_string(count), "10,0,10 4") << "deleting does not count down";
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
    ASSERT_EQ(fp.FPMakeLineEquation(&line, &r.a, &r.b), 1);
    EXPECT_EQ(line.kind, r.kind);
    EXPECT_FLOAT_EQ(line.gradient, r.gradient);
    EXPECT_FLOAT_EQ(r.kind == 2 ? line.constZ : line.xIntercept, r.constant);
    EXPECT_EQ(str(line.start) + " " + str(line.end), str(r.a) + " " + str(r.b));
  }
}

TEST(FootPrintBox, BoxCentreClearanceAndExternalVertex) {
  CKFootPrint fp;
  makeFootPrint(fp, {{1, 2, 3}}, false);
  _D3DRMBOX* box = nullptr;
  EXPECT_EQ(fp.FPGetBox(&box), 0);
  EXPECT_EQ(fp.FPSet3DBoxFromVertices(), 0);  // a lone vertex: 0, but the box is set
  ASSERT_EQ(fp.FPGetBox(&box), 1);
  EXPECT_EQ(str(box->min) + " " + str(box->max), "1,2,3 1,2,3");

  makeFootPrint(fp, {{0, 0, 0}, {4, 1, -2}, {0, 0, 2}, {-1, -3, 0}});
  _D3DVECTOR centre, *external = nullptr;
  ASSERT_EQ(fp.FPGetCentreOfGravity(&centre) * fp.FPGetBox(&box) * fp.FPGetExternalVertex(&external), 1);
  EXPECT_EQ(str(centre), "1.5,-1,0");  // the box centre, not the area centroid
  EXPECT_EQ(str(box->min) + " " + str(box->max), "-1,-3,-2 4,1,2");
  EXPECT_FLOAT_EQ(external->x, 4 + 17.3133f);
  EXPECT_FLOAT_EQ(external->y, 1 + 6.550404f);
  EXPECT_FLOAT_EQ(external->z, 2 + 103.00314f);
  float top = 0, bottom = 0;
  ASSERT_EQ(fp.FPGetClearance(&top, &bottom), 1);
  EXPECT_EQ(top * 10 + bottom, 10 - 3);

  CKFootPrint other;
  other.FPInitialise();
  EXPECT_EQ(other.FPGetClearance(&top, &bottom) + other.FPSet2DBoxFromVertices(), 0);
  EXPECT_EQ(other.FPSetClearance(3.0f, -1.0f), 1);
  EXPECT_EQ(other.FPGetBox(&box), 0) << "the horizontal extent is still missing";
  other.FPAddVertex(5, 0, 6);
  other.FPAddVertex(-5, 9, 7);
  EXPECT_EQ(other.FPSet2DBoxFromVertices(), 1);
  ASSERT_EQ(other.FPGetBox(&box), 1);
  EXPECT_EQ(str(box->min) + " " + str(box->max), "-5,-1,6 5,3,7") << "the clearance stays";
}

TEST(FootPrintPlane, KindsSolutionsAndConstantHeightVector) {
  CKFootPrint fp;
  ASSERT_EQ(makeFootPrint(fp, {{0, 0, 0}, {1, 0, 0}, {1, 0, 1}, {0, 0, 1}}), 1);
  tagKPlaneEquation *own = nullptr, plane;
  ASSERT_EQ(fp.FPGetPlaneEquation(&own) * fp.FPIsPlaneEquationInUse(), 1);
  EXPECT_EQ(own->kind, 2);  // a level square
  _D3DVECTOR o = {0, 0, 0}, x = {1, 0, 0}, y = {0, 1, 0}, z = {0, 0, 1}, steep = {1, 3, 0}, slope = {2, 1, 0};
  _D3DVECTOR onLine = {2, 0, 0}, at = {4, 0, 7}, solved = {9, 9, 9};
  EXPECT_EQ(fp.FPGetPlaneProjectionOf(&at, &solved), 0);  // deliberately unfinished
  const struct {
    _D3DVECTOR *p1, *p2, *p3, *p4;
    int result, kind;
  } planes[] = {
      {&o, &x, &y, nullptr, 1, 0},     {&o, &z, &steep, nullptr, 1, 1},
      {&z, &slope, &x, nullptr, 1, 3}, {&o, &x, &onLine, nullptr, 0, 3},  // collinear: the kind stays
      {&o, &o, &x, &y, 1, 0},          {&o, &z, &z, &steep, 1, 1},
      {&z, &slope, &slope, &x, 1, 3},  {&o, &o, &x, &x, 0, 3}};
  ASSERT_EQ(fp.FPInitPlaneEquation(&plane), 1);
  for (const auto& p : planes) {
    EXPECT_EQ(p.p4 ? fp.FPMakePlaneEquation(&plane, p.p1, p.p2, p.p3, p.p4)
                   : fp.FPMakePlaneEquation(&plane, p.p1, p.p2, p.p3),
              p.result);
    EXPECT_EQ(plane.kind * 10 + plane.made, p.kind * 10 + 1);
  }
  // Through (0, 0, 1), (2, 1, 0), (1, 0, 0): -x + y - z = -1, that is y = x + z - 1.
  EXPECT_EQ(plane.d * 1000 + plane.a * 100 + plane.b * 10 + plane.c, -1000 - 100 + 10 - 1);
  ASSERT_EQ(fp.FPSolvePlaneEquation(&plane, &at, &solved), 1);
  EXPECT_EQ(str(solved), "4,10,7");
  ASSERT_EQ(fp.FPSolvePlaneEquationBroadly(&plane, &x, &solved), 1);
  EXPECT_EQ(str(solved), "1,0,0");
  fp.FPMakePlaneEquation(&plane, &o, &x, &y);
  EXPECT_EQ(
      fp.FPSolvePlaneEquation(&plane, &at, &solved) + fp.FPSolvePlaneEquationBroadly(&plane, &at, &solved),
      0);
  makeFootPrint(fp, {{0, 0, 0}, {1, 0, 0}});  // too few vertices: the plane is reset
  EXPECT_EQ(fp.FPIsPlaneEquationInUse() * 10 + own->kind, -1);

  // The level direction of a sloping plane, in the sense nearer the reference.
  const struct {
    float a, c;
    _D3DVECTOR reference;
    const char* out;
  } levels[] = {{2, 3, {1, 0, 0}, "0.8321,0,-0.5547"},    // (1, 0, (a - d) / c)
                {5, 3, {0, 0, -1}, "-0.1961,0,-0.9806"},  // ((d - c) / a, 0, 1)
                {5, 0.005f, {-1, 0, 0.2f}, "-1,0,0"},
                {0.005f, 2, {-1, 0, 0.2f}, "0,0,1"}};
  for (const auto& l : levels) {
    plane = {4.0f, l.a, 1.0f, l.c, 3, 1};
    _D3DVECTOR out;
    ASSERT_EQ(fp.FPGetConstYVector(&plane, &l.reference, &out), 1);
    EXPECT_EQ(str(out), l.out);
  }
  plane.kind = 2;
  EXPECT_EQ(fp.FPGetConstYVector(&plane, &x, &solved), 0);
}

TEST(FootPrintCopy, CopiesEverythingButItemAccessAndMovesEveryVertex) {
  CKFootPrint source, copy;
  makeSquare(source);
  source.FPSelectFirstEdge();
  source.FPSelectNextEdgeNoWrap();
  source.FPSetThisEdgeItemAccess(7);
  source.FPSetThisEdgeSectorAccess(4);
  source.FPSetThisEdgeResist(5);
  source.FPSetThisEdgeProperty(6);
  copy.FPInitialise();
  copy.FPAddVertex(50, 50, 50);
  EXPECT_EQ(copy.FPCopyFrom(nullptr), 0);
  ASSERT_EQ(copy.FPCopyFrom(&source), 1);
  EXPECT_EQ(edgeFrom(source), "10,0,0");
  int count = 0, sector = 0, resist = 0, property = 0;
  copy.FPGetVertexCount(&count);
  EXPECT_EQ(count, 8) << "the copied count is raised again by every vertex added";
  copy.FPSelectFirstEdge();
  copy.FPSelectNextEdgeNoWrap();
  EXPECT_EQ(copy.FPGetThisEdgeItemAccess(&count), 0);  // deliberately not copied
  EXPECT_EQ(copy.FPGetThisEdgeSectorAccess(&sector) * copy.FPGetThisEdgeResist(&resist) *
                copy.FPGetThisEdgeProperty(&property),
            1);
  EXPECT_EQ(sector * 100 + resist * 10 + property, 456);
  tagKLineEquation *line = nullptr, *original = nullptr;
  ASSERT_EQ(copy.FPGetThisEdgeLineEquation(&line) * source.FPGetThisEdgeLineEquation(&original), 1);
  EXPECT_EQ(line->kind * 100 + line->xIntercept, original->kind * 100 + original->xIntercept);
  _D3DRMBOX* box = nullptr;
  _D3DVECTOR in = {5, 0, 5}, *external = nullptr;
  ASSERT_EQ(copy.FPGetBox(&box) * copy.FPIsPlaneEquationInUse() * copy.FPGetExternalVertex(&external), 1);
  EXPECT_EQ(str(box->max) + " " + str(*external), "10,0,10 27.3133,6.5504,113.003");
  EXPECT_EQ(copy.FPIsPointInside(&in), 1);

  makeFootPrint(copy, {{1, 0, 0}, {0, 2, 0}}, false);
  const _D3DVECTOR shift = {1, 1, 1};
  EXPECT_EQ(copy.FPTranslate(&shift), 1);
  EXPECT_EQ(copy.FPRotateHorizontal(1.57079632679f), 1);
  copy.FPSelectFirstEdge();
  EXPECT_EQ(edgeFrom(copy), "1,1,-2");  // (2, 1, 1) a quarter turn about y
  copy.FPSelectNextEdgeNoWrap();
  EXPECT_EQ(copy.FPRoll(1.57079632679f), 1);
  EXPECT_EQ(copy.FPElevate(3.14159265359f), 1);
  EXPECT_EQ(copy.FPResize(2), 1);
  EXPECT_EQ(edgeFrom(copy), "-6,-2,2");  // (1, 3, -1) rolled, turned over about x, doubled
  source.FPInitialise();
  EXPECT_EQ(source.FPTranslate(&shift) + source.FPRotateHorizontal(1) + source.FPResize(2) + source.FPRoll(1),
            4);
}
