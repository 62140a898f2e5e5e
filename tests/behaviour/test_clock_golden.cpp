// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// A scripted scene must give the same output stream on every platform and build.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#include "test_decide_support.h"

namespace {

struct Fnv1a {
  std::uint64_t value = 14695981039346656037ull;
  void add(const void* data, std::size_t size) {
    const unsigned char* p = static_cast<const unsigned char*>(data);
    for (std::size_t i = 0; i < size; ++i) value = (value ^ p[i]) * 1099511628211ull;
  }
  void add(std::int32_t v) {
    const unsigned char bytes[4] = {static_cast<unsigned char>(v), static_cast<unsigned char>(v >> 8),
                                    static_cast<unsigned char>(v >> 16), static_cast<unsigned char>(v >> 24)};
    add(bytes, 4);
  }
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

  static const int inputs[] = {KAR_EVENT_SELECT, KAR_EVENT_DESELECT, KAR_EVENT_PROPERTY, KAR_EVENT_OPEN,
                               KAR_EVENT_COLLIDE, KAR_EVENT_IMPACT, KAR_EVENT_CUT, KAR_EVENT_COPY, KAR_CMD_RESET,
                               KAR_MOTION_FORWARD, 99};
  std::uint32_t lcg = 12345u;
  int second = 50, minute = 59, hour = 23, day = 21, weekDay = 6;
  Fnv1a hash;
  *outputs = 0;
  for (int t = 0; t < ticks; ++t) {
    if (t > 0 && t % 4 == 0 && ++second == 60) {
      second = 0;
      if (++minute == 60) {
        minute = 0;
        if (++hour == 24) {
          hour = 0;
          ++day;
          weekDay = (weekDay + 1) % 7;
        }
      }
    }
    clock.set(2026, 10, day, weekDay, hour, minute, second);
    lcg = lcg * 1103515245u + 12345u;
    const std::uint32_t r = (lcg >> 16) & 0x7fff;
    if (r % 3 == 0) b.in.FIPushFIFOCommand(inputs[(r / 3) % 11], 1.0f, "in", 2);
    if (r % 17 == 0) b.in.FIPushFIFOCommand(inputs[(r / 17) % 11], 0.5f);
    hash.add(t);
    hash.add(b.table.DEClock());
    for (const kutil::test::Command& c : kutil::test::drain(b.out)) {
      std::uint32_t bits = 0;
      std::memcpy(&bits, &c.magnitude, 4);
      hash.add(c.code);
      hash.add(static_cast<std::int32_t>(bits));
      hash.add(c.flags);
      hash.add(c.text.c_str(), c.text.size() + 1);
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
