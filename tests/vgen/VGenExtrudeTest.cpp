// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <vector>

#include "KFootPrint.h"
#include "KVGen.h"
#include "VGenTestSupport.h"

using namespace kutil::test;

namespace {
std::vector<_D3DVECTOR> seedVertices(CKVGen& g) {
  std::vector<_D3DVECTOR> out;
  _D3DVECTOR p;
  for (int i = 0; g.KVSelectSeedVertexByNumber(i) == 1 && g.KVGetSelectedSeedVertex(&p) == 1; ++i)
    out.push_back(p);
  return out;
}

// The texture record of seed (plane 0) or last-plane vertex n.
const tagKTessVertex* tessOf(CKVGen& g, int plane, int n) {
  tagKTessVertex* t = nullptr;
  if (plane == 0 && g.KVSelectSeedVertexByNumber(n)) g.KVGetSelectedSeedVertexTessPointer(&t);
  if (plane != 0 && g.KVSelectGenVertexByNumber(n)) g.KVGetSelectedGenVertexTessPointer(&t);
  return t;
}
}  // namespace

TEST(CKVGenExtrude, BoundingRectangleKeepsItsFiniteStartValues) {
  Gen gen;
  EXPECT_EQ(gen->KVUpdateSeedList2DBox(), 0);
  addSeed(gen.g, {vec(1000, 1500, 9), vec(2000, 1200, -4)});
  ASSERT_EQ(gen->KVUpdateSeedList2DBox(), 1);
  // Every vertex lies beyond 999, so the minima keep their starting value.
  expectNear(GenInternals::seedPlane(*gen)->corner0, vec(999, 1500, 0));
  expectNear(GenInternals::seedPlane(*gen)->corner3, vec(2000, 999, 0));
  float w = 0, h = 0;
  ASSERT_EQ(gen->KVGetSeedPlaneScale(&w, &h), 1);
  EXPECT_FLOAT_EQ(w, 1001.0f);
  EXPECT_FLOAT_EQ(h, 501.0f);
}

TEST(CKVGenExtrude, GenerateStepsPlanesAndKeepsThemWithoutInstructions) {
  Gen gen;
  EXPECT_EQ(gen->KVGenerate(), 0);  // no seed
  addSquare(gen.g);
  gen->KVAddInstruction(INSTR_EXTRUDE, &kNoAxis, 5.0f);
  gen->KVAddInstruction(9, &kNoAxis, 3.0f);  // unknown codes copy the previous plane
  gen->KVAddInstruction(INSTR_EXTRUDE, &kNoAxis, 1.0f);
  ASSERT_EQ(gen->KVGenerate(), 1);
  expectNear(GenInternals::seedPlane(*gen)->normal, vec(0, 0, 1));  // untessellated: along +z
  EXPECT_EQ(GenInternals::currentPlane(*gen),
            GenInternals::genPlanes(*gen)->next->next);  // the last plane is current
  const float depths[] = {5, 5, 6};
  ASSERT_EQ(gen->KVSelectFirstGenPlane(), 1);
  for (float z : depths) {
    std::vector<_D3DVECTOR> v = planeVertices(gen.g);
    ASSERT_EQ(v.size(), 4u);
    expectNear(v[2], vec(2, 2, z));
    gen->KVSelectNextGenPlane();
  }
  EXPECT_EQ(gen->KVSelectNextGenPlane(), 0);
  tagKExtrudePlane* before = GenInternals::genPlanes(*gen);
  gen->KVDeleteAllInstructions();
  EXPECT_EQ(gen->KVGenerate(), 1);
  EXPECT_EQ(GenInternals::genPlanes(*gen), before);
}

TEST(CKVGenExtrude, HingesTurnAboutTheirOwnEdges) {
  struct Case {
    int code;
    _D3DVECTOR v0, v1, v2, v3;  // images of the square's corners
  };
  const Case cases[] = {
      {INSTR_HINGE_RIGHT, vec(2, 0, 2), vec(2, 0, 0), vec(2, 2, 0), vec(2, 2, 2)},
      {INSTR_HINGE_LEFT, vec(0, 0, 0), vec(0, 0, 2), vec(0, 2, 2), vec(0, 2, 0)},
      {INSTR_HINGE_TOP, vec(0, 2, 2), vec(2, 2, 2), vec(2, 2, 0), vec(0, 2, 0)},
      {INSTR_HINGE_BOTTOM, vec(0, 0, 0), vec(2, 0, 0), vec(2, 0, 2), vec(0, 0, 2)},
      {INSTR_ROTATE_AXIS, vec(0, 0, 0), vec(0, 0, -2), vec(0, 2, -2), vec(0, 2, 0)},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.code);
    Gen gen;
    addSquare(gen.g);
    const _D3DVECTOR up = vec(0, 1, 0);
    gen->KVAddInstruction(c.code, &up, kPi / 2);
    ASSERT_EQ(gen->KVGenerate(), 1);
    gen->KVSelectFirstGenPlane();
    std::vector<_D3DVECTOR> v = planeVertices(gen.g);
    ASSERT_EQ(v.size(), 4u);
    expectNear(v[0], c.v0);
    expectNear(v[1], c.v1);
    expectNear(v[2], c.v2);
    expectNear(v[3], c.v3);
  }
}

TEST(CKVGenExtrude, WholeSolidTransformsLeaveNormalsAlone) {
  Gen gen;
  EXPECT_EQ(gen->KVInvertResize(2.0f), 0);  // no seed vertex
  addSeed(gen.g, {vec(1, 2, 3), vec(5, 2, 3), vec(5, 6, 3)});
  gen->KVAddInstruction(INSTR_EXTRUDE, &kNoAxis, 1.0f);
  ASSERT_EQ(gen->KVGenerate(), 1);
  const _D3DVECTOR normalBefore = GenInternals::genPlanes(*gen)->normal;
  ASSERT_EQ(gen->KVInvertResize(2.0f), 1);
  _D3DVECTOR p;
  gen->KVSelectFirstGenPlane();
  gen->KVGetGenVertexByNumber(0, &p);
  expectNear(p, vec(-2, 4, 8));
  expectNear(GenInternals::genPlanes(*gen)->normal, normalBefore, 0.0f);
  const _D3DVECTOR t = vec(1, 1, 1);
  ASSERT_EQ(gen->KVTranslate(&t), 1);
  ASSERT_EQ(gen->KVRotateHorizontal(kPi), 1);
  gen->KVGetSeedVertexByNumber(0, &p);
  expectNear(p, vec(1, 5, -7));
  ASSERT_EQ(gen->KVRoll(kPi), 1);
  ASSERT_EQ(gen->KVElevate(kPi), 1);
  gen->KVGetSeedVertexByNumber(0, &p);
  expectNear(p, vec(-1, 5, 7));
}

TEST(CKVGenExtrude, FootPrintsFromSeedAndEnclosingBox) {
  Gen gen;
  CKFootPrint fp;
  fp.FPInitialise();
  EXPECT_EQ(gen->KVFootPrintFromSeed(&fp, 1), 0);
  EXPECT_EQ(gen->KVFootPrintFromEnclosingBox(&fp), 0);
  addSeed(gen.g, {vec(3, 4, 7), vec(6, 4, 7), vec(6, 8, 7)});
  ASSERT_EQ(gen->KVFootPrintFromSeed(&fp, 1), 1);
  _D3DVECTOR p;
  fp.FPSelectFirstEdge();
  fp.FPGetEdgeFromVector(&p);
  expectNear(p, vec(3, 0, 4), 0.0f);  // laid on the floor

  gen->KVAddInstruction(INSTR_EXTRUDE, &kNoAxis, 3.0f);
  ASSERT_EQ(gen->KVGenerate(), 1);
  ASSERT_EQ(gen->KVUpdateVertexDependencies(), 1);
  ASSERT_EQ(gen->KVFootPrintFromEnclosingBox(&fp), 1);
  _D3DRMBOX* box = nullptr;
  ASSERT_EQ(fp.FPGetBox(&box), 1);
  expectNear(box->min, vec(3, 4, 7));
  expectNear(box->max, vec(6, 8, 10));
  fp.FPTerminate();
}

TEST(GKVSeedExtruderGlobe, SeedIsAHalfCircleInTheYZPlane) {
  CKVGen gen;
  EXPECT_EQ(GKVSeedExtruderGlobe(&gen, 4, 2, 0.0f), 0);
  EXPECT_EQ(GKVSeedExtruderGlobe(&gen, 0, 2, 1.0f), 0);
  EXPECT_EQ(GKVSeedExtruderGlobe(&gen, 4, 0, 1.0f), 0);
  EXPECT_EQ(GKVSeedExtruderGlobe(nullptr, 4, 2, 1.0f), 0);
  ASSERT_EQ(GKVSeedExtruderGlobe(&gen, 4, 2, 3.0f), 1);
  const std::vector<_D3DVECTOR> seed = seedVertices(gen);
  ASSERT_EQ(seed.size(), 3u);
  expectNear(seed[0], vec(0, -3, 0));
  expectNear(seed[1], vec(0, 0, 3));
  expectNear(seed[2], vec(0, 3, 0));
  int n = 0, code = -1;
  float m = 0;
  gen.KVGetNumInstructs(&n);
  EXPECT_EQ(n, 4);
  gen.KVGetFirstInstruction(&code, nullptr, &m);
  EXPECT_EQ(code, INSTR_ROTATE_AXIS);
  EXPECT_FLOAT_EQ(m, kPi / 2);
  gen.KVTerminate();
  ASSERT_EQ(GKVSeedExtruderGlobe(&gen, 3, 40, 1.0f), 1);
  EXPECT_EQ(seedVertices(gen).size(), 41u);  // the rounding margin keeps the last vertex
  gen.KVTerminate();
}

TEST(GKVCalculateEndPlaneVertexMappings, FrontAndBackAreMirrored) {
  Gen gen;
  EXPECT_EQ(GKVCalculateEndPlaneVertexMappings(&gen.g, 0, 1, 8.0f), 0);  // no outline box yet
  addSeed(gen.g, {vec(0, 0, 0), vec(4, 0, 0), vec(4, 2, 0), vec(0, 2, 0)});
  gen->KVAddInstruction(INSTR_EXTRUDE, &kNoAxis, 5.0f);
  ASSERT_EQ(gen->KVGenerate(), 1);
  ASSERT_EQ(gen->KVUpdateVertexDependencies(), 1);
  EXPECT_EQ(GKVCalculateEndPlaneVertexMappings(&gen.g, 2, 1, 8.0f), 0);
  struct Row {
    int plane, tiling, vertex;
    double u, v;
  };
  // w = 4 > h = 2, so s = 8 / 4; tiling below 1 counts as 1.
  const Row rows[] = {{0, 1, 1, -1.0, 0.0},
                      {0, 1, 3, 0.0, 1.0},
                      {0, -2, 1, -1.0, 0.0},
                      {1, 3, 1, 0.0, 0.0},
                      {1, 3, 3, -3.0, 3.0}};
  for (const Row& r : rows) {
    SCOPED_TRACE(r.plane * 100 + r.tiling * 10 + r.vertex);
    GenInternals::currentPlane(*gen) = nullptr;
    ASSERT_EQ(GKVCalculateEndPlaneVertexMappings(&gen.g, r.plane, r.tiling, 8.0f), 1);
    const tagKTessVertex* t = tessOf(gen.g, r.plane, r.vertex);
    ASSERT_NE(t, nullptr);
    EXPECT_DOUBLE_EQ(t->u, r.u);
    EXPECT_DOUBLE_EQ(t->v, r.v);
    EXPECT_FLOAT_EQ(r.plane ? t->z : t->x, r.plane ? 10.0f : (r.vertex == 1 ? 8.0f : 0.0f));  // scaled
  }
  EXPECT_EQ(GenInternals::currentPlane(*gen),
            GenInternals::genPlanes(*gen));  // the last plane became current

  // With a scale that floats cannot hold (1/3), the edges still map to exactly 0.
  Gen off;
  addSeed(off.g, {vec(1, 1, 0), vec(4, 1, 0), vec(4, 3, 0), vec(1, 3, 0)});
  off->KVAddInstruction(INSTR_EXTRUDE, &kNoAxis, 1.0f);
  ASSERT_EQ(off->KVGenerate(), 1);
  ASSERT_EQ(off->KVUpdateVertexDependencies(), 1);
  for (int plane = 0; plane < 2; ++plane) {
    ASSERT_EQ(GKVCalculateEndPlaneVertexMappings(&off.g, plane, 1, 1.0f), 1);
    const tagKTessVertex* t = tessOf(off.g, plane, plane);
    ASSERT_NE(t, nullptr);
    EXPECT_EQ(t->u, 0.0);
    EXPECT_EQ(t->v, 0.0);
  }
}
