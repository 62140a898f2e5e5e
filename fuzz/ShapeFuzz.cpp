// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Shape files: restore whatever the input is, tessellate and generate what was
// read and iterate the triangles. A shape that restored must save a file that
// restores and saves again byte for byte: the file holds the generator's whole
// stored state.
#include <cstdlib>
#include <string>

#include "FuzzSupport.h"
#include "KVGen.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string path = kutil::fuzz::writeScratch(data, size, ".ksf", 0);
  CKVGen shape;
  shape.KVInitialise();
  const int restored = shape.KVRestore(path.c_str());
  if (shape.KVTesselateSeedPlane() == 1) {
    int a = 0, b = 0, c = 0;
    for (int ok = shape.KVGetFirstTesselatedTriangle(&a, &b, &c); ok == 1;
         ok = shape.KVGetNextTesselatedTriangle(&a, &b, &c)) {
    }
  }
  shape.KVGenerate();
  const std::string saved = kutil::fuzz::scratchPath(".ksf", 1);
  if (shape.KVSave(saved.c_str()) == 1) {
    CKVGen again;
    again.KVInitialise();
    const int reread = again.KVRestore(saved.c_str());
    if (restored == 1 && reread != 1) std::abort();
    const std::string resaved = kutil::fuzz::scratchPath(".ksf", 2);
    if (again.KVSave(resaved.c_str()) != 1) std::abort();
    if (reread == 1 && kutil::fuzz::readAll(saved) != kutil::fuzz::readAll(resaved)) std::abort();
    again.KVTerminate();
  }
  shape.KVTerminate();
  return 0;
}
