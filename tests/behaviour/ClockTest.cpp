// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The behaviour clock as scripts: a table, then tick by tick the input, the result, the output and the
// rows' states.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <sstream>

#include "DecideTestSupport.h"

using namespace kutil::test;

namespace {

// Runs ticks written "input/result output | states; ...": input is a command code pushed before the
// tick or "-" for none, result DEClock's, output as format() gives it (blank-separated commands) and
// states as states() gives it, left out when not checked.
void play(Behaviour& b, const std::string& ticks) {
  const auto trim = [](std::string t) {
    t.erase(0, t.find_first_not_of(' '));
    return t.erase(t.find_last_not_of(' ') + 1);
  };
  std::istringstream script(ticks);
  std::string tick;
  for (int n = 1; std::getline(script, tick, ';'); ++n) {
    if (trim(tick).empty()) continue;
    SCOPED_TRACE("tick " + std::to_string(n) + ":" + tick);
    char input[8] = "";
    int result = -1, used = 0;
    const size_t bar = tick.find('|');
    ASSERT_TRUE(std::sscanf(tick.c_str(), " %7[-0-9]/%d %n", input, &result, &used) == 2 &&
                bar >= size_t(used));
    EXPECT_EQ(b.run(input[0] == '-' ? -1 : std::atoi(input)), trim(tick.substr(used, bar - used)));
    EXPECT_EQ(b.result, result);
    const std::string want = trim(tick.substr(bar + 1));
    EXPECT_EQ(want.empty() ? want : states(b.table), want);
  }
}

class CKDecideClock : public ::testing::Test {
 protected:
  void load(const std::string& kvc) { ASSERT_EQ(loadText(b.table, dir, kvc), 1); }
  ScriptedClock clock;
  TempDir dir;
  Behaviour b;
};

TEST_F(CKDecideClock, ScriptedTables) {
  const struct {
    const char *kvc, *ticks;
  } scripts[] = {
      // FOR n performs on n ticks, then rests ready for the next trigger; FOR 0 is never for ON, once for IN
      {"ON select MOVE FORWARD BY 0.5 FOR 3\nON open MOVE UP FOR 0\nON cut CALL g\nIN g MOVE DOWN FOR 0\nIN "
       "g RETURN\n",
       "20/1 1:0.5 | n2 i i i i; -/1 1:0.5 | n1 i i i i; -/1 1:0.5 | n i i i i; -/1 | i3 i i i i; "
       "-/0 |; 20/1 1:0.5 | n2 i i i i; -/1 1:0.5 |; -/1 1:0.5 |; -/1 | i3 i i i i; "
       "24/1 | i3 i i i i; 46/1 6:0 | i3 i b(g) i n; -/1 | i3 i i- i i; -/0 |;"},
      // a command no ON row before the first IN row wants passes through whole; a reset is not passed
      {"ON open NULL\nIN g NULL\nON select MOVE UP\n",
       "20/1 20:0.75:in/6@1,2,3 | i i i; 99/1 99:0.75:in/6@1,2,3 |; 81/0 | i- i- i-; "
       "24/1 | i- i- i-;"},
      // reset by the command or by STOP: idle, empty stacks, iterations reloaded; flagged rows run first
      {"ON select CALL g FOR 2\nON open STOP\nIN g MOVE UP FOR 5\nIN g RETURN\n",
       "20/1 5:0 | b2(g) i n4 i; -/1 5:0 | b2(g) i n3 i; 81/1 5:0 | i2- i- i5- i-; -/0 |; "
       "20/1 5:0 | b2(g) i- n4- i-; 24/1 5:0 | i2- i- i5- i-; -/0 |;"},
      // a CALL waits for its group's RETURN, which runs the caller again while it has iterations; the
      // busy caller takes no second open
      {"ON open CALL door FOR 2\nIN door MOVE UP BY 1\nIN door MOVE DOWN\nIN door RETURN\n",
       "24/1 5:1 | b2(door) i n i; 24/1 6:0 | b2(door) i i n; -/1 5:1 | b1(door) i n i; "
       "-/1 6:0 | b1(door) i i n; -/1 | i2- i i i; 24/1 5:1 | b2(door) i n i;"},
      // nested calls unwind in one tick; a waiting call does not stop the dispatch of its command
      {"ON select CALL outer\nON select MOVE UP\nIN outer CALL inner\nIN outer RETURN\n"
       "IN inner MOVE LOOKUP BY 3\nIN inner RETURN\n",
       "20/1 7:3 5:0 | b(outer) i b(inner) i i n; -/1 | i- i i- i i i; -/0 |;"},
      // group members run one per tick in table order until a row of another group; a member whose
      // repeats are used up hands on to the next at once
      {"ON select CALL g\nIN g MOVE UP\nIN g MOVE DOWN FOR 2\nIN g ZOOMIN BY 2\nIN h MOVE BACKWARD\nIN g "
       "RETURN\n",
       "20/1 5:0 | b(g) i n2 i i i; -/1 6:0 | b(g) i n1 i i i; -/1 6:0 | b(g) i n i i i; "
       "-/1 40:2 | b(g) i i2 i i i; -/0 | b(g) i i2 i i i;"},
      // every action's command
      {"ON select RUN \"app.exe\" \nON select RUN\nON select PLAY a.wav\nON select REPLACE b.kvc\n"
       "ON select LOAD c.kvc\nON select GOTO d\nON select USERGOTO e\nON select DELETE\n",
       "20/1 30:1:app.exe 50:1 31:1:a.wav 32:1:b.kvc 33:1:c.kvc 35:1:d 37:1:e 45:1 |;"},
      // every action's command, continued; PING sends the ON row's event, and 80 from an IN row
      {"ON select CUT\nON select COPY\nON select ZOOMOUT BY 0.25\nON select PING hi\nON select NULL\n"
       "ON select ZOOMIN\nON select MOVE AUTOLEVEL\nON open CALL g\nIN g PING there\nIN g RETURN\n",
       "20/1 46:1 48:1 58:0.25 20:1:hi 40:0 11:0 | i i i i i i i i i i; "
       "24/1 80:1:there | i i i i i i i b(g) i n;"},
      // a failing row stops the dispatch of its command only; a CALL without group waits for a reset
      {"ON select RETURN\nON select MOVE UP\nON open CALL nowhere\nON open MOVE DOWN\n",
       "20/1 | i i i i; 24/1 | i i b(nowhere) i; 24/1 6:0 | i i b(nowhere) i; 81/0 | i- i- i- i-;"},
  };
  for (const auto& s : scripts) {
    SCOPED_TRACE(s.kvc);
    Behaviour fresh;
    ASSERT_EQ(loadText(fresh.table, dir, s.kvc), 1);
    play(fresh, s.ticks);
  }
}

TEST_F(CKDecideClock, PlaybackPushesTheRecordingOneCommandPerTick) {
  const std::string rec = dir.file("walk.rec");
  // FORWARD twice with flags 0, then TURNLEFT once with flag bit 1, which is pushed twice.
  writeFile(rec, "[CM][1]1[MG][1]0[TX][0][RP][1]1\n[CM][1]3[MG][1]1[TX][4]left[RP][1]0\n");
  load("ON select PLAYBACK \"" + rec + "\"\n");
  b.table.DESetItemScaleFactor(1.5f);
  for (int round = 0; round < 2; ++round)
    play(b, "20/1 1:0.2 | n; -/1 1:0.2 | n; -/1 3:0.02:left 3:0.02:left | n; -/1 | i; -/0 | i;");
  // A called group's playback goes on until the recording ends, then the group goes on.
  Behaviour in;
  ASSERT_EQ(loadText(in.table, dir,
                     "ON select CALL g\nON select MOVE UP\nIN g PLAYBACK \"" + rec + "\"\nIN g RETURN\n"),
            1);
  in.table.DESetItemScaleFactor(1.5f);
  play(in,
       "20/1 1:0.2 5:0 | b(g) i n i; -/1 1:0.2 | b(g) i n i; -/1 3:0.02:left 3:0.02:left | b(g) i n i; "
       "-/1 | b(g) i i n; -/1 | i- i i i;");
}

TEST_F(CKDecideClock, AtRowsFireOnEveryTickOfTheirTime) {
  load(
      "AT MAAAAAAAAAA0000AA PING hour\nAT W2026AA0410AAAAAA PING thu\nAT MAAAAAAAAAAAAAA02 PING second\n"
      "AT X2026AAAAAAAAAAAA PING never\nAT MAAAA PING short\nAT M2026102210AAAAAA PING day\n");
  clock.set(2026, 10, 22, 4, 10, 0, 0);
  play(b, "-/1 80:1:hour 80:1:thu 80:1:day |; -/1 80:1:hour 80:1:thu 80:1:second 80:1:day |;");
  clock.setSecond(1);
  play(b, "-/1 80:1:thu 80:1:day |; -/1 80:1:thu 80:1:second 80:1:day |;");
  clock.set(2026, 10, 23, 5, 11, 0, 0);
  clock.setAvailable(false);
  play(b, "-/0 |;");  // no AT row fires without a time reading
  clock.setAvailable(true);
  play(b, "-/1 80:1:hour |;");

  // "D" fields match anything on the first tick, afterwards the start of their unit only.
  Behaviour d;
  ASSERT_EQ(loadText(d.table, dir, "AT MDDDDDDDDDDDDDDDD PING all\nAT MAAAAAAAAAAAAAADD PING first\n"), 1);
  clock.set(2026, 10, 22, 4, 10, 30, 45);
  play(d, "-/1 80:1:all 80:1:first |; -/0 |;");
  clock.setSecond(46);
  play(d, "-/1 80:1:first |;");
}

TEST_F(CKDecideClock, MisuseChangesNothingAndNeverHangs) {
  load("ON select MOVE UP\nON open CALL a\nIN a CALL b\nIN b CALL a\n");
  b.table.DESetSelectedActionRow(rowAt(b.table, 2));
  b.table.DEAttachOutputFIFO(nullptr);
  b.in.FIPushFIFOCommand(20, 1.0f);
  EXPECT_EQ(seq({b.table.DEClock(), TableInternals::tickInSecond(b.table), b.table.DEAttachOutputFIFO(&b.out),
                 b.table.DEAttachInputFIFO(nullptr), b.table.DEClock(), b.table.DEAttachInputFIFO(&b.in)}),
            "0 -1 1 1 0 1");
  // The select left waiting comes through; groups calling each other in a circle end.
  play(b, "24/1 5:0 |;");
  EXPECT_EQ(TableInternals::selectedRow(b.table), rowAt(b.table, 2))
      << "the host's selection survives a tick";

  // One FIFO as both input and output: a tick takes one ring of commands (eight, four rounds of
  // these two) and ends, leaving them in their order.
  Behaviour loop;
  loop.table.DEAttachOutputFIFO(&loop.in);
  loop.in.FIPushFIFOCommand(25, 1.0f);
  EXPECT_EQ(seq({loop.run(24), drain(loop.in), loop.result}), " 25:1/0 24:0.75:in/6@1,2,3 1");
}

TEST_F(CKDecideClock, TraceRecordsRowsResetsAndTicks) {
  const std::string path = dir.file("trace.txt");
  ASSERT_EQ(b.table.DEOpenTrace(path.c_str(), 0), 1);
  // The quoted token "" is a lone quote: the character after an opening quote is always taken.
  load(
      "ON select CALL \"\"\nON open CALL walk\nIN \"\"\" PLAY x.wav\nIN walk RETURN\nAT MAAAAAAAAAAAAAA01 "
      "NULL\n");
  clock.set(2026, 10, 22, 0, 9, 5, 3);
  for (int code : {20, 24, 81}) b.tick(code);
  // Rows broken by hand: an IN row without its group, an AT row without its time, an unknown event.
  CKActionRow* at = new CKActionRow;
  EXPECT_EQ(seq({rowAt(b.table, 2)->ARSetGrouping(""), rowAt(b.table, 2)->ARSetRunState("next"),
                 b.table.DEAddActionRow(at), at->ARSetRowType(KAR_ROW_AT), at->ARSetAction(KAR_ACTION_NULL),
                 at->ARSetRunState("next"), rowAt(b.table, 0)->ARSetEvent(99)}),
            "1 1 1 1 1 1 1");
  b.tick(99);
  // The host's stream: reopened for appending, closed once, and silent while closed.
  EXPECT_EQ(seq({b.table.DEOpenTrace(path.c_str(), 1), b.table.DEReset(), b.table.DECloseTrace(),
                 b.table.DECloseTrace(), b.table.DEReset()}),
            "1 1 1 0 1");
  // AT rows are labelled IN and IN rows AT.
  const std::vector<std::string> expected = {"IN MAAAAAAAAAAAAAA01 NULL []",
                                             "ON select CALL [\"]",
                                             "AT \" PLAY [x.wav]",
                                             "2026/10/22[0]  9:5:3 [1]",
                                             "ON open CALL [walk]",
                                             "AT walk RETURN []",
                                             "2026/10/22[0]  9:5:3 [2]",
                                             "***STOP+RESET***",
                                             "ERROR: AT time not set.",
                                             "ERROR: IN Grouping not set.",
                                             "ERROR: ON Event Type not recognised.",
                                             "2026/10/22[0]  9:5:3 [4]",
                                             "***STOP+RESET***"};
  EXPECT_EQ(readLines(path), expected);
  CKDecide empty;
  // Opened afresh without appending.
  EXPECT_EQ(seq({b.table.DEOpenTrace(path.c_str(), 0), b.table.DECloseTrace(), readFile(path),
                 b.table.DEOpenTrace("", 0), empty.DEReset()}),
            "1 1  0 0");
}

}  // namespace
