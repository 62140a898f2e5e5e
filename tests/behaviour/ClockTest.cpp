// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The behaviour clock, tick by tick.
#include <gtest/gtest.h>

#include "DecideTestSupport.h"

using namespace kutil::test;
using RowInternals = kutil::detail::Internals<CKActionRow>;
using TableInternals = kutil::detail::Internals<CKDecide>;

namespace {

using Commands = std::vector<Command>;

Command move(int motion, float magnitude = 0.0f) { return {motion, magnitude, "", 1}; }
Command ping(const char* text, int code = KAR_EVENT_PING) { return {code, 1.0f, text, 1}; }

class CKDecideClock : public ::testing::Test {
 protected:
  void load(const std::string& text) { ASSERT_EQ(loadText(b.table, dir, text), 1); }
  std::string state(int row) { return runState(rowAt(b.table, row)); }

  ScriptedClock clock;
  TempDir dir;
  Behaviour b;
};

TEST_F(CKDecideClock, RepeatedRowsPerformOncePerTickThenRest) {
  load(
      "ON select MOVE FORWARD BY 0.5 FOR 3\nON open MOVE UP FOR 0\nON cut CALL g\nIN g MOVE DOWN FOR 0\nIN g "
      "RETURN\n");
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(b.tick(KAR_EVENT_SELECT), Commands{move(KAR_MOTION_FORWARD, 0.5f)});
    EXPECT_EQ(b.tick(), Commands{move(KAR_MOTION_FORWARD, 0.5f)});
    EXPECT_EQ(b.tick(), Commands{move(KAR_MOTION_FORWARD, 0.5f)});
    EXPECT_EQ(b.tick(), Commands{});
    EXPECT_EQ(state(0), "idle");
    EXPECT_EQ(b.table.DEClock(), 0);
  }
  // FOR 0 means never for an ON row but once for an IN row.
  EXPECT_EQ(b.tick(KAR_EVENT_OPEN), Commands{});
  EXPECT_EQ(b.tick(KAR_EVENT_CUT), Commands{move(KAR_MOTION_DOWN)});
}

TEST_F(CKDecideClock, UnwantedCommandsPassThroughUnchanged) {
  // The ON row for select stands after an IN row, so the scan for it stops before it.
  load("ON open NULL\nIN g NULL\nON select MOVE UP\n");
  b.in.FIPushFIFOCommand(KAR_EVENT_SELECT, 0.75f, "obj.kvc", 6);
  EXPECT_EQ(b.tick(), (Commands{{KAR_EVENT_SELECT, 0.75f, "obj.kvc", 6}}));
}

TEST_F(CKDecideClock, ResetByCommandOrStopAction) {
  load("ON select CALL g FOR 2\nON open STOP\nIN g MOVE UP FOR 5\nIN g RETURN\n");
  b.tick(KAR_EVENT_SELECT);
  b.tick();
  ASSERT_EQ(state(0), "busy");
  // The flagged row still runs before the input is read; the reset command is not passed on.
  EXPECT_EQ(b.tick(KAR_CMD_RESET), Commands{move(KAR_MOTION_UP)});
  EXPECT_EQ(RowInternals::iterations(*rowAt(b.table, 0)) * 10 + RowInternals::iterations(*rowAt(b.table, 2)),
            25);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(state(i) + callStack(rowAt(b.table, i)), "idleempty") << i;
  EXPECT_EQ(b.tick(), Commands{});

  b.tick(KAR_EVENT_SELECT);
  EXPECT_EQ(b.tick(KAR_EVENT_OPEN), Commands{move(KAR_MOTION_UP)});
  EXPECT_EQ(state(0), "idle");
  EXPECT_EQ(b.tick(), Commands{});
}

TEST_F(CKDecideClock, CallWaitsForTheGroupToReturnAndRepeats) {
  load("ON open CALL door FOR 2\nIN door MOVE UP BY 1\nIN door MOVE DOWN\nIN door RETURN\n");
  EXPECT_EQ(b.tick(KAR_EVENT_OPEN), Commands{move(KAR_MOTION_UP, 1.0f)});
  EXPECT_EQ(state(0) + callStack(rowAt(b.table, 0)) + state(2), "busycall.doornext");
  // An open while the caller is busy is taken by nobody and goes nowhere.
  EXPECT_EQ(b.tick(KAR_EVENT_OPEN), Commands{move(KAR_MOTION_DOWN)});
  // The return calls the group again within the same tick.
  EXPECT_EQ(b.tick(), Commands{move(KAR_MOTION_UP, 1.0f)});
  EXPECT_EQ(b.tick(), Commands{move(KAR_MOTION_DOWN)});
  EXPECT_EQ(b.tick(), Commands{});
  EXPECT_EQ(state(0) + callStack(rowAt(b.table, 0)), "idleempty");
  EXPECT_EQ(b.tick(KAR_EVENT_OPEN), Commands{move(KAR_MOTION_UP, 1.0f)}) << "ready for the next trigger";
}

TEST_F(CKDecideClock, NestedCallsUnwindInOneTick) {
  load(
      "ON select CALL outer\nIN outer CALL inner\nIN outer RETURN\nIN inner MOVE LOOKUP BY 3\nIN inner "
      "RETURN\n");
  EXPECT_EQ(b.tick(KAR_EVENT_SELECT), Commands{move(KAR_MOTION_LOOKUP, 3.0f)});
  EXPECT_EQ(callStack(rowAt(b.table, 1)), "call.inner");
  b.tick();
  for (int i = 0; i < 5; ++i) EXPECT_EQ(state(i), "idle") << i;
  EXPECT_EQ(callStack(rowAt(b.table, 0)) + callStack(rowAt(b.table, 1)), "emptyempty");
  EXPECT_EQ(b.table.DEClock(), 0);
}

TEST_F(CKDecideClock, GroupMembersRunOnePerTickUntilAnotherGroup) {
  load(
      "ON select CALL g\nIN g MOVE UP\nIN g MOVE DOWN FOR 2\nIN g ZOOMIN BY 2\nIN h MOVE BACKWARD\nIN g "
      "RETURN\n");
  EXPECT_EQ(b.tick(KAR_EVENT_SELECT), Commands{move(KAR_MOTION_UP)});
  EXPECT_EQ(b.tick(), Commands{move(KAR_MOTION_DOWN)});
  EXPECT_EQ(b.tick(), Commands{move(KAR_MOTION_DOWN)});
  // Repeats used up: the row hands on to the next member within the same tick.
  EXPECT_EQ(b.tick(), Commands{move(KAR_CMD_ZOOMIN, 2.0f)});
  EXPECT_EQ(b.tick(), Commands{});
  EXPECT_EQ(state(0), "busy") << "the group's RETURN is never reached";
}

TEST_F(CKDecideClock, EveryActionPushesItsCommand) {
  load(
      "ON select RUN \"app.exe\" \nON select RUN\nON select PLAY a.wav\nON select REPLACE b.kvc\n"
      "ON select LOAD c.kvc\nON select GOTO d\nON select USERGOTO e\nON select DELETE\nON select CUT\n"
      "ON select COPY\nON select ZOOMOUT BY 0.25\nON select PING hi\nON select NULL\n"
      "ON open CALL g\nIN g PING there\nIN g RETURN\n");
  // Twelve commands, but the output ring holds eight: the host must pop in time.
  EXPECT_EQ(b.tick(KAR_EVENT_SELECT), (Commands{{KAR_CMD_RUN, 1.0f, "app.exe", 1},
                                                {KAR_CMD_RUN_NOTEXT, 1.0f, "", 1},
                                                {KAR_CMD_PLAY, 1.0f, "a.wav", 1},
                                                {KAR_CMD_REPLACE, 1.0f, "b.kvc", 1},
                                                {KAR_CMD_LOAD, 1.0f, "c.kvc", 1},
                                                {KAR_CMD_GOTO, 1.0f, "d", 1},
                                                {KAR_CMD_USERGOTO, 1.0f, "e", 1},
                                                {KAR_EVENT_DELETE, 1.0f, "", 1}}));
  for (int i = 0; i < 8; ++i) rowAt(b.table, i)->ARSetAction(KAR_ACTION_NULL);
  EXPECT_EQ(b.tick(KAR_EVENT_SELECT), (Commands{{KAR_EVENT_CUT, 1.0f, "", 1},
                                                {KAR_EVENT_COPY, 1.0f, "", 1},
                                                move(KAR_CMD_ZOOMOUT, 0.25f),
                                                ping("hi", KAR_EVENT_SELECT)}));
  EXPECT_EQ(b.tick(KAR_EVENT_OPEN), Commands{ping("there")});
}

TEST_F(CKDecideClock, AFailingRowStopsTheDispatchOfItsCommand) {
  load("ON select PLAY x\nON select MOVE UP\nON open CALL nowhere\n");
  rowAt(b.table, 0)->ARSetTextData("");
  EXPECT_EQ(b.tick(KAR_EVENT_SELECT), Commands{});
  EXPECT_EQ(b.tick(KAR_EVENT_OPEN), Commands{});
  // A call that finds no group fails and leaves its row waiting until a reset.
  EXPECT_EQ(state(2) + callStack(rowAt(b.table, 2)), "busycall.nowhere");
  EXPECT_EQ(b.tick(KAR_EVENT_OPEN), Commands{});
  b.tick(KAR_CMD_RESET);
  EXPECT_EQ(state(2), "idle");
}

TEST_F(CKDecideClock, PlaybackPushesTheRecordingOneCommandPerTick) {
  const std::string rec = dir.file("walk.rec");
  // FORWARD twice with flags 0, then TURNLEFT once with flag bit 1, which is pushed twice.
  writeFile(rec, "[CM][1]1[MG][1]0[TX][0][RP][1]1\n[CM][1]3[MG][1]1[TX][4]left[RP][1]0\n");
  load("ON select PLAYBACK \"" + rec + "\"\n");
  b.table.DESetItemScaleFactor(1.5f);
  const Command left = {KAR_MOTION_TURNLEFT, 0.02f, "left", 1};
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(b.tick(KAR_EVENT_SELECT), Commands{move(KAR_MOTION_FORWARD, 0.2f)});
    EXPECT_EQ(b.tick(), Commands{move(KAR_MOTION_FORWARD, 0.2f)});
    EXPECT_EQ(b.tick(), (Commands{left, left}));
    EXPECT_EQ(b.tick(), Commands{});
    EXPECT_EQ(state(0), "idle");
  }
}

TEST_F(CKDecideClock, AtRowsFireOnEveryTickOfTheirTime) {
  load(
      "AT MAAAAAAAAAA0000AA PING hour\nAT W2026AA0410AAAAAA PING thursday\nAT MAAAAAAAAAAAAAA02 PING second\n"
      "AT X2026AAAAAAAAAAAA PING never\nAT MAAAA PING short\n");
  clock.set(2026, 10, 22, 4, 10, 0, 0);
  EXPECT_EQ(b.tick(), (Commands{ping("hour"), ping("thursday")}));
  EXPECT_EQ(b.tick(), (Commands{ping("hour"), ping("thursday"), ping("second")}));
  EXPECT_EQ(TableInternals::clockDateTime(b.table).extra, 2) << "ticks are numbered within their second";
  clock.setSecond(1);
  EXPECT_EQ(b.tick(), Commands{ping("thursday")});
  EXPECT_EQ(b.tick(), (Commands{ping("thursday"), ping("second")}));
  clock.set(2026, 10, 23, 5, 11, 0, 0);
  clock.setAvailable(false);
  EXPECT_EQ(b.tick(), Commands{}) << "no AT row fires without a time reading";
  clock.setAvailable(true);
  EXPECT_EQ(b.tick(), Commands{ping("hour")});
}

TEST_F(CKDecideClock, DFieldsMatchAnyTimeOnTheFirstTickThenTheStartOfTheirUnit) {
  load("AT MDDDDDDDDDDDDDDDD PING all\nAT MAAAAAAAAAAAAAADD PING first\n");
  clock.set(2026, 10, 22, 4, 10, 30, 45);
  EXPECT_EQ(b.tick(), (Commands{ping("all"), ping("first")}));
  EXPECT_EQ(b.tick(), Commands{});
  clock.setSecond(46);
  EXPECT_EQ(b.tick(), Commands{ping("first")});
}

TEST_F(CKDecideClock, MisuseChangesNothingAndNeverHangs) {
  load("ON select MOVE UP\nON open CALL a\nIN a CALL b\nIN b CALL a\n");
  b.table.DESetSelectedActionRow(rowAt(b.table, 2));
  b.table.DEAttachOutputFIFO(nullptr);
  b.in.FIPushFIFOCommand(KAR_EVENT_SELECT, 1.0f);
  EXPECT_EQ(b.table.DEClock(), 0);
  EXPECT_EQ(b.in.FITestFIFOCommandPipe(), 1);
  EXPECT_EQ(TableInternals::tickInSecond(b.table), -1);

  b.table.DEAttachOutputFIFO(&b.out);
  b.tick(KAR_EVENT_OPEN);  // groups calling each other in a circle
  EXPECT_EQ(TableInternals::selectedRow(b.table), rowAt(b.table, 2))
      << "the host's selection survives a tick";

  // One FIFO as both input and output: the command passes through once per tick.
  Behaviour loop;
  loop.table.DEAttachOutputFIFO(&loop.in);
  EXPECT_EQ(loop.tick(KAR_EVENT_OPEN), Commands{});
  EXPECT_EQ(loop.in.FITestFIFOCommandPipe(), 1);
}

TEST_F(CKDecideClock, TraceRecordsRowsResetsAndTicks) {
  const std::string path = dir.file("trace.txt");
  ASSERT_EQ(b.table.DEOpenTrace(path.c_str(), 0), 1);
  // The quoted token "" is a lone quote: the character after an opening quote is always taken.
  load(
      "ON select CALL \"\"\nON open CALL walk\nIN \"\"\" PLAY x.wav\nIN walk RETURN\nAT MAAAAAAAAAAAAAA01 "
      "NULL\n");
  clock.set(2026, 10, 22, 0, 9, 5, 3);
  b.tick(KAR_EVENT_SELECT);
  b.tick(KAR_EVENT_OPEN);
  b.tick(KAR_CMD_RESET);
  rowAt(b.table, 2)->ARSetGrouping("");
  rowAt(b.table, 2)->ARSetRunState("next");
  b.table.DEAddActionRow(new CKActionRow);
  rowAt(b.table, 5)->ARSetRowType(KAR_ROW_AT);
  rowAt(b.table, 5)->ARSetAction(KAR_ACTION_NULL);
  rowAt(b.table, 5)->ARSetRunState("next");
  rowAt(b.table, 0)->ARSetEvent(99);
  b.tick(99);
  // The host's stream: reopened for appending, closed once, and silent while closed.
  ASSERT_EQ(b.table.DEOpenTrace(path.c_str(), 1), 1);
  b.table.DEReset();
  EXPECT_EQ(b.table.DECloseTrace(), 1);
  EXPECT_EQ(b.table.DECloseTrace(), 0);
  b.table.DEReset();
  std::vector<std::string> expected = {
      "IN MAAAAAAAAAAAAAA01 NULL []",  // AT rows are labelled IN ...
      "ON select CALL [\"]",
      "AT \" PLAY [x.wav]",  // ... and IN rows AT
      "2026/10/22[0]  9:5:3 [1]",
      "ON open CALL [walk]",
      "AT walk RETURN []",
      "2026/10/22[0]  9:5:3 [2]",
      "***STOP+RESET***",
      "ERROR: AT time not set.",
      "ERROR: IN Grouping not set.",
      "ERROR: ON Event Type not recognised.",
      "2026/10/22[0]  9:5:3 [4]",
      "***STOP+RESET***",
  };
  EXPECT_EQ(readLines(path), expected);
  ASSERT_EQ(b.table.DEOpenTrace(path.c_str(), 0), 1);
  b.table.DECloseTrace();
  EXPECT_EQ(readFile(path), "") << "opened afresh without appending";
  EXPECT_EQ(b.table.DEOpenTrace("", 0), 0);
}

}  // namespace
