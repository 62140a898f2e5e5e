// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "FootPrintTestSupport.h"

using kutil::test::makeFootPrint;
using kutil::test::makeSquare;

namespace {
// The current edge's start as "x,y,z", or "none".
std::string edgeFrom(CKFootPrint& fp) {
  _D3DVECTOR v = {-99, -99, -99};
  if (fp.FPGetEdgeFromVector(&v) != 1) return "none";
  return std::to_string(std::lround(v.x)) + "," + std::to_string(std::lround(v.y)) + "," +
         std::to_string(std::lround(v.z));
}
}  // namespace

TEST(FootPrintEdges, PropertiesCursorAndWalks) {
  CKFootPrint fp;
  fp.FPInitialise();
  int value = -5, count = -1;
  EXPECT_EQ(fp.FPSetAllEdgeResist(1) + fp.FPSetAllAccess(1) + fp.FPUpdateVertexDependencies(), 0);
  EXPECT_EQ(fp.FPSelectFirstEdge() + fp.FPSelectNextEdgeNoWrap() + fp.FPDeleteSelectedEdge(), 0);
  EXPECT_EQ(fp.FPSetThisEdgeResist(1) + fp.FPGetThisEdgeResist(&value) + fp.FPSelectNextEdgeWrapping(), 0);
  makeSquare(fp);
  ASSERT_EQ(fp.FPSelectFirstEdge(), 1);
  EXPECT_EQ(fp.FPGetThisEdgeResist(&value), 1);
  EXPECT_EQ(value, 999);
  EXPECT_EQ(fp.FPGetThisEdgeProperty(&value), 1);
  EXPECT_EQ(value, 3);
  value = -5;
  EXPECT_EQ(fp.FPGetThisEdgeSectorAccess(&value) + fp.FPGetThisEdgeItemAccess(&value), 0);
  EXPECT_EQ(value, -5);
  EXPECT_EQ(fp.FPSelectPreviousEdgeNoWrap(), 0);
  EXPECT_EQ(fp.FPSelectPreviousEdgeWrapping(), 1);
  EXPECT_EQ(edgeFrom(fp), "0,0,10");
  _D3DVECTOR to;
  ASSERT_EQ(fp.FPGetEdgeToVector(&to), 1);  // the last edge ends at the first vertex
  EXPECT_EQ(to.x + to.z, 0.0f);
  EXPECT_EQ(fp.FPSelectNextEdgeNoWrap(), 0);
  EXPECT_EQ(edgeFrom(fp), "0,0,10") << "kept at the tail";
  EXPECT_EQ(fp.FPSelectPreviousEdgeNoWrap(), 1);
  EXPECT_EQ(edgeFrom(fp), "10,0,10");
  EXPECT_EQ(fp.FPSelectPreviousEdgeWrapping(), 1);
  EXPECT_EQ(fp.FPIsSelectedTheFirst(), 0);
  EXPECT_EQ(fp.FPSelectNextEdgeWrapping() + fp.FPSelectNextEdgeWrapping() + fp.FPSelectNextEdgeWrapping() +
                fp.FPIsSelectedTheFirst(),
            4);
  fp.FPSelectNextEdgeNoWrap();
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
  ASSERT_EQ(fp.FPGetVertexCount(&count), 1);
  EXPECT_EQ(count, 4) << "deleting does not count down";
  fp.FPSelectFirstEdge();
  ASSERT_EQ(fp.FPDeleteSelectedEdge(), 1);
  EXPECT_EQ(edgeFrom(fp) + (fp.FPIsSelectedTheFirst() ? " first" : ""), "10,0,10 first");
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
    SCOPED_TRACE(r.kind);
    tagKLineEquation line;
    ASSERT_EQ(fp.FPMakeLineEquation(&line, &r.a, &r.b), 1);
    EXPECT_EQ(line.kind, r.kind);
    EXPECT_FLOAT_EQ(line.gradient, r.gradient);
    EXPECT_FLOAT_EQ(r.kind == 2 ? line.constZ : line.xIntercept, r.constant);
    EXPECT_EQ(line.start.z + line.end.z, r.a.z + r.b.z);
  }
}

TEST(FootPrintBox, BoxAnswersTheLastGrowthStepAndCentresOnIt) {
  CKFootPrint fp;
  makeFootPrint(fp, {{1, 2, 3}}, false);
  _D3DRMBOX* box = nullptr;
  EXPECT_EQ(fp.FPGetBox(&box), 0);
  EXPECT_EQ(fp.FPSet3DBoxFromVertices(), 0);  // set nevertheless
  ASSERT_EQ(fp.FPGetBox(&box), 1);
  EXPECT_EQ(box->max.z + box->min.y, 5.0f);

  makeFootPrint(fp, {{0, 0, 0}, {4, 1, -2}, {0, 0, 2}, {-1, -3, 0}});
  _D3DVECTOR centre;
  fp.FPGetCentreOfGravity(&centre);  // the box centre, not the area centroid
  EXPECT_EQ(centre.x * 100 + centre.y * 10 + centre.z, 150 - 10 + 0);
  ASSERT_EQ(fp.FPGetBox(&box), 1);
  EXPECT_EQ(std::to_string(box->min.x) + std::to_string(box->max.y) + std::to_string(box->min.z),
            std::to_string(-1.0f) + std::to_string(1.0f) + std::to_string(-2.0f));
  float top = 0, bottom = 0;
  ASSERT_EQ(fp.FPGetClearance(&top, &bottom), 1);
  EXPECT_EQ(top * 10 + bottom, 10 - 3);

  CKFootPrint other;
  other.FPInitialise();
  EXPECT_EQ(other.FPGetClearance(&top, &bottom), 0);
  EXPECT_EQ(other.FPSetClearance(3.0f, -1.0f), 1);
  EXPECT_EQ(other.FPGetBox(&box), 0) << "the horizontal extent is still missing";
  other.FPAddVertex(5, 0, 6);
  other.FPAddVertex(-5, 9, 7);
  EXPECT_EQ(other.FPSet2DBoxFromVertices(), 1);
  ASSERT_EQ(other.FPGetBox(&box), 1);
  EXPECT_EQ(box->min.x * 1000 + box->max.x * 100 + box->min.z * 10 + box->max.z, -5000 + 500 + 60 + 7);
  EXPECT_EQ(box->max.y * 10 + box->min.y, 29.0f) << "the clearance stays";
}

TEST(FootPrintPlane, UnitSquareIsHorizontalWithTheOffsetExternalVertex) {
  CKFootPrint fp;
  ASSERT_EQ(makeFootPrint(fp, {{0, 0, 0}, {1, 0, 0}, {1, 0, 1}, {0, 0, 1}}), 1);
  tagKPlaneEquation* plane = nullptr;
  ASSERT_EQ(fp.FPGetPlaneEquation(&plane), 1);
  EXPECT_EQ(plane->kind, 2);
  EXPECT_EQ(fp.FPIsPlaneEquationInUse(), 1);
  _D3DVECTOR* external = nullptr;
  ASSERT_EQ(fp.FPGetExternalVertex(&external), 1);
  EXPECT_FLOAT_EQ(external->x, 1.0f + 17.3133f);
  EXPECT_FLOAT_EQ(external->y, 6.550404f);
  EXPECT_FLOAT_EQ(external->z, 1.0f + 103.00314f);
  _D3DVECTOR in = {0.5f, 9, 0.5f}, out;
  EXPECT_EQ(fp.FPGetPlaneProjectionOf(&in, &out), 0);  // deliberately 0
  makeFootPrint(fp, {{0, 0, 0}, {1, 0, 0}});           // too few vertices: plane reset
  EXPECT_EQ(fp.FPIsPlaneEquationInUse(), 0);
  EXPECT_EQ(plane->kind, -1);
}

TEST(FootPrintPlane, KindsFollowTheNormal) {
  CKFootPrint fp;
  fp.FPInitialise();
  tagKPlaneEquation plane;
  ASSERT_EQ(fp.FPInitPlaneEquation(&plane), 1);
  _D3DVECTOR o = {0, 0, 0}, x = {1, 0, 0}, y = {0, 1, 0}, z = {0, 0, 1}, steep = {1, 3, 0};
  _D3DVECTOR slope = {2, 1, 0}, onLine = {2, 0, 0}, at = {4, 0, 7}, solved;
  ASSERT_EQ(fp.FPMakePlaneEquation(&plane, &o, &x, &y), 1);
  EXPECT_EQ(plane.kind * 10 + plane.made, 1);
  EXPECT_EQ(fp.FPSolvePlaneEquationBroadly(&plane, &at, &solved), 0);  // vertical
  ASSERT_EQ(fp.FPMakePlaneEquation(&plane, &o, &z, &steep), 1);
  EXPECT_EQ(plane.kind, 1);
  ASSERT_EQ(fp.FPMakePlaneEquation(&plane, &x, &z, &slope), 1);
  EXPECT_EQ(plane.kind, 3);
  // Through (1, 0, 0), (0, 0, 1), (2, 1, 0): -x + y - z = -1, that is y = x + z - 1.
  EXPECT_EQ(plane.d * 1000 + plane.a * 100 + plane.b * 10 + plane.c, -1000 - 100 + 10 - 1);
  ASSERT_EQ(fp.FPSolvePlaneEquation(&plane, &at, &solved), 1);
  EXPECT_EQ(solved.x * 100 + solved.y * 10 + solved.z, 400 + 100 + 7);
  ASSERT_EQ(fp.FPSolvePlaneEquationBroadly(&plane, &at, &solved), 1);
  EXPECT_EQ(solved.y, 10.0f);
  EXPECT_EQ(fp.FPMakePlaneEquation(&plane, &o, &x, &onLine), 0);  // collinear: kind stays
  EXPECT_EQ(plane.kind, 3);
  // Four points: a repeated point is left out.
  ASSERT_EQ(fp.FPMakePlaneEquation(&plane, &o, &o, &x, &y), 1);
  EXPECT_EQ(plane.kind, 0);
  ASSERT_EQ(fp.FPMakePlaneEquation(&plane, &o, &z, &z, &steep), 1);
  EXPECT_EQ(plane.kind, 1);
  ASSERT_EQ(fp.FPMakePlaneEquation(&plane, &x, &z, &z, &slope), 1);
  EXPECT_EQ(plane.kind, 3);
  EXPECT_EQ(fp.FPMakePlaneEquation(&plane, &o, &o, &x, &x), 0);
  tagKPlaneEquation copy;
  ASSERT_EQ(fp.FPCopyPlaneEquation(&plane, &copy), 1);
  EXPECT_EQ(copy.kind * 10 + copy.made, 31);
}

TEST(FootPrintPlane, ConstantHeightVectorKeepsItsFormulasAndFacesTheReference) {
  CKFootPrint fp;
  fp.FPInitialise();
  tagKPlaneEquation plane = {4.0f, 2.0f, 1.0f, 3.0f, 3, 1};
  _D3DVECTOR ref = {1, 0, 0}, out;
  ASSERT_EQ(fp.FPGetConstYVector(&plane, &ref, &out), 1);
  const float n1 = std::sqrt(1.0f + (2.0f / 3) * (2.0f / 3));  // (1, 0, (a - d) / c)
  EXPECT_NEAR(out.x, 1.0f / n1, 1e-5);
  EXPECT_NEAR(out.z, (-2.0f / 3) / n1, 1e-5);
  plane.a = 5.0f;  // trunc|a| > trunc|c|: ((d - c) / a, 0, 1), turned to face -z
  ref = {0, 0, -1};
  ASSERT_EQ(fp.FPGetConstYVector(&plane, &ref, &out), 1);
  const float n2 = std::sqrt(0.04f + 1.0f);
  EXPECT_NEAR(out.x, -0.2f / n2, 1e-5);
  EXPECT_NEAR(out.z, -1.0f / n2, 1e-5);
  plane.c = 0.005f;  // no z part: along x, facing the reference
  ref = {-1, 0, 0.2f};
  ASSERT_EQ(fp.FPGetConstYVector(&plane, &ref, &out), 1);
  EXPECT_EQ(out.x * 10 + out.z, -10.0f);
  plane.c = 2, plane.a = 0.005f;  // no x part: along z
  ASSERT_EQ(fp.FPGetConstYVector(&plane, &ref, &out), 1);
  EXPECT_EQ(out.x * 10 + out.z, 1.0f);
  plane.kind = 2;
  EXPECT_EQ(fp.FPGetConstYVector(&plane, &ref, &out), 0);
}

TEST(FootPrintCopy, CopiesEverythingButItemAccessAndLeavesTheSourceCursor) {
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
  int value = 0, resist = 0, property = 0;
  copy.FPGetVertexCount(&value);
  EXPECT_EQ(value, 8) << "the copied count is raised again by every vertex added";
  copy.FPSelectFirstEdge();
  copy.FPSelectNextEdgeNoWrap();
  EXPECT_EQ(copy.FPGetThisEdgeItemAccess(&value), 0);  // deliberately not copied
  EXPECT_EQ(copy.FPGetThisEdgeSectorAccess(&value) + copy.FPGetThisEdgeResist(&resist) +
                copy.FPGetThisEdgeProperty(&property),
            3);
  EXPECT_EQ(value * 100 + resist * 10 + property, 456);
  tagKLineEquation *line = nullptr, *original = nullptr;
  ASSERT_EQ(copy.FPGetThisEdgeLineEquation(&line) + source.FPGetThisEdgeLineEquation(&original), 2);
  EXPECT_EQ(line->kind * 10 + line->xIntercept, original->kind * 10 + original->xIntercept);
  EXPECT_EQ(copy.FPIsPlaneEquationInUse(), 1);
  _D3DVECTOR in = {5, 0, 5};
  EXPECT_EQ(copy.FPIsPointInside(&in), 1);  // dependencies came along
  _D3DRMBOX* box = nullptr;
  ASSERT_EQ(copy.FPGetBox(&box), 1);
  EXPECT_EQ(box->max.x + box->max.z, 20.0f);
}

TEST(FootPrintTransform, TranslateRotateAndResizeMoveEveryVertex) {
  CKFootPrint fp;
  makeFootPrint(fp, {{1, 0, 0}, {0, 2, 0}}, false);
  const _D3DVECTOR shift = {1, 1, 1};
  EXPECT_EQ(fp.FPTranslate(&shift) + fp.FPRotateHorizontal(1.57079632679f), 2);
  fp.FPSelectFirstEdge();
  EXPECT_EQ(edgeFrom(fp), "1,1,-2");  // (2, 1, 1) a quarter turn about y
  fp.FPSelectNextEdgeNoWrap();
  EXPECT_EQ(fp.FPRoll(1.57079632679f) + fp.FPElevate(3.14159265359f) + fp.FPResize(2), 3);
  _D3DVECTOR v;
  fp.FPGetEdgeFromVector(&v);  // (1, 3, -1), rolled to (-3, 1, -1), elevated to (-3, -1, 1), doubled
  EXPECT_NEAR(v.x, -6, 1e-4);
  EXPECT_NEAR(v.y, -2, 1e-4);
  EXPECT_NEAR(v.z, 2, 1e-4);
  CKFootPrint empty;
  empty.FPInitialise();
  EXPECT_EQ(empty.FPTranslate(&shift) + empty.FPRotateHorizontal(1) + empty.FPResize(2) + empty.FPRoll(1), 4);
}
