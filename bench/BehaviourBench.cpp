// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// One behaviour tick (DEClock) on tables of growing size, with one input command per tick.
#include <benchmark/benchmark.h>

#include <string>

#include "KDecide.h"
#include "TestSupport.h"

namespace {

const int kEventCodes[] = {20, 21, 23, 24, 26, 28, 45, 46, 48, 80};

// A table of rows rows: five ON rows first (as the clock's ordering rule asks) that move with repeats,
// call a group, ping and zoom, then IN groups of four rows that move, ping and return. Only the first
// group is ever called, so the work a tick does beyond walking the rows stays the same for every size,
// and the measured growth is that of the walks.
std::string tableText(int rows) {
  std::string text =
      "ON select MOVE FORWARD BY 0.5 FOR 2\nON deselect CALL g0\nON property PING here\n"
      "ON open MOVE TURNLEFT BY 0.1\nON collide ZOOMIN BY 1.5 FOR 1\n";
  int written = 5;
  for (int g = 0; written + 4 <= rows; ++g, written += 4) {
    const std::string name = "IN g" + std::to_string(g);
    text += name + " MOVE UP BY 0.25\n" + name + " MOVE TURNLEFT BY 0.1 FOR 1\n" + name + " PING there\n" +
            name + " RETURN\n";
  }
  for (; written < rows; ++written) text += "IN spare NULL\n";
  return text;
}

void BM_DecideClock(benchmark::State& state) {
  const int rows = static_cast<int>(state.range(0));
  kutil::test::TempDir dir;
  const std::string path = dir.file("bench.kvc");
  kutil::test::writeFile(path, tableText(rows));
  CKDecide table;
  table.DEInitialise();
  if (table.DELoadFromFile(path.c_str()) != 1) {
    state.SkipWithError("table did not load");
    return;
  }
  CKFIFO in;
  CKFIFO out;
  in.FIInitialise();
  out.FIInitialise();
  table.DEAttachInputFIFO(&in);
  table.DEAttachOutputFIFO(&out);

  int code = 0;
  int flags = 0;
  float magnitude = 0.0f;
  char text[KFI_TEXT_LEN + 1];
  long n = 0;
  for (auto _ : state) {
    in.FIPushFIFOCommand(kEventCodes[n++ % 10], 1.0f);
    benchmark::DoNotOptimize(table.DEClock());
    while (out.FIPopFIFOCommand(&code, &magnitude, text, &flags)) benchmark::DoNotOptimize(code);
  }
  state.counters["rows"] = rows;
  // Time per row of the table: the iteration time divided by the row count.
  state.counters["per_row"] = benchmark::Counter(
      static_cast<double>(rows), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_DecideClock)->Arg(10)->Arg(100)->Arg(1000);

}  // namespace
