// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The FIFO push/pop pair the behaviour clock performs for every command on every tick.
#include <benchmark/benchmark.h>

#include "KFIFO.h"

namespace {

void BM_FifoPushPop(benchmark::State& state, int pushed, const char* pushedText) {
  CKFIFO fifo;
  fifo.FIInitialise();
  int code = 0;
  int flags = 0;
  float magnitude = 0.0f;
  _D3DVECTOR vector = {0.0f, 0.0f, 0.0f};
  char text[KFI_TEXT_LEN + 1];
  for (auto _ : state) {
    fifo.FIPushFIFOCommand(pushed, 0.5f, &vector, pushedText, 1);
    fifo.FIPopFIFOCommand(&code, &magnitude, &vector, text, &flags);
    benchmark::DoNotOptimize(code);
    benchmark::DoNotOptimize(text);
  }
}
BENCHMARK_CAPTURE(BM_FifoPushPop, Move, 1, "");
BENCHMARK_CAPTURE(BM_FifoPushPop, PlayWithText, 31, "C:\\kaldo\\sounds\\door.wav");

}  // namespace
