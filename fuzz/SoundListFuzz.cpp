// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Background sound lists: the input's lines become a list file (a line that
// begins with '~' names a file in a scratch folder holding a few sounds and a
// folder), the list is loaded and sounds are played through a recording
// player. Every background sound played must be a line the list keeps: not
// empty, no '#' comment, not all blanks, and a readable file; and a list that
// keeps a line does play background sounds.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "FuzzSupport.h"
#include "KSound.h"
#include "KText.h"
#include "TestHooks.h"

namespace {

std::vector<std::string> g_played;

int recordingPlayer(const char* file, unsigned int) {
  if (file != nullptr) g_played.push_back(file);
  return 1;
}

// A folder with three sounds and a folder named like a sound, made once.
const std::string& soundFolder() {
  static const std::string folder = [] {
    const std::string dir = kutil::fuzz::scratchPath("", 9) + "-sounds";
    std::filesystem::create_directories(dir + "/d.wav");
    for (const char* name : {"/a.wav", "/b.wav", "/c.wav"})
      if (FILE* f = std::fopen((dir + name).c_str(), "w")) std::fclose(f);
    return dir;
  }();
  return folder;
}

// The list file's lines as written: a leading '~' becomes the sound folder.
std::string listText(const std::string& input) {
  std::string text;
  size_t start = 0;
  while (start <= input.size()) {
    size_t end = input.find('\n', start);
    if (end == std::string::npos) end = input.size();
    std::string line = input.substr(start, end - start);
    if (!line.empty() && line[0] == '~') line = soundFolder() + "/" + line.substr(1);
    text += line + "\n";
    start = end + 1;
  }
  return text;
}

bool readable(const char* path) {
  FILE* f = std::fopen(path, "r");
  if (f == nullptr) return false;
  std::fgetc(f);
  const bool ok = std::ferror(f) == 0;  // a folder opens but cannot be read
  std::fclose(f);
  return ok;
}

// What the list keeps, read the way the list is read: 260-character pieces, cut at a line break.
std::set<std::string> keptLines(const std::string& path) {
  std::set<std::string> kept;
  FILE* f = std::fopen(path.c_str(), "r");
  if (f == nullptr) return kept;
  char line[260];
  while (std::fgets(line, sizeof line, f) != nullptr) {
    KUNoNewLine(line);
    const std::string text(line);
    if (text.empty() || text[0] == '#' || text.find_first_not_of(' ') == std::string::npos) continue;
    if (readable(line)) kept.insert(text);
  }
  std::fclose(f);
  return kept;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  kutil::detail::setSoundPlayer(&recordingPlayer);
  const std::string input = kutil::fuzz::asText(data, size);
  const std::string text = listText(input);
  const std::string list =
      kutil::fuzz::writeScratch(reinterpret_cast<const uint8_t*>(text.data()), text.size(), ".lst", 0);
  const std::set<std::string> kept = keptLines(list);

  CKSound sound;
  sound.SOInitialise();
  kutil::fuzz::Reader reader(data, size);
  // Any frequency, zero and negative ones included, must be safe.
  sound.SOLoadBackgroundList(list.c_str(), reader.integer(-3, 3));
  for (int i = 0; i < 40; ++i) sound.SOPlaySound();

  if (sound.SOLoadBackgroundList(list.c_str(), 1) != 1) std::abort();
  sound.SOEnableSound(1);
  std::srand(1);  // the same draws for every input
  g_played.clear();
  for (int i = 0; i < 600; ++i) sound.SOPlaySound();
  for (const std::string& played : g_played)
    if (kept.count(played) == 0) std::abort();
  // With a period of 30 calls, 600 calls of the fixed draws always hit at least once.
  if (kept.empty() != g_played.empty()) std::abort();
  sound.SOClearSound();
  kutil::detail::setSoundPlayer(nullptr);
  return 0;
}
