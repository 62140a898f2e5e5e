// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "KGenList.h"
#include "TestSupport.h"

using kutil::test::seq;

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

// Pointers are shown as whether they are the expected one.
TEST_F(CKGenListTest, WalkStaysOnTheTailAndFindMovesOrClearsTheCursor) {
  void *object = &a, *companion = &a;
  int absent = 0;
  EXPECT_EQ(seq({list.GLSelectFirstObject(&object, nullptr), object == &a, list.GLFind(&a)}), "0 1 0");
  list.GLAdd(&a, nullptr);
  list.GLAdd(&b, &c);
  list.GLAdd(&c, nullptr);
  EXPECT_EQ(seq({list.GLSelectFirstObject(&object, &companion), companion == nullptr,
                 list.GLSelectNextObject(&object, &companion), object == &b, companion == &c,
                 list.GLSelectNextObject(&object, nullptr), list.GLSelectNextObject(&object, nullptr),
                 current() == &c}),
            "1 1 1 1 1 1 0 1");  // the cursor stays on the tail
  EXPECT_EQ(seq({list.GLFind(&a), list.GLSelectNextObject(&object, nullptr), object == &b,
                 list.GLFind(&absent), current() == nullptr, list.GLSelectNextObject(&object, nullptr)}),
            "1 1 1 0 1 0");
}

TEST_F(CKGenListTest, RemoveTakesFirstDuplicateAndAlwaysClearsCursor) {
  list.GLAdd(&a, nullptr);
  list.GLAdd(&b, &a);
  list.GLAdd(&b, &c);
  list.GLSelectFirstObject(nullptr, nullptr);
  tagHolder* node = nullptr;
  void* object = nullptr;
  int absent = 0;
  EXPECT_EQ(seq({list.GLRemoveFromList(&b), current() == nullptr, list.GLFind(&b),
                 list.GLGetCurrentByAddress(&node) == 1 && node->companion == &c,
                 list.GLRemoveFromList(&absent), current() == nullptr, list.GLRemoveFromList(&a),
                 list.GLRemoveFromList(&b), list.GLSelectFirstObject(&object, nullptr)}),
            "1 1 1 1 0 1 1 1 0");  // the head goes too
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
