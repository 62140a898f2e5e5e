// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Overlong texts, null texts and junk files against the path variables and
// the file normalisers. In-place names live in heap blocks of exactly the
// documented 264 bytes so that the address sanitizer sees any overrun.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "KActionRow.h"
#include "KDecide.h"
#include "KNormalise.h"
#include "KPathVars.h"
#include "KText.h"
#include "KVGen.h"
#include "NormaliseTestSupport.h"
#include "Overlong.h"

namespace {

using kutil::test::dirOf;
using kutil::test::kLong;
using kutil::test::longText;
using kutil::test::readFile;
using kutil::test::readLines;
using kutil::test::TempDir;
using kutil::test::writeFile;

constexpr std::size_t kNameSize = 264;

// A 264-byte in-place name buffer holding text (cut to 263 characters).
class NameBuffer {
 public:
  explicit NameBuffer(const std::string& text) : m_bytes(kNameSize, '#') {
    const std::size_t n = text.size() < kNameSize - 1 ? text.size() : kNameSize - 1;
    std::memcpy(m_bytes.data(), text.data(), n);
    m_bytes[n] = '\0';
  }
  char* data() { return m_bytes.data(); }
  bool terminated() const { return std::memchr(m_bytes.data(), '\0', m_bytes.size()) != nullptr; }
  std::string str() const { return terminated() ? std::string(m_bytes.data()) : std::string(); }

 private:
  std::vector<char> m_bytes;
};

std::string junkBytes() {
  std::string junk;
  for (int i = 0; i < 4096; ++i) junk += static_cast<char>((i * 131 + 7) & 0xff);
  junk += "\n?KALDOKWQDIR?\n?KALDOKWQDIR?" + longText('j', 600) + "\n#\n";
  return junk;
}

// Every file line joined with nothing between: what no rewrite may lose.
std::string joined(const std::string& path) {
  std::string all;
  for (const std::string& line : readLines(path)) all += line;
  return all;
}

class PathVarsOverlong : public kutil::test::NormaliseTest {};

TEST_F(PathVarsOverlong, OverlongDirectoriesAreKeptWithinTheTable) {
  const std::string dir = "/" + longText('d');
  ASSERT_EQ(KUSetNormalisationVariables(dir.c_str(), dir.c_str(), dir.c_str(), dir.c_str()), 1);
  // The kept directory is the first 263 characters: a name under it is recognised by them.
  NameBuffer name(dir);
  ASSERT_EQ(KUSubstitute4Directory(name.data()), 1);
  EXPECT_EQ(name.str(), "?KALDOHOMEDIR?");
  NameBuffer back("?KALDOHOMEDIR?/file.exe");
  ASSERT_EQ(KUSubstitute4Variable(back.data(), "?X?", "y"), 1);
  EXPECT_EQ(back.str(), dir.substr(0, kNameSize - 1));

  ASSERT_EQ(KUSetNormalisationVariables(nullptr, nullptr, nullptr, nullptr), 1);
  NameBuffer plain("/some/where/file.exe");
  EXPECT_EQ(KUSubstitute4Directory(plain.data()), 0);
  EXPECT_EQ(plain.str(), "/some/where/file.exe");
}

TEST_F(PathVarsOverlong, InPlaceNamesNeverGrowPastTheirBuffer) {
  EXPECT_EQ(KUIsVariablised(("?KALDOKWQDIR?" + longText('v')).c_str()), 1);
  EXPECT_EQ(KUIsVariablised(longText('?').c_str()), 0);
  EXPECT_EQ(KUIsVariablised(nullptr), 0);

  NameBuffer variable("?KALDOKWQDIR?" + longText('n', 250));
  ASSERT_EQ(KUSubstitute4Variable(variable.data(), "?KALDOKWQDIR?", longText('V').c_str()), 1);
  EXPECT_EQ(variable.str(), longText('V', kNameSize - 1));
  NameBuffer unknown(longText('u', 263));
  EXPECT_EQ(KUSubstitute4Variable(unknown.data(), longText('u').c_str(), "x"), 0);
  EXPECT_EQ(unknown.str(), longText('u', 263));
  NameBuffer nulls("?X?abc");
  EXPECT_EQ(KUSubstitute4Variable(nulls.data(), nullptr, nullptr), 0);
  EXPECT_EQ(KUSubstitute4Variable(nullptr, "?X?", "y"), 0);

  // Content names lose their directory, programs keep theirs; both stay within the buffer.
  for (const std::string& start : {"/d/" + longText('c', 250) + ".kwq", "/" + longText('e', 255) + "/x.bmp",
                                   "/d/" + longText('p', 250) + ".exe", longText(' ', 263)}) {
    NameBuffer name(start);
    EXPECT_EQ(KUConvertToRelative(name.data()), 1);
    EXPECT_TRUE(name.terminated());
  }
  EXPECT_EQ(KUConvertToRelative(nullptr), 1);

  NameBuffer relative("?KALDOKWQDIR?" + longText('r', 200));
  ASSERT_EQ(KUDeRelativiseFileName(("/" + longText('R') + "/ref.kvc").c_str(), relative.data()), 1);
  EXPECT_TRUE(relative.terminated());
  NameBuffer fromNull("?KALDOKWQDIR?name.bmp");
  ASSERT_EQ(KUDeRelativiseFileName(nullptr, fromNull.data()), 1);
  EXPECT_EQ(fromNull.str(), "name.bmp");
  EXPECT_EQ(KUDeRelativiseFileName("/a/b.kvc", nullptr), 0);
}

class NormaliseOverlong : public kutil::test::NormaliseTest {
 protected:
  TempDir m_dir;
};

TEST_F(NormaliseOverlong, SceneListsKeepEveryCharacterOfLongLines) {
  const std::string path = m_dir.file("hall.ksl");
  const std::string longLine = "/" + longText('l');
  ASSERT_TRUE(writeFile(path, "# list\n" + longLine + "\n/short/a.kwq\n"));
  ASSERT_EQ(KUConvertKSLToRelative(path.c_str()), 1);
  // A long line arrives in pieces; each piece is a name line of its own, and none is lost.
  const std::string after = joined(path);
  EXPECT_NE(after.find(longText('l', 5000)), std::string::npos);
  EXPECT_EQ(after.substr(after.size() - 18), "?KALDOKWQDIR?a.kwq");
  for (const std::string& line : readLines(path)) EXPECT_LT(line.size(), kNameSize);

  EXPECT_EQ(KUIsKSLFileNormalised(path.c_str()), 1);
  EXPECT_EQ(KUDeRelativiseKSL(path.c_str(), "?KALDOKWQDIR?", longText('D').c_str()), 1);
  for (const std::string& line : readLines(path)) EXPECT_LT(line.size(), kNameSize);
  const std::string target = dirOf(m_dir);
  EXPECT_EQ(KUCopyKSLFileParts(path.c_str(), (target + longText('t') + "/").c_str()), 1);
  for (const std::string& line : readLines(path)) EXPECT_LT(line.size(), kNameSize);
}

TEST_F(NormaliseOverlong, JunkListsAndOverlongPathsFailQuietly) {
  const std::string junk = m_dir.file("junk.ksl");
  const std::string anb = m_dir.file("junk.anb");
  ASSERT_TRUE(writeFile(junk, junkBytes()));
  ASSERT_TRUE(writeFile(anb, junkBytes()));
  KUIsKSLFileNormalised(junk.c_str());  // text mode on Windows ends the file at a Ctrl-Z byte
  KUConvertKSLToRelative(junk.c_str());
  KUDeRelativiseKSL(junk.c_str(), "?KALDOKWQDIR?", "/x/");
  KUCopyKSLFileParts(junk.c_str(), dirOf(m_dir).c_str());
  KUConvertANBToRelative(anb.c_str());
  KUDeRelativiseANB(anb.c_str(), "?KALDOKWQDIR?", longText('x').c_str());
  KUCopyANBFileParts(anb.c_str(), dirOf(m_dir).c_str());

  const std::string missing = "/" + longText('m') + ".ksl";
  EXPECT_EQ(KUIsKSLFileNormalised(missing.c_str()), 0);
  EXPECT_EQ(KUConvertKSLToRelative(missing.c_str()), 0);
  EXPECT_EQ(KUDeRelativiseKSL(missing.c_str(), "?X?", "y"), 0);
  EXPECT_EQ(KUIsKSLFileNormalised(nullptr), 0);
  KUDeRelativiseKSL(nullptr, nullptr, nullptr);
  KUCopyKSLFileParts(missing.c_str(), nullptr);
  KUCopyKSLFileParts(nullptr, nullptr);

  const std::string missingAnb = "/" + longText('m') + ".anb";
  EXPECT_EQ(KUConvertANBToRelative(missingAnb.c_str()), 0);
  EXPECT_EQ(KUDeRelativiseANB(missingAnb.c_str(), "?X?", "y"), 0);
  KUCopyANBFileParts(missingAnb.c_str(), dirOf(m_dir).c_str());
  KUConvertANBToRelative(nullptr);
  KUCopyANBFileParts(nullptr, nullptr);
  KUDeRelativiseANB(nullptr, nullptr, nullptr);

  const std::string sky = "/" + longText('s') + "_fw.bmp";
  EXPECT_EQ(KUCopySkyBoxFaces(sky.c_str(), (dirOf(m_dir) + longText('k') + "_up.bmp").c_str()), 1);
  EXPECT_EQ(KUCopySkyBoxFaces(nullptr, sky.c_str()), 0);
  EXPECT_EQ(KUCopySkyBoxFaces(sky.c_str(), nullptr), 0);
}

TEST_F(NormaliseOverlong, BehaviourFilesWithFullLengthNames) {
  CKDecide table;
  table.DEInitialise();
  const int actions[] = {KAR_ACTION_PLAY, KAR_ACTION_LOAD, KAR_ACTION_PLAYBACK, KAR_ACTION_GOTO,
                         KAR_ACTION_RUN};
  const std::string names[] = {"/d/" + longText('p'), "?KALDOKWQDIR?" + longText('l'),
                               "/" + longText('b') + ".rec", "/g/" + longText('g', 240) + ".kvc",
                               "/r/" + longText('r', 240) + ".ksf"};
  for (int i = 0; i < 5; ++i) {
    auto* row = new CKActionRow;
    row->ARSetRowType(KAR_ROW_ON);
    row->ARSetEvent(KAR_EVENT_SELECT);
    row->ARSetAction(actions[i]);
    row->ARSetTextData(names[i].c_str());
    ASSERT_EQ(table.DEAddActionRow(row), 1);
  }
  auto checkRows = [&table]() {
    CKActionRow* row = nullptr;
    for (int more = table.DESelectFirstActionRow(&row); more; more = table.DESelectNextActionRow(&row)) {
      std::vector<char> text(KAR_TEXTDATA_LEN + 1, '#');
      ASSERT_EQ(row->ARGetTextData(text.data()), 1);
      EXPECT_NE(std::memchr(text.data(), '\0', text.size()), nullptr);
    }
  };
  EXPECT_EQ(KURelativiseKCV(&table), 1);
  checkRows();
  EXPECT_EQ(KUDeRelativiseKCV(longText('D').c_str(), &table), 1);
  checkRows();
  KUCopyKCVForNormalise((dirOf(m_dir) + longText('t') + "/").c_str(), &table);
  checkRows();
  KUCopyKCVForNormalise(dirOf(m_dir).c_str(), &table);
  checkRows();
  EXPECT_EQ(KURelativiseKCV(nullptr), 0);
  KUDeRelativiseKCV(static_cast<const char*>(nullptr), &table);
  KUCopyKCVForNormalise(nullptr, &table);

  const std::string file = m_dir.file("long.kvc");
  ASSERT_TRUE(writeFile(
      file, "ON select PLAY \"/" + longText('x', 230) + "/a.kwq\"\nON open LOAD " + longText('y') + "\n"));
  KUConvertKCVToRelative(file.c_str());
  KUDeRelativiseKCV(file.c_str());
  KUCopyKCVFileParts(file.c_str());
  KUIsKCVFileNormalised(file.c_str());
  const std::string missing = "/" + longText('m') + ".kvc";
  EXPECT_EQ(KUIsKCVFileNormalised(missing.c_str()), 0);
  EXPECT_EQ(KUConvertKCVToRelative(missing.c_str()), 0);
  EXPECT_EQ(KUDeRelativiseKCV(missing.c_str()), 0);
  EXPECT_EQ(KUCopyKCVFileParts(missing.c_str()), 0);
  EXPECT_EQ(KUIsKCVFileNormalised(nullptr), 0);
  EXPECT_EQ(KUConvertKCVToRelative(nullptr), 1);
  EXPECT_EQ(KUCopyKCVFileParts(nullptr), 1);
  EXPECT_EQ(KUDeRelativiseKSF(longText('d').c_str(), missing.c_str()), 0);
  EXPECT_EQ(KUDeRelativiseKSF(nullptr, nullptr), 0);

  char comment[264];
  ASSERT_EQ(KUGetComment(comment), 1);
  EXPECT_LT(std::strlen(comment), sizeof comment);
}

}  // namespace
