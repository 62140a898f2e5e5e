// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "KSound.h"
#include "OsSound.h"
#include "TestHooks.h"
#include "TestSupport.h"

namespace {

using kutil::test::TempDir;
using kutil::test::writeFile;

struct Played {
  std::string file;  // "<stop>" for a purge
  unsigned int flags;
};

std::vector<Played> g_played;
int g_playResult = 1;

int recordSound(const char* file, unsigned int flags) {
  g_played.push_back({file ? file : "<stop>", flags});
  return file ? g_playResult : 1;
}

class Sound : public ::testing::Test {
 protected:
  void SetUp() override {
    g_played.clear();
    g_playResult = 1;
    kutil::detail::setSoundPlayer(recordSound);
    m_sound.SOInitialise();
    m_sound.SOEnableSound(1);
  }
  void TearDown() override { kutil::detail::setSoundPlayer(nullptr); }
  std::vector<std::string> playedFiles() const {
    std::vector<std::string> out;
    for (const auto& p : g_played) out.push_back(p.file);
    return out;
  }
  CKSound m_sound;
};

TEST_F(Sound, QueueKeepsTheTwoMostUrgentInOrder) {
  // Each row: requests with their priorities, then what plays until the queue is empty.
  const struct {
    std::vector<std::pair<const char*, int>> requests;
    std::vector<std::string> played;
  } rows[] = {
      {{{"five", 5}, {"three", 3}, {"four", 4}, {"two", 2}}, {"five", "four"}},  // 4 displaces the queued 3
      {{{"five", 5}, {"nine", 9}}, {"nine"}},                                    // more urgent supersedes
      {{{"a", 5}, {"b", 5}, {"c", 5}}, {"a", "b"}},  // equal ones queue, but never displace
  };
  for (const auto& row : rows) {
    g_played.clear();
    for (const auto& [file, priority] : row.requests) m_sound.SORequestSound(file, priority);
    while (m_sound.SOPlaySound()) {
    }
    EXPECT_EQ(row.played, playedFiles());
  }
}

TEST_F(Sound, FlagsDependOnPriorityAndClearStopsEverything) {
  m_sound.SORequestSound("ordinary.wav", 100);
  m_sound.SOPlaySound();
  m_sound.SORequestSound("urgent.wav", 101);
  m_sound.SOPlaySound();
  m_sound.SORequestSound("a.wav", 5);
  m_sound.SORequestSound("b.wav", 3);
  EXPECT_EQ(1, m_sound.SOClearSound());
  ASSERT_EQ(3u, g_played.size());
  EXPECT_EQ(0x20011u, g_played[0].flags);
  EXPECT_EQ(0x20001u, g_played[1].flags);
  EXPECT_EQ("<stop>", g_played[2].file);
  EXPECT_EQ(0x40u, g_played[2].flags);
  EXPECT_EQ(0, m_sound.SOPlaySound());
  // Priorities are back to none: any new request becomes current.
  m_sound.SORequestSound("c.wav", -5);
  EXPECT_EQ(1, m_sound.SOPlaySound());
  EXPECT_EQ("c.wav", g_played.back().file);
}

TEST_F(Sound, DisabledOrFailedSoundsAreStillConsumed) {
  m_sound.SOEnableSound(2);  // only exactly 1 enables
  m_sound.SORequestSound("quiet.wav", 1);
  EXPECT_EQ(1, m_sound.SOPlaySound());
  EXPECT_EQ(0, m_sound.SOPlaySound());
  EXPECT_TRUE(g_played.empty());
  m_sound.SOEnableSound(1);
  g_playResult = 0;
  m_sound.SORequestSound("busy.wav", 1);
  EXPECT_EQ(0, m_sound.SOPlaySound());
  EXPECT_EQ(0, m_sound.SOPlaySound());
  EXPECT_EQ(1u, g_played.size());
}

// Seeds rand() so that its first value hits the background period (or not);
// the next value picks the entry.
TEST_F(Sound, BackgroundSoundIsDrawnFromReadableFilesWhenRandHitsThePeriod) {
  TempDir dir;
  writeFile(dir.file("bad.lst"), "# comment\n\n   \t\n" + dir.file("missing.wav") + "\n");
  EXPECT_EQ(1, m_sound.SOLoadBackgroundList(dir.file("bad.lst").c_str(), 10));
  for (int i = 0; i < 2000; ++i) EXPECT_EQ(0, m_sound.SOPlaySound());  // an empty list never draws
  EXPECT_EQ(0, m_sound.SOLoadBackgroundList(dir.file("absent.lst").c_str(), 10));
  const std::vector<std::string> names = {dir.file("a.wav"), dir.file("b.wav"), dir.file("c.wav")};
  for (const auto& n : names) writeFile(n, "RIFF");
  writeFile(dir.file("bg.lst"), "# sounds\n" + names[0] + "\r\n" + names[1] + "\n" + names[2] + "\n");
  ASSERT_EQ(1, m_sound.SOLoadBackgroundList(dir.file("bg.lst").c_str(), 1));
  unsigned int hit = 0, miss = 0;
  for (unsigned int seed = 1; seed < 200000 && (hit == 0 || miss == 0); ++seed) {
    std::srand(seed);
    (std::rand() % 30 == 0 ? hit : miss) = seed;
  }
  ASSERT_NE(0u, hit);
  std::srand(hit);
  std::rand();
  const std::string expected = names[std::rand() % 3];
  std::srand(miss);
  EXPECT_EQ(0, m_sound.SOPlaySound());
  std::srand(hit);
  EXPECT_EQ(1, m_sound.SOPlaySound());
  ASSERT_EQ(1u, g_played.size());
  EXPECT_EQ(expected, g_played[0].file);
  EXPECT_EQ(0x20011u, g_played[0].flags);  // background sounds have priority 0
  // With a current sound waiting, a drawn sound is queued behind it.
  m_sound.SORequestSound("event.wav", 7);
  std::srand(hit);
  m_sound.SOPlaySound();
  std::srand(miss);
  m_sound.SOPlaySound();
  EXPECT_EQ((std::vector<std::string>{expected, "event.wav", expected}), playedFiles());
}

#if !defined(_WIN32)
TEST(SoundDevice, PlayingAMissingFileFailsAndStoppingAlwaysWorks) {
  TempDir dir;
  EXPECT_FALSE(kutil::platform::playSound(dir.file("missing.wav").c_str(), 0x20011));
  EXPECT_TRUE(kutil::platform::playSound(nullptr, kutil::platform::kSoundPurge));
}
#endif

}  // namespace
