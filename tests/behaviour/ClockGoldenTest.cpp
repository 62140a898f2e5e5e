// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// A scripted scene must give the same output stream on every platform and build.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#include "DecideTestSupport.h"

namespace {

struct Fnv1a {
  std::uint64_t value = 14695981039346656037ull;
  void add(const char* text) {
    do add(static_cast<unsigned char>(*text));
    while (*text++ != 0);
  }
  void add(std::int32_t v) {
    for (int shift = 0; shift < 32; shift += 8) add(static_cast<unsigned char>(v >> shift));
  }
  void add(unsigned char byte) { value = (value ^ byte) * 1099511628211ull; }
};

// Runs the scene for a number of ticks with a clock that starts just before midnight and moves on one
// second every four ticks; returns the hash of every tick's result and output commands.
std::uint64_t runScene(int ticks, int* outputs) {
  kutil::test::ScriptedClock clock;
  kutil::test::Behaviour b;
  if (b.table.DELoadFromFile(kutil::test::testDataPath("behaviour/data/scene.kvc").c_str()) != 1) return 0;
  const std::string rec = kutil::test::testDataPath("behaviour/data/scene.rec");
  kutil::test::rowAt(b.table, 1)->ARSetTextData(rec.c_str());
  b.table.DESetItemScaleFactor(1.5f);

  // select, deselect, property, open, collide, impact, cut, copy, reset, forward and an unknown code
  static const int inputs[] = {20, 21, 23, 24, 26, 28, 46, 48, 81, 1, 99};
  std::uint32_t lcg = 12345u;
  Fnv1a hash;
  *outputs = 0;
  for (int t = 0; t < ticks; ++t) {
    const int since = (23 * 60 + 59) * 60 + 50 + t / 4;  // seconds since midnight of day 21
    const int days = since / 86400;
    clock.set(2026, 10, 21 + days, (6 + days) % 7, since / 3600 % 24, since / 60 % 60, since % 60);
    lcg = lcg * 1103515245u + 12345u;
    const std::uint32_t r = (lcg >> 16) & 0x7fff;
    if (r % 3 == 0) b.in.FIPushFIFOCommand(inputs[(r / 3) % 11], 1.0f, "in", 2);
    if (r % 17 == 0) b.in.FIPushFIFOCommand(inputs[(r / 17) % 11], 0.5f);
    hash.add(t);
    const std::vector<kutil::test::Command> out = b.tick();
    hash.add(b.result);
    for (const kutil::test::Command& c : out) {
      std::uint32_t bits = 0;
      std::memcpy(&bits, &c.magnitude, 4);
      hash.add(c.code);
      hash.add(static_cast<std::int32_t>(bits));
      hash.add(c.flags);
      hash.add(c.text.c_str());  // with its terminator
      ++*outputs;
    }
  }
  return hash.value;
}

TEST(CKDecideClockGolden, ScriptedSceneGivesTheKnownOutputStream) {
  int outputs = 0;
  const std::uint64_t first = runScene(3000, &outputs);
  EXPECT_GT(outputs, 1000);
  EXPECT_EQ(runScene(3000, &outputs), first) << "the same scene twice in one process";
  EXPECT_EQ(first, 0x1c26738422f26b28ull) << std::hex << first;
}

}  // namespace
