// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "KSound.h"
#include "TestHooks.h"
#include "TestSupport.h"

namespace {

using kutil::test::TempDir;
using kutil::test::writeFile;
using Played = std::vector<std::string>;

// What was played: the file for an ordinary sound (0x20011: no stop, async, file name), with
// "!" for an urgent one that may interrupt (0x20001), "<stop>" for a purge (0x40).
Played g_played;
int g_playResult = 1;

int recordSound(const char* file, unsigned int flags) {
  const char* kind = flags == 0x20011 ? "" : flags == 0x20001 ? "!" : flags == 0x40 ? "" : "?";
  g_played.push_back(std::string(file ? file : "<stop>") + kind +
                     (*kind == '?' ? std::to_string(flags) : ""));
  return file ? g_playResult : 1;
}

// A rand() seed whose first value r meets want(r).
template <typename Want>
unsigned int seedWhere(Want want) {
  for (unsigned int seed = 1;; ++seed) {
    std::srand(seed);
    if (want(std::rand())) return seed;
  }
}

class Sound : public ::testing::Test {
 protected:
  void SetUp() override {
    g_played.clear();
    g_playResult = 1;
    kutil::detail::setSoundPlayer(recordSound);
    EXPECT_EQ(1, m_sound.SOInitialise());
    EXPECT_EQ(0, m_sound.SOIsSoundEnabled());
    EXPECT_EQ(1, m_sound.SOEnableSound(1));
  }
  void TearDown() override { kutil::detail::setSoundPlayer(nullptr); }
  CKSound m_sound;
};

TEST_F(Sound, QueueKeepsTheTwoMostUrgentAndPlaysThemInOrder) {
  // Requests (an empty name stands for SOClearSound), then what plays until the queue is empty.
  const struct {
    std::vector<std::pair<const char*, int>> requests;
    Played played;
  } rows[] = {
      {{{"five", 5}, {"three", 3}, {"four", 4}, {"two", 2}}, {"five", "four"}},  // 4 displaces the queued 3
      {{{"five", 5}, {"nine", 9}}, {"nine"}},                                    // supersedes, nothing queued
      {{{"five", 5}, {"three", 3}}, {"five", "three"}},
      {{{"a", 5}, {"b", 5}, {"c", 5}}, {"a", "b"}},  // equals queue, never displace
      {{{"low", -5}, {"lower", -6}}, {"low", "lower"}},
      {{{"ordinary", 100}, {"urgent", 101}}, {"urgent!"}},  // only above 100 may interrupt
      {{{"a", 5}, {"b", 3}, {"", 0}, {"c", -5}}, {"<stop>", "c"}},
  };
  for (const auto& row : rows) {
    g_played.clear();
    for (const auto& [file, priority] : row.requests) {
      EXPECT_EQ(1, *file ? m_sound.SORequestSound(file, priority) : m_sound.SOClearSound());
    }
    for (int plays = 0; plays < 5 && m_sound.SOPlaySound() == 1; ++plays) {
    }
    EXPECT_EQ(row.played, g_played);
  }
}

TEST_F(Sound, DisabledOrFailedSoundsAreStillConsumed) {
  // Only exactly 1 enables; then a player that fails still takes the sound.
  EXPECT_EQ(kutil::test::seq(
                {m_sound.SOEnableSound(2), m_sound.SOIsSoundEnabled(), m_sound.SORequestSound("quiet.wav", 1),
                 m_sound.SOPlaySound(), m_sound.SOPlaySound(), m_sound.SOEnableSound(1), (g_playResult = 0),
                 m_sound.SORequestSound("busy.wav", 1), m_sound.SOPlaySound(), m_sound.SOPlaySound()}),
            "1 2 1 1 0 1 0 1 0 0");
  EXPECT_EQ(Played{"busy.wav"}, g_played);
}

// Seeds rand() so that its first value hits the background period (or not);
// the next value picks the entry.
TEST_F(Sound, BackgroundSoundsComeFromReadableListedFilesOnceAPeriod) {
  TempDir dir;
  writeFile(dir.file("bad.lst"), "# comment\n\n   \t\n" + dir.file("missing.wav") + "\n");
  EXPECT_EQ(1, m_sound.SOLoadBackgroundList(dir.file("bad.lst").c_str(), 1));
  for (int i = 0; i < 100; ++i) EXPECT_EQ(0, m_sound.SOPlaySound());  // an empty list never draws
  EXPECT_EQ(0, m_sound.SOLoadBackgroundList("", 1));
  const Played names = {dir.file("a.wav"), dir.file("b.wav"), dir.file("c.wav")};
  for (const auto& n : names) writeFile(n, "RIFF");
  writeFile(dir.file("bg.lst"), "# sounds\n" + names[0] + "\r\n" + names[1] + "\n\n" + names[2] + "\n");
  ASSERT_EQ(1, m_sound.SOLoadBackgroundList(dir.file("bg.lst").c_str(), 1));
  const unsigned int hit = seedWhere([](int r) { return r % 30 == 0; });
  const unsigned int miss = seedWhere([](int r) { return r % 30 != 0; });
  std::srand(hit);
  std::rand();
  const std::string drawn = names[std::rand() % 3];
  auto play = [this](unsigned int seed) {
    std::srand(seed);
    return m_sound.SOPlaySound();
  };
  EXPECT_EQ((std::vector<int>{0, 1}), (std::vector<int>{play(miss), play(hit)}));  // drawn at priority 0
  m_sound.SORequestSound("event.wav", 7);
  EXPECT_EQ((std::vector<int>{1, 1}), (std::vector<int>{play(hit), play(miss)}));  // drawn behind it
  m_sound.SORequestSound("first.wav", 7);
  m_sound.SORequestSound("second.wav", 7);
  EXPECT_EQ((std::vector<int>{1, 1, 0}), (std::vector<int>{play(hit), play(miss), play(miss)}));  // no room
  EXPECT_EQ((Played{drawn, "event.wav", drawn, "first.wav", "second.wav"}), g_played);
}

}  // namespace
