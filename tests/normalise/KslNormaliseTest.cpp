// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>

#include "KNormalise.h"
#include "KPathVars.h"
#include "KText.h"
#include "NormaliseTestSupport.h"

namespace {

using namespace kutil::test;

class SceneList : public NormaliseTest {};

TEST_F(SceneList, EachOperationRewritesNameLinesByItsOwnRules) {
  TempDir dir;
  const std::string list = dir.file("hall.ksl"), source = makeSubDir(dir, "content");
  const std::string package = makeSubDir(dir, "package"), missing = dir.file("absent.ksl");
  writeFile(source + "hall.kwq", "scene");
  enum Op { Convert, DeRelativise, Copy };
  const struct {
    Op op;
    const char* variable;  // for DeRelativise, resolved to "/pkg/"
    std::string before, stale;
    int status;
    std::string after;
    int normalised;
  } rows[] = {
      {Convert, "",
       "# scene list\r\n\r\nC:\\Program Files\\kaldo3d\\kaldo\\viewer.exe\r\nD:\\scenes\\hall.kwq\r\n", "", 1,
       joinLines({"# scene list", "", "?KALDOHOMEDIR?\\viewer.exe", "?KALDOKWQDIR?hall.kwq"}), 1},
      {Convert, "", "/abs/a.kwq\n", "old one\nold two\n", 1,
       "old one\nold two\n" + joinLines({"?KALDOKWQDIR?a.kwq"}), 1},
      {DeRelativise, "?KALDOKWQDIR?", "# plain\r\n/abs/hall.kwq\r\n", "", 1, "# plain\r\n/abs/hall.kwq\r\n",
       0},
      {DeRelativise, "?OTHER?", "?KALDOKWQDIR?hall.kwq\r\n", "", 1, joinLines({"?KALDOKWQDIR?hall.kwq"}), 1},
      {DeRelativise, "?KALDOKWQDIR?",
       "?KALDOKWQDIR?hall.kwq\n# ?KALDOKWQDIR?kept.kwq\n?WINDOWSDIR?\\notepad.exe\n?OTHER?x\n", "", 1,
       joinLines({"/pkg/hall.kwq", "# ?KALDOKWQDIR?kept.kwq", "C:\\Windows\\notepad.exe", "?OTHER?x"}), 0},
      {DeRelativise, "?KALDOKWQDIR?", "", "", 0, "", 0},
      {Copy, "",
       "# list\n" + source + "hall.kwq\n" + source + "gone.kwq\n/bin/tool.exe\n?KALDOKWQDIR?v.kwq\n", "", 1,
       joinLines(
           {"# list", package + "hall.kwq", package + "gone.kwq", "/bin/tool.exe", "?KALDOKWQDIR?v.kwq"}),
       1},
  };
  for (const auto& r : rows) {
    SCOPED_TRACE(r.before);
    writeFile(list, r.before);
    if (!r.stale.empty()) writeFile(list + ".TMP", r.stale);
    KUSetComment("before");
    const int status = r.op == Convert        ? KUConvertKSLToRelative(list.c_str())
                       : r.op == DeRelativise ? KUDeRelativiseKSL(list.c_str(), r.variable, "/pkg/")
                                              : KUCopyKSLFileParts(list.c_str(), package.c_str());
    EXPECT_EQ(status, r.status);
    EXPECT_EQ(readFile(list), r.after);
    EXPECT_FALSE(fileExists(list + ".TMP"));
    char comment[264];
    KUGetComment(comment);
    // Names the list for the host's report, or the last file a copy tried.
    const bool copied = r.op == Copy && !r.before.empty();
    EXPECT_EQ(comment, r.op == DeRelativise ? "before" : copied ? source + "gone.kwq" : list);
    EXPECT_EQ(KUIsKSLFileNormalised(list.c_str()), r.normalised);
  }
  EXPECT_EQ(readFile(package + "hall.kwq"), "scene");

  writeFile(missing + ".TMP", "stale\n");
  EXPECT_EQ((std::vector<int>{
                KUConvertKSLToRelative(missing.c_str()), KUDeRelativiseKSL(missing.c_str(), "?A?", "/"),
                KUCopyKSLFileParts(missing.c_str(), package.c_str()), KUIsKSLFileNormalised(missing.c_str()),
                KUConvertKSLToRelative(""), KUDeRelativiseKSL("", "?A?", "/"), KUCopyKSLFileParts("", "/"),
                KUCopyKSLFileParts("?KALDOKWQDIR?x.ksl", "/"), KUIsKSLFileNormalised("")}),
            (std::vector<int>{0, 0, 0, 0, 1, 1, 1, 1, 0}));
  EXPECT_FALSE(fileExists(missing));
  EXPECT_FALSE(fileExists(missing + ".TMP"));
}

}  // namespace
