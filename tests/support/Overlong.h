// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Helpers for the overlong-input tests: long texts, caller buffers of an exact
// capacity (so that the sanitizers catch a write one byte beyond it), and the
// table rows that drive one call each into such a buffer.
#pragma once
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <functional>
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
    return std::all_of(m_bytes.begin(), m_bytes.end(), [](char c) { return c == '#'; });
  }
  std::string str() const { return terminated() ? std::string(m_bytes.data()) : "<unterminated>"; }

 private:
  std::vector<char> m_bytes;
};

/// Copies text, cut to fit, into a caller buffer of capacity bytes: the start of an in-place call.
inline char* put(char* out, const std::string& text, std::size_t capacity = 264) {
  const std::size_t n = std::min(text.size(), capacity - 1);
  std::memcpy(out, text.data(), n);
  out[n] = '\0';
  return out;
}

/// What a call leaves in its output buffer: the exact text, or one of these.
inline const std::string kUntouched = "<untouched>";    ///< nothing written
inline const std::string kTerminated = "<terminated>";  ///< any text that ends within the capacity
/// A status of 1 with a terminated output, or of 0 with the output untouched.
constexpr int kEither = -1;

/// One call of a table: run gets a marked buffer of exactly capacity bytes (null for 0) and gives
/// the call's status.
struct BufferCase {
  const char* call;
  std::size_t capacity;
  int status;  ///< the documented result, or kEither
  std::function<int(char*)> run;
  std::string want;  ///< the output, or kUntouched / kTerminated
};

/// A BufferCase for expr, run with `o` the buffer; the expression's text names the case.
#define KUTIL_BUFFER_CASE(capacity, status, expr, ...)                                             \
  ::kutil::test::BufferCase {                                                                      \
#expr, capacity, status,                                                                       \
        [&]([[maybe_unused]] char* o) { return static_cast<int>(expr); }, std::string(__VA_ARGS__) \
  }

/// Runs one case and checks its status and what it left in its buffer.
inline void checkCase(const BufferCase& c) {
  SCOPED_TRACE(c.call);
  OutBuffer out(c.capacity ? c.capacity : 1);
  const int status = c.run(c.capacity ? out.data() : nullptr);
  if (c.status == kEither) {
    EXPECT_TRUE(status == 1 ? c.capacity == 0 || out.terminated() : status == 0 && out.untouched()) << status;
    return;
  }
  EXPECT_EQ(c.status, status);
  if (c.capacity == 0) return;
  std::string got = out.untouched() ? kUntouched : out.str();
  if (c.want == kTerminated && out.terminated()) got = kTerminated;
  EXPECT_EQ(c.want, got);
}

}  // namespace kutil::test
