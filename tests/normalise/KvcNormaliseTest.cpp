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
#include "NormaliseTestSupport.h"

namespace {

using namespace kutil::test;
using Texts = std::vector<std::string>;

std::string comment() {
  char text[264] = "";
  KUGetComment(text);
  return text;
}

class BehaviourFile : public NormaliseTest {
 protected:
  std::string kvc(const std::string& name, const std::string& text) {
    writeFile(m_dir.file(name), text);
    return m_dir.file(name);
  }
  TempDir m_dir;
};

TEST_F(BehaviourFile, ConvertRelativisesFileActionsButNeverCallOrPing) {
  const std::string c = makeSubDir(m_dir, "content"), home = makeSubDir(m_dir, "kaldo");
  ASSERT_EQ(KUSetNormalisationVariables("/w", "/w/s", "/p", home.substr(0, home.size() - 1).c_str()), 1);
  const std::pair<const char*, std::string> rows[] = {
      {"select REPLACE", c + "box.kwq"},       {"open PLAY", c + "bump.wav"},
      {"collide RUN", home + "tool.exe"},      {"copy GOTO", c + "hall.kwq"},
      {"cut PLAYBACK", c + "walk.kiq"},        {"delete USERGOTO", c + "x.kwq"},
      {"ping CALL", c + "spin.wav"},           {"property PING", c + "obj.kwq"},
      {"impact LOAD", "?KALDOKWQDIR?done.kwq"}};
  std::string text;
  for (const auto& [action, name] : rows) text += "ON " + std::string(action) + " \"" + name + "\"\n";
  const std::string path = kvc("door.kvc", text);
  ASSERT_EQ(KUConvertKCVToRelative(path.c_str()), 1);
  EXPECT_EQ(rowTexts(path), (Texts{"?KALDOKWQDIR?box.kwq", "?KALDOKWQDIR?bump.wav",
                                   "?KALDOHOMEDIR?" + std::string(1, kSep) + "tool.exe",
                                   "?KALDOKWQDIR?hall.kwq", "?KALDOKWQDIR?walk.kiq", "?KALDOKWQDIR?x.kwq",
                                   c + "spin.wav", c + "obj.kwq", "?KALDOKWQDIR?done.kwq"}));
  EXPECT_EQ(comment(), path);
  EXPECT_FALSE(fileExists(path + ".TMP"));
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

TEST_F(BehaviourFile, CyclesEndAndTheLastNestedConversionDecides) {
  const std::string a = m_dir.file("a.kvc"), b = m_dir.file("b.kvc"), gone = m_dir.file("gone.kvc");
  writeFile(a, "ON select LOAD \"" + b + "\"\n");
  writeFile(b, "ON select LOAD \"" + a + "\" ON open PLAY \"" + m_dir.file("s.wav") + "\"\n");
  ASSERT_EQ(KUConvertKCVToRelative(a.c_str()), 1);
  EXPECT_EQ(rowTexts(a), (Texts{"?KALDOKWQDIR?b.kvc"}));
  EXPECT_EQ(rowTexts(b), (Texts{"?KALDOKWQDIR?a.kvc", "?KALDOKWQDIR?s.wav"}));
  EXPECT_EQ(KUIsKCVFileNormalised(a.c_str()), 1);
  // CALL texts stay, so neither file ever counts as normalised; the chain ends all the same.
  writeFile(a, "ON select CALL \"" + b + "\"\n");
  writeFile(b, "ON select CALL \"" + a + "\"\n");
  EXPECT_EQ(KUConvertKCVToRelative(a.c_str()), 1);
  EXPECT_EQ(KUIsKCVFileNormalised(a.c_str()), 0);

  // A missing nested file fails the conversion after the outer file is rewritten.
  writeFile(a, "ON select LOAD \"" + gone + "\"\n");
  EXPECT_EQ(KUConvertKCVToRelative(a.c_str()), 0);
  EXPECT_EQ(rowTexts(a), (Texts{"?KALDOKWQDIR?gone.kvc"}));
  EXPECT_EQ(comment(), gone);
  writeFile(b, "ON select PLAY \"/a/b.wav\"\n");
  writeFile(a,
            "ON select LOAD \"" + gone + "\"\nON open LOAD \"" + b + "\"\nON copy LOAD \"" + gone + "\"\n");
  EXPECT_EQ(KUConvertKCVToRelative(a.c_str()), 0);
  EXPECT_EQ(comment(), gone);
}

TEST_F(BehaviourFile, FilesThatDoNotLoadOrStoreAreKeptAsTheyWere) {
  const std::string unstorable =
      "ON select PLAY \"/c/a.wav\"\nON bump STOP\n";  // no event: the writer refuses
  const std::string unloadable = "ON select PLAY \"/c/a.wav\"\nON open MOVE SIDEWAYS\n";
  const std::string variable = "ON select PLAY \"?KALDOKWQDIR?a.wav\"\nON bump STOP\n";
  const std::string first = kvc("first.kvc", unstorable), second = kvc("second.kvc", unloadable);
  const std::string third = kvc("third.kvc", variable);
  EXPECT_EQ(KUConvertKCVToRelative(first.c_str()), 0);
  EXPECT_EQ(KUConvertKCVToRelative(second.c_str()), 0);
  EXPECT_EQ(KUDeRelativiseKCV(third.c_str()), 0);
  EXPECT_EQ(KUCopyKCVFileParts(second.c_str()), 0);
  EXPECT_EQ(readFile(first), unstorable);
  EXPECT_EQ(readFile(second), unloadable);
  EXPECT_EQ(readFile(third), variable);
  EXPECT_FALSE(fileExists(first + ".TMP"));
  EXPECT_EQ(KUIsKCVFileNormalised(kvc("empty.kvc", "# no rows\n").c_str()), 0);
  EXPECT_EQ(KUConvertKCVToRelative("?KALDOKWQDIR?x.kvc"), 1);  // nothing to do
}

TEST_F(BehaviourFile, DeRelativiseUsesTheFilesOwnDirectoryAndLeavesPlainFilesAlone) {
  const std::string path = kvc("door.kvc",
                               "ON select PLAY \"?KALDOKWQDIR?bump.wav\"\n"
                               "ON open RUN \"?WINDOWSDIR?\\notepad.exe\"\nON ping CALL spin\n");
  ASSERT_EQ(KUDeRelativiseKCV(path.c_str()), 1);
  EXPECT_EQ(rowTexts(path), (Texts{m_dir.file("bump.wav"), "C:\\Windows\\notepad.exe", "spin"}));
  const std::string plain = "# keep me\nON select PLAY \"/a/b.wav\"\n";
  EXPECT_EQ(KUDeRelativiseKCV(kvc("plain.kvc", plain).c_str()), 1);
  EXPECT_EQ(readFile(m_dir.file("plain.kvc")), plain);

  // A shape file: 0 once nothing is left to change, and then it is not rewritten.
  const std::string shape = m_dir.file("box.ksf"), dir = m_dir.path() + kSep;
  writeShape(shape, "?KALDOKWQDIR?wood.bmp", "", "?WINDOWSDIR?\\w.bmp");
  ASSERT_EQ(KUDeRelativiseKSF(dir.c_str(), shape.c_str()), 1);
  EXPECT_EQ(shapeTextures(shape), (Texts{dir + "wood.bmp", "", "C:\\Windows\\w.bmp"}));
  const std::string saved = readFile(shape);
  EXPECT_EQ(KUDeRelativiseKSF(dir.c_str(), shape.c_str()), 0);
  EXPECT_EQ(readFile(shape), saved);
}

TEST_F(BehaviourFile, GatheringTwiceRecopiesFilesButNotBehaviourFiles) {
  const std::string source = makeSubDir(m_dir, "source"), target = makeSubDir(m_dir, "target");
  writeFile(source + "a.wav", "a1");
  writeFile(source + "c.wav", "c1");
  writeFile(source + "b.kvc", "ON select PLAY \"" + source + "c.wav\"\n");
  writeFile(target + "d.wav", "already here");
  const std::string path =
      kvc("door.kvc", "ON select PLAY \"" + source + "a.wav\"\nON open LOAD \"" + source +
                          "b.kvc\"\nON copy PLAY \"" + source + "missing.wav\"\n" + "ON cut PLAY \"" +
                          target + "d.wav\"\nON ping CALL spin\n");
  auto gather = [&](const std::string& into) {
    CKDecide table;
    table.DEInitialise();
    ASSERT_EQ(table.DELoadFromFile(path.c_str()), 1);
    ASSERT_EQ(KUCopyKCVForNormalise(into.c_str(), &table), 1);
    ASSERT_EQ(table.DEStoreToFile(m_dir.file("out.kvc").c_str()), 1);
  };
  gather(target);
  EXPECT_EQ(rowTexts(m_dir.file("out.kvc")),
            (Texts{target + "a.wav", target + "b.kvc", source + "missing.wav", target + "d.wav", "spin"}));
  EXPECT_EQ(readFile(target + "c.wav"), "c1");
  EXPECT_EQ(readFile(target + "d.wav"), "already here");  // copied onto itself, not emptied
  EXPECT_EQ(rowTexts(target + "b.kvc"), (Texts{target + "c.wav"}));
  writeFile(source + "a.wav", "a2");
  writeFile(source + "b.kvc", "ON select PLAY \"" + source + "other.wav\"\n");
  gather(target);
  EXPECT_EQ(readFile(target + "a.wav"), "a2");
  EXPECT_EQ(rowTexts(target + "b.kvc"), (Texts{target + "c.wav"}));
  // Into a missing directory: nothing copies, and the comment names the behaviour file it tried.
  gather(target + "nowhere" + kSep);
  EXPECT_EQ(comment(), target + "nowhere" + kSep + "b.kvc");

  // A file named without a directory gathers into the working directory.
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(m_dir.path());
  const int result = KUCopyKCVFileParts("door.kvc");
  std::filesystem::current_path(before);
  EXPECT_EQ(result, 1);
  EXPECT_EQ(readFile(m_dir.file("a.wav")), "a2");
  EXPECT_EQ(rowTexts(path)[0], "a.wav");
}

}  // namespace
