// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>

#include "KActionRow.h"
#include "KFIFO.h"

namespace {

class CKFIFOTest : public ::testing::Test {
 protected:
  void SetUp() override { fifo.FIInitialise(); }

  // Pops everything, returning the codes in order.
  std::string drainCodes(CKFIFO& q) {
    std::string codes;
    int code = 0;
    float magnitude = 0.0f;
    while (q.FIPopFIFOCommand(&code, &magnitude)) codes += std::to_string(code) + ",";
    return codes;
  }

  CKFIFO fifo;
};

TEST_F(CKFIFOTest, PushAndPopCarryEveryField) {
  _D3DVECTOR v = {1.0f, 2.0f, 3.0f};
  ASSERT_EQ(fifo.FIPushFIFOCommand(24, 1.5f, &v, "door.kvc", 9), 1);
  ASSERT_EQ(fifo.FIPushFIFOCommand(2, 0.25f), 1);  // short form: zero vector, no text, flags 0
  int code = 0, flags = 0;
  float magnitude = 0.0f;
  _D3DVECTOR out = {};
  char text[KFI_TEXT_LEN + 1] = "";
  ASSERT_EQ(fifo.FIPeekFIFOCommand(&code, &magnitude, &out, text, &flags), 1);
  ASSERT_EQ(fifo.FIPopFIFOCommand(&code, &magnitude, &out, text, &flags), 1);
  EXPECT_EQ(code, 24);
  EXPECT_EQ(magnitude, 1.5f);
  EXPECT_EQ(flags, 9);
  EXPECT_EQ(out.y, 2.0f);
  EXPECT_STREQ(text, "door.kvc");
  ASSERT_EQ(fifo.FIPopFIFOCommand(&code, &magnitude, &out, text, &flags), 1);
  EXPECT_EQ(code, 2);
  EXPECT_EQ(flags, 0);
  EXPECT_EQ(out.x + out.y + out.z, 0.0f);
  EXPECT_STREQ(text, "");
  EXPECT_EQ(fifo.FITestFIFOCommandPipe(), 0);
  EXPECT_EQ(fifo.FIPopFIFOCommand(nullptr, &magnitude), 0);
}

TEST_F(CKFIFOTest, NinthPushFailsAndLeavesTheQueueUnchanged) {
  for (int i = 1; i <= KFI_SLOT_COUNT; ++i) ASSERT_EQ(fifo.FIPushFIFOCommand(i, 1.0f), 1) << i;
  EXPECT_EQ(fifo.FIPushFIFOCommand(99, 1.0f), 0);
  EXPECT_EQ(fifo.FIGetLastResult(), 0);
  EXPECT_EQ(drainCodes(fifo), "1,2,3,4,5,6,7,8,");
}

TEST_F(CKFIFOTest, EmptyQueueFailsPopAndPeekWithoutTouchingOutputs) {
  for (int i = 1; i <= 3; ++i) fifo.FIPushFIFOCommand(i, 1.0f);
  EXPECT_EQ(drainCodes(fifo), "1,2,3,");
  int code = 77, flags = 77;
  float magnitude = 7.0f;
  _D3DVECTOR v = {7.0f, 7.0f, 7.0f};
  char text[KFI_TEXT_LEN + 1] = "keep";
  EXPECT_EQ(fifo.FIPopFIFOCommand(&code, &magnitude, &v, text, &flags), 0);
  EXPECT_EQ(fifo.FIPeekFIFOCommand(&code, &magnitude, &v, text, &flags), 0);
  EXPECT_EQ(code + flags, 154);
  EXPECT_STREQ(text, "keep");
  EXPECT_EQ(fifo.FIPushFIFOCommand(4, 1.0f), 1);
  EXPECT_EQ(drainCodes(fifo), "4,");
}

TEST_F(CKFIFOTest, CodeMinusOneIsStoredButCountsAsEmpty) {
  EXPECT_EQ(fifo.FIPushFIFOCommand(KFI_EMPTY_CODE, 2.0f), 1);
  EXPECT_EQ(fifo.FITestFIFOCommandPipe(), 0);
  EXPECT_EQ(fifo.FIPopFIFOCommand(), 0);
  EXPECT_EQ(fifo.FIPushFIFOCommand(7, 3.0f), 1);  // reuses that same slot
  EXPECT_EQ(fifo.FIPushFIFOCommand(8, 3.0f), 1);
  EXPECT_EQ(fifo.FIClearFIFOCommandPipe(), 0);  // clear reports 0 by convention
  EXPECT_EQ(fifo.FITestFIFOCommandPipe(), 0);
  EXPECT_EQ(fifo.FIPushFIFOCommand(9, 3.0f), 1);
  EXPECT_EQ(drainCodes(fifo), "9,");
}

TEST_F(CKFIFOTest, OverlongTextIsCutAt260) {
  const std::string longText(300, 'a');
  ASSERT_EQ(fifo.FIPushFIFOCommand(1, 1.0f, longText.c_str(), 0), 1);
  char text[400];
  std::fill(text, text + sizeof text, 'z');
  int code = 0, flags = 0;
  float magnitude = 0.0f;
  ASSERT_EQ(fifo.FIPopFIFOCommand(&code, &magnitude, text, &flags), 1);
  EXPECT_EQ(std::string(text), std::string(260, 'a'));
  EXPECT_EQ(text[261], 'z');  // nothing written past the terminator
}

TEST_F(CKFIFOTest, UpdateFromMovesWhatFitsAndDropsTheRest) {
  CKFIFO source;
  source.FIInitialise();
  for (int i = 0; i < 8; ++i) source.FIPushFIFOCommand(100 + i, 1.0f, "t", 1);
  for (int i = 0; i < 5; ++i) fifo.FIPushFIFOCommand(i, 1.0f);

  EXPECT_EQ(fifo.FIUpdateFIFOFrom(&source, 16), 1);
  EXPECT_EQ(source.FITestFIFOCommandPipe(), 0);
  for (int i = 0; i < 5; ++i) fifo.FIPopFIFOCommand();
  int code = 0, flags = 0;
  float magnitude = 0.0f;
  char text[KFI_TEXT_LEN + 1];
  ASSERT_EQ(fifo.FIPopFIFOCommand(&code, &magnitude, text, &flags), 1);
  EXPECT_EQ(code, 100);
  EXPECT_EQ(flags, 17);  // extra flags OR-ed in
  EXPECT_STREQ(text, "t");
  EXPECT_EQ(drainCodes(fifo), "101,102,");
  EXPECT_EQ(fifo.FIUpdateFIFOFrom(&source), 0);  // nothing left to take
  EXPECT_EQ(fifo.FIUpdateFIFOFrom(nullptr), 0);
  EXPECT_EQ(fifo.FIUpdateFIFOFrom(&fifo), 0);
}

TEST_F(CKFIFOTest, PeekToSelectsByMaskAndRewritesFlagsByMode) {
  fifo.FIPushFIFOCommand(1, 1.0f, "a", 1);
  fifo.FIPushFIFOCommand(2, 1.0f, "b", 2);
  fifo.FIPushFIFOCommand(3, 1.0f, "c", 17);

  auto copyFlags = [&](int mask, int mode) {
    CKFIFO destination;
    destination.FIInitialise();
    const int result = fifo.FIPeekFIFOTo(&destination, mask, mode);
    std::string seen = std::to_string(result) + ":";
    int code = 0, flags = 0;
    float magnitude = 0.0f;
    char text[KFI_TEXT_LEN + 1];
    while (destination.FIPopFIFOCommand(&code, &magnitude, text, &flags))
      seen += std::to_string(code) + text + std::to_string(flags) + " ";
    return seen;
  };
  EXPECT_EQ(copyFlags(KFI_SELECT_ALL, 3), "1:1a3 2b3 3c3 ");
  EXPECT_EQ(copyFlags(KFI_SELECT_ALL, KFI_MODE_KEEP), "1:1a1 2b2 3c17 ");
  EXPECT_EQ(copyFlags(KFI_SELECT_ALL, KFI_MODE_OR + 4), "1:1a5 2b6 3c21 ");
  EXPECT_EQ(copyFlags(16, KFI_MODE_KEEP), "1:3c17 ");  // only flags sharing a mask bit
  EXPECT_EQ(copyFlags(8, KFI_MODE_KEEP), "0:");
  // The source is untouched.
  int code = 0;
  float magnitude = 0.0f;
  ASSERT_EQ(fifo.FIPeekFIFOCommand(&code, &magnitude), 1);
  EXPECT_EQ(code, 1);
  EXPECT_EQ(drainCodes(fifo), "1,2,3,");
  CKFIFO destination;
  destination.FIInitialise();
  EXPECT_EQ(fifo.FIPeekFIFOTo(&destination, KFI_SELECT_ALL, 0), 0);  // empty source
}

TEST_F(CKFIFOTest, PeekToWalksAWrappedRingAndDropsOverflow) {
  for (int i = 0; i < 6; ++i) fifo.FIPushFIFOCommand(i, 1.0f);
  for (int i = 0; i < 6; ++i) fifo.FIPopFIFOCommand();
  for (int i = 10; i < 18; ++i) ASSERT_EQ(fifo.FIPushFIFOCommand(i, 1.0f), 1);  // full, wrapped
  CKFIFO destination;
  destination.FIInitialise();
  destination.FIPushFIFOCommand(1, 1.0f);
  EXPECT_EQ(fifo.FIPeekFIFOTo(&destination, KFI_SELECT_ALL, KFI_MODE_KEEP), 1);
  EXPECT_EQ(drainCodes(destination), "1,10,11,12,13,14,15,16,");
}

TEST(KUGetMagnitudeForFIFOInput, StandardStepsByMotionKind) {
  float m = 0.0f;
  EXPECT_EQ(KUGetMagnitudeForFIFOInput(&m, 0, 1.5f, KAR_MOTION_FORWARD), 1);
  EXPECT_EQ(m, 0.2f);  // exact: single-precision quotient
  EXPECT_EQ(KUGetMagnitudeForFIFOInput(&m, KFI_FLAG_FINE, 1.5f, KAR_MOTION_SHIFTRIGHT), 1);
  EXPECT_EQ(m, 0.2f / 10.0f);
  EXPECT_FLOAT_EQ(m, 0.02f);
  KUGetMagnitudeForFIFOInput(&m, 1, 2.0f, KAR_MOTION_DOWN);  // flags without bit 2: full step
  EXPECT_EQ(m, 0.15f);
  KUGetMagnitudeForFIFOInput(&m, 0, 7.0f, KAR_MOTION_TURNLEFT);
  EXPECT_EQ(m, 0.02f);
  KUGetMagnitudeForFIFOInput(&m, KFI_FLAG_FINE, 7.0f, KAR_MOTION_ROLLRIGHT);
  EXPECT_EQ(m, static_cast<float>(0.002));
  KUGetMagnitudeForFIFOInput(&m, 0, 3.0f, KAR_CMD_ZOOMIN);
  EXPECT_EQ(m, 1.0f);
  KUGetMagnitudeForFIFOInput(&m, KFI_FLAG_FINE, 3.0f, KAR_CMD_ZOOMOUT);
  EXPECT_EQ(m, 0.1f);
  for (int code : {9, 0, -1, KAR_MOTION_AUTOLEVEL, 40 - 1, 59, 80}) {
    m = 5.0f;
    EXPECT_EQ(KUGetMagnitudeForFIFOInput(&m, 0, 1.0f, code), 1);
    EXPECT_EQ(m, -1.0f) << code;
  }
  EXPECT_EQ(KUGetMagnitudeForFIFOInput(nullptr, 0, 1.0f, 1), 0);
}

}  // namespace
