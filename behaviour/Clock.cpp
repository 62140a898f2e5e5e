// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The behaviour clock: one tick of a table fires AT rows, continues flagged rows, dispatches the input
// commands to ON rows and pushes the resulting commands to the host. A tick never allocates (except a
// PLAYBACK row's recorder on first use): rows are walked through their links and compared in place.
#include <cstring>

#include "ActionRowInternals.h"
#include "DecideInternals.h"
#include "KDecide.h"
#include "KText.h"
#include "TestHooks.h"

using RowInternals = kutil::detail::Internals<CKActionRow>;
using TableInternals = kutil::detail::Internals<CKDecide>;

namespace {

constexpr char kIdle[] = "idle";
constexpr char kNext[] = "next";
constexpr char kBusy[] = "busy";
constexpr char kFlag[] = "flag";
constexpr char kEmptyStack[] = "empty";
constexpr char kCallPrefix[] = "call.";
constexpr int kCallPrefixLen = 5;

// CALL, RETURN and chained rows run one another at once. A table whose groups call each other in a
// circle would recurse without end; past this depth a run fails instead.
constexpr int kMaxRunDepth = 64;

kutil::detail::ClockTimeSource g_timeSource = &KUGetDateTime;

CKActionRow* next(const CKActionRow& row) { return RowInternals::next(row); }
bool inState(const CKActionRow& row, const char* state) {
  return std::strcmp(RowInternals::runState(row), state) == 0;
}
void setState(CKActionRow& row, const char* state) { row.ARSetRunState(state); }

// The following row when it belongs to the same group, else null.
CKActionRow* nextInGroup(const CKActionRow& row) {
  CKActionRow* n = next(row);
  if (n != nullptr && std::strcmp(RowInternals::grouping(*n), RowInternals::grouping(row)) == 0) return n;
  return nullptr;
}

// One AT-time field at column col of width characters: "A" matches anything; "D" anything before the
// first tick, afterwards only the first value of its unit; digits must equal the clock. A field that is
// missing or no number never matches, and neither does -1 on either side.
bool fieldMatches(const char* pattern, int length, int col, int width, int clock, int first, int clockRan) {
  if (col >= length) return false;
  const char* f = pattern + col;
  if (f[0] == 'A') return true;
  if (f[0] == 'D') return clockRan == 0 || clock == first;
  char digits[8];
  int n = 0;
  for (; n < width && f[n] != '\0'; ++n) digits[n] = f[n];
  digits[n] = '\0';
  int value = 0;
  if (!KUSafeATOI(digits, &value)) return false;
  if (value == -1 || clock == -1) return false;
  return value == clock;
}

// Matches an AT row's grouping, "M" + yyyy mm dd hh mm ss tt or "W" + yyyy mm ww hh mm ss tt by
// column, against the clock.
bool atTimeMatches(const char* g, const tagKDATETIME& now, int clockRan) {
  const int len = static_cast<int>(std::strlen(g));
  if (len == 0 || (g[0] != 'M' && g[0] != 'W')) return false;
  if (!fieldMatches(g, len, 1, 4, now.year, 0, clockRan)) return false;
  if (g[0] == 'M') {
    if (!fieldMatches(g, len, 5, 2, now.month, 0, clockRan)) return false;
    if (!fieldMatches(g, len, 7, 2, now.day, 1, clockRan)) return false;
  } else if (!fieldMatches(g, len, 7, 2, now.weekDay, 0, clockRan)) {
    return false;
  }
  return fieldMatches(g, len, 9, 2, now.hour, 0, clockRan) &&
         fieldMatches(g, len, 11, 2, now.minute, 0, clockRan) &&
         fieldMatches(g, len, 13, 2, now.second, 0, clockRan) &&
         fieldMatches(g, len, 15, 2, now.extra, 1, clockRan);
}

int resetTable(CKDecide& table) {
  CKActionRow* first = TableInternals::firstRow(table);
  for (CKActionRow* r = first; r != nullptr; r = next(*r)) {
    r->ARSetCallStack(kEmptyStack);
    const int clicks = RowInternals::repeatClicks(*r);
    if (clicks >= 0) RowInternals::iterations(*r) = clicks;
    setState(*r, kIdle);
  }
  TableInternals::trace(table, "***STOP+RESET***");
  return first != nullptr ? 1 : 0;
}

// The trace line of a row about to perform. Row types 2 and 3 are reported crossed over: an IN row
// is labelled "AT" and an AT row "IN", each with the other's missing-grouping message. Trace readers
// rely on these exact lines.
void traceRow(std::FILE* stream, const CKActionRow& row) {
  const char* line = nullptr;
  const char* label = nullptr;
  char eventWord[16];
  const char* subject = RowInternals::grouping(row);
  switch (RowInternals::rowType(row)) {
    case -1:
      line = "ERROR: Row Type not set.";
      break;
    case KAR_ROW_ON:
      label = "ON";
      if (RowInternals::event(row) == 0) {
        line = "ERROR: ON Event Type not set.";
      } else if (!CKActionRow::ARGetTextForEventType(RowInternals::event(row), eventWord)) {
        line = "ERROR: ON Event Type not recognised.";
      } else {
        subject = eventWord;
      }
      break;
    case KAR_ROW_IN:
      label = "AT";
      if (subject[0] == '\0') line = "ERROR: AT time not set.";
      break;
    case KAR_ROW_AT:
      label = "IN";
      if (subject[0] == '\0') line = "ERROR: IN Grouping not set.";
      break;
    default:
      line = "ERROR: Row Type unrecognised.";
      break;
  }
  if (line != nullptr) {
    std::fprintf(stream, "%s\n", line);
  } else {
    char actionWord[16] = "";
    CKActionRow::ARGetTextForActionType(RowInternals::action(row), actionWord);
    std::fprintf(stream, "%s %s %s [%s]\n", label, subject, actionWord, RowInternals::textData(row));
  }
  std::fflush(stream);
}

class Tick {
 public:
  explicit Tick(CKDecide& table) : m_table(table), m_out(*TableInternals::outputFIFO(table)) {}

  int run() {
    CKActionRow* const first = TableInternals::firstRow(m_table);
    bool happened = false;
    if (readClock()) happened |= fireAtRows(first);
    // From now on "D" in an AT time means the start of its unit.
    TableInternals::clockRan(m_table) = 1;
    happened |= continueRows(first);
    happened |= drainInput(first);
    promoteFlagged(first);
    if (!happened) return 0;
    traceTick();
    return 1;
  }

 private:
  // Reads the clock and numbers the ticks within the second (from 1); 0 when the time could not be read.
  int readClock() {
    tagKDATETIME& now = TableInternals::clockDateTime(m_table);
    const int timeRead = g_timeSource(&now);
    int& tick = TableInternals::tickInSecond(m_table);
    int& lastSecond = TableInternals::lastSecond(m_table);
    tick = (tick != -1 && now.second == lastSecond) ? tick + 1 : 1;
    lastSecond = now.second;
    now.extra = tick;
    return timeRead;
  }

  // Runs the idle AT rows whose time has come; true when any ran.
  bool fireAtRows(CKActionRow* first) {
    const tagKDATETIME& now = TableInternals::clockDateTime(m_table);
    const int clockRan = TableInternals::clockRan(m_table);
    bool ran = false;
    for (CKActionRow* r = first; r != nullptr; r = next(*r)) {
      if (RowInternals::rowType(*r) == KAR_ROW_AT && inState(*r, kIdle) &&
          atTimeMatches(RowInternals::grouping(*r), now, clockRan)) {
        runRow(*r, 0);
        ran = true;
      }
    }
    return ran;
  }

  // Runs the rows that asked to run again; true when any ran.
  bool continueRows(CKActionRow* first) {
    bool ran = false;
    for (CKActionRow* r = first; r != nullptr; r = next(*r)) {
      if (inState(*r, kNext)) {
        runRow(*r, 0);
        ran = true;
      }
    }
    return ran;
  }

  // Takes every input command: a reset, a dispatch to the ON rows that want it, or a pass-through to
  // the output; true when a row ran or a command was passed on. The input holds at most one ring of
  // commands; bounding the drain by it keeps a host that attached one FIFO as both input and output
  // from looping for ever.
  bool drainInput(CKActionRow* first) {
    CKFIFO& in = *TableInternals::inputFIFO(m_table);
    bool happened = false;
    for (int n = 0; n < KFI_SLOT_COUNT; ++n) {
      int code = 0;
      int flags = 0;
      float magnitude = 0.0f;
      _D3DVECTOR vector = {0.0f, 0.0f, 0.0f};
      char text[KFI_TEXT_LEN + 1];
      if (!in.FIPopFIFOCommand(&code, &magnitude, &vector, text, &flags)) break;
      if (code == KAR_CMD_RESET) {
        resetTable(m_table);
      } else if (wants(first, code)) {
        happened |= dispatch(first, code);
      } else {
        m_out.FIPushFIFOCommand(code, magnitude, &vector, text, flags);
        happened = true;
      }
    }
    return happened;
  }

  // Runs every idle ON row of the code until one fails; true when any ran.
  bool dispatch(CKActionRow* first, int code) {
    bool ran = false;
    for (CKActionRow* r = first; r != nullptr; r = next(*r)) {
      if (RowInternals::event(*r) == code && inState(*r, kIdle)) {
        ran = true;
        if (!runRow(*r, 0)) break;
      }
    }
    return ran;
  }

  // Rows flagged in this tick run on the next.
  static void promoteFlagged(CKActionRow* first) {
    for (CKActionRow* r = first; r != nullptr; r = next(*r))
      if (inState(*r, kFlag)) setState(*r, kNext);
  }

  void traceTick() {
    std::FILE* stream = TableInternals::traceStream(m_table);
    if (stream == nullptr) return;
    const tagKDATETIME& now = TableInternals::clockDateTime(m_table);
    std::fprintf(stream, "%d/%d/%d[%d]  %d:%d:%d [%d]\n", now.year, now.month, now.day, now.weekDay, now.hour,
                 now.minute, now.second, TableInternals::tickInSecond(m_table));
    std::fflush(stream);
  }

  // ON rows must stand before the first IN row: the scan for an ON row of the code stops at the first
  // row that is neither ON nor AT, which keeps the per-command cost short.
  static bool wants(CKActionRow* first, int code) {
    for (CKActionRow* r = first; r != nullptr; r = next(*r)) {
      const int type = RowInternals::rowType(*r);
      if (type == KAR_ROW_ON && RowInternals::event(*r) == code) return true;
      if (type != KAR_ROW_ON && type != KAR_ROW_AT) return false;
    }
    return false;
  }

  int runRow(CKActionRow& row, int depth) {
    if (depth > kMaxRunDepth) return 0;
    switch (RowInternals::rowType(row)) {
      case KAR_ROW_ON:
      case KAR_ROW_AT:
        return runOnAt(row, depth);
      case KAR_ROW_IN:
        return runIn(row, depth);
      default:
        return 0;
    }
  }

  int runOnAt(CKActionRow& row, int depth) {
    int& iterations = RowInternals::iterations(row);
    const int clicks = RowInternals::repeatClicks(row);
    if (clicks >= 0 && iterations <= 0) {
      iterations = clicks;
      setState(row, kIdle);
      return 1;
    }
    if (!perform(row, depth)) return 0;
    if (inState(row, kBusy)) return 1;
    if (RowInternals::isPlayingBack(row)) {
      setState(row, kFlag);
      return 1;
    }
    RowInternals::restartPlayback(row);
    if (iterations < 1) return 1;
    --iterations;
    setState(row, kFlag);
    return 1;
  }

  int runIn(CKActionRow& start, int depth) {
    CKActionRow* row = &start;
    // A row whose repeats are used up hands on to the next member of its group at once; that hand-on
    // is a loop rather than a call so that a long group cannot exhaust the stack.
    for (;;) {
      int& iterations = RowInternals::iterations(*row);
      const int clicks = RowInternals::repeatClicks(*row);
      if (!(clicks >= 1 && iterations <= 0)) break;
      iterations = clicks;
      setState(*row, kIdle);
      CKActionRow* member = nextInGroup(*row);
      if (member == nullptr) return 1;
      setState(*member, kFlag);
      if (RowInternals::rowType(*member) != KAR_ROW_IN) return runRow(*member, depth + 1);
      row = member;
    }
    int& iterations = RowInternals::iterations(*row);
    if (!perform(*row, depth)) {
      setState(*row, kIdle);
      return 0;
    }
    if (inState(*row, kBusy)) return 1;
    if (RowInternals::isPlayingBack(*row)) {
      setState(*row, kFlag);
      return 1;
    }
    RowInternals::restartPlayback(*row);
    if (iterations > 0) {
      --iterations;
      setState(*row, kFlag);
      return 1;
    }
    if (CKActionRow* member = nextInGroup(*row)) setState(*member, kFlag);
    return 1;
  }

  int push(int code, float magnitude, const char* text) {
    m_out.FIPushFIFOCommand(code, magnitude, text, 1);
    return 1;
  }

  // Pushes a command that carries the row's text; a row without text fails and pushes nothing.
  int pushText(CKActionRow& row, int code) {
    setState(row, kIdle);
    const char* text = RowInternals::textData(row);
    if (text[0] == '\0') return 0;
    return push(code, 1.0f, text);
  }

  int perform(CKActionRow& row, int depth) {
    if (std::FILE* stream = TableInternals::traceStream(m_table)) traceRow(stream, row);
    switch (RowInternals::action(row)) {
      case KAR_ACTION_MOVE:
        setState(row, kIdle);
        return push(RowInternals::motion(row), RowInternals::magnitude(row), "");
      case KAR_ACTION_ZOOMIN:
        setState(row, kIdle);
        return push(KAR_CMD_ZOOMIN, RowInternals::magnitude(row), "");
      case KAR_ACTION_ZOOMOUT:
        setState(row, kIdle);
        return push(KAR_CMD_ZOOMOUT, RowInternals::magnitude(row), "");
      case KAR_ACTION_RUN:
        setState(row, kIdle);
        if (RowInternals::textData(row)[0] == '\0') return push(KAR_CMD_RUN_NOTEXT, 1.0f, "");
        return push(KAR_CMD_RUN, 1.0f, RowInternals::textData(row));
      case KAR_ACTION_PLAY:
        return pushText(row, KAR_CMD_PLAY);
      case KAR_ACTION_REPLACE:
        return pushText(row, KAR_CMD_REPLACE);
      case KAR_ACTION_LOAD:
        return pushText(row, KAR_CMD_LOAD);
      case KAR_ACTION_GOTO:
        return pushText(row, KAR_CMD_GOTO);
      case KAR_ACTION_USERGOTO:
        return pushText(row, KAR_CMD_USERGOTO);
      case KAR_ACTION_DELETE:
        setState(row, kIdle);
        return push(KAR_EVENT_DELETE, 1.0f, "");
      case KAR_ACTION_CUT:
        setState(row, kIdle);
        return push(KAR_EVENT_CUT, 1.0f, "");
      case KAR_ACTION_COPY:
        setState(row, kIdle);
        return push(KAR_EVENT_COPY, 1.0f, "");
      case KAR_ACTION_PING: {
        const int type = RowInternals::rowType(row);
        if (type == KAR_ROW_ON) return pushText(row, RowInternals::event(row));
        if (type == KAR_ROW_IN || type == KAR_ROW_AT) return pushText(row, KAR_EVENT_PING);
        setState(row, kIdle);
        return 0;
      }
      case KAR_ACTION_NULL:
        setState(row, kIdle);
        return 1;
      case KAR_ACTION_STOP:
        resetTable(m_table);
        return 1;
      case KAR_ACTION_CALL:
        return call(row, depth);
      case KAR_ACTION_RETURN:
        return doReturn(row, depth);
      case KAR_ACTION_PLAYBACK:
        return playback(row);
      default:
        return 0;
    }
  }

  int call(CKActionRow& row, int depth) {
    const char* name = RowInternals::textData(row);
    // A name too long for the call stack is cut; no group can have such a name, so the call fails.
    char stack[KAR_CALLSTACK_LEN + 1];
    std::strcpy(stack, kCallPrefix);
    KUSafeStrncpy(stack + kCallPrefixLen, name, KAR_CALLSTACK_LEN - kCallPrefixLen);
    row.ARSetCallStack(stack);
    setState(row, kBusy);
    for (CKActionRow* r = TableInternals::firstRow(m_table); r != nullptr; r = next(*r)) {
      if (RowInternals::rowType(*r) == KAR_ROW_IN && std::strcmp(RowInternals::grouping(*r), name) == 0)
        return runRow(*r, depth + 1);
    }
    // No such group: the call fails and the row is left as the call set it, waiting, until a reset.
    return 0;
  }

  // The caller is the row whose call stack is "call." and this row's group.
  CKActionRow* findCaller(const CKActionRow& row) {
    const char* group = RowInternals::grouping(row);
    for (CKActionRow* r = TableInternals::firstRow(m_table); r != nullptr; r = next(*r)) {
      const char* stack = RowInternals::callStack(*r);
      if (std::strncmp(stack, kCallPrefix, kCallPrefixLen) == 0 &&
          std::strcmp(stack + kCallPrefixLen, group) == 0)
        return r;
    }
    return nullptr;
  }

  int doReturn(CKActionRow& row, int depth) {
    setState(row, kIdle);
    CKActionRow* caller = findCaller(row);
    if (caller == nullptr) return 0;
    setState(*caller, kIdle);
    caller->ARSetCallStack(kEmptyStack);
    int& iterations = RowInternals::iterations(*caller);
    if (iterations > 0) {
      --iterations;
      runRow(*caller, depth + 1);
      return 1;
    }
    const int clicks = RowInternals::repeatClicks(*caller);
    if (clicks > 0) iterations = clicks;
    if (RowInternals::rowType(*caller) == KAR_ROW_IN) {
      if (CKActionRow* member = nextInGroup(*caller)) {
        setState(*member, kFlag);
        // A RETURN right after the call unwinds the outer call in this same tick.
        if (RowInternals::action(*member) == KAR_ACTION_RETURN) runRow(*member, depth + 1);
      }
    }
    return 1;
  }

  int playback(CKActionRow& row) {
    int code = 0;
    int flags = 0;
    char text[KAR_TEXTDATA_LEN + 1];
    if (RowInternals::getPlaybackCommand(row, &code, &flags, text)) {
      float magnitude = 0.0f;
      KUGetMagnitudeForFIFOInput(&magnitude, flags, TableInternals::itemScaleFactor(m_table), code);
      push(code, magnitude, text);
      if (flags & 1) push(code, magnitude, text);
    }
    setState(row, kIdle);
    return 1;
  }

  CKDecide& m_table;
  CKFIFO& m_out;
};

}  // namespace

namespace kutil::detail {

ClockTimeSource setClockTimeSource(ClockTimeSource source) {
  const ClockTimeSource before = g_timeSource;
  g_timeSource = source != nullptr ? source : &KUGetDateTime;
  return before;
}

}  // namespace kutil::detail

int CKDecide::DEClock() {
  if (m_inputFIFO == nullptr || m_outputFIFO == nullptr) return 0;
  Tick tick(*this);
  return tick.run();
}

int CKDecide::DEReset() { return resetTable(*this); }
