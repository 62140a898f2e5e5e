// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Reading and writing behaviour files.
#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "test_decide_support.h"

using kutil::test::loadText;
using kutil::test::readFile;
using kutil::test::rowAt;
using kutil::test::rowCount;
using kutil::test::TempDir;

namespace {

class CKDecideFile : public ::testing::Test {
 protected:
  void SetUp() override { table.DEInitialise(); }

  int load(const std::string& text) { return loadText(table, dir, text); }
  unsigned int errorID() {
    unsigned int id = 0;
    return table.DEGetErrorID(&id) ? id : 5;
  }
  std::string comment() {
    char text[KDE_COMMENT_LEN + 1];
    table.DEGetComment(text);
    return text;
  }
  std::string stored() {
    const std::string path = dir.file("out.kvc");
    table.DEStoreToFile(path.c_str());
    return readFile(path);
  }

  TempDir dir;
  CKDecide table;
};

int field(int (CKActionRow::*get)(int*) const, const CKActionRow* row) {
  int value = -99;
  (row->*get)(&value);
  return value;
}
std::string text(int (CKActionRow::*get)(char*) const, const CKActionRow* row) {
  char out[KAR_TEXTDATA_LEN + 1] = "";
  (row->*get)(out);
  return out;
}

TEST_F(CKDecideFile, ReadsTriggerActionMagnitudeAndRepeats) {
  ASSERT_EQ(load("IN walk MOVE FORWARD BY 2 FOR 3\n"), 1);
  ASSERT_EQ(rowCount(table), 1);
  const CKActionRow* row = rowAt(table, 0);
  EXPECT_EQ(field(&CKActionRow::ARGetRowType, row), KAR_ROW_IN);
  EXPECT_EQ(text(&CKActionRow::ARGetGrouping, row), "walk");
  EXPECT_EQ(field(&CKActionRow::ARGetAction, row), KAR_ACTION_MOVE);
  EXPECT_EQ(field(&CKActionRow::ARGetMotion, row), KAR_MOTION_FORWARD);
  float magnitude = 0;
  row->ARGetMagnitude(&magnitude);
  EXPECT_EQ(magnitude, 2.0f);
  EXPECT_EQ(field(&CKActionRow::ARGetRepeatClicks, row), 3);
  EXPECT_EQ(field(&CKActionRow::ARGetIterations, row), 3);
  EXPECT_EQ(errorID(), 5u);
}

TEST_F(CKDecideFile, EveryTriggerBeginsARowAndActionsApplyToTheLatest) {
  ASSERT_EQ(load("ON select CALL walk IN walk NULL\nAT MAAAAAAAAAA0000AA\n  PLAY \"a b.wav\"\n"), 1);
  ASSERT_EQ(rowCount(table), 3);
  EXPECT_EQ(field(&CKActionRow::ARGetEvent, rowAt(table, 0)), KAR_EVENT_SELECT);
  EXPECT_EQ(text(&CKActionRow::ARGetTextData, rowAt(table, 0)), "walk");
  EXPECT_EQ(field(&CKActionRow::ARGetAction, rowAt(table, 1)), KAR_ACTION_NULL);
  EXPECT_EQ(text(&CKActionRow::ARGetGrouping, rowAt(table, 2)), "MAAAAAAAAAA0000AA");
  EXPECT_EQ(field(&CKActionRow::ARGetAction, rowAt(table, 2)), KAR_ACTION_PLAY);
  EXPECT_EQ(text(&CKActionRow::ARGetTextData, rowAt(table, 2)), "a b.wav");
}

TEST_F(CKDecideFile, KeywordsMatchAsPrefixesInTheirFixedOrder) {
  ASSERT_EQ(load("INTO PLAYBACKrec.txt\nONselect PLAYx RUNbook\n"), 1);
  ASSERT_EQ(rowCount(table), 2);
  EXPECT_EQ(field(&CKActionRow::ARGetRowType, rowAt(table, 0)), KAR_ROW_IN);
  EXPECT_EQ(text(&CKActionRow::ARGetGrouping, rowAt(table, 0)), "TO");
  EXPECT_EQ(field(&CKActionRow::ARGetAction, rowAt(table, 0)), KAR_ACTION_PLAYBACK);
  EXPECT_EQ(text(&CKActionRow::ARGetTextData, rowAt(table, 0)), "rec.txt");
  // The later RUN clause replaces the PLAY of the same row.
  EXPECT_EQ(field(&CKActionRow::ARGetAction, rowAt(table, 1)), KAR_ACTION_RUN);
  EXPECT_EQ(text(&CKActionRow::ARGetTextData, rowAt(table, 1)), "book");
}

TEST_F(CKDecideFile, QuotedTokensKeepBlanksAndTakeTheCharacterAfterTheQuote) {
  ASSERT_EQ(load("ON select GOTO \"C:\\My Files\\x.kvc\"NULL\nON open RUN \"\"\nON cut LOAD \"open end\n"), 1);
  ASSERT_EQ(rowCount(table), 3);
  EXPECT_EQ(text(&CKActionRow::ARGetTextData, rowAt(table, 0)), "C:\\My Files\\x.kvc");
  // The closing quote is consumed, so NULL follows as a clause of its own.
  EXPECT_EQ(field(&CKActionRow::ARGetAction, rowAt(table, 0)), KAR_ACTION_NULL);
  EXPECT_EQ(text(&CKActionRow::ARGetTextData, rowAt(table, 1)), "\"");
  EXPECT_EQ(text(&CKActionRow::ARGetTextData, rowAt(table, 2)), "open end");
}

TEST_F(CKDecideFile, CommentsAndBlankLinesAreSkipped) {
  ASSERT_EQ(load("\n# ON select NULL\n\t \r\nON open NULL # ON cut NULL\nON copy NULL#x\n"), 1);
  ASSERT_EQ(rowCount(table), 2);
  EXPECT_EQ(field(&CKActionRow::ARGetEvent, rowAt(table, 0)), KAR_EVENT_OPEN);
  EXPECT_EQ(field(&CKActionRow::ARGetEvent, rowAt(table, 1)), KAR_EVENT_COPY);
}

TEST_F(CKDecideFile, EndTagEndsTheSectionAtLineStartOrWhereAClauseWouldBegin) {
  ASSERT_EQ(load("ON select NULL\n]AVR[ ON open NULL\nON cut NULL\n"), 1);
  EXPECT_EQ(rowCount(table), 1);

  CKDecide door;
  door.DEInitialise();
  door.DESetDelimitingFileTag("[DOOR]");
  EXPECT_STREQ(kutil::detail::DecideAccess::endTag(door), "]ROOD[");
  ASSERT_EQ(loadText(door, dir, "ON select NULL ]ROOD[ ON open NULL\n"), 1);
  EXPECT_EQ(rowCount(door), 1);
  // Under another tag the default end tag is just an unknown word.
  EXPECT_EQ(loadText(door, dir, "]AVR[\n"), 0);
  unsigned int id = 0;
  EXPECT_EQ(door.DEGetErrorID(&id), 1);
  EXPECT_EQ(id, KDE_ERROR_UNKNOWN_WORD);
}

TEST_F(CKDecideFile, SectionsOfOneStreamLoadOneAfterAnother) {
  const std::string path = dir.file("scene.kvc");
  kutil::test::writeFile(path, "ON select NULL\n]AVR[\nON open NULL\nON cut NULL\n]AVR[\n");
  std::FILE* stream = std::fopen(path.c_str(), "r");
  ASSERT_NE(stream, nullptr);
  CKDecide second;
  second.DEInitialise();
  EXPECT_EQ(table.DELoadFromFile(stream), 1);
  EXPECT_EQ(second.DELoadFromFile(stream), 1);
  std::fclose(stream);
  EXPECT_EQ(rowCount(table), 1);
  EXPECT_EQ(rowCount(second), 2);
}

TEST_F(CKDecideFile, FailuresKeepEarlierRowsAndTellWhereAndWhy) {
  EXPECT_EQ(load("ON select CALL walk\nIN walk MOVE SIDEWAYS BY 2\nON open NULL\n"), 0);
  EXPECT_EQ(rowCount(table), 2);
  EXPECT_EQ(errorID(), KDE_ERROR_MOTION);
  EXPECT_EQ(comment(), "MOVE SIDEWAYS BY 2");

  CKDecide other;
  other.DEInitialise();
  EXPECT_EQ(loadText(other, dir, "ON select NULL JUMP high\n"), 0);
  unsigned int id = 0;
  other.DEGetErrorID(&id);
  EXPECT_EQ(id, KDE_ERROR_UNKNOWN_WORD);
  char where[KDE_COMMENT_LEN + 1];
  other.DEGetComment(where);
  EXPECT_STREQ(where, "JUMP high");
  EXPECT_EQ(rowCount(other), 1);
}

TEST_F(CKDecideFile, ActionBeforeAnyTriggerFails) {
  EXPECT_EQ(load("NULL\nON select NULL\n"), 0);
  EXPECT_EQ(rowCount(table), 0);
  EXPECT_EQ(errorID(), KDE_ERROR_ACTION);
}

TEST_F(CKDecideFile, MissingTokensAreRecordedButLoadingGoesOn) {
  // A trigger without its token makes no row; an action without its token is not applied.
  ASSERT_EQ(load("ON\nON select CALL\nON open RUN\n"), 1);
  ASSERT_EQ(rowCount(table), 2);
  EXPECT_EQ(errorID(), KDE_ERROR_ACTION_TOKEN);
  EXPECT_EQ(field(&CKActionRow::ARGetAction, rowAt(table, 0)), -1);
  // RUN alone is complete, with empty text.
  EXPECT_EQ(field(&CKActionRow::ARGetAction, rowAt(table, 1)), KAR_ACTION_RUN);

  CKDecide other;
  other.DEInitialise();
  ASSERT_EQ(loadText(other, dir, "ON open NULL AT\n"), 1);
  unsigned int id = 0;
  EXPECT_EQ(other.DEGetErrorID(&id), 1);
  EXPECT_EQ(id, KDE_ERROR_TRIGGER_TOKEN);
  // A later clean load does not clear the error id.
  ASSERT_EQ(loadText(other, dir, "ON cut NULL\n"), 1);
  EXPECT_EQ(other.DEGetErrorID(&id), 1);
  EXPECT_EQ(id, KDE_ERROR_TRIGGER_TOKEN);
}

TEST_F(CKDecideFile, NonNumericCountsFailWithoutAnErrorId) {
  EXPECT_EQ(load("ON select MOVE UP FOR x\n"), 0);
  EXPECT_EQ(errorID(), 5u);
  EXPECT_EQ(load("ON select MOVE UP BY .5\n"), 0);
  EXPECT_EQ(errorID(), 5u);
  EXPECT_EQ(rowCount(table), 2);
}

TEST_F(CKDecideFile, UnknownEventLoadsButCannotBeStored) {
  ASSERT_EQ(load("ON bump STOP\n"), 1);
  EXPECT_EQ(field(&CKActionRow::ARGetEvent, rowAt(table, 0)), -99);  // getter reports "not set"
  const std::string path = dir.file("out.kvc");
  EXPECT_EQ(table.DEStoreToFile(path.c_str()), 0);
  EXPECT_EQ(readFile(path), "\nON ");
}

TEST_F(CKDecideFile, OverlongLinesAreSplitAndOverlongTokensCut) {
  // A 600-character file name: the line is read in pieces of 259 and the rest is no clause.
  EXPECT_EQ(load("ON select PLAY " + std::string(600, 'a') + "\n"), 0);
  ASSERT_EQ(rowCount(table), 1);
  EXPECT_EQ(text(&CKActionRow::ARGetTextData, rowAt(table, 0)), std::string(259 - 15, 'a'));
  EXPECT_EQ(errorID(), KDE_ERROR_UNKNOWN_WORD);

  CKDecide other;
  other.DEInitialise();
  ASSERT_EQ(loadText(other, dir, "IN " + std::string(200, 'g') + " NULL\n"), 1);
  EXPECT_EQ(text(&CKActionRow::ARGetGrouping, rowAt(other, 0)), std::string(KAR_GROUPING_LEN, 'g'));
}

TEST_F(CKDecideFile, JunkNeverCrashesTheReader) {
  std::mt19937 random(7);
  for (int round = 0; round < 200; ++round) {
    std::string junk;
    const int length = static_cast<int>(random() % 900);
    const char* words[] = {"ON ", "IN ", "AT ", "MOVE ", "\"", "CALL ", "FOR ", "BY ", "#", "]AVR[", "\n", "RUN"};
    for (int i = 0; i < length; ++i) {
      if (random() % 4 == 0) junk += words[random() % 12];
      else junk += static_cast<char>(random() % 256);
    }
    CKDecide t;
    t.DEInitialise();
    const int result = loadText(t, dir, junk);
    EXPECT_TRUE(result == 0 || result == 1);
    char out[KDE_ROW_TEXT_SIZE];
    for (CKActionRow* r = kutil::detail::DecideAccess::firstRow(t); r; r = kutil::detail::ActionRowAccess::next(*r))
      t.DEWriteRow(out, r, 1);
  }
}

TEST_F(CKDecideFile, MissingFilesAndEmptyPathsFail) {
  EXPECT_EQ(table.DELoadFromFile(""), 0);
  EXPECT_EQ(table.DELoadFromFile(static_cast<const char*>(nullptr)), 0);
  EXPECT_EQ(table.DELoadFromFile(dir.file("none.kvc").c_str()), 0);
  EXPECT_EQ(table.DEStoreToFile(""), 0);
  EXPECT_EQ(table.DEStoreToFile(dir.file("no/such/dir.kvc").c_str()), 0);
}

TEST_F(CKDecideFile, WriterProducesTheExactText) {
  ASSERT_EQ(load("ON select CALL spin\nIN spin MOVE TURNLEFT BY 0.5 FOR 4\n"), 1);
  EXPECT_EQ(stored(), "\nON select CALL \"spin\" \nIN spin MOVE TURNLEFT BY 0.500000 FOR 4 ");
}

TEST_F(CKDecideFile, WriterArgumentsByAction) {
  ASSERT_EQ(load("ON open MOVE AUTOLEVEL\nON cut ZOOMOUT BY 1.25\nON copy RUN\nAT W2026AA0000AAAA STOP FOR 0\n"
                 "ON select PING \"hello there\"\n"),
            1);
  EXPECT_EQ(stored(),
            "\nON open MOVE AUTOLEVEL \nON cut ZOOMOUT BY 1.250000 \nON copy RUN \nAT W2026AA0000AAAA STOP FOR 0 "
            "\nON select PING \"hello there\" ");
}

TEST_F(CKDecideFile, StoredTablesReadBackTheSame) {
  const std::string original =
      "ON select CALL door FOR 2\nON open PLAYBACK \"rec.txt\"\nAT MAAAAAAAAAA0000AA PING noon\n"
      "IN door MOVE SHIFTRIGHT BY -0.25 FOR 3\nIN door ZOOMIN BY 2\nIN door USERGOTO \"C:\\a b\\c.kvc\"\n"
      "IN door REPLACE x\nIN door LOAD y\nIN door GOTO z\nIN door DELETE\nIN door COPY\nIN door CUT\n"
      "IN door PLAY w.wav\nIN door RETURN\n";
  ASSERT_EQ(load(original), 1);
  const std::string first = stored();
  CKDecide again;
  again.DEInitialise();
  ASSERT_EQ(loadText(again, dir, first, "again.kvc"), 1);
  ASSERT_EQ(rowCount(again), rowCount(table));
  const std::string path = dir.file("again-out.kvc");
  ASSERT_EQ(again.DEStoreToFile(path.c_str()), 1);
  EXPECT_EQ(readFile(path), first);
}

TEST_F(CKDecideFile, EmptyTableStoresNothingAndFails) {
  const std::string path = dir.file("empty.kvc");
  EXPECT_EQ(table.DEStoreToFile(path.c_str()), 0);
  EXPECT_TRUE(kutil::test::fileExists(path));
  EXPECT_EQ(readFile(path), "");
}

TEST_F(CKDecideFile, RowTextForDisplay) {
  ASSERT_EQ(load("ON select CALL spin\nIN spin MOVE UP BY 1\n"), 1);
  char out[KDE_ROW_TEXT_SIZE];
  EXPECT_EQ(table.DEWriteRow(out, rowAt(table, 1), 7), 1);
  EXPECT_STREQ(out, "IN spin MOVE UP BY 1.000000 ");
  table.DEEnableRowNumbering();
  EXPECT_EQ(table.DEWriteRow(out, rowAt(table, 0), 7), 1);
  EXPECT_STREQ(out, "007: ON select CALL \"spin\" ");

  CKActionRow bare;
  bare.ARSetRowType(KAR_ROW_ON);
  EXPECT_EQ(table.DEWriteRow(out, &bare, 12), 0);
  EXPECT_STREQ(out, "012: ON ");
  table.DEDisableRowNumbering();
  // A row without a row-type keyword starts with its subject, and with no line break in the file form.
  CKActionRow untyped;
  untyped.ARSetGrouping("g");
  untyped.ARSetAction(KAR_ACTION_NULL);
  EXPECT_EQ(table.DEWriteRow(out, &untyped, 0), 1);
  EXPECT_STREQ(out, "g NULL ");
  EXPECT_EQ(table.DEWriteRow(static_cast<char*>(nullptr), &untyped, 0), 0);
}

TEST_F(CKDecideFile, PublicMatchers) {
  int pos = 0;
  int action = -1;
  EXPECT_EQ(table.DEMatchAction("ON   PLAYBACK x", &pos, &action), 0);  // "ON" is no action
  pos = 2;
  EXPECT_EQ(table.DEMatchAction("ON   PLAYBACK x", &pos, &action), 1);
  EXPECT_EQ(action, KAR_ACTION_PLAYBACK);
  EXPECT_EQ(pos, 13);
  pos = 99;
  EXPECT_EQ(table.DEMatchAction("RUN", &pos, &action), 0);

  int motion = 0;
  EXPECT_EQ(table.DEGetMoveType(&motion, "TURNUP"), 1);
  EXPECT_EQ(motion, KAR_MOTION_TURNUP);
  EXPECT_EQ(table.DEGetMoveType(&motion, "ROLLRIGHT"), 1);
  EXPECT_EQ(motion, KAR_MOTION_ROLLRIGHT);
  motion = 0;
  EXPECT_EQ(table.DEGetMoveType(&motion, "UPWARD"), 0);
  EXPECT_EQ(table.DEGetMoveType(&motion, "up"), 0);
  EXPECT_EQ(motion, 0);
}

}  // namespace
