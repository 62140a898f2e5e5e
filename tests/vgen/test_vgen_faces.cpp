// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "KVGen.h"
#include "VGenTestUtil.h"

using kutil::test::addSeed;
using kutil::test::addSquare;
using kutil::test::expectNear;
using kutil::test::Gen;
using kutil::test::vec;

namespace {
const _D3DVECTOR kNoAxis = {0.0f, 0.0f, 0.0f};

// A square extruded once by 3 along z.
void extrudedSquare(CKVGen& g, int edgeDetect = EDGE_DETECT_BOX) {
  g.KVSetEdgeDetectType(edgeDetect);
  addSquare(g);
  g.KVAddInstruction(INSTR_EXTRUDE, &kNoAxis, 3.0f);
  ASSERT_EQ(g.KVGenerate(), 1);
  ASSERT_EQ(g.KVSelectFirstGenPlane(), 1);
}
}  // namespace

TEST(CKVGenFaces, LastVertexHasOnlyABackFace) {
  Gen gen;
  extrudedSquare(gen.g);
  _D3DVECTOR c1, c2, c3, c4;
  EXPECT_EQ(gen->KVGetFrontFace(&c1, &c2, &c3, &c4), 0);  // nothing selected
  ASSERT_EQ(gen->KVSelectGenVertexByNumber(3), 1);
  EXPECT_EQ(gen->KVGetFrontFace(&c1, &c2, &c3, &c4), 0);
  gen->m_normalDirection = 0;  // no reversal for orientation 0
  gen->m_seedOrientation = 0;
  ASSERT_EQ(gen->KVGetBackFace(&c1, &c2, &c3, &c4), 1);
  expectNear(c1, vec(0, 2, 0));  // previous 3
  expectNear(c2, vec(0, 0, 0));  // previous 0
  expectNear(c3, vec(0, 0, 3));  // current 0
  expectNear(c4, vec(0, 2, 3));  // current 3
  gen->m_normalDirection = -1;   // reversal
  ASSERT_EQ(gen->KVGetBackFace(&c1, &c2, &c3, &c4), 1);
  expectNear(c1, vec(0, 0, 0));
  expectNear(c2, vec(0, 2, 0));
  expectNear(c3, vec(0, 2, 3));
  expectNear(c4, vec(0, 0, 3));
}

TEST(CKVGenFaces, FrontFaceCornerOrderFollowsReversal) {
  Gen gen;
  extrudedSquare(gen.g);
  ASSERT_EQ(gen->KVSelectGenVertexByNumber(1), 1);
  _D3DVECTOR c1, c2, c3, c4;
  gen->m_normalDirection = 0;
  gen->m_seedOrientation = 0;
  ASSERT_EQ(gen->KVGetFrontFace(&c1, &c2, &c3, &c4), 1);
  expectNear(c1, vec(2, 0, 0));
  expectNear(c2, vec(2, 2, 0));
  expectNear(c3, vec(2, 2, 3));
  expectNear(c4, vec(2, 0, 3));
  gen->m_seedOrientation = 1;
  ASSERT_EQ(gen->KVGetFrontFace(&c1, &c2, &c3, &c4), 1);
  expectNear(c1, vec(2, 2, 0));
  expectNear(c2, vec(2, 0, 0));
  expectNear(c3, vec(2, 0, 3));
  expectNear(c4, vec(2, 2, 3));
  EXPECT_EQ(gen->KVIsFaceUsable(), 1);
}

TEST(CKVGenFaces, FaceOfCoincidentCornersIsNotUsable) {
  Gen gen;
  addSeed(gen.g, {vec(1, 1, 1), vec(1, 1, 1), vec(5, 1, 1)});
  gen->KVAddInstruction(9, &kNoAxis, 0.0f);
  ASSERT_EQ(gen->KVGenerate(), 1);
  ASSERT_EQ(gen->KVSelectGenVertexByNumber(0), 1);
  EXPECT_EQ(gen->KVIsFaceUsable(), 0);
  gen->m_selectedGenVertex = nullptr;
  EXPECT_EQ(gen->KVIsFaceUsable(), 0);
}

TEST(CKVGenFaces, BoxesUnderBoxEdgeDetect) {
  Gen gen;
  _D3DRMBOX* box = nullptr;
  EXPECT_EQ(gen->KVGetSeedFaceBox(&box), 0);
  EXPECT_EQ(gen->KVGetGenFaceBox(&box), 0);
  extrudedSquare(gen.g);
  ASSERT_EQ(gen->KVUpdateVertexDependencies(), 1);
  ASSERT_EQ(gen->KVSelectFirstGenBox(&box), 1);
  // The plane's box covers the slab from the seed to the plane.
  expectNear(box->min, vec(0, 0, 0));
  expectNear(box->max, vec(2, 2, 3));
  EXPECT_EQ(gen->KVSelectNextGenBox(&box), 0);
  EXPECT_EQ(gen->KVSelectFirstFaceBox(&box), 0);
  ASSERT_EQ(gen->KVGetSeedFaceBox(&box), 1);
  expectNear(box->max, vec(2, 2, 0));
  gen->m_currentPlane = nullptr;
  EXPECT_EQ(gen->KVGetBoxForCurrentPlane(&box), 0);
  ASSERT_EQ(gen->KVGetGenFaceBox(&box), 1);
  EXPECT_EQ(gen->m_currentPlane, gen->m_genPlanes);
  EXPECT_EQ(gen->KVGetBoxForCurrentPlane(&box), 1);
}

TEST(CKVGenFaces, FaceOutlinesUnderFaceEdgeDetect) {
  Gen gen;
  extrudedSquare(gen.g, EDGE_DETECT_FACE);
  ASSERT_EQ(gen->KVUpdateVertexDependencies(), 1);
  EXPECT_EQ(gen->m_currentPlane, gen->m_genPlanes);
  _D3DRMBOX* box = nullptr;
  ASSERT_EQ(gen->KVSelectFirstFaceBox(&box), 1);
  expectNear(box->min, vec(0, 0, 0));
  expectNear(box->max, vec(2, 0, 3));
  int faces = 1;
  while (gen->KVSelectNextFaceBox(&box) == 1) ++faces;
  EXPECT_EQ(faces, 4);
  expectNear(box->min, vec(0, 0, 0));  // the closing face, x = 0
  expectNear(box->max, vec(0, 2, 3));

  // A vertex made without a face outline fails the rebuild.
  gen->KVSetEdgeDetectType(EDGE_DETECT_BOX);
  ASSERT_EQ(gen->KVGenerate(), 1);
  gen->KVSetEdgeDetectType(EDGE_DETECT_FACE);
  EXPECT_EQ(gen->KVUpdateVertexDependencies(), 0);
}

TEST(CKVGenFaces, HitMarksAndSelectionByNumber) {
  Gen gen;
  EXPECT_EQ(gen->KVSetSeedFaceHit(), 0);
  EXPECT_EQ(gen->KVSetGenFaceHit(), 0);
  EXPECT_EQ(gen->KVSetSelectedHitFace(), 0);
  addSeed(gen.g, {vec(0, 0, 0), vec(1, 0, 0), vec(2, 1, 0), vec(2, 2, 0), vec(1, 3, 0), vec(0, 2, 0)});
  gen->KVAddInstruction(INSTR_EXTRUDE, &kNoAxis, 1.0f);
  gen->KVAddInstruction(INSTR_EXTRUDE, &kNoAxis, 1.0f);
  ASSERT_EQ(gen->KVGenerate(), 1);
  ASSERT_EQ(gen->KVSetSeedFaceHit(), 1);
  EXPECT_EQ(gen->KVIsSeedFaceHit(), 1);
  ASSERT_EQ(gen->KVSelectFirstGenPlane(), 1);
  ASSERT_EQ(gen->KVSetGenFaceHit(), 1);
  gen->KVSelectGenVertexByNumber(2);
  ASSERT_EQ(gen->KVSetSelectedHitFace(), 1);
  gen->KVSelectGenVertexByNumber(5);
  ASSERT_EQ(gen->KVSetSelectedHitFace(), 1);
  EXPECT_EQ(gen->KVIsSelectedHitFace(), 1);

  ASSERT_EQ(gen->KVSelectHitFaceByNumber(2), 1);
  EXPECT_EQ(gen->m_currentPlane, gen->m_genPlanes);
  _D3DVECTOR p;
  gen->KVGetSelectedGenVertex(&p);
  expectNear(p, vec(0, 2, 1));  // vertex 5
  EXPECT_EQ(gen->KVSelectHitFaceByNumber(3), 0);
  EXPECT_EQ(gen->m_currentPlane, gen->m_genPlanes->next);  // the walk ended on the last plane
  EXPECT_EQ(gen->KVSelectHitFaceByNumber(0), 0);
  ASSERT_EQ(gen->KVSelectHitFaceByNumber(1), 1);
  EXPECT_EQ(gen->KVUnSetSelectedHitFace(), 1);
  EXPECT_EQ(gen->KVSelectHitFaceByNumber(2), 0);

  EXPECT_EQ(gen->KVClearHitFaces(), 1);
  EXPECT_EQ(gen->KVIsSeedFaceHit(), 0);
  EXPECT_EQ(gen->m_currentPlane, gen->m_genPlanes->next);
  gen->KVSelectFirstGenPlane();
  EXPECT_EQ(gen->KVIsGenFaceHit(), 0);
  EXPECT_EQ(gen->KVSelectHitFaceByNumber(1), 0);
}
