// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Reader of behaviour files (".kvc"): one table row per line, a trigger clause then action clauses.
#include <cstring>
#include <new>

#include "DecideInternals.h"
#include "FileStream.h"
#include "KDecide.h"
#include "KText.h"
#include "Vocabulary.h"

using kutil::detail::Keyword;
using TableInternals = kutil::detail::Internals<CKDecide>;

namespace {

// Lines are read with at most 259 characters; the rest of a longer line is read as a line of its own.
constexpr int kLineSize = 260;
// A double-quoted token keeps at most 259 characters, a bare one at most 260.
constexpr int kQuotedTokenLen = 259;
constexpr int kBareTokenLen = 260;

// Action keywords in the order they are tried: each is matched as a prefix, so "PLAYBACK" must come
// before "PLAY".
constexpr int kActionOrder[] = {
    KAR_ACTION_CALL,     KAR_ACTION_PING,    KAR_ACTION_RETURN,   KAR_ACTION_MOVE,   KAR_ACTION_STOP,
    KAR_ACTION_NULL,     KAR_ACTION_REPLACE, KAR_ACTION_PLAYBACK, KAR_ACTION_PLAY,   KAR_ACTION_GOTO,
    KAR_ACTION_USERGOTO, KAR_ACTION_LOAD,    KAR_ACTION_RUN,      KAR_ACTION_DELETE, KAR_ACTION_COPY,
    KAR_ACTION_ZOOMIN,   KAR_ACTION_ZOOMOUT, KAR_ACTION_CUT,      KAR_ACTION_FOR,    KAR_ACTION_BY,
};

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

int skipBlanks(const char* line, int pos) {
  while (isBlank(line[pos])) ++pos;
  return pos;
}

bool startsWith(const char* text, const char* prefix) {
  return std::strncmp(text, prefix, std::strlen(prefix)) == 0;
}

// An empty end tag would match every line; it is taken to match none.
bool startsWithEndTag(const char* text, const char* endTag) {
  return endTag[0] != '\0' && startsWith(text, endTag);
}

// Tries each trigger keyword at text as a prefix; the first that fits wins.
const Keyword* matchTrigger(const char* text) {
  for (const Keyword& k : kutil::detail::kRowKeywords)
    if (startsWith(text, k.text)) return &k;
  return nullptr;
}

// Reads one token after blanks: a double-quoted string (the character after the opening quote is
// always taken, up to the next quote or the end of the line; the closing quote is consumed) or a run
// of non-blank characters. Returns false, with pos unchanged, when only blanks are left.
bool readToken(const char* line, int* pos, char* token) {
  int p = skipBlanks(line, *pos);
  if (line[p] == '\0') return false;
  int n = 0;
  if (line[p] == '"') {
    ++p;
    // A quote at the very end of the line opens an empty token.
    if (line[p] != '\0') token[n++] = line[p++];
    while (n < kQuotedTokenLen && line[p] != '\0' && line[p] != '"') token[n++] = line[p++];
    if (line[p] == '"') ++p;
  } else {
    while (n < kBareTokenLen && line[p] != '\0' && !isBlank(line[p])) token[n++] = line[p++];
  }
  token[n] = '\0';
  *pos = p;
  return true;
}

bool takesToken(int action) {
  switch (action) {
    case KAR_ACTION_RETURN:
    case KAR_ACTION_STOP:
    case KAR_ACTION_NULL:
    case KAR_ACTION_DELETE:
    case KAR_ACTION_COPY:
    case KAR_ACTION_CUT:
    case KAR_ACTION_ZOOMIN:
    case KAR_ACTION_ZOOMOUT:
      return false;
    default:
      return true;
  }
}

enum class Clause { Applied, LineDone, Fail, EndTag };

class Reader {
 public:
  explicit Reader(CKDecide& table) : m_table(table) {}

  // Loads lines until the end of the stream (1), the end tag (1) or the first failure (0).
  int load(std::FILE* stream) {
    char line[kLineSize];
    const char* endTag = TableInternals::endTag(m_table);
    while (std::fgets(line, kLineSize, stream) != nullptr) {
      KUNoNewLine(line);
      if (line[0] == '#') continue;
      if (startsWithEndTag(line, endTag)) return 1;
      int pos = 0;
      for (;;) {
        const Clause c = clause(line, &pos);
        if (c == Clause::Fail) return 0;
        if (c == Clause::EndTag) return 1;
        if (c == Clause::LineDone) break;
      }
    }
    return 1;
  }

 private:
  Clause clause(const char* line, int* pos) {
    // The comment shows the clause as written, without the blanks that separate it from the last one.
    *pos = skipBlanks(line, *pos);
    TableInternals::setComment(m_table, line + *pos);
    if (line[*pos] == '\0') return Clause::LineDone;

    if (const Keyword* trigger = matchTrigger(line + *pos)) {
      *pos += static_cast<int>(std::strlen(trigger->text));
      return triggerClause(trigger->code, line, pos);
    }
    int action = 0;
    if (m_table.DEMatchAction(line, pos, &action)) return actionClause(action, line, pos);

    if (line[*pos] == '#') return Clause::LineDone;
    if (startsWithEndTag(line + *pos, TableInternals::endTag(m_table))) return Clause::EndTag;
    return fail(KDE_ERROR_UNKNOWN_WORD);
  }

  Clause triggerClause(int rowType, const char* line, int* pos) {
    char token[kBareTokenLen + 1];
    if (!readToken(line, pos, token)) {
      TableInternals::setErrorID(m_table, KDE_ERROR_TRIGGER_TOKEN);
      return Clause::LineDone;
    }
    CKActionRow* row = new (std::nothrow) CKActionRow;
    if (row == nullptr) return Clause::Fail;
    row->ARInitialise();
    if (!m_table.DEAddActionRow(row)) {
      delete row;
      return Clause::Fail;
    }
    m_row = row;
    switch (rowType) {
      case KAR_ROW_ON: {
        // An unknown event is accepted and leaves the event unset; the writer then refuses the row.
        int event = 0;
        if (CKActionRow::ARGetEventTypeFromText(&event, token)) row->ARSetEvent(event);
        break;
      }
      case KAR_ROW_IN:
      case KAR_ROW_AT:
        row->ARSetGrouping(token);
        break;
      default:
        return fail(KDE_ERROR_ROW_TYPE);
    }
    row->ARSetRowType(rowType);
    return Clause::Applied;
  }

  Clause actionClause(int action, const char* line, int* pos) {
    // An action needs a row to act on; one before any trigger is malformed.
    if (m_row == nullptr) return fail(KDE_ERROR_ACTION);
    char token[kBareTokenLen + 1];
    token[0] = '\0';
    // Only RUN may stand at the end of a line without its token; any other action there is
    // recorded and not applied, and the line ends.
    if (takesToken(action) && !readToken(line, pos, token) && action != KAR_ACTION_RUN) {
      TableInternals::setErrorID(m_table, KDE_ERROR_ACTION_TOKEN);
      return Clause::LineDone;
    }
    if (CKActionRow::ARAcceptsTextData(action)) {
      m_row->ARSetAction(action);
      m_row->ARSetTextData(token);
      return Clause::Applied;
    }
    if (!takesToken(action)) {
      m_row->ARSetAction(action);
      return Clause::Applied;
    }
    return argumentClause(action, token);
  }

  // MOVE, FOR and BY, whose token is a motion or a number.
  Clause argumentClause(int action, const char* token) {
    switch (action) {
      case KAR_ACTION_MOVE: {
        int motion = 0;
        if (!m_table.DEGetMoveType(&motion, token)) return fail(KDE_ERROR_MOTION);
        m_row->ARSetAction(KAR_ACTION_MOVE);
        m_row->ARSetMotion(motion);
        return Clause::Applied;
      }
      case KAR_ACTION_FOR: {
        // A count that is no number fails the load without an error id of its own.
        int count = 0;
        if (!KUSafeATOI(token, &count)) return Clause::Fail;
        m_row->ARSetRepeatClicks(count);
        m_row->ARSetIterations(count);
        return Clause::Applied;
      }
      case KAR_ACTION_BY: {
        float magnitude = 0.0f;
        if (!KUSafeATOF(token, &magnitude)) return Clause::Fail;
        m_row->ARSetMagnitude(magnitude);
        return Clause::Applied;
      }
      default:
        return fail(KDE_ERROR_ACTION);
    }
  }

  Clause fail(unsigned int errorID) {
    TableInternals::setErrorID(m_table, errorID);
    return Clause::Fail;
  }

  CKDecide& m_table;
  CKActionRow* m_row = nullptr;  // the row the next action clause applies to
};

}  // namespace

int CKDecide::DELoadFromFile(const char* path) {
  return kutil::detail::withFile(path, "r", [this](std::FILE* stream) { return DELoadFromFile(stream); });
}

int CKDecide::DELoadFromFile(std::FILE* stream) {
  if (stream == nullptr) return 0;
  Reader reader(*this);
  return reader.load(stream);
}

int CKDecide::DEMatchAction(const char* line, int* position, int* action) {
  if (line == nullptr || position == nullptr || action == nullptr) return 0;
  if (*position < 0 || static_cast<size_t>(*position) > std::strlen(line)) return 0;
  const int p = skipBlanks(line, *position);
  for (const int code : kActionOrder) {
    const char* word = kutil::detail::actionWord(code)->text;
    if (!startsWith(line + p, word)) continue;
    *position = p + static_cast<int>(std::strlen(word));
    *action = code;
    return 1;
  }
  return 0;
}

int CKDecide::DEGetMoveType(int* motion, const char* text) {
  if (motion == nullptr || text == nullptr) return 0;
  for (const Keyword& k : kutil::detail::kMotionKeywords) {
    if (std::strcmp(text, k.text) == 0) {
      *motion = k.code;
      return 1;
    }
  }
  return 0;
}
