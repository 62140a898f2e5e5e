// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>

#include "DecideTestSupport.h"

using kutil::test::drain;
using kutil::test::seq;

namespace {

TEST(CKFIFO, RingCarriesEveryFieldAndKeepsItsEmptyAndFullRules) {
  CKFIFO fifo;
  ASSERT_EQ(fifo.FIInitialise(), 1);
  const _D3DVECTOR v = {1.0f, 2.0f, 3.0f};
  _D3DVECTOR out = {7, 7, 7};
  int code = 7, flags = 7;
  float magnitude = 7.0f;
  char text[KFI_TEXT_LEN + 1] = "7";
  // Empty: every pop and peek fails without touching its outputs.
  EXPECT_EQ(fifo.FIPopFIFOCommand(&code, &magnitude, &out, text, &flags) + fifo.FIPopFIFOCommand() +
                fifo.FIPeekFIFOCommand(&code, &magnitude, &out, text, &flags) +
                fifo.FIPeekFIFOCommand(&code, &magnitude, text, &flags) +
                fifo.FIPeekFIFOCommand(&code, &magnitude) +
                fifo.FIPopFIFOCommand(&code, &magnitude, text, &flags) +
                fifo.FIPopFIFOCommand(&code, &magnitude),
            0);
  EXPECT_EQ(std::to_string(code + flags + magnitude + out.x + out.y + out.z) + text, "42.0000007");

  // Every push form, then every peek and pop form: peeking twice gives the same, popping moves on.
  ASSERT_EQ(seq({fifo.FIPushFIFOCommand(24, 1.5f, &v, "door.kvc", 9),
                 fifo.FIPushFIFOCommand(2, 0.25f, "b", 3), fifo.FIPushFIFOCommand(5, 0.5f)}),
            "1 1 1");
  for (int i = 0; i < 2; ++i)
    EXPECT_EQ(seq({fifo.FIPeekFIFOCommand(&code, &magnitude, &out, text, &flags), code, flags, text,
                   magnitude, out.x, out.y, out.z}),
              "1 24 9 door.kvc 1.5 1 2 3");
  // Missing outputs fail and leave the queue alone.
  EXPECT_EQ(fifo.FIPeekFIFOCommand(nullptr, &magnitude, &out, text, &flags) +
                fifo.FIPopFIFOCommand(nullptr, &magnitude, &out, text, &flags) +
                fifo.FIPopFIFOCommand(&code, &magnitude, nullptr, text, &flags) +
                fifo.FIPopFIFOCommand(&code, nullptr),
            0);
  EXPECT_EQ(seq({fifo.FIPopFIFOCommand(), fifo.FIPeekFIFOCommand(&code, &magnitude, text, &flags),
                 fifo.FIPopFIFOCommand(&code, &magnitude, text, &flags), code, flags, text,
                 fifo.FIPeekFIFOCommand(&code, &magnitude), fifo.FIPopFIFOCommand(&code, &magnitude), code,
                 magnitude, fifo.FIPopFIFOCommand(), fifo.FITestFIFOCommandPipe()}),
            "1 1 1 2 3 b 1 1 5 0.5 0 0");
  // The emptied ring goes on where it stopped; code -1 is stored but leaves its slot empty.
  EXPECT_EQ(seq({fifo.FIPushFIFOCommand(6, 1.0f), drain(fifo), fifo.FIPushFIFOCommand(KFI_EMPTY_CODE, 2.0f),
                 fifo.FITestFIFOCommandPipe(), fifo.FIPushFIFOCommand(7, 3.0f), drain(fifo)}),
            "1 6:1/0 1 0 1 7:3/0");

  // Eight fit, a ninth is refused.
  for (int i = 1; i <= KFI_SLOT_COUNT; ++i) ASSERT_EQ(fifo.FIPushFIFOCommand(i, 1.0f, "", 1), 1);
  EXPECT_EQ(seq({fifo.FIPushFIFOCommand(99, 1.0f), fifo.FIGetLastResult(), drain(fifo)}),
            "0 0 1:1 2:1 3:1 4:1 5:1 6:1 7:1 8:1");
  EXPECT_EQ(
      seq({fifo.FIPushFIFOCommand(1, 1.0f), fifo.FIClearFIFOCommandPipe(), fifo.FITestFIFOCommandPipe()}),
      "1 0 0")
      << "clearing answers 0, a kept quirk";
}

TEST(CKFIFO, CopiesSelectByMaskRewriteFlagsAndDropWhatDoesNotFit) {
  CKFIFO fifo, destination;
  // Wrap the ring first so the walk crosses its end.
  for (int i = 0; i < 6; ++i) fifo.FIPushFIFOCommand(i, 1.0f);
  for (int i = 0; i < 6; ++i) fifo.FIPopFIFOCommand();
  fifo.FIPushFIFOCommand(1, 1.0f, "a", 1);
  fifo.FIPushFIFOCommand(2, 1.0f, "b", 2);
  fifo.FIPushFIFOCommand(3, 1.0f, "c", 17);
  const struct {
    int mask, mode;
    const char* copied;  // the result, then what arrived
  } cases[] = {{KFI_SELECT_ALL, 3, "1 1:1:a/3 2:1:b/3 3:1:c/3"},
               {KFI_SELECT_ALL, KFI_MODE_KEEP, "1 1:1:a 2:1:b/2 3:1:c/17"},
               {KFI_SELECT_ALL, KFI_MODE_OR + 4, "1 1:1:a/5 2:1:b/6 3:1:c/21"},
               {KFI_SELECT_ALL, KFI_MODE_OR + KFI_MODE_KEEP + 16 + 8, "1 1:1:a/9 2:1:b/10 3:1:c/25"},
               {16, KFI_MODE_KEEP + 16 + 2, "1 3:1:c/17"},
               {16 + 1, 16 + 2, "1 1:1:a/2 3:1:c/2"},
               {8, KFI_MODE_KEEP, "0 "}};
  for (const auto& c : cases)
    EXPECT_EQ(seq({fifo.FIPeekFIFOTo(&destination, c.mask, c.mode), drain(destination)}), c.copied);
  // Overflow is dropped; peeking leaves the source untouched, updating empties it.
  for (int i = 0; i < 6; ++i) destination.FIPushFIFOCommand(9, 1.0f);
  EXPECT_EQ(seq({fifo.FIPeekFIFOTo(&destination, KFI_SELECT_ALL, KFI_MODE_KEEP), drain(destination)}),
            "1 9:1/0 9:1/0 9:1/0 9:1/0 9:1/0 9:1/0 1:1:a 2:1:b/2");
  for (int i = 0; i < 6; ++i) destination.FIPushFIFOCommand(9, 1.0f, "", 1);
  EXPECT_EQ(seq({destination.FIUpdateFIFOFrom(&fifo, 16), drain(destination), drain(fifo),
                 fifo.FIPeekFIFOTo(&destination, KFI_SELECT_ALL, 0), destination.FIUpdateFIFOFrom(&fifo),
                 fifo.FIUpdateFIFOFrom(nullptr), fifo.FIUpdateFIFOFrom(&fifo)}),
            "1 9:1 9:1 9:1 9:1 9:1 9:1 1:1:a/17 2:1:b/18  0 0 0 0");
}

TEST(KUGetMagnitudeForFIFOInput, StandardStepsByMotionKind) {
  // {flags, speed, code, magnitude}: exact, the quotient is taken in single precision, the fine step
  // in double.
  const struct {
    int flags;
    float speed;
    int code;
    float expected;
  } cases[] = {
      {0, 1.5f, 1, 0.2f},  {2, 1.5f, 13, 0.2f / 10}, {1, 2.0f, 6, 0.15f},  {3, 1.5f, 2, 0.2f / 10},
      {0, 0.5f, 5, 0.6f},  {0, 1.0f, 12, 0.3f},      {0, 7.0f, 3, 0.02f},  {2, 7.0f, 44, float(0.002)},
      {4, 1.0f, 4, 0.02f}, {0, 1.0f, 7, 0.02f},      {0, 1.0f, 42, 0.02f}, {0, 3.0f, 40, 1.0f},
      {2, 3.0f, 58, 0.1f}, {0, 1.0f, 11, -1.0f},     {0, 1.0f, 0, -1.0f},  {0, 1.0f, 59, -1.0f}};
  for (const auto& c : cases) {
    float m = 5.0f;
    EXPECT_EQ(KUGetMagnitudeForFIFOInput(&m, c.flags, c.speed, c.code), 1);
    EXPECT_EQ(m, c.expected) << c.code;
  }
  EXPECT_EQ(KUGetMagnitudeForFIFOInput(nullptr, 0, 1.0f, 1), 0);
}

}  // namespace
