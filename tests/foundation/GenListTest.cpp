// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "KGenList.h"

namespace {

class CKGenListTest : public ::testing::Test {
 protected:
  void SetUp() override { list.GLInitialise(); }
  // The object under the cursor, or nullptr when there is no cursor.
  void* current() {
    tagHolder* node = nullptr;
    return list.GLGetCurrentByAddress(&node) ? node->object : nullptr;
  }
  CKGenList list;
  int a = 1, b = 2, c = 3;
};

TEST_F(CKGenListTest, WalkStaysOnTheTailAndFindMovesOrClearsTheCursor) {
  void* object = &a;
  EXPECT_EQ(list.GLSelectFirstObject(&object, nullptr), 0);
  EXPECT_EQ(object, &a);
  EXPECT_EQ(list.GLFind(&a), 0);
  list.GLAdd(&a, nullptr);
  list.GLAdd(&b, &c);
  list.GLAdd(&c, nullptr);
  void* companion = &a;
  ASSERT_EQ(list.GLSelectFirstObject(&object, &companion), 1);
  EXPECT_EQ(companion, nullptr);
  ASSERT_EQ(list.GLSelectNextObject(&object, &companion), 1);
  EXPECT_EQ(object, &b);
  EXPECT_EQ(companion, &c);
  list.GLSelectNextObject(&object, nullptr);
  EXPECT_EQ(list.GLSelectNextObject(&object, nullptr), 0);
  EXPECT_EQ(current(), &c);  // the cursor stays on the tail

  ASSERT_EQ(list.GLFind(&a), 1);
  ASSERT_EQ(list.GLSelectNextObject(&object, nullptr), 1);
  EXPECT_EQ(object, &b);
  int absent = 0;
  EXPECT_EQ(list.GLFind(&absent), 0);
  EXPECT_EQ(current(), nullptr);
  EXPECT_EQ(list.GLSelectNextObject(&object, nullptr), 0);
}

TEST_F(CKGenListTest, RemoveTakesFirstDuplicateAndAlwaysClearsCursor) {
  list.GLAdd(&a, nullptr);
  list.GLAdd(&b, &a);
  list.GLAdd(&b, &c);
  list.GLSelectFirstObject(nullptr, nullptr);
  EXPECT_EQ(list.GLRemoveFromList(&b), 1);
  EXPECT_EQ(current(), nullptr);
  ASSERT_EQ(list.GLFind(&b), 1);
  tagHolder* node = nullptr;
  list.GLGetCurrentByAddress(&node);
  EXPECT_EQ(node->companion, &c);
  int absent = 0;
  EXPECT_EQ(list.GLRemoveFromList(&absent), 0);
  EXPECT_EQ(current(), nullptr);
  EXPECT_EQ(list.GLRemoveFromList(&a), 1);  // the head
  EXPECT_EQ(list.GLRemoveFromList(&b), 1);
  void* object = nullptr;
  EXPECT_EQ(list.GLSelectFirstObject(&object, nullptr), 0);
}

TEST_F(CKGenListTest, SavedCursorRestoresAnOuterWalkAndNeedsANonEmptyList) {
  tagHolder* saved = nullptr;
  list.GLAdd(&a, nullptr);
  list.GLAdd(&b, nullptr);
  void* outer = nullptr;
  list.GLSelectFirstObject(&outer, nullptr);
  list.GLGetCurrentByAddress(&saved);
  void* inner = nullptr;
  while (list.GLSelectNextObject(&inner, nullptr) == 1) {
  }
  EXPECT_EQ(list.GLSetCurrentByAddress(saved), 1);
  ASSERT_EQ(list.GLSelectNextObject(&outer, nullptr), 1);
  EXPECT_EQ(outer, &b);
  EXPECT_EQ(list.GLSetCurrentByAddress(nullptr), 1);
  EXPECT_EQ(current(), nullptr);

  CKGenList empty;
  empty.GLInitialise();
  EXPECT_EQ(empty.GLSetCurrentByAddress(saved), 0);
}

}  // namespace
