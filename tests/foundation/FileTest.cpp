// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "KFile.h"
#include "KText.h"
#include "TestSupport.h"

namespace {

using namespace kutil::test;

TEST(KUFileType, EndingsInTableOrderAndIconsByContent) {
  const std::pair<const char*, int> names[] = {{"PHOTO.BMP", 3},  {"x.Bmp", 3},      {"readme", 1},
                                               {"saver.scr", 22}, {"notes.txt", 23}, {"panel.CPL", 14},
                                               {"a.kkp", 19},     {"bmp", 1}};
  for (const auto& [name, type] : names) EXPECT_EQ(KUGetFileType(name), type) << name;
  TempDir dir;
  writeFile(dir.file("bm.ico"), "BM345678rest");
  writeFile(dir.file("short.ico"), "BM34567");  // 7 bytes: too short for a bitmap header
  writeFile(dir.file("real.ico"), std::string("\0\0\1\0\1\0\0\0", 8));
  EXPECT_EQ(KUGetFileType(dir.file("bm.ico").c_str()), 3);
  EXPECT_EQ(KUGetFileType(dir.file("short.ico").c_str()), 2);
  EXPECT_EQ(KUGetFileType(dir.file("real.ico").c_str()), 2);
}

TEST(KUFileType, EndingsSkyFacesAndDrives) {
  EXPECT_EQ(KUFileHasEnding("a.bmp", "a.bmp"), 1);
  EXPECT_EQ(KUFileHasEnding("bmp", ".bmp"), 0);
  EXPECT_EQ(KUFileHasEnding("SKY_FW.BMP", "_fw.bmp"), 1);
  EXPECT_EQ(KUFileHasSkyEnding("sky_DN.anb"), 1);
  EXPECT_EQ(KUFileHasSkyEnding("sky_dn.ppm"), 0);
  EXPECT_EQ(KUFileHasSkyEnding("skyfw.bmp"), 0);
  EXPECT_EQ(KUIsADriveName("z:"), 1);
  EXPECT_EQ(KUIsADriveName("C:\\"), 0);
  EXPECT_EQ(KUIsADriveName("1:"), 0);
}

TEST(KUFileOps, TouchAppendAndCount) {
  TempDir dir;
  const std::string path = dir.file("log.txt");
  EXPECT_EQ(KUIsFileReadable(path.c_str()), 0);
  EXPECT_EQ(KUTouch(path.c_str()), 1);
  EXPECT_EQ(KUIsFileReadable(dir.path().c_str()), 0);  // a directory is not a readable file
  EXPECT_EQ(KUAppendLine(path.c_str(), "one\n"), 1);
  EXPECT_EQ(KUAppendLine(path.c_str(), "two"), 1);
  EXPECT_EQ(KUTouch(path.c_str()), 1);  // leaves content alone
  EXPECT_EQ(readLines(path), (std::vector<std::string>{"one", "two"}));
  long count = -1;
  ASSERT_EQ(KUCountLinesInFile(path.c_str(), &count), 1);
  EXPECT_EQ(count, 2);
}

TEST(KUFileOps, ClipEmptiesTheFileOrLeavesAnEmptyTemporary) {
  TempDir dir;
  const std::string path = dir.file("three.log");
  writeFile(path, "a\nb\nc\n");
  EXPECT_EQ(KUClipFile(path.c_str(), 5, 9), 0);  // no line in range
  EXPECT_EQ(readFile(path), "a\nb\nc\n");
  EXPECT_EQ(readFile(path + ".TMP"), "");
  EXPECT_EQ(KUClipFile(path.c_str(), 2, 3), 1);
  EXPECT_EQ(readFile(path), "");
  EXPECT_FALSE(fileExists(path + ".TMP"));
}

TEST(KUPaths, PathFromFileAndImageComponents) {
  const std::pair<const char*, const char*> paths[] = {{"C:\\dir\\sub\\a.txt", "C:\\dir\\sub\\"},
                                                       {"/home/user/a.b.txt", "/home/user/"},
                                                       {"D:a.txt", "D:"},
                                                       {"a.txt", ""}};
  for (const auto& [file, dir] : paths) {
    char out[264] = "keep";
    EXPECT_EQ(KUGetPathFromFile(out, file), 1);
    EXPECT_STREQ(out, dir);
  }
  char name[264] = "", extra[264] = "keep";
  int index = -1;
  EXPECT_EQ(KUGetImageComponents("pic.bmp|3", name, &index, extra), 1);
  EXPECT_STREQ(name, "pic.bmp");
  EXPECT_EQ(index, 3);
  EXPECT_STREQ(extra, "keep");
  EXPECT_EQ(KUGetImageComponents("pic.bmp|x|more", name, &index, extra), 1);
  EXPECT_EQ(index, 0);  // the conversion's result is not checked
  EXPECT_STREQ(extra, "more");
  EXPECT_EQ(KUGetImageComponents("pic.bmp|", name, &index, extra), 0);
}

}  // namespace
