// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// A behaviour tick must not allocate: the test program's operator new counts while a window is open.
#include <gtest/gtest.h>

#include <string>

#include "Allocation.h"
#include "DecideTestSupport.h"

namespace {

using kutil::test::Behaviour;

long g_outputs = 0;

// Counts the allocations of ticks ticks, pushing the scripted inputs and popping every output.
long allocationsOver(Behaviour& b, int ticks) {
  static const int inputs[] = {KAR_EVENT_SELECT,
                               -1,
                               KAR_EVENT_OPEN,
                               KAR_MOTION_FORWARD,
                               KAR_EVENT_COLLIDE,
                               -1,
                               KAR_EVENT_CUT,
                               -1,
                               99,
                               KAR_EVENT_IMPACT,
                               KAR_CMD_RESET,
                               -1};
  int code = 0;
  int flags = 0;
  float magnitude = 0;
  char text[KFI_TEXT_LEN + 1];
  g_outputs = 0;
  kutil::test::AllocationCounter counter;
  for (int i = 0; i < ticks; ++i) {
    const int input = inputs[i % (sizeof inputs / sizeof inputs[0])];
    if (input != -1) b.in.FIPushFIFOCommand(input, 1.0f, "text", 3);
    b.table.DEClock();
    while (b.out.FIPopFIFOCommand(&code, &magnitude, text, &flags)) ++g_outputs;
  }
  return counter.count();
}

TEST(CKDecideClockMemory, TicksOfABusyTableAllocateNothing) {
  kutil::test::ScriptedClock clock;
  kutil::test::TempDir dir;
  Behaviour b;
  ASSERT_EQ(kutil::test::loadText(
                b.table, dir,
                "ON select CALL door FOR 2\nON open CALL walk\nON collide MOVE BACKWARD BY 1 FOR 3\n"
                "ON cut PING \"cut\"\nON impact STOP\nAT MAAAAAAAAAAAAAAAA PING tick\n"
                "IN door MOVE TURNLEFT BY 0.5 FOR 2\nIN door CALL swing\nIN door RETURN\n"
                "IN swing ZOOMIN BY 2\nIN swing RETURN\nIN walk MOVE FORWARD FOR 4\n"
                "IN walk PLAY \"step.wav\"\nIN walk RETURN\n"),
            1);
  // The first ticks may warm up whatever the C runtime keeps; none of it may come from a tick.
  allocationsOver(b, 24);
  EXPECT_EQ(allocationsOver(b, 5000), 0);
  EXPECT_GT(g_outputs, 5000) << "the table must really be busy";

  // The counter itself works.
  kutil::test::AllocationCounter counter;
  delete new std::string(100, 'x');
  EXPECT_GE(counter.count(), 1);
}

TEST(CKDecideClockMemory, PlaybackAllocatesItsRecorderOnceOnly) {
  kutil::test::ScriptedClock clock;
  kutil::test::TempDir dir;
  const std::string rec = dir.file("r.rec");
  kutil::test::writeFile(rec, "[CM][1]1[MG][1]0[TX][0][RP][1]2\n[CM][1]3[MG][1]1[TX][0][RP][1]0\n");
  Behaviour b;
  ASSERT_EQ(kutil::test::loadText(b.table, dir, "ON select PLAYBACK \"" + rec + "\"\n"), 1);
  EXPECT_EQ(allocationsOver(b, 200), 1);
  EXPECT_EQ(allocationsOver(b, 200), 0);
}

}  // namespace
