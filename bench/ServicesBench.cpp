// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Settings store round trips, message lookups, result mapping and splash painting.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <string>

#include "KInfo.h"
#include "KRegistry.h"
#include "KSplash.h"
#include "TestSupport.h"

#if !defined(_WIN32)
#include <cairo/cairo.h>
#endif

namespace {

#if !defined(_WIN32)
// Each benchmark gets a store of its own in a temporary folder.
class StoreFolder {
 public:
  StoreFolder() { setenv("KUTIL_REGISTRY_DIR", m_dir.path().c_str(), 1); }
  ~StoreFolder() { unsetenv("KUTIL_REGISTRY_DIR"); }

 private:
  kutil::test::TempDir m_dir;
};

void BM_RegistryReadSetting(benchmark::State& state) {
  StoreFolder store;
  KUSetRegResolution(800);
  int value = 0;
  for (auto _ : state) benchmark::DoNotOptimize(KUGetRegResolution(&value));
}
BENCHMARK(BM_RegistryReadSetting);

void BM_RegistryWriteSetting(benchmark::State& state) {
  StoreFolder store;
  int value = 0;
  for (auto _ : state) benchmark::DoNotOptimize(KUSetRegResolution(++value));
}
BENCHMARK(BM_RegistryWriteSetting);

void BM_SplashPaintPanel(benchmark::State& state) {
  cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, 640, 480);
  cairo_t* cr = cairo_create(surface);
  CKSplash splash;
  splash.SPInitialise();
  splash.SPEnable(1);
  splash.SPSetDisplayMode(1);
  splash.SPSetText("Loading scene");
  splash.SPSetComment("textures");
  splash.SPSetProgress(40);
  for (auto _ : state) benchmark::DoNotOptimize(splash.SPPaint(cr));
  cairo_destroy(cr);
  cairo_surface_destroy(surface);
}
BENCHMARK(BM_SplashPaintPanel);
#endif

void BM_InfoLookup(benchmark::State& state) {
  CKaldoInfo info;
  for (unsigned id = 800; id <= 930; ++id) info.KINewInfoSheet(("message " + std::to_string(id)).c_str(), id);
  unsigned id = 800;
  for (auto _ : state) {
    benchmark::DoNotOptimize(info.KIFetchStringForID(id));
    id = id == 930 ? 800 : id + 1;
  }
}
BENCHMARK(BM_InfoLookup);

void BM_DirectXResultMapping(benchmark::State& state) {
  uint32_t code = 0x88760000u;
  for (auto _ : state) {
    benchmark::DoNotOptimize(KUdxrval2kwinfo(static_cast<long>(static_cast<int32_t>(code))));
    code = code == 0x88760320u ? 0x88760000u : code + 1;
  }
}
BENCHMARK(BM_DirectXResultMapping);

}  // namespace
