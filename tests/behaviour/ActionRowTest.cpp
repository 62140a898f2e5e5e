// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>

#include "ActionRowInternals.h"
#include "KActionRow.h"
#include "TestSupport.h"

namespace {

using RowInternals = kutil::detail::Internals<CKActionRow>;

TEST(CKActionRow, NewRowReportsNothingSet) {
  CKActionRow row;
  int value = 99;
  char text[KAR_TEXTDATA_LEN + 1] = "untouched";
  EXPECT_EQ(row.ARGetEvent(&value) + row.ARGetRepeatClicks(&value) + row.ARGetGrouping(text) +
                row.ARGetTextData(text),
            0);
  EXPECT_EQ(std::to_string(value) + text, "99untouched");
  EXPECT_EQ(RowInternals::rowType(row) + RowInternals::action(row), -2);
  EXPECT_STREQ(RowInternals::runState(row), "idle");
  row.ARSetRepeatClicks(0);  // zero is a set count, only negatives are "none"
  EXPECT_EQ(row.ARGetRepeatClicks(&value), 1);
}

TEST(CKActionRow, VocabularyKeywordsCodesAndActionRules) {
  std::string rows, actions, motions, events, repeatable, text, magnitude;
  char word[16] = "keep";
  for (int code = -2; code <= 100; ++code) {
    if (CKActionRow::ARGetTextForRowType(code, word)) rows += std::to_string(code) + word + " ";
    if (CKActionRow::ARGetTextForActionType(code, word)) actions += std::to_string(code) + word + " ";
    if (CKActionRow::ARGetTextForMotionType(code, word)) motions += std::to_string(code) + word + " ";
    if (CKActionRow::ARGetTextForEventType(code, word)) events += std::to_string(code) + word + " ";
    if (CKActionRow::ARIsRepeatable(code)) repeatable += std::to_string(code) + " ";
    if (CKActionRow::ARAcceptsTextData(code)) text += std::to_string(code) + " ";
    if (CKActionRow::ARAcceptsMagnitude(code)) magnitude += std::to_string(code) + " ";
  }
  EXPECT_EQ(rows, "1ON 2IN 3AT ");
  EXPECT_EQ(actions,
            "0CALL 1RETURN 2MOVE 3STOP 4NULL 5REPLACE 6PLAY 7LOAD 8RUN 9DELETE 10COPY 11CUT 12FOR "
            "13BY 14PING 15GOTO 16PLAYBACK 17ZOOMIN 18ZOOMOUT 19USERGOTO ");
  EXPECT_EQ(motions,
            "1FORWARD 2BACKWARD 3TURNLEFT 4TURNRIGHT 5UP 6DOWN 7LOOKUP 8LOOKDOWN 11AUTOLEVEL "
            "12SHIFTLEFT 13SHIFTRIGHT 41TURNUP 42TURNDOWN 43ROLLLEFT 44ROLLRIGHT ");
  EXPECT_EQ(events, "20select 21deselect 23property 24open 26collide 28impact 45delete 46cut 48copy 80ping ");
  EXPECT_EQ(repeatable, "0 2 4 6 8 14 16 17 18 ");
  EXPECT_EQ(text, "0 5 6 7 8 14 15 16 19 ");
  EXPECT_EQ(magnitude, "2 17 18 ");

  int code = -7;
  EXPECT_EQ(CKActionRow::ARGetEventTypeFromText(&code, "cut"), 1);
  EXPECT_EQ(code, 46);
  code = -7;
  for (const char* t : {"Select", "selec", "selected", "", " cut", "ping "})
    EXPECT_EQ(CKActionRow::ARGetEventTypeFromText(&code, t), 0) << t;
  EXPECT_EQ(CKActionRow::ARGetEventTypeFromText(&code, nullptr), 0);
  EXPECT_EQ(code, -7);
}

TEST(CKActionRow, PlaybackReadsTheNamedRecordingAndStartsOverOnRestartOrCopy) {
  kutil::test::TempDir dir;
  const std::string path = dir.file("moves.rec");
  kutil::test::writeFile(path, "[CM][1]1[MG][1]0[TX][0][RP][1]1\n[CM][1]3[MG][1]2[TX][2]hi[RP][1]0\n");
  CKActionRow row;
  row.ARSetAction(KAR_ACTION_PLAYBACK);
  row.ARSetTextData(path.c_str());
  int code = 0, flags = 0;
  char text[KIR_TEXT_LEN + 1] = "";
  auto playAll = [&](CKActionRow& r) {
    std::string got;
    while (RowInternals::getPlaybackCommand(r, &code, &flags, text))
      got += std::to_string(code) + "/" + std::to_string(flags) + "/" + text + " ";
    return got;
  };
  EXPECT_EQ(RowInternals::isPlayingBack(row), 0) << "no recorder yet";
  EXPECT_EQ(playAll(row), "1/0/ 1/0/ 3/2/hi ");
  ASSERT_NE(RowInternals::recorder(row), nullptr);
  EXPECT_EQ(RowInternals::isPlayingBack(row), 0) << "exhausted and terminated";
  EXPECT_EQ(RowInternals::restartPlayback(row), 0);
  EXPECT_EQ(playAll(row), "1/0/ 1/0/ 3/2/hi ");

  // A copy takes the definition but neither the clock state nor the recorder, so it plays from the start.
  CKActionRow source, other;
  source.ARSetTextData(path.c_str());
  source.ARSetRunState("busy");
  source.ARSetCallStack("call.door");
  source.ARSetIterations(2);
  RowInternals::setNext(source, &other);
  row.ARSetEvent(KAR_EVENT_SELECT);  // not set in the source: cleared by the copy
  ASSERT_EQ(row.ARCopyFrom(&source), 1);
  EXPECT_EQ(row.ARGetEvent(&code), 0);
  EXPECT_STREQ(RowInternals::runState(row), "idle");
  EXPECT_STREQ(RowInternals::callStack(row), "");
  EXPECT_EQ(RowInternals::iterations(row), 0);
  EXPECT_EQ(RowInternals::next(row), nullptr);
  EXPECT_EQ(RowInternals::recorder(row), nullptr);
  EXPECT_EQ(playAll(row), "1/0/ 1/0/ 3/2/hi ");
  EXPECT_EQ(row.ARCopyFrom(nullptr), 0);

  CKActionRow empty;
  EXPECT_EQ(playAll(empty), "");
  EXPECT_EQ(RowInternals::recorder(empty), nullptr);
  EXPECT_EQ(RowInternals::restartPlayback(empty), 0);
  empty.ARSetTextData(dir.file("absent.rec").c_str());
  EXPECT_EQ(playAll(empty), "");
}

}  // namespace
