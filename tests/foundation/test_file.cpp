// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "KFile.h"
#include "KText.h"
#include "TestSupport.h"

namespace {

using kutil::test::fileExists;
using kutil::test::readFile;
using kutil::test::TempDir;
using kutil::test::writeFile;

TEST(KUFileType, EndingsInTableOrder) {
  EXPECT_EQ(KUGetFileType("PHOTO.BMP"), 3);
  EXPECT_EQ(KUGetFileType("photo.bmp"), 3);
  EXPECT_EQ(KUGetFileType("x.Bmp"), 3);
  EXPECT_EQ(KUGetFileType("readme"), 1);
  EXPECT_EQ(KUGetFileType("saver.scr"), 22);
  EXPECT_EQ(KUGetFileType("notes.txt"), 23);
  EXPECT_EQ(KUGetFileType("panel.CPL"), 14);
  EXPECT_EQ(KUGetFileType("a.kkp"), 19);
  EXPECT_EQ(KUGetFileType("bmp"), 1);
  EXPECT_EQ(KUGetFileType(nullptr), 1);
}

TEST(KUFileType, IconIsBitmapOnlyByContent) {
  TempDir dir;
  const std::string bm = dir.file("bm.ico");
  const std::string ico = dir.file("real.ico");
  const std::string shortBm = dir.file("short.ico");
  writeFile(bm, "BM345678rest");
  writeFile(ico, std::string("\0\0\1\0\1\0\0\0", 8));
  writeFile(shortBm, "BM34567");  // 7 bytes: too short
  EXPECT_EQ(KUGetFileType(bm.c_str()), 3);
  EXPECT_EQ(KUGetFileType(ico.c_str()), 2);
  EXPECT_EQ(KUGetFileType(shortBm.c_str()), 2);
  EXPECT_EQ(KUGetFileType(dir.file("missing.ico").c_str()), 2);
  EXPECT_EQ(KUIsBitmap(bm.c_str()), 1);
  EXPECT_EQ(KUIsBitmap(""), 0);
}

TEST(KUFileType, EndingsAndDrives) {
  EXPECT_EQ(KUFileHasEnding("a.bmp", "a.bmp"), 1);
  EXPECT_EQ(KUFileHasEnding("bmp", ".bmp"), 0);
  EXPECT_EQ(KUFileHasEnding("SKY_FW.BMP", "_fw.bmp"), 1);
  EXPECT_EQ(KUFileHasSkyEnding("sky_DN.anb"), 1);
  EXPECT_EQ(KUFileHasSkyEnding("sky_dn.ppm"), 0);
  EXPECT_EQ(KUFileHasSkyEnding("skyfw.bmp"), 0);
  EXPECT_EQ(KUIsADriveName("C:"), 1);
  EXPECT_EQ(KUIsADriveName("z:"), 1);
  EXPECT_EQ(KUIsADriveName("C:\\"), 0);
  EXPECT_EQ(KUIsADriveName("1:"), 0);
  EXPECT_EQ(KUIsADriveName(""), 0);
  EXPECT_EQ(KUIsADriveName(nullptr), 0);
}

TEST(KUFileOps, TouchAppendReadableAndCount) {
  TempDir dir;
  const std::string path = dir.file("log.txt");
  EXPECT_EQ(KUIsFileReadable(path.c_str()), 0);
  EXPECT_EQ(KUTouch(path.c_str()), 1);
  EXPECT_EQ(KUIsFileReadable(path.c_str()), 1);
  EXPECT_EQ(KUIsFileReadable(dir.path().c_str()), 0);
  EXPECT_EQ(KUAppendLine(path.c_str(), "one\n"), 1);
  EXPECT_EQ(KUAppendLine(path.c_str(), "two"), 1);
  EXPECT_EQ(KUTouch(path.c_str()), 1);  // leaves content alone
  EXPECT_EQ(kutil::test::readLines(path), (std::vector<std::string>{"one", "two"}));  // text mode
  long count = -1;
  ASSERT_EQ(KUCountLinesInFile(path.c_str(), &count), 1);
  EXPECT_EQ(count, 2);

  // A line longer than the 266-byte read buffer counts twice.
  writeFile(path, std::string(300, 'x') + "\nshort\n");
  ASSERT_EQ(KUCountLinesInFile(path.c_str(), &count), 1);
  EXPECT_EQ(count, 3);

  count = 7;
  EXPECT_EQ(KUCountLinesInFile(dir.file("none").c_str(), &count), 0);
  EXPECT_EQ(count, 7);
  EXPECT_EQ(KUTouch(""), 0);
  EXPECT_EQ(KUAppendLine(dir.file("no/such/dir.txt").c_str(), "x"), 0);
}

TEST(KUFileOps, ClipEmptiesTheFileWhenALineLiesInRange) {
  TempDir dir;
  const std::string path = dir.file("three.log");
  writeFile(path, "a\nb\nc\n");
  EXPECT_EQ(KUClipFile(path.c_str(), 2, 3), 1);
  EXPECT_TRUE(fileExists(path));
  EXPECT_EQ(readFile(path), "");
  EXPECT_FALSE(fileExists(path + ".TMP"));
}

TEST(KUFileOps, ClipOutOfRangeKeepsFileAndLeavesTemporary) {
  TempDir dir;
  const std::string path = dir.file("three.log");
  writeFile(path, "a\nb\nc\n");
  EXPECT_EQ(KUClipFile(path.c_str(), 5, 9), 0);
  EXPECT_EQ(readFile(path), "a\nb\nc\n");
  EXPECT_TRUE(fileExists(path + ".TMP"));
  EXPECT_EQ(readFile(path + ".TMP"), "");

  EXPECT_EQ(KUClipFile(dir.file("missing.log").c_str(), 1, 9), 0);
  std::string tooLong = dir.file(std::string(256, 'n'));
  EXPECT_EQ(KUClipFile(tooLong.c_str(), 1, 9), 0);
  EXPECT_EQ(KUClipFile(nullptr, 1, 9), 0);
}

TEST(KUPaths, PathFromFileKeepsDriveAndTrailingSeparator) {
  char out[264] = "";
  EXPECT_EQ(KUGetPathFromFile(out, "C:\\dir\\sub\\a.txt"), 1);
  EXPECT_STREQ(out, "C:\\dir\\sub\\");
  EXPECT_EQ(KUGetPathFromFile(out, "/home/user/a.b.txt"), 1);
  EXPECT_STREQ(out, "/home/user/");
  EXPECT_EQ(KUGetPathFromFile(out, "D:a.txt"), 1);
  EXPECT_STREQ(out, "D:");
  EXPECT_EQ(KUGetPathFromFile(out, "a.txt"), 1);
  EXPECT_STREQ(out, "");
  std::string longPath = "/" + std::string(600, 'd') + "/x.txt";
  EXPECT_EQ(KUGetPathFromFile(out, longPath.c_str()), 1);
  EXPECT_LE(std::strlen(out), 260u);
}

TEST(KUPaths, ImageComponents) {
  char name[264] = "";
  char extra[264] = "keep";
  int index = -1;
  EXPECT_EQ(KUGetImageComponents("pic.bmp|3", name, &index, extra), 1);
  EXPECT_STREQ(name, "pic.bmp");
  EXPECT_EQ(index, 3);
  EXPECT_STREQ(extra, "keep");
  EXPECT_EQ(KUGetImageComponents("pic.bmp|x|more", name, &index, extra), 1);
  EXPECT_EQ(index, 0);  // the conversion's result is not checked
  EXPECT_STREQ(extra, "more");
  std::strcpy(name, "keep");
  EXPECT_EQ(KUGetImageComponents("pic.bmp", name, &index, extra), 0);
  EXPECT_EQ(KUGetImageComponents("pic.bmp|", name, &index, extra), 0);
  EXPECT_STREQ(name, "keep");
}

class KUCopyToTargetTest : public ::testing::Test {
 protected:
  void SetUp() override { targetDir = target.file(""); }
  TempDir source;
  TempDir target;
  std::string targetDir;  // with its trailing separator
};

TEST_F(KUCopyToTargetTest, ProgramsAndVariablisedNamesAreNotTouched) {
  char out[264] = "keep";
  EXPECT_EQ(KUCopyToTarget("?KALDOKWQDIR?a.bmp", targetDir.c_str(), out), 1);
  EXPECT_EQ(KUCopyToTarget("tool.exe", targetDir.c_str(), out), 1);
  EXPECT_EQ(KUCopyToTarget("lib.DLL", targetDir.c_str(), out), 1);
  EXPECT_EQ(KUCopyToTarget("", targetDir.c_str(), out), 1);
  EXPECT_EQ(KUCopyToTarget("a.bmp", "", out), 1);
  EXPECT_STREQ(out, "keep");
}

TEST_F(KUCopyToTargetTest, CopiesOnceAndReportsTheNewName) {
  const std::string bmp = source.file("photo.bmp");
  writeFile(bmp, "BM-original");
  char out[264] = "";
  ASSERT_EQ(KUCopyToTarget(bmp.c_str(), targetDir.c_str(), out), 1);
  EXPECT_EQ(std::string(out), targetDir + "photo.bmp");
  EXPECT_EQ(readFile(out), "BM-original");
  char comment[264] = "";
  KUGetComment(comment);
  EXPECT_EQ(std::string(comment), bmp);

  // A second gathering never overwrites and still succeeds with the same name.
  writeFile(bmp, "BM-changed");
  char again[264] = "";
  ASSERT_EQ(KUCopyToTarget(bmp.c_str(), targetDir.c_str(), again), 1);
  EXPECT_STREQ(again, out);
  EXPECT_EQ(readFile(out), "BM-original");
}

TEST_F(KUCopyToTargetTest, MissingSourceFailsUnlessAlreadyGathered) {
  char out[264] = "";
  const std::string missing = source.file("gone.wav");
  EXPECT_EQ(KUCopyToTarget(missing.c_str(), targetDir.c_str(), out), 0);
  EXPECT_EQ(std::string(out), targetDir + "gone.wav");
  writeFile(targetDir + "gone.wav", "RIFF");
  EXPECT_EQ(KUCopyToTarget(missing.c_str(), targetDir.c_str(), out), 1);
}

TEST_F(KUCopyToTargetTest, SkyFaceBringsItsCompanions) {
  for (const char* face : {"fw", "rh", "bk", "lf", "up"}) writeFile(source.file(std::string("sky_") + face + ".bmp"), face);
  writeFile(targetDir + "sky_up.bmp", "already");
  char out[264] = "";
  ASSERT_EQ(KUCopyToTarget(source.file("sky_rh.bmp").c_str(), targetDir.c_str(), out), 1);
  EXPECT_EQ(readFile(targetDir + "sky_rh.bmp"), "rh");
  EXPECT_EQ(readFile(targetDir + "sky_fw.bmp"), "fw");
  EXPECT_EQ(readFile(targetDir + "sky_bk.bmp"), "bk");
  EXPECT_EQ(readFile(targetDir + "sky_lf.bmp"), "lf");
  EXPECT_EQ(readFile(targetDir + "sky_up.bmp"), "already");
  EXPECT_FALSE(fileExists(targetDir + "sky_dn.bmp"));
}

}  // namespace
