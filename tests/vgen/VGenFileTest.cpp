// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "KText.h"
#include "KVGen.h"
#include "TestSupport.h"
#include "VGenTestSupport.h"

using namespace kutil::test;

namespace {
std::string seedBlock(int x, int y) {
  return "[SED]\n[SEX][6]" + std::to_string(x) + ".0000\n[SEY][6]" + std::to_string(y) +
         ".0000\n[SEZ][6]0.0000\n[DES]\n";
}

const std::string kThreeSeeds = seedBlock(0, 0) + seedBlock(4, 0) + seedBlock(4, 3);

int restoreText(CKVGen& g, const std::string& text) {
  TempDir dir;
  const std::string path = dir.file("shape.ksf");
  EXPECT_TRUE(writeFile(path, text));
  return g.KVRestore(path.c_str());
}

int count(CKVGen& g, bool instructions) {
  int n = 0;
  return (instructions ? g.KVGetNumInstructs(&n) : g.KVGetNumVertices(&n)) == 1 ? n : 0;
}

void saveShape(const std::string& path, const std::string& front, const std::string& wrap = "") {
  Gen gen;
  addSeed(gen.g, {vec(0, 0, 0), vec(1, 0, 0), vec(1, 1, 0)});
  gen->KVSetFrontPlaneTexture(front.c_str());
  gen->KVSetWrapSurfaceTexture(wrap.c_str());
  ASSERT_EQ(gen->KVSave(path.c_str()), 1);
}

std::string frontTexture(const std::string& path) {
  Gen gen;
  char name[300] = "";
  gen->KVRestore(path.c_str());
  gen->KVGetFrontPlaneTexture(name);
  return name;
}
}  // namespace

TEST(CKVGenFile, OneVertexShapeFileHasNineteenLines) {
  TempDir dir;
  const std::string path = dir.file("one.ksf");
  Gen gen;
  ASSERT_EQ(gen->KVSave(path.c_str()), 1);
  EXPECT_EQ(readLines(path).size(), 14u);  // no seed, no seed block
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

TEST(CKVGenFile, RoundTripKeepsSettingsSeedAndInstructions) {
  TempDir dir;
  const std::string path = dir.file("round.ksf"), again = dir.file("again.ksf");
  Gen gen;
  gen->KVSetNormalDirection(1);
  gen->KVSetDeltaTranslation(2.5f);
  gen->KVSetFrontPlaneTexture("C:\\tex\\front.bmp");
  gen->KVSetWrapSurfaceTexture("wrap [odd] name.bmp");
  gen->KVSetBackTiling(3);
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
  EXPECT_EQ(back->KVIsEdgeDetectBoxType(), 1);
  _D3DRMBOX* box = nullptr;
  ASSERT_EQ(back->KVGetSeedFaceBox(&box), 1);  // the seed outline was rebuilt
  EXPECT_EQ(box->max.x, 4.0f);
  ASSERT_EQ(back->KVSave(again.c_str()), 1);  // every other field shows in the same file
  EXPECT_EQ(readLines(again), readLines(path));

  const std::string cube = testDataPath("vgen/data/cube.ksf");
  ASSERT_EQ(back->KVRestore(cube.c_str()), 1);
  ASSERT_EQ(back->KVTesselateSeedPlane(), 1);
  ASSERT_EQ(back->KVGenerate(), 1);
  ASSERT_EQ(back->KVUpdateVertexDependencies(), 1);
  ASSERT_EQ(back->KVGetGenFaceBox(&box), 1);
  expectNear(box->max, vec(2, 2, 2));
  ASSERT_EQ(back->KVSave(again.c_str()), 1);
  EXPECT_EQ(readLines(again), readLines(cube));
}

TEST(CKVGenFile, ReaderStatesDecideWhatIsKept) {
  const std::string header = "[VGEN]\n[NRM][2]-1\n[DTA][7]20.0000\n[FTI][1]1\n";
  struct Row {
    const char* name;
    std::string text;
    int status, seeds, instructions;
  };
  const Row rows[] = {
      {"empty file has no seed", "", 0, 0, 0},
      {"header only", header + "[NEGV]\n", 0, 0, 0},
      {"marks unchecked", kThreeSeeds, 1, 3, 0},
      {"noise around marks", "garbage\n[VGEN]\n" + kThreeSeeds + "[NEGV]\n[VGEN]\nmore\n", 1, 3, 0},
      {"misplaced tag keeps what was read", kThreeSeeds + "[SED]\n[CMD][1]3\n[DES]\n", 0, 4, 0},
      {"seed tag in an instruction", kThreeSeeds + "[INS]\n[SEX][6]1.0000\n[SNI]\n", 0, 3, 1},
      {"nested opening tag", kThreeSeeds + "[SED]\n[SED]\n[DES]\n", 0, 4, 0},
      {"non-tag line inside a block", kThreeSeeds + "[SED]\nnoise\n[SEX][6]7.0000\n[DES]\n", 1, 4, 0},
      {"stray closing tag first", "[DES]\n" + kThreeSeeds, 0, 0, 0},
      {"stray closing tag: dead after it", kThreeSeeds + "[SNI]\n" + kThreeSeeds + "[SED]\n[CMD][1]1\n", 1, 3,
       0},
      {"open seed block at the end", kThreeSeeds + "[SED]\n[SEX][6]9.0000\n", 1, 3, 0},
      {"open instruction block at the end", kThreeSeeds + "[INS]\n[CMD][1]3\n", 1, 3, 0},
      {"one-vertex outline fails its rebuild", seedBlock(1, 2), 0, 1, 0},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    Gen gen;
    addSeed(gen.g, {vec(1, 1, 1)});
    gen->KVSetFrontTiling(9);
    EXPECT_EQ(restoreText(gen.g, r.text), r.status);
    EXPECT_EQ(count(gen.g, false), r.seeds);
    EXPECT_EQ(count(gen.g, true), r.instructions);
    int tiling = 0;
    gen->KVGetFrontTiling(&tiling);
    EXPECT_EQ(tiling, 1);  // the generator was emptied first
  }
  Gen gen;
  EXPECT_EQ(gen->KVRestore(""), 0);
  EXPECT_EQ(gen->KVRestore(nullptr), 0);
}

TEST(CKVGenFile, InstructionBlockDefaults) {
  Gen gen;
  ASSERT_EQ(restoreText(gen.g, kThreeSeeds + "[INS]\n[IVY][6]1.0000\n[SNI]\n[INS]\n[CMD][1]3\n[SNI]\n"), 1);
  ASSERT_EQ(count(gen.g, true), 2);
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
  ASSERT_EQ(gen->KVGenerate(), 1);    // code -1 copies the previous plane
  gen->KVSelectFirstGenPlane();
  gen->KVGetGenVertexByNumber(2, &v);
  expectNear(v, vec(4, 3, 0), 0.0f);
}

TEST(CKVGenFile, BadValuesAndOverlongLinesNeverOverrun) {
  Gen gen;
  const std::string huge(2000, 'x');
  const std::string text = "[FPT][2000]" + huge + "\n[FIC][40]" + std::string(40, '9') +
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
  EXPECT_EQ(count(gen.g, false), 3);
}

TEST(KUKSFNormalise, ConvertPutsContentTexturesBesideTheShape) {
  TempDir dir;
  const std::string path = dir.file("shape.ksf"), texture = dir.file("front.bmp");
  saveShape(path, texture);
  EXPECT_EQ(KUIsKSFFileNormalised(path.c_str()), 0);
  ASSERT_EQ(KUConvertKSFToRelative(path.c_str()), 1);
  EXPECT_EQ(frontTexture(path), "?KALDOKWQDIR?front.bmp");
  char comment[264];
  ASSERT_EQ(KUGetComment(comment), 1);
  EXPECT_EQ(std::string(comment), path);
  EXPECT_EQ(KUIsKSFFileNormalised(path.c_str()), 1);
  const std::string other = dir.file("other.ksf");
  saveShape(other, texture, "?WINDOWSDIR?\\wrap.bmp");  // one variablised texture is enough
  EXPECT_EQ(KUIsKSFFileNormalised(other.c_str()), 1);
}

TEST(KUKSFNormalise, CopyGathersTexturesAndBadPathsFail) {
  TempDir dir, target;
  const std::string texture = dir.file("front.bmp"), path = dir.file("shape.ksf");
  ASSERT_TRUE(writeFile(texture, "BM......"));
  saveShape(path, texture);
  const std::string targetDir = target.path() + "/";
  ASSERT_EQ(KUCopyKSFFileParts(path.c_str(), targetDir.c_str()), 1);
  EXPECT_TRUE(fileExists(target.file("front.bmp")));
  EXPECT_EQ(frontTexture(path), targetDir + "front.bmp");

  EXPECT_EQ(KUConvertKSFToRelative("?KALDOKWQDIR?shape.ksf"), 1);  // nothing to do
  EXPECT_EQ(KUCopyKSFFileParts("", "x"), 1);
  const std::string missing = dir.file("absent.ksf");
  EXPECT_EQ(KUConvertKSFToRelative(missing.c_str()), 0);
  EXPECT_EQ(KUCopyKSFFileParts(missing.c_str(), dir.path().c_str()), 0);
  EXPECT_EQ(KUIsKSFFileNormalised(missing.c_str()), 0);
}
