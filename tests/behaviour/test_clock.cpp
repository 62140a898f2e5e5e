// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The behaviour clock, tick by tick.
#include <gtest/gtest.h>

#include "test_decide_support.h"

using kutil::detail::ActionRowAccess;
using kutil::detail::DecideAccess;
using kutil::test::Behaviour;
using kutil::test::callStack;
using kutil::test::Command;
using kutil::test::loadText;
using kutil::test::rowAt;
using kutil::test::runState;
using kutil::test::ScriptedClock;
using kutil::test::TempDir;

namespace {

using Commands = std::vector<Command>;

class CKDecideClock : public ::testing::Test {
 protected:
  void load(const std::string& text) { ASSERT_EQ(loadText(b.table, dir, text), 1); }

  ScriptedClock clock;
  TempDir dir;
  Behaviour b;
};

TEST_F(CKDecideClock, RepeatedOnRowPerformsOncePerTickThenRests) {
  load("ON select MOVE FORWARD BY 0.5 FOR 3\n");
  const Commands forward = {{KAR_MOTION_FORWARD, 0.5f, "", 1}};
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(b.tick(KAR_EVENT_SELECT), forward);
    EXPECT_EQ(b.tick(), forward);
    EXPECT_EQ(b.tick(), forward);
    EXPECT_EQ(b.tick(), Commands{});
    EXPECT_EQ(runState(rowAt(b.table, 0)), "idle");
    EXPECT_EQ(b.tick(), Commands{});
    EXPECT_EQ(b.table.DEClock(), 0) << "nothing left to do";
  }
}

TEST_F(CKDecideClock, ZeroRepeatsMeanNeverForOnRowsButOnceForInRows) {
  load("ON select MOVE UP FOR 0\nON open CALL g\nIN g MOVE DOWN FOR 0\nIN g RETURN\n");
  EXPECT_EQ(b.tick(KAR_EVENT_SELECT), Commands{});
  EXPECT_EQ(b.tick(KAR_EVENT_OPEN), (Commands{{KAR_MOTION_DOWN, 0.0f, "", 1}}));
  EXPECT_EQ(b.tick(), Commands{});
  EXPECT_EQ(runState(rowAt(b.table, 1)), "idle");
}

TEST_F(CKDecideClock, UnwantedCommandsPassThroughUnchanged) {
  // The ON row stands after an IN row, so the scan for it never gets there.
  load("ON open NULL\nIN g NULL\nON select MOVE UP\n");
  const _D3DVECTOR v = {1.0f, 2.0f, 3.0f};
  b.in.FIPushFIFOCommand(KAR_EVENT_SELECT, 0.75f, &v, "obj.kvc", 6);
  EXPECT_EQ(b.table.DEClock(), 1);
  int code = 0;
  int flags = 0;
  float magnitude = 0;
  _D3DVECTOR got = {};
  char text[KFI_TEXT_LEN + 1];
  ASSERT_EQ(b.out.FIPopFIFOCommand(&code, &magnitude, &got, text, &flags), 1);
  EXPECT_EQ(code, KAR_EVENT_SELECT);
  EXPECT_EQ(magnitude, 0.75f);
  EXPECT_EQ(got.z, 3.0f);
  EXPECT_STREQ(text, "obj.kvc");
  EXPECT_EQ(flags, 6);
  EXPECT_EQ(b.out.FITestFIFOCommandPipe(), 0);
}

TEST_F(CKDecideClock, ResetCommandResetsEveryRowAndIsNotPassedOn) {
  load("ON select CALL g FOR 2\nIN g MOVE UP FOR 5\nIN g RETURN\n");
  b.tick(KAR_EVENT_SELECT);
  b.tick();
  ASSERT_EQ(runState(rowAt(b.table, 0)), "busy");
  int iterations = 0;
  rowAt(b.table, 1)->ARGetIterations(&iterations);
  ASSERT_LT(iterations, 5);

  // The flagged row still runs before the input is read.
  EXPECT_EQ(b.tick(KAR_CMD_RESET), (Commands{{KAR_MOTION_UP, 0.0f, "", 1}}));
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(runState(rowAt(b.table, i)), "idle");
    EXPECT_EQ(callStack(rowAt(b.table, i)), "empty");
  }
  rowAt(b.table, 0)->ARGetIterations(&iterations);
  EXPECT_EQ(iterations, 2);
  rowAt(b.table, 1)->ARGetIterations(&iterations);
  EXPECT_EQ(iterations, 5);
  EXPECT_EQ(b.tick(), Commands{});
}

TEST_F(CKDecideClock, StopActionResetsTheTable) {
  load("ON select MOVE UP FOR 9\nON open STOP\n");
  b.tick(KAR_EVENT_SELECT);
  ASSERT_EQ(runState(rowAt(b.table, 0)), "next");
  EXPECT_EQ(b.tick(KAR_EVENT_OPEN), (Commands{{KAR_MOTION_UP, 0.0f, "", 1}}));
  EXPECT_EQ(runState(rowAt(b.table, 0)), "idle");
  EXPECT_EQ(b.tick(), Commands{});
}

TEST_F(CKDecideClock, CallRunsTheGroupAndReturnReleasesTheCaller) {
  load("ON open CALL door\nIN door MOVE UP BY 1\nIN door MOVE DOWN\nIN door RETURN\n");
  EXPECT_EQ(b.tick(KAR_EVENT_OPEN), (Commands{{KAR_MOTION_UP, 1.0f, "", 1}}));
  EXPECT_EQ(runState(rowAt(b.table, 0)), "busy");
  EXPECT_EQ(callStack(rowAt(b.table, 0)), "call.door");
  EXPECT_EQ(runState(rowAt(b.table, 2)), "next");
  // An open while the caller is busy is taken by nobody and goes nowhere.
  EXPECT_EQ(b.tick(KAR_EVENT_OPEN), (Commands{{KAR_MOTION_DOWN, 0.0f, "", 1}}));
  EXPECT_EQ(runState(rowAt(b.table, 3)), "next");
  EXPECT_EQ(b.tick(), Commands{});
  EXPECT_EQ(runState(rowAt(b.table, 0)), "idle");
  EXPECT_EQ(callStack(rowAt(b.table, 0)), "empty");
  EXPECT_EQ(b.table.DEClock(), 0);
}

TEST_F(CKDecideClock, RepeatedCallerCallsItsGroupAgainOnReturn) {
  load("ON open CALL door FOR 2\nIN door MOVE UP\nIN door RETURN\n");
  const Commands up = {{KAR_MOTION_UP, 0.0f, "", 1}};
  EXPECT_EQ(b.tick(KAR_EVENT_OPEN), up);
  EXPECT_EQ(b.tick(), up);
  EXPECT_EQ(b.tick(), Commands{});
  EXPECT_EQ(runState(rowAt(b.table, 0)), "idle");
  EXPECT_EQ(b.tick(), Commands{});
  EXPECT_EQ(b.tick(KAR_EVENT_OPEN), up) << "ready for the next trigger";
}

TEST_F(CKDecideClock, NestedCallsUnwindInOneTick) {
  load("ON select CALL outer\nIN outer CALL inner\nIN outer RETURN\nIN inner MOVE LOOKUP BY 3\nIN inner RETURN\n");
  EXPECT_EQ(b.tick(KAR_EVENT_SELECT), (Commands{{KAR_MOTION_LOOKUP, 3.0f, "", 1}}));
  EXPECT_EQ(callStack(rowAt(b.table, 0)), "call.outer");
  EXPECT_EQ(callStack(rowAt(b.table, 1)), "call.inner");
  b.tick();
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(runState(rowAt(b.table, i)), "idle") << i;
    EXPECT_NE(callStack(rowAt(b.table, i)).rfind("call.", 0), 0u) << i;
  }
  EXPECT_EQ(b.table.DEClock(), 0);
}

TEST_F(CKDecideClock, GroupMembersRunOnePerTickInTableOrder) {
  load("ON select CALL g\nIN g MOVE UP\nIN g MOVE DOWN FOR 2\nIN g ZOOMIN BY 2\nIN h MOVE BACKWARD\nIN g RETURN\n");
  EXPECT_EQ(b.tick(KAR_EVENT_SELECT), (Commands{{KAR_MOTION_UP, 0.0f, "", 1}}));
  EXPECT_EQ(b.tick(), (Commands{{KAR_MOTION_DOWN, 0.0f, "", 1}}));
  EXPECT_EQ(b.tick(), (Commands{{KAR_MOTION_DOWN, 0.0f, "", 1}}));
  // Repeats used up: the IN row hands on to the next member within the same tick.
  EXPECT_EQ(b.tick(), (Commands{{KAR_CMD_ZOOMIN, 2.0f, "", 1}}));
  // The group ends at the first row of another group; its RETURN is never reached.
  EXPECT_EQ(b.tick(), Commands{});
  EXPECT_EQ(runState(rowAt(b.table, 0)), "busy");
}

TEST_F(CKDecideClock, EveryActionPushesItsCommand) {
  load("ON select RUN \"app.exe\" \nON select RUN\nON select PLAY a.wav\nON select REPLACE b.kvc\n"
       "ON select LOAD c.kvc\nON select GOTO d\nON select USERGOTO e\nON select DELETE\nON select CUT\n"
       "ON select COPY\nON select ZOOMOUT BY 0.25\nON select PING hi\nON select NULL\n"
       "ON open CALL g\nIN g PING there\nIN g RETURN\n");
  const Commands expected = {{KAR_CMD_RUN, 1.0f, "app.exe", 1},     {KAR_CMD_RUN_NOTEXT, 1.0f, "", 1},
                             {KAR_CMD_PLAY, 1.0f, "a.wav", 1},      {KAR_CMD_REPLACE, 1.0f, "b.kvc", 1},
                             {KAR_CMD_LOAD, 1.0f, "c.kvc", 1},      {KAR_CMD_GOTO, 1.0f, "d", 1},
                             {KAR_CMD_USERGOTO, 1.0f, "e", 1},      {KAR_EVENT_DELETE, 1.0f, "", 1},
                             {KAR_EVENT_CUT, 1.0f, "", 1},          {KAR_EVENT_COPY, 1.0f, "", 1}};
  b.in.FIPushFIFOCommand(KAR_EVENT_SELECT, 1.0f);
  b.table.DEClock();
  // Ten commands, but the output ring holds eight: the host must pop in time.
  EXPECT_EQ(kutil::test::drain(b.out), Commands(expected.begin(), expected.begin() + 8));

  CKDecide& t = b.table;
  for (int i = 0; i < 10; ++i) rowAt(t, i)->ARSetAction(KAR_ACTION_NULL);
  EXPECT_EQ(b.tick(KAR_EVENT_SELECT),
            (Commands{{KAR_CMD_ZOOMOUT, 0.25f, "", 1}, {KAR_EVENT_SELECT, 1.0f, "hi", 1}}));
  EXPECT_EQ(b.tick(KAR_EVENT_OPEN), (Commands{{KAR_EVENT_PING, 1.0f, "there", 1}}));
}

TEST_F(CKDecideClock, AFailingRowStopsTheDispatchOfItsCommand) {
  load("ON select PLAY x\nON select MOVE UP\n");
  rowAt(b.table, 0)->ARSetTextData("");
  EXPECT_EQ(b.tick(KAR_EVENT_SELECT), Commands{});
  EXPECT_EQ(runState(rowAt(b.table, 1)), "idle");
  // A call to a group that does not exist fails too, and leaves its row free.
  load("ON open CALL nowhere\n");
  EXPECT_EQ(b.tick(KAR_EVENT_OPEN), Commands{});
  EXPECT_EQ(runState(rowAt(b.table, 2)), "idle");
}

TEST_F(CKDecideClock, PlaybackPushesTheRecordingOneCommandPerTick) {
  const std::string rec = dir.file("walk.rec");
  // FORWARD twice with flags 0, then TURNLEFT once with flag bit 1 (pushed twice).
  kutil::test::writeFile(rec, "[CM][1]1[MG][1]0[TX][0][RP][1]1\n[CM][1]3[MG][1]1[TX][4]left[RP][1]0\n");
  load("ON select PLAYBACK \"" + rec + "\"\n");
  b.table.DESetItemScaleFactor(1.5f);
  const Commands forward = {{KAR_MOTION_FORWARD, 0.2f, "", 1}};
  const Commands left = {{KAR_MOTION_TURNLEFT, 0.02f, "left", 1}, {KAR_MOTION_TURNLEFT, 0.02f, "left", 1}};
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(b.tick(KAR_EVENT_SELECT), forward);
    EXPECT_EQ(b.tick(), forward);
    EXPECT_EQ(b.tick(), left);
    EXPECT_EQ(b.tick(), Commands{});
    EXPECT_EQ(runState(rowAt(b.table, 0)), "idle");
    EXPECT_EQ(b.tick(), Commands{});
  }
}

TEST_F(CKDecideClock, AtRowsFireWhenTheirTimeMatches) {
  load("AT MAAAAAAAAAA0000AA PING hour\nAT W2026AA0410AAAAAA PING thursday\nAT MAAAAAAAAAAAAAA02 PING second\n"
       "AT X2026AAAAAAAAAAAA PING never\nAT MAAAA PING short\n");
  clock.set(2026, 10, 22, 4, 10, 0, 0);
  const Command hour = {KAR_EVENT_PING, 1.0f, "hour", 1};
  const Command thursday = {KAR_EVENT_PING, 1.0f, "thursday", 1};
  const Command second = {KAR_EVENT_PING, 1.0f, "second", 1};
  EXPECT_EQ(b.tick(), (Commands{hour, thursday}));
  EXPECT_EQ(b.tick(), (Commands{hour, thursday, second}));
  EXPECT_EQ(b.tick(), (Commands{hour, thursday}));
  clock.setSecond(1);
  EXPECT_EQ(b.tick(), (Commands{thursday}));
  EXPECT_EQ(b.tick(), (Commands{thursday, second}));
  clock.set(2026, 10, 23, 5, 10, 0, 7);
  EXPECT_EQ(b.tick(), Commands{});
  // Without a time reading no AT row fires.
  clock.set(2026, 10, 22, 4, 11, 0, 0);
  clock.setAvailable(false);
  EXPECT_EQ(b.tick(), Commands{});
  clock.setAvailable(true);
  EXPECT_EQ(b.tick(), (Commands{hour}));
}

TEST_F(CKDecideClock, DFieldsMatchAnyTimeOnTheFirstTickThenOnlyTheStartOfTheirUnit) {
  load("AT MDDDDDDDDDDDDDDDD PING all\nAT MAAAAAAAAAAAAAADD PING first\n");
  clock.set(2026, 10, 22, 4, 10, 30, 45);
  const Command all = {KAR_EVENT_PING, 1.0f, "all", 1};
  const Command first = {KAR_EVENT_PING, 1.0f, "first", 1};
  EXPECT_EQ(b.tick(), (Commands{all, first}));
  EXPECT_EQ(b.tick(), Commands{});
  clock.setSecond(46);
  EXPECT_EQ(b.tick(), Commands{first}) << "tick 1 of a new second";
  EXPECT_EQ(b.tick(), Commands{});
  // A freshly initialised table (here a copy) starts with a first tick again.
  Behaviour copy;
  ASSERT_EQ(copy.table.DECopyFrom(&b.table), 1);
  copy.table.DEAttachInputFIFO(&copy.in);
  copy.table.DEAttachOutputFIFO(&copy.out);
  EXPECT_EQ(copy.tick(), (Commands{all, first}));
}

TEST_F(CKDecideClock, TicksAreNumberedWithinTheirSecond) {
  clock.set(2026, 0, 1, 4, 0, 0, 5);
  for (int expected : {1, 2, 3}) {
    b.table.DEClock();
    EXPECT_EQ(DecideAccess::clockDateTime(b.table).extra, expected);
  }
  clock.setSecond(6);
  b.table.DEClock();
  EXPECT_EQ(DecideAccess::tickInSecond(b.table), 1);
  EXPECT_EQ(DecideAccess::lastSecond(b.table), 6);
}

TEST_F(CKDecideClock, WithoutBothFifosNothingHappens) {
  load("ON select MOVE UP\n");
  rowAt(b.table, 0)->ARSetRunState("next");
  b.table.DEAttachOutputFIFO(nullptr);
  b.in.FIPushFIFOCommand(KAR_EVENT_SELECT, 1.0f);
  EXPECT_EQ(b.table.DEClock(), 0);
  EXPECT_EQ(runState(rowAt(b.table, 0)), "next");
  EXPECT_EQ(b.in.FITestFIFOCommandPipe(), 1);
  EXPECT_EQ(DecideAccess::tickInSecond(b.table), -1);
}

TEST_F(CKDecideClock, TheHostsSelectionSurvivesATick) {
  load("ON select CALL g\nIN g MOVE UP\nIN g RETURN\n");
  b.table.DESetSelectedActionRow(rowAt(b.table, 1));
  b.tick(KAR_EVENT_SELECT);
  b.tick(KAR_CMD_RESET);
  CKActionRow* selected = nullptr;
  b.table.DEGetSelectedActionRow(&selected);
  EXPECT_EQ(selected, rowAt(b.table, 1));
}

TEST_F(CKDecideClock, CircularCallsAndSharedFifosDoNotHang) {
  load("ON select CALL a\nIN a CALL b\nIN b CALL a\n");
  EXPECT_EQ(b.table.DEClock(), 0);
  b.tick(KAR_EVENT_SELECT);
  SUCCEED();
  // One FIFO as both input and output: every command passes through once per tick.
  Behaviour loop;
  loop.table.DEAttachOutputFIFO(&loop.in);
  loop.in.FIPushFIFOCommand(KAR_EVENT_OPEN, 1.0f);
  EXPECT_EQ(loop.table.DEClock(), 1);
  EXPECT_EQ(loop.in.FITestFIFOCommandPipe(), 1);
}

TEST_F(CKDecideClock, ResetOfAnEmptyTableFails) {
  EXPECT_EQ(b.table.DEReset(), 0);
  load("ON select NULL\n");
  EXPECT_EQ(b.table.DEReset(), 1);
}

TEST_F(CKDecideClock, TraceRecordsRowsResetsAndTicks) {
  const std::string path = dir.file("trace.txt");
  ASSERT_EQ(b.table.DEOpenTrace(path.c_str(), 0), 1);
  // The quoted token "" is a lone quote (the character after an opening quote is always taken).
  load("ON select CALL \"\"\nON open CALL walk\nIN \"\"\" PLAY x.wav\nIN walk RETURN\nAT MAAAAAAAAAAAAAA01 NULL\n");
  clock.set(2026, 10, 22, 0, 9, 5, 3);
  b.tick(KAR_EVENT_SELECT);
  b.tick(KAR_EVENT_OPEN);
  b.tick(KAR_CMD_RESET);

  CKActionRow* unnamed = rowAt(b.table, 2);
  unnamed->ARSetGrouping("");
  unnamed->ARSetRunState("next");
  b.table.DEAddActionRow(new CKActionRow);
  CKActionRow* last = rowAt(b.table, 5);
  last->ARSetRowType(KAR_ROW_AT);
  last->ARSetAction(KAR_ACTION_NULL);
  last->ARSetRunState("next");
  CKActionRow* odd = rowAt(b.table, 0);
  odd->ARSetEvent(99);
  b.tick(99);
  b.table.DECloseTrace();

  const std::vector<std::string> expected = {
      "IN MAAAAAAAAAAAAAA01 NULL []",  // AT rows are labelled IN
      "ON select CALL [\"]",
      "AT \" PLAY [x.wav]",            // IN rows are labelled AT
      "2026/10/22[0]  9:5:3 [1]",
      "ON open CALL [walk]",
      "AT walk RETURN []",
      "2026/10/22[0]  9:5:3 [2]",
      "***STOP+RESET***",
      "ERROR: AT time not set.",
      "ERROR: IN Grouping not set.",
      "ERROR: ON Event Type not recognised.",
      "2026/10/22[0]  9:5:3 [4]",
  };
  EXPECT_EQ(kutil::test::readLines(path), expected);
}

}  // namespace
