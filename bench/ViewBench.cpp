// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// kutil-view's library work on a generated folder of 1,000 files: loading the room (every shape
// generated and tessellated, every behaviour loaded) and one frame (every behaviour ticked, the
// viewer's steps tested against the walls and every footprint).
#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

#include "TestSupport.h"
#include "World.h"

namespace {

using kutil::test::TempDir;
namespace fs = std::filesystem;

constexpr int kFiles = 1000;

// 1,000 files of every kind; one in ten is a shape file (the sample door, globe or pillar), half of
// those with the door's behaviour beside them.
const std::string& roomFolder() {
  static TempDir dir;
  static bool made = false;
  if (!made) {
    const char* endings[] = {".txt", ".bmp", ".wav", ".exe", ".ksl", ".doc", ".ico", ".sh", ".anb"};
    const char* shapes[] = {"door.ksf", "globe.ksf", "pillar.ksf"};
    const fs::path examples = fs::path(KUTIL_SOURCE_DIR) / "examples";
    for (int i = 0; i < kFiles; ++i) {
      char stem[32];
      std::snprintf(stem, sizeof(stem), "item%04d", i);
      if (i % 10 == 0) {
        fs::copy_file(examples / shapes[(i / 10) % 3], dir.file(std::string(stem) + ".ksf"));
        if (i % 20 == 0) fs::copy_file(examples / "door.kvc", dir.file(std::string(stem) + ".kvc"));
      } else if (i % 50 == 1) {
        fs::create_directory(dir.file(stem));
      } else {
        kutil::test::writeFile(dir.file(std::string(stem) + endings[i % 9]), "content\n");
      }
    }
    made = true;
  }
  return dir.path();
}

void BM_ViewLoad1000Files(benchmark::State& state) {
  const std::string& folder = roomFolder();
  for (auto _ : state) {
    kview::Messages messages;
    messages.setEcho(false);
    kview::World world(messages);
    world.load(folder, nullptr);
    if (world.objects().size() != static_cast<std::size_t>(kFiles)) state.SkipWithError("objects missing");
    benchmark::DoNotOptimize(world.objects().data());
  }
}
BENCHMARK(BM_ViewLoad1000Files)->Unit(benchmark::kMillisecond);

// The viewer walks on and turns now and then, so it meets objects and walls; every tenth frame it
// selects an object and every thirtieth it opens one, as clicks would. With cold = 1 the caches are
// flushed between frames (outside the timing), as drawing a frame does in the program.
void BM_ViewFrameLibrary1000Files(benchmark::State& state) {
  kview::Messages messages;
  messages.setEcho(false);
  kview::World world(messages);
  world.load(roomFolder(), nullptr);
  std::vector<char> flush(state.range(0) ? 64 << 20 : 0);
  int frame = 0;
  std::vector<kview::InputCommand> input;
  for (auto _ : state) {
    if (!flush.empty()) {
      state.PauseTiming();
      for (std::size_t i = 0; i < flush.size(); i += 64) ++flush[i];
      state.ResumeTiming();
    }
    input.assign(1, {KAR_MOTION_FORWARD, 0, ""});
    if (frame % 40 < 6) input.push_back({KAR_MOTION_TURNLEFT, 0, ""});
    if (frame % 10 == 0) input.push_back({KAR_EVENT_SELECT, 0, world.objects()[(frame * 7) % kFiles]->name});
    if (frame % 30 == 0) input.push_back({KAR_EVENT_OPEN, 0, world.objects()[(frame * 13) % kFiles]->name});
    world.frame(input);
    ++frame;
  }
  state.counters["bumps"] = world.collisions();
  state.counters["inside"] = world.insideFrames();
}
BENCHMARK(BM_ViewFrameLibrary1000Files)
    ->ArgName("cold")
    ->Arg(0)
    ->Arg(1)
    ->Unit(benchmark::kMicrosecond)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true);

}  // namespace
