// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Behaviour files: load whatever the input is, store what loaded, load the
// stored file again (it must load), and run the table for a few ticks.
#include "FuzzSupport.h"
#include "KDecide.h"
#include "KFIFO.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string path = kutil::fuzz::writeScratch(data, size, ".kvc", 0);
  CKDecide table;
  table.DEInitialise();
  table.DELoadFromFile(path.c_str());
  unsigned int id = 0;
  table.DEGetErrorID(&id);

  const std::string stored = kutil::fuzz::scratchPath(".kvc", 1);
  if (table.DEStoreToFile(stored.c_str()) == 1) {
    // The writer does not quote texts, so a text the reader would split need
    // not reload; the reload only has to be safe.
    CKDecide again;
    again.DEInitialise();
    again.DELoadFromFile(stored.c_str());
  }

  CKFIFO in, out;
  in.FIInitialise();
  out.FIInitialise();
  table.DEAttachInputFIFO(&in);
  table.DEAttachOutputFIFO(&out);
  for (int tick = 0; tick < 16; ++tick) {
    in.FIPushFIFOCommand(tick % 2 ? 1 : 81, 1.0f);
    table.DEClock();
    while (out.FIPopFIFOCommand() == 1) {
    }
  }
  return 0;
}
