// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Seed tessellation: the library against the step-by-step re-counting method,
// growth with the vertex count, and peak working memory.
//
//   kutil_bench --benchmark_filter=Tess
//
// Counters: best_cpu_ms is the fastest single run in processor time, peak_MB
// the most heap held at once during a run (this executable counts every
// allocation for it), speedup the re-counting method's processor time over the
// library's on the convex 32-vertex seed, exponent the slope of log time over
// log vertex count for convex seeds of 16 to 128 vertices.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <new>
#include <vector>

#include "KVGen.h"
#include "LiteralTessellation.h"

// Heap accounting for the working-memory figures: every allocation carries its
// size in a small header so that the live total and its peak can be followed.
namespace {
std::size_t g_liveBytes = 0;
std::size_t g_peakBytes = 0;
constexpr std::size_t kHeader = 16;
}  // namespace

void* operator new(std::size_t n) {
  void* block = std::malloc(n + kHeader);
  if (block == nullptr) throw std::bad_alloc();
  *static_cast<std::size_t*>(block) = n;
  g_liveBytes += n;
  if (g_liveBytes > g_peakBytes) g_peakBytes = g_liveBytes;
  return static_cast<char*>(block) + kHeader;
}
void operator delete(void* p) noexcept {
  if (p == nullptr) return;
  char* block = static_cast<char*>(p) - kHeader;
  g_liveBytes -= *reinterpret_cast<std::size_t*>(block);
  std::free(block);
}
void operator delete(void* p, std::size_t) noexcept { operator delete(p); }

namespace {

using Seed = std::vector<_D3DVECTOR>;

// A generator holding the seed, tessellated on every call.
struct SeededGen {
  CKVGen gen;
  explicit SeededGen(const Seed& seed) {
    gen.KVInitialise();
    for (const _D3DVECTOR& p : seed) gen.KVAddSeedVertex(&p);
  }
  ~SeededGen() { gen.KVTerminate(); }
};

void runLibrary(benchmark::State& state, const Seed& seed) {
  SeededGen g(seed);
  std::size_t peak = 0;
  double best = 1e300;
  for (auto _ : state) {
    const std::size_t base = g_liveBytes;
    g_peakBytes = base;
    const std::clock_t t0 = std::clock();
    benchmark::DoNotOptimize(g.gen.KVTesselateSeedPlane());
    best = std::min(best, static_cast<double>(std::clock() - t0) / CLOCKS_PER_SEC);
    peak = std::max(peak, g_peakBytes - base);
  }
  // The fastest single run in processor time: the least disturbed by other load.
  state.counters["best_cpu_ms"] = best * 1e3;
  state.counters["peak_MB"] = static_cast<double>(peak) / (1024.0 * 1024.0);
  int a, b, c, count = 0;
  if (g.gen.KVGetFirstTesselatedTriangle(&a, &b, &c)) do
      ++count;
    while (g.gen.KVGetNextTesselatedTriangle(&a, &b, &c));
  state.counters["triangles"] = count;
}

void BM_TessLibraryConvex(benchmark::State& state) {
  runLibrary(state, kutil::test::convexSeed(static_cast<int>(state.range(0))));
}
BENCHMARK(BM_TessLibraryConvex)
    ->Arg(16)
    ->Arg(24)
    ->Arg(32)
    ->Arg(48)
    ->Arg(64)
    ->Arg(96)
    ->Arg(128)
    ->Unit(benchmark::kMillisecond);

void BM_TessLibraryRandomSimple(benchmark::State& state) {
  runLibrary(state, kutil::test::randomSimpleSeed(static_cast<int>(state.range(0)), 12345));
}
BENCHMARK(BM_TessLibraryRandomSimple)->Arg(32)->Arg(64)->Arg(128)->Unit(benchmark::kMillisecond);

void BM_TessLiteralConvex(benchmark::State& state) {
  const Seed seed = kutil::test::convexSeed(static_cast<int>(state.range(0)));
  std::vector<kutil::test::Triple> out;
  for (auto _ : state) benchmark::DoNotOptimize(kutil::test::literalTessellate(seed, &out));
}
BENCHMARK(BM_TessLiteralConvex)->Arg(16)->Arg(32)->Unit(benchmark::kMillisecond);

// Best processor time of several runs: the machine is shared, and processor
// time is what other work on it disturbs least.
double secondsOf(void (*body)(const Seed&), const Seed& seed, int repeats) {
  double best = 1e300;
  for (int r = 0; r < repeats; ++r) {
    const std::clock_t t0 = std::clock();
    body(seed);
    best = std::min(best, static_cast<double>(std::clock() - t0) / CLOCKS_PER_SEC);
  }
  return best;
}

void libraryOnce(const Seed& seed) {
  SeededGen g(seed);
  benchmark::DoNotOptimize(g.gen.KVTesselateSeedPlane());
}

void literalOnce(const Seed& seed) {
  std::vector<kutil::test::Triple> out;
  benchmark::DoNotOptimize(kutil::test::literalTessellate(seed, &out));
}

// Both methods on the convex 32-vertex seed in the same run; best of several.
void BM_TessSpeedupConvex32(benchmark::State& state) {
  const Seed seed = kutil::test::convexSeed(32);
  double literal = 0, library = 0;
  for (auto _ : state) {
    literal = secondsOf(literalOnce, seed, 2);
    library = secondsOf(libraryOnce, seed, 50);
  }
  state.counters["literal_ms"] = literal * 1e3;
  state.counters["library_ms"] = library * 1e3;
  state.counters["speedup"] = literal / library;
}
BENCHMARK(BM_TessSpeedupConvex32)->Iterations(1)->Unit(benchmark::kMillisecond);

// Least-squares slope of log(time) over log(n) for convex seeds of 16 to 128 vertices.
void BM_TessExponentConvex(benchmark::State& state) {
  const int sizes[] = {16, 23, 32, 45, 64, 91, 128};
  double slope = 0;
  for (auto _ : state) {
    double sx = 0, sy = 0, sxx = 0, sxy = 0;
    int k = 0;
    for (int n : sizes) {
      const double t = secondsOf(libraryOnce, kutil::test::convexSeed(n), n >= 91 ? 3 : 10);
      const double x = std::log(static_cast<double>(n)), y = std::log(t);
      sx += x;
      sy += y;
      sxx += x * x;
      sxy += x * y;
      ++k;
    }
    slope = (k * sxy - sx * sy) / (k * sxx - sx * sx);
  }
  state.counters["exponent"] = slope;
}
BENCHMARK(BM_TessExponentConvex)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
