// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>

#include "KText.h"
#include "KVGen.h"
#include "TestSupport.h"
#include "VGenTestUtil.h"

using kutil::test::Gen;
using kutil::test::TempDir;
using kutil::test::vec;

namespace {
void saveShape(const std::string& path, const std::string& front, const std::string& wrap = "") {
  Gen gen;
  kutil::test::addSeed(gen.g, {vec(0, 0, 0), vec(1, 0, 0), vec(1, 1, 0)});
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
  ASSERT_TRUE(kutil::test::writeFile(texture, "BM......"));
  saveShape(path, texture);
  const std::string targetDir = target.path() + "/";
  ASSERT_EQ(KUCopyKSFFileParts(path.c_str(), targetDir.c_str()), 1);
  EXPECT_TRUE(kutil::test::fileExists(target.file("front.bmp")));
  EXPECT_EQ(frontTexture(path), targetDir + "front.bmp");

  EXPECT_EQ(KUConvertKSFToRelative(""), 1);
  EXPECT_EQ(KUConvertKSFToRelative("?KALDOKWQDIR?shape.ksf"), 1);
  EXPECT_EQ(KUCopyKSFFileParts("", "x"), 1);
  const std::string missing = dir.file("absent.ksf");
  EXPECT_EQ(KUConvertKSFToRelative(missing.c_str()), 0);
  EXPECT_EQ(KUCopyKSFFileParts(missing.c_str(), dir.path().c_str()), 0);
  EXPECT_EQ(KUIsKSFFileNormalised(missing.c_str()), 0);
  EXPECT_EQ(KUIsKSFFileNormalised(""), 0);
}
