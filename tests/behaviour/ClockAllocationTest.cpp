// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// A behaviour tick must not allocate: the test program's operator new counts while a window is open.
#include <gtest/gtest.h>

#include <string>

#include "Allocation.h"
#include "DecideTestSupport.h"

namespace {

using namespace kutil::test;

// Counts the allocations of ticks ticks, pushing the scripted inputs and popping every output into
// *outputs.
long allocationsOver(Behaviour& b, int ticks, long* outputs) {
  static const int inputs[] = {20, -1, 24, 1, 26, -1, 46, -1, 99, 28, 81, -1};
  int code = 0, flags = 0;
  float magnitude = 0;
  char text[KFI_TEXT_LEN + 1];
  *outputs = 0;
  AllocationCounter counter;
  for (int i = 0; i < ticks; ++i) {
    const int input = inputs[i % (sizeof inputs / sizeof inputs[0])];
    if (input != -1) b.in.FIPushFIFOCommand(input, 1.0f, "text", 3);
    b.table.DEClock();
    while (b.out.FIPopFIFOCommand(&code, &magnitude, text, &flags)) ++*outputs;
  }
  return counter.count();
}

TEST(CKDecideClockMemory, TicksAllocateNothingButAPlaybackRecorderOnce) {
  ScriptedClock clock;
  TempDir dir;
  Behaviour b;
  ASSERT_EQ(loadText(b.table, dir,
                     "ON select CALL door FOR 2\nON open CALL walk\nON collide MOVE BACKWARD BY 1 FOR 3\n"
                     "ON cut PING \"cut\"\nON impact STOP\nAT MAAAAAAAAAAAAAAAA PING tick\n"
                     "IN door MOVE TURNLEFT BY 0.5 FOR 2\nIN door CALL swing\nIN door RETURN\n"
                     "IN swing ZOOMIN BY 2\nIN swing RETURN\nIN walk MOVE FORWARD FOR 4\n"
                     "IN walk PLAY \"step.wav\"\nIN walk RETURN\n"),
            1);
  long outputs = 0;
  // The first ticks may warm up whatever the C runtime keeps; none of it may come from a tick.
  allocationsOver(b, 24, &outputs);
  EXPECT_EQ(allocationsOver(b, 5000, &outputs), 0);
  EXPECT_GT(outputs, 5000) << "the table must really be busy";

  const std::string rec = dir.file("r.rec");
  writeFile(rec, "[CM][1]1[MG][1]0[TX][0][RP][1]2\n[CM][1]3[MG][1]1[TX][0][RP][1]0\n");
  Behaviour p;
  ASSERT_EQ(loadText(p.table, dir, "ON select PLAYBACK \"" + rec + "\"\n"), 1);
  EXPECT_EQ(allocationsOver(p, 200, &outputs), 1);
  EXPECT_EQ(allocationsOver(p, 200, &outputs), 0);
  EXPECT_GT(outputs, 50);
}

}  // namespace
