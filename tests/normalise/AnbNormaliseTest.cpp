// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Animation files; their round trip through a package is in PackageTest.cpp.
#include <gtest/gtest.h>

#include <string>

#include "KNormalise.h"
#include "NormaliseTestSupport.h"

namespace {

using kutil::test::fileExists;
using kutil::test::readFile;
using kutil::test::writeFile;

class Animation : public kutil::test::NormaliseTest {
 protected:
  kutil::test::TempDir m_dir;
};

TEST_F(Animation, OtherNamesSucceedUntouchedAndUnchangedFilesAreNotRewritten) {
  const std::string bitmap = m_dir.file("frame.bmp"), path = m_dir.file("done.anb");
  writeFile(bitmap, "/abs/x.bmp\n");
  EXPECT_EQ(KUConvertANBToRelative(bitmap.c_str()), 1);
  EXPECT_EQ(KUCopyANBFileParts(bitmap.c_str(), "/nowhere/"), 1);
  EXPECT_EQ(KUDeRelativiseANB(bitmap.c_str(), "?KALDOKWQDIR?", "/x/"), 1);
  EXPECT_EQ(readFile(bitmap), "/abs/x.bmp\n");
  EXPECT_EQ(KUCopyANBFileParts(path.c_str(), "/nowhere/"), 0);  // missing
  EXPECT_FALSE(fileExists(path));

  // "\r\n" survives only in a file that was not rewritten.
  writeFile(path, "# done\r\n?KALDOKWQDIR?a.bmp\r\n");
  EXPECT_EQ(KUConvertANBToRelative(path.c_str()), 1);
  EXPECT_EQ(readFile(path), "# done\r\n?KALDOKWQDIR?a.bmp\r\n");
  writeFile(path, "/abs/a.bmp\r\n");
  EXPECT_EQ(KUDeRelativiseANB(path.c_str(), "?KALDOKWQDIR?", "/x/"), 1);
  EXPECT_EQ(readFile(path), "/abs/a.bmp\r\n");
}

TEST_F(Animation, FrameThatCannotBeGatheredKeepsItsName) {
  const std::string content = kutil::test::makeSubDir(m_dir, "content");
  const std::string package = kutil::test::makeSubDir(m_dir, "package"), path = package + "walk.anb";
  writeFile(content + "a.bmp", "a");
  writeFile(path, content + "a.bmp\n" + content + "missing.bmp\n");
  EXPECT_EQ(KUCopyANBFileParts(path.c_str(), package.c_str()), 0);
  EXPECT_EQ(kutil::test::readLines(path),
            (std::vector<std::string>{package + "a.bmp", content + "missing.bmp"}));
  EXPECT_EQ(readFile(package + "a.bmp"), "a");
  EXPECT_FALSE(fileExists(path + ".TMP"));
}

TEST(KUCopySkyBoxFaces, CopiesOtherFacesUnderTheNewBaseKeepingCase) {
  kutil::test::TempDir from, to;
  for (const char* face : {"FW", "RH", "BK", "LF", "UP", "DN"})
    writeFile(from.file(std::string("BOX_") + face + ".ANB"), face);
  const std::string newName = to.file("hall_fw.anb");
  writeFile(newName, "copied");
  ASSERT_EQ(KUCopySkyBoxFaces(from.file("BOX_FW.ANB").c_str(), newName.c_str()), 1);
  EXPECT_EQ(readFile(newName), "copied");  // its own face is left alone
  EXPECT_EQ(readFile(to.file("hall_rh.anb")), "RH");
  EXPECT_EQ(readFile(to.file("hall_dn.anb")), "DN");
#ifndef _WIN32
  EXPECT_FALSE(fileExists(to.file("hall_RH.anb")));  // the new name's case, not the source's
#endif
  EXPECT_EQ(KUCopySkyBoxFaces(from.file("a.bmp").c_str(), to.file("b_fw.bmp").c_str()), 0);
}

}  // namespace
