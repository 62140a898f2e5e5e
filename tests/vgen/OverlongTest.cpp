// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Overlong texts, null texts and junk files against the generator's texture
// and icon fields, its shape file and the shape-file normalisers. Output
// buffers are heap blocks of exactly the documented capacity.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "KPathVars.h"
#include "KVGen.h"
#include "Overlong.h"
#include "TestHooks.h"
#include "TestSupport.h"

namespace {

using kutil::test::kLong;
using kutil::test::longText;
using kutil::test::OutBuffer;
using kutil::test::TempDir;
using kutil::test::writeFile;

constexpr std::size_t kTexture = 277;
constexpr std::size_t kIcon = 17;

using Setter = int (CKVGen::*)(const char*);
using Getter = int (CKVGen::*)(char*);
struct Field {
  Setter set;
  Getter get;
  std::size_t capacity;
};
const Field kFields[] = {
    {&CKVGen::KVSetFrontPlaneTexture, &CKVGen::KVGetFrontPlaneTexture, kTexture},
    {&CKVGen::KVSetBackPlaneTexture, &CKVGen::KVGetBackPlaneTexture, kTexture},
    {&CKVGen::KVSetWrapSurfaceTexture, &CKVGen::KVGetWrapSurfaceTexture, kTexture},
    {&CKVGen::KVSetFrontIconIndex, &CKVGen::KVGetFrontIconIndex, kIcon},
    {&CKVGen::KVSetBackIconIndex, &CKVGen::KVGetBackIconIndex, kIcon},
    {&CKVGen::KVSetWrapIconIndex, &CKVGen::KVGetWrapIconIndex, kIcon},
};

std::string fieldOf(CKVGen& gen, const Field& f) {
  OutBuffer out(f.capacity);
  if ((gen.*f.get)(out.data()) == 0) return "<unset>";
  return out.str();
}

class CKVGenOverlong : public ::testing::Test {
 protected:
  void SetUp() override {
    kutil::detail::resetPathVariables();
    gen.KVInitialise();
  }
  void TearDown() override {
    gen.KVTerminate();
    kutil::detail::resetPathVariables();
  }
  void addSquare(CKVGen& g) {
    const _D3DVECTOR corners[] = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    for (const _D3DVECTOR& c : corners) ASSERT_EQ(g.KVAddSeedVertex(&c), 1);
  }
  CKVGen gen;
  TempDir dir;
};

TEST_F(CKVGenOverlong, FieldsKeepTheirCapacityAndReadBackIntoExactBuffers) {
  for (const Field& f : kFields) {
    ASSERT_EQ((gen.*f.set)(longText('f').c_str()), 1);
    EXPECT_EQ(fieldOf(gen, f), longText('f', f.capacity - 1));
  }
  for (const Field& f : kFields) {
    (gen.*f.set)(nullptr);
    OutBuffer out(f.capacity);
    (gen.*f.get)(out.data());
    EXPECT_TRUE(out.terminated() || out.untouched());
    EXPECT_EQ((gen.*f.get)(nullptr), 0);
  }
}

TEST_F(CKVGenOverlong, FullLengthFieldsSurviveSaveAndRestore) {
  const char fills[] = {'a', 'b', 'c', '1', '2', '3'};
  for (int i = 0; i < 6; ++i) (gen.*kFields[i].set)(longText(fills[i]).c_str());
  addSquare(gen);
  const _D3DVECTOR axis = {-FLT_MAX, FLT_MAX, -0.0f};
  ASSERT_EQ(gen.KVAddInstruction(INSTR_EXTRUDE, &axis, -FLT_MAX), 1);
  const std::string file = dir.file("full.ksf");
  ASSERT_EQ(gen.KVSave(file.c_str()), 1);

  CKVGen back;
  back.KVInitialise();
  ASSERT_EQ(back.KVRestore(file.c_str()), 1);
  for (int i = 0; i < 6; ++i) EXPECT_EQ(fieldOf(back, kFields[i]), fieldOf(gen, kFields[i])) << i;
  int count = 0;
  ASSERT_EQ(back.KVGetNumVertices(&count), 1);
  EXPECT_EQ(count, 4);
  int code = -1;
  _D3DVECTOR v = {};
  float magnitude = 0.0f;
  ASSERT_EQ(back.KVGetFirstInstruction(&code, &v, &magnitude), 1);
  EXPECT_EQ(v.x, -FLT_MAX);
  EXPECT_EQ(magnitude, -FLT_MAX);
  back.KVTerminate();
}

TEST_F(CKVGenOverlong, JunkAndOverlongShapeFilesNeverCrash) {
  std::string junk;
  for (int i = 0; i < 4096; ++i) junk += static_cast<char>((i * 131 + 7) & 0xff);
  const std::string inputs[] = {
      "[VGEN]\n[FPT][10000]" + longText('x') + "\n[FIC][10000]" + longText('9') + "\n[NEGV]\n",
      "[VGEN]\n[SED]\n[SEX][10000]" + longText('9') + "\n[DES]\n[NEGV]\n",
      "[VGEN]\n[FPT][99999999999999]x\n[BPT][-5]y\n[INS]\n[CMD][1]3\n[IMG][3]nan\n[SNI]\n",
      junk,
      longText('['),
      "[VGEN]\n" + longText('\n') + "[SED]\n[SEX][4]1e39\n[DES]\n",
  };
  for (const std::string& content : inputs) {
    const std::string file = dir.file("junk.ksf");
    ASSERT_TRUE(writeFile(file, content));
    CKVGen g;
    g.KVInitialise();
    g.KVRestore(file.c_str());
    for (const Field& f : kFields) {
      OutBuffer out(f.capacity);
      if ((g.*f.get)(out.data()) == 1) {
        EXPECT_TRUE(out.terminated());
      }
    }
    g.KVTesselateSeedPlane();
    g.KVGenerate();
    EXPECT_EQ(g.KVSave(dir.file("again.ksf").c_str()), 1);
    g.KVTerminate();
  }
  const std::string texture = "[VGEN]\n[FPT][10000]" + longText('x') + "\n[NEGV]\n";
  const std::string file = dir.file("long.ksf");
  ASSERT_TRUE(writeFile(file, texture));
  gen.KVRestore(file.c_str());  // 0: the file has no seed
  EXPECT_EQ(fieldOf(gen, kFields[0]), longText('x', kTexture - 1));

  const std::string missing = "/" + longText('m') + ".ksf";
  EXPECT_EQ(gen.KVRestore(missing.c_str()), 0);
  EXPECT_EQ(gen.KVRestore(nullptr), 0);
  EXPECT_EQ(gen.KVSave(missing.c_str()), 0);
  EXPECT_EQ(gen.KVSave(nullptr), 0);
}

TEST_F(CKVGenOverlong, VertexSegmentsFitTheirBuffer) {
  const float extremes[] = {-FLT_MAX, FLT_MAX, -INFINITY, NAN, -FLT_MIN, 0.0f};
  for (float a : extremes) {
    const _D3DVECTOR v = {a, -FLT_MAX, a};
    OutBuffer out(140);
    ASSERT_EQ(KUMkVertexSegment(out.data(), &v), 1);
    EXPECT_TRUE(out.terminated());
  }
  EXPECT_EQ(KUMkVertexSegment(nullptr, nullptr), 0);

  _D3DVECTOR v = {7.0f, 7.0f, 7.0f};
  EXPECT_EQ(KUExtractVertexSegment(&v, (longText('1') + ",2,3").c_str()), 1);
  EXPECT_TRUE(std::isinf(v.x));
  EXPECT_EQ(KUExtractVertexSegment(&v, ("1," + longText('0') + ".5,3").c_str()), 1);
  v = {7.0f, 7.0f, 7.0f};
  EXPECT_EQ(KUExtractVertexSegment(&v, ("1,2" + longText(' ')).c_str()), 0);
  EXPECT_EQ(KUExtractVertexSegment(&v, nullptr), 0);
  EXPECT_EQ(v.x, 7.0f);

  OutBuffer error(37);
  TempDir logDir;
  std::FILE* log = std::fopen(logDir.file("log.txt").c_str(), "w");
  ASSERT_NE(log, nullptr);
  EXPECT_EQ(gen.KVCheckIntegrity(error.data(), log), 1);
  std::fclose(log);
  EXPECT_EQ(gen.KVCheckIntegrity(nullptr, nullptr), 1);
}

TEST_F(CKVGenOverlong, NormalisersNeverCutATexture) {
  // A texture near the field's full length, beyond what a path buffer holds.
  const std::string texture = "/" + longText('d', 200) + "/" + longText('t', 70) + ".bmp";
  ASSERT_LT(texture.size(), kTexture);
  const std::string file = dir.file("shape.ksf");
  gen.KVSetFrontPlaneTexture(texture.c_str());
  addSquare(gen);
  ASSERT_EQ(gen.KVSave(file.c_str()), 1);

  KUConvertKSFToRelative(file.c_str());
  CKVGen back;
  back.KVInitialise();
  ASSERT_EQ(back.KVRestore(file.c_str()), 1);
  const std::string after = fieldOf(back, kFields[0]);
  EXPECT_TRUE(after == texture || after == "?KALDOKWQDIR?" + longText('t', 70) + ".bmp") << after;
  back.KVTerminate();

  KUCopyKSFFileParts(file.c_str(), (dir.path() + "/").c_str());
  KUIsKSFFileNormalised(file.c_str());
  const std::string missing = "/" + longText('m') + ".ksf";
  EXPECT_EQ(KUConvertKSFToRelative(missing.c_str()), 0);
  EXPECT_EQ(KUCopyKSFFileParts(missing.c_str(), longText('t').c_str()), 0);
  EXPECT_EQ(KUIsKSFFileNormalised(missing.c_str()), 0);
  EXPECT_EQ(KUConvertKSFToRelative(nullptr), 1);
  EXPECT_EQ(KUCopyKSFFileParts(nullptr, nullptr), 1);
  EXPECT_EQ(KUCopyKSFFileParts(file.c_str(), nullptr), 0);
  EXPECT_EQ(KUIsKSFFileNormalised(nullptr), 0);
}

}  // namespace
