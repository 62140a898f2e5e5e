// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Geometry maths: rotations through quaternions, frame conversion, camera transform.
#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "KTrans.h"
#include "KVector.h"

namespace {

std::vector<_D3DVECTOR> randomVectors(std::size_t n) {
  std::mt19937 rng(5);
  std::uniform_real_distribution<float> u(-10, 10);
  std::vector<_D3DVECTOR> out(n);
  for (auto& v : out) {
    v.x = u(rng);
    v.y = u(rng);
    v.z = u(rng);
  }
  return out;
}

void BM_VectorRotate(benchmark::State& state) {
  const auto vs = randomVectors(1024);
  _D3DVECTOR axis = {0.3f, 0.9f, -0.2f}, out;
  std::size_t i = 0;
  for (auto _ : state) {
    KUVectorRotate(&out, &vs[i++ & 1023], &axis, 0.7f);
    benchmark::DoNotOptimize(out);
  }
}
BENCHMARK(BM_VectorRotate);

void BM_VectorRotateAgainstFrame(benchmark::State& state) {
  auto vs = randomVectors(1024);
  _D3DVECTOR dir = {0.4f, 0.3f, 0.8f}, up = {-0.1f, 0.9f, -0.3f}, out;
  std::size_t i = 0;
  for (auto _ : state) {
    KUVectorRotateAgainstFrame(&out, &vs[i++ & 1023], &dir, &up, 1);
    benchmark::DoNotOptimize(out);
  }
}
BENCHMARK(BM_VectorRotateAgainstFrame);

void BM_CameraRoundTrip(benchmark::State& state) {
  const auto vs = randomVectors(1024);
  CKTrans t;
  t.KTInitialise();
  _D3DVECTOR dir = {0.4f, 0.3f, 0.8f}, up = {0.0f, 1.0f, 0.0f}, back;
  t.KTSetCameraOrientation(&dir, &up);
  _D3DRMVECTOR4D screen;
  std::size_t i = 0;
  for (auto _ : state) {
    t.KTWorld2Screen(&screen, &vs[i++ & 1023]);
    t.KTScreen2World(&back, &screen);
    benchmark::DoNotOptimize(back);
  }
}
BENCHMARK(BM_CameraRoundTrip);

}  // namespace
