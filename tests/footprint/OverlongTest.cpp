// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Hostile input for footprints: every pointer argument null on a footprint
// that has edges, a cursor and a box, and an outline of ten thousand vertices.
#include <gtest/gtest.h>

#include <cmath>

#include "KFootPrint.h"

namespace {

class CKFootPrintHostile : public ::testing::Test {
 protected:
  void SetUp() override {
    fp.FPInitialise();
    fp.FPAddVertex(0.0f, 0.0f, 0.0f);
    fp.FPAddVertex(4.0f, 0.0f, 0.0f);
    fp.FPAddVertex(4.0f, 0.0f, 4.0f);
    fp.FPAddVertex(0.0f, 0.0f, 4.0f);
    ASSERT_EQ(fp.FPUpdateVertexDependencies(), 1);
    ASSERT_EQ(fp.FPSelectFirstEdge(), 1);
  }
  CKFootPrint fp;
};

TEST_F(CKFootPrintHostile, NullPointersAreRefusedAndChangeNothing) {
  const _D3DVECTOR v = {1.0f, 0.0f, 1.0f};
  _D3DVECTOR out = {};
  _D3DRMBOX box = {};
  tagKLineEquation line = {};
  tagKPlaneEquation plane = {};
  float f = 0.0f;
  int i = 0;

  EXPECT_EQ(fp.FPGetType(nullptr), 0);
  EXPECT_EQ(fp.FPSetCentreOfGravity(nullptr), 0);
  EXPECT_EQ(fp.FPGetCentreOfGravity(nullptr), 0);
  EXPECT_EQ(fp.FPCalcCentreOfGravity(nullptr), 0);
  EXPECT_EQ(fp.FPGetExternalVertex(nullptr), 0);
  EXPECT_EQ(fp.FPSetExternalVertex(nullptr), 0);
  EXPECT_EQ(fp.FPGetClearance(nullptr, &f), 0);
  EXPECT_EQ(fp.FPGetBox(nullptr), 0);
  EXPECT_EQ(fp.FPSetBox(nullptr, 1.0f, 1.0f, 1.0f), 0);
  EXPECT_EQ(fp.FPSetBox(&box, nullptr), 0);
  EXPECT_EQ(fp.FPCopyBox(nullptr, &box), 0);
  EXPECT_EQ(fp.FPCopyBox(&box, nullptr), 0);
  EXPECT_EQ(fp.FPUpdate3DBoxFromVertex(nullptr), 0);
  EXPECT_EQ(fp.FPUpdate3DBoxFromBox(nullptr, &box), 0);
  EXPECT_EQ(fp.FPUpdate3DBoxFromBox(&box, nullptr), 0);
  EXPECT_EQ(fp.FPCopyFrom(nullptr), 0);
  EXPECT_EQ(fp.FPAddVertex(nullptr), 0);
  EXPECT_EQ(fp.FPGetEdgeFromVector(nullptr), 0);
  EXPECT_EQ(fp.FPUpdateEdgeFromVector(nullptr), 0);
  EXPECT_EQ(fp.FPGetEdgeToVector(nullptr), 0);
  EXPECT_EQ(fp.FPGetThisEdgeResist(nullptr), 0);
  EXPECT_EQ(fp.FPGetThisEdgeSectorAccess(nullptr), 0);
  EXPECT_EQ(fp.FPGetThisEdgeItemAccess(nullptr), 0);
  EXPECT_EQ(fp.FPGetThisEdgeProperty(nullptr), 0);
  EXPECT_EQ(fp.FPGetThisEdgeLineEquation(nullptr), 0);
  EXPECT_EQ(fp.FPGetVertexCount(nullptr), 0);
  EXPECT_EQ(fp.FPMakeLineEquation(nullptr, &v, &v), 0);
  EXPECT_EQ(fp.FPMakeLineEquation(&line, nullptr, &v), 0);
  EXPECT_EQ(fp.FPCopyLineEquation(nullptr, &line), 0);
  EXPECT_EQ(fp.FPCopyLineEquation(&line, nullptr), 0);
  EXPECT_EQ(fp.FPTranslate(nullptr), 0);
  EXPECT_EQ(fp.FPInitPlaneEquation(nullptr), 0);
  EXPECT_EQ(fp.FPGetPlaneEquation(nullptr), 0);
  EXPECT_EQ(fp.FPMakePlaneEquation(nullptr, &v, &v, &v), 0);
  EXPECT_EQ(fp.FPMakePlaneEquation(&plane, &v, nullptr, &v), 0);
  EXPECT_EQ(fp.FPMakePlaneEquation(&plane, &v, &v, &v, nullptr), 0);
  EXPECT_EQ(fp.FPCopyPlaneEquation(nullptr, &plane), 0);
  EXPECT_EQ(fp.FPSolvePlaneEquation(nullptr, &v, &out), 0);
  EXPECT_EQ(fp.FPSolvePlaneEquationBroadly(&plane, &v, nullptr), 0);
  EXPECT_EQ(fp.FPGetConstYVector(nullptr, &v, &out), 0);
  EXPECT_EQ(fp.FPGetClearance(nullptr, &v, &out, &out, 0, 0), 0);
  EXPECT_EQ(fp.FPGetClearance(&v, &v, nullptr, &out, 0, 1), 0);
  EXPECT_EQ(fp.FPGetFaceClearance(&v, nullptr, &out, &out, 1), 0);
  EXPECT_EQ(fp.FPGetLineIntersection(nullptr, &line), 0);
  EXPECT_EQ(fp.FPIsBoundaryCrossed(nullptr, &v), 0);
  EXPECT_EQ(fp.FPIsBoundaryCrossed(&v, nullptr), 0);
  EXPECT_EQ(fp.FPIsBoundaryCrossedNoMargin(&v, nullptr), 0);
  EXPECT_EQ(fp.FPDoLinesCross(&v, &v, &v, nullptr), 0);
  EXPECT_EQ(fp.FPDoLinesCross(nullptr, &v, &v), 0);
  EXPECT_EQ(fp.FPDoLinesCross(&line, nullptr), 0);
  EXPECT_EQ(fp.FPGetCrossingPoint(nullptr), 0);
  EXPECT_EQ(fp.FPGetCoincidenceKind(nullptr), 0);
  EXPECT_EQ(fp.FPIsPointInside(nullptr), 0);
  EXPECT_EQ(fp.FPPointsAreOnTheSameSide(nullptr, &v), 0);
  EXPECT_EQ(CKFootPrint::FPAdjustTranslation(&v, &v, nullptr), 0);
  EXPECT_EQ(CKFootPrint::FPAdjustTranslation(nullptr, &v, &out), 0);
  EXPECT_EQ(fp.FPUpdateYFromSelectedEdgeCrossing(nullptr), 0);
  EXPECT_EQ(fp.FPDistanceToEdge(&v, &v, &v, &v, nullptr), 0);
  EXPECT_EQ(fp.FPBoxBoundaryCrossingExclusive(&v, nullptr, &box), 0);
  EXPECT_EQ(fp.FPBoxBoundaryCrossingInclusive(&v, &v, nullptr), 0);
  EXPECT_EQ(fp.FPSelectCoincidentEdge(nullptr, &v), 0);
  EXPECT_EQ(fp.FPGetEdgeSampleDistance(nullptr, &f), 0);
  EXPECT_EQ(fp.FPGetEdgeSampleDistance(&v, nullptr), 0);
  EXPECT_EQ(CKFootPrint::FPInitVertex(nullptr), 0);

  // The footprint is as it was: four vertices, a working inside test.
  ASSERT_EQ(fp.FPGetVertexCount(&i), 1);
  EXPECT_EQ(i, 4);
  const _D3DVECTOR inside = {2.0f, 0.0f, 2.0f};
  const _D3DVECTOR outside = {9.0f, 0.0f, 2.0f};
  EXPECT_EQ(fp.FPIsPointInside(&inside), 1);
  EXPECT_EQ(fp.FPIsPointInside(&outside), 0);
}

TEST(CKFootPrintHostileSize, TenThousandVerticesStayConsistent) {
  CKFootPrint fp;
  fp.FPInitialise();
  const int n = 10000;
  for (int k = 0; k < n; ++k) {
    const double a = 2.0 * 3.14159265358979 * k / n;
    ASSERT_EQ(
        fp.FPAddVertex(static_cast<float>(50.0 * std::cos(a)), 0.0f, static_cast<float>(50.0 * std::sin(a))),
        1);
  }
  ASSERT_EQ(fp.FPUpdateVertexDependencies(), 1);
  int count = 0;
  ASSERT_EQ(fp.FPGetVertexCount(&count), 1);
  EXPECT_EQ(count, n);
  const _D3DVECTOR centre = {0.0f, 0.0f, 0.0f};
  const _D3DVECTOR away = {80.0f, 0.0f, 0.0f};
  EXPECT_EQ(fp.FPIsPointInside(&centre), 1);
  EXPECT_EQ(fp.FPIsPointInside(&away), 0);
  CKFootPrint copy;
  copy.FPInitialise();
  ASSERT_EQ(copy.FPCopyFrom(&fp), 1);
  ASSERT_EQ(copy.FPGetVertexCount(&count), 1);
  EXPECT_EQ(count, 2 * n);
  EXPECT_EQ(fp.FPDeleteAllEdges(), 1);
}

}  // namespace
