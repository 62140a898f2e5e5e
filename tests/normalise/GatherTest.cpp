// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Copying referenced files into a package, sky boxes and animations; their round trip through a
// package is in PackageTest.cpp.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "KNormalise.h"
#include "NormaliseTestSupport.h"

namespace {

using namespace kutil::test;
using Ints = std::vector<int>;

class Gather : public NormaliseTest {};

TEST_F(Gather, CopyToTargetCopiesOnceNeverOverwritesAndSkipsPrograms) {
  TempDir source, target;
  const std::string to = target.file(""), bmp = source.file("photo.bmp"), gone = source.file("gone.wav");
  char out[264] = "keep";
  EXPECT_EQ((Ints{KUCopyToTarget("?KALDOKWQDIR?a.bmp", to.c_str(), out),
                  KUCopyToTarget("tool.exe", to.c_str(), out), KUCopyToTarget("lib.DLL", to.c_str(), out),
                  KUCopyToTarget("a.cpl", to.c_str(), out), KUCopyToTarget("", to.c_str(), out),
                  KUCopyToTarget("a.bmp", "", out)}),
            (Ints{1, 1, 1, 1, 1, 1}));
  EXPECT_STREQ(out, "keep");
  writeFile(bmp, "BM-original");
  ASSERT_EQ(KUCopyToTarget(bmp.c_str(), to.c_str(), out), 1);
  EXPECT_EQ(std::string(out), to + "photo.bmp");
  EXPECT_EQ(readFile(out), "BM-original");
  writeFile(bmp, "BM-changed");
  // A copy already there is kept; a missing source fails unless it was gathered before.
  EXPECT_EQ(seq({KUCopyToTarget(bmp.c_str(), to.c_str(), out), readFile(out),
                 KUCopyToTarget(gone.c_str(), to.c_str(), out), out == to + "gone.wav",
                 (writeFile(to + "gone.wav", "RIFF"), KUCopyToTarget(gone.c_str(), to.c_str(), out))}),
            "1 BM-original 0 1 1");
}

TEST_F(Gather, SkyFaceBringsItsCompanionsUnderTheNewNameKeepingCase) {
  TempDir from, to;
  for (const char* face : {"FW", "RH", "BK", "LF", "UP"})
    writeFile(from.file(std::string("SKY_") + face + ".BMP"), face);
  writeFile(to.file("hall_up.bmp"), "already");
  char out[264] = "";
  ASSERT_EQ(KUCopyToTarget(from.file("SKY_RH.BMP").c_str(), to.file("").c_str(), out), 1);
  for (const char* face : {"FW", "RH", "BK", "LF"})
    EXPECT_EQ(readFile(to.file(std::string("SKY_") + face + ".BMP")), face);
  // A face already there is never overwritten; the named face itself is the caller's to copy.
  EXPECT_EQ(seq({KUCopySkyBoxFaces(from.file("SKY_FW.BMP").c_str(), to.file("hall_fw.bmp").c_str()),
                 readFile(to.file("hall_rh.bmp")), readFile(to.file("hall_up.bmp")),
                 fileExists(to.file("hall_fw.bmp")), fileExists(to.file("hall_dn.bmp")),
                 KUCopySkyBoxFaces(from.file("a.bmp").c_str(), to.file("b_fw.bmp").c_str())}),
            "1 RH already 0 0 0");
}

TEST_F(Gather, AnimationsGatherTheirFramesAndAFrameThatCannotBeGatheredFailsTheWhole) {
  TempDir dir;
  const std::string content = makeSubDir(dir, "content"), package = makeSubDir(dir, "package");
  const std::string bitmap = dir.file("frame.bmp"), path = package + "walk.anb";
  writeFile(bitmap, "/abs/x.bmp\n");
  EXPECT_EQ((Ints{KUConvertANBToRelative(bitmap.c_str()), KUCopyANBFileParts(bitmap.c_str(), "/nowhere/"),
                  KUDeRelativiseANB(bitmap.c_str(), "?KALDOKWQDIR?", "/x/"),
                  KUCopyANBFileParts(path.c_str(), "/n/"), KUCopyANBFileParts(path.c_str(), "")}),
            (Ints{1, 1, 1, 0, 1}));  // other names and no target succeed untouched; a missing animation fails
  EXPECT_EQ(readFile(bitmap), "/abs/x.bmp\n");
  // A frame that cannot be gathered keeps its name and fails the whole.
  writeFile(content + "a.bmp", "a");
  writeFile(path, content + "a.bmp\n" + content + "missing.bmp\n");
  EXPECT_EQ(KUCopyANBFileParts(path.c_str(), package.c_str()), 0);
  EXPECT_EQ(readLines(path), (std::vector<std::string>{package + "a.bmp", content + "missing.bmp"}));
  EXPECT_EQ(readFile(package + "a.bmp"), "a");
  EXPECT_FALSE(fileExists(path + ".TMP"));
}

}  // namespace
