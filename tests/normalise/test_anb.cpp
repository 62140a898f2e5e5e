// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Animation files; their round trip through a package is in test_package.cpp.
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

TEST_F(Animation, OtherNamesSucceedAndMissingAnimationsFail) {
  std::string bitmap = m_dir.file("frame.bmp");
  writeFile(bitmap, "/abs/x.bmp\n");
  EXPECT_EQ(KUConvertANBToRelative(bitmap.c_str()), 1);
  EXPECT_EQ(KUCopyANBFileParts(bitmap.c_str(), "/nowhere/"), 1);
  EXPECT_EQ(KUDeRelativiseANB(bitmap.c_str(), "?KALDOKWQDIR?", "/x/"), 1);
  EXPECT_EQ(readFile(bitmap), "/abs/x.bmp\n");
  EXPECT_EQ(KUConvertANBToRelative(nullptr), 1);
  EXPECT_EQ(KUDeRelativiseANB(nullptr, nullptr, nullptr), 1);

  std::string gone = m_dir.file("gone.anb");
  EXPECT_EQ(KUConvertANBToRelative(gone.c_str()), 0);
  EXPECT_EQ(KUCopyANBFileParts(gone.c_str(), "/nowhere/"), 0);
  EXPECT_EQ(KUDeRelativiseANB(gone.c_str(), "?KALDOKWQDIR?", "/x/"), 0);
  EXPECT_FALSE(fileExists(gone));
  EXPECT_FALSE(fileExists(gone + ".TMP"));
}

TEST_F(Animation, FilesNeedingNoChangeAreNotRewritten) {
  // "\r\n" survives only in a file that was not rewritten.
  const std::string text = "# done\r\n?KALDOKWQDIR?a.bmp\r\n";
  std::string path = m_dir.file("done.anb");
  writeFile(path, text);
  EXPECT_EQ(KUConvertANBToRelative(path.c_str()), 1);
  EXPECT_EQ(readFile(path), text);
  writeFile(path, "/abs/a.bmp\r\n");
  EXPECT_EQ(KUDeRelativiseANB(path.c_str(), "?KALDOKWQDIR?", "/x/"), 1);
  EXPECT_EQ(readFile(path), "/abs/a.bmp\r\n");
}

TEST_F(Animation, FrameThatCannotBeGatheredKeepsItsName) {
  std::string content = makeSubDir(m_dir, "content");
  std::string package = makeSubDir(m_dir, "package");
  writeFile(content + "a.bmp", "a");
  std::string path = package + "walk.anb";
  writeFile(path, content + "a.bmp\n" + content + "missing.bmp\n");
  EXPECT_EQ(KUCopyANBFileParts(path.c_str(), package.c_str()), 0);
  EXPECT_EQ(readLines(path), (Lines{package + "a.bmp", content + "missing.bmp"}));
  EXPECT_EQ(readFile(package + "a.bmp"), "a");
  EXPECT_FALSE(fileExists(path + ".TMP"));
}

}  // namespace
