// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Overlong texts, null texts and junk files against the behaviour engine's
// text-taking entry points. Output buffers are heap blocks of exactly the
// documented capacity so that the address sanitizer sees any overrun.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "DecideTestSupport.h"
#include "KActionRow.h"
#include "KDecide.h"
#include "KFIFO.h"
#include "KInputRecord.h"
#include "Overlong.h"
#include "TestSupport.h"

namespace {

using kutil::test::Behaviour;
using kutil::test::kLong;
using kutil::test::longText;
using kutil::test::OutBuffer;
using kutil::test::readLines;
using kutil::test::rowAt;
using kutil::test::rowCount;
using kutil::test::TempDir;
using kutil::test::writeFile;

std::string junkBytes() {
  std::string junk;
  for (int i = 0; i < 4096; ++i) junk += static_cast<char>((i * 131 + 7) & 0xff);
  junk += "\n[CM][[[]]][MG][999999999999][TX][-4]\n[CM][1]";
  return junk;
}

// ---- FIFO ----

TEST(CKFIFOOverlong, TextsAreCutToTheSlotAndPoppedIntoExactBuffers) {
  CKFIFO fifo;
  fifo.FIInitialise();
  const _D3DVECTOR v = {1.0f, 2.0f, 3.0f};
  ASSERT_EQ(fifo.FIPushFIFOCommand(33, 1.0f, longText('a').c_str(), 0), 1);
  ASSERT_EQ(fifo.FIPushFIFOCommand(34, 1.0f, &v, longText('b').c_str(), 0), 1);
  ASSERT_EQ(fifo.FIPushFIFOCommand(35, 1.0f, nullptr, nullptr, 0), 1);
  ASSERT_EQ(fifo.FIPushFIFOCommand(36, 1.0f, nullptr, 0), 1);

  int code = 0;
  int flags = 0;
  float magnitude = 0.0f;
  _D3DVECTOR vector = {};
  OutBuffer peeked(KFI_TEXT_LEN + 1);
  ASSERT_EQ(fifo.FIPeekFIFOCommand(&code, &magnitude, peeked.data(), &flags), 1);
  EXPECT_EQ(peeked.str(), longText('a', KFI_TEXT_LEN));

  // Full-length texts survive both ways of moving commands between queues.
  CKFIFO copied;
  copied.FIInitialise();
  EXPECT_EQ(fifo.FIPeekFIFOTo(&copied, KFI_SELECT_ALL, KFI_MODE_KEEP), 1);
  CKFIFO moved;
  moved.FIInitialise();
  EXPECT_EQ(moved.FIUpdateFIFOFrom(&fifo, 1), 1);
  EXPECT_EQ(fifo.FITestFIFOCommandPipe(), 0);

  const char fills[] = {'a', 'b', '\0', '\0'};
  for (CKFIFO* queue : {&copied, &moved}) {
    for (char fill : fills) {
      OutBuffer text(KFI_TEXT_LEN + 1);
      ASSERT_EQ(queue->FIPopFIFOCommand(&code, &magnitude, &vector, text.data(), &flags), 1);
      EXPECT_EQ(text.str(), fill ? longText(fill, KFI_TEXT_LEN) : std::string());
    }
    OutBuffer empty(KFI_TEXT_LEN + 1);
    EXPECT_EQ(queue->FIPopFIFOCommand(&code, &magnitude, &vector, empty.data(), &flags), 0);
    EXPECT_TRUE(empty.untouched());
  }
  EXPECT_EQ(moved.FIPopFIFOCommand(&code, &magnitude, nullptr, &flags), 0);
}

// ---- Action rows ----

TEST(CKActionRowOverlong, SettersKeepTheirCapacityAndGettersFitExactBuffers) {
  CKActionRow row;
  const std::string text = longText('t');
  ASSERT_EQ(row.ARSetGrouping(text.c_str()), 1);
  ASSERT_EQ(row.ARSetCallStack(text.c_str()), 1);
  ASSERT_EQ(row.ARSetTextData(text.c_str()), 1);
  ASSERT_EQ(row.ARSetRunState(text.c_str()), 1);

  OutBuffer grouping(KAR_GROUPING_LEN + 1);
  OutBuffer callStack(KAR_CALLSTACK_LEN + 1);
  OutBuffer textData(KAR_TEXTDATA_LEN + 1);
  OutBuffer runState(KAR_RUNSTATE_LEN + 1);
  ASSERT_EQ(row.ARGetGrouping(grouping.data()), 1);
  ASSERT_EQ(row.ARGetCallStack(callStack.data()), 1);
  ASSERT_EQ(row.ARGetTextData(textData.data()), 1);
  ASSERT_EQ(row.ARGetRunState(runState.data()), 1);
  EXPECT_EQ(grouping.str(), longText('t', KAR_GROUPING_LEN));
  EXPECT_EQ(callStack.str(), longText('t', KAR_CALLSTACK_LEN));
  EXPECT_EQ(textData.str(), longText('t', KAR_TEXTDATA_LEN));
  EXPECT_EQ(runState.str(), longText('t', KAR_RUNSTATE_LEN));

  // Null texts are refused and change nothing; a copy keeps the full-length fields.
  EXPECT_EQ(row.ARSetGrouping(nullptr), 0);
  EXPECT_EQ(row.ARSetCallStack(nullptr), 0);
  EXPECT_EQ(row.ARSetTextData(nullptr), 0);
  EXPECT_EQ(row.ARSetRunState(nullptr), 0);
  CKActionRow copy;
  ASSERT_EQ(copy.ARCopyFrom(&row), 1);
  OutBuffer copied(KAR_TEXTDATA_LEN + 1);
  ASSERT_EQ(copy.ARGetTextData(copied.data()), 1);
  EXPECT_EQ(copied.str(), longText('t', KAR_TEXTDATA_LEN));
  OutBuffer copiedGroup(KAR_GROUPING_LEN + 1);
  ASSERT_EQ(copy.ARGetGrouping(copiedGroup.data()), 1);
  EXPECT_EQ(copiedGroup.str(), longText('t', KAR_GROUPING_LEN));
}

TEST(CKActionRowOverlong, KeywordsFitTheirDocumentedCapacities) {
  for (int code = -2; code < 100; ++code) {
    OutBuffer rowType(3);
    OutBuffer event(9);
    OutBuffer action(9);
    OutBuffer motion(11);
    if (CKActionRow::ARGetTextForRowType(code, rowType.data()))
      EXPECT_TRUE(rowType.terminated()) << code;
    else
      EXPECT_TRUE(rowType.untouched()) << code;
    if (CKActionRow::ARGetTextForEventType(code, event.data())) {
      EXPECT_TRUE(event.terminated()) << code;
      int back = -1;
      EXPECT_EQ(CKActionRow::ARGetEventTypeFromText(&back, event.str().c_str()), 1);
      EXPECT_EQ(back, code);
    } else {
      EXPECT_TRUE(event.untouched()) << code;
    }
    if (CKActionRow::ARGetTextForActionType(code, action.data()))
      EXPECT_TRUE(action.terminated()) << code;
    else
      EXPECT_TRUE(action.untouched()) << code;
    if (CKActionRow::ARGetTextForMotionType(code, motion.data()))
      EXPECT_TRUE(motion.terminated()) << code;
    else
      EXPECT_TRUE(motion.untouched()) << code;
  }
  int code = 7;
  EXPECT_EQ(CKActionRow::ARGetEventTypeFromText(&code, ("select" + longText('x')).c_str()), 0);
  EXPECT_EQ(CKActionRow::ARGetEventTypeFromText(&code, nullptr), 0);
  EXPECT_EQ(code, 7);
}

// ---- Input recorder ----

TEST(CKInputRecordOverlong, FileNameIsKeptWithinItsField) {
  CKInputRecord recorder;
  ASSERT_EQ(recorder.IRSetFileName(longText('f').c_str(), KIR_MODE_PLAY), 1);
  OutBuffer name(KIR_TEXT_LEN + 1);
  ASSERT_EQ(recorder.IRGetFileName(name.data()), 1);
  EXPECT_EQ(name.str(), longText('f', KIR_TEXT_LEN));
  // The cut name names no file: playback simply has nothing.
  int code = -1;
  int flags = -1;
  OutBuffer text(KIR_TEXT_LEN + 1);
  EXPECT_EQ(recorder.IRGetCommand(&code, &flags, text.data()), 0);
  EXPECT_TRUE(text.untouched());
  EXPECT_EQ(recorder.IRSetFileName(nullptr, KIR_MODE_PLAY), 0);
  OutBuffer again(KIR_TEXT_LEN + 1);
  ASSERT_EQ(recorder.IRGetFileName(again.data()), 1);
  EXPECT_EQ(again.str(), longText('f', KIR_TEXT_LEN));
}

TEST(CKInputRecordOverlong, StoredLongTextsPlayBackCutToTheField) {
  TempDir dir;
  const std::string file = dir.file("input.rec");
  {
    CKInputRecord recorder;
    ASSERT_EQ(recorder.IRSetFileName(file.c_str(), KIR_MODE_STORE), 1);
    EXPECT_EQ(recorder.IRStoreCommand(31, 0, longText('p').c_str(), 0), 1);
    EXPECT_EQ(recorder.IRStoreCommand(31, 0, longText('p').c_str(), 0), 1);
    EXPECT_EQ(recorder.IRStoreCommand(32, 1, nullptr, 0), 1);
    EXPECT_EQ(recorder.IRStoreCommand(33, 0, (longText('q', 100) + "\n" + longText('r')).c_str(), 0), 1);
    EXPECT_EQ(recorder.IRTerminate(), 1);
  }
  for (const std::string& line : readLines(file))
    EXPECT_LT(line.size(), static_cast<std::size_t>(KIR_LINE_LEN));

  CKInputRecord player;
  ASSERT_EQ(player.IRSetFileName(file.c_str(), KIR_MODE_PLAY), 1);
  const struct {
    int code;
    std::string text;
  } expected[] = {{0, ""},
                  {31, longText('p', KIR_TEXT_LEN)},
                  {31, longText('p', KIR_TEXT_LEN)},
                  {32, longText('p', KIR_TEXT_LEN)},
                  {33, longText('q', 100)}};
  for (const auto& want : expected) {
    int code = 0;
    int flags = 0;
    OutBuffer text(KIR_TEXT_LEN + 1);
    ASSERT_EQ(player.IRGetCommand(&code, &flags, text.data()), 1);
    EXPECT_EQ(code, want.code);
    EXPECT_EQ(text.str(), want.text);
  }
  int code = 0;
  int flags = 0;
  OutBuffer end(KIR_TEXT_LEN + 1);
  EXPECT_EQ(player.IRGetCommand(&code, &flags, end.data()), 0);
  EXPECT_EQ(player.IRGetCommand(nullptr, &flags, end.data()), 0);
  EXPECT_EQ(player.IRGetCommand(&code, &flags, nullptr), 0);
}

TEST(CKInputRecordOverlong, LongLinesAndJunkEndPlaybackCleanly) {
  TempDir dir;
  const std::string tooLong =
      "[CM][2]31[MG][1]0[TX][10000]" + longText('x') + "[RP][1]0\n[CM][2]32[MG][1]0[TX][1]y[RP][1]0\n";
  const std::string hugeLength = "[CM][2]31[MG][1]0[TX][99999999999]z[RP][1]0\n";
  const std::string inputs[] = {tooLong, hugeLength, junkBytes(), longText('\n'), ""};
  for (const std::string& content : inputs) {
    const std::string file = dir.file("in.rec");
    ASSERT_TRUE(writeFile(file, content));
    CKInputRecord player;
    ASSERT_EQ(player.IRSetFileName(file.c_str(), KIR_MODE_PLAY), 1);
    for (int i = 0; i < 64; ++i) {
      int code = 0;
      int flags = 0;
      OutBuffer text(KIR_TEXT_LEN + 1);
      if (player.IRGetCommand(&code, &flags, text.data()) == 0) break;
      EXPECT_TRUE(text.terminated());
    }
  }
}

// ---- Behaviour table, file and clock ----

TEST(CKDecideOverlong, TagsAndCommentStayWithinTheirFields) {
  CKDecide table;
  table.DEInitialise();
  ASSERT_EQ(table.DESetDelimitingFileTag(("[" + longText('g')).c_str()), 1);
  EXPECT_EQ(table.DESetDelimitingFileTag(nullptr), 0);

  TempDir dir;
  // The end tag is the reverse of the 15 characters kept.
  const std::string endTag = longText('g', KDE_TAG_LEN - 1) + "[";
  const std::string file = dir.file("tagged.kvc");
  ASSERT_TRUE(writeFile(file, "ON select PLAY a\n" + endTag + "\nON open PLAY b\n"));
  ASSERT_EQ(table.DELoadFromFile(file.c_str()), 1);
  EXPECT_EQ(rowCount(table), 1);

  OutBuffer comment(KDE_COMMENT_LEN + 1);
  ASSERT_EQ(table.DEGetComment(comment.data()), 1);
  EXPECT_TRUE(comment.terminated());
  EXPECT_EQ(table.DEGetComment(nullptr), 0);
}

TEST(CKDecideOverlong, LongLinesFailAtTheirRemainderKeepingCutRows) {
  TempDir dir;
  const std::string file = dir.file("long.kvc");
  ASSERT_TRUE(writeFile(file, "IN " + longText('g') + " PLAY \"" + longText('p') + "\"\n"));
  CKDecide table;
  table.DEInitialise();
  EXPECT_EQ(table.DELoadFromFile(file.c_str()), 0);
  unsigned int id = 0;
  ASSERT_EQ(table.DEGetErrorID(&id), 1);
  ASSERT_GE(rowCount(table), 1);
  OutBuffer grouping(KAR_GROUPING_LEN + 1);
  ASSERT_EQ(rowAt(table, 0)->ARGetGrouping(grouping.data()), 1);
  EXPECT_EQ(grouping.str(), longText('g', KAR_GROUPING_LEN));
  OutBuffer comment(KDE_COMMENT_LEN + 1);
  ASSERT_EQ(table.DEGetComment(comment.data()), 1);
  EXPECT_EQ(comment.str().size(), static_cast<std::size_t>(KDE_COMMENT_LEN));

  // Tokens that nearly fill the 259-character line are kept whole.
  const std::string quoted = dir.file("quoted.kvc");
  ASSERT_TRUE(writeFile(
      quoted, "ON select PLAY \"" + longText('q', 240) + "\"\nON open RUN " + longText('r', 240) + "\n"));
  CKDecide second;
  second.DEInitialise();
  ASSERT_EQ(second.DELoadFromFile(quoted.c_str()), 1);
  OutBuffer data(KAR_TEXTDATA_LEN + 1);
  ASSERT_EQ(rowAt(second, 0)->ARGetTextData(data.data()), 1);
  EXPECT_EQ(data.str(), longText('q', 240));
  OutBuffer data2(KAR_TEXTDATA_LEN + 1);
  ASSERT_EQ(rowAt(second, 1)->ARGetTextData(data2.data()), 1);
  EXPECT_EQ(data2.str(), longText('r', 240));
}

TEST(CKDecideOverlong, JunkFilesAndBadPathsNeverCrash) {
  TempDir dir;
  const std::string inputs[] = {junkBytes(),
                                longText('\n'),
                                longText('"'),
                                longText(' ') + "ON",
                                "ON " + longText('x'),
                                "ON select FOR " + longText('9'),
                                "ON select BY " + longText('9'),
                                "ON select MOVE " + longText('M')};
  for (const std::string& content : inputs) {
    const std::string file = dir.file("junk.kvc");
    ASSERT_TRUE(writeFile(file, content));
    Behaviour b;
    b.table.DELoadFromFile(file.c_str());
    OutBuffer comment(KDE_COMMENT_LEN + 1);
    ASSERT_EQ(b.table.DEGetComment(comment.data()), 1);
    EXPECT_TRUE(comment.terminated());
    for (int i = 0; i < 4; ++i) b.tick(KAR_EVENT_SELECT);
    const std::string stored = dir.file("stored.kvc");
    b.table.DEStoreToFile(stored.c_str());
  }
  CKDecide table;
  table.DEInitialise();
  EXPECT_EQ(table.DELoadFromFile(longText('p').c_str()), 0);
  EXPECT_EQ(table.DELoadFromFile(static_cast<const char*>(nullptr)), 0);
  EXPECT_EQ(table.DELoadFromFile(static_cast<std::FILE*>(nullptr)), 0);
  EXPECT_EQ(table.DEStoreToFile(longText('p').c_str()), 0);
  EXPECT_EQ(table.DEStoreToFile(static_cast<const char*>(nullptr)), 0);
  EXPECT_EQ(table.DEOpenTrace(longText('p').c_str(), 1), 0);
  EXPECT_EQ(table.DEOpenTrace(nullptr, 0), 0);
}

TEST(CKDecideOverlong, RowTextIsCutToItsCapacity) {
  CKDecide table;
  table.DEInitialise();
  table.DEEnableRowNumbering();
  auto* row = new CKActionRow;
  row->ARSetRowType(KAR_ROW_IN);
  row->ARSetGrouping(longText('g').c_str());
  row->ARSetAction(KAR_ACTION_PLAYBACK);
  row->ARSetTextData(longText('t').c_str());
  row->ARSetRepeatClicks(2147483647);
  ASSERT_EQ(table.DEAddActionRow(row), 1);
  OutBuffer text(KDE_ROW_TEXT_SIZE);
  ASSERT_EQ(table.DEWriteRow(text.data(), row, -2147483647 - 1), 1);
  EXPECT_EQ(text.str(), "-2147483648: IN " + longText('g', KAR_GROUPING_LEN) + " PLAYBACK \"" +
                            longText('t', KAR_TEXTDATA_LEN) + "\" FOR 2147483647 ");
  OutBuffer none(KDE_ROW_TEXT_SIZE);
  EXPECT_EQ(table.DEWriteRow(none.data(), nullptr, 1), 0);
  EXPECT_TRUE(none.untouched());

  // Full fields make a line longer than the reader takes at once: the reload keeps a cut row and
  // stops at the line's remainder.
  TempDir dir;
  const std::string file = dir.file("full.kvc");
  ASSERT_EQ(table.DEStoreToFile(file.c_str()), 1);
  CKDecide again;
  again.DEInitialise();
  EXPECT_EQ(again.DELoadFromFile(file.c_str()), 0);
  ASSERT_EQ(rowCount(again), 1);
  OutBuffer data(KAR_TEXTDATA_LEN + 1);
  ASSERT_EQ(rowAt(again, 0)->ARGetTextData(data.data()), 1);
  EXPECT_EQ(data.str(), longText('t', data.str().size()));
}

TEST(CKDecideOverlong, MatchersTakeAnyLength) {
  CKDecide table;
  table.DEInitialise();
  const std::string line = longText(' ') + "PLAYBACK" + longText('x');
  int position = 0;
  int action = -1;
  ASSERT_EQ(table.DEMatchAction(line.c_str(), &position, &action), 1);
  EXPECT_EQ(action, KAR_ACTION_PLAYBACK);
  EXPECT_EQ(position, static_cast<int>(kLong + 8));
  position = static_cast<int>(line.size()) + 1;
  EXPECT_EQ(table.DEMatchAction(line.c_str(), &position, &action), 0);
  position = -5;
  EXPECT_EQ(table.DEMatchAction(line.c_str(), &position, &action), 0);
  EXPECT_EQ(table.DEMatchAction(nullptr, &position, &action), 0);
  int motion = -1;
  EXPECT_EQ(table.DEGetMoveType(&motion, ("FORWARD" + longText('x')).c_str()), 0);
  EXPECT_EQ(table.DEGetMoveType(&motion, nullptr), 0);
  EXPECT_EQ(motion, -1);
}

TEST(CKDecideOverlong, ClockCarriesFullLengthTextsIntoTheOutput) {
  TempDir dir;
  const std::string file = dir.file("clock.kvc");
  // The call names a group longer than the call stack can hold; the PLAYBACK names no file.
  ASSERT_TRUE(writeFile(file, "ON open CALL " + longText('c', 200) + "\nON cut PLAYBACK " +
                                  longText('b', 240) + "\nIN " + longText('c', 200) + " PLAY x\nIN " +
                                  longText('c', 200) + " RETURN\n"));
  Behaviour b;
  ASSERT_EQ(b.table.DELoadFromFile(file.c_str()), 1);
  // A row given an overlong text through the interface, put first so that select finds it.
  auto* play = new CKActionRow;
  play->ARSetRowType(KAR_ROW_ON);
  play->ARSetEvent(KAR_EVENT_SELECT);
  play->ARSetAction(KAR_ACTION_PLAY);
  play->ARSetTextData(longText('p').c_str());
  CKActionRow* first = nullptr;
  ASSERT_EQ(b.table.DESelectFirstActionRow(&first), 1);
  ASSERT_EQ(b.table.DEInsertActionRow(play), 1);
  const auto played = b.tick(KAR_EVENT_SELECT);
  ASSERT_EQ(played.size(), 1u);
  EXPECT_EQ(played[0].text, longText('p', KFI_TEXT_LEN));
  for (int i = 0; i < 4; ++i) {
    b.tick(KAR_EVENT_OPEN);
    b.tick(KAR_EVENT_CUT);
  }
  for (int i = 0; i < 4; ++i) {
    OutBuffer stack(KAR_CALLSTACK_LEN + 1);
    OutBuffer state(KAR_RUNSTATE_LEN + 1);
    ASSERT_EQ(rowAt(b.table, i)->ARGetCallStack(stack.data()), 1);
    ASSERT_EQ(rowAt(b.table, i)->ARGetRunState(state.data()), 1);
  }
  EXPECT_EQ(b.table.DEReset(), 1);

  // A full-length AT row that fires on every tick, traced; then the whole table copied.
  auto* at = new CKActionRow;
  at->ARSetRowType(KAR_ROW_AT);
  at->ARSetGrouping(("M" + longText('A')).c_str());
  at->ARSetAction(KAR_ACTION_GOTO);
  at->ARSetTextData(longText('g').c_str());
  ASSERT_EQ(b.table.DESelectFirstActionRow(&first), 1);
  ASSERT_EQ(b.table.DEInsertActionRow(at), 1);
  const std::string trace = dir.file("trace.txt");
  ASSERT_EQ(b.table.DEOpenTrace(trace.c_str(), 0), 1);
  for (int i = 0; i < 3; ++i) {
    const auto out = b.tick(KAR_EVENT_SELECT);
    for (const auto& command : out) EXPECT_LE(command.text.size(), static_cast<std::size_t>(KFI_TEXT_LEN));
  }
  EXPECT_EQ(b.table.DECloseTrace(), 1);
  EXPECT_NE(kutil::test::readFile(trace).find("[" + longText('g', KAR_TEXTDATA_LEN) + "]"),
            std::string::npos);

  CKDecide copy;
  copy.DEInitialise();
  ASSERT_EQ(copy.DECopyFrom(&b.table), 1);
  OutBuffer copied(KAR_TEXTDATA_LEN + 1);
  ASSERT_EQ(rowAt(copy, 0)->ARGetTextData(copied.data()), 1);
  EXPECT_EQ(copied.str(), longText('g', KAR_TEXTDATA_LEN));
}

}  // namespace
