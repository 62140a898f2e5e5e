// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>

#include "TestSupport.h"
#include "World.h"

namespace kview {
namespace {

using kutil::test::TempDir;
using kutil::test::writeFile;
using Lines = std::vector<std::string>;

class ViewWorld : public ::testing::Test {
 protected:
  ViewWorld() { messages.setEcho(false); }
  void frames(int n, const std::vector<InputCommand>& first = {}) {
    world.frame(first);
    for (int i = 1; i < n; ++i) world.frame({});
  }
  Messages messages;
  World world{messages};
  TempDir dir;
};

TEST_F(ViewWorld, AnObjectIsNeverMovedOntoTheViewer) {
  writeFile(dir.file("crate.txt"), "x\n");
  writeFile(dir.file("crate.kvc"), "ON select MOVE BACKWARD BY 0.4 FOR 20\n");
  world.load(dir.path(), nullptr);
  const _D3DVECTOR at = world.objects()[0]->position;
  ViewerState viewer;
  viewer.position = {at.x, 1.6f, at.z - 1.6f};  // in front of it, where it backs towards
  ASSERT_TRUE(world.placeViewer(viewer));
  frames(25, {{KAR_EVENT_SELECT, 0, "crate.txt"}});
  EXPECT_EQ(world.insideFrames(), 0);
  EXPECT_LT(world.objects()[0]->position.z, at.z - 0.39f);
  EXPECT_EQ(world.objects()[0]->recent.back().note, "blocked");
}

TEST_F(ViewWorld, ViewpointsAreWrittenReadBackAndRefusedWhereTheViewerCannotStand) {
  writeFile(dir.file("a.txt"), "x\n");
  world.load(dir.path(), nullptr);
  ViewerState here;
  here.position = {1.0f, 1.7f, world.layout().start.z + 0.5f}, here.heading = 0.4f;
  ASSERT_TRUE(world.placeViewer(here) && world.saveViewpoint());
  Messages again;
  again.setEcho(false);
  World reread(again);
  reread.load(dir.path(), nullptr);
  ASSERT_EQ(reread.viewpoints().count(), 1);
  ASSERT_TRUE(reread.jumpToViewpoint(0));
  const ViewerState& s = reread.walker().state();
  EXPECT_NEAR(std::hypot(s.position.x - 1.0f, s.position.y - 1.7f), 0.0f, 1e-4f);
  EXPECT_NEAR(s.heading, 0.4f, 1e-3f);
  // A viewpoint inside the object is refused and reported.
  writeFile(dir.file("views.mkl"),
            "\n[MKJ][5]dummy\n[MKN][6]Inside\n[MKX][6]0.0000\n[MKZ][6]0.0000\n[MKE][5]dummy\n");
  reread.viewpoints().load(dir.file("views.mkl"));
  EXPECT_FALSE(reread.jumpToViewpoint(0));
  ASSERT_EQ(again.shown().size(), 1u);
  EXPECT_EQ(again.shown()[0].id, kMsgViewpoint);
}

TEST(ViewRecording, WhatIsRecordedPlaysBackInOrder) {
  TempDir dir;
  Recorder recorder;
  ASSERT_TRUE(recorder.open(dir.file("run.rec")));
  auto text = [](const InputCommand& c) {
    return std::to_string(c.code) + "/" + std::to_string(c.flags) + c.text;
  };
  const int forward = KAR_MOTION_FORWARD, select = KAR_EVENT_SELECT, right = KAR_MOTION_TURNRIGHT;
  const std::vector<InputCommand> stored = {{forward, 0, ""}, {forward, 0, ""}, {select, 0, "a.txt"},
                                            {0, 0, ""},       {0, 0, ""},       {right, 2, ""}};
  Lines expected = {"0/0"}, played;  // the recording's initial entry first
  for (const InputCommand& c : stored) recorder.store(c), expected.push_back(text(c));
  recorder.close();
  EXPECT_EQ(kutil::test::readLines(dir.file("run.rec")).size(), 5u);  // runs of one command share a line
  Player player;
  ASSERT_TRUE(player.open(dir.file("run.rec")));
  for (InputCommand c; player.next(&c);) played.push_back(text(c));
  EXPECT_EQ(expected, played);
  EXPECT_FALSE(player.open(dir.file("missing.rec")));
  writeFile(dir.file("door.kvc"), "ON select PING \"mine\"\n");  // named by mistake: kept
  EXPECT_FALSE(recorder.open(dir.file("door.kvc")));
  EXPECT_EQ(kutil::test::readFile(dir.file("door.kvc")), "ON select PING \"mine\"\n");
}

}  // namespace
}  // namespace kview
