// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The behaviour table's row list, cursor and copy.
#include <gtest/gtest.h>

#include "DecideTestSupport.h"

using namespace kutil::test;

namespace {

CKActionRow* namedRow(const char* name) {
  CKActionRow* row = new CKActionRow;
  row->ARSetGrouping(name);
  return row;
}

std::string names(CKDecide& table) {
  std::string out;
  for (int i = 0; CKActionRow* r = rowAt(table, i); ++i) out += RowInternals::grouping(*r);
  return out;
}

CKActionRow* selected(CKDecide& table) { return TableInternals::selectedRow(table); }

TEST(CKDecideTable, EditingFollowsTheCursorAndRefusesForeignRows) {
  CKDecide table;
  CKActionRow* row = nullptr;
  EXPECT_EQ(table.DESelectFirstActionRow(&row) + table.DEGetSelectedActionRow(&row), 0);
  for (const char* n : {"a", "b", "c"}) EXPECT_EQ(table.DEAddActionRow(namedRow(n)), 1);
  CKActionRow loose, other;  // refused rows are neither linked nor destroyed by the table
  EXPECT_EQ(selected(table), nullptr) << "adding does not select";
  EXPECT_EQ(table.DEInsertActionRow(&loose) + table.DEAppendActionRow(&loose), 0) << "nothing selected";
  EXPECT_EQ(table.DEDeleteSelectedActionRow() + table.DESelectNextActionRow(&row), 0);
  EXPECT_EQ(table.DESetSelectedActionRow(&loose), 1);
  EXPECT_EQ(table.DEInsertActionRow(&other) + table.DEDeleteSelectedActionRow(), 0) << "selection outside";
  EXPECT_EQ(selected(table), nullptr);
  EXPECT_EQ(table.DEAddActionRow(rowAt(table, 0)), 0) << "linking a row twice would make a cycle";

  ASSERT_EQ(table.DESelectFirstActionRow(&row), 1);
  EXPECT_EQ(row, rowAt(table, 0));
  CKActionRow* first = namedRow("0");
  EXPECT_EQ(table.DEInsertActionRow(first), 1);
  EXPECT_EQ(table.DEGetSelectedActionRow(&row), 1);
  EXPECT_EQ(row, first);
  table.DESetSelectedActionRow(rowAt(table, 3));
  EXPECT_EQ(table.DEAppendActionRow(namedRow("z")), 1);
  EXPECT_EQ(selected(table), rowAt(table, 4));
  EXPECT_EQ(table.DEAppendActionRow(rowAt(table, 0)), 0);
  table.DESetSelectedActionRow(rowAt(table, 3));
  EXPECT_EQ(table.DEInsertActionRow(namedRow("m")), 1);
  EXPECT_EQ(names(table), "0abmcz");

  // Next stops on the last row and keeps it selected.
  int steps = 0;
  while (table.DESelectNextActionRow(&row) == 1) ++steps;
  EXPECT_EQ(steps, 2);
  EXPECT_EQ(row, rowAt(table, 5));
  EXPECT_EQ(selected(table), row);
  table.DESetSelectedActionRow(rowAt(table, 2));
  EXPECT_EQ(table.DEDeleteSelectedActionRow(), 1);
  EXPECT_EQ(selected(table), nullptr);
  table.DESelectFirstActionRow(&row);
  EXPECT_EQ(table.DEDeleteSelectedActionRow(), 1);
  table.DESetSelectedActionRow(rowAt(table, 3));
  EXPECT_EQ(table.DEDeleteSelectedActionRow(), 1);
  EXPECT_EQ(names(table), "amc");
  EXPECT_EQ(table.DEDeleteAllActionRows(), 1);
  EXPECT_EQ(table.DESelectFirstActionRow(&row), 0);
  EXPECT_EQ(selected(table), nullptr);
}

TEST(CKDecideTable, CopyTakesRowsAndScaleOnly) {
  CKDecide source, copy, empty;
  CKFIFO fifo;
  for (const char* n : {"a", "b", "c"}) source.DEAddActionRow(namedRow(n));
  source.DESetDelimitingFileTag("[DOOR]");
  source.DEAttachInputFIFO(&fifo);
  source.DEAttachOutputFIFO(&fifo);
  source.DESetItemScaleFactor(2.5f);
  rowAt(source, 0)->ARSetRunState("busy");
  rowAt(source, 0)->ARSetCallStack("call.x");
  rowAt(source, 1)->ARSetRepeatClicks(4);
  copy.DEAddActionRow(namedRow("old"));
  ASSERT_EQ(copy.DECopyFrom(&source), 1);
  EXPECT_EQ(describe(*rowAt(copy, 0)) + " " + describe(*rowAt(copy, 1)) + " " + names(copy),
            "-1/0/-1/0/-1/0/0/idle/a// -1/0/-1/0/4/0/0/idle/b// abc");
  EXPECT_EQ(TableInternals::itemScaleFactor(copy), 2.5f);
  EXPECT_EQ(TableInternals::inputFIFO(copy), TableInternals::outputFIFO(copy));
  EXPECT_EQ(TableInternals::inputFIFO(copy), nullptr);
  EXPECT_STREQ(TableInternals::endTag(copy), "]AVR[");
  EXPECT_EQ(selected(source), rowAt(source, 2)) << "the copy walks the source's cursor to its end";

  empty.DESetItemScaleFactor(9.0f);
  EXPECT_EQ(copy.DECopyFrom(&empty), 0);
  EXPECT_EQ(rowAt(copy, 0), nullptr);
  EXPECT_EQ(TableInternals::itemScaleFactor(copy), 2.5f);
  EXPECT_EQ(copy.DECopyFrom(&copy) + copy.DECopyFrom(nullptr), 0);
}

}  // namespace
