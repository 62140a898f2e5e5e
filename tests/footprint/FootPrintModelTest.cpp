// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>

#include "FootPrintTestSupport.h"
#include "KFootPrint.h"

using kutil::test::makeFootPrint;
using kutil::test::makeSquare;
using kutil::test::vec;

namespace {
_D3DVECTOR edgeFrom(CKFootPrint& fp) {
  _D3DVECTOR v = vec(-99, -99, -99);
  fp.FPGetEdgeFromVector(&v);
  return v;
}
}  // namespace

TEST(FootPrintEdges, NewVertexHasDefaultPropertiesAndUnsetAccess) {
  CKFootPrint fp;
  makeFootPrint(fp, {vec(1, 2, 3)}, false);
  ASSERT_EQ(fp.FPSelectFirstEdge(), 1);
  int resist = 0, property = 0, access = -5;
  fp.FPGetThisEdgeResist(&resist);
  fp.FPGetThisEdgeProperty(&property);
  EXPECT_EQ(resist, 999);
  EXPECT_EQ(property, 3);
  EXPECT_EQ(fp.FPGetThisEdgeSectorAccess(&access) + fp.FPGetThisEdgeItemAccess(&access), 0);
  EXPECT_EQ(access, -5);
}

TEST(FootPrintEdges, CursorWrapsOnlyInTheWrappingFormsAndDeleteKeepsTheCount) {
  CKFootPrint fp;
  makeSquare(fp);
  EXPECT_EQ(fp.FPSelectNextEdgeNoWrap() + fp.FPDeleteSelectedEdge(), 0);  // no cursor yet
  ASSERT_EQ(fp.FPSelectFirstEdge(), 1);
  EXPECT_EQ(fp.FPSelectPreviousEdgeNoWrap(), 0);
  EXPECT_EQ(fp.FPSelectPreviousEdgeWrapping(), 1);
  EXPECT_FLOAT_EQ(edgeFrom(fp).z, 10.0f);  // the last edge, (0, 0, 10) ...
  _D3DVECTOR to;
  ASSERT_EQ(fp.FPGetEdgeToVector(&to), 1);  // ... ends at the first vertex
  EXPECT_FLOAT_EQ(to.z, 0.0f);
  EXPECT_EQ(fp.FPSelectNextEdgeNoWrap(), 0);  // at the tail, kept
  EXPECT_FLOAT_EQ(edgeFrom(fp).z, 10.0f);
  EXPECT_EQ(fp.FPSelectNextEdgeWrapping(), 1);
  EXPECT_EQ(fp.FPIsSelectedTheFirst(), 1);
  fp.FPSelectNextEdgeNoWrap();
  ASSERT_EQ(fp.FPDeleteSelectedEdge(), 1);
  EXPECT_FLOAT_EQ(edgeFrom(fp).z, 10.0f);  // (10, 0, 10) took its place
  int count = 0;
  fp.FPGetVertexCount(&count);
  EXPECT_EQ(count, 4);
}

TEST(FootPrintEdges, WholeFootPrintWalksNeedEdgesAndRestoreTheCursor) {
  CKFootPrint fp;
  fp.FPInitialise();
  EXPECT_EQ(fp.FPSetAllEdgeResist(1) + fp.FPSetAllAccess(1) + fp.FPUpdateVertexDependencies(), 0);
  makeSquare(fp);
  fp.FPSelectFirstEdge();
  fp.FPSelectNextEdgeNoWrap();
  EXPECT_EQ(fp.FPSetAllAccess(6) + fp.FPUpdateVertexDependencies(), 2);
  EXPECT_FLOAT_EQ(edgeFrom(fp).x, 10.0f);  // the cursor is back on the second edge
  EXPECT_FLOAT_EQ(edgeFrom(fp).z, 0.0f);
  int value = 0;
  EXPECT_EQ(fp.FPGetThisEdgeSectorAccess(&value), 1);
  EXPECT_EQ(value, 6);
  EXPECT_EQ(fp.FPGetThisEdgeItemAccess(&value), 0);  // only sector access is set
}

TEST(FootPrintLines, LineEquationsHaveTheirThreeKinds) {
  CKFootPrint fp;
  fp.FPInitialise();
  const struct {
    _D3DVECTOR a, b;
    int kind;
    float gradient, constant;  // x intercept, or the constant z for kind 2
  } rows[] = {{vec(1, 0, 0), vec(1, 0, 5), 1, 999.0f, 1.0f},
              {vec(0, 0, 2), vec(5, 0, 2), 2, 0.001f, 2.0f},
              {vec(0, 0, 0), vec(2, 0, 2), 0, 1.0f, 0.0f}};
  for (const auto& r : rows) {
    tagKLineEquation line;
    fp.FPMakeLineEquation(&line, &r.a, &r.b);
    EXPECT_EQ(line.kind, r.kind);
    EXPECT_FLOAT_EQ(line.gradient, r.gradient) << r.kind;
    EXPECT_FLOAT_EQ(r.kind == 2 ? line.constZ : line.xIntercept, r.constant) << r.kind;
  }
}

TEST(FootPrintBox, BoxAnswersTheLastGrowthStepAndCentresOnIt) {
  CKFootPrint fp;
  makeFootPrint(fp, {vec(1, 2, 3)}, false);
  EXPECT_EQ(fp.FPSet3DBoxFromVertices(), 0);  // set nevertheless
  _D3DRMBOX* box = nullptr;
  ASSERT_EQ(fp.FPGetBox(&box), 1);
  EXPECT_FLOAT_EQ(box->max.z, 3.0f);

  makeFootPrint(fp, {vec(0, 0, 0), vec(4, 1, 0), vec(0, 0, 2)});
  _D3DVECTOR centre;
  fp.FPGetCentreOfGravity(&centre);  // the box centre, not the area centroid
  EXPECT_FLOAT_EQ(centre.x, 2.0f);
  EXPECT_FLOAT_EQ(centre.y, 0.5f);
  EXPECT_FLOAT_EQ(centre.z, 1.0f);

  CKFootPrint other;
  other.FPInitialise();
  other.FPSetClearance(3.0f, -1.0f);
  EXPECT_EQ(other.FPGetBox(&box), 0);  // the horizontal extent is still missing
}

TEST(FootPrintPlane, UnitSquareIsHorizontalWithTheOffsetExternalVertex) {
  CKFootPrint fp;
  ASSERT_EQ(makeFootPrint(fp, {vec(0, 0, 0), vec(1, 0, 0), vec(1, 0, 1), vec(0, 0, 1)}), 1);
  tagKPlaneEquation* plane = nullptr;
  fp.FPGetPlaneEquation(&plane);
  EXPECT_EQ(plane->kind, 2);
  _D3DVECTOR* external = nullptr;
  fp.FPGetExternalVertex(&external);
  EXPECT_FLOAT_EQ(external->x, 1.0f + 17.3133f);
  EXPECT_FLOAT_EQ(external->y, 6.550404f);
  EXPECT_FLOAT_EQ(external->z, 1.0f + 103.00314f);
  _D3DVECTOR in = vec(0.5f, 9, 0.5f), out;
  EXPECT_EQ(fp.FPGetPlaneProjectionOf(&in, &out), 0);  // deliberately 0
  makeFootPrint(fp, {vec(0, 0, 0), vec(1, 0, 0)});     // too few vertices: plane reset
  EXPECT_EQ(fp.FPIsPlaneEquationInUse(), 0);
  EXPECT_EQ(plane->kind, -1);
}

TEST(FootPrintPlane, KindsFollowTheNormal) {
  CKFootPrint fp;
  fp.FPInitialise();
  tagKPlaneEquation plane;
  fp.FPInitPlaneEquation(&plane);
  _D3DVECTOR o = vec(0, 0, 0), x = vec(1, 0, 0), y = vec(0, 1, 0), z = vec(0, 0, 1), steep = vec(1, 3, 0);
  _D3DVECTOR slope = vec(2, 1, 0), onLine = vec(2, 0, 0), at = vec(4, 0, 7), solved;  // slope: y = x / 2
  ASSERT_EQ(fp.FPMakePlaneEquation(&plane, &o, &x, &y), 1);
  EXPECT_EQ(plane.kind, 0);
  EXPECT_EQ(fp.FPSolvePlaneEquationBroadly(&plane, &at, &solved), 0);  // vertical
  ASSERT_EQ(fp.FPMakePlaneEquation(&plane, &o, &z, &steep), 1);
  EXPECT_EQ(plane.kind, 1);
  ASSERT_EQ(fp.FPMakePlaneEquation(&plane, &o, &z, &slope), 1);
  EXPECT_EQ(plane.kind, 3);
  ASSERT_EQ(fp.FPSolvePlaneEquation(&plane, &at, &solved), 1);
  EXPECT_FLOAT_EQ(solved.y, 2.0f);
  EXPECT_EQ(fp.FPMakePlaneEquation(&plane, &o, &x, &onLine), 0);  // collinear: kind stays
  EXPECT_EQ(plane.kind, 3);
  // Four points: a repeated first point falls back to the last three.
  ASSERT_EQ(fp.FPMakePlaneEquation(&plane, &o, &o, &x, &y), 1);
  EXPECT_EQ(plane.kind, 0);
  EXPECT_EQ(fp.FPMakePlaneEquation(&plane, &o, &o, &x, &x), 0);
}

TEST(FootPrintPlane, ConstantHeightVectorKeepsItsFormulasAndFacesTheReference) {
  CKFootPrint fp;
  fp.FPInitialise();
  tagKPlaneEquation plane = {4.0f, 2.0f, 1.0f, 3.0f, 3, 1};
  _D3DVECTOR ref = vec(1, 0, 0), out;
  ASSERT_EQ(fp.FPGetConstYVector(&plane, &ref, &out), 1);
  const float n1 = std::sqrt(1.0f + (2.0f / 3) * (2.0f / 3));  // (1, 0, (a - d) / c)
  EXPECT_NEAR(out.x, 1.0f / n1, 1e-5);
  EXPECT_NEAR(out.z, (-2.0f / 3) / n1, 1e-5);
  plane.a = 5.0f;  // trunc|a| > trunc|c|: ((d - c) / a, 0, 1), turned to face -z
  ref = vec(0, 0, -1);
  ASSERT_EQ(fp.FPGetConstYVector(&plane, &ref, &out), 1);
  const float n2 = std::sqrt(0.04f + 1.0f);
  EXPECT_NEAR(out.x, -0.2f / n2, 1e-5);
  EXPECT_NEAR(out.z, -1.0f / n2, 1e-5);
  plane.kind = 2;
  EXPECT_EQ(fp.FPGetConstYVector(&plane, &ref, &out), 0);
}

TEST(FootPrintCopy, CopiesEverythingButItemAccessAndLeavesTheSourceCursor) {
  CKFootPrint source, copy;
  makeSquare(source, 2.0f);
  source.FPSelectFirstEdge();
  source.FPSelectNextEdgeNoWrap();
  source.FPSetThisEdgeItemAccess(7);
  source.FPSetThisEdgeSectorAccess(4);
  copy.FPInitialise();
  copy.FPAddVertex(50, 50, 50);
  EXPECT_EQ(copy.FPCopyFrom(nullptr), 0);
  ASSERT_EQ(copy.FPCopyFrom(&source), 1);
  EXPECT_FLOAT_EQ(edgeFrom(source).x, 10.0f);
  int value = 0;
  copy.FPGetVertexCount(&value);
  EXPECT_EQ(value, 8) << "the copied count is raised again by every vertex added";
  copy.FPSelectFirstEdge();
  copy.FPSelectNextEdgeNoWrap();
  EXPECT_EQ(copy.FPGetThisEdgeItemAccess(&value), 0);  // deliberately not copied
  EXPECT_EQ(copy.FPGetThisEdgeSectorAccess(&value), 1);
  EXPECT_EQ(value, 4);
  _D3DVECTOR in = vec(5, 0, 5);
  EXPECT_EQ(copy.FPIsPointInside(&in), 1);  // dependencies came along
}

TEST(FootPrintTransform, RotationsAndResizeMoveEveryVertex) {
  CKFootPrint fp;
  makeFootPrint(fp, {vec(1, 0, 0), vec(0, 2, 0)}, false);
  fp.FPRotateHorizontal(1.57079632679f);
  fp.FPSelectFirstEdge();
  EXPECT_NEAR(edgeFrom(fp).z, -1.0f, 1e-5);
  fp.FPSelectNextEdgeNoWrap();
  EXPECT_NEAR(edgeFrom(fp).y, 2.0f, 1e-5);  // on the axis: unchanged
  fp.FPRoll(1.57079632679f);
  EXPECT_NEAR(edgeFrom(fp).x, -2.0f, 1e-5);
  fp.FPResize(0.5f);
  EXPECT_NEAR(edgeFrom(fp).x, -1.0f, 1e-5);
}
