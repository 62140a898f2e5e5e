// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstring>
#include <type_traits>

#include "GeometryTestUtil.h"
#include "KArrange.h"

using kutil::test::nearVec;
using kutil::test::vec;

TEST(CKArrange, InitialiseSetsTheDefaults) {
  CKArrange a;
  EXPECT_EQ(1, a.CAInitialise());
  int type = -5;
  EXPECT_EQ(1, a.CAGetItemType(&type));
  EXPECT_EQ(0, type);
  float x = 9, y = 9, z = 9;
  a.CAGetFirstPosition(&x, &y, &z);
  EXPECT_EQ(0.0f, x);
  EXPECT_EQ(-0.8f, y);
  EXPECT_EQ(-0.4f, z);
  _D3DVECTOR dir, up;
  a.CAGetFirstOrientation(&dir, &up);
  EXPECT_TRUE(nearVec(dir, 0, 0, 1, 0));
  EXPECT_TRUE(nearVec(up, 0, 1, 0, 0));
  // Each getter reads its own step: translations (12, 1), (5, 1), (2, 1), orientations zero.
  const struct {
    int (CKArrange::*get)(int*, float*);
    int selector;
    float amount;
  } steps[] = {{&CKArrange::CAGetDeltaTranslation, 12, 1.0f}, {&CKArrange::CAGetDRowTranslation, 5, 1.0f},
               {&CKArrange::CAGetDColTranslation, 2, 1.0f},   {&CKArrange::CAGetDeltaOrientation, 0, 0.0f},
               {&CKArrange::CAGetDRowOrientation, 0, 0.0f},   {&CKArrange::CAGetDColOrientation, 0, 0.0f}};
  for (const auto& s : steps) {
    int selector = -7;
    float amount = -7;
    EXPECT_EQ(1, (a.*s.get)(&selector, &amount));
    EXPECT_EQ(s.selector, selector);
    EXPECT_EQ(s.amount, amount);
  }
}

TEST(CKArrange, UnsetItemTypeFailsAndKeepsTheOutput) {
  CKArrange a;
  a.CAInitialise();
  a.CASetItemType(-1);
  int type = 42;
  EXPECT_EQ(0, a.CAGetItemType(&type));
  EXPECT_EQ(42, type);
  a.CASetItemType(-2);  // only -1 means unset
  EXPECT_EQ(1, a.CAGetItemType(&type));
  EXPECT_EQ(-2, type);
}


TEST(CKArrange, FirstPositionIsStoredXZY) {
  static_assert(std::is_standard_layout<CKArrange>::value, "copied whole as raw memory");
  CKArrange a;
  a.CAInitialise();
  a.CASetFirstPosition(1, 2, 3);
  float x = 0, y = 0, z = 0;
  a.CAGetFirstPosition(&x, &y, &z);
  EXPECT_EQ(1.0f, x);
  EXPECT_EQ(2.0f, y);
  EXPECT_EQ(3.0f, z);
  // The record as raw memory: the item type, then x, z, y.
  unsigned char raw[sizeof(CKArrange)];
  std::memcpy(raw, &a, sizeof raw);
  float stored[3];
  std::memcpy(stored, raw + sizeof(int), sizeof stored);
  EXPECT_EQ(1.0f, stored[0]);
  EXPECT_EQ(3.0f, stored[1]);
  EXPECT_EQ(2.0f, stored[2]);
}
