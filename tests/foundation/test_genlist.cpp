// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "KGenList.h"

namespace {

class CKGenListTest : public ::testing::Test {
 protected:
  void SetUp() override { list.GLInitialise(); }
  CKGenList list;
  int a = 1, b = 2, c = 3;
};

TEST_F(CKGenListTest, WalksInInsertionOrderAndStaysOnTail) {
  list.GLAdd(&a, nullptr);
  list.GLAdd(&b, &c);
  void* object = nullptr;
  void* companion = &a;
  ASSERT_EQ(list.GLSelectFirstObject(&object, &companion), 1);
  EXPECT_EQ(object, &a);
  EXPECT_EQ(companion, nullptr);
  ASSERT_EQ(list.GLSelectNextObject(&object, &companion), 1);
  EXPECT_EQ(object, &b);
  EXPECT_EQ(companion, &c);
  EXPECT_EQ(list.GLSelectNextObject(&object, &companion), 0);
  tagHolder* node = nullptr;
  ASSERT_EQ(list.GLGetCurrentByAddress(&node), 1);
  EXPECT_EQ(node->object, &b);
}

TEST_F(CKGenListTest, EmptyListSelectsNothing) {
  void* object = &a;
  EXPECT_EQ(list.GLSelectFirstObject(&object, nullptr), 0);
  EXPECT_EQ(object, &a);
  EXPECT_EQ(list.GLSelectNextObject(&object, nullptr), 0);
  tagHolder* node = nullptr;
  EXPECT_EQ(list.GLGetCurrentByAddress(&node), 0);
  EXPECT_EQ(list.GLFind(&a), 0);
  EXPECT_EQ(list.GLRemoveFromList(&a), 0);
}

TEST_F(CKGenListTest, FindMovesOrClearsCursor) {
  list.GLAdd(&a, nullptr);
  list.GLAdd(&b, nullptr);
  list.GLAdd(&c, nullptr);
  ASSERT_EQ(list.GLFind(&b), 1);
  void* object = nullptr;
  ASSERT_EQ(list.GLSelectNextObject(&object, nullptr), 1);
  EXPECT_EQ(object, &c);
  int absent = 0;
  EXPECT_EQ(list.GLFind(&absent), 0);
  EXPECT_EQ(list.GLSelectNextObject(&object, nullptr), 0);
  tagHolder* node = nullptr;
  EXPECT_EQ(list.GLGetCurrentByAddress(&node), 0);
}

TEST_F(CKGenListTest, RemoveTakesFirstDuplicateAndAlwaysClearsCursor) {
  list.GLAdd(&a, nullptr);
  list.GLAdd(&b, &a);
  list.GLAdd(&b, &c);
  list.GLSelectFirstObject(nullptr, nullptr);
  EXPECT_EQ(list.GLRemoveFromList(&b), 1);
  tagHolder* node = nullptr;
  EXPECT_EQ(list.GLGetCurrentByAddress(&node), 0);
  ASSERT_EQ(list.GLFind(&b), 1);
  list.GLGetCurrentByAddress(&node);
  EXPECT_EQ(node->companion, &c);

  int absent = 0;
  EXPECT_EQ(list.GLRemoveFromList(&absent), 0);
  EXPECT_EQ(list.GLGetCurrentByAddress(&node), 0);

  EXPECT_EQ(list.GLRemoveFromList(&a), 1);  // the head
  void* object = nullptr;
  ASSERT_EQ(list.GLSelectFirstObject(&object, nullptr), 1);
  EXPECT_EQ(object, &b);
  EXPECT_EQ(list.GLRemoveFromList(&b), 1);
  EXPECT_EQ(list.GLSelectFirstObject(&object, nullptr), 0);
  EXPECT_EQ(list.GLAdd(&c, nullptr), 1);  // usable again after emptying
  EXPECT_EQ(list.GLFind(&c), 1);
}

TEST_F(CKGenListTest, SetCurrentTrustsNodesButNeedsANonEmptyList) {
  CKGenList other;
  other.GLInitialise();
  other.GLAdd(&c, nullptr);
  tagHolder* foreign = nullptr;
  other.GLSelectFirstObject(nullptr, nullptr);
  other.GLGetCurrentByAddress(&foreign);

  EXPECT_EQ(list.GLSetCurrentByAddress(foreign), 0);
  list.GLAdd(&a, nullptr);
  EXPECT_EQ(list.GLSetCurrentByAddress(foreign), 1);
  tagHolder* node = nullptr;
  ASSERT_EQ(list.GLGetCurrentByAddress(&node), 1);
  EXPECT_EQ(node, foreign);
  EXPECT_EQ(list.GLSetCurrentByAddress(nullptr), 1);
  EXPECT_EQ(list.GLGetCurrentByAddress(&node), 0);
}

TEST_F(CKGenListTest, SaveAndRestoreCursorAroundNestedWalk) {
  list.GLAdd(&a, nullptr);
  list.GLAdd(&b, nullptr);
  list.GLAdd(&c, nullptr);
  void* outer = nullptr;
  list.GLSelectFirstObject(&outer, nullptr);
  tagHolder* saved = nullptr;
  list.GLGetCurrentByAddress(&saved);
  void* inner = nullptr;
  list.GLSelectFirstObject(&inner, nullptr);
  while (list.GLSelectNextObject(&inner, nullptr) == 1) {
  }
  list.GLSetCurrentByAddress(saved);
  ASSERT_EQ(list.GLSelectNextObject(&outer, nullptr), 1);
  EXPECT_EQ(outer, &b);
}

}  // namespace
