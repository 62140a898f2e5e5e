// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "KInfo.h"
#include "TestSupport.h"

namespace {

using kutil::test::fileExists;
using kutil::test::readLines;
using kutil::test::TempDir;
using kutil::test::writeFile;

// Files are written in text mode: on Windows each line feed becomes CR LF.
std::string readText(const std::string& path) {
  std::string text = kutil::test::readFile(path);
  text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
  return text;
}

std::vector<std::pair<unsigned, std::string>> allSheets(CKaldoInfo& info) {
  std::vector<std::pair<unsigned, std::string>> out;
  if (!info.KISetToFirst()) return out;
  do {
    unsigned id = 0;
    char text[261];
    info.KIGetInfoMessage(&id);
    info.KIGetInfoText(text);
    out.emplace_back(id, text);
  } while (info.KISetToNext());
  return out;
}

TEST(KaldoInfoSheets, LoadSkipsIncompleteLinesCutsLongOnesAndSaveRoundTrips) {
  TempDir dir;
  // The 255-character read splits the long line: its head is a sheet of its
  // own, its tail starts a further line with the second pair of segments.
  const std::string longLine = "[iid][1]9[itx][3]abc" + std::string(235, 'z') + "[iid][1]8[itx][4]tail";
  writeFile(dir.file("en.kiq"),
            "[iid][3]112[itx][14]File not found\n\n[itx][5]Hello[iid][1]7\n[iid][2]44\n"
            " [iid][1]1[itx][1]x\n[iid][5]12abc[itx][3]odd\n" +
                longLine + "\n");
  writeFile(dir.file("bad.kiq"), "[iid][1]1\n[iid][2]22\n\nrubbish\n");
  CKaldoInfo info;
  EXPECT_EQ(0, info.KILoadInfoSheets(dir.file("bad.kiq").c_str()));
  EXPECT_EQ(0, info.KILoadInfoSheets(dir.file("missing.kiq").c_str()));
  EXPECT_EQ(0, info.KILoadInfoSheets(nullptr));
  EXPECT_EQ(0, info.KISaveFile(dir.file("empty.kiq").c_str()));
  EXPECT_FALSE(fileExists(dir.file("empty.kiq")));
  ASSERT_EQ(1, info.KILoadInfoSheets(dir.file("en.kiq").c_str()));
  const std::vector<std::pair<unsigned, std::string>> expected = {
      {112, "File not found"}, {7, "Hello"}, {12, "odd"}, {9, "abc"}, {8, "tail"}};
  EXPECT_EQ(expected, allSheets(info));

  CKaldoInfo saved;
  saved.KINewInfoSheet("File not found", 112);
  saved.KINewInfoSheet("", 4000000000u);
  EXPECT_EQ(0, saved.KISaveFile(dir.file("no/such/dir.kiq").c_str()));
  ASSERT_EQ(1, saved.KISaveFile(dir.file("out.kiq").c_str()));
  // Ids are printed with "%d".
  EXPECT_EQ("[iid][3]112[itx][14]File not found\n[iid][10]-294967296[itx][0]\n",
            readText(dir.file("out.kiq")));
  CKaldoInfo reread;
  ASSERT_EQ(1, reread.KILoadInfoSheets(dir.file("out.kiq").c_str()));
  EXPECT_EQ(4000000000u, allSheets(reread).back().first);
}

TEST(KaldoInfoLookup, FirstSheetWinsAndUnknownIdsGetTheFallback) {
  CKaldoInfo info;
  char out[261] = "";
  EXPECT_EQ(0, info.KIGetInfoText(out));
  EXPECT_STREQ("An error has been detected for which there is no message", out);
  EXPECT_EQ(0, info.KISetInfoText("nothing to replace"));
  info.KINewInfoSheet("first", 3);
  info.KINewInfoSheet("second", 3);
  EXPECT_EQ(1, info.KIGetInfoText(out));
  EXPECT_STREQ("first", out);
  std::string caller = "mine";  // taken by value: the caller's copy stays
  EXPECT_EQ(1, info.KIGetInfoText(caller));
  EXPECT_EQ("mine", caller);
  EXPECT_EQ(1, info.KISetInfoText("replaced"));
  EXPECT_STREQ("replaced", info.KIFetchStringForID(3));
  EXPECT_EQ(nullptr, info.KIFetchStringForID(77));
  unsigned id = 0;
  info.KIGetInfoMessage(&id);
  EXPECT_EQ(77u, id);
}

class KaldoInfoLog : public ::testing::Test {
 protected:
  void SetUp() override {
    m_log = m_dir.file("kaldo.log");
    m_info.KINewInfoSheet("File not found", 112);
    m_info.KINewInfoSheet("Second", 113);
    m_info.KINewInfoSheet("Third", 114);
    m_info.KISetLogFileName(m_log.c_str());
    m_info.KISetInfoType(1);
    m_info.KISetComment("loading scene");
  }
  TempDir m_dir;
  std::string m_log;
  CKaldoInfo m_info;
};

TEST_F(KaldoInfoLog, EntryHasStampMessageAndAlignedComment) {
  EXPECT_EQ(0, m_info.KISetInfoMessage(5));  // id 5 is never logged
  EXPECT_FALSE(fileExists(m_log));
  m_info.KICatComment("second part");
  EXPECT_EQ(1, m_info.KISetInfoMessage(112));
  const std::string log = readText(m_log);
  const auto lines = readLines(m_log);
  ASSERT_EQ(7u, lines.size()) << log;
  // A '9' in the pattern stands for any digit.
  auto fits = [](std::string line, const std::string& pattern) {
    for (char& c : line) c = (c >= '0' && c <= '9') ? '9' : c;
    return line == pattern;
  };
  EXPECT_TRUE(fits(lines[0], "DATE:    9999/99/99")) << lines[0];
  EXPECT_TRUE(fits(lines[1], "TIME:    99:99:99")) << lines[1];
  EXPECT_EQ("Build:   1,0,4,401", lines[2]);
  EXPECT_EQ("MESSAGE: File not found\nCOMMENT: loading scene\n         second part\n\n",
            log.substr(log.find("MESSAGE: ")));

  EXPECT_EQ(1, m_info.KISetInfoMessage(999));
  m_info.KISetComment("");
  m_info.KIFlushInfoMessage("flushed text");
  const auto all = readLines(m_log);
  ASSERT_EQ(20u, all.size());
  EXPECT_EQ("MESSAGE: <Unable to get message text for this error>", all[10]);
  EXPECT_EQ((std::vector<std::string>{"MESSAGE: flushed text", "COMMENT: ", ""}),
            std::vector<std::string>(all.begin() + 17, all.end()));
}

TEST_F(KaldoInfoLog, LogOverAThousandLinesIsClippedBeforeTheEntry) {
  std::string lines;
  for (int i = 0; i < 1000; ++i) lines += "old line\n";
  writeFile(m_log, lines);
  m_info.KISetInfoMessage(112);
  EXPECT_EQ(1006u, readLines(m_log).size());  // 1000 is not above the bound
  m_info.KISetInfoMessage(113);
  const auto after = readLines(m_log);
  ASSERT_EQ(6u, after.size());
  EXPECT_EQ(0u, after[0].rfind("DATE:", 0));
  EXPECT_EQ("MESSAGE: Second", after[3]);
}

TEST_F(KaldoInfoLog, OnlyStepsBackwardAreLogged) {
  EXPECT_EQ(1, m_info.KISetToFirst());
  EXPECT_EQ(1, m_info.KISetToNext());
  EXPECT_EQ(1, m_info.KISetToNext());
  EXPECT_EQ(0, m_info.KISetToNext());
  EXPECT_FALSE(fileExists(m_log));
  EXPECT_EQ(1, m_info.KISetToPrevious());
  EXPECT_EQ("MESSAGE: Second", readLines(m_log).at(3));
  EXPECT_EQ(1, m_info.KISetToPrevious());
  EXPECT_EQ(0, m_info.KISetToPrevious());
  unsigned id = 0;
  m_info.KIGetInfoMessage(&id);
  EXPECT_EQ(112u, id);
  // An id in no sheet steps back to the last sheet.
  m_info.KISetInfoType(0);
  m_info.KISetInfoMessage(500);
  EXPECT_EQ(1, m_info.KISetToPrevious());
  m_info.KIGetInfoMessage(&id);
  EXPECT_EQ(114u, id);
  m_info.KISetInfoMessage(500);
  EXPECT_EQ(0, m_info.KISetToNext());
}

TEST_F(KaldoInfoLog, ConfigForLanguageAppendsAndSwitchesLoggingOff) {
  writeFile(m_dir.file("de.kiq"), "[iid][3]112[itx][5]Datei\n[iid][3]300[itx][3]neu\n");
  ASSERT_EQ(1, m_info.KIConfigForLanguage(m_dir.file("de.kiq").c_str()));
  EXPECT_STREQ("File not found", m_info.KIFetchStringForID(112));
  EXPECT_STREQ("neu", m_info.KIFetchStringForID(300));
  int type = 9;
  m_info.KIGetInfoType(&type);
  EXPECT_EQ(0, type);
  char name[261];
  EXPECT_EQ(0, m_info.KIGetLogFileName(name));
  EXPECT_EQ(0, m_info.KISetInfoMessage(112));
  EXPECT_FALSE(fileExists(m_log));
  EXPECT_EQ(0, m_info.KIConfigForLanguage(m_dir.file("missing.kiq").c_str()));
  m_info.KISetComment("");
  EXPECT_EQ(0, m_info.KIConfigForLanguage(m_dir.file("de.kiq").c_str()));
}

std::vector<std::pair<std::string, std::string>> g_shown;

TEST(KaldoInfoDisplay, HandsCaptionAndTextToTheSinkAndReturnsZero) {
  g_shown.clear();
  KUSetMessageSink([](const char* caption, const char* text) { g_shown.emplace_back(caption, text); });
  CKaldoInfo info;
  info.KINewInfoSheet("Disk full", 3);
  EXPECT_EQ(0, info.KIDisplayInfo());
  info.KISetInfoMessage(4);
  EXPECT_EQ(0, info.KIDisplayInfo());
  KUSetMessageSink(nullptr);
  EXPECT_EQ((std::vector<std::pair<std::string, std::string>>{
                {"KALDO Message", "Disk full"},
                {"KALDO Message", "An error has been detected for which there is no message"}}),
            g_shown);
}

TEST(StringTable, LooksUpIdsAndKeepsWithinTheBuffer) {
  TempDir dir;
  writeFile(dir.file("s.kiq"), "[iid][1]7[itx][5]Hello\n");
  char out[8];
  EXPECT_EQ(0, KULoadString(7, out, 4));  // no table yet
  ASSERT_EQ(1, KULoadStringInitialise(dir.file("s.kiq").c_str()));
  std::memset(out, '#', sizeof out);
  EXPECT_EQ(1, KULoadString(7, out, 4));
  EXPECT_STREQ("Hel", out);
  EXPECT_EQ('#', out[4]);
  EXPECT_EQ(0, KULoadString(7, out, 0));
  EXPECT_EQ(0, KULoadString(8, out, 8));
  EXPECT_STREQ("", out);
  // A failed re-initialisation leaves no table behind.
  EXPECT_EQ(0, KULoadStringInitialise(dir.file("missing.kiq").c_str()));
  EXPECT_EQ(0, KULoadString(7, out, 8));
  ASSERT_EQ(1, KULoadStringInitialise(dir.file("s.kiq").c_str()));
  EXPECT_EQ(1, KULoadStringTerminate());
  EXPECT_EQ(0, KULoadString(7, out, 8));
}

long hr(uint32_t code) { return static_cast<long>(static_cast<int32_t>(code)); }

TEST(ErrorMapping, WindowsErrorsAndTheDirectXTableRowByRow) {
  EXPECT_EQ(800, KUwinerr2kwinfo(0));
  EXPECT_EQ(15, KUwinerr2kwinfo(2));
  EXPECT_EQ(15, KUwinerr2kwinfo(-1));
  std::map<uint32_t, int> table = {
      {0x88760005, 801}, {0x88760014, 804}, {0x88760037, 811}, {0x8876005F, 818}, {0x8876006E, 820},
      {0x88760082, 823}, {0x88760096, 827}, {0x887600AA, 829}, {0x887600CD, 832}, {0x887600D4, 837},
      {0x887600DC, 836}, {0x887600E6, 843}, {0x887600FA, 846}, {0x88760104, 848}, {0x88760122, 852},
      {0x8876013C, 854}, {0x8876013D, 855}, {0x88760140, 856}, {0x8876017C, 868}, {0x8876017E, 869},
      {0x88760180, 870}, {0x88760183, 872}, {0x887602C7, 896}, {0x887602C8, 897}, {0x887602C9, 898},
      {0x887602CA, 893}, {0x887602CB, 894}, {0x887602CC, 899}, {0x887602CD, 900}, {0x887602D0, 901},
      {0x887602D1, 904}, {0x887602D2, 905}, {0x887602D3, 906}, {0x887602D4, 907}, {0x887602D5, 908},
      {0x887602D7, 903}, {0x887602D8, 902}, {0x887602DA, 909}, {0x887602DB, 910}, {0x887602DC, 911},
      {0x887602DE, 912}, {0x887602E4, 913}, {0x887602E5, 914}, {0x887602E6, 915}, {0x80004005, 813},
      {0x80070057, 824}, {0x8876000A, 803}, {0x88760028, 809}, {0x8876005A, 814}, {0x88760064, 819},
      {0x88760078, 822}, {0x88760091, 825}, {0x887600A0, 828}, {0x887600B4, 830}, {0x887600D2, 834},
      {0x887600D7, 835}, {0x887600E1, 842}, {0x887600F0, 844}, {0x887600FF, 860}, {0x88760118, 851},
      {0x88760136, 853}, {0x8876014A, 858}, {0x8876014F, 863}, {0x88760154, 864}, {0x8876015E, 865},
      {0x88760168, 866}, {0x8876019A, 875}, {0x887601A4, 876}, {0x887601AE, 877}, {0x887601B8, 878},
      {0x88760190, 808}, {0x887601C2, 879}, {0x887601CC, 880}, {0x887601D6, 881}, {0x887601E0, 882},
      {0x887601EA, 883}, {0x887601FE, 885}, {0x88760208, 886}, {0x88760219, 887}, {0x8876021C, 888},
      {0x88760230, 890}, {0x887602BC, 891}, {0x887602BD, 892}, {0x887602C6, 895}, {0x887602EE, 916},
      {0x80004001, 884}, {0x8007000E, 867},
  };
  const int run231[] = {821, 810, 840, 873, 841, 874, 807, 833, 845, 816, 815, 849, 850, 802, 831,
                        839, 871, 847, 826, 857, 812, 859, 806, 861, 805, 838, 889, 817, 862};
  for (uint32_t i = 0; i < 29; ++i) table[0x88760231u + i] = run231[i];
  for (uint32_t i = 0; i < 13; ++i) table[0x8876030Du + i] = 917 + static_cast<int>(i);
  ASSERT_EQ(129u, table.size());
  for (const auto& [code, id] : table) {
    SCOPED_TRACE(code);
    EXPECT_EQ(id, KUdxrval2kwinfo(hr(code)));
    // Where long is wider than 32 bits the unextended form maps the same.
    EXPECT_EQ(id, KUdxrval2kwinfo(static_cast<long>(static_cast<unsigned long>(code))));
  }
  // Every facility code not in the table, and anything else, is unknown.
  for (uint32_t code = 0x88760000u; code <= 0x88760400u; ++code) {
    if (table.count(code) == 0) {
      EXPECT_EQ(930, KUdxrval2kwinfo(hr(code))) << std::hex << code;
    }
  }
  EXPECT_EQ(800, KUdxrval2kwinfo(0));
  for (long other : {1L, 0x7FFFFFFFL, -1L, hr(0x80004002)}) EXPECT_EQ(930, KUdxrval2kwinfo(other)) << other;
  CKaldoInfo info;
  EXPECT_EQ(801, info.KIdxrval2kwinfo(hr(0x88760005)));
}

}  // namespace
