// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstring>
#include <type_traits>

#include "GeometryTestUtil.h"
#include "KArrange.h"

using kutil::test::nearVec;
using kutil::test::vec;

namespace {
struct Step {
  int selector = -7;
  float amount = -7;
};
}  // namespace

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

  Step s;
  a.CAGetDeltaTranslation(&s.selector, &s.amount);
  EXPECT_EQ(12, s.selector);
  EXPECT_EQ(1.0f, s.amount);
  a.CAGetDRowTranslation(&s.selector, &s.amount);
  EXPECT_EQ(5, s.selector);
  EXPECT_EQ(1.0f, s.amount);
  a.CAGetDColTranslation(&s.selector, &s.amount);
  EXPECT_EQ(2, s.selector);
  EXPECT_EQ(1.0f, s.amount);
  for (auto get : {&CKArrange::CAGetDeltaOrientation, &CKArrange::CAGetDRowOrientation,
                   &CKArrange::CAGetDColOrientation}) {
    Step o;
    EXPECT_EQ(1, (a.*get)(&o.selector, &o.amount));
    EXPECT_EQ(0, o.selector);
    EXPECT_EQ(0.0f, o.amount);
  }
  EXPECT_EQ(1, a.CATerminate());
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

TEST(CKArrange, StoresEveryStepSeparatelyAndUnvalidated) {
  CKArrange a;
  a.CAInitialise();
  a.CASetDeltaOrientation(1, 0.1f);
  a.CASetDeltaTranslation(2, 0.2f);
  a.CASetDRowOrientation(3, 0.3f);
  a.CASetDRowTranslation(4, 0.4f);
  a.CASetDColOrientation(5, 0.5f);
  a.CASetDColTranslation(-6, -0.6f);
  const struct {
    int (CKArrange::*get)(int*, float*);
    int selector;
    float amount;
  } expected[] = {{&CKArrange::CAGetDeltaOrientation, 1, 0.1f}, {&CKArrange::CAGetDeltaTranslation, 2, 0.2f},
                  {&CKArrange::CAGetDRowOrientation, 3, 0.3f},  {&CKArrange::CAGetDRowTranslation, 4, 0.4f},
                  {&CKArrange::CAGetDColOrientation, 5, 0.5f},  {&CKArrange::CAGetDColTranslation, -6, -0.6f}};
  for (const auto& e : expected) {
    Step s;
    EXPECT_EQ(1, (a.*e.get)(&s.selector, &s.amount));
    EXPECT_EQ(e.selector, s.selector);
    EXPECT_EQ(e.amount, s.amount);
  }
  _D3DVECTOR dir = vec(0, 0, 7), up = vec(0, 3, 1), d, u;
  a.CASetFirstOrientation(&dir, &up);
  a.CAGetFirstOrientation(&d, &u);
  EXPECT_TRUE(nearVec(d, dir, 0));  // not normalised
  EXPECT_TRUE(nearVec(u, up, 0));
  EXPECT_EQ(0, a.CAGetFirstOrientation(nullptr, &u));
  EXPECT_EQ(0, a.CAGetDColTranslation(nullptr, nullptr));
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
