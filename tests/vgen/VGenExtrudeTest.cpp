// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "Allocation.h"
#include "VGenTestSupport.h"

using namespace kutil::test;

TEST(CKVGenExtrude, BoundingRectangleKeepsItsFiniteStartValues) {
  Gen gen;
  float w = -1, h = -1;
  EXPECT_EQ((Ints{gen->KVUpdateSeedList2DBox(), gen->KVGetSeedPlaneScale(&w, &h)}), (Ints{0, 0}));
  Gen distant({vec(1000, 1500, 9), vec(2000, 1200, -4), vec(1500, 1000, 0)});
  EXPECT_EQ((Ints{distant->KVUpdateSeedList2DBox(), distant->KVGetSeedPlaneScale(&w, &h)}), (Ints{1, 1}));
  // Every vertex lies beyond 999, so the minima keep their starting value.
  const tagKExtrudePlane* seed = GenInternals::seedPlane(distant.g);
  expectNear({seed->corner0, seed->corner1, seed->corner2, seed->corner3},
             {vec(999, 1500, 0), vec(2000, 1500, 0), vec(999, 999, 0), vec(2000, 999, 0)}, 0.0f);
  EXPECT_EQ(w, 1001.0f);
  EXPECT_EQ(h, 501.0f);
}

TEST(CKVGenExtrude, EachInstructionCarriesThePlaneInThePreviousPlanesFrame) {
  const float q = kPi / 2;
  const struct {
    int code;
    float magnitude;
    Points plane;  // the images of the square's vertices, in seed order
    _D3DVECTOR normal;
  } cases[] = {
      {INSTR_ROTATE_AXIS, q, {vec(0, 0, 0), vec(0, 0, -2), vec(0, 2, -2), vec(0, 2, 0)}, vec(1, 0, 0)},
      {INSTR_HINGE_RIGHT, q, {vec(2, 0, 2), vec(2, 0, 0), vec(2, 2, 0), vec(2, 2, 2)}, vec(1, 0, 0)},
      {INSTR_HINGE_LEFT, q, {vec(0, 0, 0), vec(0, 0, 2), vec(0, 2, 2), vec(0, 2, 0)}, vec(-1, 0, 0)},
      {INSTR_EXTRUDE, 5, {vec(0, 0, 5), vec(2, 0, 5), vec(2, 2, 5), vec(0, 2, 5)}, vec(0, 0, 1)},
      {INSTR_HINGE_TOP, q, {vec(0, 2, 2), vec(2, 2, 2), vec(2, 2, 0), vec(0, 2, 0)}, vec(0, 1, 0)},
      {INSTR_HINGE_BOTTOM, q, {vec(0, 0, 0), vec(2, 0, 0), vec(2, 0, 2), vec(0, 0, 2)}, vec(0, -1, 0)},
      {9, q, square(), vec(0, 0, 1)},  // unknown codes copy the plane
  };
  const _D3DVECTOR up = vec(0, 1, 0);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.code);
    Gen gen(square());
    ASSERT_EQ(gen->KVTesselateSeedPlane(), 1);
    gen->KVAddInstruction(c.code, &up, c.magnitude);
    gen->KVAddInstruction(INSTR_EXTRUDE, &up, 1.0f);  // along the new plane's normal
    ASSERT_EQ(gen->KVGenerate(), 1);
    expectNear(planeOf(gen.g, 0), c.plane);
    expectNear(GenInternals::genPlanes(gen.g)->normal, c.normal);
    Points next = c.plane;
    for (_D3DVECTOR& p : next) p = vec(p.x + c.normal.x, p.y + c.normal.y, p.z + c.normal.z);
    expectNear(planeOf(gen.g, 1), next);
    EXPECT_TRUE(planeOf(gen.g, 2).empty());  // one plane per instruction
    // The corners keep their seed meaning: on the square they are vertices 2, 3, 0 and 1.
    for (const tagKExtrudePlane* p = GenInternals::genPlanes(gen.g); p != nullptr; p = p->next) {
      const tagKExtrudeVertex* v = p->vertices;
      expectNear({p->corner2, p->corner3, p->corner1, p->corner0},
                 {v->point.position, v->next->point.position, v->next->next->point.position,
                  v->next->next->next->point.position});
    }
  }
}

TEST(CKVGenExtrude, GenerateNeedsASeedKeepsPlanesWithoutInstructionsAndNeverHalfBuilds) {
  Gen none, gen(square(), {5});
  EXPECT_EQ((Ints{none->KVGenerate(), gen->KVGenerate()}), (Ints{0, 1}));
  expectNear(GenInternals::seedPlane(gen.g)->normal, vec(0, 0, 1), 0.0f);  // untessellated: +z
  expectNear(planeOf(gen.g, 0), {vec(0, 0, 5), vec(2, 0, 5), vec(2, 2, 5), vec(0, 2, 5)}, 0.0f);
  const tagKExtrudePlane* before = GenInternals::genPlanes(gen.g);
  gen->KVDeleteAllInstructions();
  EXPECT_EQ(gen->KVGenerate(), 1);
  EXPECT_EQ(GenInternals::genPlanes(gen.g), before);
  gen->KVAddInstruction(INSTR_EXTRUDE, &kNoAxis, 1.0f);
  int status = -1;
  {
    AllocationFailure noMemory;
    status = gen->KVGenerate();
  }
  EXPECT_EQ(status, 0);
  EXPECT_EQ(GenInternals::genPlanes(gen.g), nullptr);
  ASSERT_EQ(gen->KVGenerate(), 1);
  gen->KVDeleteSeedList();  // keeps the planes until the next generation
  EXPECT_EQ(planeOf(gen.g, 0).size(), 4u);
  EXPECT_EQ(gen->KVGenerate(), 0);
}

TEST(CKVGenExtrude, WholeSolidTransformsMoveVerticesAndCornersButNotNormals) {
  const _D3DVECTOR t = vec(1, 1, 1);
  const struct {
    int (CKVGen::*turn)(float);  // or a translation by (1, 1, 1)
    float by;
    Points after;  // seed vertex 0, seed corner 0, plane vertex 0, plane corner 0
  } cases[] = {
      {&CKVGen::KVInvertResize, 2, {vec(-2, 4, 6), vec(-2, 12, 0), vec(-2, 4, 8), vec(-2, 12, 2)}},
      {nullptr, 0, {vec(2, 3, 4), vec(2, 7, 1), vec(2, 3, 5), vec(2, 7, 2)}},
      {&CKVGen::KVRotateHorizontal, kPi / 2, {vec(3, 2, -1), vec(0, 6, -1), vec(4, 2, -1), vec(1, 6, -1)}},
      {&CKVGen::KVRoll, kPi / 2, {vec(-2, 1, 3), vec(-6, 1, 0), vec(-2, 1, 4), vec(-6, 1, 1)}},
      {&CKVGen::KVElevate, kPi / 2, {vec(1, 3, -2), vec(1, 0, -6), vec(1, 4, -2), vec(1, 1, -6)}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.after[0].x);
    Gen empty, gen({vec(1, 2, 3), vec(5, 2, 3), vec(5, 6, 3)}, {1});
    ASSERT_EQ(gen->KVGenerate(), 1);
    auto apply = [&](CKVGen& g) { return c.turn != nullptr ? (g.*c.turn)(c.by) : g.KVTranslate(&t); };
    EXPECT_EQ((Ints{apply(empty.g), apply(gen.g)}), (Ints{0, 1}));
    const tagKExtrudePlane *seed = GenInternals::seedPlane(gen.g), *plane = GenInternals::genPlanes(gen.g);
    expectNear(
        {seed->vertices->point.position, seed->corner0, plane->vertices->point.position, plane->corner0},
        c.after);
    expectNear(plane->normal, vec(0, 0, 1), 0.0f);
  }
}

TEST(CKVGenExtrude, FootPrintsFromSeedFaceAndEnclosingBox) {
  Gen gen;
  CKFootPrint fp;
  fp.FPInitialise();
  EXPECT_EQ((Ints{gen->KVFootPrintFromSeed(&fp, 1), gen->KVFootPrintFromEnclosingBox(&fp),
                  gen->KVFootPrintFromSelectedFace(&fp)}),
            (Ints{0, 0, 0}));
  const Points seed = {vec(3, 4, 7), vec(6, 4, 7), vec(6, 8, 7)};
  for (const _D3DVECTOR& p : seed) gen->KVAddSeedVertex(&p);
  ASSERT_EQ(gen->KVFootPrintFromSeed(&fp, 1), 1);
  expectNear(outlineOf(fp), {vec(3, 0, 4), vec(6, 0, 4), vec(6, 0, 8)}, 0.0f);  // laid on the floor
  ASSERT_EQ(gen->KVFootPrintFromSeed(&fp, 0), 1);
  expectNear(outlineOf(fp), seed, 0.0f);

  gen->KVAddInstruction(INSTR_EXTRUDE, &kNoAxis, 3.0f);
  ASSERT_EQ(
      (Ints{gen->KVGenerate(), gen->KVUpdateVertexDependencies(), gen->KVFootPrintFromEnclosingBox(&fp)}),
      (Ints{1, 1, 1}));
  expectNear(outlineOf(fp), {vec(3, 4, 7), vec(3, 4, 10), vec(6, 8, 10), vec(6, 8, 7)}, 0.0f);
  EXPECT_EQ((Ints{gen->KVSelectGenVertexByNumber(3), gen->KVFootPrintFromSelectedFace(&fp)}), (Ints{0, 0}));
  ASSERT_EQ((Ints{gen->KVSelectGenVertexByNumber(1), gen->KVFootPrintFromSelectedFace(&fp)}), (Ints{1, 1}));
  expectNear(outlineOf(fp), faceOf(gen.g), 0.0f);
  fp.FPTerminate();
}

TEST(GKVSeedExtruderGlobe, SeedIsAHalfCircleInTheYZPlaneFacingAlongX) {
  CKVGen gen;
  EXPECT_EQ((Ints{GKVSeedExtruderGlobe(&gen, 4, 2, 0.0f), GKVSeedExtruderGlobe(&gen, 0, 2, 1.0f),
                  GKVSeedExtruderGlobe(&gen, 4, 0, 1.0f), GKVSeedExtruderGlobe(nullptr, 4, 2, 1.0f),
                  GKVSeedExtruderGlobe(&gen, 4, 2, 3.0f)}),
            (Ints{0, 0, 0, 0, 1}));
  expectNear(planeOf(gen), {vec(0, -3, 0), vec(0, 0, 3), vec(0, 3, 0)});
  int direction = -1, n = 0, code = -1;
  float m = 0;
  _D3DVECTOR axis;
  EXPECT_EQ((Ints{gen.KVGetNormalDirection(&direction), direction, gen.KVGetNumInstructs(&n), n,
                  gen.KVGetFirstInstruction(&code, &axis, &m), code}),
            (Ints{1, 0, 1, 4, 1, INSTR_ROTATE_AXIS}));
  expectNear(axis, vec(0, 1, 0), 0.0f);
  EXPECT_FLOAT_EQ(m, kPi / 2);
  // The seed's raw normal has z >= 0 and the direction is 0: no reversal.
  ASSERT_EQ(gen.KVTesselateSeedPlane(), 1);
  EXPECT_EQ((Ints{GenInternals::seedOrientation(gen), gen.KVIsNormalReversalActive(), gen.KVGenerate()}),
            (Ints{0, 0, 1}));
  expectNear(GenInternals::seedPlane(gen)->normal, vec(1, 0, 0));
  gen.KVTerminate();
}

TEST(GKVCalculateEndPlaneVertexMappings, ExactOnRectanglesAndMirroredBetweenEnds) {
  const struct {
    float x1, y1;  // the rectangle from (1, 1)
    int end, tiling;
    float size, scale;
    double u[4], v[4];
  } rows[] = {
      {5, 3, 0, 1, 8, 2, {0, -1, -1, 0}, {0, 0, 1, 1}},   // wide: the scale comes from the width
      {5, 3, 0, -2, 8, 2, {0, -1, -1, 0}, {0, 0, 1, 1}},  // a tiling below 1 counts as 1
      {5, 3, 1, 3, 8, 2, {-3, 0, 0, -3}, {0, 0, 3, 3}},
      {3, 5, 0, 1, 8, 2, {0, -1, -1, 0}, {0, 0, 1, 1}},  // tall: from the height
      {3, 5, 1, 1, 4, 1, {-1, 0, 0, -1}, {0, 0, 1, 1}},
  };
  for (const auto& r : rows) {
    SCOPED_TRACE(testing::Message() << r.x1 << "," << r.y1 << " end " << r.end << " tiling " << r.tiling);
    const Points seed = {vec(1, 1, 0), vec(r.x1, 1, 0), vec(r.x1, r.y1, 0), vec(1, r.y1, 0)};
    Gen gen(seed, {5});
    ASSERT_EQ(gen->KVGenerate(), 1);
    EXPECT_EQ(
        (Ints{GKVCalculateEndPlaneVertexMappings(&gen.g, r.end, r.tiling, r.size),  // no outline box yet
              gen->KVUpdateVertexDependencies()}),
        (Ints{0, 1}));
    ASSERT_EQ(GKVCalculateEndPlaneVertexMappings(&gen.g, r.end, r.tiling, r.size), 1);
    const tagKExtrudePlane* plane =
        r.end == 0 ? GenInternals::seedPlane(gen.g) : GenInternals::genPlanes(gen.g);
    int i = 0;
    for (const tagKExtrudeVertex* v = plane->vertices; v != nullptr; v = v->next, ++i) {
      SCOPED_TRACE(i);
      const tagKTessVertex& t = v->point.tess;
      EXPECT_DOUBLE_EQ(t.u, r.u[i]);
      EXPECT_DOUBLE_EQ(t.v, r.v[i]);
      expectNear(vec(t.x, t.y, t.z), vec(seed[i].x * r.scale, seed[i].y * r.scale, 5.0f * r.end * r.scale));
    }
  }
  Gen gen(square());
  ASSERT_EQ(gen->KVUpdateVertexDependencies(), 1);
  EXPECT_EQ((Ints{GKVCalculateEndPlaneVertexMappings(&gen.g, 1, 1, 1),
                  GKVCalculateEndPlaneVertexMappings(&gen.g, 2, 1, 1),
                  GKVCalculateEndPlaneVertexMappings(&gen.g, 0, 1, 1)}),
            (Ints{0, 0, 1}));  // the back needs a generated plane
}
