// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Footprint tests on regular polygons of 4, 64 and 1024 edges. The counter
// "per_edge" is the time per call divided by the number of edges.
#include <benchmark/benchmark.h>

#include <cmath>

#include "KFootPrint.h"

namespace {

void makeRegular(CKFootPrint& fp, int edges) {
  fp.FPInitialise();
  for (int i = 0; i < edges; ++i) {
    const double a = 6.283185307179586 * i / edges + 0.1;
    fp.FPAddVertex(static_cast<float>(10.0 * std::cos(a)), 0.0f, static_cast<float>(10.0 * std::sin(a)));
  }
  fp.FPUpdateVertexDependencies();
}

void perEdge(benchmark::State& state, int edges) {
  state.counters["per_edge"] =
      benchmark::Counter(static_cast<double>(edges),
                         benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void BM_FootPrintIsPointInside(benchmark::State& state) {
  const int edges = static_cast<int>(state.range(0));
  CKFootPrint fp;
  makeRegular(fp, edges);
  _D3DVECTOR p;
  p.x = 0.5f;
  p.y = 0.0f;
  p.z = 0.3f;
  for (auto _ : state) benchmark::DoNotOptimize(fp.FPIsPointInside(&p));
  perEdge(state, edges);
  fp.FPTerminate();
}

// A step that stays clear of every wall, so every edge is examined.
void BM_FootPrintIsBoundaryCrossed(benchmark::State& state) {
  const int edges = static_cast<int>(state.range(0));
  CKFootPrint fp;
  makeRegular(fp, edges);
  _D3DVECTOR position, step;
  position.x = 0.0f;
  position.y = 0.0f;
  position.z = 0.0f;
  step.x = 1.0f;
  step.y = 0.0f;
  step.z = 0.5f;
  for (auto _ : state) benchmark::DoNotOptimize(fp.FPIsBoundaryCrossed(&position, &step));
  perEdge(state, edges);
  fp.FPTerminate();
}

// One slide along each edge of the footprint per iteration.
void BM_FootPrintAdjustTranslation(benchmark::State& state) {
  const int edges = static_cast<int>(state.range(0));
  CKFootPrint fp;
  makeRegular(fp, edges);
  for (auto _ : state) {
    fp.FPSelectFirstEdge();
    do {
      _D3DVECTOR from, to, step;
      fp.FPGetEdgeFromVector(&from);
      fp.FPGetEdgeToVector(&to);
      step.x = 0.7f;
      step.y = 0.1f;
      step.z = -0.4f;
      CKFootPrint::FPAdjustTranslation(&from, &to, &step);
      benchmark::DoNotOptimize(step);
    } while (fp.FPSelectNextEdgeNoWrap());
  }
  perEdge(state, edges);
  fp.FPTerminate();
}

}  // namespace

BENCHMARK(BM_FootPrintIsPointInside)->Arg(4)->Arg(64)->Arg(1024);
BENCHMARK(BM_FootPrintIsBoundaryCrossed)->Arg(4)->Arg(64)->Arg(1024);
BENCHMARK(BM_FootPrintAdjustTranslation)->Arg(4)->Arg(64)->Arg(1024);
