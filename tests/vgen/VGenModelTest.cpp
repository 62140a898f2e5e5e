// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "KFootPrint.h"
#include "KGenList.h"
#include "KVGen.h"
#include "TestSupport.h"
#include "VGenTestSupport.h"

using namespace kutil::test;

TEST(CKVGenModel, DefaultsAndTextCapacities) {
  Gen gen;
  int i = 0;
  float f = 0.0f;
  char text[600] = "untouched";
  EXPECT_EQ(gen->KVGetFrontPlaneTexture(text), 0);
  EXPECT_STREQ(text, "untouched");
  gen->KVGetWrapTiling(&i);
  EXPECT_EQ(i, 1);
  EXPECT_EQ(gen->KVIsEdgeDetectBoxType(), 1);
  gen->KVGetDeltaTranslation(&f);
  EXPECT_EQ(f, 20.0f);
  gen->KVGetDeltaRotation(&f);
  unsigned bits = 0;
  std::memcpy(&bits, &f, sizeof bits);
  EXPECT_EQ(bits, 0x3EB2B8C2u);  // 0.34906584f
  gen->KVSetEdgeDetectType(2);
  EXPECT_EQ(gen->KVIsEdgeDetectBoxType(), 0);

  gen->KVSetFrontPlaneTexture(std::string(600, 'n').c_str());
  ASSERT_EQ(gen->KVGetFrontPlaneTexture(text), 1);
  EXPECT_EQ(std::strlen(text), 276u);
  gen->KVSetWrapIconIndex("0123456789abcdefXYZ");
  ASSERT_EQ(gen->KVGetWrapIconIndex(text), 1);
  EXPECT_STREQ(text, "0123456789abcdef");
  EXPECT_EQ(gen->KVSetBackPlaneTexture(nullptr), 1);
  EXPECT_EQ(gen->KVGetBackPlaneTexture(text), 0);
}

TEST(CKVGenModel, SeedCursorStopsAtBothEndsAndNumbersClampAtZero) {
  Gen gen;
  addSeed(gen.g, {vec(1, 0, 0), vec(2, 0, 0), vec(3, 0, 0)});
  _D3DVECTOR p;
  ASSERT_EQ(gen->KVGetFirstSeedVertex(&p), 1);
  EXPECT_EQ(gen->KVGetPrevSeedVertex(&p), 0);
  gen->KVGetNextSeedVertex(&p);
  EXPECT_EQ(gen->KVGetNextSeedVertex(&p), 1);
  EXPECT_EQ(gen->KVGetNextSeedVertex(&p), 0);
  ASSERT_EQ(gen->KVGetSelectedSeedVertex(&p), 1);
  EXPECT_EQ(p.x, 3.0f);
  EXPECT_EQ(gen->KVSelectSeedVertexByNumber(3), 0);
  gen->KVGetSelectedSeedVertex(&p);
  EXPECT_EQ(p.x, 3.0f);  // the failed selection kept the cursor
  gen->KVGetPrevSeedVertex(&p);
  EXPECT_EQ(gen->KVDeleteSelectedSeedVertex(), 1);
  EXPECT_EQ(gen->KVGetSelectedSeedVertex(&p), 0);
  EXPECT_EQ(gen->KVDeleteSelectedSeedVertex(), 0);
  ASSERT_EQ(gen->KVGetSeedVertexByNumber(-5, &p), 1);
  EXPECT_EQ(p.x, 1.0f);

  _D3DVECTOR none = vec(0, 0, 0);
  gen->KVAddInstruction(9, &none, 0.0f);
  ASSERT_EQ(gen->KVGenerate(), 1);
  gen->KVSelectFirstGenPlane();
  ASSERT_EQ(gen->KVGetGenVertexByNumber(-1, &p), 1);
  EXPECT_EQ(p.x, 1.0f);
  ASSERT_EQ(gen->KVSelectGenVertexByNumber(-3), 1);
  EXPECT_EQ(gen->KVSelectGenVertexByNumber(7), 0);
  EXPECT_EQ(gen->KVGetSelectedGenVertex(&p), 0);  // unlike the seed's, a failed selection clears it
}

TEST(CKVGenModel, DeletingTheSelectedSeedVertexReachesEveryOutcome) {
  Gen gen;
  EXPECT_EQ(gen->KVDeleteSelectedSeedVertex(), 1);  // no seed plane
  addSeed(gen.g, {vec(1, 0, 0)});
  EXPECT_EQ(gen->KVDeleteSelectedSeedVertex(), 0);  // a seed, nothing selected
  ASSERT_EQ(gen->KVSelectSeedVertexByNumber(0), 1);
  EXPECT_EQ(gen->KVDeleteSelectedSeedVertex(), 1);  // found and deleted
  int n = 0;
  EXPECT_EQ(gen->KVGetNumVertices(&n), 0);
  EXPECT_EQ(gen->KVDeleteSelectedSeedVertex(), 1);  // the seed plane is left with an empty list
}

TEST(CKVGenModel, InsertedVertexNeverGetsAFaceOutline) {
  Gen gen;
  gen->KVSetEdgeDetectType(EDGE_DETECT_FACE);
  addSeed(gen.g, {vec(0, 0, 0), vec(4, 0, 0)});
  ASSERT_EQ(gen->KVSelectSeedVertexByNumber(0), 1);
  _D3DVECTOR mid = vec(2, 1, 0);
  ASSERT_EQ(gen->KVInsertAfterSelectedSeedVertex(&mid), 1);
  tagKExtrudeVertex* v0 = GenInternals::seedPlane(*gen)->vertices;
  EXPECT_NE(v0->faceOutline, nullptr);
  EXPECT_EQ(v0->next->faceOutline, nullptr);
  EXPECT_NE(v0->next->next->faceOutline, nullptr);
  _D3DVECTOR p;
  gen->KVGetSelectedSeedVertex(&p);
  EXPECT_EQ(p.x, 0.0f);  // the selection stays on the old vertex
  gen->KVGetSeedVertexByNumber(1, &p);
  EXPECT_EQ(p.x, 2.0f);

  Gen boxGen;
  addSeed(boxGen.g, {vec(0, 0, 0)});
  EXPECT_EQ(GenInternals::seedPlane(*boxGen)->vertices->faceOutline, nullptr);
  EXPECT_EQ(boxGen->KVInsertAfterSelectedSeedVertex(&mid), 0);  // nothing selected
}

TEST(CKVGenModel, SeedFromFootPrintCopiesEdgeStartsAndRestoresTheCursor) {
  CKFootPrint fp, empty;
  fp.FPInitialise();
  empty.FPInitialise();
  fp.FPAddVertex(1, 2, 3);
  fp.FPAddVertex(4, 5, 6);
  fp.FPAddVertex(7, 8, 9);
  fp.FPSelectFirstEdge();
  fp.FPSelectNextEdgeNoWrap();
  Gen gen;
  addSeed(gen.g, {vec(100, 0, 0)});
  ASSERT_EQ(gen->KVSeedFromFootPrint(&fp), 1);
  int n = 0;
  gen->KVGetNumVertices(&n);
  EXPECT_EQ(n, 3);
  _D3DVECTOR p;
  gen->KVGetLastSeedVertex(&p);
  EXPECT_EQ(p.x, 7.0f);
  fp.FPGetEdgeFromVector(&p);
  EXPECT_EQ(p.x, 4.0f);
  EXPECT_EQ(gen->KVSeedFromFootPrint(&empty), 0);
  EXPECT_EQ(gen->KVGetNumVertices(&n), 0);  // the old seed is gone
  fp.FPTerminate();
  empty.FPTerminate();
}

TEST(CKVGenModel, ValidityLevelsAndIntegrityLog) {
  Gen gen;
  EXPECT_EQ(gen->KVIsValid(1), 0);
  addSeed(gen.g, {vec(0, 0, 0)});
  EXPECT_EQ(gen->KVIsValid(2), 0);
  EXPECT_EQ(gen->KVIsValid(0), 0);
  addSeed(gen.g, {vec(1, 0, 0)});
  EXPECT_EQ(gen->KVIsValid(2), 1);
  EXPECT_EQ(gen->KVIsValid(3), 0);  // two vertices make no triangle

  kutil::test::TempDir dir;
  const std::string path = dir.file("log.txt");
  FILE* log = std::fopen(path.c_str(), "w");
  ASSERT_NE(log, nullptr);
  char error[64] = "";
  EXPECT_EQ(gen->KVCheckIntegrity(error, log), 1);
  std::fclose(log);
  EXPECT_EQ(kutil::test::readFile(path), "  Extruder: footprint.");
  EXPECT_EQ(gen->KVCheckIntegrity(error, nullptr), 1);
}

TEST(KUVertexText, SegmentRoundTripShortInputAndVertexList) {
  char text[160];
  _D3DVECTOR v = vec(1.5f, -2.0f, 3.25f), back = vec(9, 9, 9);
  ASSERT_EQ(KUMkVertexSegment(text, &v), 1);
  EXPECT_STREQ(text, "1.5000,-2.0000,3.2500");
  ASSERT_EQ(KUExtractVertexSegment(&back, text), 1);
  kutil::test::expectNear(back, v);
  back = vec(9, 9, 9);
  EXPECT_EQ(KUExtractVertexSegment(&back, "1.0,2.0"), 0);
  EXPECT_EQ(back.x, 9.0f);
  _D3DVECTOR huge = vec(3.4e38f, -3.4e38f, 3.4e38f);
  EXPECT_EQ(KUMkVertexSegment(text, &huge), 1);
  EXPECT_LT(std::strlen(text), sizeof text);

  CKGenList* list = nullptr;
  ASSERT_EQ(KUUpdateVertexList(&list, &v), 1);  // made on demand
  ASSERT_EQ(KUUpdateVertexList(&list, &huge), 1);
  void* obj = nullptr;
  void* comp = nullptr;
  ASSERT_EQ(list->GLSelectFirstObject(&obj, &comp), 1);
  EXPECT_EQ(static_cast<float*>(obj)[2], 3.25f);
  std::free(obj);
  ASSERT_EQ(list->GLSelectNextObject(&obj, &comp), 1);
  std::free(obj);
  delete list;
  EXPECT_EQ(KUUpdateVertexList(nullptr, &v), 0);
}
