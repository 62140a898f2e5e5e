// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Helpers shared by the behaviour table, file and clock tests.
#pragma once
#include <cstdio>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "ActionRowInternals.h"
#include "DecideInternals.h"
#include "KDecide.h"
#include "KFIFO.h"
#include "TestHooks.h"
#include "TestSupport.h"

namespace kutil::test {

using RowInternals = detail::Internals<CKActionRow>;
using TableInternals = detail::Internals<CKDecide>;

/// The table's row at position index (0-based), found without moving the cursor; null past the end.
inline CKActionRow* rowAt(CKDecide& table, int index) {
  CKActionRow* r = TableInternals::firstRow(table);
  for (; r != nullptr && index > 0; --index) r = RowInternals::next(*r);
  return r;
}

inline int rowCount(CKDecide& table) {
  int n = 0;
  while (rowAt(table, n) != nullptr) ++n;
  return n;
}

/// Writes text as a behaviour file in dir and loads it into table; returns DELoadFromFile's result.
inline int loadText(CKDecide& table, const TempDir& dir, const std::string& text) {
  const std::string path = dir.file("t.kvc");
  writeFile(path, text);
  return table.DELoadFromFile(path.c_str());
}

/// Every field of a row: "type/event/action/motion/clicks/iterations/magnitude/state/grouping/stack/text".
inline std::string describe(const CKActionRow& r) {
  char text[1024];
  std::snprintf(text, sizeof text, "%d/%d/%d/%d/%d/%d/%g/%s/%s/%s/%s", RowInternals::rowType(r),
                RowInternals::event(r), RowInternals::action(r), RowInternals::motion(r),
                RowInternals::repeatClicks(r), RowInternals::iterations(const_cast<CKActionRow&>(r)),
                RowInternals::magnitude(r), RowInternals::runState(r), RowInternals::grouping(r),
                RowInternals::callStack(r), RowInternals::textData(r));
  return text;
}

/// Every row's clock state, blank-separated: the run state's initial, the iterations when not 0,
/// "-" for the call stack "empty" and "(name)" while calling the group name.
inline std::string states(CKDecide& table) {
  std::string out;
  for (int i = 0; CKActionRow* r = rowAt(table, i); ++i) {
    out += (i ? " " : "") + std::string(1, RowInternals::runState(*r)[0]);
    if (RowInternals::iterations(*r) != 0) out += std::to_string(RowInternals::iterations(*r));
    const std::string stack = RowInternals::callStack(*r);
    if (stack == "empty") out += "-";
    if (stack.rfind("call.", 0) == 0) out += "(" + stack.substr(5) + ")";
  }
  return out;
}

/// One command popped from a FIFO.
struct Command {
  int code, flags;
  float magnitude;
  std::string text;
  _D3DVECTOR v;
};

inline std::vector<Command> commands(CKFIFO& fifo) {
  std::vector<Command> out;
  Command c = {0, 0, 0.0f, "", {0, 0, 0}};
  char text[KFI_TEXT_LEN + 1];
  while (fifo.FIPopFIFOCommand(&c.code, &c.magnitude, &c.v, text, &c.flags))
    out.push_back(c), out.back().text = text;
  return out;
}

/// Blank-separated "code:magnitude[:text][/flags unless 1][@vector unless 0]".
inline std::string format(const std::vector<Command>& commands) {
  std::string out;
  for (const Command& c : commands) {
    char item[KFI_TEXT_LEN + 80];
    std::snprintf(item, sizeof item, "%s%d:%g%s%s", out.empty() ? "" : " ", c.code, c.magnitude,
                  c.text.empty() ? "" : ":", c.text.c_str());
    out += item;
    if (c.flags != 1) out += "/" + std::to_string(c.flags);
    if (c.v.x != 0 || c.v.y != 0 || c.v.z != 0) {
      std::snprintf(item, sizeof item, "@%g,%g,%g", c.v.x, c.v.y, c.v.z);
      out += item;
    }
  }
  return out;
}

inline std::string drain(CKFIFO& fifo) { return format(commands(fifo)); }

/// Makes the behaviour clock read a scripted time, or no time, for as long as it lives.
class ScriptedClock {
 public:
  ScriptedClock() : m_before(detail::setClockTimeSource(&read)) { set(2026, 10, 22, 0, 10, 0, 0); }
  ~ScriptedClock() { detail::setClockTimeSource(m_before); }
  /// Year, zero-based month, day, weekday, hour, minute, second.
  void set(int year, int month, int day, int weekDay, int hour, int minute, int second) {
    s_now = {year, month, 0, day, weekDay, hour, minute, second, -1};
    s_available = true;
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
  int result = -1;  ///< DEClock's result in the last tick()
  Behaviour() {
    table.DEAttachInputFIFO(&in);
    table.DEAttachOutputFIFO(&out);
  }
  /// Pushes code (if not -1) into the input with fields no row takes up, runs one tick and returns
  /// what came out.
  std::vector<Command> tick(int code = -1) {
    const _D3DVECTOR v = {1, 2, 3};
    if (code != -1) in.FIPushFIFOCommand(code, 0.75f, &v, "in", 6);
    result = table.DEClock();
    return commands(out);
  }
  std::string run(int code = -1) { return format(tick(code)); }
};

}  // namespace kutil::test
