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
using Lines = std::vector<std::string>;

class SceneList : public NormaliseTest {
 protected:
  const char* list(const std::string& text) {
    writeFile(m_path, text);
    return m_path.c_str();
  }
  TempDir m_dir;
  std::string m_path = m_dir.file("hall.ksl");
};

TEST_F(SceneList, ConvertKeepsCommentsNormalisesLineEndsAndPutsAStaleTemporaryInFront) {
  const std::string home = makeSubDir(m_dir, "kaldo");
  ASSERT_EQ(KUSetNormalisationVariables("/w", "/w/s", "/p", home.substr(0, home.size() - 1).c_str()), 1);
  list("# scene list\r\n\r\n" + home + "viewer.exe\r\n/abs/hall.kwq\r\n");
  EXPECT_EQ(KUIsKSLFileNormalised(m_path.c_str()), 0);
  ASSERT_EQ(KUConvertKSLToRelative(m_path.c_str()), 1);
  EXPECT_EQ(readFile(m_path),
            joinLines({"# scene list", "", "?KALDOHOMEDIR?" + std::string(1, kSep) + "viewer.exe",
                       "?KALDOKWQDIR?hall.kwq"}));
  EXPECT_EQ(KUIsKSLFileNormalised(m_path.c_str()), 1);
  char comment[264];
  KUGetComment(comment);
  EXPECT_EQ(comment, m_path);

  list("/abs/a.kwq\n");
  writeFile(m_path + ".TMP", "old one\nold two\n");
  ASSERT_EQ(KUConvertKSLToRelative(m_path.c_str()), 1);
  EXPECT_EQ(readLines(m_path), (Lines{"old one", "old two", "?KALDOKWQDIR?a.kwq"}));
  EXPECT_FALSE(fileExists(m_path + ".TMP"));
}

TEST_F(SceneList, DeRelativiseRewritesOnlyListsWithVariables) {
  const std::string plain = "# plain\r\n/abs/hall.kwq\r\n";  // "\r\n" survives only if not rewritten
  EXPECT_EQ(KUDeRelativiseKSL(list(plain), "?KALDOKWQDIR?", "/x/"), 1);
  EXPECT_EQ(readFile(m_path), plain);
  // A variable the given pair does not resolve still counts as a change.
  EXPECT_EQ(KUDeRelativiseKSL(list("?KALDOKWQDIR?hall.kwq\r\n"), "?OTHER?", "/x/"), 1);
  EXPECT_EQ(readFile(m_path), joinLines({"?KALDOKWQDIR?hall.kwq"}));
  list("?KALDOKWQDIR?hall.kwq\n# ?KALDOKWQDIR?kept.kwq\n?WINDOWSDIR?\\notepad.exe\n?OTHER?x\n");
  ASSERT_EQ(KUDeRelativiseKSL(m_path.c_str(), "?KALDOKWQDIR?", "/pkg/"), 1);
  EXPECT_EQ(readLines(m_path),
            (Lines{"/pkg/hall.kwq", "# ?KALDOKWQDIR?kept.kwq", "C:\\Windows\\notepad.exe", "?OTHER?x"}));
  EXPECT_FALSE(fileExists(m_path + ".TMP"));
}

TEST_F(SceneList, EmptyMissingAndLongLists) {
  EXPECT_EQ(KUDeRelativiseKSL(list(""), "?KALDOKWQDIR?", "/x/"), 0);
  EXPECT_EQ(KUConvertKSLToRelative(m_path.c_str()), 1);
  EXPECT_EQ(KUCopyKSLFileParts(m_path.c_str(), dirOf(m_dir).c_str()), 1);
  EXPECT_EQ(readFile(m_path), "");
  const std::string gone = m_dir.file("absent.ksl");
  writeFile(gone + ".TMP", "stale\n");
  EXPECT_EQ(KUConvertKSLToRelative(gone.c_str()), 0);
  EXPECT_EQ(KUCopyKSLFileParts(gone.c_str(), dirOf(m_dir).c_str()), 0);
  EXPECT_FALSE(fileExists(gone));
  EXPECT_FALSE(fileExists(gone + ".TMP"));

  // Read in pieces: neither has both a directory and a known ending, so both stay.
  const std::string name = "/" + std::string(300, 'd') + ".kwq";
  ASSERT_EQ(KUConvertKSLToRelative(list(name + "\n")), 1);
  EXPECT_EQ(readLines(m_path), (Lines{name.substr(0, 259), name.substr(259)}));
}

TEST_F(SceneList, CopyPartsGathersFilesAndPointsEveryContentNameIntoThePackage) {
  const std::string source = makeSubDir(m_dir, "content"), package = makeSubDir(m_dir, "package");
  writeFile(source + "hall.kwq", "scene");
  list("# list\n" + source + "hall.kwq\n" + source + "gone.kwq\n/bin/tool.exe\n?KALDOKWQDIR?v.kwq\n");
  ASSERT_EQ(KUCopyKSLFileParts(m_path.c_str(), package.c_str()), 1);
  EXPECT_EQ(readFile(package + "hall.kwq"), "scene");
  EXPECT_EQ(readLines(m_path), (Lines{"# list", package + "hall.kwq", package + "gone.kwq", "/bin/tool.exe",
                                      "?KALDOKWQDIR?v.kwq"}));
}

}  // namespace
