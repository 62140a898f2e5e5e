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
using kutil::test::kSep;
using kutil::test::makeSubDir;
using kutil::test::readFile;
using kutil::test::readLines;
using kutil::test::TempDir;
using kutil::test::writeFile;
using Lines = std::vector<std::string>;

class SceneList : public kutil::test::NormaliseTest {
 protected:
  std::string list(const std::string& text) {
    writeFile(m_path, text);
    return m_path;
  }
  TempDir m_dir;
  std::string m_path = m_dir.file("hall.ksl");
};

TEST_F(SceneList, ConvertKeepsCommentsAndNormalisesLineEnds) {
  std::string home = makeSubDir(m_dir, "kaldo");
  ASSERT_EQ(KUSetNormalisationVariables("/w", "/w/s", "/p", home.substr(0, home.size() - 1).c_str()), 1);
  std::string scenes = makeSubDir(m_dir, "scenes");
  list("# scene list\r\n\r\n" + home + "viewer.exe\r\n" + scenes + "hall.kwq\r\n");
  EXPECT_EQ(KUIsKSLFileNormalised(m_path.c_str()), 0);
  ASSERT_EQ(KUConvertKSLToRelative(m_path.c_str()), 1);
  EXPECT_EQ(readFile(m_path),
            joinLines({"# scene list", "", "?KALDOHOMEDIR?" + std::string(1, kSep) + "viewer.exe",
                       "?KALDOKWQDIR?hall.kwq"}));
  EXPECT_EQ(KUIsKSLFileNormalised(m_path.c_str()), 1);
  EXPECT_FALSE(fileExists(m_path + ".TMP"));
  char comment[264];
  ASSERT_EQ(KUGetComment(comment), 1);
  EXPECT_EQ(comment, m_path);
}

TEST_F(SceneList, StaleTemporaryLinesEndUpInFront) {
  list("/abs/a.kwq\n");
  writeFile(m_path + ".TMP", "old one\nold two\n");
  ASSERT_EQ(KUConvertKSLToRelative(m_path.c_str()), 1);
  EXPECT_EQ(readLines(m_path), (Lines{"old one", "old two", "?KALDOKWQDIR?a.kwq"}));
  EXPECT_FALSE(fileExists(m_path + ".TMP"));
}

TEST_F(SceneList, DeRelativiseRewritesOnlyListsWithVariables) {
  // The "\r\n" line ends show that the file was not rewritten.
  const std::string plain = "# plain\r\n/abs/hall.kwq\r\n";
  list(plain);
  EXPECT_EQ(KUDeRelativiseKSL(m_path.c_str(), "?KALDOKWQDIR?", "/x/"), 1);
  EXPECT_EQ(readFile(m_path), plain);
  // A variable the given pair does not resolve still counts as a change.
  list("?KALDOKWQDIR?hall.kwq\r\n");
  EXPECT_EQ(KUDeRelativiseKSL(m_path.c_str(), "?OTHER?", "/x/"), 1);
  EXPECT_EQ(readFile(m_path), joinLines({"?KALDOKWQDIR?hall.kwq"}));

  list("?KALDOKWQDIR?hall.kwq\n# ?KALDOKWQDIR?kept.kwq\n?WINDOWSDIR?\\notepad.exe\n?OTHER?x\n");
  ASSERT_EQ(KUDeRelativiseKSL(m_path.c_str(), "?KALDOKWQDIR?", "/pkg/"), 1);
  EXPECT_EQ(readLines(m_path),
            (Lines{"/pkg/hall.kwq", "# ?KALDOKWQDIR?kept.kwq", "C:\\Windows\\notepad.exe", "?OTHER?x"}));
  EXPECT_FALSE(fileExists(m_path + ".TMP"));
}

TEST_F(SceneList, EmptyAndMissingLists) {
  list("");
  EXPECT_EQ(KUDeRelativiseKSL(m_path.c_str(), "?KALDOKWQDIR?", "/x/"), 0);
  EXPECT_EQ(KUConvertKSLToRelative(m_path.c_str()), 1);
  EXPECT_EQ(KUCopyKSLFileParts(m_path.c_str(), dirOf(m_dir).c_str()), 1);
  EXPECT_EQ(readFile(m_path), "");
  EXPECT_FALSE(fileExists(m_path + ".TMP"));

  std::string gone = m_dir.file("absent.ksl");
  writeFile(gone + ".TMP", "stale\n");
  EXPECT_EQ(KUIsKSLFileNormalised(gone.c_str()), 0);
  EXPECT_EQ(KUConvertKSLToRelative(gone.c_str()), 0);
  EXPECT_EQ(KUDeRelativiseKSL(gone.c_str(), "?KALDOKWQDIR?", "/x/"), 0);
  EXPECT_EQ(KUCopyKSLFileParts(gone.c_str(), dirOf(m_dir).c_str()), 0);
  EXPECT_FALSE(fileExists(gone));
  EXPECT_FALSE(fileExists(gone + ".TMP"));
  EXPECT_EQ(KUConvertKSLToRelative(nullptr), 1);
  EXPECT_EQ(KUCopyKSLFileParts("?KALDOKWQDIR?a.ksl", nullptr), 1);
}

TEST_F(SceneList, LongLinesAreReadInPieces) {
  std::string name = "/" + std::string(300, 'd') + ".kwq";
  list(name + "\n");
  ASSERT_EQ(KUConvertKSLToRelative(m_path.c_str()), 1);
  // Neither piece has both a directory and a known ending, so both stay as they were.
  EXPECT_EQ(readLines(m_path), (Lines{name.substr(0, 259), name.substr(259)}));
}

TEST_F(SceneList, CopyPartsGathersFilesAndRewritesTheirNames) {
  std::string source = makeSubDir(m_dir, "content");
  std::string package = makeSubDir(m_dir, "package");
  writeFile(source + "hall.kwq", "scene");
  list("# list\n" + source + "hall.kwq\n" + source + "gone.kwq\n/bin/tool.exe\n?KALDOKWQDIR?v.kwq\n");
  ASSERT_EQ(KUCopyKSLFileParts(m_path.c_str(), package.c_str()), 1);
  EXPECT_EQ(readFile(package + "hall.kwq"), "scene");
  // A name that could not be copied still points into the package.
  EXPECT_EQ(readLines(m_path), (Lines{"# list", package + "hall.kwq", package + "gone.kwq", "/bin/tool.exe",
                                      "?KALDOKWQDIR?v.kwq"}));
  EXPECT_FALSE(fileExists(m_path + ".TMP"));
}

}  // namespace
