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

// The selected row's name, or "null".
std::string selected(CKDecide& table) {
  CKActionRow* row = TableInternals::selectedRow(table);
  return row ? RowInternals::grouping(*row) : "null";
}

TEST(CKDecideTable, EditingFollowsTheCursorAndRefusesForeignRows) {
  CKDecide table;
  CKActionRow* row = nullptr;
  EXPECT_EQ(table.DESelectFirstActionRow(&row) + table.DEGetSelectedActionRow(&row), 0);
  for (const char* n : {"a", "b", "c"}) EXPECT_EQ(table.DEAddActionRow(namedRow(n)), 1);
  CKActionRow loose, other;  // refused rows are neither linked nor destroyed by the table
  // Adding does not select; nothing selected, then a selection outside the table: all refused.
  // Linking a row twice would make a cycle.
  EXPECT_EQ(seq({selected(table), table.DEInsertActionRow(&loose), table.DEAppendActionRow(&loose),
                 table.DEDeleteSelectedActionRow(), table.DESelectNextActionRow(&row),
                 table.DESetSelectedActionRow(&loose), table.DEInsertActionRow(&other),
                 table.DEDeleteSelectedActionRow(), selected(table), table.DEAddActionRow(rowAt(table, 0))}),
            "null 0 0 0 0 1 0 0 null 0");
  CKActionRow* first = namedRow("0");
  EXPECT_EQ(seq({table.DESelectFirstActionRow(&row), RowInternals::grouping(*row),
                 table.DEInsertActionRow(first), table.DEGetSelectedActionRow(&row), row == first}),
            "1 a 1 1 1");
  table.DESetSelectedActionRow(rowAt(table, 3));
  EXPECT_EQ(seq({table.DEAppendActionRow(namedRow("z")), selected(table),
                 table.DEAppendActionRow(rowAt(table, 0)), table.DESetSelectedActionRow(rowAt(table, 3)),
                 table.DEInsertActionRow(namedRow("m")), names(table)}),
            "1 z 0 1 1 0abmcz");

  // Next stops on the last row and keeps it selected.
  int steps = 0;
  while (table.DESelectNextActionRow(&row) == 1) ++steps;
  EXPECT_EQ(seq({steps, RowInternals::grouping(*row), selected(table)}), "2 z z");
  table.DESetSelectedActionRow(rowAt(table, 2));
  EXPECT_EQ(seq({table.DEDeleteSelectedActionRow(), selected(table), table.DESelectFirstActionRow(&row),
                 table.DEDeleteSelectedActionRow(), table.DESetSelectedActionRow(rowAt(table, 3)),
                 table.DEDeleteSelectedActionRow(), names(table), table.DEDeleteAllActionRows(),
                 table.DESelectFirstActionRow(&row), selected(table)}),
            "1 null 1 1 1 1 amc 1 0 null");
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
  // The copy walks the source's cursor to its end.
  EXPECT_EQ(
      seq({TableInternals::itemScaleFactor(copy), TableInternals::inputFIFO(copy) == nullptr,
           TableInternals::outputFIFO(copy) == nullptr, TableInternals::endTag(copy), selected(source)}),
      "2.5 1 1 ]AVR[ c");
  empty.DESetItemScaleFactor(9.0f);
  EXPECT_EQ(seq({copy.DECopyFrom(&empty), rowCount(copy), TableInternals::itemScaleFactor(copy),
                 copy.DECopyFrom(&copy), copy.DECopyFrom(nullptr)}),
            "0 0 2.5 0 0");
}

}  // namespace
