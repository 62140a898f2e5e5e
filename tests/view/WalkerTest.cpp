// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>

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
    fp->FPAddVertex(x0, 0, z0);
    fp->FPAddVertex(x1, 0, z0);
    fp->FPAddVertex(x1, 0, z1);
    fp->FPAddVertex(x0, 0, z1);
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
      all.steps += one.steps;
      all.bumped.insert(all.bumped.end(), one.bumped.begin(), one.bumped.end());
    }
    return all;
  }

  void start(float x, float z, float heading) { walker.reset({x, 1.6f, z}, heading); }
  float x() const { return walker.state().position.x; }
  float z() const { return walker.state().position.z; }

  CKFootPrint room, box;
  std::vector<Obstacle> obstacles;
  Walker walker;
};

TEST_F(ViewWalker, StepsAreTheLibrarysStandardMagnitudes) {
  start(-3, -3, 0.0f);
  walk(KAR_MOTION_FORWARD, 1);
  EXPECT_NEAR(z(), -2.7f, 1e-5f);  // 0.3 at speed 1
  walk(KAR_MOTION_FORWARD, 1, KFI_FLAG_FINE);
  EXPECT_NEAR(z(), -2.67f, 1e-5f);  // a tenth
  walker.setWalkSpeed(0.5f);
  walk(KAR_MOTION_BACKWARD, 1);
  EXPECT_NEAR(z(), -2.82f, 1e-5f);  // the speed scales translations...
  walk(KAR_MOTION_TURNLEFT, 1);
  EXPECT_NEAR(walker.state().heading, -0.02f, 1e-6f);  // ...and not turns
  walk(KAR_MOTION_SHIFTRIGHT, 1);
  EXPECT_NEAR(x(), -3.0f + 0.15f * std::cos(-0.02f), 1e-5f);
}

TEST_F(ViewWalker, AStepIntoAWallAtAnAngleSlidesAlongIt) {
  start(0, -4.5f, 1.0f);  // towards the wall at x = 5, meeting it after 19 steps
  const WalkOutcome out = walk(KAR_MOTION_FORWARD, 30);
  EXPECT_EQ(out.contacts, 1);
  EXPECT_TRUE(out.bumped.empty());  // the room is no object
  EXPECT_GT(x(), 4.4f);             // within a step of the margin of 0.3...
  EXPECT_LE(x(), 4.7f + 1e-4f);
  // ...and every step kept its part along the wall, as if the wall were not there.
  EXPECT_NEAR(z(), -4.5f + 30 * 0.3f * std::cos(1.0f), 0.01f);
}

TEST_F(ViewWalker, AStepStraightAtAWallStopsAndACornerHolds) {
  start(0, -4.0f, kHalfPi);
  walk(KAR_MOTION_FORWARD, 30);
  EXPECT_GT(x(), 4.4f);
  EXPECT_LE(x(), 4.7f + 1e-4f);
  EXPECT_NEAR(z(), -4.0f, 1e-4f);      // nothing to slide along
  start(-3, -3, -3.0f * kHalfPi / 2);  // into the corner at (-5, -5)
  walk(KAR_MOTION_FORWARD, 30);
  EXPECT_LT(x(), -4.4f);
  EXPECT_LT(z(), -4.4f);
}

TEST_F(ViewWalker, AnObstacleIsBumpedOncePerContact) {
  start(0, 0, kHalfPi);  // straight at the box's side x = 2
  WalkOutcome out = walk(KAR_MOTION_FORWARD, 15);
  ASSERT_EQ(out.bumped.size(), 1u);
  EXPECT_EQ(out.bumped[0], 0);
  EXPECT_GT(x(), 1.4f);
  EXPECT_LE(x(), 1.7f + 1e-4f);
  walk(KAR_MOTION_BACKWARD, 2);
  out = walk(KAR_MOTION_FORWARD, 5);
  EXPECT_EQ(out.bumped.size(), 1u);  // a new contact
}

TEST_F(ViewWalker, AViewerTooCloseToAWallMayStillStepAway) {
  start(4.8f, 0, -kHalfPi);  // 0.2 from the wall, facing away from it
  walk(KAR_MOTION_FORWARD, 1);
  EXPECT_NEAR(x(), 4.5f, 1e-4f);
  start(4.8f, 0, 0.0f);  // along the wall, staying as close
  walk(KAR_MOTION_FORWARD, 3);
  EXPECT_NEAR(z(), 0.9f, 1e-4f);
}

TEST_F(ViewWalker, TurnsLooksAndZoomsStayWithinTheirLimits) {
  start(0, 0, 3.1f);
  walk(KAR_MOTION_TURNRIGHT, 3);
  EXPECT_NEAR(walker.state().heading, 3.16f - 6.2831853f, 1e-4f);  // wrapped into (-pi, pi]
  walk(KAR_MOTION_LOOKUP, 200);
  EXPECT_LE(walker.state().pitch, 1.31f);
  walk(KAR_MOTION_AUTOLEVEL, 1);
  EXPECT_EQ(walker.state().pitch, 0.0f);
  const double zoom = walker.state().zoom;
  walk(KAR_CMD_ZOOMIN, 1);
  EXPECT_NEAR(walker.state().zoom, zoom / 1.1, 1e-9);
}

}  // namespace
}  // namespace kview
