// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "DecideTestSupport.h"

using kutil::test::RowInternals;
using kutil::test::seq;

namespace {

TEST(CKActionRow, NewRowReportsNothingSetAndGettersAnswerExactly) {
  CKActionRow row;
  int value = 99;
  char text[KAR_TEXTDATA_LEN + 1] = "untouched";
  float magnitude = 0;
  // Unset fields answer 0 and leave the output alone; a repeat count of zero is set, only negatives
  // are "none".
  EXPECT_EQ(seq({row.ARGetEvent(&value), row.ARGetRepeatClicks(&value), row.ARGetGrouping(text),
                 row.ARGetTextData(text), value, text, row.ARGetRowType(&value), value,
                 row.ARGetAction(&value), row.ARGetRunState(text), value, text}),
            "0 0 0 0 99 untouched 1 -1 1 1 -1 idle");
  EXPECT_EQ(seq({row.ARSetRepeatClicks(0), row.ARGetRepeatClicks(&value), value, row.ARSetEvent(46),
                 row.ARSetGrouping("g"), row.ARSetTextData("t"), row.ARSetMagnitude(2.5f)}),
            "1 1 0 1 1 1 1");
  EXPECT_EQ(seq({row.ARGetEvent(&value), row.ARGetGrouping(text), row.ARGetMagnitude(&magnitude), value, text,
                 magnitude}),
            "1 1 1 46 g 2.5");
}

// Every code from -2 to 100 through a vocabulary call, as "code" + keyword for each that has one; a
// code without keyword must answer exactly 0 and leave the buffer alone.
template <typename Lookup>
std::string keywords(Lookup lookup) {
  std::string out;
  for (int code = -2; code <= 100; ++code) {
    char word[16] = "keep";
    const int result = lookup(code, word);
    if (result == 1) out += std::to_string(code) + word + " ";
    if (result != 1 && (result != 0 || std::strcmp(word, "keep") != 0)) out += "!" + std::to_string(code);
  }
  return out;
}

TEST(CKActionRow, VocabularyKeywordsCodesAndActionRules) {
  EXPECT_EQ(keywords(CKActionRow::ARGetTextForRowType), "1ON 2IN 3AT ");
  EXPECT_EQ(keywords(CKActionRow::ARGetTextForActionType),
            "0CALL 1RETURN 2MOVE 3STOP 4NULL 5REPLACE 6PLAY 7LOAD 8RUN 9DELETE 10COPY 11CUT 12FOR "
            "13BY 14PING 15GOTO 16PLAYBACK 17ZOOMIN 18ZOOMOUT 19USERGOTO ");
  EXPECT_EQ(keywords(CKActionRow::ARGetTextForMotionType),
            "1FORWARD 2BACKWARD 3TURNLEFT 4TURNRIGHT 5UP 6DOWN 7LOOKUP 8LOOKDOWN 11AUTOLEVEL "
            "12SHIFTLEFT 13SHIFTRIGHT 41TURNUP 42TURNDOWN 43ROLLLEFT 44ROLLRIGHT ");
  EXPECT_EQ(keywords(CKActionRow::ARGetTextForEventType),
            "20select 21deselect 23property 24open 26collide 28impact 45delete 46cut 48copy 80ping ");
  const auto rule = [](int (*accepts)(int)) {
    return keywords(
        [accepts](int code, char* word) { return accepts(code) == 1 ? (*word = 0, 1) : accepts(code); });
  };
  EXPECT_EQ(rule(CKActionRow::ARIsRepeatable), "0 2 4 6 8 14 16 17 18 ");
  EXPECT_EQ(rule(CKActionRow::ARAcceptsTextData), "0 5 6 7 8 14 15 16 19 ");
  EXPECT_EQ(rule(CKActionRow::ARAcceptsMagnitude), "2 17 18 ");

  int code = -7;
  EXPECT_EQ(seq({CKActionRow::ARGetEventTypeFromText(&code, "cut"), code,
                 CKActionRow::ARGetEventTypeFromText(&code, "ping"), code}),
            "1 46 1 80");
  for (const char* t : {"Select", "selec", "selected", "", " cut", "ping "})
    EXPECT_EQ(CKActionRow::ARGetEventTypeFromText(&code, t), 0) << t;
  EXPECT_EQ(code, 80);
}

TEST(CKActionRow, PlaybackReadsTheNamedRecordingAndStartsOverOnRestartOrCopy) {
  kutil::test::TempDir dir;
  const std::string path = dir.file("moves.rec");
  kutil::test::writeFile(path, "[CM][1]1[MG][1]0[TX][0][RP][1]1\n[CM][1]3[MG][1]2[TX][2]hi[RP][1]0\n");
  CKActionRow row, copy, empty;
  row.ARSetAction(KAR_ACTION_PLAYBACK);
  row.ARSetTextData(path.c_str());
  const auto playAll = [](CKActionRow& r) {
    std::string got;
    int code = 0, flags = 0;
    char text[KIR_TEXT_LEN + 1] = "";
    while (RowInternals::getPlaybackCommand(r, &code, &flags, text) == 1)
      got += std::to_string(code) + "/" + std::to_string(flags) + "/" + text + " ";
    return got;
  };
  // Played once, so that the source holds a recorder.
  EXPECT_EQ(seq({playAll(row), RowInternals::recorder(row) != nullptr}), "1/0/ 1/0/ 3/2/hi  1");

  // A copy takes the definition but neither the clock state nor the recorder, so it plays from the start.
  row.ARSetRowType(KAR_ROW_IN);
  row.ARSetGrouping("g");
  row.ARSetRepeatClicks(3);
  row.ARSetMagnitude(1.5f);
  row.ARSetMotion(5);
  row.ARSetRunState("busy");
  row.ARSetCallStack("call.door");
  row.ARSetIterations(2);
  RowInternals::setNext(row, &empty);
  copy.ARSetEvent(KAR_EVENT_SELECT);  // not set in the source: cleared by the copy
  ASSERT_EQ(copy.ARCopyFrom(&row), 1);
  EXPECT_EQ(kutil::test::describe(copy), "2/0/16/5/3/0/1.5/idle/g//" + path);
  EXPECT_EQ(seq({RowInternals::next(copy) == nullptr, RowInternals::recorder(copy) == nullptr, playAll(copy),
                 copy.ARCopyFrom(nullptr), playAll(empty), RowInternals::recorder(empty) == nullptr,
                 RowInternals::restartPlayback(empty), empty.ARSetTextData(dir.file("absent.rec").c_str()),
                 playAll(empty)}),
            "1 1 1/0/ 1/0/ 3/2/hi  0  1 0 1 ");
}

}  // namespace
