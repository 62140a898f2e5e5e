// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The behaviour table's row list, cursor, tags and copy.
#include <gtest/gtest.h>

#include "test_decide_support.h"

using kutil::detail::DecideAccess;
using kutil::test::rowAt;
using kutil::test::rowCount;

namespace {

CKActionRow* namedRow(const char* name) {
  CKActionRow* row = new CKActionRow;
  row->ARInitialise();
  row->ARSetRowType(KAR_ROW_IN);
  row->ARSetGrouping(name);
  row->ARSetAction(KAR_ACTION_NULL);
  return row;
}

std::string names(CKDecide& table) {
  std::string out;
  char name[KAR_GROUPING_LEN + 1];
  for (int i = 0; CKActionRow* r = rowAt(table, i); ++i) {
    if (r->ARGetGrouping(name)) out += name;
  }
  return out;
}

class CKDecideTable : public ::testing::Test {
 protected:
  void SetUp() override {
    table.DEInitialise();
    for (const char* n : {"a", "b", "c"}) table.DEAddActionRow(namedRow(n));
  }
  CKDecide table;
};

TEST_F(CKDecideTable, AddAppendsWithoutMovingTheCursor) {
  CKActionRow* selected = nullptr;
  EXPECT_EQ(table.DEGetSelectedActionRow(&selected), 0);
  EXPECT_EQ(names(table), "abc");
  ASSERT_EQ(table.DESelectFirstActionRow(&selected), 1);
  EXPECT_EQ(table.DEAddActionRow(namedRow("d")), 1);
  CKActionRow* now = nullptr;
  table.DEGetSelectedActionRow(&now);
  EXPECT_EQ(now, selected);
  EXPECT_EQ(names(table), "abcd");
}

TEST_F(CKDecideTable, InsertBeforeAndAppendAfterTheSelection) {
  CKActionRow* row = nullptr;
  CKActionRow* refused = namedRow("x");
  EXPECT_EQ(table.DEInsertActionRow(refused), 0) << "nothing selected";
  EXPECT_EQ(table.DEAppendActionRow(refused), 0) << "nothing selected";
  delete refused;
  ASSERT_EQ(table.DESelectFirstActionRow(&row), 1);
  CKActionRow* first = namedRow("0");
  EXPECT_EQ(table.DEInsertActionRow(first), 1);
  EXPECT_EQ(names(table), "0abc");
  table.DEGetSelectedActionRow(&row);
  EXPECT_EQ(row, first);

  table.DESetSelectedActionRow(rowAt(table, 3));
  EXPECT_EQ(table.DEInsertActionRow(namedRow("m")), 1);
  EXPECT_EQ(names(table), "0abmc");

  table.DESetSelectedActionRow(rowAt(table, 4));
  CKActionRow* last = namedRow("z");
  EXPECT_EQ(table.DEAppendActionRow(last), 1);
  EXPECT_EQ(names(table), "0abmcz");
  table.DEGetSelectedActionRow(&row);
  EXPECT_EQ(row, last);
}

TEST_F(CKDecideTable, InsertRefusesASelectionOutsideTheTable) {
  CKActionRow stranger;
  table.DESetSelectedActionRow(&stranger);
  CKActionRow* row = namedRow("x");
  EXPECT_EQ(table.DEInsertActionRow(row), 0);
  delete row;
  EXPECT_EQ(names(table), "abc");
}

TEST_F(CKDecideTable, RowsAlreadyInTheTableAreNotLinkedTwice) {
  EXPECT_EQ(table.DEAddActionRow(rowAt(table, 1)), 0);
  table.DESetSelectedActionRow(rowAt(table, 0));
  EXPECT_EQ(table.DEAppendActionRow(rowAt(table, 2)), 0);
  EXPECT_EQ(table.DEInsertActionRow(rowAt(table, 2)), 0);
  EXPECT_EQ(names(table), "abc");
  EXPECT_EQ(table.DEAddActionRow(nullptr), 0);
}

TEST_F(CKDecideTable, DeleteSelectedUnlinksAndClearsTheCursor) {
  CKActionRow* row = nullptr;
  EXPECT_EQ(table.DEDeleteSelectedActionRow(), 0);
  table.DESetSelectedActionRow(rowAt(table, 1));
  EXPECT_EQ(table.DEDeleteSelectedActionRow(), 1);
  EXPECT_EQ(names(table), "ac");
  EXPECT_EQ(table.DEGetSelectedActionRow(&row), 0);
  table.DESelectFirstActionRow(&row);
  EXPECT_EQ(table.DEDeleteSelectedActionRow(), 1);
  EXPECT_EQ(names(table), "c");

  // A row outside the table is neither unlinked nor destroyed.
  CKActionRow* stranger = namedRow("s");
  table.DESetSelectedActionRow(stranger);
  EXPECT_EQ(table.DEDeleteSelectedActionRow(), 0);
  EXPECT_EQ(table.DEGetSelectedActionRow(&row), 0);
  EXPECT_EQ(names(table), "c");
  delete stranger;

  EXPECT_EQ(table.DEDeleteAllActionRows(), 1);
  EXPECT_EQ(rowCount(table), 0);
  EXPECT_EQ(table.DESelectFirstActionRow(&row), 0);
}

TEST_F(CKDecideTable, SelectNextStopsOnTheLastRow) {
  CKActionRow* row = nullptr;
  EXPECT_EQ(table.DESelectNextActionRow(&row), 0) << "nothing selected";
  ASSERT_EQ(table.DESelectFirstActionRow(&row), 1);
  EXPECT_EQ(table.DESelectNextActionRow(&row), 1);
  EXPECT_EQ(table.DESelectNextActionRow(&row), 1);
  CKActionRow* last = row;
  EXPECT_EQ(table.DESelectNextActionRow(&row), 0);
  EXPECT_EQ(row, last);
  table.DEGetSelectedActionRow(&row);
  EXPECT_EQ(row, last);
}

TEST_F(CKDecideTable, CopyTakesRowsAndScaleButNotTagsFifosOrClockState) {
  CKFIFO fifo;
  fifo.FIInitialise();
  table.DESetDelimitingFileTag("[DOOR]");
  table.DEAttachInputFIFO(&fifo);
  table.DESetItemScaleFactor(2.5f);
  rowAt(table, 0)->ARSetRunState("busy");
  rowAt(table, 0)->ARSetRepeatClicks(4);

  CKDecide copy;
  copy.DEInitialise();
  copy.DEAddActionRow(namedRow("old"));
  ASSERT_EQ(copy.DECopyFrom(&table), 1);
  EXPECT_EQ(names(copy), "abc");
  EXPECT_EQ(kutil::test::runState(rowAt(copy, 0)), "idle");
  int clicks = 0;
  EXPECT_EQ(rowAt(copy, 0)->ARGetRepeatClicks(&clicks), 1);
  EXPECT_EQ(clicks, 4);
  EXPECT_NE(rowAt(copy, 0), rowAt(table, 0));
  EXPECT_EQ(DecideAccess::itemScaleFactor(copy), 2.5f);
  EXPECT_EQ(DecideAccess::inputFIFO(copy), nullptr);
  EXPECT_STREQ(DecideAccess::endTag(copy), "]AVR[");
  // The walk over the source leaves its cursor on its last row.
  CKActionRow* selected = nullptr;
  table.DEGetSelectedActionRow(&selected);
  EXPECT_EQ(selected, rowAt(table, 2));
}

TEST_F(CKDecideTable, CopyOfAnEmptyTableEmptiesButKeepsTheScale) {
  CKDecide empty;
  empty.DEInitialise();
  empty.DESetItemScaleFactor(9.0f);
  table.DESetItemScaleFactor(3.0f);
  EXPECT_EQ(table.DECopyFrom(&empty), 0);
  EXPECT_EQ(rowCount(table), 0);
  EXPECT_EQ(DecideAccess::itemScaleFactor(table), 3.0f);
  EXPECT_EQ(table.DECopyFrom(nullptr), 0);
  EXPECT_EQ(table.DECopyFrom(&table), 0);
}

TEST(CKDecide, TagsCommentAndErrorIdStartAsDocumented) {
  CKDecide table;
  table.DEInitialise();
  EXPECT_STREQ(DecideAccess::endTag(table), "]AVR[");
  unsigned int id = 77;
  EXPECT_EQ(table.DEGetErrorID(&id), 0);
  EXPECT_EQ(id, 77u);
  char comment[KDE_COMMENT_LEN + 1] = "x";
  EXPECT_EQ(table.DEGetComment(comment), 1);
  EXPECT_STREQ(comment, "");
  // The end tag is the whole tag reversed, ends included; tags keep at most 15 characters.
  table.DESetDelimitingFileTag("[abcdefghijklmnopq]");
  EXPECT_STREQ(DecideAccess::endTag(table), "nmlkjihgfedcba[");
  EXPECT_EQ(table.DESetDelimitingFileTag(nullptr), 0);
}

TEST(CKDecide, TraceStreamOpensReplacingOrAppending) {
  kutil::test::TempDir dir;
  const std::string path = dir.file("trace.txt");
  CKDecide table;
  table.DEInitialise();
  EXPECT_EQ(table.DECloseTrace(), 0);
  EXPECT_EQ(table.DEOpenTrace("", 0), 0);
  ASSERT_EQ(table.DEOpenTrace(path.c_str(), 0), 1);
  table.DEReset();
  EXPECT_EQ(table.DEOpenTrace(path.c_str(), 1), 1);
  table.DEReset();
  EXPECT_EQ(kutil::test::readFile(path), "***STOP+RESET***\n***STOP+RESET***\n");
  ASSERT_EQ(table.DEOpenTrace(path.c_str(), 0), 1);
  table.DEReset();
  EXPECT_EQ(table.DECloseTrace(), 1);
  table.DEReset();
  EXPECT_EQ(kutil::test::readFile(path), "***STOP+RESET***\n");
  EXPECT_EQ(table.DEOpenTrace(dir.file("no/such/dir/t.txt").c_str(), 0), 0);
}

}  // namespace
