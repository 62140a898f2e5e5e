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
  EXPECT_EQ(seq({KUGetFileType(dir.file("bm.ico").c_str()), KUGetFileType(dir.file("short.ico").c_str()),
                 KUGetFileType(dir.file("real.ico").c_str())}),
            "3 2 2");
}

TEST(KUFileType, EndingsSkyFacesAndDrives) {
  EXPECT_EQ(seq({KUFileHasEnding("a.bmp", "a.bmp"), KUFileHasEnding("bmp", ".bmp"),
                 KUFileHasEnding("SKY_FW.BMP", "_fw.bmp"), KUFileHasSkyEnding("sky_DN.anb"),
                 KUFileHasSkyEnding("sky_dn.ppm"), KUFileHasSkyEnding("skyfw.bmp"), KUIsADriveName("z:"),
                 KUIsADriveName("C:\\"), KUIsADriveName("1:")}),
            "1 0 1 1 0 0 1 0 0");
}

TEST(KUFileOps, TouchAppendAndCount) {
  TempDir dir;
  const std::string path = dir.file("log.txt");
  // A directory is not a readable file; touching again leaves the content alone.
  EXPECT_EQ(
      seq({KUIsFileReadable(path.c_str()), KUTouch(path.c_str()), KUIsFileReadable(dir.path().c_str()),
           KUAppendLine(path.c_str(), "one\n"), KUAppendLine(path.c_str(), "two"), KUTouch(path.c_str())}),
      "0 1 0 1 1 1");
  EXPECT_EQ(readLines(path), (std::vector<std::string>{"one", "two"}));
  long count = -1;
  ASSERT_EQ(KUCountLinesInFile(path.c_str(), &count), 1);
  EXPECT_EQ(count, 2);
}

TEST(KUFileOps, ClipEmptiesTheFileOrLeavesAnEmptyTemporary) {
  TempDir dir;
  const std::string path = dir.file("three.log");
  writeFile(path, "a\nb\nc\n");
  // No line in range: the file is kept and an empty temporary is left; in range, the file is emptied.
  EXPECT_EQ(seq({KUClipFile(path.c_str(), 5, 9), readFile(path), readFile(path + ".TMP"),
                 KUClipFile(path.c_str(), 2, 3), readFile(path), fileExists(path + ".TMP")}),
            "0 a\nb\nc\n  1  0");
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
  // The index's conversion is not checked.
  EXPECT_EQ(seq({KUGetImageComponents("pic.bmp|3", name, &index, extra), name, index, extra,
                 KUGetImageComponents("pic.bmp|x|more", name, &index, extra), index, extra,
                 KUGetImageComponents("pic.bmp|", name, &index, extra)}),
            "1 pic.bmp 3 keep 1 0 more 0");
}

}  // namespace
