// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include "NormaliseFixture.h"

#include <filesystem>

namespace kutil::test {

std::string makeSubDir(const TempDir& dir, const std::string& name) {
  std::filesystem::create_directories(dir.file(name));
  return dir.file(name) + kSep;
}

std::string joinLines(std::initializer_list<std::string> lines) {
  std::string text;
  for (const std::string& line : lines) text += line + kNl;
  return text;
}

}  // namespace kutil::test
