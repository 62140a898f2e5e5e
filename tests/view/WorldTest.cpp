// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>

#include "Report.h"
#include "Settings.h"
#include "TestSupport.h"
#include "World.h"

namespace kview {
namespace {

using kutil::test::TempDir;
using kutil::test::writeFile;

class ViewWorld : public ::testing::Test {
 protected:
  ViewWorld() { messages.setEcho(false); }
  void frames(int n, const std::vector<InputCommand>& first = {}) {
    world.frame(first);
    for (int i = 1; i < n; ++i) world.frame({});
  }
  SceneObject& object(int i) { return *world.objects()[i]; }

  Messages messages;
  World world{messages};
};

TEST_F(ViewWorld, SelectingByNameRunsTheBehaviourAndDeselectsThePrevious) {
  world.load(KUTIL_VIEW_TEST_DATA "/select", nullptr);
  frames(12, {{KAR_EVENT_SELECT, 0, "lamp.txt"}});
  EXPECT_TRUE(object(0).selected);
  EXPECT_EQ(object(0).commands, 6);  // five turns and a ping
  EXPECT_NEAR(object(0).heading, -0.5f, 1e-5f);
  ASSERT_EQ(world.requests().size(), 1u);
  EXPECT_EQ(world.requests()[0].command, "PING (select)");
  EXPECT_EQ(world.requests()[0].text, "lamp selected");
  frames(40, {{KAR_EVENT_SELECT, 0, "other.txt"}});
  EXPECT_FALSE(object(0).selected);
  EXPECT_EQ(world.selected(), 1);
  EXPECT_EQ(object(0).commands, 6);   // its deselect passed through its table: no command of its own
  EXPECT_EQ(object(1).commands, 30);  // the stock behaviour: once round in 30 steps
  EXPECT_NEAR(std::remainder(object(1).heading, 6.2831853f), 0.0f, 1e-3f);
}

TEST_F(ViewWorld, NamesOfNoObjectAreReportedOnce) {
  world.load(KUTIL_VIEW_TEST_DATA "/select", nullptr);
  frames(2, {{KAR_EVENT_OPEN, 0, "nothing.txt"}, {KAR_EVENT_OPEN, 0, "nothing.txt"}});
  ASSERT_EQ(messages.shown().size(), 1u);
  EXPECT_EQ(messages.shown()[0].id, kMsgFileNotFound);
}

TEST_F(ViewWorld, AnObjectIsNeverMovedOntoTheViewer) {
  TempDir dir;
  writeFile(dir.file("crate.txt"), "x\n");
  writeFile(dir.file("crate.kvc"), "ON select MOVE BACKWARD BY 0.4 FOR 20\n");
  world.load(dir.path(), nullptr);
  const _D3DVECTOR at = object(0).position;
  ViewerState viewer;
  viewer.position = {at.x, 1.6f, at.z - 1.6f};  // in front of it, where it backs towards
  ASSERT_TRUE(world.placeViewer(viewer));
  frames(25, {{KAR_EVENT_SELECT, 0, "crate.txt"}});
  EXPECT_EQ(world.insideFrames(), 0);
  EXPECT_LT(object(0).position.z, at.z - 0.39f);
  EXPECT_EQ(object(0).recent.back().note, "blocked");
}

TEST_F(ViewWorld, ViewpointsAreWrittenReadBackAndRefusedWhereTheViewerCannotStand) {
  TempDir dir;
  writeFile(dir.file("a.txt"), "x\n");
  world.load(dir.path(), nullptr);
  ViewerState here;
  here.position = {1.0f, 1.7f, world.layout().start.z + 0.5f};
  here.heading = 0.4f;
  ASSERT_TRUE(world.placeViewer(here));
  ASSERT_TRUE(world.saveViewpoint());
  Messages again;
  again.setEcho(false);
  World reread(again);
  reread.load(dir.path(), nullptr);
  ASSERT_EQ(reread.viewpoints().count(), 1);
  ASSERT_TRUE(reread.jumpToViewpoint(0));
  EXPECT_NEAR(reread.walker().state().position.x, 1.0f, 1e-4f);
  EXPECT_NEAR(reread.walker().state().position.y, 1.7f, 1e-4f);
  EXPECT_NEAR(reread.walker().state().heading, 0.4f, 1e-3f);
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
  const std::vector<InputCommand> stored = {{KAR_MOTION_FORWARD, 0, ""},
                                            {KAR_MOTION_FORWARD, 0, ""},
                                            {KAR_MOTION_FORWARD, 0, ""},
                                            {KAR_EVENT_SELECT, 0, "a.txt"},
                                            {0, 0, ""},
                                            {0, 0, ""},
                                            {KAR_MOTION_TURNRIGHT, 2, ""}};
  Recorder recorder;
  ASSERT_TRUE(recorder.open(dir.file("run.rec")));
  for (const InputCommand& c : stored) recorder.store(c);
  recorder.close();
  EXPECT_EQ(kutil::test::readLines(dir.file("run.rec")).size(), 5u);  // runs of one command share a line
  Player player;
  ASSERT_TRUE(player.open(dir.file("run.rec")));
  InputCommand c;
  ASSERT_TRUE(player.next(&c));
  EXPECT_EQ(c.code, 0);  // the recording's initial entry
  EXPECT_EQ(c.flags, 0);
  for (const InputCommand& expected : stored) {
    ASSERT_TRUE(player.next(&c));
    EXPECT_EQ(c.code, expected.code);
    EXPECT_EQ(c.flags, expected.flags);
    EXPECT_EQ(c.text, expected.text);
  }
  EXPECT_FALSE(player.next(&c));
  EXPECT_FALSE(player.open(dir.file("missing.rec")));
  writeFile(dir.file("door.kvc"), "ON select PING \"mine\"\n");  // named by mistake: kept
  EXPECT_FALSE(recorder.open(dir.file("door.kvc")));
  EXPECT_EQ(kutil::test::readFile(dir.file("door.kvc")), "ON select PING \"mine\"\n");
  EXPECT_TRUE(recorder.open(dir.file("run.rec")));  // an earlier recording is replaced
  recorder.close();
}

TEST(ViewSettings, SettingsAndPlacesAreKeptInTheStoreAndNonsenseIsIgnored) {
  Settings s;
  s.width = 1111;
  s.height = 666;
  s.walkSpeed = 0.75f;
  ASSERT_TRUE(saveSettings(s));
  const Settings back = loadSettings();
  EXPECT_EQ(back.width, 1111);
  EXPECT_EQ(back.height, 666);
  EXPECT_FLOAT_EQ(back.walkSpeed, 0.75f);
  ASSERT_TRUE(savePosition("/rooms/a", {1.5f, 1.6f, -2.25f}, 0.5f));
  ASSERT_TRUE(savePosition("/rooms/b", {-4.0f, 1.6f, 3.0f}, -1.0f));
  _D3DVECTOR p{};
  float heading = 0.0f;
  ASSERT_TRUE(loadPosition("/rooms/a", &p, &heading));  // one place per scene
  EXPECT_FLOAT_EQ(p.x, 1.5f);
  EXPECT_FLOAT_EQ(p.z, -2.25f);
  EXPECT_FLOAT_EQ(heading, 0.5f);
  EXPECT_FALSE(loadPosition("/rooms/c", &p, &heading));
  s.width = 12;  // too small a window, too fast a walk: the defaults stand
  s.walkSpeed = 99.0f;
  ASSERT_TRUE(saveSettings(s));
  EXPECT_EQ(loadSettings().width, Settings().width);
  EXPECT_FLOAT_EQ(loadSettings().walkSpeed, Settings().walkSpeed);
}

TEST(ViewReport, FrameTimesAreSummedUpByTheirMedian) {
  EXPECT_EQ(median({}), 0.0);
  EXPECT_EQ(median({3.0, 1.0, 2.0}), 2.0);
  EXPECT_EQ(median({4.0, 1.0, 3.0, 2.0}), 2.5);
}

}  // namespace
}  // namespace kview
