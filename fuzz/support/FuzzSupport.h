// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Helpers for fuzz targets: fuzzed bytes as texts and as scratch files.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>

namespace kutil::fuzz {

/// The input as a terminated text (embedded zero bytes end it early, as for any C text).
std::string asText(const uint8_t* data, size_t size);

/// A scratch file owned by this process, rewritten for each input.
/// `suffix` gives the file ending the reader expects (e.g. ".kvc").
std::string writeScratch(const uint8_t* data, size_t size, const char* suffix, int slot = 0);

/// A second scratch path next to the first (for a store-and-reload round trip).
std::string scratchPath(const char* suffix, int slot);

/// The whole content of a file ("" when it cannot be read).
std::string readAll(const std::string& path);

/// The length of the file's longest line, its line break not counted.
size_t longestLine(const std::string& path);

/// Reads little pieces of the input in turn: integers, floats and short texts.
class Reader {
 public:
  Reader(const uint8_t* data, size_t size) : m_data(data), m_size(size) {}
  bool empty() const { return m_pos >= m_size; }
  uint8_t byte();
  int integer(int lo, int hi);
  float real(float lo, float hi);
  std::string text(size_t maxLen);

 private:
  const uint8_t* m_data;
  size_t m_size;
  size_t m_pos = 0;
};

}  // namespace kutil::fuzz
