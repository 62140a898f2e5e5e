// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>

#include "Settings.h"
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
  // An object as "selected commands heading", the heading within a turn.
  std::string state(int i) {
    const SceneObject& o = *world.objects()[i];
    const float heading = std::remainder(o.heading, 6.2831853f);
    char text[64];
    std::snprintf(text, sizeof text, "%d %d %.3f", o.selected, o.commands,
                  std::fabs(heading) < 5e-4f ? 0 : heading);
    return text;
  }
  Messages messages;
  World world{messages};
  TempDir dir;
};

TEST_F(ViewWorld, SelectingByNameRunsTheBehaviourDeselectsThePreviousAndUnknownNamesAreReportedOnce) {
  world.load(KUTIL_VIEW_TEST_DATA "/select", nullptr);
  frames(12, {{KAR_EVENT_SELECT, 0, "lamp.txt"}});  // five turns and a ping
  // The lamp's deselect passes through its table with no command of its own; the other's stock
  // behaviour turns once round in 30 steps.
  frames(40, {{KAR_EVENT_SELECT, 0, "other.txt"}});
  EXPECT_EQ((Lines{"0 6 -0.500", "1 30 0.000"}), (Lines{state(0), state(1)}));
  EXPECT_EQ(world.selected(), 1);
  frames(2, {{KAR_EVENT_OPEN, 0, "nothing.txt"}, {KAR_EVENT_OPEN, 0, "nothing.txt"}});
  ASSERT_EQ(messages.shown().size(), 1u);
  EXPECT_EQ(messages.shown()[0].id, kMsgFileNotFound);
}

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

TEST(ViewSettings, PlacesAreKeptPerSceneAndNonsenseSettingsAreIgnored) {
  ASSERT_TRUE(savePosition("/rooms/a", {1.5f, 1.6f, -2.25f}, 0.5f));
  ASSERT_TRUE(savePosition("/rooms/b", {-4.0f, 1.6f, 3.0f}, -1.0f));
  _D3DVECTOR p{};
  float heading = 0.0f;
  ASSERT_TRUE(loadPosition("/rooms/a", &p, &heading));
  EXPECT_EQ((std::vector<float>{1.5f, -2.25f, 0.5f}), (std::vector<float>{p.x, p.z, heading}));
  EXPECT_FALSE(loadPosition("/rooms/c", &p, &heading));
  Settings s, defaults;
  s.width = 12, s.walkSpeed = 99.0f;  // too small a window, too fast a walk: the defaults stand
  ASSERT_TRUE(saveSettings(s));
  const Settings back = loadSettings();
  EXPECT_EQ((std::vector<float>{float(defaults.width), float(defaults.height), defaults.walkSpeed}),
            (std::vector<float>{float(back.width), float(back.height), back.walkSpeed}));
}

}  // namespace
}  // namespace kview
