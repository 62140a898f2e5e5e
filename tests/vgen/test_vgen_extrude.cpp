// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "KFootPrint.h"
#include "KVGen.h"
#include "VGenTestUtil.h"

using kutil::test::addSeed;
using kutil::test::addSquare;
using kutil::test::expectNear;
using kutil::test::Gen;
using kutil::test::planeVertices;
using kutil::test::vec;

namespace {
const float kPi = 3.14159265358979f;
const _D3DVECTOR kNoAxis = {0.0f, 0.0f, 0.0f};
}  // namespace

TEST(CKVGenExtrude, BoundingRectangleKeepsItsFiniteStartValues) {
  Gen gen;
  EXPECT_EQ(gen->KVUpdateSeedList2DBox(), 0);
  addSeed(gen.g, {vec(1000, 1500, 9), vec(2000, 1200, -4)});
  ASSERT_EQ(gen->KVUpdateSeedList2DBox(), 1);
  // Every vertex lies beyond 999, so the minima keep their starting value.
  expectNear(gen->m_seedPlane->corner0, vec(999, 1500, 0));
  expectNear(gen->m_seedPlane->corner1, vec(2000, 1500, 0));
  expectNear(gen->m_seedPlane->corner2, vec(999, 999, 0));
  expectNear(gen->m_seedPlane->corner3, vec(2000, 999, 0));
  float w = 0, h = 0;
  ASSERT_EQ(gen->KVGetSeedPlaneScale(&w, &h), 1);
  EXPECT_FLOAT_EQ(w, 1001.0f);
  EXPECT_FLOAT_EQ(h, 501.0f);
}

TEST(CKVGenExtrude, FootPrintFromSeedLaysItOnTheFloor) {
  Gen gen;
  CKFootPrint fp;
  fp.FPInitialise();
  EXPECT_EQ(gen->KVFootPrintFromSeed(&fp, 1), 0);
  addSeed(gen.g, {vec(3, 4, 7), vec(6, 4, 7), vec(6, 8, 7)});
  ASSERT_EQ(gen->KVFootPrintFromSeed(&fp, 1), 1);
  _D3DVECTOR p;
  fp.FPSelectFirstEdge();
  fp.FPGetEdgeFromVector(&p);
  expectNear(p, vec(3, 0, 4), 0.0f);
  fp.FPTerminate();
}

TEST(CKVGenExtrude, EmptyInstructionListKeepsEarlierPlanes) {
  Gen gen;
  EXPECT_EQ(gen->KVGenerate(), 0);  // no seed
  addSquare(gen.g);
  gen->KVAddInstruction(INSTR_EXTRUDE, &kNoAxis, 1.0f);
  ASSERT_EQ(gen->KVGenerate(), 1);
  tagKExtrudePlane* before = gen->m_genPlanes;
  gen->KVDeleteAllInstructions();
  EXPECT_EQ(gen->KVGenerate(), 1);
  EXPECT_EQ(gen->m_genPlanes, before);
}

TEST(CKVGenExtrude, UntessellatedSeedExtrudesAlongPositiveZ) {
  Gen gen;
  addSquare(gen.g);
  gen->KVAddInstruction(INSTR_EXTRUDE, &kNoAxis, 5.0f);
  gen->KVAddInstruction(INSTR_EXTRUDE, &kNoAxis, 1.0f);
  ASSERT_EQ(gen->KVGenerate(), 1);
  expectNear(gen->m_seedPlane->normal, vec(0, 0, 1));
  ASSERT_EQ(gen->KVSelectFirstGenPlane(), 1);
  std::vector<_D3DVECTOR> first = planeVertices(gen.g);
  ASSERT_EQ(first.size(), 4u);
  expectNear(first[2], vec(2, 2, 5));
  ASSERT_EQ(gen->KVSelectNextGenPlane(), 1);
  expectNear(planeVertices(gen.g)[0], vec(0, 0, 6));
  EXPECT_EQ(gen->KVSelectNextGenPlane(), 0);
  EXPECT_EQ(gen->KVSelectPrevGenPlane(), 1);
  EXPECT_EQ(gen->KVSelectPrevGenPlane(), 0);
  // The current plane after generation is the last one.
  ASSERT_EQ(gen->KVGenerate(), 1);
  EXPECT_EQ(gen->m_currentPlane, gen->m_genPlanes->next);
}

TEST(CKVGenExtrude, UnknownCodeDuplicatesThePreviousPlane) {
  Gen gen;
  addSeed(gen.g, {vec(1, 2, 3), vec(4, -5, 6), vec(-7, 8, 9)});
  gen->KVAddInstruction(9, &kNoAxis, 3.0f);
  gen->KVAddInstruction(-4, &kNoAxis, 3.0f);
  ASSERT_EQ(gen->KVGenerate(), 1);
  gen->KVSelectFirstGenPlane();
  gen->KVSelectNextGenPlane();
  std::vector<_D3DVECTOR> v = planeVertices(gen.g);
  ASSERT_EQ(v.size(), 3u);
  expectNear(v[1], vec(4, -5, 6), 0.0f);
  expectNear(gen->m_currentPlane->corner3, gen->m_seedPlane->corner3, 0.0f);
}

TEST(CKVGenExtrude, HingeRightTurnsTheSquareAboutItsRightEdge) {
  Gen gen;
  addSquare(gen.g);
  gen->KVAddInstruction(INSTR_HINGE_RIGHT, &kNoAxis, kPi / 2);
  ASSERT_EQ(gen->KVGenerate(), 1);
  gen->KVSelectFirstGenPlane();
  std::vector<_D3DVECTOR> v = planeVertices(gen.g);
  ASSERT_EQ(v.size(), 4u);
  // The right edge x = 2 stays; the left edge swings round it to z = 2.
  expectNear(v[0], vec(2, 0, 2));
  expectNear(v[1], vec(2, 0, 0));
  expectNear(v[2], vec(2, 2, 0));
  expectNear(v[3], vec(2, 2, 2));
  expectNear(gen->m_currentPlane->corner0, vec(2, 2, 2));
  expectNear(gen->m_currentPlane->corner1, vec(2, 2, 0));
}

TEST(CKVGenExtrude, HingesTurnAboutTheirOwnEdges) {
  struct Case {
    int code;
    _D3DVECTOR expectVertex0;  // image of (0, 0, 0)
    _D3DVECTOR expectVertex2;  // image of (2, 2, 0)
  };
  const Case cases[] = {
      {INSTR_HINGE_LEFT, vec(0, 0, 0), vec(0, 2, 2)},
      {INSTR_HINGE_TOP, vec(0, 2, 2), vec(2, 2, 0)},
      {INSTR_HINGE_BOTTOM, vec(0, 0, 0), vec(2, 0, 2)},
      {INSTR_ROTATE_AXIS, vec(0, 0, 0), vec(0, 2, -2)},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.code);
    Gen gen;
    addSquare(gen.g);
    _D3DVECTOR up = vec(0, 1, 0);
    gen->KVAddInstruction(c.code, &up, kPi / 2);
    ASSERT_EQ(gen->KVGenerate(), 1);
    gen->KVSelectFirstGenPlane();
    std::vector<_D3DVECTOR> v = planeVertices(gen.g);
    ASSERT_EQ(v.size(), 4u);
    expectNear(v[0], c.expectVertex0);
    expectNear(v[2], c.expectVertex2);
  }
}

TEST(CKVGenExtrude, WholeSolidTransformsLeaveNormalsAlone) {
  Gen gen;
  EXPECT_EQ(gen->KVInvertResize(2.0f), 0);  // no seed vertex
  addSeed(gen.g, {vec(1, 2, 3), vec(5, 2, 3), vec(5, 6, 3)});
  gen->KVAddInstruction(INSTR_EXTRUDE, &kNoAxis, 1.0f);
  ASSERT_EQ(gen->KVGenerate(), 1);
  const _D3DVECTOR normalBefore = gen->m_genPlanes->normal;
  ASSERT_EQ(gen->KVInvertResize(2.0f), 1);
  _D3DVECTOR p;
  gen->KVGetSeedVertexByNumber(0, &p);
  expectNear(p, vec(-2, 4, 6));
  gen->KVSelectFirstGenPlane();
  gen->KVGetGenVertexByNumber(0, &p);
  expectNear(p, vec(-2, 4, 8));
  expectNear(gen->m_genPlanes->normal, normalBefore, 0.0f);

  _D3DVECTOR t = vec(1, 1, 1);
  ASSERT_EQ(gen->KVTranslate(&t), 1);
  gen->KVGetSeedVertexByNumber(0, &p);
  expectNear(p, vec(-1, 5, 7));
  ASSERT_EQ(gen->KVRotateHorizontal(kPi), 1);
  gen->KVGetSeedVertexByNumber(0, &p);
  expectNear(p, vec(1, 5, -7));
  ASSERT_EQ(gen->KVRoll(kPi), 1);
  ASSERT_EQ(gen->KVElevate(kPi), 1);
  gen->KVGetSeedVertexByNumber(0, &p);
  expectNear(p, vec(-1, 5, 7));
}

TEST(CKVGenExtrude, EnclosingBoxSpansSeedAndPlanes) {
  Gen gen;
  CKFootPrint fp;
  fp.FPInitialise();
  EXPECT_EQ(gen->KVFootPrintFromEnclosingBox(&fp), 0);
  addSquare(gen.g);
  gen->KVAddInstruction(INSTR_EXTRUDE, &kNoAxis, 3.0f);
  ASSERT_EQ(gen->KVGenerate(), 1);
  ASSERT_EQ(gen->KVUpdateVertexDependencies(), 1);
  ASSERT_EQ(gen->KVFootPrintFromEnclosingBox(&fp), 1);
  _D3DRMBOX* box = nullptr;
  ASSERT_EQ(fp.FPGetBox(&box), 1);
  expectNear(box->min, vec(0, 0, 0));
  expectNear(box->max, vec(2, 2, 3));
  _D3DVECTOR p;
  fp.FPSelectFirstEdge();
  fp.FPSelectNextEdgeNoWrap();
  fp.FPGetEdgeFromVector(&p);
  expectNear(p, vec(0, 0, 3));
  fp.FPTerminate();
}

TEST(GKVSeedExtruderGlobe, SeedIsAHalfCircleInTheYZPlane) {
  CKVGen gen;
  EXPECT_EQ(GKVSeedExtruderGlobe(&gen, 4, 2, 0.0f), 0);
  EXPECT_EQ(GKVSeedExtruderGlobe(&gen, 0, 2, 1.0f), 0);
  EXPECT_EQ(GKVSeedExtruderGlobe(&gen, 4, 0, 1.0f), 0);
  EXPECT_EQ(GKVSeedExtruderGlobe(nullptr, 4, 2, 1.0f), 0);
  ASSERT_EQ(GKVSeedExtruderGlobe(&gen, 4, 2, 3.0f), 1);
  int n = 0;
  ASSERT_EQ(gen.KVGetNumVertices(&n), 1);
  ASSERT_EQ(n, 3);
  _D3DVECTOR p;
  gen.KVGetSeedVertexByNumber(0, &p);
  expectNear(p, vec(0, -3, 0));
  gen.KVGetSeedVertexByNumber(1, &p);
  expectNear(p, vec(0, 0, 3));
  gen.KVGetSeedVertexByNumber(2, &p);
  expectNear(p, vec(0, 3, 0));
  int dir = -1;
  ASSERT_EQ(gen.KVGetNormalDirection(&dir), 1);
  EXPECT_EQ(dir, 0);
  int code = -1;
  _D3DVECTOR axis;
  float m = 0;
  ASSERT_EQ(gen.KVGetNumInstructs(&n), 1);
  EXPECT_EQ(n, 4);
  gen.KVGetFirstInstruction(&code, &axis, &m);
  EXPECT_EQ(code, INSTR_ROTATE_AXIS);
  expectNear(axis, vec(0, 1, 0), 0.0f);
  EXPECT_FLOAT_EQ(m, kPi / 2);
  gen.KVTerminate();

  for (int rings = 1; rings <= 40; ++rings) {
    CKVGen many;
    ASSERT_EQ(GKVSeedExtruderGlobe(&many, 3, rings, 1.0f), 1);
    many.KVGetNumVertices(&n);
    EXPECT_EQ(n, rings + 1) << rings;
    many.KVTerminate();
  }
}

TEST(GKVCalculateEndPlaneVertexMappings, FrontAndBackAreMirrored) {
  Gen gen;
  EXPECT_EQ(GKVCalculateEndPlaneVertexMappings(&gen.g, 0, 1, 8.0f), 0);  // no outline box yet
  addSeed(gen.g, {vec(0, 0, 0), vec(4, 0, 0), vec(4, 2, 0), vec(0, 2, 0)});
  gen->KVAddInstruction(INSTR_EXTRUDE, &kNoAxis, 5.0f);
  ASSERT_EQ(gen->KVGenerate(), 1);
  ASSERT_EQ(gen->KVUpdateVertexDependencies(), 1);

  // w = 4 > h = 2, so s = 8 / 4.
  ASSERT_EQ(GKVCalculateEndPlaneVertexMappings(&gen.g, 0, 1, 8.0f), 1);
  tagKTessVertex* t = nullptr;
  gen->KVSelectSeedVertexByNumber(1);
  gen->KVGetSelectedSeedVertexTessPointer(&t);
  EXPECT_DOUBLE_EQ(t->u, -1.0);
  EXPECT_DOUBLE_EQ(t->v, 0.0);
  EXPECT_FLOAT_EQ(t->x, 8.0f);
  gen->KVSelectSeedVertexByNumber(3);
  gen->KVGetSelectedSeedVertexTessPointer(&t);
  EXPECT_DOUBLE_EQ(t->u, 0.0);
  EXPECT_DOUBLE_EQ(t->v, 1.0);

  gen->KVSelectFirstGenPlane();
  gen->m_currentPlane = nullptr;
  ASSERT_EQ(GKVCalculateEndPlaneVertexMappings(&gen.g, 1, 3, 8.0f), 1);
  EXPECT_EQ(gen->m_currentPlane, gen->m_genPlanes);  // the last plane became current
  gen->KVSelectGenVertexByNumber(1);
  gen->KVGetSelectedGenVertexTessPointer(&t);
  EXPECT_DOUBLE_EQ(t->u, 0.0);
  EXPECT_DOUBLE_EQ(t->v, 0.0);
  EXPECT_FLOAT_EQ(t->z, 10.0f);  // the generated vertex, scaled
  gen->KVSelectGenVertexByNumber(3);
  gen->KVGetSelectedGenVertexTessPointer(&t);
  EXPECT_DOUBLE_EQ(t->u, -3.0);
  EXPECT_DOUBLE_EQ(t->v, 3.0);

  EXPECT_EQ(GKVCalculateEndPlaneVertexMappings(&gen.g, 2, 1, 8.0f), 0);
  // Tiling below 1 counts as 1.
  ASSERT_EQ(GKVCalculateEndPlaneVertexMappings(&gen.g, 0, -2, 8.0f), 1);
  gen->KVSelectSeedVertexByNumber(1);
  gen->KVGetSelectedSeedVertexTessPointer(&t);
  EXPECT_DOUBLE_EQ(t->u, -1.0);

  // With a scale that floats cannot hold (1/3), the edges still map to exactly 0.
  Gen off;
  addSeed(off.g, {vec(1, 1, 0), vec(4, 1, 0), vec(4, 3, 0), vec(1, 3, 0)});
  off->KVAddInstruction(INSTR_EXTRUDE, &kNoAxis, 1.0f);
  ASSERT_EQ(off->KVGenerate(), 1);
  ASSERT_EQ(off->KVUpdateVertexDependencies(), 1);
  ASSERT_EQ(GKVCalculateEndPlaneVertexMappings(&off.g, 0, 1, 1.0f), 1);
  off->KVSelectSeedVertexByNumber(0);
  off->KVGetSelectedSeedVertexTessPointer(&t);
  EXPECT_EQ(t->u, 0.0);
  EXPECT_EQ(t->v, 0.0);
  ASSERT_EQ(GKVCalculateEndPlaneVertexMappings(&off.g, 1, 1, 1.0f), 1);
  off->KVSelectGenVertexByNumber(1);
  off->KVGetSelectedGenVertexTessPointer(&t);
  EXPECT_EQ(t->u, 0.0);
  EXPECT_EQ(t->v, 0.0);
}
