// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Behaviour files: load whatever the input is and store what loaded; a table
// the format can hold must then load and store again byte for byte. Then run
// the table for a few ticks.
#include <cstdlib>
#include <cstring>
#include <string>

#include "FuzzSupport.h"
#include "KDecide.h"
#include "KFIFO.h"

namespace {

bool hasAny(const char* text, const char* characters) { return std::strpbrk(text, characters) != nullptr; }

// Names are written without quotes and texts inside them, so a name with a
// blank or a text with a quote does not read back as one word, and an empty
// text is not written at all, so the action reads back without its token;
// those are the format's limits, not faults.
bool rowsFitTheFormat(CKDecide& table) {
  CKActionRow* row = nullptr;
  for (int ok = table.DESelectFirstActionRow(&row); ok == 1; ok = table.DESelectNextActionRow(&row)) {
    char grouping[KAR_GROUPING_LEN + 1] = "";
    char text[KAR_TEXTDATA_LEN + 1] = "";
    row->ARGetGrouping(grouping);
    row->ARGetTextData(text);
    int action = 0;
    row->ARGetAction(&action);
    if (hasAny(grouping, " \t\r\n\"") || hasAny(text, "\"\r\n")) return false;
    if (CKActionRow::ARAcceptsTextData(action) && text[0] == '\0') return false;
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string path = kutil::fuzz::writeScratch(data, size, ".kvc", 0);
  CKDecide table;
  table.DEInitialise();
  table.DELoadFromFile(path.c_str());
  unsigned int id = 0;
  table.DEGetErrorID(&id);

  const std::string stored = kutil::fuzz::scratchPath(".kvc", 1);
  if (table.DEStoreToFile(stored.c_str()) == 1 && rowsFitTheFormat(table) &&
      kutil::fuzz::longestLine(stored) < 259) {
    CKDecide again;
    again.DEInitialise();
    if (again.DELoadFromFile(stored.c_str()) != 1) std::abort();
    const std::string restored = kutil::fuzz::scratchPath(".kvc", 2);
    if (again.DEStoreToFile(restored.c_str()) != 1) std::abort();
    if (kutil::fuzz::readAll(stored) != kutil::fuzz::readAll(restored)) std::abort();
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
