// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Input recordings: play any file back to its end, then record the commands
// played and play that recording again.
#include <string>
#include <vector>

#include "FuzzSupport.h"
#include "KInputRecord.h"

namespace {
struct Command {
  int code;
  int flags;
  std::string text;
};
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string path = kutil::fuzz::writeScratch(data, size, ".rec", 0);
  std::vector<Command> played;
  {
    CKInputRecord player;
    player.IRInitialise();
    player.IRSetFileName(path.c_str(), 1);
    int code = 0, flags = 0;
    char text[261];
    // A recording is finite, and so is what it plays; the bound only guards a regression.
    for (int i = 0; i < 100000 && player.IRGetCommand(&code, &flags, text) == 1; ++i)
      played.push_back({code, flags, text});
    player.IRTerminate();
  }
  const std::string again = kutil::fuzz::scratchPath(".rec", 1);
  {
    CKInputRecord recorder;
    recorder.IRInitialise();
    recorder.IRSetFileName(again.c_str(), 0);
    for (size_t i = 0; i < played.size() && i < 256; ++i)
      recorder.IRStoreCommand(played[i].code, played[i].flags, played[i].text.c_str(), 0);
    recorder.IRTerminate();
  }
  CKInputRecord player;
  player.IRInitialise();
  player.IRSetFileName(again.c_str(), 1);
  int code = 0, flags = 0;
  char text[261];
  for (int i = 0; i < 100000 && player.IRGetCommand(&code, &flags, text) == 1; ++i) {
  }
  player.IRTerminate();
  return 0;
}
