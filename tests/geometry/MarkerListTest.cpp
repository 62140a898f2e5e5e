// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "KMarkerList.h"
#include "TestSupport.h"

namespace {

using kutil::test::seq;

tagMarkerItem marker(CKMarkerList& list, const char* name, int index) {
  tagMarkerItem m;
  list.MLInitMarker(&m);
  std::strcpy(m.name, name);
  m.indexNumber = index;
  return m;
}

class CKMarkerListTest : public ::testing::Test {
 protected:
  void SetUp() override { m_list.MLInitialise(); }
  void add(const char* name, int index) {
    tagMarkerItem m = marker(m_list, name, index);
    m_list.MLAddMarker(&m);
  }
  std::vector<std::string> names() {
    std::vector<std::string> out;
    tagMarkerItem* m = nullptr;
    for (int more = m_list.MLSelectFirstMarker(&m); more; more = m_list.MLSelectNextMarker(&m))
      out.push_back(m->name);
    return out;
  }
  CKMarkerList m_list;
};

}  // namespace

TEST_F(CKMarkerListTest, AddKeepsACopyAndSelectsTheFirst) {
  tagMarkerItem hall = marker(m_list, "Hall", 3);
  EXPECT_EQ(1, m_list.MLAddMarker(&hall));
  std::strcpy(hall.name, "Changed");  // the caller's value is not the list's
  add("Attic", 4);
  tagMarkerItem renamed = marker(m_list, "Lobby", 99);
  EXPECT_EQ(1, m_list.MLUpdateSelectedMarker(&renamed, 0));  // lands on the first
  EXPECT_EQ((std::vector<std::string>{"Lobby", "Attic"}), names());
}

TEST_F(CKMarkerListTest, FailedFindLeavesTheLastSelectedAndUpdateCanKeepTheIndex) {
  add("Hall", 1);
  add("Kitchen", 2);
  tagMarkerItem *found = nullptr, update = marker(m_list, "Pantry", 7);
  // Exact names only; Kitchen's index is kept.
  EXPECT_EQ(seq({m_list.MLFindMarkerByName(&found, "hall"), found == nullptr,
                 m_list.MLUpdateSelectedMarker(&update, 1), m_list.MLFindMarkerByName(&found, "Pantry"),
                 found ? found->indexNumber : -1, m_list.MLFindMarkerByNumber(&found, 7)}),
            "0 1 1 1 2 0");
}

TEST_F(CKMarkerListTest, DeleteNextIndexAndTerminate) {
  int next = 42;
  EXPECT_EQ(seq({m_list.MLGetNextIndexNumber(&next), next}), "0 42");  // no list yet
  add("A", -1);
  EXPECT_EQ(seq({m_list.MLGetNextIndexNumber(&next), next}), "1 1");  // negative numbers ignored
  add("B", 7);
  add("C", 3);
  EXPECT_EQ(seq({m_list.MLGetNextIndexNumber(&next), next}), "1 8");
  tagMarkerItem* m = nullptr;
  m_list.MLFindMarkerByName(&m, "C");
  EXPECT_EQ(seq({m_list.MLDeleteSelectedMarker(), m_list.MLDeleteSelectedMarker()}),
            "1 1");  // then the first
  EXPECT_EQ((std::vector<std::string>{"B"}), names());
  m_list.MLSelectFirstMarker(&m);
  m_list.MLDeleteSelectedMarker();
  // Empty, nothing is selected; terminating frees a list (0), then there is nothing left (1).
  EXPECT_EQ(seq({m_list.MLDeleteSelectedMarker(), m_list.MLTerminate(), m_list.MLTerminate()}), "0 0 1");
}

TEST_F(CKMarkerListTest, CreateListFromListCopiesInOrder) {
  CKMarkerList source;
  source.MLInitialise();
  tagMarkerItem a = marker(source, "A", 1), b = marker(source, "B", 2);
  source.MLAddMarker(&a);
  source.MLAddMarker(&b);
  EXPECT_EQ(1, m_list.MLCreateListFromList(&source));
  EXPECT_EQ((std::vector<std::string>{"A", "B"}), names());
  EXPECT_EQ(1, m_list.MLCreateListFromList(&m_list));  // itself: emptied first
  EXPECT_TRUE(names().empty());
}

TEST_F(CKMarkerListTest, SaveWritesOneSegmentPerLineAfterAnEmptyLine) {
  kutil::test::TempDir dir;
  const std::string path = dir.file("markers.txt");
  add("Attic", -1);
  tagMarkerItem hall = marker(m_list, "Hall", 12);
  hall.sector = 3;
  hall.position.x = -2.25f;
  hall.up.z = 0.5f;
  hall.valueV = 7;
  hall.valueF = 2.0f;
  m_list.MLAddMarker(&hall);
  FILE* f = std::fopen(path.c_str(), "w");
  ASSERT_NE(nullptr, f);
  EXPECT_EQ(1, m_list.MLSaveToFile(f));
  std::fclose(f);
  // clang-format off
  const std::vector<std::string> expected = {
      "",               "[MKJ][5]dummy",  "[MKN][5]Attic",  "[MKI][2]-1",      "[MKS][2]-1",
      "[MKX][6]1.5000", "[MKY][6]1.5000", "[MKZ][6]1.5000", "[MKP][6]0.0000",  "[MKQ][6]0.0000",
      "[MKR][6]1.0000", "[MKA][6]0.0000", "[MKB][6]1.0000", "[MKC][6]0.0000",  "[MKV][1]0",
      "[MKO][6]1.1000", "[MKF][6]1.1000", "[MKE][5]dummy",  "",                "[MKJ][5]dummy",
      "[MKN][4]Hall",   "[MKI][2]12",     "[MKS][1]3",      "[MKX][7]-2.2500", "[MKY][6]1.5000",
      "[MKZ][6]1.5000", "[MKP][6]0.0000", "[MKQ][6]0.0000", "[MKR][6]1.0000",  "[MKA][6]0.0000",
      "[MKB][6]1.0000", "[MKC][6]0.5000", "[MKV][1]7",      "[MKO][6]1.1000",  "[MKF][6]2.0000",
      "[MKE][5]dummy"};
  // clang-format on
  EXPECT_EQ(expected, kutil::test::readLines(path));
  EXPECT_EQ('\n', kutil::test::readFile(path).back());
}
