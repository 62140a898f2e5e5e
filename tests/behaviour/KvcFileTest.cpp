// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Reading and writing behaviour files.
#include <gtest/gtest.h>

#include <cstring>

#include "DecideTestSupport.h"

using namespace kutil::test;

namespace {

unsigned int errorID(CKDecide& table) {
  unsigned int id = 0;
  return table.DEGetErrorID(&id) ? id : KDE_ERROR_NONE;
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

TEST(CKDecideFile, ReaderOutcomesErrorIdsAndComments) {
  struct Case {
    std::string text;
    int result, rows;
    unsigned int error;
    const char* comment;
  };
  const Case cases[] = {
      {"ON select CALL walk IN walk NULL\n", 1, 2, KDE_ERROR_NONE, ""},
      {"\n# ON select NULL\n\t \r\nON open NULL # ON cut NULL\nON copy NULL#x\n", 1, 2, KDE_ERROR_NONE, "#x"},
      {"ON select NULL\n]AVR[ ON open NULL\nON cut NULL\n", 1, 1, KDE_ERROR_NONE, ""},
      {"ON select NULL ]AVR[ ON open NULL\n", 1, 1, KDE_ERROR_NONE, "]AVR[ ON open NULL"},
      {"ON select CALL walk\nIN walk MOVE SIDEWAYS BY 2\nON open NULL\n", 0, 2, KDE_ERROR_MOTION,
       "MOVE SIDEWAYS BY 2"},
      {"ON select NULL JUMP high\n", 0, 1, KDE_ERROR_UNKNOWN_WORD, "JUMP high"},
      {"NULL\nON select NULL\n", 0, 0, KDE_ERROR_ACTION, "NULL"},
      // A trigger without its token makes no row; an action without its token is not applied.
      {"ON open NULL AT\nON cut NULL\n", 1, 2, KDE_ERROR_TRIGGER_TOKEN, ""},
      {"ON select CALL\nON open RUN\n", 1, 2, KDE_ERROR_ACTION_TOKEN, ""},
      {"ON select MOVE UP FOR x\n", 0, 1, KDE_ERROR_NONE, "FOR x"},
      {"ON select MOVE UP BY .5\n", 0, 1, KDE_ERROR_NONE, "BY .5"},
  };
  TempDir dir;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    CKDecide table;
    EXPECT_EQ(loadText(table, dir, c.text), c.result);
    EXPECT_EQ(rowCount(table), c.rows);
    EXPECT_EQ(errorID(table), c.error);
    char comment[KDE_COMMENT_LEN + 1];
    table.DEGetComment(comment);
    EXPECT_STREQ(comment, c.comment);
  }
}

TEST(CKDecideFile, ReaderFieldsTokensAndPrefixes) {
  TempDir dir;
  CKDecide table;
  ASSERT_EQ(loadText(table, dir,
                     "IN walk MOVE FORWARD BY 2 FOR 3\n"
                     "INTO PLAYBACKrec.txt\n"                      // IN with the name TO
                     "ONselect PLAYx RUNbook\n"                    // the later action wins
                     "ON open GOTO \"C:\\My Files\\x.kvc\"NULL\n"  // the closing quote ends the token
                     "ON cut RUN \"\"\n"                           // the character after a quote is taken
                     "ON copy LOAD \"open end\n"
                     "ON bump STOP\n"),  // unknown event: kept, but unset
            1);
  EXPECT_EQ(rowTexts(table),
            "IN walk MOVE FORWARD BY 2.000000 FOR 3 \n"
            "IN TO PLAYBACK \"rec.txt\" \n"
            "ON select RUN \"book\" \n"
            "ON open NULL \n"
            "ON cut RUN \" \n"
            "ON copy LOAD \"open end\" \n"
            "ON \n");
  char text[KAR_TEXTDATA_LEN + 1];
  rowAt(table, 3)->ARGetTextData(text);
  EXPECT_STREQ(text, "C:\\My Files\\x.kvc");
}

TEST(CKDecideFile, EndTagIsTheWholeTagReversedAndSectionsLoadInTurn) {
  TempDir dir;
  CKDecide door;
  door.DESetDelimitingFileTag("[DOOR]");
  EXPECT_EQ(loadText(door, dir, "ON select NULL ]ROOD[ ON open NULL\n"), 1);
  EXPECT_EQ(rowCount(door), 1);
  EXPECT_EQ(loadText(door, dir, "]AVR[\n"), 0) << "another table's end tag is an unknown word";

  const std::string path = dir.file("scene.kvc");
  writeFile(path, "ON select NULL\n]AVR[\nON open NULL\nON cut NULL\n]AVR[\n");
  std::FILE* stream = std::fopen(path.c_str(), "r");
  ASSERT_NE(stream, nullptr);
  CKDecide first;
  CKDecide second;
  EXPECT_EQ(first.DELoadFromFile(stream), 1);
  EXPECT_EQ(second.DELoadFromFile(stream), 1);
  std::fclose(stream);
  EXPECT_EQ(rowCount(first), 1);
  EXPECT_EQ(rowCount(second), 2);
  // Error ids are kept through later successful loads.
  EXPECT_EQ(loadText(first, dir, "ON\n"), 1);
  EXPECT_EQ(loadText(first, dir, "ON cut NULL\n"), 1);
  EXPECT_EQ(errorID(first), KDE_ERROR_TRIGGER_TOKEN);
}

TEST(CKDecideFile, WriterProducesTheExactText) {
  TempDir dir;
  CKDecide table;
  const std::string path = dir.file("out.kvc");
  EXPECT_EQ(table.DEStoreToFile(path.c_str()), 0) << "empty table";
  EXPECT_TRUE(fileExists(path));
  EXPECT_EQ(readText(path), "");

  ASSERT_EQ(loadText(table, dir,
                     "ON select CALL spin\nIN spin MOVE TURNLEFT BY 0.5 FOR 4\nON open MOVE AUTOLEVEL\n"
                     "ON cut ZOOMOUT BY 1.25\nON copy RUN\nAT W2026AA0000AAAA STOP FOR 0\n"),
            1);
  ASSERT_EQ(table.DEStoreToFile(path.c_str()), 1);
  EXPECT_EQ(readText(path),
            "\nON select CALL \"spin\" \nIN spin MOVE TURNLEFT BY 0.500000 FOR 4 \nON open MOVE AUTOLEVEL "
            "\nON cut ZOOMOUT BY 1.250000 \nON copy RUN \nAT W2026AA0000AAAA STOP FOR 0 ");

  // A row with neither event nor grouping stops the store after its row-type keyword.
  ASSERT_EQ(loadText(table, dir, "ON bump NULL\n"), 1);
  EXPECT_EQ(table.DEStoreToFile(path.c_str()), 0);
  EXPECT_EQ(readText(path).substr(readText(path).size() - 4), "\nON ");

  EXPECT_EQ(table.DELoadFromFile(dir.file("none.kvc").c_str()), 0);
}

TEST(CKDecideFile, StoredTablesReadBackTheSame) {
  TempDir dir;
  CKDecide table;
  ASSERT_EQ(
      loadText(
          table, dir,
          "ON select CALL door FOR 2\nON open PLAYBACK \"rec.txt\"\nAT MAAAAAAAAAA0000AA PING noon\n"
          "IN door MOVE SHIFTRIGHT BY -0.25 FOR 3\nIN door ZOOMIN BY 2\nIN door USERGOTO \"C:\\a b\\c.kvc\"\n"
          "IN door REPLACE x\nIN door DELETE\nIN door COPY\nIN door PLAY w.wav\nIN door RETURN\n"),
      1);
  const std::string first = dir.file("first.kvc");
  const std::string second = dir.file("second.kvc");
  ASSERT_EQ(table.DEStoreToFile(first.c_str()), 1);
  CKDecide again;
  ASSERT_EQ(again.DELoadFromFile(first.c_str()), 1);
  ASSERT_EQ(again.DEStoreToFile(second.c_str()), 1);
  EXPECT_EQ(readText(second), readText(first));
  EXPECT_EQ(rowTexts(again), rowTexts(table));
}

TEST(CKDecideFile, RowTextForDisplayIsNumbered) {
  CKDecide table;
  CKActionRow row;
  row.ARSetRowType(KAR_ROW_ON);
  char out[KDE_ROW_TEXT_SIZE];
  table.DEEnableRowNumbering();
  row.ARSetEvent(KAR_EVENT_SELECT);
  row.ARSetAction(KAR_ACTION_PLAY);
  row.ARSetTextData("a.wav");
  EXPECT_EQ(table.DEWriteRow(out, &row, 12), 1);
  EXPECT_STREQ(out, "012: ON select PLAY \"a.wav\" ");
  table.DEDisableRowNumbering();
  row.ARSetRowType(-1);  // no keyword, so no line break either in the file form
  EXPECT_EQ(table.DEWriteRow(out, &row, 7), 1);
  EXPECT_STREQ(out, "select PLAY \"a.wav\" ");
}

}  // namespace
