// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "KMarkerList.h"
#include "KText.h"
#include "TestSupport.h"

namespace {

tagMarkerItem marker(CKMarkerList& list, const char* name, int index) {
  tagMarkerItem m;
  list.MLInitMarker(&m);
  std::strcpy(m.name, name);
  m.indexNumber = index;
  return m;
}

std::vector<std::string> names(CKMarkerList& list) {
  std::vector<std::string> out;
  tagMarkerItem* m = nullptr;
  for (int more = list.MLSelectFirstMarker(&m); more; more = list.MLSelectNextMarker(&m)) out.push_back(m->name);
  return out;
}

class CKMarkerListTest : public ::testing::Test {
 protected:
  void SetUp() override { m_list.MLInitialise(); }
  CKMarkerList m_list;
};

}  // namespace

TEST_F(CKMarkerListTest, AddKeepsItsOwnCopyAndSelectsTheFirst) {
  tagMarkerItem hall = marker(m_list, "Hall", 3), attic = marker(m_list, "Attic", 4);
  EXPECT_EQ(1, m_list.MLAddMarker(&hall));
  EXPECT_EQ(1, m_list.MLAddMarker(&attic));
  std::strcpy(hall.name, "Changed");  // the caller's value is not the list's

  tagMarkerItem* found = nullptr;
  ASSERT_EQ(1, m_list.MLFindMarkerByNumber(&found, 4));
  EXPECT_NE(&attic, found);
  EXPECT_STREQ("Attic", found->name);
  EXPECT_EQ((std::vector<std::string>{"Hall", "Attic"}), names(m_list));

  // After an add the first marker is selected, so an update lands on it.
  tagMarkerItem cellar = marker(m_list, "Cellar", 9);
  m_list.MLAddMarker(&cellar);
  tagMarkerItem renamed = marker(m_list, "Lobby", 99);
  EXPECT_EQ(1, m_list.MLUpdateSelectedMarker(&renamed, 0));
  EXPECT_EQ((std::vector<std::string>{"Lobby", "Attic", "Cellar"}), names(m_list));
  EXPECT_EQ(0, m_list.MLAddMarker(nullptr));
}

TEST_F(CKMarkerListTest, AddBoundsAnUnterminatedName) {
  tagMarkerItem m = marker(m_list, "", 1);
  std::memset(m.name, 'x', sizeof m.name);  // no terminator at all
  EXPECT_EQ(1, m_list.MLAddMarker(&m));
  tagMarkerItem* first = nullptr;
  ASSERT_EQ(1, m_list.MLSelectFirstMarker(&first));
  EXPECT_EQ(sizeof m.name - 1, std::strlen(first->name));
}

TEST_F(CKMarkerListTest, FindIsExactAndLeavesTheLastVisitedSelected) {
  tagMarkerItem hall = marker(m_list, "Hall", 1), kitchen = marker(m_list, "Kitchen", 2);
  m_list.MLAddMarker(&hall);
  m_list.MLAddMarker(&kitchen);
  tagMarkerItem* found = nullptr;
  EXPECT_EQ(0, m_list.MLFindMarkerByName(&found, "hall"));
  EXPECT_EQ(nullptr, found);
  // A failed search walked to the end: the last marker is the selection.
  tagMarkerItem update = marker(m_list, "Pantry", 7);
  EXPECT_EQ(1, m_list.MLUpdateSelectedMarker(&update, 1));
  EXPECT_EQ(1, m_list.MLFindMarkerByName(&found, "Pantry"));
  EXPECT_EQ(2, found->indexNumber);  // index kept, everything else replaced
  EXPECT_FLOAT_EQ(1.5f, found->position.x);

  EXPECT_EQ(1, m_list.MLFindMarkerByName(&found, "Hall"));
  m_list.MLUpdateSelectedMarker(&update, 0);
  EXPECT_EQ(1, m_list.MLFindMarkerByNumber(&found, 7));
  EXPECT_EQ(0, m_list.MLFindMarkerByNumber(&found, 1));
}


TEST_F(CKMarkerListTest, DeleteSelectsTheFirstAndNeverDangles) {
  tagMarkerItem a = marker(m_list, "A", 1), b = marker(m_list, "B", 2);
  m_list.MLAddMarker(&a);
  m_list.MLAddMarker(&b);
  tagMarkerItem* m = nullptr;
  m_list.MLFindMarkerByName(&m, "B");
  EXPECT_EQ(1, m_list.MLDeleteSelectedMarker());
  EXPECT_EQ((std::vector<std::string>{"A"}), names(m_list));
  m_list.MLSelectFirstMarker(&m);
  EXPECT_EQ(1, m_list.MLDeleteSelectedMarker());
  // The list is empty: nothing is selected any more.
  EXPECT_EQ(0, m_list.MLDeleteSelectedMarker());
  EXPECT_EQ(0, m_list.MLUpdateSelectedMarker(&a, 0));
  int next = 0;
  EXPECT_EQ(1, m_list.MLGetNextIndexNumber(&next));  // the list object still exists
  EXPECT_EQ(1, next);
  EXPECT_EQ(0, m_list.MLTerminate());
}

TEST_F(CKMarkerListTest, NextIndexNumberIgnoresNegativeNumbers) {
  int next = 42;
  EXPECT_EQ(0, m_list.MLGetNextIndexNumber(&next));  // no list yet
  EXPECT_EQ(42, next);
  tagMarkerItem* m = nullptr;
  EXPECT_EQ(0, m_list.MLFindMarkerByName(&m, "A"));
  EXPECT_EQ(1, m_list.MLSaveToFile(nullptr));  // nothing to write
  tagMarkerItem a = marker(m_list, "A", -1), b = marker(m_list, "B", -1);
  m_list.MLAddMarker(&a);
  m_list.MLAddMarker(&b);
  EXPECT_EQ(1, m_list.MLGetNextIndexNumber(&next));
  EXPECT_EQ(1, next);
  tagMarkerItem c = marker(m_list, "C", 7), d = marker(m_list, "D", 3);
  m_list.MLAddMarker(&c);
  m_list.MLAddMarker(&d);
  EXPECT_EQ(1, m_list.MLGetNextIndexNumber(&next));
  EXPECT_EQ(8, next);
  EXPECT_EQ(0, m_list.MLTerminate());  // freed a list
  EXPECT_EQ(1, m_list.MLTerminate());  // nothing left
}

TEST_F(CKMarkerListTest, CreateListFromListCopiesInOrder) {
  CKMarkerList source;
  source.MLInitialise();
  tagMarkerItem a = marker(source, "A", 1), b = marker(source, "B", 2);
  source.MLAddMarker(&a);
  source.MLAddMarker(&b);
  tagMarkerItem* selected = nullptr;
  source.MLFindMarkerByName(&selected, "B");

  tagMarkerItem old = marker(m_list, "Old", 5);
  m_list.MLAddMarker(&old);
  EXPECT_EQ(1, m_list.MLCreateListFromList(&source));
  EXPECT_EQ((std::vector<std::string>{"A", "B"}), names(m_list));
  tagMarkerItem* copy = nullptr;
  m_list.MLFindMarkerByName(&copy, "B");
  EXPECT_NE(selected, copy);
  // The source keeps its selection.
  tagMarkerItem update = marker(source, "B2", 2);
  EXPECT_EQ(1, source.MLUpdateSelectedMarker(&update, 1));
  EXPECT_EQ((std::vector<std::string>{"A", "B2"}), names(source));

  EXPECT_EQ(1, m_list.MLCreateListFromList(nullptr));
  EXPECT_TRUE(names(m_list).empty());
  m_list.MLAddMarker(&a);
  EXPECT_EQ(1, m_list.MLCreateListFromList(&m_list));  // itself: emptied first
  EXPECT_TRUE(names(m_list).empty());
}

TEST_F(CKMarkerListTest, SaveWritesOneSegmentPerLineAfterAnEmptyLine) {
  kutil::test::TempDir dir;
  const std::string path = dir.file("markers.txt");
  tagMarkerItem plain;
  m_list.MLInitMarker(&plain);
  tagMarkerItem hall = marker(m_list, "Hall", 12);
  hall.sector = 3;
  hall.position.x = -2.25f;
  hall.up.z = 0.5f;
  hall.valueV = 7;
  hall.valueF = 2.0f;
  m_list.MLAddMarker(&plain);
  m_list.MLAddMarker(&hall);
  tagMarkerItem* m = nullptr;
  m_list.MLFindMarkerByName(&m, "Hall");

  FILE* f = std::fopen(path.c_str(), "w");
  ASSERT_NE(nullptr, f);
  EXPECT_EQ(1, m_list.MLSaveToFile(f));
  std::fclose(f);

  const std::vector<std::string> expected = {
      "",               "[MKJ][5]dummy",  "[MKN][0]",       "[MKI][2]-1",     "[MKS][2]-1",
      "[MKX][6]1.5000", "[MKY][6]1.5000", "[MKZ][6]1.5000", "[MKP][6]0.0000", "[MKQ][6]0.0000",
      "[MKR][6]1.0000", "[MKA][6]0.0000", "[MKB][6]1.0000", "[MKC][6]0.0000", "[MKV][1]0",
      "[MKO][6]1.1000", "[MKF][6]1.1000", "[MKE][5]dummy",  "",               "[MKJ][5]dummy",
      "[MKN][4]Hall",   "[MKI][2]12",     "[MKS][1]3",      "[MKX][7]-2.2500", "[MKY][6]1.5000",
      "[MKZ][6]1.5000", "[MKP][6]0.0000", "[MKQ][6]0.0000", "[MKR][6]1.0000", "[MKA][6]0.0000",
      "[MKB][6]1.0000", "[MKC][6]0.5000", "[MKV][1]7",      "[MKO][6]1.1000", "[MKF][6]2.0000",
      "[MKE][5]dummy"};
  const std::vector<std::string> lines = kutil::test::readLines(path);
  EXPECT_EQ(expected, lines);
  EXPECT_EQ('\n', kutil::test::readFile(path).back());

  // Saving selects the first marker again.
  tagMarkerItem update = marker(m_list, "First", 0);
  m_list.MLUpdateSelectedMarker(&update, 0);
  EXPECT_EQ("First", names(m_list).front());

  // The fields read back with the segment reader.
  char value[140];
  EXPECT_EQ(1, KUExtractField("[MKN]", lines[20].c_str(), value, 131));
  EXPECT_STREQ("Hall", value);
}

TEST_F(CKMarkerListTest, SaveReportsARefusingStream) {
  tagMarkerItem a = marker(m_list, "A", 1);
  m_list.MLAddMarker(&a);
  kutil::test::TempDir dir;
  const std::string path = dir.file("ro.txt");
  ASSERT_TRUE(kutil::test::writeFile(path, ""));
  FILE* f = std::fopen(path.c_str(), "r");  // writes fail on a read-only stream
  ASSERT_NE(nullptr, f);
  EXPECT_EQ(0, m_list.MLSaveToFile(f));
  std::fclose(f);
  m_list.MLInitMarker(nullptr);
  EXPECT_EQ(0, m_list.MLSaveToFile(nullptr));

#ifdef __GLIBC__
  // Only a refused final line feed fails a record: a stream that refuses the
  // name line alone still reports success, and the other lines are written.
  struct Sink {
    std::string text;
    static ssize_t write(void* cookie, const char* data, size_t size) {
      const std::string chunk(data, size);
      if (chunk.find("[MKN]") != std::string::npos) return -1;
      static_cast<Sink*>(cookie)->text += chunk;
      return static_cast<ssize_t>(size);
    }
  } sink;
  cookie_io_functions_t io = {nullptr, &Sink::write, nullptr, nullptr};
  FILE* refusing = fopencookie(&sink, "w", io);
  ASSERT_NE(nullptr, refusing);
  std::setvbuf(refusing, nullptr, _IOLBF, 512);  // one write per line
  EXPECT_EQ(1, m_list.MLSaveToFile(refusing));
  std::fclose(refusing);
  EXPECT_EQ(std::string::npos, sink.text.find("[MKN]"));
  EXPECT_NE(std::string::npos, sink.text.find("[MKI][1]1\n"));
  EXPECT_EQ("[MKE][5]dummy\n", sink.text.substr(sink.text.size() - 14));
#endif
}
