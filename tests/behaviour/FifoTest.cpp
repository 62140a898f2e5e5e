// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>

#include "KActionRow.h"
#include "KFIFO.h"

namespace {

// Pops everything as "code text flags," items.
std::string drain(CKFIFO& q) {
  std::string out;
  int code = 0, flags = 0;
  float magnitude = 0.0f;
  char text[KFI_TEXT_LEN + 1];
  while (q.FIPopFIFOCommand(&code, &magnitude, text, &flags))
    out += std::to_string(code) + text + std::to_string(flags) + ",";
  return out;
}

TEST(CKFIFO, RingCarriesEveryFieldAndKeepsItsEmptyAndFullRules) {
  CKFIFO fifo;
  const _D3DVECTOR v = {1.0f, 2.0f, 3.0f};
  _D3DVECTOR out = {};
  int code = 77, flags = 77;
  float magnitude = 0.0f;
  char text[KFI_TEXT_LEN + 1] = "keep";
  // Empty: pop and peek fail without touching their outputs.
  EXPECT_EQ(fifo.FIPopFIFOCommand(&code, &magnitude, &out, text, &flags), 0);
  EXPECT_EQ(fifo.FIPeekFIFOCommand(&code, &magnitude, &out, text, &flags), 0);
  EXPECT_EQ(code + flags, 154);
  EXPECT_STREQ(text, "keep");
  EXPECT_EQ(fifo.FIPopFIFOCommand(nullptr, &magnitude), 0);

  ASSERT_EQ(fifo.FIPushFIFOCommand(24, 1.5f, &v, "door.kvc", 9), 1);
  ASSERT_EQ(fifo.FIPushFIFOCommand(2, 0.25f), 1);
  ASSERT_EQ(fifo.FIPeekFIFOCommand(&code, &magnitude, &out, text, &flags), 1);
  EXPECT_EQ(magnitude + out.y, 3.5f);
  EXPECT_EQ(drain(fifo), "24door.kvc9,20,");

  // Code -1 is stored but marks its slot empty; the next push reuses it.
  EXPECT_EQ(fifo.FIPushFIFOCommand(KFI_EMPTY_CODE, 2.0f), 1);
  EXPECT_EQ(fifo.FITestFIFOCommandPipe(), 0);
  EXPECT_EQ(fifo.FIPushFIFOCommand(7, 3.0f), 1);
  EXPECT_EQ(fifo.FIClearFIFOCommandPipe(), 0);
  EXPECT_EQ(fifo.FITestFIFOCommandPipe(), 0);
  for (int i = 1; i <= KFI_SLOT_COUNT; ++i) ASSERT_EQ(fifo.FIPushFIFOCommand(i, 1.0f), 1) << i;
  EXPECT_EQ(fifo.FIPushFIFOCommand(99, 1.0f), 0);
  EXPECT_EQ(fifo.FIGetLastResult(), 0);
  EXPECT_EQ(drain(fifo), "10,20,30,40,50,60,70,80,");
}

TEST(CKFIFO, CopiesSelectByMaskRewriteFlagsAndDropWhatDoesNotFit) {
  CKFIFO fifo;
  // Wrap the ring first so the walk crosses its end.
  for (int i = 0; i < 6; ++i) fifo.FIPushFIFOCommand(i, 1.0f);
  for (int i = 0; i < 6; ++i) fifo.FIPopFIFOCommand();
  fifo.FIPushFIFOCommand(1, 1.0f, "a", 1);
  fifo.FIPushFIFOCommand(2, 1.0f, "b", 2);
  fifo.FIPushFIFOCommand(3, 1.0f, "c", 17);
  struct Case {
    int mask, mode, result;
    const char* copied;
  };
  const Case cases[] = {
      {KFI_SELECT_ALL, 3, 1, "1a3,2b3,3c3,"},
      {KFI_SELECT_ALL, KFI_MODE_KEEP, 1, "1a1,2b2,3c17,"},
      {KFI_SELECT_ALL, KFI_MODE_OR + 4, 1, "1a5,2b6,3c21,"},
      {16, KFI_MODE_KEEP, 1, "3c17,"},
      {8, KFI_MODE_KEEP, 0, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.copied);
    CKFIFO destination;
    EXPECT_EQ(fifo.FIPeekFIFOTo(&destination, c.mask, c.mode), c.result);
    EXPECT_EQ(drain(destination), c.copied);
  }
  // Overflow is dropped; peeking leaves the source untouched, updating empties it.
  CKFIFO destination;
  for (int i = 0; i < 6; ++i) destination.FIPushFIFOCommand(9, 1.0f);
  EXPECT_EQ(fifo.FIPeekFIFOTo(&destination, KFI_SELECT_ALL, KFI_MODE_KEEP), 1);
  EXPECT_EQ(drain(destination), "90,90,90,90,90,90,1a1,2b2,");
  for (int i = 0; i < 6; ++i) destination.FIPushFIFOCommand(9, 1.0f);
  EXPECT_EQ(destination.FIUpdateFIFOFrom(&fifo, 16), 1);
  EXPECT_EQ(fifo.FITestFIFOCommandPipe(), 0);
  EXPECT_EQ(drain(destination), "90,90,90,90,90,90,1a17,2b18,");
  EXPECT_EQ(fifo.FIPeekFIFOTo(&destination, KFI_SELECT_ALL, 0) + destination.FIUpdateFIFOFrom(&fifo), 0);
  EXPECT_EQ(fifo.FIUpdateFIFOFrom(nullptr) + fifo.FIUpdateFIFOFrom(&fifo), 0);
}

TEST(KUGetMagnitudeForFIFOInput, StandardStepsByMotionKind) {
  struct Case {
    int flags;
    float scale;
    int code;
    float expected;
  };
  // Exact comparisons: the quotient is taken in single precision, the fine step in double.
  const Case cases[] = {
      {0, 1.5f, KAR_MOTION_FORWARD, 0.2f},
      {KFI_FLAG_FINE, 1.5f, KAR_MOTION_SHIFTRIGHT, 0.2f / 10.0f},
      {1, 2.0f, KAR_MOTION_DOWN, 0.15f},
      {0, 7.0f, KAR_MOTION_TURNLEFT, 0.02f},
      {KFI_FLAG_FINE, 7.0f, KAR_MOTION_ROLLRIGHT, static_cast<float>(0.002)},
      {0, 3.0f, KAR_CMD_ZOOMIN, 1.0f},
      {KFI_FLAG_FINE, 3.0f, KAR_CMD_ZOOMOUT, 0.1f},
      {0, 1.0f, 9, -1.0f},
      {0, 1.0f, KAR_MOTION_AUTOLEVEL, -1.0f},
      {0, 1.0f, 80, -1.0f},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.code);
    float m = 5.0f;
    EXPECT_EQ(KUGetMagnitudeForFIFOInput(&m, c.flags, c.scale, c.code), 1);
    EXPECT_EQ(m, c.expected);
  }
  EXPECT_EQ(KUGetMagnitudeForFIFOInput(nullptr, 0, 1.0f, 1), 0);
}

}  // namespace
