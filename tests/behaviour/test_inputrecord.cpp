// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "KInputRecord.h"
#include "TestSupport.h"

namespace {

using kutil::test::TempDir;

// Plays a whole recording back as "code/flags/text" items.
std::vector<std::string> playAll(const std::string& path) {
  CKInputRecord player;
  player.IRInitialise();
  player.IRSetFileName(path.c_str(), KIR_MODE_PLAY);
  std::vector<std::string> got;
  int code = 0, flags = 0;
  char text[KIR_TEXT_LEN + 1];
  while (got.size() < 100 && player.IRGetCommand(&code, &flags, text))
    got.push_back(std::to_string(code) + "/" + std::to_string(flags) + "/" + text);
  player.IRTerminate();
  return got;
}

class CKInputRecordTest : public ::testing::Test {
 protected:
  void SetUp() override {
    path = dir.file("input.rec");
    recorder.IRInitialise();
  }

  TempDir dir;
  std::string path;
  CKInputRecord recorder;
};

TEST_F(CKInputRecordTest, StoresRunsWithTheInitialEntryFirst) {
  ASSERT_EQ(recorder.IRSetFileName(path.c_str(), KIR_MODE_STORE), 1);
  EXPECT_EQ(recorder.IRIsStoring(), 1);
  EXPECT_EQ(recorder.IRStoreCommand(1, 0, "a", 0), 1);
  EXPECT_EQ(recorder.IRStoreCommand(1, 0, "a", 0), 1);
  EXPECT_EQ(recorder.IRStoreCommand(1, 0, "a", 0), 1);
  EXPECT_EQ(recorder.IRStoreCommand(2, 0, "b", 0), 1);
  EXPECT_EQ(recorder.IRTerminate(), 1);
  EXPECT_EQ(recorder.IRIsStoring(), 0);

  const std::vector<std::string> lines = kutil::test::readLines(path);
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[0], "[CM][1]0[MG][2]-1[TX][0][RP][1]0");
  EXPECT_EQ(lines[1], "[CM][1]1[MG][1]0[TX][1]a[RP][1]2");
  EXPECT_EQ(lines[2], "[CM][1]2[MG][1]0[TX][1]b[RP][1]0");

  EXPECT_EQ(playAll(path), (std::vector<std::string>{"0/-1/", "1/0/a", "1/0/a", "1/0/a", "2/0/b"}));
}

TEST_F(CKInputRecordTest, NullAfterAFlaggedCommandIsDroppedOnce) {
  recorder.IRSetFileName(path.c_str(), KIR_MODE_STORE);
  EXPECT_EQ(recorder.IRStoreCommand(5, KIR_FLAG_CANCEL, "", 0), 1);
  EXPECT_EQ(recorder.IRStoreCommand(0, 0, "", 0), 0);  // dropped
  EXPECT_EQ(recorder.IRStoreCommand(0, 0, "", 0), 1);  // stored
  recorder.IRTerminate();
  const std::vector<std::string> lines = kutil::test::readLines(path);
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[1], "[CM][1]5[MG][1]4[TX][0][RP][1]0");
  EXPECT_EQ(lines[2], "[CM][1]0[MG][1]0[TX][0][RP][1]0");
}

TEST_F(CKInputRecordTest, WrongModeMissingNameAndMissingFileFail) {
  int code = 0, flags = 0;
  char text[KIR_TEXT_LEN + 1];
  EXPECT_EQ(recorder.IRStoreCommand(1, 0, "", 0), 0);  // neither mode
  EXPECT_EQ(recorder.IRGetFileName(text), 0);

  recorder.IRSetFileName(path.c_str(), KIR_MODE_STORE);
  EXPECT_EQ(recorder.IRGetCommand(&code, &flags, text), 0);
  recorder.IRTerminate();

  recorder.IRSetFileName("", KIR_MODE_PLAY);
  EXPECT_EQ(recorder.IRGetCommand(&code, &flags, text), 0);
  recorder.IRSetFileName(dir.file("absent.rec").c_str(), KIR_MODE_PLAY);
  EXPECT_EQ(recorder.IRIsPlaying(), 1);
  EXPECT_EQ(recorder.IRGetCommand(&code, &flags, text), 0);
  EXPECT_EQ(recorder.IRStoreCommand(1, 0, "", 0), 0);  // playing, not storing
  EXPECT_EQ(recorder.IRGetFileName(text), 1);
  EXPECT_EQ(std::string(text), dir.file("absent.rec"));

  recorder.IRSetFileName(dir.file("no/such/dir/x.rec").c_str(), KIR_MODE_STORE);
  EXPECT_EQ(recorder.IRStoreCommand(1, 0, "", 0), 0);
  EXPECT_EQ(recorder.IRSetFileName(nullptr, KIR_MODE_STORE), 0);
  EXPECT_EQ(recorder.IRGetCommand(nullptr, &flags, text), 0);
}

TEST_F(CKInputRecordTest, TwoFlaggedCommandsInARowArePairedWithBit8) {
  kutil::test::writeFile(path,
                         "[CM][1]5[MG][1]4[TX][1]p[RP][1]0\n"
                         "[CM][1]6[MG][1]4[TX][1]q[RP][1]0\n"
                         "[CM][1]7[MG][1]0[TX][0][RP][1]0\n");
  EXPECT_EQ(playAll(path), (std::vector<std::string>{"5/12/p", "6/4/q", "7/0/"}));
}

TEST_F(CKInputRecordTest, LookAheadReturnsTheNextRunAsOftenAsRecorded) {
  kutil::test::writeFile(path,
                         "[CM][1]5[MG][1]4[TX][0][RP][1]0\n"
                         "[CM][1]6[MG][1]0[TX][0][RP][1]2\n"
                         "[CM][1]9[MG][1]4[TX][0][RP][1]0\n");
  // The flagged last line finds nothing to look ahead to and is returned alone.
  EXPECT_EQ(playAll(path), (std::vector<std::string>{"5/4/", "6/0/", "6/0/", "6/0/", "9/4/"}));
}

TEST_F(CKInputRecordTest, OnlyALineWithoutACommandEndsThePlayback) {
  const std::string good = "[CM][1]1[MG][1]0[TX][1]a[RP][1]0\n";
  const std::vector<std::string> ending = {
      "garbage\n",
      " [CM][1]1[MG][1]0[TX][1]a[RP][1]0\n",  // leading blank
      "[MG][1]0[TX][1]a[RP][1]0\n",           // no command
      "\n",
  };
  for (const std::string& line : ending) {
    kutil::test::writeFile(path, good + line + good);
    EXPECT_EQ(playAll(path), (std::vector<std::string>{"1/0/a"})) << line;
  }
  // A line with a command is played with what can be read from it.
  const std::vector<std::pair<std::string, std::string>> lenient = {
      {"[CM][1]x[MG][1]0[TX][1]a[RP][1]0\n", "0/0/a"},      // code not a number
      {"[CM][1]7[MG][1]0[TX][1]a\n", "7/0/a"},              // no repeat count
      {"[CM][1]7[MG][1]3[TX][9]a[RP][1]0\n", "7/3/a[RP][1]0"},  // text length swallows the rest
      {std::string("[CM][1]7\x01\xff\x7f[MG]\n", 16), "7/0/"},
  };
  for (const auto& c : lenient) {
    kutil::test::writeFile(path, good + c.first + good);
    EXPECT_EQ(playAll(path), (std::vector<std::string>{"1/0/a", c.second, "1/0/a"})) << c.first;
  }
}

TEST_F(CKInputRecordTest, OverlongAndMultiLineTextsStayOneRecord) {
  recorder.IRSetFileName(path.c_str(), KIR_MODE_STORE);
  recorder.IRStoreCommand(1, 0, std::string(300, 'w').c_str(), 0);
  recorder.IRStoreCommand(2, 0, "first\nsecond", 0);
  recorder.IRTerminate();
  EXPECT_EQ(kutil::test::readLines(path).size(), 3u);
  const std::vector<std::string> got = playAll(path);
  ASSERT_EQ(got.size(), 3u);
  EXPECT_EQ(got[1], "1/0/" + std::string(260, 'w'));
  EXPECT_EQ(got[2], "2/0/first");
}

}  // namespace
