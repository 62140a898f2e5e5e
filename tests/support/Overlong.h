// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Helpers for the overlong-input tests: long texts and caller buffers of an
// exact capacity, so that the sanitizers catch a write one byte beyond it.
#pragma once
#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

namespace kutil::test {

/// The length of the overlong texts the tests pass.
constexpr std::size_t kLong = 10000;

/// A text of n copies of c.
inline std::string longText(char c = 'a', std::size_t n = kLong) { return std::string(n, c); }

/// A caller buffer of exactly `capacity` bytes, pre-filled with a marker.
class OutBuffer {
 public:
  explicit OutBuffer(std::size_t capacity) : m_bytes(capacity, '#') {}
  char* data() { return m_bytes.data(); }
  bool terminated() const { return std::memchr(m_bytes.data(), '\0', m_bytes.size()) != nullptr; }
  bool untouched() const {
    for (char c : m_bytes)
      if (c != '#') return false;
    return true;
  }
  std::string str() const { return terminated() ? std::string(m_bytes.data()) : std::string(); }

 private:
  std::vector<char> m_bytes;
};

}  // namespace kutil::test
