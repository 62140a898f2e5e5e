// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Helpers shared by the behaviour table, file and clock tests.
#pragma once
#include <string>
#include <vector>

#include "ActionRowInternals.h"
#include "DecideInternals.h"
#include "KDecide.h"
#include "KFIFO.h"
#include "TestHooks.h"
#include "TestSupport.h"

namespace kutil::test {

/// The table's row at position index (0-based), found without moving the cursor; null past the end.
inline CKActionRow* rowAt(CKDecide& table, int index) {
  CKActionRow* r = detail::Internals<CKDecide>::firstRow(table);
  for (; r != nullptr && index > 0; --index) r = detail::Internals<CKActionRow>::next(*r);
  return r;
}

inline int rowCount(CKDecide& table) {
  int n = 0;
  for (CKActionRow* r = detail::Internals<CKDecide>::firstRow(table); r != nullptr;
       r = detail::Internals<CKActionRow>::next(*r))
    ++n;
  return n;
}

/// Writes text as a behaviour file in dir and loads it into table; returns DELoadFromFile's result.
inline int loadText(CKDecide& table, const TempDir& dir, const std::string& text,
                    const char* name = "t.kvc") {
  const std::string path = dir.file(name);
  writeFile(path, text);
  return table.DELoadFromFile(path.c_str());
}

/// A text file's content with the CRs that Windows text mode puts before each line feed removed.
inline std::string readText(const std::string& path) {
  std::string text = readFile(path);
  std::string out;
  for (char c : text)
    if (c != '\r') out += c;
  return out;
}

inline std::string runState(const CKActionRow* row) { return detail::Internals<CKActionRow>::runState(*row); }
inline std::string callStack(const CKActionRow* row) {
  return detail::Internals<CKActionRow>::callStack(*row);
}

/// One command popped from a FIFO.
struct Command {
  int code;
  float magnitude;
  std::string text;
  int flags;
  bool operator==(const Command& o) const {
    return code == o.code && magnitude == o.magnitude && text == o.text && flags == o.flags;
  }
};

/// Pops every command of fifo.
inline std::vector<Command> drain(CKFIFO& fifo) {
  std::vector<Command> out;
  int code = 0;
  int flags = 0;
  float magnitude = 0.0f;
  char text[KFI_TEXT_LEN + 1];
  while (fifo.FIPopFIFOCommand(&code, &magnitude, text, &flags))
    out.push_back({code, magnitude, text, flags});
  return out;
}

/// Makes the behaviour clock read a scripted time for as long as it lives.
class ScriptedClock {
 public:
  ScriptedClock() : m_before(detail::setClockTimeSource(&read)) {
    set(2026, 10, 22, 0, 10, 0, 0);
    s_available = true;
  }
  ~ScriptedClock() { detail::setClockTimeSource(m_before); }
  ScriptedClock(const ScriptedClock&) = delete;
  ScriptedClock& operator=(const ScriptedClock&) = delete;

  /// Year, zero-based month, day, weekday, hour, minute, second.
  void set(int year, int month, int day, int weekDay, int hour, int minute, int second) {
    s_now = {year, month, 0, day, weekDay, hour, minute, second, -1};
  }
  void setSecond(int second) { s_now.second = second; }
  void setAvailable(bool on) { s_available = on; }

 private:
  static int read(tagKDATETIME* when) {
    if (!s_available) return 0;
    const int reserved = when->reserved;
    *when = s_now;
    when->reserved = reserved;  // never written by a time reading
    return 1;
  }
  static inline tagKDATETIME s_now = {};
  static inline bool s_available = true;
  detail::ClockTimeSource m_before;
};

/// A behaviour table with its two FIFOs attached, the usual test subject of the clock.
struct Behaviour {
  CKDecide table;
  CKFIFO in;
  CKFIFO out;
  Behaviour() {
    table.DEAttachInputFIFO(&in);
    table.DEAttachOutputFIFO(&out);
  }
  /// Pushes code (if not -1) into the input, runs one tick and returns what came out.
  std::vector<Command> tick(int code = -1) {
    if (code != -1) in.FIPushFIFOCommand(code, 1.0f);
    table.DEClock();
    return drain(out);
  }
};

}  // namespace kutil::test
