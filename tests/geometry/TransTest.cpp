// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "GeometryTestSupport.h"
#include "KTrans.h"

using kutil::test::nearVec;
using kutil::test::vec;

namespace {
const double kPi = 3.14159265358979323846;
struct FieldOfView {
  double fov = 0, horizontal = 0, aspect = 0;
  float halfWidth = 0, halfHeight = 0;
};
FieldOfView fieldOfView(CKTrans& t) {
  FieldOfView f;
  EXPECT_EQ(1, t.KTGetFieldOfView(&f.fov, &f.horizontal, &f.halfWidth, &f.halfHeight, &f.aspect));
  return f;
}
}  // namespace

TEST(CKTrans, DefaultsKeepAspectOneUntilARectangleIsSet) {
  CKTrans t;
  EXPECT_EQ(0, t.KTInitialise());  // deliberately 0
  FieldOfView f = fieldOfView(t);
  const float half = static_cast<float>(std::tan(24.75 * kPi / 180.0) * 0.7);
  EXPECT_DOUBLE_EQ(49.5, f.fov);
  EXPECT_FLOAT_EQ(half, f.halfWidth);
  EXPECT_EQ(1.0, f.aspect);
  RECT r = {0, 0, 800, 600};
  EXPECT_EQ(1, t.KTSetAspectRatio(&r));
  f = fieldOfView(t);
  EXPECT_DOUBLE_EQ(4.0 / 3.0, f.aspect);
  EXPECT_FLOAT_EQ(half * 4.0f / 3.0f, f.halfWidth);
  EXPECT_NEAR(2 * std::atan(f.halfWidth / 0.7) * 180 / kPi, f.horizontal, 1e-9);
  t.KTSetZoomFactor(2.0);
  EXPECT_DOUBLE_EQ(90.0, fieldOfView(t).fov);
}

TEST(CKTrans, ProjectsWithoutDivisionByWOrCentreShift) {
  CKTrans t;
  t.KTInitialise();
  _D3DRMVECTOR4D out;
  _D3DVECTOR ahead = vec(0, 0, 10), offAxis = vec(1, -2, 10);
  EXPECT_EQ(1, t.KTWorld2Screen(&out, &ahead));
  EXPECT_FLOAT_EQ(static_cast<float>(10 * 750 / 749.3 - 0.7 * 750 / 749.3), out.z);
  EXPECT_FLOAT_EQ(10.0f, out.w);
  RECT r = {100, 50, 900, 650};  // x and y scale: width * 0.14705881 * near / halfWidth
  t.KTSetAspectRatio(&r);
  const double k = 800 * 0.14705881 * (0.7 / fieldOfView(t).halfWidth);
  t.KTWorld2Screen(&out, &offAxis);
  EXPECT_NEAR(k * 1, out.x, 1e-3);
  EXPECT_NEAR(k * -2, out.y, 1e-3);
}

TEST(CKTrans, ScreenToWorldGivesRandomPointsBack) {
  std::mt19937 rng(99);
  std::uniform_real_distribution<float> u(-1, 1), pos(-50, 50), zoom(0.3f, 2.5f);
  std::uniform_int_distribution<int> px(100, 1600);
  CKTrans t;
  t.KTInitialise();
  for (int i = 0; i < 2000; ++i) {
    if (i % 20 == 0) {
      _D3DVECTOR dir = vec(u(rng), u(rng), u(rng)), up = vec(u(rng), u(rng), u(rng));
      t.KTSetCameraPosition(pos(rng), pos(rng), pos(rng));
      t.KTSetCameraOrientation(&dir, &up);
      t.KTSetZoomFactor(zoom(rng));
      RECT r = {0, 0, px(rng), px(rng)};
      t.KTSetAspectRatio(&r);
    }
    const _D3DVECTOR p = vec(pos(rng), pos(rng), pos(rng));
    _D3DRMVECTOR4D screen;
    _D3DVECTOR back;
    ASSERT_EQ(1, t.KTWorld2Screen(&screen, &p));
    ASSERT_EQ(1, t.KTScreen2World(&back, &screen));
    ASSERT_TRUE(nearVec(back, p, 2e-3f)) << i;
  }
}
