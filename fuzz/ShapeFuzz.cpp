// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Shape files: restore whatever the input is, then tessellate and generate
// what was read, iterate the triangles, and save it again.
#include "FuzzSupport.h"
#include "KVGen.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string path = kutil::fuzz::writeScratch(data, size, ".ksf", 0);
  CKVGen shape;
  shape.KVInitialise();
  shape.KVRestore(path.c_str());
  if (shape.KVTesselateSeedPlane() == 1) {
    int a = 0, b = 0, c = 0;
    for (int ok = shape.KVGetFirstTesselatedTriangle(&a, &b, &c); ok == 1;
         ok = shape.KVGetNextTesselatedTriangle(&a, &b, &c)) {
    }
  }
  shape.KVGenerate();
  shape.KVSave(kutil::fuzz::scratchPath(".ksf", 1).c_str());
  shape.KVTerminate();
  return 0;
}
