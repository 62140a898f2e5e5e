// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "KInfo.h"
#include "ServicesTestSupport.h"

namespace {

using kutil::test::fileExists;
using kutil::test::readLines;
using kutil::test::readText;
using kutil::test::seq;
using kutil::test::TempDir;
using kutil::test::writeFile;
using kutil::test::written;
using Lines = std::vector<std::string>;
using Ints = std::vector<long long>;

// Every sheet as "id text", walked with the id steps.
Lines allSheets(CKaldoInfo& info) {
  Lines out;
  for (int more = info.KISetToFirst(); more == 1; more = info.KISetToNext()) {
    unsigned id = 0;
    char text[261];
    info.KIGetInfoMessage(&id);
    info.KIGetInfoText(text);
    out.push_back(std::to_string(id) + " " + text);
  }
  return out;
}

TEST(KaldoInfoSheets, LoadSkipsIncompleteLinesCutsLongOnesAndSaveRoundTrips) {
  TempDir dir;
  // The 255-character read splits the long line: its head is a sheet of its
  // own, its tail starts a further line with the second pair of segments.
  writeFile(dir.file("en.kiq"),
            "[iid][3]112[itx][14]File not found\n\n[itx][5]Hello[iid][1]7\n[iid][2]44\n" +
                std::string(" [iid][1]1[itx][1]x\n[iid][5]12abc[itx][3]odd\n[iid][1]9[itx][3]abc") +
                std::string(235, 'z') + "[iid][1]8[itx][4]tail\n");
  writeFile(dir.file("bad.kiq"), "[iid][1]1\n[iid][2]22\n\nrubbish\n[itx][2]no\n");
  CKaldoInfo info;
  EXPECT_EQ((Ints{0, 0, 0, 0}),
            (Ints{info.KILoadInfoSheets(dir.file("bad.kiq").c_str()),
                  info.KILoadInfoSheets(dir.file("missing.kiq").c_str()), info.KILoadInfoSheets(""),
                  info.KISaveFile(dir.file("empty.kiq").c_str())}));
  EXPECT_FALSE(fileExists(dir.file("empty.kiq")));  // nothing to save: nothing truncated
  ASSERT_EQ(1, info.KILoadInfoSheets(dir.file("en.kiq").c_str()));
  EXPECT_EQ((Lines{"112 File not found", "7 Hello", "12 odd", "9 abc", "8 tail"}), allSheets(info));

  // Saved, reloaded and saved again: the same bytes, ids printed with "%d".
  ASSERT_EQ(1, info.KINewInfoSheet("", 4000000000u));
  EXPECT_EQ(0, info.KISaveFile(dir.file("no/such/dir.kiq").c_str()) + info.KISaveFile(""));
  ASSERT_EQ(1, info.KISaveFile(dir.file("out.kiq").c_str()));
  const std::string saved = readText(dir.file("out.kiq"));
  EXPECT_EQ(
      "[iid][3]112[itx][14]File not found\n[iid][1]7[itx][5]Hello\n[iid][2]12[itx][3]odd\n"
      "[iid][1]9[itx][3]abc\n[iid][1]8[itx][4]tail\n[iid][10]-294967296[itx][0]\n",
      saved);
  CKaldoInfo reread;
  ASSERT_EQ(1, reread.KILoadInfoSheets(dir.file("out.kiq").c_str()));
  ASSERT_EQ(1, reread.KISaveFile(dir.file("again.kiq").c_str()));
  EXPECT_EQ(saved, readText(dir.file("again.kiq")));
  EXPECT_EQ("4000000000 ", allSheets(reread).back());
}

TEST(KaldoInfoFields, GettersWriteExactlyTheTextAndItsTerminator) {
  CKaldoInfo info;
  auto text = [&info](int (CKaldoInfo::*get)(char*)) {
    return written([&](char* o) { return (info.*get)(o); });
  };
  using Getter = int (CKaldoInfo::*)(char*);
  const Getter infoText = &CKaldoInfo::KIGetInfoText, comment = &CKaldoInfo::KIGetComment,
               logName = &CKaldoInfo::KIGetLogFileName;
  unsigned id = 0;
  int type = 9;
  // Fresh: message 3, logging off. Then set: the appended comment lines up under the "COMMENT: " label.
  EXPECT_EQ(seq({info.KIGetInfoMessage(&id), int(id), info.KIGetInfoType(&type), type, text(infoText),
                 text(comment), text(logName)}),
            "1 3 1 0 0 An error has been detected for which there is no message 1 <empty> 0 -");
  EXPECT_EQ(seq({info.KISetInfoType(-2), info.KISetLogFileName("kaldo.log"), info.KISetComment("loading"),
                 info.KICatComment("scene"), info.KIGetInfoType(&type), type, text(logName), text(comment),
                 info.KISetComment(""), info.KISetInfoType(0), text(comment)}),
            "1 1 1 1 1 -2 1 kaldo.log 1 loading\n         scene 1 1 0 -");

  // Lookups take the first sheet of an id.
  EXPECT_EQ(seq({info.KISetInfoText("nothing to replace"), info.KINewInfoSheet("first", 3),
                 info.KINewInfoSheet("second", 3), text(&CKaldoInfo::KIGetInfoText),
                 info.KISetInfoText("replaced"), info.KIFetchStringForID(3), info.KIFetchStringForID(77)}),
            "0 1 1 1 first 1 replaced null");
  EXPECT_EQ((Ints{0, 0, 1, 77}),
            (Ints{info.KIGetInfoText(std::string()), info.KIDisplayInfo(), info.KIGetInfoMessage(&id), id}));
}

class KaldoInfoLog : public ::testing::Test {
 protected:
  void SetUp() override {
    m_info.KINewInfoSheet("File not found", 112);
    m_info.KINewInfoSheet("Second", 113);
    m_info.KINewInfoSheet("Third", 114);
    m_info.KISetLogFileName(m_log.c_str());
    m_info.KISetInfoType(1);
    m_info.KISetComment("loading scene");
  }
  TempDir m_dir;
  std::string m_log = m_dir.file("kaldo.log");
  CKaldoInfo m_info;
};

TEST_F(KaldoInfoLog, EntryHasStampMessageAndAlignedComment) {
  // Id 5 is never logged.
  EXPECT_EQ(seq({m_info.KISetInfoMessage(5), fileExists(m_log), m_info.KICatComment("second part"),
                 m_info.KISetInfoMessage(112), m_info.KISetInfoMessage(999), m_info.KISetComment(""),
                 m_info.KIFlushInfoMessage("flushed text")}),
            "0 0 1 1 1 1 1");
  Lines lines = readLines(m_log);
  EXPECT_EQ("Build:   1,0,4,401", lines.at(2));
  // A '9' stands for any digit of the time stamp.
  for (std::string& line : lines) std::replace_if(line.begin(), line.end(), ::isdigit, '9');
  Lines expected;
  for (const Lines& rest :
       {Lines{"MESSAGE: File not found", "COMMENT: loading scene", "         second part", ""},
        Lines{"MESSAGE: <Unable to get message text for this error>", "COMMENT: loading scene",
              "         second part", ""},
        Lines{"MESSAGE: flushed text", "COMMENT: ", ""}}) {
    expected.insert(expected.end(), {"DATE:    9999/99/99", "TIME:    99:99:99", "Build:   9,9,9,999"});
    expected.insert(expected.end(), rest.begin(), rest.end());
  }
  EXPECT_EQ(expected, lines);
}

TEST_F(KaldoInfoLog, LogOverAThousandLinesIsClippedBeforeTheEntry) {
  std::string old;
  for (int i = 0; i < 1000; ++i) old += "old line\n";
  writeFile(m_log, old);
  m_info.KISetInfoMessage(112);
  const int kept = static_cast<int>(readLines(m_log).size());  // 1000 is not above the bound
  m_info.KISetInfoMessage(113);
  const Lines after = readLines(m_log);
  EXPECT_EQ(seq({kept, after.at(0).substr(0, 5), after.at(3), int(after.size())}),
            "1006 DATE: MESSAGE: Second 6");
}

TEST_F(KaldoInfoLog, OnlyStepsBackwardAreLogged) {
  auto step = [this](int (CKaldoInfo::*how)()) {
    const int status = (m_info.*how)();
    unsigned id = 0;
    m_info.KIGetInfoMessage(&id);
    return std::to_string(status) + " " + std::to_string(id) + " " + std::to_string(readLines(m_log).size());
  };
  const auto first = &CKaldoInfo::KISetToFirst, next = &CKaldoInfo::KISetToNext,
             back = &CKaldoInfo::KISetToPrevious;
  EXPECT_EQ((Lines{"1 112 0", "1 113 0", "1 114 0", "0 114 0", "1 113 6", "1 112 12", "0 112 12"}),
            (Lines{step(first), step(next), step(next), step(next), step(back), step(back), step(back)}));
  EXPECT_EQ("MESSAGE: Second", readLines(m_log).at(3));
  CKaldoInfo empty;
  EXPECT_EQ(0, empty.KISetToFirst() + empty.KISetToNext() + empty.KISetToPrevious());
}

TEST_F(KaldoInfoLog, ConfigForLanguageAppendsAndSwitchesLoggingOff) {
  writeFile(m_dir.file("de.kiq"), "[iid][3]112[itx][5]Datei\n[iid][3]300[itx][3]neu\n");
  // Earlier texts win.
  EXPECT_EQ(seq({m_info.KIConfigForLanguage(m_dir.file("missing.kiq").c_str()),
                 m_info.KIConfigForLanguage(m_dir.file("de.kiq").c_str()), m_info.KIFetchStringForID(112),
                 m_info.KIFetchStringForID(300)}),
            "0 1 File not found neu");
  int type = 9;
  char name[261];
  EXPECT_EQ((Ints{1, 0, 0, 0}), (Ints{m_info.KIGetInfoType(&type), type, m_info.KIGetLogFileName(name),
                                      m_info.KISetInfoMessage(112)}));
  EXPECT_FALSE(fileExists(m_log));
}

TEST(StringTable, LooksUpIdsAndKeepsWithinTheBuffer) {
  TempDir dir;
  writeFile(dir.file("s.kiq"), "[iid][1]7[itx][5]Hello\n");
  auto load = [](int id, int max) { return written([&](char* out) { return KULoadString(id, out, max); }); };
  EXPECT_EQ("0 ", load(7, 4));  // no table yet
  ASSERT_EQ(1, KULoadStringInitialise(dir.file("s.kiq").c_str()));
  EXPECT_EQ((Lines{"1 Hel", "1 Hello", "1 ", "0 ", "0 -"}),
            (Lines{load(7, 4), load(7, 6), load(7, 1), load(8, 8), load(7, 0)}));
  // A failed re-initialisation leaves no table behind.
  EXPECT_EQ(0, KULoadStringInitialise(dir.file("missing.kiq").c_str()));
  EXPECT_EQ("0 ", load(7, 8));
  ASSERT_EQ(1, KULoadStringInitialise(dir.file("s.kiq").c_str()));
  EXPECT_EQ(1, KULoadStringTerminate());
  EXPECT_EQ((Lines{"0 ", "1"}), (Lines{load(7, 8), std::to_string(KULoadStringTerminate())}));
}

long hr(uint32_t code) { return static_cast<long>(static_cast<int32_t>(code)); }

TEST(ErrorMapping, WindowsErrorsAndTheDirectXTableRowByRow) {
  EXPECT_EQ((Ints{800, 15, 15}), (Ints{KUwinerr2kwinfo(0), KUwinerr2kwinfo(2), KUwinerr2kwinfo(-1)}));
  std::map<uint32_t, int> table;
  std::ifstream rows(kutil::test::testDataPath("services/data/directx-results.txt"));
  std::string word;
  std::getline(rows, word);  // its heading
  while (rows >> word) rows >> table[std::stoul(word, nullptr, 16)];
  ASSERT_EQ(129u, table.size());
  // Every facility code not in the table, and anything else, is unknown.
  for (uint32_t code = 0x88760000u; code <= 0x88760400u; ++code) {
    const auto row = table.find(code);
    // Where long is wider than 32 bits the unextended form maps the same.
    const long id = row == table.end() ? 930 : row->second;
    EXPECT_EQ((Ints{id, id}),
              (Ints{KUdxrval2kwinfo(hr(code)), KUdxrval2kwinfo(long(static_cast<unsigned long>(code)))}))
        << std::hex << code;
  }
  CKaldoInfo info;
  EXPECT_EQ(
      (Ints{930, 930, 930, 930, 884, 813, 800, 801}),
      (Ints{KUdxrval2kwinfo(1), KUdxrval2kwinfo(0x7FFFFFFF), KUdxrval2kwinfo(-1),
            KUdxrval2kwinfo(hr(0x80004002)), KUdxrval2kwinfo(hr(0x80004001)), KUdxrval2kwinfo(hr(0x80004005)),
            KUdxrval2kwinfo(0), info.KIdxrval2kwinfo(hr(0x88760005))}));
}

}  // namespace
