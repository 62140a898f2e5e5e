// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Out of memory at the API boundary: calls that once allocated either no longer
// allocate at all and succeed, or report their failure status; none throws, none
// loses data, and the library works again once memory is back.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "../services/ServicesTestSupport.h"
#include "Allocation.h"
#include "KFile.h"
#include "KInfo.h"
#include "KNormalise.h"
#include "KRegistry.h"
#include "KText.h"
#include "TestSupport.h"

namespace {

using kutil::test::AllocationFailure;
using kutil::test::fileExists;
using kutil::test::readFile;
using kutil::test::TempDir;
using kutil::test::writeFile;

// Every result is taken while allocation fails and checked afterwards, when
// the test framework may allocate again.
TEST(Boundary, TextFileAndGatherCallsNeedNoMemory) {
  TempDir dir, to;
  const std::string log = dir.file("clip.log"), source = dir.file("wall.bmp"), target = to.path() + "/";
  ASSERT_TRUE(writeFile(log, "one\ntwo\nthree\n") && writeFile(source, "BM-picture"));
  char segment[64], inPlace[64] = "value", newName[264] = "";
  char path[264] = "C:\\Program Files\\kaldo3d\\kaldo\\bin\\viewer.exe";
  int length = 0, made = 0, madeInPlace = 0, substituted = 0, clipped = 0, copied = 0;
  {
    AllocationFailure noMemory;
    made = KUMkLineSegment(segment, "[TX]", "hello", &length);
    madeInPlace = KUMkLineSegment(inPlace, "[TX]", inPlace, nullptr);  // the value is the output
    substituted = KUSubstitute(path, "c:/program files/kaldo3d/kaldo", "?KALDOHOMEDIR?");
    clipped = KUClipFile(log.c_str(), 2, 3);
    copied = KUCopyToTarget(source.c_str(), target.c_str(), newName);
  }
  EXPECT_EQ(1, made);
  EXPECT_STREQ(segment, "[TX][5]hello");
  EXPECT_EQ(length, 12);
  EXPECT_EQ(1, madeInPlace);
  EXPECT_STREQ(inPlace, "[TX][5]value");
  EXPECT_EQ(1, substituted);
  EXPECT_STREQ(path, "?KALDOHOMEDIR?\\bin\\viewer.exe");
  EXPECT_EQ(1, clipped);
  EXPECT_EQ(readFile(log), "");
  EXPECT_EQ(1, copied);
  EXPECT_EQ(std::string(newName), target + "wall.bmp");
  EXPECT_EQ(readFile(target + "wall.bmp"), "BM-picture");
}

// The rewriters keep their temporary name and rewrite in standard-library
// objects: out of memory they report 0 before touching any file.
TEST(Boundary, SceneListRewritesFailWholeAndWorkAgainAfterwards) {
  TempDir dir, to;
  const std::string list = dir.file("hall.ksl");
  const std::string content = "# hall\nD:\\scenes\\hall.kwq\n";
  ASSERT_TRUE(writeFile(list, content));
  const std::string target = to.path() + "/";
  int converted = 1, gathered = 1;
  {
    AllocationFailure noMemory;
    converted = KUConvertKSLToRelative(list.c_str());
    gathered = KUCopyKSLFileParts(list.c_str(), target.c_str());
  }
  EXPECT_EQ(converted, 0);
  EXPECT_EQ(gathered, 0);
  EXPECT_EQ(readFile(list), content);
  EXPECT_FALSE(fileExists(list + ".TMP"));

  ASSERT_EQ(KUConvertKSLToRelative(list.c_str()), 1);
  EXPECT_EQ(kutil::test::readLines(list), (std::vector<std::string>{"# hall", "?KALDOKWQDIR?hall.kwq"}));
}

TEST(Boundary, InfoSheetsAndSettingsReportOutOfMemoryAndWorkAgainAfterwards) {
  TempDir dir;
  kutil::test::RegistrySandbox registry;
  const std::string sheets = dir.file("english.kif");
  ASSERT_TRUE(writeFile(sheets, "[iid][1]7[itx][5]Hello\n"));
  CKaldoInfo info;
  int loaded = 1, stored = 0, read = 0;
  int resolution = -1;
  {
    AllocationFailure noMemory;
    loaded = info.KILoadInfoSheets(sheets.c_str());  // a sheet's text is a string
    stored = KUSetRegResolution(800);
    read = KUGetRegResolution(&resolution);
  }
  EXPECT_EQ(loaded, 0);
#if defined(_WIN32)
  const int settings = 1;  // the Win32 registry allocates nothing of ours
#else
  const int settings = 0;  // the POSIX store keeps key paths in strings: out of memory it refuses both
#endif
  EXPECT_EQ(settings, stored);
  EXPECT_EQ(settings, read);
  EXPECT_EQ(settings ? 800 : -1, resolution);

  ASSERT_EQ(info.KILoadInfoSheets(sheets.c_str()), 1);
  EXPECT_STREQ(info.KIFetchStringForID(7), "Hello");
  ASSERT_EQ(KUSetRegResolution(640), 1);
  ASSERT_EQ(KUGetRegResolution(&resolution), 1);
  EXPECT_EQ(resolution, 640);
}

}  // namespace
