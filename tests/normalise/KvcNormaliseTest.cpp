// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

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
using Ints = std::vector<int>;

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
  const std::string c = makeSubDir(m_dir, "content");
  // Names with a directory or a variable are taken as they are, the others are in c.
  const char* rows[] = {
      "select REPLACE box.kwq", "open PLAY bump.wav",    "collide RUN C:\\Windows\\t.exe",
      "copy GOTO hall.kwq",     "cut PLAYBACK walk.kiq", "delete USERGOTO x.kwq",
      "ping CALL spin.wav",     "property PING obj.kwq", "impact LOAD ?KALDOKWQDIR?done.kwq",
      "select LOAD gone.ksf"};
  std::string text;
  for (const std::string row : rows) {
    const std::size_t name = row.rfind(' ') + 1;
    const bool bare = row.find_first_of(":?", name) == std::string::npos;
    text += "ON " + row.substr(0, name) + "\"" + (bare ? c : "") + row.substr(name) + "\"\n";
  }
  const std::string path = kvc("door.kvc", text);
  EXPECT_EQ((Ints{KUConvertKCVToRelative(path.c_str()), KUIsKCVFileNormalised(path.c_str())}), (Ints{1, 1}));
  EXPECT_EQ(rowTexts(path),
            (Texts{"?KALDOKWQDIR?box.kwq", "?KALDOKWQDIR?bump.wav", "?WINDOWSDIR?\\t.exe",
                   "?KALDOKWQDIR?hall.kwq", "?KALDOKWQDIR?walk.kiq", "?KALDOKWQDIR?x.kwq", c + "spin.wav",
                   c + "obj.kwq", "?KALDOKWQDIR?done.kwq", "?KALDOKWQDIR?gone.ksf"}));
  EXPECT_EQ(comment(), c + "gone.ksf");  // the shape is converted first and names itself
  EXPECT_EQ((Ints{KUConvertKCVToRelative("?KALDOKWQDIR?x.kvc"), KUConvertKCVToRelative(""),
                  KUIsKCVFileNormalised(kvc("none.kvc", "# no rows\n").c_str())}),
            (Ints{1, 1, 0}));
}

TEST_F(BehaviourFile, CyclesEndAndAMissingNestedFileFailsTheConversion) {
  const std::string a = m_dir.file("a.kvc"), b = m_dir.file("b.kvc"), gone = m_dir.file("gone.kvc");
  // CALL texts stay, so neither file ever counts as normalised; the chain ends all the same.
  writeFile(a, "ON select CALL \"" + b + "\"\n");
  writeFile(b, "ON select CALL \"" + a + "\"\n");
  EXPECT_EQ((Ints{KUConvertKCVToRelative(a.c_str()), KUIsKCVFileNormalised(a.c_str())}), (Ints{1, 0}));
  // A missing nested file fails the conversion after the outer file is rewritten.
  writeFile(a, "ON select LOAD \"" + gone + "\"\n");
  EXPECT_EQ(KUConvertKCVToRelative(a.c_str()), 0);
  EXPECT_EQ(rowTexts(a), (Texts{"?KALDOKWQDIR?gone.kvc"}));
  EXPECT_EQ(comment(), gone);
}

TEST_F(BehaviourFile, FilesThatDoNotLoadOrStoreAreKeptAsTheyWere) {
  const std::string unstorable =
      "ON select PLAY \"/c/a.wav\"\nON bump STOP\n";  // no event: the writer refuses
  const std::string unloadable = "ON select PLAY \"/c/a.wav\"\nON open MOVE SIDEWAYS\n";
  const std::string variable = "ON select PLAY \"?KALDOKWQDIR?a.wav\"\nON bump STOP\n";
  const std::string first = kvc("first.kvc", unstorable), second = kvc("second.kvc", unloadable);
  const std::string third = kvc("third.kvc", variable);
  EXPECT_EQ(
      (Ints{KUConvertKCVToRelative(first.c_str()), KUConvertKCVToRelative(second.c_str()),
            KUDeRelativiseKCV(third.c_str()), KUCopyKCVFileParts(second.c_str()), KUDeRelativiseKCV("")}),
      (Ints{0, 0, 0, 0, 0}));
  EXPECT_EQ(comment(), second);  // the last file that failed
  EXPECT_EQ((Texts{readFile(first), readFile(second), readFile(third)}),
            (Texts{unstorable, unloadable, variable}));
  EXPECT_FALSE(fileExists(first + ".TMP"));
}

TEST_F(BehaviourFile, DeRelativiseUsesTheFilesOwnDirectoryAndLeavesPlainFilesAlone) {
  const std::string dir = m_dir.path() + kSep, shape = m_dir.file("box.ksf");
  writeShape(shape, "?KALDOKWQDIR?wood.bmp", "", "?WINDOWSDIR?\\w.bmp");
  const std::string path =
      kvc("door.kvc",
          "ON select PLAY \"?KALDOKWQDIR?bump.wav\"\nON open RUN \"?WINDOWSDIR?\\notepad.exe\"\n"
          "ON ping CALL spin\nON copy REPLACE \"" +
              shape + "\"\n");
  ASSERT_EQ(KUDeRelativiseKCV(path.c_str()), 1);
  EXPECT_EQ(rowTexts(path), (Texts{dir + "bump.wav", "C:\\Windows\\notepad.exe", "spin", shape}));
  EXPECT_EQ(shapeTextures(shape), (Texts{dir + "wood.bmp", "", "C:\\Windows\\w.bmp"}));  // the shape's too
  const std::string plain = "# keep me\nON select PLAY \"/a/b.wav\"\n";
  EXPECT_EQ(KUDeRelativiseKCV(kvc("plain.kvc", plain).c_str()), 1);
  EXPECT_EQ(readFile(m_dir.file("plain.kvc")), plain);
  // The shape: 0 once nothing is left to change, and then it is not rewritten.
  const std::string saved = readFile(shape);
  EXPECT_EQ((Ints{KUDeRelativiseKSF(dir.c_str(), shape.c_str()), KUDeRelativiseKSF(dir.c_str(), "")}),
            (Ints{0, 0}));
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
                          "b.kvc\"\nON copy PLAY \"" + source + "missing.wav\"\nON cut PLAY \"" + target +
                          "d.wav\"\nON ping CALL spin\n");
  auto gather = [&](const std::string& into) {
    CKDecide table;
    table.DEInitialise();
    EXPECT_EQ((Ints{table.DELoadFromFile(path.c_str()), KUCopyKCVForNormalise(into.c_str(), &table),
                    table.DEStoreToFile(m_dir.file("out.kvc").c_str())}),
              (Ints{1, 1, 1}));
  };
  gather(target);
  EXPECT_EQ(rowTexts(m_dir.file("out.kvc")),
            (Texts{target + "a.wav", target + "b.kvc", source + "missing.wav", target + "d.wav", "spin"}));
  EXPECT_EQ((Texts{readFile(target + "c.wav"), readFile(target + "d.wav")}), (Texts{"c1", "already here"}));
  EXPECT_EQ(rowTexts(target + "b.kvc"), (Texts{target + "c.wav"}));
  writeFile(source + "a.wav", "a2");
  writeFile(source + "b.kvc", "ON select PLAY \"" + source + "other.wav\"\n");
  gather(target);
  EXPECT_EQ(readFile(target + "a.wav"), "a2");
  EXPECT_EQ(rowTexts(target + "b.kvc"), (Texts{target + "c.wav"}));
  // Into a missing directory: nothing copies, and the comment names the behaviour file it tried.
  gather(target + "nowhere" + kSep);
  EXPECT_EQ(comment(), target + "nowhere" + kSep + "b.kvc");
}

}  // namespace
