// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>

#include "TestSupport.h"
#include "Walker.h"

namespace kview {
namespace {

constexpr float kHalfPi = 1.5707963f;

// A square room from -5 to 5 with one box, x 2 to 3 and z -1 to 1, standing in it.
class ViewWalker : public ::testing::Test {
 protected:
  ViewWalker() {
    square(&room, -5, -5, 5, 5);
    square(&box, 2, -1, 3, 1);
    obstacles.push_back({&box, {2.5f, 0, 0}, 1.2f});
    walker.setWalkSpeed(1.0f);
  }
  static void square(CKFootPrint* fp, float x0, float z0, float x1, float z1) {
    fp->FPInitialise();
    for (const auto& [x, z] : {std::pair{x0, z0}, {x1, z0}, {x1, z1}, {x0, z1}}) fp->FPAddVertex(x, 0, z);
    fp->FPUpdateVertexDependencies();
  }
  // Walks n frames of one command each, checking after every frame that the viewer stands clear.
  WalkOutcome walk(int code, int frames, int flags = 0) {
    WalkOutcome all;
    for (int i = 0; i < frames; ++i) {
      WalkOutcome one;
      walker.push(code, flags);
      walker.walk(&room, obstacles, &one);
      EXPECT_TRUE(Walker::standsClear(&room, obstacles, walker.state().position)) << "frame " << i;
      all.contacts += one.contacts;
      all.bumped.insert(all.bumped.end(), one.bumped.begin(), one.bumped.end());
    }
    return all;
  }
  // The viewer's state after n frames of one command.
  const ViewerState& after(int code, int frames, int flags = 0) {
    walk(code, frames, flags);
    return walker.state();
  }
  float x() const { return walker.state().position.x; }
  float z() const { return walker.state().position.z; }

  CKFootPrint room, box;
  std::vector<Obstacle> obstacles;
  Walker walker;
};

TEST_F(ViewWalker, StepsAreTheLibrarysStandardMagnitudes) {
  walker.reset({-3, 1.6f, -3}, 0.0f);
  // 0.3 at speed 1 and a tenth of it when fine; the speed scales translations and not turns.
  EXPECT_EQ(
      kutil::test::seq({after(KAR_MOTION_FORWARD, 1).position.z,
                        after(KAR_MOTION_FORWARD, 1, KFI_FLAG_FINE).position.z,
                        (walker.setWalkSpeed(0.5f), after(KAR_MOTION_BACKWARD, 1).position.z),
                        after(KAR_MOTION_TURNLEFT, 1).heading, after(KAR_MOTION_SHIFTRIGHT, 1).position.x}),
      "-2.7 -2.67 -2.82 -0.02 -2.85");
}

TEST_F(ViewWalker, WallsStopOrSlideAStepAndAnObstacleIsBumpedOncePerContact) {
  const float slid = -4.5f + 30 * 0.3f * std::cos(1.0f);  // the part along the wall, as if it were not there
  const struct {
    float x, z, heading;
    int frames;
    float xLow, xHigh, zLow, zHigh;  // where the viewer ends
    int contacts, bumps;
  } rows[] = {
      {0, -4.5f, 1.0f, 30, 4.4f, 4.7f, slid - 0.01f, slid + 0.01f, 1, 0},  // at an angle: slides
      {0, -4.0f, kHalfPi, 30, 4.4f, 4.7f, -4.0001f, -3.9999f, 1, 0},       // straight at it: stops
      {-3, -3, -3 * kHalfPi / 2, 30, -5, -4.4f, -5, -4.4f, 1, 0},          // into a corner: holds
      {0, 0, kHalfPi, 15, 1.4f, 1.7f, -1e-4f, 1e-4f, 1, 1},                // at the box
      {4.8f, 0, -kHalfPi, 1, 4.4999f, 4.5001f, -1e-4f, 1e-4f, 0, 0},       // too close, stepping away
      {4.8f, 0, 0, 3, 4.7999f, 4.8001f, 0.8999f, 0.9001f, 0, 0},           // too close, staying as close
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.x << "," << row.z << " heading " << row.heading);
    walker.reset({row.x, 1.6f, row.z}, row.heading);
    const WalkOutcome out = walk(KAR_MOTION_FORWARD, row.frames);
    EXPECT_GT(x(), row.xLow);
    EXPECT_LE(x(), row.xHigh + 1e-4f);
    EXPECT_GT(z(), row.zLow);
    EXPECT_LE(z(), row.zHigh);
    EXPECT_EQ(row.contacts, out.contacts);
    EXPECT_EQ(row.bumps, static_cast<int>(out.bumped.size()));
  }
  walker.reset({0, 1.6f, 0}, kHalfPi);
  walk(KAR_MOTION_FORWARD, 15);
  walk(KAR_MOTION_BACKWARD, 2);  // off the box and back on: a new contact
  EXPECT_EQ((std::vector<int>{0}), walk(KAR_MOTION_FORWARD, 5).bumped);
}

TEST_F(ViewWalker, TurnsLooksAndZoomsStayWithinTheirLimits) {
  walker.reset({0, 1.6f, 0}, 3.1f);
  const double zoom = walker.state().zoom;
  // The heading wraps into (-pi, pi]; the eye stays between 0.4 and 2.6; a zoom step is a tenth.
  EXPECT_EQ(
      kutil::test::seq({after(KAR_MOTION_TURNRIGHT, 3).heading, after(KAR_MOTION_LOOKUP, 200).pitch <= 1.31f,
                        after(KAR_MOTION_AUTOLEVEL, 1).pitch, after(KAR_MOTION_UP, 100).position.y,
                        after(KAR_MOTION_DOWN, 100).position.y, after(KAR_CMD_ZOOMIN, 1).zoom * 1.1 / zoom}),
      "-3.1232 1 0 2.6 0.4 1");
}

}  // namespace
}  // namespace kview
