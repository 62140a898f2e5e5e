// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "DecideTestSupport.h"
#include "KInputRecord.h"

namespace {

using Items = std::vector<std::string>;
using kutil::test::seq;

std::string item(int code, int flags, const char* text) {
  return std::to_string(code) + "/" + std::to_string(flags) + "/" + text;
}

// Plays a whole recording back as "code/flags/text" items.
Items playAll(const std::string& path) {
  CKInputRecord player;
  EXPECT_EQ(player.IRSetFileName(path.c_str(), KIR_MODE_PLAY), 1);
  Items got;
  int code = 0, flags = 0;
  char text[KIR_TEXT_LEN + 1];
  while (got.size() < 1000 && player.IRGetCommand(&code, &flags, text) == 1)
    got.push_back(item(code, flags, text));
  return got;
}

TEST(CKInputRecord, StoresRunsAfterTheInitialEntryAndDropsOneNullAfterACancel) {
  kutil::test::TempDir dir;
  const std::string path = dir.file("input.rec");
  CKInputRecord recorder;
  // The null after a cancel is dropped (0); a missing text keeps the current one.
  EXPECT_EQ(seq({recorder.IRSetFileName(path.c_str(), KIR_MODE_STORE), recorder.IRIsStoring(),
                 recorder.IRIsPlaying(), recorder.IRStoreCommand(1, 0, "a", 0),
                 recorder.IRStoreCommand(1, 0, "a", 0), recorder.IRStoreCommand(1, 0, "a", 0),
                 recorder.IRStoreCommand(5, KIR_FLAG_CANCEL, "", 0), recorder.IRStoreCommand(0, 0, "", 0),
                 recorder.IRStoreCommand(0, 0, "", 0), recorder.IRStoreCommand(2, 1, nullptr, 0),
                 recorder.IRTerminate(), recorder.IRIsStoring()}),
            "1 1 0 1 1 1 1 0 1 1 1 0");
  EXPECT_EQ(kutil::test::readLines(path),
            (Items{"[CM][1]0[MG][2]-1[TX][0][RP][1]0", "[CM][1]1[MG][1]0[TX][1]a[RP][1]2",
                   "[CM][1]5[MG][1]4[TX][0][RP][1]0", "[CM][1]0[MG][1]0[TX][0][RP][1]0",
                   "[CM][1]2[MG][1]1[TX][0][RP][1]0"}));
  EXPECT_EQ(playAll(path), (Items{"0/-1/", "1/0/a", "1/0/a", "1/0/a", "5/4/", "0/0/", "2/1/"}));
}

TEST(CKInputRecord, PlayingBackARecordingGivesTheStoredStream) {
  // Without flag bit 4 the played stream is the initial entry, then exactly what was stored.
  kutil::test::TempDir dir;
  const std::string path = dir.file("random.rec");
  std::mt19937 rng(16);
  for (int round = 0; round < 20; ++round) {
    CKInputRecord recorder;
    recorder.IRSetFileName(path.c_str(), KIR_MODE_STORE);
    Items stored = {"0/-1/"};
    for (int n = 1 + rng() % 40; n > 0; --n) {
      const int code = 1 + rng() % 3, flags = (rng() % 4) & 3;
      const char* text = rng() % 2 ? "x" : "";
      ASSERT_EQ(recorder.IRStoreCommand(code, flags, text, 0), 1);
      stored.push_back(item(code, flags, text));
    }
    recorder.IRTerminate();
    EXPECT_EQ(playAll(path), stored);
  }
}

TEST(CKInputRecord, PlaybackPairsFlaggedCommandsAndReadsLinesLeniently) {
  const std::string good = "[CM][1]1[MG][1]0[TX][1]a[RP][1]0\n";
  const struct {
    std::string file;
    Items played;
  } cases[] = {
      // Two flagged commands in a row: the first is marked with bit 8.
      {"[CM][1]5[MG][1]4[TX][1]p[RP][1]0\n[CM][1]6[MG][1]4[TX][1]q[RP][1]0\n"
       "[CM][1]7[MG][1]0[TX][0][RP][1]0\n",
       {"5/12/p", "6/4/q", "7/0/"}},
      // The look-ahead returns the next run as often as recorded; a flagged last line comes alone.
      {"[CM][1]5[MG][1]4[TX][0][RP][1]0\n[CM][1]6[MG][1]0[TX][0][RP][1]2\n[CM][1]9[MG][1]4[TX][0][RP][1]0\n",
       {"5/4/", "6/0/", "6/0/", "6/0/", "9/4/"}},
      // Only a line without a command segment ends the playback.
      {good + "garbage\n" + good, {"1/0/a"}},
      {good + "[CM][1]x[MG][1]0[TX][1]a[RP][1]0\n" + good, {"1/0/a", "0/0/a", "1/0/a"}},
      {good + "[CM][1]7[MG][1]3[TX][9]a[RP][1]0\n" + good, {"1/0/a", "7/3/a[RP][1]0", "1/0/a"}},
      {good + std::string("[CM][1]7\x01\xff\x7f[MG]\n", 16) + good, {"1/0/a", "7/0/", "1/0/a"}},
  };
  kutil::test::TempDir dir;
  const std::string path = dir.file("input.rec");
  for (const auto& c : cases) {
    SCOPED_TRACE(c.file);
    kutil::test::writeFile(path, c.file);
    EXPECT_EQ(playAll(path), c.played);
  }
}

TEST(CKInputRecord, WrongModeMissingNameAndMissingFileFail) {
  kutil::test::TempDir dir;
  CKInputRecord recorder;
  int code = 0, flags = 0;
  char text[KIR_TEXT_LEN + 1];
  // In neither mode; playing a missing file; storing into a missing folder or under an empty name.
  EXPECT_EQ(seq({recorder.IRStoreCommand(1, 0, "", 0), recorder.IRGetFileName(text),
                 recorder.IRSetFileName(dir.file("absent.rec").c_str(), KIR_MODE_PLAY),
                 recorder.IRGetFileName(text), text == dir.file("absent.rec"), recorder.IRIsPlaying(),
                 recorder.IRIsStoring(), recorder.IRGetCommand(&code, &flags, text),
                 recorder.IRStoreCommand(1, 0, "", 0),
                 recorder.IRSetFileName(dir.file("no/such/dir/x.rec").c_str(), KIR_MODE_STORE),
                 recorder.IRStoreCommand(1, 0, "", 0), recorder.IRGetCommand(&code, &flags, text),
                 recorder.IRSetFileName("", KIR_MODE_STORE), recorder.IRStoreCommand(1, 0, "", 0),
                 recorder.IRGetCommand(nullptr, &flags, text), recorder.IRSetNULLCancelling(1)}),
            "0 0 1 1 1 1 0 0 0 1 0 0 1 0 0 1");
}

}  // namespace
