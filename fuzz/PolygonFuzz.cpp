// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Footprints and seeds from fuzzed coordinates: the crossing, inside and slide
// tests on a footprint, and the tessellation of the same outline as a seed.
// Nothing may crash, and everything must terminate.
#include "FuzzSupport.h"
#include "KFootPrint.h"
#include "KVGen.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  kutil::fuzz::Reader in(data, size);
  const int count = in.integer(0, 40);
  // Mostly small coordinates, where the tolerances matter; sometimes huge ones.
  const float range = in.byte() < 16 ? 1.0e30f : 50.0f;
  CKFootPrint footprint;
  footprint.FPInitialise();
  CKVGen seed;
  seed.KVInitialise();
  for (int i = 0; i < count; ++i) {
    _D3DVECTOR v;
    v.x = in.real(-range, range);
    v.y = in.real(-2.0f, 2.0f);
    v.z = in.real(-range, range);
    footprint.FPAddVertex(&v);
    _D3DVECTOR s = v;
    s.y = 0.0f;
    seed.KVAddSeedVertex(&s);
  }
  footprint.FPUpdateVertexDependencies();
  for (int probe = 0; probe < 8 && !in.empty(); ++probe) {
    _D3DVECTOR p{in.real(-60, 60), 0.0f, in.real(-60, 60)};
    _D3DVECTOR step{in.real(-5, 5), 0.0f, in.real(-5, 5)};
    footprint.FPIsPointInside(&p);
    footprint.FPIsBoundaryCrossed(&p, &step);
    footprint.FPIsBoundaryCrossedNoMargin(&p, &step);
    _D3DVECTOR q{p.x + step.x, p.y, p.z + step.z};
    footprint.FPPointsAreOnTheSameSide(&p, &q);
    _D3DRMBOX box;
    footprint.FPBoxBoundaryCrossingExclusive(&p, &q, &box);
    footprint.FPBoxBoundaryCrossingInclusive(&p, &q, &box);
    _D3DVECTOR a{in.real(-60, 60), 0.0f, in.real(-60, 60)};
    _D3DVECTOR b{in.real(-60, 60), 0.0f, in.real(-60, 60)};
    CKFootPrint::FPAdjustTranslation(&a, &b, &step);
    float distance = 0.0f;
    footprint.FPDistanceToEdge(&p, &q, &a, &b, &distance);
  }
  if (seed.KVTesselateSeedPlane() == 1) {
    int a = 0, b = 0, c = 0;
    for (int ok = seed.KVGetFirstTesselatedTriangle(&a, &b, &c); ok == 1;
         ok = seed.KVGetNextTesselatedTriangle(&a, &b, &c)) {
    }
  }
  seed.KVTerminate();
  footprint.FPTerminate();
  return 0;
}
