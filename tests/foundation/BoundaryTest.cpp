// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Out of memory at the API boundary: calls that once allocated either no longer
// allocate at all and succeed, or report their failure status; none throws, none
// loses data, and the library works again once memory is back.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "Allocation.h"
#include "KFile.h"
#include "KInfo.h"
#include "KNormalise.h"
#include "KText.h"
#include "TestSupport.h"

namespace {

using namespace kutil::test;

// Every result is taken while allocation fails and checked afterwards, when
// the test framework may allocate again.
TEST(Boundary, TextFileAndGatherCallsNeedNoMemory) {
  TempDir dir, to;
  const std::string log = dir.file("clip.log"), source = dir.file("wall.bmp"), target = to.path() + "/";
  ASSERT_TRUE(writeFile(log, "one\ntwo\nthree\n") && writeFile(source, "BM-picture"));
  char segment[64], inPlace[64] = "value", newName[264] = "";
  char path[264] = "C:\\Program Files\\kaldo3d\\kaldo\\bin\\viewer.exe";
  int length = 0, got[5] = {};
  {
    AllocationFailure noMemory;
    got[0] = KUMkLineSegment(segment, "[TX]", "hello", &length);
    got[1] = KUMkLineSegment(inPlace, "[TX]", inPlace, nullptr);  // the value is the output
    got[2] = KUSubstitute(path, "c:/program files/kaldo3d/kaldo", "?KALDOHOMEDIR?");
    got[3] = KUClipFile(log.c_str(), 2, 3);
    got[4] = KUCopyToTarget(source.c_str(), target.c_str(), newName);
  }
  EXPECT_EQ((std::vector<int>{1, 1, 1, 1, 1, 12}),
            (std::vector<int>{got[0], got[1], got[2], got[3], got[4], length}));
  EXPECT_EQ(seq({segment, inPlace, path, readFile(log), newName == target + "wall.bmp",
                 readFile(target + "wall.bmp")}),
            "[TX][5]hello [TX][5]value ?KALDOHOMEDIR?\\bin\\viewer.exe  1 BM-picture");
}

// The rewriters keep their temporary name and rewrite in standard-library
// objects: out of memory they report 0 before touching any file.
TEST(Boundary, SceneListRewritesFailWholeAndWorkAgainAfterwards) {
  TempDir dir, to;
  const std::string list = dir.file("hall.ksl"), content = "# hall\nD:\\scenes\\hall.kwq\n",
                    target = to.path() + "/";
  ASSERT_TRUE(writeFile(list, content));
  int converted = 1, gathered = 1;
  {
    AllocationFailure noMemory;
    converted = KUConvertKSLToRelative(list.c_str());
    gathered = KUCopyKSLFileParts(list.c_str(), target.c_str());
  }
  EXPECT_EQ((std::vector<int>{0, 0}), (std::vector<int>{converted, gathered}));
  EXPECT_EQ(readFile(list), content);
  EXPECT_FALSE(fileExists(list + ".TMP"));

  ASSERT_EQ(KUConvertKSLToRelative(list.c_str()), 1);
  EXPECT_EQ(readLines(list), (std::vector<std::string>{"# hall", "?KALDOKWQDIR?hall.kwq"}));
}

TEST(Boundary, InfoSheetsReportOutOfMemoryAndWorkAgainAfterwards) {
  TempDir dir;
  const std::string sheets = dir.file("english.kif");
  ASSERT_TRUE(writeFile(sheets, "[iid][1]7[itx][5]Hello\n"));
  CKaldoInfo info;
  int loaded = 1;
  {
    AllocationFailure noMemory;
    loaded = info.KILoadInfoSheets(sheets.c_str());  // a sheet's text is a string
  }
  EXPECT_EQ(loaded, 0);
  ASSERT_EQ(info.KILoadInfoSheets(sheets.c_str()), 1);
  EXPECT_STREQ(info.KIFetchStringForID(7), "Hello");
}

}  // namespace
