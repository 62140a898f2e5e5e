// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Writer of behaviour files (".kvc") and of the one-line text form of a row.
#include <cstdarg>
#include <cstring>

#include "ActionRowInternals.h"
#include "DecideInternals.h"
#include "FileStream.h"
#include "KDecide.h"
#include "KText.h"

using RowInternals = kutil::detail::Internals<CKActionRow>;
using TableInternals = kutil::detail::Internals<CKDecide>;

namespace {

// Appends formatted words to a fixed buffer, cutting (never overrunning) what does not fit.
class RowText {
 public:
  RowText(char* out, int capacity) : m_out(out), m_capacity(capacity) { m_out[0] = '\0'; }

  void add(const char* format, ...) {
    if (m_length >= m_capacity - 1) return;
    va_list args;
    va_start(args, format);
    const int n = std::vsnprintf(m_out + m_length, static_cast<size_t>(m_capacity - m_length), format, args);
    va_end(args);
    if (n > 0) m_length = (m_length + n < m_capacity) ? m_length + n : m_capacity - 1;
  }

 private:
  char* m_out;
  int m_capacity;
  int m_length = 0;
};

// Builds the words after the row-type keyword: the event keyword or the grouping, the action keyword
// and its arguments, each followed by a blank. Returns false, adding nothing, for a row with neither
// event nor grouping.
bool addRowWords(RowText& text, const CKActionRow& row) {
  char word[16];
  const int event = RowInternals::event(row);
  const char* grouping = RowInternals::grouping(row);
  // An event code without a keyword does not read back; the grouping is written instead if there is one.
  if (event != 0 && CKActionRow::ARGetTextForEventType(event, word)) {
    text.add("%s ", word);
  } else if (grouping[0] != '\0') {
    text.add("%s ", grouping);
  } else {
    return false;
  }

  const int action = RowInternals::action(row);
  word[0] = '\0';
  CKActionRow::ARGetTextForActionType(action, word);
  text.add("%s ", word);

  if (CKActionRow::ARAcceptsTextData(action)) {
    const char* data = RowInternals::textData(row);
    if (data[0] != '\0') {
      char quoted[KAR_TEXTDATA_LEN + 3];
      std::strcpy(quoted, data);
      KUEncloseInQuotes(quoted);
      text.add("%s ", quoted);
    }
  } else if (action == KAR_ACTION_MOVE) {
    const int motion = RowInternals::motion(row);
    word[0] = '\0';
    CKActionRow::ARGetTextForMotionType(motion, word);
    text.add("%s ", word);
    if (motion != KAR_MOTION_AUTOLEVEL)
      text.add("%s %f ", "BY", static_cast<double>(RowInternals::magnitude(row)));
  } else if (action == KAR_ACTION_ZOOMIN || action == KAR_ACTION_ZOOMOUT) {
    text.add("%s %f ", "BY", static_cast<double>(RowInternals::magnitude(row)));
  }

  const int clicks = RowInternals::repeatClicks(row);
  if (clicks >= 0) text.add("%s %d ", "FOR", clicks);
  return true;
}

}  // namespace

int CKDecide::DEStoreToFile(const char* path) {
  return kutil::detail::withFile(path, "w", [this](std::FILE* stream) { return DEStoreToFile(stream); });
}

int CKDecide::DEStoreToFile(std::FILE* stream) {
  if (stream == nullptr) return 0;
  CKActionRow* row = nullptr;
  if (!DESelectFirstActionRow(&row)) return 0;
  do {
    if (!DEWriteRow(stream, row)) return 0;
  } while (DESelectNextActionRow(&row));
  return 1;
}

int CKDecide::DEWriteRow(std::FILE* stream, CKActionRow* row) {
  if (stream == nullptr || row == nullptr) return 0;
  char rowType[8];
  if (CKActionRow::ARGetTextForRowType(RowInternals::rowType(*row), rowType)) {
    if (std::fprintf(stream, "\n%s ", rowType) < 0) return 0;
  }
  char words[KDE_ROW_TEXT_SIZE];
  RowText text(words, KDE_ROW_TEXT_SIZE);
  if (!addRowWords(text, *row)) return 0;
  return std::fputs(words, stream) >= 0 ? 1 : 0;
}

int CKDecide::DEWriteRow(char* out, CKActionRow* row, int rowNumber) {
  if (out == nullptr || row == nullptr) return 0;
  RowText text(out, KDE_ROW_TEXT_SIZE);
  if (TableInternals::rowNumbering(*this)) text.add("%03d: ", rowNumber);
  char rowType[8];
  if (CKActionRow::ARGetTextForRowType(RowInternals::rowType(*row), rowType)) text.add("%s ", rowType);
  return addRowWords(text, *row) ? 1 : 0;
}
