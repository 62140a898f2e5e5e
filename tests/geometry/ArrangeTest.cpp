// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstring>

#include "KArrange.h"

TEST(CKArrange, DefaultsAndUnsetItemType) {
  CKArrange a;
  EXPECT_EQ(1, a.CAInitialise());
  float x = 9, y = 9, z = 9, amount = 0;
  int selector = 0, type = 42;
  a.CAGetFirstPosition(&x, &y, &z);
  EXPECT_EQ(0.0f, x);
  EXPECT_EQ(-0.8f, y);
  EXPECT_EQ(-0.4f, z);
  a.CAGetDRowTranslation(&selector, &amount);
  EXPECT_EQ(5, selector);
  EXPECT_EQ(1.0f, amount);
  a.CASetItemType(-1);  // only -1 means unset
  EXPECT_EQ(0, a.CAGetItemType(&type));
  EXPECT_EQ(42, type);
}

TEST(CKArrange, FirstPositionIsStoredXZY) {
  CKArrange a;
  a.CAInitialise();
  a.CASetFirstPosition(1, 2, 3);
  float stored[3];  // after the item type: x, z, y
  std::memcpy(stored, reinterpret_cast<const unsigned char*>(&a) + sizeof(int), sizeof stored);
  EXPECT_EQ(1.0f, stored[0]);
  EXPECT_EQ(3.0f, stored[1]);
  EXPECT_EQ(2.0f, stored[2]);
}
