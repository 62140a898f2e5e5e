// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Reading and writing behaviour files.
#include <gtest/gtest.h>

#include <cstdio>

#include "DecideTestSupport.h"

using namespace kutil::test;

namespace {

unsigned int errorID(CKDecide& table) {
  unsigned int id = 0;
  return table.DEGetErrorID(&id) == 1 ? id : KDE_ERROR_NONE;
}

// The display text of every row, one per line: a compact view of everything the reader set.
std::string rowTexts(CKDecide& table) {
  std::string out;
  char text[KDE_ROW_TEXT_SIZE];
  for (int i = 0; CKActionRow* r = rowAt(table, i); ++i) {
    table.DEWriteRow(text, r, i);
    out += std::string(text) + "\n";
  }
  return out;
}

TEST(CKDecideFile, ReaderTable) {
  const struct {
    std::string text;
    int result;
    unsigned int error;
    const char* comment;
    const char* rows;
  } cases[] = {
      {"IN walk MOVE FORWARD BY 2 FOR 3\n", 1, KDE_ERROR_NONE, "",
       "IN walk MOVE FORWARD BY 2.000000 FOR 3 \n"},
      {"ON select CALL walk IN walk NULL\n", 1, KDE_ERROR_NONE, "",
       "ON select CALL \"walk\" \nIN walk NULL \n"},
      {"\n# ON select NULL\n\t \r\nON open NULL # ON cut NULL\nON copy NULL#x\n", 1, KDE_ERROR_NONE, "#x",
       "ON open NULL \nON copy NULL \n"},
      // Keywords match as prefixes; a later action replaces an earlier one.
      {"INTO PLAYBACKrec.txt\nONselect PLAYx RUNbook\n", 1, KDE_ERROR_NONE, "",
       "IN TO PLAYBACK \"rec.txt\" \nON select RUN \"book\" \n"},
      // A quoted token ends at its closing quote or the line's end; the character after the opening
      // quote is always taken.
      {"ON open GOTO \"C:\\My Files\\x.kvc\"LOAD\"y\nON cut RUN \"\"\nON copy LOAD \"open end\n", 1,
       KDE_ERROR_NONE, "", "ON open LOAD \"y\" \nON cut RUN \" \nON copy LOAD \"open end\" \n"},
      {"ON bump STOP\nAT MAAAAAAAAAAAAAAAA PING x FOR 2\n", 1, KDE_ERROR_NONE, "",
       "ON \nAT MAAAAAAAAAAAAAAAA PING \"x\" FOR 2 \n"},
      {"ON select NULL\n]AVR[ ON open NULL\nON cut NULL\n", 1, KDE_ERROR_NONE, "", "ON select NULL \n"},
      {"ON select NULL ]AVR[ ON open NULL\n", 1, KDE_ERROR_NONE, "]AVR[ ON open NULL", "ON select NULL \n"},
      {"ON select CALL walk\nIN walk MOVE SIDEWAYS BY 2\nON open NULL\n", 0, 6007, "MOVE SIDEWAYS BY 2",
       "ON select CALL \"walk\" \nIN walk ..."},
      {"ON select NULL JUMP high\n", 0, 6003, "JUMP high", "ON select NULL \n"},
      {"NULL\nON select NULL\n", 0, 6004, "NULL", ""},
      // A trigger without its token makes no row; an action without its token is not applied.
      {"ON open NULL AT\nON cut NULL\n", 1, 6002, "", "ON open NULL \nON cut NULL \n"},
      {"ON select CALL\nON open RUN\n", 1, 6005, "", "ON select  \nON open RUN \n"},
      {"ON select MOVE UP FOR x\n", 0, KDE_ERROR_NONE, "FOR x", "ON select MOVE UP BY 0.000000 \n"},
      {"ON select MOVE UP BY .5\n", 0, KDE_ERROR_NONE, "BY .5", "ON select MOVE UP BY 0.000000 \n"},
  };
  TempDir dir;
  for (const auto& c : cases) {
    CKDecide table;
    char comment[KDE_COMMENT_LEN + 1] = "?";
    EXPECT_EQ(seq({loadText(table, dir, c.text), int(errorID(table)), table.DEGetComment(comment), comment}),
              seq({c.result, int(c.error), 1, c.comment}))
        << c.text;
    const std::string rows = c.rows, got = rowTexts(table);
    // "..." ends a prefix: the failing row's content is open.
    const bool prefix = rows.size() > 3 && rows.substr(rows.size() - 3) == "...";
    EXPECT_EQ(prefix ? got.substr(0, rows.size() - 3) + "..." : got, rows) << got;
  }
}

TEST(CKDecideFile, EndTagIsTheWholeTagReversedAndSectionsLoadInTurn) {
  TempDir dir;
  CKDecide door;
  // Another table's end tag is an unknown word.
  EXPECT_EQ(seq({door.DESetDelimitingFileTag("[DOOR]"), TableInternals::endTag(door),
                 loadText(door, dir, "ON select NULL ]ROOD[ ON open NULL\n"), rowCount(door),
                 loadText(door, dir, "]AVR[\n")}),
            "1 ]ROOD[ 1 1 0");

  const std::string path = dir.file("scene.kvc");
  writeFile(path, "ON select NULL\n]AVR[\nON open NULL\nON cut NULL\n]AVR[\n");
  std::FILE* stream = std::fopen(path.c_str(), "r");
  ASSERT_NE(stream, nullptr);
  CKDecide first, second;
  EXPECT_EQ(
      seq({first.DELoadFromFile(stream), second.DELoadFromFile(stream), rowCount(first), rowCount(second)}),
      "1 1 1 2");
  std::fclose(stream);
  // Error ids are kept through later successful loads.
  EXPECT_EQ(seq({loadText(first, dir, "ON\n"), loadText(first, dir, "ON cut NULL\n"), int(errorID(first)),
                 first.DELoadFromFile(dir.file("none.kvc").c_str()), first.DELoadFromFile("")}),
            "1 1 6002 0 0");
}

TEST(CKDecideFile, WriterTextAndRoundTrip) {
  TempDir dir;
  CKDecide table;
  const std::string path = dir.file("out.kvc");
  // An empty table writes an empty file and answers 0.
  EXPECT_EQ(seq({table.DEStoreToFile(path.c_str()), fileExists(path), readText(path), table.DEStoreToFile(""),
                 loadText(table, dir, "ON select CALL spin\nIN spin MOVE TURNLEFT BY 0.5 FOR 4\n"),
                 table.DEStoreToFile(path.c_str()), readText(path)}),
            "0 1  0 1 1 \nON select CALL \"spin\" \nIN spin MOVE TURNLEFT BY 0.500000 FOR 4 ");

  // Store, load and store again gives the same bytes, for every action and field kind.
  ASSERT_EQ(
      loadText(
          table, dir,
          "ON open MOVE AUTOLEVEL\nON cut ZOOMOUT BY 1.25\nON copy RUN\nAT W2026AA0000AAAA STOP FOR 0\n"
          "ON select CALL door FOR 2\nON open PLAYBACK \"rec.txt\"\nAT MAAAAAAAAAA0000AA PING noon\n"
          "IN door MOVE SHIFTRIGHT BY -0.25 FOR 3\nIN door ZOOMIN BY 2\nIN door USERGOTO \"C:\\a b\\c.kvc\"\n"
          "IN door REPLACE x\nIN door DELETE\nIN door COPY\nIN door PLAY w.wav\nIN door CUT\n"
          "IN door GOTO g\nIN door LOAD l\nIN door RUN r\nIN door NULL\nIN door RETURN\n"),
      1);
  const std::string first = dir.file("first.kvc"), second = dir.file("second.kvc");
  ASSERT_EQ(table.DEStoreToFile(first.c_str()), 1);
  CKDecide again;
  EXPECT_EQ(seq({again.DELoadFromFile(first.c_str()), again.DEStoreToFile(second.c_str()), rowCount(again)}),
            "1 1 22");
  EXPECT_EQ(readText(second), readText(first));
  EXPECT_EQ(rowTexts(again), rowTexts(table));

  // A row with neither event nor grouping stops the store after its row-type keyword.
  ASSERT_EQ(loadText(table, dir, "ON bump NULL\nON cut NULL\n"), 1);
  EXPECT_EQ(table.DEStoreToFile(path.c_str()), 0);
  const std::string stored = readText(path);
  EXPECT_EQ(stored.substr(stored.size() - 11), "RETURN \nON ");
}

TEST(CKDecideFile, RowTextForDisplay) {
  CKDecide table;
  CKActionRow row;
  char out[KDE_ROW_TEXT_SIZE] = "";
  // Neither event nor grouping: 0 after the keyword; then numbered; then a row type without keyword.
  EXPECT_EQ(
      seq({row.ARSetRowType(KAR_ROW_ON), table.DEWriteRow(out, &row, 3), out,
           row.ARSetEvent(KAR_EVENT_SELECT), row.ARSetAction(KAR_ACTION_PLAY), row.ARSetTextData("a.wav"),
           table.DEEnableRowNumbering(), table.DEWriteRow(out, &row, 12), out, row.ARSetRowType(-1),
           table.DEDisableRowNumbering(), table.DEWriteRow(out, &row, 7), out}),
      "1 0 ON  1 1 1 1 1 012: ON select PLAY \"a.wav\"  1 1 1 select PLAY \"a.wav\" ");
}

}  // namespace
