// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Generation on tessellated seeds: orientation, normals, reversal and the outline order.
#include <gtest/gtest.h>

#include <vector>

#include "KFootPrint.h"
#include "KVGen.h"
#include "VGenTestSupport.h"

using namespace kutil::test;

TEST(CKVGenOrientation, WindingDecidesOrientationReversalAndNormals) {
  for (int clockwise = 0; clockwise < 2; ++clockwise) {
    SCOPED_TRACE(clockwise);
    Gen gen;
    if (clockwise)
      addSeed(gen.g, {vec(0, 0, 0), vec(0, 2, 0), vec(2, 2, 0), vec(2, 0, 0)});
    else
      addSquare(gen.g);
    ASSERT_EQ(gen->KVTesselateSeedPlane(), 1);
    EXPECT_EQ(GenInternals::seedOrientation(*gen), 1 - clockwise);
    _D3DVECTOR n;
    ASSERT_EQ(gen->KVCalcSeedNormal(&n), 1);
    expectNear(n, vec(0, 0, -1));  // the oriented normal never points to +z
    EXPECT_EQ(gen->KVIsNormalReversalActive(), clockwise);
    gen->KVSetNormalDirection(0);
    EXPECT_EQ(gen->KVIsNormalReversalActive(), 1 - clockwise);
    gen->KVAddInstruction(INSTR_EXTRUDE, &kNoAxis, 5.0f);
    gen->KVAddInstruction(INSTR_EXTRUDE, &kNoAxis, 1.0f);
    ASSERT_EQ(gen->KVGenerate(), 1);
    expectNear(GenInternals::seedPlane(*gen)->normal, vec(0, 0, 1));
    for (tagKExtrudePlane* p = GenInternals::genPlanes(*gen); p != nullptr; p = p->next)
      expectNear(p->normal, vec(0, 0, 1));
  }
  Gen flat;
  addSeed(flat.g, {vec(0, 0, 0), vec(1, 0, 0)});
  _D3DVECTOR n;
  EXPECT_EQ(flat->KVCalcSeedNormal(&n), 0);
  EXPECT_EQ(GenInternals::seedOrientation(*flat), -1);
}

TEST(CKVGenOrientation, InstructionsWorkInThePreviousPlanesFrame) {
  Gen gen;
  addSquare(gen.g);
  ASSERT_EQ(gen->KVTesselateSeedPlane(), 1);
  gen->KVAddInstruction(INSTR_HINGE_RIGHT, &kNoAxis, kPi / 2);
  gen->KVAddInstruction(INSTR_EXTRUDE, &kNoAxis, 1.0f);
  ASSERT_EQ(gen->KVGenerate(), 1);
  // The hinged plane faces +x, so the extrusion after it moves along +x.
  expectNear(GenInternals::genPlanes(*gen)->normal, vec(1, 0, 0));
  gen->KVSelectFirstGenPlane();
  gen->KVSelectNextGenPlane();
  std::vector<_D3DVECTOR> v = planeVertices(gen.g);
  ASSERT_EQ(v.size(), 4u);
  expectNear(v[0], vec(3, 0, 2));
  expectNear(v[2], vec(3, 2, 0));
}

TEST(CKVGenOrientation, PlaneNormalStandsWhenTheSeedNormalIsTooSmall) {
  // A tiny tilted seed has no cross product component of 0.001, so its orientation is unknown;
  // turned a quarter about x, the plane's own cross product is usable and negated as for orientation 0.
  const float turns[] = {-kPi / 4, kPi / 4};
  const _D3DVECTOR expected[] = {vec(0, 0, -1), vec(0, 1, 0)};
  for (int i = 0; i < 2; ++i) {
    SCOPED_TRACE(i);
    Gen gen;
    addSeed(gen.g, {vec(0, 0, 0), vec(0.03f, 0, 0), vec(0, 0.03f, 0.03f)});
    ASSERT_EQ(gen->KVTesselateSeedPlane(), 1);
    const _D3DVECTOR axis = vec(1, 0, 0);
    gen->KVAddInstruction(INSTR_ROTATE_AXIS, &axis, turns[i]);
    ASSERT_EQ(gen->KVGenerate(), 1);
    EXPECT_EQ(GenInternals::seedOrientation(*gen), -1);
    expectNear(GenInternals::genPlanes(*gen)->normal, expected[i]);
  }
}

TEST(CKVGenOrientation, PlaneOutlineStartsAtVertexOneUnderReversal) {
  for (int reversed = 0; reversed < 2; ++reversed) {
    SCOPED_TRACE(reversed);
    Gen gen;
    addSquare(gen.g);
    ASSERT_EQ(gen->KVTesselateSeedPlane(), 1);
    gen->KVSetNormalDirection(reversed ? 0 : 1);
    gen->KVAddInstruction(INSTR_EXTRUDE, &kNoAxis, 2.0f);
    ASSERT_EQ(gen->KVGenerate(), 1);
    ASSERT_EQ(gen->KVUpdateVertexDependencies(), 1);
    CKFootPrint* outline = GenInternals::genPlanes(*gen)->outline;
    _D3DVECTOR first, last;
    ASSERT_EQ(outline->FPSelectFirstEdge(), 1);
    outline->FPGetEdgeFromVector(&first);
    while (outline->FPSelectNextEdgeNoWrap() == 1) {
    }
    outline->FPGetEdgeFromVector(&last);
    expectNear(first, reversed ? vec(2, 0, 2) : vec(0, 0, 2));
    expectNear(last, reversed ? vec(0, 0, 2) : vec(0, 2, 2));
  }
}

TEST(CKVGenOrientation, GlobeSeedFacesAlongXAndFailsLaidFlatFromThreeRings) {
  CKVGen gen;
  ASSERT_EQ(GKVSeedExtruderGlobe(&gen, 4, 2, 1.0f), 1);
  ASSERT_EQ(gen.KVTesselateSeedPlane(), 1);
  EXPECT_EQ(GenInternals::seedOrientation(gen), 0);
  EXPECT_EQ(gen.KVIsNormalReversalActive(), 0);  // the globe sets the direction to 0
  ASSERT_EQ(gen.KVGenerate(), 1);
  expectNear(GenInternals::seedPlane(gen)->normal, vec(1, 0, 0));
  expectNear(GenInternals::genPlanes(gen)->normal, vec(0, 0, -1));  // turned a quarter about y
  ASSERT_EQ(gen.KVUpdateVertexDependencies(), 1);

  gen.KVTerminate();
  ASSERT_EQ(GKVSeedExtruderGlobe(&gen, 4, 3, 1.0f), 1);
  EXPECT_EQ(gen.KVIsValid(3), 0);
  ASSERT_EQ(gen.KVGenerate(), 1);
  expectNear(GenInternals::seedPlane(gen)->normal, vec(0, 0, 1));
  gen.KVTerminate();
}

TEST(CKVGenOrientation, DegenerateSeedsTerminate) {
  const std::vector<_D3DVECTOR> seeds[] = {
      {vec(1, 1, 0), vec(1, 1, 0), vec(1, 1, 0), vec(1, 1, 0)},
      {vec(0, 0, 0), vec(1, 0, 0), vec(2, 0, 0), vec(3, 0, 0)},
      {vec(0, 0, 0), vec(2, 2, 0), vec(0, 0, 0), vec(2, 2, 0)},
      {vec(-3e38f, -3e38f, 0), vec(3e38f, -3e38f, 0), vec(3e38f, 3e38f, 0), vec(-3e38f, 3e38f, 0)},
      {vec(0, 0, 0), vec(2, 2, 0), vec(2, 0, 0), vec(0, 2, 0)},
  };
  for (const auto& seed : seeds) {
    SCOPED_TRACE(seed[1].x);
    Gen gen;
    for (const _D3DVECTOR& p : seed) gen->KVAddSeedVertex(&p);
    gen->KVSetEdgeDetectType(EDGE_DETECT_FACE);
    gen->KVTesselateSeedPlane();
    const _D3DVECTOR axis = vec(0, 1, 0);
    gen->KVAddInstruction(INSTR_HINGE_TOP, &axis, 0.5f);
    gen->KVAddInstruction(INSTR_EXTRUDE, &axis, 2.0f);
    gen->KVAddInstruction(INSTR_ROTATE_AXIS, &axis, 0.5f);
    int planes = 0;
    const int ok = gen->KVGenerate();
    for (tagKExtrudePlane* p = GenInternals::genPlanes(*gen); p != nullptr; p = p->next) ++planes;
    EXPECT_EQ(planes, ok ? 3 : 0);  // a failure leaves no plane
    gen->KVUpdateVertexDependencies();
    GKVCalculateEndPlaneVertexMappings(&gen.g, 1, 1, 1.0f);
  }
}
