// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Costs of the text toolkit on typical record lines, the object list and
// the relativisation of one file name.
#include <benchmark/benchmark.h>

#include <cstring>
#include <string>
#include <vector>

#include "GenListInternals.h"
#include "KGenList.h"
#include "KPathVars.h"
#include "KText.h"

namespace {

// A shape-file-like record: eight numeric segments and a path at the end.
std::string makeRecord() {
  std::string line;
  char segment[128];
  int length = 0;
  for (int i = 0; i < 8; ++i) {
    char tag[8];
    std::snprintf(tag, sizeof tag, "[V%d]", i);
    KUMkFloatSegment(segment, tag, 1.25f * static_cast<float>(i), &length);
    line += segment;
  }
  KUMkLineSegment(segment, "[FPT]", "C:\\scenes\\hall\\wall_texture.bmp", &length);
  line += segment;
  return line;
}

void BM_MkFloatSegment(benchmark::State& state) {
  char out[64];
  int length = 0;
  for (auto _ : state) {
    KUMkFloatSegment(out, "[DTA]", 123.4567f, &length);
    benchmark::DoNotOptimize(out);
  }
}
BENCHMARK(BM_MkFloatSegment);

void BM_ExtractLastField(benchmark::State& state) {
  const std::string line = makeRecord();
  char out[264];
  for (auto _ : state) {
    benchmark::DoNotOptimize(KUExtractField("[FPT]", line.c_str(), out, 260));
  }
}
BENCHMARK(BM_ExtractLastField);

void BM_ConvertToRelative(benchmark::State& state) {
  char text[264];
  for (auto _ : state) {
    std::strcpy(text, "C:\\Program Files\\kaldo3d\\kaldo\\bin\\viewer.exe");
    KUConvertToRelative(text);
    benchmark::DoNotOptimize(text);
  }
}
BENCHMARK(BM_ConvertToRelative);

// Adding walks to the tail, so building n entries is quadratic.
void BM_GenListBuild(benchmark::State& state) {
  std::vector<int> objects(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    CKGenList list;
    list.GLInitialise();
    for (int& object : objects) list.GLAdd(&object, nullptr);
    benchmark::DoNotOptimize(kutil::detail::Internals<CKGenList>::head(list));
  }
}
BENCHMARK(BM_GenListBuild)->Arg(16)->Arg(256);

}  // namespace
