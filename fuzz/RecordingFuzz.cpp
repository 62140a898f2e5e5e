// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Input recordings: play any file back to its end, then record what played and
// play that recording back. Commands without the flag bit 4 take no part in
// NULL cancelling or look-ahead, so a recording of them must play back as the
// initial entry followed by exactly those commands, repeats unfolded.
#include <cstdlib>
#include <string>
#include <vector>

#include "FuzzSupport.h"
#include "KInputRecord.h"

namespace {

struct Command {
  int code;
  int flags;
  std::string text;
  bool operator==(const Command& o) const { return code == o.code && flags == o.flags && text == o.text; }
};

// Every command the recording plays; the bound only guards against a regression that never ends.
std::vector<Command> play(const std::string& path) {
  std::vector<Command> played;
  CKInputRecord player;
  player.IRInitialise();
  player.IRSetFileName(path.c_str(), 1);
  int code = 0, flags = 0;
  char text[261];
  for (int i = 0; i < 100000 && player.IRGetCommand(&code, &flags, text) == 1; ++i)
    played.push_back({code, flags, text});
  player.IRTerminate();
  return played;
}

void record(const std::vector<Command>& commands, const std::string& path) {
  CKInputRecord recorder;
  recorder.IRInitialise();
  recorder.IRSetFileName(path.c_str(), 0);
  for (const Command& c : commands) recorder.IRStoreCommand(c.code, c.flags, c.text.c_str(), 0);
  recorder.IRTerminate();
}

// A text with '[' could hold a later segment's tag, which the reader would find
// first: the line format's limit, not a fault.
bool plain(const Command& c) { return (c.flags & 4) == 0 && c.text.find('[') == std::string::npos; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string path = kutil::fuzz::writeScratch(data, size, ".rec", 0);
  std::vector<Command> commands;
  for (const Command& c : play(path))
    if (plain(c) && commands.size() < 256) commands.push_back(c);
  if (commands.empty()) return 0;

  const std::string recorded = kutil::fuzz::scratchPath(".rec", 1);
  record(commands, recorded);
  if (kutil::fuzz::longestLine(recorded) >= 323) return 0;  // read in pieces: not one command a line
  std::vector<Command> expected{{0, -1, ""}};
  expected.insert(expected.end(), commands.begin(), commands.end());
  if (play(recorded) != expected) std::abort();
  return 0;
}
