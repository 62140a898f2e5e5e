// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "ActionRowAccess.h"
#include "KActionRow.h"
#include "TestSupport.h"

namespace {

using kutil::detail::ActionRowAccess;

TEST(CKActionRow, NewRowReportsNothingSet) {
  CKActionRow row;
  row.ARInitialise();
  int value = 99;
  char text[KAR_TEXTDATA_LEN + 1] = "untouched";
  EXPECT_EQ(row.ARGetEvent(&value) + row.ARGetRepeatClicks(&value), 0);
  EXPECT_EQ(row.ARGetGrouping(text) + row.ARGetTextData(text), 0);
  EXPECT_EQ(value, 99);
  EXPECT_STREQ(text, "untouched");
  EXPECT_EQ(row.ARGetRowType(&value), 1);
  EXPECT_EQ(value, -1);
  EXPECT_EQ(row.ARGetAction(&value), 1);
  EXPECT_EQ(value, -1);
  EXPECT_EQ(row.ARGetRunState(text), 1);
  EXPECT_STREQ(text, "idle");
  row.ARSetRepeatClicks(0);  // zero is a set count, only negatives are "none"
  EXPECT_EQ(row.ARGetRepeatClicks(&value), 1);
}

TEST(CKActionRow, TextSettersStopAtTheFieldCapacity) {
  CKActionRow row;
  const std::string huge(400, 'g');
  EXPECT_EQ(row.ARSetGrouping(huge.c_str()), 1);
  EXPECT_EQ(row.ARSetRunState(huge.c_str()), 1);
  EXPECT_EQ(row.ARSetCallStack(huge.c_str()), 1);
  EXPECT_EQ(row.ARSetTextData(huge.c_str()), 1);
  EXPECT_EQ(std::string(ActionRowAccess::grouping(row)).size(), 64u);
  EXPECT_EQ(std::string(ActionRowAccess::runState(row)).size(), 64u);
  EXPECT_EQ(std::string(ActionRowAccess::callStack(row)).size(), 72u);
  EXPECT_EQ(std::string(ActionRowAccess::textData(row)).size(), 260u);
  EXPECT_EQ(row.ARSetTextData(nullptr), 0);
  EXPECT_EQ(std::string(ActionRowAccess::textData(row)).size(), 260u);
}

TEST(CKActionRow, KeywordsForEveryCodeAndNoneForTheGaps) {
  std::string rows, actions, motions, events;
  char text[16] = "keep";
  for (int code = -2; code <= 100; ++code) {
    if (CKActionRow::ARGetTextForRowType(code, text)) rows += std::to_string(code) + text + " ";
    if (CKActionRow::ARGetTextForActionType(code, text)) actions += std::to_string(code) + text + " ";
    if (CKActionRow::ARGetTextForMotionType(code, text)) motions += std::to_string(code) + text + " ";
    if (CKActionRow::ARGetTextForEventType(code, text)) events += std::to_string(code) + text + " ";
  }
  EXPECT_EQ(rows, "1ON 2IN 3AT ");
  EXPECT_EQ(actions,
            "0CALL 1RETURN 2MOVE 3STOP 4NULL 5REPLACE 6PLAY 7LOAD 8RUN 9DELETE 10COPY 11CUT 12FOR "
            "13BY 14PING 15GOTO 16PLAYBACK 17ZOOMIN 18ZOOMOUT 19USERGOTO ");
  EXPECT_EQ(motions,
            "1FORWARD 2BACKWARD 3TURNLEFT 4TURNRIGHT 5UP 6DOWN 7LOOKUP 8LOOKDOWN 11AUTOLEVEL "
            "12SHIFTLEFT 13SHIFTRIGHT 41TURNUP 42TURNDOWN 43ROLLLEFT 44ROLLRIGHT ");
  EXPECT_EQ(events,
            "20select 21deselect 23property 24open 26collide 28impact 45delete 46cut 48copy 80ping ");
  std::strcpy(text, "keep");
  EXPECT_EQ(CKActionRow::ARGetTextForMotionType(40, text), 0);
  EXPECT_STREQ(text, "keep");  // untouched for a code without keyword
}

TEST(CKActionRow, EventCodesFromExactKeywordsOnly) {
  int code = -7;
  EXPECT_EQ(CKActionRow::ARGetEventTypeFromText(&code, "cut"), 1);
  EXPECT_EQ(code, 46);
  code = -7;
  for (const char* text : {"Select", "selec", "selected", "", " cut", "ping "})
    EXPECT_EQ(CKActionRow::ARGetEventTypeFromText(&code, text), 0) << text;
  EXPECT_EQ(code, -7);
  EXPECT_EQ(CKActionRow::ARGetEventTypeFromText(&code, nullptr), 0);
}

TEST(CKActionRow, ActionRulesForRepeatTextAndMagnitude) {
  std::string repeatable, text, magnitude;
  for (int action = -1; action <= 20; ++action) {
    if (CKActionRow::ARIsRepeatable(action)) repeatable += std::to_string(action) + " ";
    if (CKActionRow::ARAcceptsTextData(action)) text += std::to_string(action) + " ";
    if (CKActionRow::ARAcceptsMagnitude(action)) magnitude += std::to_string(action) + " ";
  }
  EXPECT_EQ(repeatable, "0 2 4 6 8 14 16 17 18 ");
  EXPECT_EQ(text, "0 5 6 7 8 14 15 16 19 ");
  EXPECT_EQ(magnitude, "2 17 18 ");
}

TEST(CKActionRow, CopyTakesTheDefinitionButNotTheClockState) {
  CKActionRow source;
  source.ARSetRowType(KAR_ROW_IN);
  source.ARSetGrouping("door");
  source.ARSetAction(KAR_ACTION_MOVE);
  source.ARSetMotion(KAR_MOTION_UP);
  source.ARSetMagnitude(0.5f);
  source.ARSetRepeatClicks(3);
  source.ARSetTextData("file.kvc");
  source.ARSetRunState("busy");
  source.ARSetCallStack("call.door");
  source.ARSetIterations(2);
  CKActionRow other;
  ActionRowAccess::setNext(source, &other);

  CKActionRow copy;
  copy.ARSetEvent(KAR_EVENT_SELECT);  // not set in the source: cleared by the copy
  ASSERT_EQ(copy.ARCopyFrom(&source), 1);
  int value = 0;
  EXPECT_EQ(copy.ARGetEvent(&value), 0);
  EXPECT_EQ(ActionRowAccess::rowType(copy), KAR_ROW_IN);
  EXPECT_STREQ(ActionRowAccess::grouping(copy), "door");
  EXPECT_EQ(ActionRowAccess::action(copy), KAR_ACTION_MOVE);
  EXPECT_EQ(ActionRowAccess::motion(copy), KAR_MOTION_UP);
  EXPECT_EQ(ActionRowAccess::magnitude(copy), 0.5f);
  EXPECT_EQ(ActionRowAccess::repeatClicks(copy), 3);
  EXPECT_STREQ(ActionRowAccess::textData(copy), "file.kvc");
  EXPECT_STREQ(ActionRowAccess::runState(copy), "idle");
  EXPECT_STREQ(ActionRowAccess::callStack(copy), "");
  EXPECT_EQ(ActionRowAccess::iterations(copy), 0);
  EXPECT_EQ(ActionRowAccess::next(copy), nullptr);
  EXPECT_EQ(copy.ARCopyFrom(nullptr), 0);
}

class CKActionRowPlayback : public ::testing::Test {
 protected:
  void SetUp() override {
    path = dir.file("moves.rec");
    kutil::test::writeFile(path,
                           "[CM][1]1[MG][1]0[TX][0][RP][1]1\n"
                           "[CM][1]3[MG][1]2[TX][2]hi[RP][1]0\n");
    row.ARSetRowType(KAR_ROW_ON);
    row.ARSetAction(KAR_ACTION_PLAYBACK);
    row.ARSetTextData(path.c_str());
  }

  kutil::test::TempDir dir;
  std::string path;
  CKActionRow row;
  int code = 0;
  int flags = 0;
  char text[KIR_TEXT_LEN + 1] = "";
};

TEST_F(CKActionRowPlayback, PlaysTheNamedRecordingThenStops) {
  EXPECT_EQ(ActionRowAccess::isPlayingBack(row), 0);  // no recorder yet
  std::string got;
  while (ActionRowAccess::getPlaybackCommand(row, &code, &flags, text)) {
    got += std::to_string(code) + "/" + std::to_string(flags) + "/" + text + " ";
    EXPECT_EQ(ActionRowAccess::isPlayingBack(row), 1);
  }
  EXPECT_EQ(got, "1/0/ 1/0/ 3/2/hi ");
  ASSERT_NE(ActionRowAccess::recorder(row), nullptr);
  EXPECT_EQ(ActionRowAccess::isPlayingBack(row), 0);  // exhausted and terminated
}

TEST_F(CKActionRowPlayback, RestartAndCopyBothStartOver) {
  while (ActionRowAccess::getPlaybackCommand(row, &code, &flags, text)) {
  }
  EXPECT_EQ(ActionRowAccess::restartPlayback(row), 0);  // always 0
  ASSERT_EQ(ActionRowAccess::getPlaybackCommand(row, &code, &flags, text), 1);
  EXPECT_EQ(code, 1);

  CKActionRow source;
  source.ARSetTextData(path.c_str());
  ASSERT_EQ(row.ARCopyFrom(&source), 1);
  EXPECT_EQ(ActionRowAccess::recorder(row), nullptr);
  ASSERT_EQ(ActionRowAccess::getPlaybackCommand(row, &code, &flags, text), 1);
  EXPECT_EQ(code, 1);
}

TEST_F(CKActionRowPlayback, NoTextOrMissingFileGivesNothing) {
  CKActionRow empty;
  EXPECT_EQ(ActionRowAccess::getPlaybackCommand(empty, &code, &flags, text), 0);
  EXPECT_EQ(ActionRowAccess::recorder(empty), nullptr);
  EXPECT_EQ(ActionRowAccess::restartPlayback(empty), 0);

  row.ARSetTextData(dir.file("absent.rec").c_str());
  EXPECT_EQ(ActionRowAccess::getPlaybackCommand(row, &code, &flags, text), 0);
  EXPECT_EQ(ActionRowAccess::isPlayingBack(row), 0);
}

}  // namespace
