// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "KVGen.h"
#include "TestSupport.h"
#include "VGenTestUtil.h"

using kutil::test::addSeed;
using kutil::test::expectNear;
using kutil::test::Gen;
using kutil::test::readLines;
using kutil::test::TempDir;
using kutil::test::vec;
using kutil::test::writeFile;

namespace {

const char* const kHeader =
    "[VGEN]\n[NRM][2]-1\n[DTA][7]20.0000\n[DRO][6]0.3491\n[FPT][0]\n[FTI][1]1\n[BPT][0]\n[BTI][1]1\n"
    "[FST][0]\n[STI][1]1\n[FIC][0]\n[BIC][0]\n[WIC][0]\n";

// One float segment line, as the writer makes it.
std::string floatLine(const char* tag, float v) {
  char value[64];
  std::snprintf(value, sizeof value, "%.4f", static_cast<double>(v));
  return std::string(tag) + "[" + std::to_string(std::strlen(value)) + "]" + value + "\n";
}

std::string seedBlock(float x, float y, float z) {
  return "[SED]\n" + floatLine("[SEX]", x) + floatLine("[SEY]", y) + floatLine("[SEZ]", z) + "[DES]\n";
}

const std::string kThreeSeeds = seedBlock(0, 0, 0) + seedBlock(4, 0, 0) + seedBlock(4, 3, 0);

int restoreText(CKVGen& g, const std::string& text) {
  TempDir dir;
  const std::string path = dir.file("shape.ksf");
  EXPECT_TRUE(writeFile(path, text));
  return g.KVRestore(path.c_str());
}

int seedCount(CKVGen& g) {
  int n = 0;
  return g.KVGetNumVertices(&n) == 1 ? n : 0;
}

int instructionCount(CKVGen& g) {
  int n = 0;
  return g.KVGetNumInstructs(&n) == 1 ? n : 0;
}

}  // namespace

TEST(CKVGenFile, OneVertexShapeFileHasNineteenLines) {
  TempDir dir;
  const std::string path = dir.file("one.ksf");
  Gen gen;
  addSeed(gen.g, {vec(1, 2, 3)});
  ASSERT_EQ(gen->KVSave(path.c_str()), 1);
  const std::vector<std::string> expected = {
      "[VGEN]",         "[NRM][2]-1",     "[DTA][7]20.0000", "[DRO][6]0.3491", "[FPT][0]",
      "[FTI][1]1",      "[BPT][0]",       "[BTI][1]1",       "[FST][0]",       "[STI][1]1",
      "[FIC][0]",       "[BIC][0]",       "[WIC][0]",        "[SED]",          "[SEX][6]1.0000",
      "[SEY][6]2.0000", "[SEZ][6]3.0000", "[DES]",           "[NEGV]"};
  EXPECT_EQ(readLines(path), expected);
  EXPECT_EQ(gen->KVSave(""), 0);
  EXPECT_EQ(gen->KVSave(nullptr), 0);
  EXPECT_EQ(gen->KVSave(dir.file("missing-dir/x.ksf").c_str()), 0);
}

TEST(CKVGenFile, SaveWithoutSeedWritesNoSeedBlock) {
  TempDir dir;
  const std::string path = dir.file("empty.ksf");
  Gen gen;
  ASSERT_EQ(gen->KVSave(path.c_str()), 1);
  EXPECT_EQ(readLines(path).size(), 14u);
}

TEST(CKVGenFile, RoundTripKeepsSettingsSeedAndInstructions) {
  TempDir dir;
  const std::string path = dir.file("round.ksf");
  Gen gen;
  gen->KVSetNormalDirection(1);
  gen->KVSetDeltaTranslation(2.5f);
  gen->KVSetFrontPlaneTexture("C:\\tex\\front.bmp");
  gen->KVSetBackPlaneTexture("back.anb");
  gen->KVSetWrapSurfaceTexture("wrap [odd] name.bmp");
  gen->KVSetFrontTiling(2);
  gen->KVSetBackTiling(3);
  gen->KVSetWrapTiling(4);
  gen->KVSetFrontIconIndex("7");
  gen->KVSetWrapIconIndex("12");
  gen->KVSetEdgeDetectType(EDGE_DETECT_FACE);  // not stored
  addSeed(gen.g, {vec(0, 0, 0), vec(4, 0, 0.5f), vec(4, 3, -1)});
  _D3DVECTOR axis = vec(0, 1, 0);
  gen->KVAddInstruction(INSTR_ROTATE_AXIS, &axis, 0.25f);
  gen->KVAddInstruction(INSTR_EXTRUDE, &axis, -2.0f);
  ASSERT_EQ(gen->KVSave(path.c_str()), 1);

  Gen back;
  ASSERT_EQ(back->KVRestore(path.c_str()), 1);
  float f = 0;
  back->KVGetDeltaRotation(&f);
  EXPECT_FLOAT_EQ(f, 0.3491f);  // four decimals survive
  char text[300];
  ASSERT_EQ(back->KVGetWrapSurfaceTexture(text), 1);
  EXPECT_STREQ(text, "wrap [odd] name.bmp");
  EXPECT_EQ(back->KVIsEdgeDetectBoxType(), 1);  // not stored
  _D3DRMBOX* box = nullptr;
  ASSERT_EQ(back->KVGetSeedFaceBox(&box), 1);  // the seed outline was rebuilt
  EXPECT_EQ(box->max.x, 4.0f);

  // Every other field shows in a second save giving the same file.
  const std::string again = dir.file("again.ksf");
  ASSERT_EQ(back->KVSave(again.c_str()), 1);
  EXPECT_EQ(readLines(again), readLines(path));
}

TEST(CKVGenFile, RestoreEmptiesTheGeneratorFirst) {
  Gen gen;
  addSeed(gen.g, {vec(1, 1, 1)});
  gen->KVSetFrontTiling(9);
  EXPECT_EQ(gen->KVRestore(""), 0);
  EXPECT_EQ(seedCount(gen.g), 0);
  int i = 0;
  gen->KVGetFrontTiling(&i);
  EXPECT_EQ(i, 1);
  TempDir dir;
  EXPECT_EQ(gen->KVRestore(dir.file("absent.ksf").c_str()), 0);
  EXPECT_EQ(restoreText(gen.g, ""), 0);  // an empty file has no seed
  EXPECT_EQ(restoreText(gen.g, kHeader + std::string("[NEGV]\n")), 0);
}

TEST(CKVGenFile, MarksAreNotChecked) {
  Gen gen;
  EXPECT_EQ(restoreText(gen.g, kThreeSeeds), 1);
  EXPECT_EQ(seedCount(gen.g), 3);
  EXPECT_EQ(restoreText(gen.g, "garbage\n[VGEN]\n" + kThreeSeeds + "[NEGV]\n[VGEN]\nmore garbage\n"), 1);
  EXPECT_EQ(seedCount(gen.g), 3);
}

TEST(CKVGenFile, MisplacedTagInsideABlockFailsTheRestore) {
  Gen gen;
  EXPECT_EQ(restoreText(gen.g, kThreeSeeds + "[SED]\n[CMD][1]3\n[DES]\n"), 0);
  EXPECT_EQ(seedCount(gen.g), 4);  // what was read stays
  EXPECT_EQ(restoreText(gen.g, kThreeSeeds + "[INS]\n[SEX][6]1.0000\n[SNI]\n"), 0);
  EXPECT_EQ(restoreText(gen.g, kThreeSeeds + "[SED]\n[SED]\n[DES]\n"), 0);
  // Lines that are no tag at all are skipped even inside a block.
  EXPECT_EQ(restoreText(gen.g, kThreeSeeds + "[SED]\nnoise\n[SEX][6]7.0000\n[DES]\n"), 1);
  EXPECT_EQ(seedCount(gen.g), 4);
}

TEST(CKVGenFile, StrayClosingTagEndsTheUsefulPart) {
  Gen gen;
  EXPECT_EQ(restoreText(gen.g, "[DES]\n" + kThreeSeeds), 0);
  EXPECT_EQ(seedCount(gen.g), 0);
  EXPECT_EQ(restoreText(gen.g, kThreeSeeds + "[SNI]\n" + kThreeSeeds + "[SED]\n[CMD][1]1\n"), 1);
  EXPECT_EQ(seedCount(gen.g), 3);  // nothing after the stray tag was read, not even the bad block
}

TEST(CKVGenFile, InstructionBlockDefaults) {
  Gen gen;
  ASSERT_EQ(restoreText(gen.g, kThreeSeeds + "[INS]\n[IVY][6]1.0000\n[SNI]\n[INS]\n[CMD][1]3\n[SNI]\n"), 1);
  ASSERT_EQ(instructionCount(gen.g), 2);
  int code = 0;
  _D3DVECTOR v;
  float m = 0;
  gen->KVGetFirstInstruction(&code, &v, &m);
  EXPECT_EQ(code, -1);
  EXPECT_EQ(m, 1.0f);
  expectNear(v, vec(0, 1, 0), 0.0f);
  gen->KVGetNextInstruction(&code, &v, &m);
  EXPECT_EQ(code, 3);
  expectNear(v, vec(0, 0, 0), 0.0f);  // the working record was reset
  // An instruction of code -1 copies the previous plane.
  ASSERT_EQ(gen->KVGenerate(), 1);
  gen->KVSelectFirstGenPlane();
  gen->KVGetGenVertexByNumber(2, &v);
  expectNear(v, vec(4, 3, 0), 0.0f);
}

TEST(CKVGenFile, OpenBlockAtTheEndIsDropped) {
  Gen gen;
  EXPECT_EQ(restoreText(gen.g, kThreeSeeds + "[SED]\n[SEX][6]9.0000\n"), 1);
  EXPECT_EQ(seedCount(gen.g), 3);
  EXPECT_EQ(restoreText(gen.g, kThreeSeeds + "[INS]\n[CMD][1]3\n"), 1);
  EXPECT_EQ(instructionCount(gen.g), 0);
}

TEST(CKVGenFile, BadValuesAndOverlongLinesNeverOverrun) {
  Gen gen;
  const std::string huge(2000, 'x');
  const std::string text = std::string("[FPT][2000]") + huge + "\n[FIC][40]" + std::string(40, '9') +
                           "\n[FTI][3]abc\n[BTI]broken\n[SEX][6]5.0000\n" + kThreeSeeds + "[" + huge + "\n";
  ASSERT_EQ(restoreText(gen.g, text), 1);
  char out[300];
  ASSERT_EQ(gen->KVGetFrontPlaneTexture(out), 1);
  EXPECT_EQ(std::string(out).size(), 276u);
  ASSERT_EQ(gen->KVGetFrontIconIndex(out), 1);
  EXPECT_EQ(std::string(out), std::string(16, '9'));
  int i = 0;
  gen->KVGetFrontTiling(&i);
  EXPECT_EQ(i, 0);  // a value that is no number reads 0
  gen->KVGetBackTiling(&i);
  EXPECT_EQ(i, 1);  // a line without its segment keeps the field
  EXPECT_EQ(seedCount(gen.g), 3);
}

TEST(CKVGenFile, SingleVertexSeedIsReadButItsOutlineFails) {
  // A one-vertex outline has no usable box, so the dependency rebuild reports 0.
  Gen gen;
  EXPECT_EQ(restoreText(gen.g, seedBlock(1, 2, 3)), 0);
  EXPECT_EQ(seedCount(gen.g), 1);
}

TEST(CKVGenFile, CubeFixtureRestoresAndBuilds) {
  const std::string path = kutil::test::testDataPath("vgen/data/cube.ksf");
  Gen gen;
  ASSERT_EQ(gen->KVRestore(path.c_str()), 1);
  EXPECT_EQ(seedCount(gen.g), 4);
  EXPECT_EQ(instructionCount(gen.g), 1);
  ASSERT_EQ(gen->KVTesselateSeedPlane(), 1);
  ASSERT_EQ(gen->KVGenerate(), 1);
  ASSERT_EQ(gen->KVUpdateVertexDependencies(), 1);
  _D3DRMBOX* box = nullptr;
  ASSERT_EQ(gen->KVGetGenFaceBox(&box), 1);
  expectNear(box->min, vec(0, 0, 0));
  expectNear(box->max, vec(2, 2, 2));
  TempDir dir;
  const std::string copy = dir.file("cube.ksf");
  ASSERT_EQ(gen->KVSave(copy.c_str()), 1);
  EXPECT_EQ(readLines(copy), readLines(path));
}
