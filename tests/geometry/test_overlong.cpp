// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Marker names that fill or overflow their field: the list keeps terminated
// copies, finds only exact names and writes them back whole.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

#include "KMarkerList.h"
#include "TestSupport.h"

namespace {

using kutil::test::readLines;
using kutil::test::TempDir;

constexpr std::size_t kLongName = KMARKER_NAME_SIZE - 1;

// A marker on the heap whose name fills the whole field with no terminator.
std::unique_ptr<tagMarkerItem> unterminatedMarker(CKMarkerList& list, char fill) {
  auto marker = std::make_unique<tagMarkerItem>();
  list.MLInitMarker(marker.get());
  std::memset(marker->name, fill, sizeof marker->name);
  return marker;
}

bool terminatedName(const tagMarkerItem* m) { return std::memchr(m->name, '\0', sizeof m->name) != nullptr; }

TEST(CKMarkerListOverlong, UnterminatedNamesAreCopiedTerminated) {
  CKMarkerList list;
  list.MLInitialise();
  auto source = unterminatedMarker(list, 'm');

  auto copy = std::make_unique<tagMarkerItem>();
  ASSERT_EQ(list.MLCopyMarker(copy.get(), source.get()), 1);
  ASSERT_TRUE(terminatedName(copy.get()));
  EXPECT_EQ(std::string(copy->name), std::string(kLongName, 'm'));

  ASSERT_EQ(list.MLAddMarker(source.get()), 1);
  tagMarkerItem* stored = nullptr;
  ASSERT_EQ(list.MLSelectFirstMarker(&stored), 1);
  ASSERT_TRUE(terminatedName(stored));
  EXPECT_EQ(std::string(stored->name), std::string(kLongName, 'm'));

  auto update = unterminatedMarker(list, 'u');
  ASSERT_EQ(list.MLUpdateSelectedMarker(update.get(), 1), 1);
  ASSERT_TRUE(terminatedName(stored));
  EXPECT_EQ(std::string(stored->name), std::string(kLongName, 'u'));
}

TEST(CKMarkerListOverlong, FindByNameMatchesOnlyTheExactName) {
  CKMarkerList list;
  list.MLInitialise();
  auto source = unterminatedMarker(list, 'n');
  ASSERT_EQ(list.MLAddMarker(source.get()), 1);

  tagMarkerItem* found = nullptr;
  const std::string stored(kLongName, 'n');
  EXPECT_EQ(list.MLFindMarkerByName(&found, std::string(10000, 'n').c_str()), 0);
  EXPECT_EQ(list.MLFindMarkerByName(&found, (stored + "n").c_str()), 0);
  EXPECT_EQ(found, nullptr);
  EXPECT_EQ(list.MLFindMarkerByName(&found, nullptr), 0);
  ASSERT_EQ(list.MLFindMarkerByName(&found, stored.c_str()), 1);
  EXPECT_EQ(std::string(found->name), stored);
}

TEST(CKMarkerListOverlong, FullLengthNamesAreSavedWhole) {
  CKMarkerList list;
  list.MLInitialise();
  auto first = unterminatedMarker(list, 'a');
  auto second = unterminatedMarker(list, 'b');
  ASSERT_EQ(list.MLAddMarker(first.get()), 1);
  ASSERT_EQ(list.MLAddMarker(second.get()), 1);

  TempDir dir;
  const std::string path = dir.file("markers.txt");
  std::FILE* stream = std::fopen(path.c_str(), "w");
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(list.MLSaveToFile(stream), 1);
  std::fclose(stream);

  int names = 0;
  for (const std::string& line : readLines(path)) {
    if (line.rfind("[MKN]", 0) != 0) continue;
    const char fill = names == 0 ? 'a' : 'b';
    EXPECT_EQ(line, "[MKN][131]" + std::string(kLongName, fill));
    ++names;
  }
  EXPECT_EQ(names, 2);
  EXPECT_EQ(list.MLSaveToFile(nullptr), 0);
}

}  // namespace
