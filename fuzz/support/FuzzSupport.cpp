// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include "FuzzSupport.h"

#include <cstdio>
#include <filesystem>
#include <string>

#if defined(_WIN32)
#include <process.h>
#define kutilGetPid _getpid
#else
#include <unistd.h>
#define kutilGetPid getpid
#endif

namespace kutil::fuzz {

std::string asText(const uint8_t* data, size_t size) {
  std::string s(reinterpret_cast<const char*>(data), size);
  const auto zero = s.find('\0');
  if (zero != std::string::npos) s.resize(zero);
  return s;
}

std::string scratchPath(const char* suffix, int slot) {
  static const std::string dir = [] {
    auto d = std::filesystem::temp_directory_path() / ("kutil-fuzz-" + std::to_string(kutilGetPid()));
    std::filesystem::create_directories(d);
    return d.string();
  }();
  return dir + "/scratch" + std::to_string(slot) + suffix;
}

std::string writeScratch(const uint8_t* data, size_t size, const char* suffix, int slot) {
  const std::string path = scratchPath(suffix, slot);
  if (FILE* f = std::fopen(path.c_str(), "wb")) {
    if (size) std::fwrite(data, 1, size, f);
    std::fclose(f);
  }
  return path;
}

std::string readAll(const std::string& path) {
  std::string content;
  if (FILE* f = std::fopen(path.c_str(), "rb")) {
    char buffer[4096];
    for (size_t got; (got = std::fread(buffer, 1, sizeof buffer, f)) > 0;) content.append(buffer, got);
    std::fclose(f);
  }
  return content;
}

size_t longestLine(const std::string& path) {
  size_t longest = 0, current = 0;
  for (char c : readAll(path)) {
    if (c == '\n') {
      current = 0;
    } else if (++current > longest) {
      longest = current;
    }
  }
  return longest;
}

uint8_t Reader::byte() { return m_pos < m_size ? m_data[m_pos++] : 0; }

int Reader::integer(int lo, int hi) {
  unsigned v = 0;
  for (int i = 0; i < 4; ++i) v = (v << 8) | byte();
  const long long span = static_cast<long long>(hi) - lo + 1;
  return static_cast<int>(lo + static_cast<long long>(v % static_cast<unsigned long long>(span)));
}

float Reader::real(float lo, float hi) {
  const unsigned v = (static_cast<unsigned>(byte()) << 8) | byte();
  return lo + (hi - lo) * static_cast<float>(v) / 65535.0f;
}

std::string Reader::text(size_t maxLen) {
  const size_t n = byte() % (maxLen + 1);
  std::string s;
  for (size_t i = 0; i < n && !empty(); ++i) {
    const char c = static_cast<char>(byte());
    s.push_back(c == '\0' ? ' ' : c);
  }
  return s;
}

}  // namespace kutil::fuzz
