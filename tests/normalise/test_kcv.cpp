// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "KDecide.h"
#include "KNormalise.h"
#include "KPathVars.h"
#include "KText.h"
#include "KVGen.h"
#include "NormaliseFixture.h"

namespace {

using kutil::test::fileExists;
using kutil::test::kSep;
using kutil::test::makeSubDir;
using kutil::test::readFile;
using kutil::test::rowTexts;
using kutil::test::shapeTextures;
using kutil::test::TempDir;
using kutil::test::writeFile;
using kutil::test::writeShape;
using Texts = std::vector<std::string>;

std::string comment() {
  char text[264] = "";
  KUGetComment(text);
  return text;
}

class BehaviourFile : public kutil::test::NormaliseTest {
 protected:
  std::string kvc(const std::string& name, const std::string& text) {
    std::string path = m_dir.file(name);
    writeFile(path, text);
    return path;
  }
  TempDir m_dir;
};

TEST_F(BehaviourFile, ConvertRelativisesFileActionsButNeverCallOrPing) {
  std::string c = makeSubDir(m_dir, "content");
  std::string home = makeSubDir(m_dir, "kaldo");
  ASSERT_EQ(KUSetNormalisationVariables("/w", "/w/s", "/p", home.substr(0, home.size() - 1).c_str()), 1);
  std::string path = kvc("door.kvc", "ON select REPLACE \"" + c +
                                         "box.kwq\"\n"
                                         "ON open PLAY \"" +
                                         c +
                                         "bump.wav\"\n"
                                         "ON collide RUN \"" +
                                         home +
                                         "tool.exe\"\n"
                                         "ON copy GOTO \"" +
                                         c +
                                         "hall.kwq\"\n"
                                         "ON cut PLAYBACK \"" +
                                         c +
                                         "walk.kiq\"\n"
                                         "ON delete USERGOTO \"" +
                                         c +
                                         "x.kwq\"\n"
                                         "ON ping CALL \"" +
                                         c +
                                         "spin.wav\"\n"
                                         "ON property PING \"" +
                                         c +
                                         "obj.kwq\"\n"
                                         "ON impact LOAD \"?KALDOKWQDIR?done.kwq\"\n");
  ASSERT_EQ(KUConvertKCVToRelative(path.c_str()), 1);
  EXPECT_EQ(rowTexts(path), (Texts{"?KALDOKWQDIR?box.kwq", "?KALDOKWQDIR?bump.wav",
                                   "?KALDOHOMEDIR?" + std::string(1, kSep) + "tool.exe",
                                   "?KALDOKWQDIR?hall.kwq", "?KALDOKWQDIR?walk.kiq", "?KALDOKWQDIR?x.kwq",
                                   c + "spin.wav", c + "obj.kwq", "?KALDOKWQDIR?done.kwq"}));
  EXPECT_EQ(comment(), path);
  EXPECT_FALSE(fileExists(path + ".TMP"));
  EXPECT_EQ(KUIsKCVFileNormalised(path.c_str()), 1);
}

TEST_F(BehaviourFile, NamesThatWouldNotFitTheRowStayAsTheyAre) {
  ASSERT_EQ(KUSetNormalisationVariables("/w", "/w/s", "/p", "/p/k"), 1);
  const std::string longName = "/p/" + std::string(250, 'x') + ".exe";  // the variable adds 14 characters
  CKDecide table;
  table.DEInitialise();
  for (const std::string& text : {longName, std::string("/p/tool.exe")}) {
    CKActionRow* row = new CKActionRow();
    row->ARSetRowType(KAR_ROW_ON);
    row->ARSetEvent(KAR_EVENT_SELECT);
    row->ARSetAction(KAR_ACTION_RUN);
    row->ARSetTextData(text.c_str());
    table.DEAddActionRow(row);
  }
  ASSERT_EQ(KURelativiseKCV(&table), 1);
  Texts texts;
  CKActionRow* row = nullptr;
  for (int ok = table.DESelectFirstActionRow(&row); ok; ok = table.DESelectNextActionRow(&row)) {
    char text[KAR_TEXTDATA_LEN + 1] = "";
    row->ARGetTextData(text);
    texts.push_back(text);
  }
  EXPECT_EQ(texts, (Texts{longName, "?WINDOWSPROGDIR?/tool.exe"}));
}

TEST_F(BehaviourFile, CallAndPingOnlyFileIsStoredBackUnchanged) {
  std::string path = kvc("calls.kvc", "ON select CALL \"/a/spin.kvc\"\nIN spin PING \"/a/b.kwq\"\n");
  CKDecide table;
  table.DEInitialise();
  ASSERT_EQ(table.DELoadFromFile(path.c_str()), 1);
  ASSERT_EQ(table.DEStoreToFile(path.c_str()), 1);  // in the writer's own form
  const std::string stored = readFile(path);
  EXPECT_EQ(KUConvertKCVToRelative(path.c_str()), 0);  // the CALL names a behaviour file that is not there
  EXPECT_EQ(readFile(path), stored);
  EXPECT_EQ(KUIsKCVFileNormalised(path.c_str()), 0);
}

TEST_F(BehaviourFile, FilesNamingEachOtherAreEachConvertedOnce) {
  std::string a = m_dir.file("a.kvc");
  std::string b = m_dir.file("b.kvc");
  writeFile(a, "ON select LOAD \"" + b + "\"\n");
  writeFile(b, "ON select LOAD \"" + a + "\" ON open PLAY \"" + m_dir.file("s.wav") + "\"\n");
  ASSERT_EQ(KUConvertKCVToRelative(a.c_str()), 1);
  EXPECT_EQ(rowTexts(a), (Texts{"?KALDOKWQDIR?b.kvc"}));
  EXPECT_EQ(rowTexts(b), (Texts{"?KALDOKWQDIR?a.kvc", "?KALDOKWQDIR?s.wav"}));
  EXPECT_EQ(comment(), b);

  // CALL texts never become variables, so neither file ever counts as
  // normalised; the chain must end all the same.
  writeFile(a, "ON select CALL \"" + b + "\"\n");
  writeFile(b, "ON select CALL \"" + a + "\"\n");
  EXPECT_EQ(KUConvertKCVToRelative(a.c_str()), 1);
}

TEST_F(BehaviourFile, FailedNestedConversionFailsAfterTheOuterFileIsRewritten) {
  std::string path = kvc("outer.kvc", "ON select LOAD \"" + m_dir.file("gone.kvc") + "\"\n");
  EXPECT_EQ(KUConvertKCVToRelative(path.c_str()), 0);
  EXPECT_EQ(rowTexts(path), (Texts{"?KALDOKWQDIR?gone.kvc"}));
  EXPECT_EQ(comment(), m_dir.file("gone.kvc"));

  // The last nested conversion decides, also when its file was met before.
  writeFile(m_dir.file("fine.kvc"), "ON select PLAY \"/a/b.wav\"\n");
  writeFile(path, "ON select LOAD \"" + m_dir.file("gone.kvc") + "\"\nON open LOAD \"" + m_dir.file("fine.kvc") +
                      "\"\nON copy LOAD \"" + m_dir.file("gone.kvc") + "\"\n");
  EXPECT_EQ(KUConvertKCVToRelative(path.c_str()), 0);
  EXPECT_EQ(comment(), m_dir.file("gone.kvc"));
}

TEST_F(BehaviourFile, FilesThatDoNotLoadOrStoreAreKeptAsTheyWere) {
  // "ON bump" loads with no event, which the writer refuses.
  const std::string unstorable = "ON select PLAY \"/c/a.wav\"\nON bump STOP\n";
  const std::string unloadable = "ON select PLAY \"/c/a.wav\"\nON open MOVE SIDEWAYS\n";
  std::string first = kvc("first.kvc", unstorable);
  std::string second = kvc("second.kvc", unloadable);
  EXPECT_EQ(KUConvertKCVToRelative(first.c_str()), 0);
  EXPECT_EQ(KUConvertKCVToRelative(second.c_str()), 0);
  EXPECT_EQ(readFile(first), unstorable);
  EXPECT_EQ(readFile(second), unloadable);
  EXPECT_FALSE(fileExists(first + ".TMP"));
  std::string withVariable = kvc("third.kvc", "ON select PLAY \"?KALDOKWQDIR?a.wav\"\nON bump STOP\n");
  EXPECT_EQ(KUDeRelativiseKCV(withVariable.c_str()), 0);
  EXPECT_EQ(readFile(withVariable), "ON select PLAY \"?KALDOKWQDIR?a.wav\"\nON bump STOP\n");
  EXPECT_EQ(KUCopyKCVFileParts(second.c_str()), 0);
  EXPECT_EQ(readFile(second), unloadable);
  EXPECT_EQ(KUIsKCVFileNormalised(kvc("empty.kvc", "# no rows\n").c_str()), 0);
  EXPECT_EQ(KUIsKCVFileNormalised(m_dir.file("gone.kvc").c_str()), 0);
  EXPECT_EQ(KUCopyKCVFileParts(m_dir.file("gone.kvc").c_str()), 0);
  // Nothing to do, or nothing to do it on.
  EXPECT_EQ(KUConvertKCVToRelative(""), 1);
  EXPECT_EQ(KUConvertKCVToRelative("?KALDOKWQDIR?x.kvc"), 1);
  EXPECT_EQ(KUCopyKCVFileParts(nullptr), 1);
  EXPECT_EQ(KURelativiseKCV(nullptr), 0);
  EXPECT_EQ(KUDeRelativiseKCV("/x/", nullptr), 0);
  EXPECT_EQ(KUCopyKCVForNormalise("/x/", nullptr), 0);
  CKDecide empty;
  empty.DEInitialise();
  EXPECT_EQ(KURelativiseKCV(&empty), 0);
}

TEST_F(BehaviourFile, DeRelativiseUsesTheFilesOwnDirectory) {
  std::string path = kvc("door.kvc",
                         "ON select PLAY \"?KALDOKWQDIR?bump.wav\"\n"
                         "ON open RUN \"?WINDOWSDIR?\\notepad.exe\"\n"
                         "ON ping CALL spin\n");
  ASSERT_EQ(KUDeRelativiseKCV(path.c_str()), 1);
  EXPECT_EQ(rowTexts(path), (Texts{m_dir.file("bump.wav"), "C:\\Windows\\notepad.exe", "spin"}));

  // Without variables: success, and the file (comments and all) is not rewritten.
  const std::string plain = "# keep me\nON select PLAY \"/a/b.wav\"\n";
  std::string other = kvc("plain.kvc", plain);
  EXPECT_EQ(KUDeRelativiseKCV(other.c_str()), 1);
  EXPECT_EQ(readFile(other), plain);
  CKDecide table;
  table.DEInitialise();
  ASSERT_EQ(table.DELoadFromFile(other.c_str()), 1);
  EXPECT_EQ(KUDeRelativiseKCV("/x/", &table), 0);
  EXPECT_EQ(KUDeRelativiseKCV(m_dir.file("gone.kvc").c_str()), 0);
}

TEST_F(BehaviourFile, DeRelativiseShapeFileFailsWhenNothingChanges) {
  std::string shape = m_dir.file("box.ksf");
  std::string dir = m_dir.path() + kSep;
  writeShape(shape, "?KALDOKWQDIR?wood.bmp", "", "?WINDOWSDIR?\\w.bmp");
  ASSERT_EQ(KUDeRelativiseKSF(dir.c_str(), shape.c_str()), 1);
  EXPECT_EQ(shapeTextures(shape), (Texts{dir + "wood.bmp", "", "C:\\Windows\\w.bmp"}));
  // Nothing left to change: 0, and the file stays as it is.
  const std::string saved = readFile(shape);
  EXPECT_EQ(KUDeRelativiseKSF(dir.c_str(), shape.c_str()), 0);
  EXPECT_EQ(readFile(shape), saved);
  EXPECT_EQ(KUDeRelativiseKSF(dir.c_str(), m_dir.file("gone.ksf").c_str()), 0);
  EXPECT_FALSE(fileExists(shape + ".TMP"));
}

TEST_F(BehaviourFile, GatheringTwiceRecopiesFilesButNotBehaviourFiles) {
  std::string source = makeSubDir(m_dir, "source");
  std::string target = makeSubDir(m_dir, "target");
  writeFile(source + "a.wav", "a1");
  writeFile(source + "c.wav", "c1");
  writeFile(source + "b.kvc", "ON select PLAY \"" + source + "c.wav\"\n");
  writeFile(target + "d.wav", "already here");
  const std::string rows = "ON select PLAY \"" + source +
                           "a.wav\"\n"
                           "ON open LOAD \"" +
                           source +
                           "b.kvc\"\n"
                           "ON copy PLAY \"" +
                           source +
                           "missing.wav\"\n"
                           "ON cut PLAY \"" +
                           target +
                           "d.wav\"\n"
                           "ON ping CALL spin\n";
  std::string path = kvc("door.kvc", rows);
  auto gather = [&]() {
    CKDecide table;
    table.DEInitialise();
    ASSERT_EQ(table.DELoadFromFile(path.c_str()), 1);
    ASSERT_EQ(KUCopyKCVForNormalise(target.c_str(), &table), 1);
    ASSERT_EQ(table.DEStoreToFile(m_dir.file("out.kvc").c_str()), 1);
  };
  gather();
  EXPECT_EQ(rowTexts(m_dir.file("out.kvc")),
            (Texts{target + "a.wav", target + "b.kvc", source + "missing.wav", target + "d.wav", "spin"}));
  EXPECT_EQ(readFile(target + "a.wav"), "a1");
  EXPECT_EQ(readFile(target + "c.wav"), "c1");
  EXPECT_EQ(readFile(target + "d.wav"), "already here");  // copied onto itself, not emptied
  EXPECT_EQ(rowTexts(target + "b.kvc"), (Texts{target + "c.wav"}));

  writeFile(source + "a.wav", "a2");
  writeFile(source + "b.kvc", "ON select PLAY \"" + source + "other.wav\"\n");
  gather();
  EXPECT_EQ(readFile(target + "a.wav"), "a2");
  EXPECT_EQ(rowTexts(target + "b.kvc"), (Texts{target + "c.wav"}));
  EXPECT_FALSE(fileExists(target + "a.wav.TMP"));

  // Into a directory that does not exist: nothing copies, the rows point there
  // all the same and the comment names the behaviour file it tried to gather.
  const std::string nowhere = target + "nowhere" + kSep;
  CKDecide table;
  table.DEInitialise();
  ASSERT_EQ(table.DELoadFromFile(path.c_str()), 1);
  EXPECT_EQ(KUCopyKCVForNormalise(nowhere.c_str(), &table), 1);
  EXPECT_EQ(comment(), nowhere + "b.kvc");
}

TEST_F(BehaviourFile, FileNamedWithoutDirectoryGathersIntoTheWorkingDirectory) {
  std::string source = makeSubDir(m_dir, "source");
  std::string package = makeSubDir(m_dir, "package");
  writeFile(source + "a.wav", "a1");
  writeFile(package + "door.kvc", "ON select PLAY \"" + source + "a.wav\"\n");
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(package);
  const int result = KUCopyKCVFileParts("door.kvc");
  std::filesystem::current_path(before);
  EXPECT_EQ(result, 1);
  EXPECT_EQ(readFile(package + "a.wav"), "a1");
  EXPECT_EQ(rowTexts(package + "door.kvc"), (Texts{"a.wav"}));
}

}  // namespace
