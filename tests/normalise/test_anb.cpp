// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>

#include "KNormalise.h"
#include "NormaliseFixture.h"

namespace {

using kutil::test::fileExists;
using kutil::test::makeSubDir;
using kutil::test::readFile;
using kutil::test::readLines;
using kutil::test::TempDir;
using kutil::test::writeFile;
using Lines = std::vector<std::string>;

class Animation : public kutil::test::NormaliseTest {
 protected:
  TempDir m_dir;
};

TEST_F(Animation, NamesOtherThanAnimationsAreLeftAlone) {
  std::string bitmap = m_dir.file("frame.bmp");
  writeFile(bitmap, "/abs/x.bmp\n");
  EXPECT_EQ(KUConvertANBToRelative(bitmap.c_str()), 1);
  EXPECT_EQ(KUCopyANBFileParts(bitmap.c_str(), "/nowhere/"), 1);
  EXPECT_EQ(KUDeRelativiseANB(bitmap.c_str(), "?KALDOKWQDIR?", "/x/"), 1);
  EXPECT_EQ(readFile(bitmap), "/abs/x.bmp\n");
  EXPECT_EQ(KUConvertANBToRelative(nullptr), 1);
  EXPECT_EQ(KUCopyANBFileParts(nullptr, nullptr), 1);
  EXPECT_EQ(KUDeRelativiseANB(nullptr, nullptr, nullptr), 1);
  // A name still in portable form cannot be opened and needs nothing.
  EXPECT_EQ(KUConvertANBToRelative("?KALDOKWQDIR?a.anb"), 1);
}

TEST_F(Animation, MissingAnimationFileFails) {
  std::string path = m_dir.file("gone.anb");
  EXPECT_EQ(KUConvertANBToRelative(path.c_str()), 0);
  EXPECT_EQ(KUCopyANBFileParts(path.c_str(), "/nowhere/"), 0);
  EXPECT_EQ(KUDeRelativiseANB(path.c_str(), "?KALDOKWQDIR?", "/x/"), 0);
  EXPECT_FALSE(fileExists(path));
  EXPECT_FALSE(fileExists(path + ".TMP"));
}

TEST_F(Animation, ConvertAndDeRelativiseRoundTrip) {
  std::string frames = makeSubDir(m_dir, "frames");
  std::string path = m_dir.file("fire.anb");
  writeFile(path, "# fire\r\n\r\n" + frames + "fire1.bmp\r\n" + frames + "fire2.bmp\r\n");
  ASSERT_EQ(KUConvertANBToRelative(path.c_str()), 1);
  EXPECT_EQ(readLines(path), (Lines{"# fire", "", "?KALDOKWQDIR?fire1.bmp", "?KALDOKWQDIR?fire2.bmp"}));
  EXPECT_FALSE(fileExists(path + ".TMP"));
  ASSERT_EQ(KUDeRelativiseANB(path.c_str(), "?KALDOKWQDIR?", "/pkg/"), 1);
  EXPECT_EQ(readLines(path), (Lines{"# fire", "", "/pkg/fire1.bmp", "/pkg/fire2.bmp"}));
}

TEST_F(Animation, FilesNeedingNoChangeAreNotRewritten) {
  // "\r\n" survives only in a file that was not rewritten.
  const std::string text = "# done\r\n?KALDOKWQDIR?a.bmp\r\n";
  std::string path = m_dir.file("done.anb");
  writeFile(path, text);
  EXPECT_EQ(KUConvertANBToRelative(path.c_str()), 1);
  EXPECT_EQ(readFile(path), text);
  std::string plain = m_dir.file("plain.anb");
  writeFile(plain, "/abs/a.bmp\r\n");
  EXPECT_EQ(KUDeRelativiseANB(plain.c_str(), "?KALDOKWQDIR?", "/x/"), 1);
  EXPECT_EQ(readFile(plain), "/abs/a.bmp\r\n");
}

TEST_F(Animation, CopyPartsGathersFramesAndWholeSkyBoxes) {
  std::string content = makeSubDir(m_dir, "content");
  std::string package = makeSubDir(m_dir, "package");
  for (const char* face : {"fw", "rh", "bk", "lf", "up", "dn"})
    writeFile(content + "sky_" + face + ".bmp", face);
  writeFile(content + "cloud.bmp", "cloud");
  std::string path = package + "sky.anb";
  writeFile(path, "# sky\n" + content + "sky_fw.bmp\n" + content + "cloud.bmp\n");
  ASSERT_EQ(KUCopyANBFileParts(path.c_str(), package.c_str()), 1);
  EXPECT_EQ(readLines(path), (Lines{"# sky", package + "sky_fw.bmp", package + "cloud.bmp"}));
  EXPECT_EQ(readFile(package + "cloud.bmp"), "cloud");
  for (const char* face : {"fw", "rh", "bk", "lf", "up", "dn"})
    EXPECT_EQ(readFile(package + "sky_" + face + ".bmp"), face) << face;
}

TEST_F(Animation, FrameThatCannotBeGatheredKeepsItsName) {
  std::string content = makeSubDir(m_dir, "content");
  std::string package = makeSubDir(m_dir, "package");
  writeFile(content + "a.bmp", "a");
  std::string path = package + "walk.anb";
  writeFile(path, content + "a.bmp\n" + content + "missing.bmp\n");
  EXPECT_EQ(KUCopyANBFileParts(path.c_str(), package.c_str()), 0);
  EXPECT_EQ(readLines(path), (Lines{package + "a.bmp", content + "missing.bmp"}));
  EXPECT_FALSE(fileExists(path + ".TMP"));
}

}  // namespace
