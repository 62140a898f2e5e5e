// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "KNormalise.h"
#include "VGenTestSupport.h"

using namespace kutil::test;
using Lines = std::vector<std::string>;

namespace {
std::string seedBlock(int x, int y) {
  return "[SED]\n[SEX][6]" + std::to_string(x) + ".0000\n[SEY][6]" + std::to_string(y) +
         ".0000\n[SEZ][6]0.0000\n[DES]\n";
}

const std::string kThreeSeeds = seedBlock(0, 0) + seedBlock(4, 0) + seedBlock(4, 3);

// Seed vertices and instructions held.
Ints counts(CKVGen& g) {
  Ints n(2);
  g.KVGetNumVertices(&n[0]);
  g.KVGetNumInstructs(&n[1]);
  return n;
}

}  // namespace

TEST(CKVGenFile, SavedLinesAreExact) {
  TempDir dir;
  const std::string path = dir.file("one.ksf");
  Gen gen;
  Lines expected = {"[VGEN]",    "[NRM][2]-1", "[DTA][7]20.0000", "[DRO][6]0.3491", "[FPT][0]",
                    "[FTI][1]1", "[BPT][0]",   "[BTI][1]1",       "[FST][0]",       "[STI][1]1",
                    "[FIC][0]",  "[BIC][0]",   "[WIC][0]",        "[NEGV]"};
  ASSERT_EQ(gen->KVSave(path.c_str()), 1);
  EXPECT_EQ(readLines(path), expected);  // no seed, no seed block
  const _D3DVECTOR p = vec(1, 2, 3), axis = vec(0, -1, 0.5f);
  gen->KVAddSeedVertex(&p);
  gen->KVAddInstruction(INSTR_HINGE_TOP, &axis, 12.25f);
  ASSERT_EQ(gen->KVSave(path.c_str()), 1);
  expected.pop_back();
  for (const char* line :
       {"[SED]", "[SEX][6]1.0000", "[SEY][6]2.0000", "[SEZ][6]3.0000", "[DES]", "[INS]", "[CMD][1]4",
        "[IVX][6]0.0000", "[IVY][7]-1.0000", "[IVZ][6]0.5000", "[IMG][7]12.2500", "[SNI]", "[NEGV]"})
    expected.push_back(line);
  EXPECT_EQ(readLines(path), expected);
  EXPECT_EQ((Ints{gen->KVSave(""), gen->KVSave(nullptr), gen->KVSave(dir.file("missing-dir/x.ksf").c_str())}),
            (Ints{0, 0, 0}));
}

TEST(CKVGenFile, SaveRestoreSaveIsByteIdentical) {
  TempDir dir;
  const std::string path = dir.file("round.ksf"), again = dir.file("again.ksf");
  Gen gen({vec(0, 0, 0), vec(4, 0, 0.5f), vec(4, 3, -1)});
  EXPECT_EQ((Ints{gen->KVSetNormalDirection(1), gen->KVSetDeltaTranslation(2.5f),
                  gen->KVSetFrontPlaneTexture("C:\\tex\\front.bmp"), gen->KVSetBackPlaneTexture("back.bmp"),
                  gen->KVSetWrapSurfaceTexture("wrap [odd] name.bmp"), gen->KVSetFrontTiling(2),
                  gen->KVSetBackTiling(3), gen->KVSetWrapTiling(4), gen->KVSetFrontIconIndex("5"),
                  gen->KVSetBackIconIndex("6"), gen->KVSetWrapIconIndex("12"),
                  gen->KVSetEdgeDetectType(EDGE_DETECT_FACE)}),  // the type is not stored
            Ints(12, 1));
  const _D3DVECTOR axis = vec(0, 1, 0);
  gen->KVAddInstruction(INSTR_ROTATE_AXIS, &axis, 0.25f);
  gen->KVAddInstruction(INSTR_EXTRUDE, &axis, -2.0f);
  Gen back;
  EXPECT_EQ((Ints{gen->KVSave(path.c_str()), back->KVRestore(path.c_str()), back->KVSave(again.c_str())}),
            (Ints{1, 1, 1}));
  EXPECT_EQ(readFile(again), readFile(path));
  float f = 0;
  back->KVGetDeltaRotation(&f);
  EXPECT_EQ(f, 0.3491f);  // four decimals survive
  EXPECT_EQ(back->KVIsEdgeDetectBoxType(), 1);
}

TEST(CKVGenFile, ReaderStatesDecideWhatIsKept) {
  const std::string header = "[VGEN]\n[NRM][2]-1\n[DTA][7]20.0000\n[FTI][1]1\n";
  const struct {
    const char* name;
    std::string text;
    int status, seeds, instructions;
  } rows[] = {
      {"header only", header + "[NEGV]\n", 0, 0, 0},
      {"marks unchecked", kThreeSeeds, 1, 3, 0},
      {"noise around marks", "garbage\n[VGEN]\n" + kThreeSeeds + "[NEGV]\n[VGEN]\nmore\n", 1, 3, 0},
      {"instruction tag in a seed block", kThreeSeeds + "[SED]\n[CMD][1]3\n[DES]\n", 0, 4, 0},
      {"seed tag in an instruction block", kThreeSeeds + "[INS]\n[SEX][6]1.0000\n[SNI]\n", 0, 3, 1},
      {"nested opening tag", kThreeSeeds + "[SED]\n[SED]\n[DES]\n", 0, 4, 0},
      {"non-tag line inside a block", kThreeSeeds + "[SED]\nnoise\n[SEX][6]7.0000\n[DES]\n", 1, 4, 0},
      {"stray closing tag: dead after it", kThreeSeeds + "[SNI]\n" + kThreeSeeds + "[SED]\n[CMD][1]1\n", 1, 3,
       0},
      {"open seed block at the end", kThreeSeeds + "[SED]\n[SEX][6]9.0000\n", 1, 3, 0},
      {"instructions without a seed", "[INS]\n[CMD][1]3\n[SNI]\n", 0, 0, 1},
      {"one-vertex outline fails its rebuild", seedBlock(1, 2), 0, 1, 0},
  };
  for (const auto& r : rows) {
    SCOPED_TRACE(r.name);
    Gen gen({vec(1, 1, 1)});
    gen->KVSetFrontTiling(9);
    int tiling = 0;
    EXPECT_EQ((Ints{restoreText(gen.g, r.text), gen->KVGetFrontTiling(&tiling), tiling}),
              (Ints{r.status, 1, 1}));
    EXPECT_EQ(counts(gen.g), (Ints{r.seeds, r.instructions}));  // the generator was emptied first
  }
  Gen gen({vec(1, 1, 1)});
  TempDir dir;
  EXPECT_EQ(
      (Ints{gen->KVRestore(""), gen->KVRestore(nullptr), gen->KVRestore(dir.file("absent.ksf").c_str())}),
      (Ints{0, 0, 0}));
  EXPECT_EQ(counts(gen.g), (Ints{0, 0}));
}

TEST(CKVGenFile, BlocksStartFromTheirDefaultsAndBadValuesReadAsTheyCan) {
  Gen gen;
  ASSERT_EQ(restoreText(gen.g, kThreeSeeds + "[INS]\n[IVY][6]1.0000\n[SNI]\n[INS]\n[CMD][1]3\n[SNI]\n"), 1);
  int code[2] = {0, 0};
  _D3DVECTOR v[2];
  float m[2] = {0, 0};
  EXPECT_EQ((Ints{gen->KVGetFirstInstruction(&code[0], &v[0], &m[0]),
                  gen->KVGetNextInstruction(&code[1], &v[1], &m[1]), code[0], code[1]}),
            (Ints{1, 1, -1, 3}));
  EXPECT_EQ(m[0], 1.0f);
  expectNear({v[0], v[1]}, {vec(0, 1, 0), vec(0, 0, 0)}, 0.0f);  // the working record was reset
  ASSERT_EQ(gen->KVGenerate(), 1);                               // code -1 copies the previous plane
  expectNear(planeOf(gen.g, 0), {vec(0, 0, 0), vec(4, 0, 0), vec(4, 3, 0)}, 0.0f);

  ASSERT_EQ(restoreText(gen.g, "[FTI][3]abc\n[BTI]broken\n[SEX][6]5.0000\n" + kThreeSeeds), 1);
  int tiling[2] = {-9, -9};
  EXPECT_EQ((Ints{gen->KVGetFrontTiling(&tiling[0]), gen->KVGetBackTiling(&tiling[1]), tiling[0], tiling[1]}),
            (Ints{1, 1, 0, 1}));  // a value that is no number reads 0; a line without its segment keeps it
  expectNear(planeOf(gen.g), {vec(0, 0, 0), vec(4, 0, 0), vec(4, 3, 0)},
             0.0f);  // [SEX] outside a block is skipped
}

TEST(KUKSFNormalise, ConvertPutsContentTexturesBesideTheShapeAndAFailedGatherSavesNothing) {
  TempDir dir, target;
  const std::string path = dir.file("shape.ksf"), missing = dir.file("absent.ksf"), to = target.path() + "/";
  Gen gen(square());
  gen->KVSetFrontPlaneTexture(dir.file("front.bmp").c_str());
  gen->KVSetWrapSurfaceTexture("C:\\Program Files\\kaldo3d\\kaldo\\w.exe");
  ASSERT_EQ(gen->KVSave(path.c_str()), 1);
  EXPECT_EQ((Ints{KUIsKSFFileNormalised(path.c_str()), KUConvertKSFToRelative(path.c_str()),
                  KUIsKSFFileNormalised(path.c_str()), gen->KVRestore(path.c_str())}),
            (Ints{0, 1, 1, 1}));
  char front[300] = "", wrap[300] = "";
  gen->KVGetFrontPlaneTexture(front);
  gen->KVGetWrapSurfaceTexture(wrap);
  EXPECT_EQ((Lines{front, wrap}), (Lines{"?KALDOKWQDIR?front.bmp", "?KALDOHOMEDIR?\\w.exe"}));
  EXPECT_EQ((Ints{KUConvertKSFToRelative("?KALDOKWQDIR?shape.ksf"), KUConvertKSFToRelative(""),
                  KUConvertKSFToRelative(missing.c_str()), KUIsKSFFileNormalised(missing.c_str()),
                  KUIsKSFFileNormalised("")}),
            (Ints{1, 1, 0, 0, 0}));
  gen->KVSetFrontPlaneTexture(dir.file("gone.bmp").c_str());
  ASSERT_EQ(gen->KVSave(path.c_str()), 1);
  const std::string unsaved = readFile(path);
  EXPECT_EQ((Ints{KUCopyKSFFileParts(path.c_str(), to.c_str()), KUCopyKSFFileParts("", "x"),
                  KUCopyKSFFileParts(missing.c_str(), to.c_str())}),
            (Ints{0, 1, 0}));
  EXPECT_EQ(readFile(path), unsaved);  // a texture that cannot be gathered fails before the save
}
