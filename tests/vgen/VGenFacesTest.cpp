// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "KVGen.h"
#include "VGenTestSupport.h"

using namespace kutil::test;

namespace {
// A square extruded once by 3 along z.
void extrudedSquare(CKVGen& g, int edgeDetect = EDGE_DETECT_BOX) {
  g.KVSetEdgeDetectType(edgeDetect);
  addSquare(g);
  g.KVAddInstruction(INSTR_EXTRUDE, &kNoAxis, 3.0f);
  ASSERT_EQ(g.KVGenerate(), 1);
  ASSERT_EQ(g.KVSelectFirstGenPlane(), 1);
}
}  // namespace

TEST(CKVGenFaces, CornerOrdersFollowReversal) {
  struct Row {
    bool front;
    int vertex, direction, orientation;  // together these decide the normal reversal
    _D3DVECTOR c1, c2, c3, c4;
  };
  const Row rows[] = {
      {true, 1, 0, 0, vec(2, 0, 0), vec(2, 2, 0), vec(2, 2, 3), vec(2, 0, 3)},
      {true, 1, 0, 1, vec(2, 2, 0), vec(2, 0, 0), vec(2, 0, 3), vec(2, 2, 3)},
      {false, 3, 0, 0, vec(0, 2, 0), vec(0, 0, 0), vec(0, 0, 3), vec(0, 2, 3)},
      {false, 3, -1, 0, vec(0, 0, 0), vec(0, 2, 0), vec(0, 2, 3), vec(0, 0, 3)},
  };
  Gen gen;
  extrudedSquare(gen.g);
  _D3DVECTOR c1, c2, c3, c4;
  EXPECT_EQ(gen->KVGetFrontFace(&c1, &c2, &c3, &c4), 0);  // nothing selected
  ASSERT_EQ(gen->KVSelectGenVertexByNumber(3), 1);
  EXPECT_EQ(gen->KVGetFrontFace(&c1, &c2, &c3, &c4), 0);  // the last vertex has only a back face
  for (const Row& r : rows) {
    SCOPED_TRACE(r.vertex * 10 + r.orientation);
    gen->KVSelectGenVertexByNumber(r.vertex);
    gen->KVSetNormalDirection(r.direction);
    GenInternals::seedOrientation(*gen) = r.orientation;
    ASSERT_EQ(r.front ? gen->KVGetFrontFace(&c1, &c2, &c3, &c4) : gen->KVGetBackFace(&c1, &c2, &c3, &c4), 1);
    expectNear(c1, r.c1);
    expectNear(c2, r.c2);
    expectNear(c3, r.c3);
    expectNear(c4, r.c4);
  }
  gen->KVSelectGenVertexByNumber(1);
  EXPECT_EQ(gen->KVIsFaceUsable(), 1);

  Gen coincident;
  addSeed(coincident.g, {vec(1, 1, 1), vec(1, 1, 1), vec(5, 1, 1)});
  coincident->KVAddInstruction(9, &kNoAxis, 0.0f);
  ASSERT_EQ(coincident->KVGenerate(), 1);
  ASSERT_EQ(coincident->KVSelectGenVertexByNumber(0), 1);
  EXPECT_EQ(coincident->KVIsFaceUsable(), 0);
}

TEST(CKVGenFaces, BoxesUnderBoxAndFaceEdgeDetect) {
  Gen gen;
  _D3DRMBOX* box = nullptr;
  EXPECT_EQ(gen->KVGetSeedFaceBox(&box), 0);
  extrudedSquare(gen.g);
  ASSERT_EQ(gen->KVUpdateVertexDependencies(), 1);
  ASSERT_EQ(gen->KVSelectFirstGenBox(&box), 1);
  expectNear(box->min, vec(0, 0, 0));  // the slab from the seed to the plane
  expectNear(box->max, vec(2, 2, 3));
  EXPECT_EQ(gen->KVSelectNextGenBox(&box), 0);
  EXPECT_EQ(gen->KVSelectFirstFaceBox(&box), 0);
  ASSERT_EQ(gen->KVGetSeedFaceBox(&box), 1);
  expectNear(box->max, vec(2, 2, 0));
  GenInternals::currentPlane(*gen) = nullptr;
  EXPECT_EQ(gen->KVGetBoxForCurrentPlane(&box), 0);
  ASSERT_EQ(gen->KVGetGenFaceBox(&box), 1);
  EXPECT_EQ(GenInternals::currentPlane(*gen), GenInternals::genPlanes(*gen));

  Gen faces;
  extrudedSquare(faces.g, EDGE_DETECT_FACE);
  ASSERT_EQ(faces->KVUpdateVertexDependencies(), 1);
  ASSERT_EQ(faces->KVSelectFirstFaceBox(&box), 1);
  expectNear(box->max, vec(2, 0, 3));
  int count = 1;
  while (faces->KVSelectNextFaceBox(&box) == 1) ++count;
  EXPECT_EQ(count, 4);
  expectNear(box->min, vec(0, 0, 0));  // the closing face, x = 0
  expectNear(box->max, vec(0, 2, 3));
  // A vertex made without a face outline fails the rebuild.
  faces->KVSetEdgeDetectType(EDGE_DETECT_BOX);
  ASSERT_EQ(faces->KVGenerate(), 1);
  faces->KVSetEdgeDetectType(EDGE_DETECT_FACE);
  EXPECT_EQ(faces->KVUpdateVertexDependencies(), 0);
}

TEST(CKVGenFaces, HitMarksAndSelectionByNumber) {
  Gen gen;
  EXPECT_EQ(gen->KVSetSeedFaceHit(), 0);
  EXPECT_EQ(gen->KVSetSelectedHitFace(), 0);
  addSeed(gen.g, {vec(0, 0, 0), vec(1, 0, 0), vec(2, 1, 0), vec(2, 2, 0), vec(1, 3, 0), vec(0, 2, 0)});
  gen->KVAddInstruction(INSTR_EXTRUDE, &kNoAxis, 1.0f);
  gen->KVAddInstruction(INSTR_EXTRUDE, &kNoAxis, 1.0f);
  ASSERT_EQ(gen->KVGenerate(), 1);
  ASSERT_EQ(gen->KVSetSeedFaceHit(), 1);
  gen->KVSelectFirstGenPlane();
  ASSERT_EQ(gen->KVSetGenFaceHit(), 1);
  gen->KVSelectGenVertexByNumber(2);
  ASSERT_EQ(gen->KVSetSelectedHitFace(), 1);
  gen->KVSelectGenVertexByNumber(5);
  ASSERT_EQ(gen->KVSetSelectedHitFace(), 1);

  ASSERT_EQ(gen->KVSelectHitFaceByNumber(2), 1);
  EXPECT_EQ(GenInternals::currentPlane(*gen), GenInternals::genPlanes(*gen));
  _D3DVECTOR p;
  gen->KVGetSelectedGenVertex(&p);
  expectNear(p, vec(0, 2, 1));  // vertex 5
  EXPECT_EQ(gen->KVSelectHitFaceByNumber(3), 0);
  EXPECT_EQ(GenInternals::currentPlane(*gen),
            GenInternals::genPlanes(*gen)->next);  // the walk ended on the last plane
  EXPECT_EQ(gen->KVSelectHitFaceByNumber(0), 0);
  ASSERT_EQ(gen->KVSelectHitFaceByNumber(1), 1);
  EXPECT_EQ(gen->KVUnSetSelectedHitFace(), 1);
  EXPECT_EQ(gen->KVSelectHitFaceByNumber(2), 0);

  EXPECT_EQ(gen->KVClearHitFaces(), 1);
  EXPECT_EQ(gen->KVIsSeedFaceHit(), 0);
  gen->KVSelectFirstGenPlane();
  EXPECT_EQ(gen->KVIsGenFaceHit(), 0);
  EXPECT_EQ(gen->KVSelectHitFaceByNumber(1), 0);
}
