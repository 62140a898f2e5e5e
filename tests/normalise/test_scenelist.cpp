// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>

#include "KNormalise.h"
#include "KPathVars.h"
#include "KText.h"
#include "NormaliseFixture.h"

namespace {

using kutil::test::dirOf;
using kutil::test::fileExists;
using kutil::test::joinLines;
using kutil::test::kNl;
using kutil::test::kSep;
using kutil::test::makeSubDir;
using kutil::test::readFile;
using kutil::test::readLines;
using kutil::test::TempDir;
using kutil::test::writeFile;

class SceneList : public kutil::test::NormaliseTest {
 protected:
  // Home and programs directories inside the test's own tree.
  void useTreeVariables() {
    m_home = makeSubDir(m_dir, "progs" + std::string(1, kSep) + "kaldo");
    std::string home = m_home.substr(0, m_home.size() - 1);
    std::string progs = m_dir.file("progs");
    ASSERT_EQ(KUSetNormalisationVariables("/nowhere/win", "/nowhere/win/sys", progs.c_str(), home.c_str()), 1);
  }
  std::string list(const std::string& text) {
    std::string path = m_dir.file("hall.ksl");
    writeFile(path, text);
    return path;
  }

  TempDir m_dir;
  std::string m_home;
};

TEST_F(SceneList, ConvertKeepsCommentsAndMakesNamesPortable) {
  useTreeVariables();
  std::string scenes = makeSubDir(m_dir, "scenes");
  std::string path = list("# scene list\r\n\r\n" + m_home + "viewer.exe\r\n" + scenes + "hall.kwq\r\n");
  EXPECT_EQ(KUIsKSLFileNormalised(path.c_str()), 0);
  ASSERT_EQ(KUConvertKSLToRelative(path.c_str()), 1);
  EXPECT_EQ(readFile(path),
            joinLines({"# scene list", "", "?KALDOHOMEDIR?" + std::string(1, kSep) + "viewer.exe", "?KALDOKWQDIR?hall.kwq"}));
  EXPECT_EQ(KUIsKSLFileNormalised(path.c_str()), 1);
  EXPECT_FALSE(fileExists(path + ".TMP"));
  char comment[264];
  ASSERT_EQ(KUGetComment(comment), 1);
  EXPECT_EQ(comment, path);
}

TEST_F(SceneList, EmptyListIsAFailureOnlyForDeRelativising) {
  std::string path = list("");
  EXPECT_EQ(KUDeRelativiseKSL(path.c_str(), "?KALDOKWQDIR?", "/x/"), 0);
  EXPECT_EQ(KUConvertKSLToRelative(path.c_str()), 1);
  EXPECT_EQ(KUCopyKSLFileParts(path.c_str(), dirOf(m_dir).c_str()), 1);
  EXPECT_TRUE(fileExists(path));
  EXPECT_EQ(readFile(path), "");
  EXPECT_FALSE(fileExists(path + ".TMP"));
}

TEST_F(SceneList, DeRelativiseLeavesAListWithoutVariablesUntouched) {
  // The "\r\n" line ends show that the file was not rewritten.
  const std::string text = "# plain\r\n/abs/hall.kwq\r\n";
  std::string path = list(text);
  EXPECT_EQ(KUDeRelativiseKSL(path.c_str(), "?KALDOKWQDIR?", "/x/"), 1);
  EXPECT_EQ(readFile(path), text);
  EXPECT_FALSE(fileExists(path + ".TMP"));
}

TEST_F(SceneList, DeRelativiseResolvesTableAndCallerVariables) {
  std::string path = list("?KALDOKWQDIR?hall.kwq\n# ?KALDOKWQDIR?kept.kwq\n?WINDOWSDIR?\\notepad.exe\n?OTHER?x\n");
  ASSERT_EQ(KUDeRelativiseKSL(path.c_str(), "?KALDOKWQDIR?", "/pkg/"), 1);
  EXPECT_EQ(readLines(path), (std::vector<std::string>{"/pkg/hall.kwq", "# ?KALDOKWQDIR?kept.kwq",
                                                       "C:\\Windows\\notepad.exe", "?OTHER?x"}));
  EXPECT_EQ(KUIsKSLFileNormalised(path.c_str()), 0);
}

TEST_F(SceneList, StaleTemporaryLinesEndUpInFront) {
  std::string path = list("/abs/a.kwq\n");
  writeFile(path + ".TMP", "old one\nold two\n");
  ASSERT_EQ(KUConvertKSLToRelative(path.c_str()), 1);
  EXPECT_EQ(readLines(path), (std::vector<std::string>{"old one", "old two", "?KALDOKWQDIR?a.kwq"}));
  EXPECT_FALSE(fileExists(path + ".TMP"));
}

TEST_F(SceneList, LongLinesAreReadInPieces) {
  std::string name = "/" + std::string(300, 'd') + ".kwq";
  std::string path = list(name + "\n");
  ASSERT_EQ(KUConvertKSLToRelative(path.c_str()), 1);
  std::vector<std::string> lines = readLines(path);
  ASSERT_EQ(lines.size(), 2u);
  // Neither piece has a directory and a known ending, so both stay as they were.
  EXPECT_EQ(lines[0], name.substr(0, 259));
  EXPECT_EQ(lines[1], name.substr(259));
}

TEST_F(SceneList, MissingListGivesZeroAndLeavesNoTemporaryFile) {
  std::string path = m_dir.file("absent.ksl");
  writeFile(path + ".TMP", "stale\n");
  EXPECT_EQ(KUIsKSLFileNormalised(path.c_str()), 0);
  EXPECT_EQ(KUConvertKSLToRelative(path.c_str()), 0);
  EXPECT_FALSE(fileExists(path + ".TMP"));
  EXPECT_EQ(KUDeRelativiseKSL(path.c_str(), "?KALDOKWQDIR?", "/x/"), 0);
  EXPECT_EQ(KUCopyKSLFileParts(path.c_str(), dirOf(m_dir).c_str()), 0);
  EXPECT_FALSE(fileExists(path));
  EXPECT_FALSE(fileExists(path + ".TMP"));
  // Nothing to do is success.
  EXPECT_EQ(KUConvertKSLToRelative(""), 1);
  EXPECT_EQ(KUConvertKSLToRelative(nullptr), 1);
  EXPECT_EQ(KUDeRelativiseKSL(nullptr, nullptr, nullptr), 1);
  EXPECT_EQ(KUCopyKSLFileParts("?KALDOKWQDIR?a.ksl", nullptr), 1);
  EXPECT_EQ(KUIsKSLFileNormalised(nullptr), 0);
}

TEST_F(SceneList, CopyPartsGathersFilesAndRewritesTheirNames) {
  std::string source = makeSubDir(m_dir, "content");
  std::string package = makeSubDir(m_dir, "package");
  writeFile(source + "hall.kwq", "scene");
  std::string path = list("# list\n" + source + "hall.kwq\n" + source + "gone.kwq\n/bin/tool.exe\n?KALDOKWQDIR?v.kwq\n");
  ASSERT_EQ(KUCopyKSLFileParts(path.c_str(), package.c_str()), 1);
  EXPECT_EQ(readFile(package + "hall.kwq"), "scene");
  EXPECT_EQ(readFile(source + "hall.kwq"), "scene");
  // A name that could not be copied still points into the package.
  EXPECT_EQ(readLines(path), (std::vector<std::string>{"# list", package + "hall.kwq", package + "gone.kwq",
                                                       "/bin/tool.exe", "?KALDOKWQDIR?v.kwq"}));
  EXPECT_FALSE(fileExists(path + ".TMP"));
  // A second run finds the copy in place and keeps the names.
  ASSERT_EQ(KUCopyKSLFileParts(path.c_str(), package.c_str()), 1);
  EXPECT_EQ(readLines(path)[1], package + "hall.kwq");
}

}  // namespace
