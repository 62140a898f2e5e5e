// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The behaviour table: its row list, cursor, tags, copy and trace stream.
#include <cstring>
#include <new>

#include "ActionRowInternals.h"
#include "DecideInternals.h"
#include "KDecide.h"
#include "KText.h"
#include "OsSystem.h"
#include "TextDetail.h"

using kutil::detail::copyBounded;
using RowInternals = kutil::detail::Internals<CKActionRow>;

namespace {

// Writes the whole of tag reversed. KUReverse keeps the first and last characters in place, which
// would turn "[RVA]" into "[AVR]"; the end tag must be "]AVR[", so it is reversed here in full.
void reverseFully(char* out, const char* tag) {
  const size_t n = std::strlen(tag);
  for (size_t i = 0; i < n; ++i) out[i] = tag[n - 1 - i];
  out[n] = '\0';
}

// True when row is one of the table's rows.
bool isInList(CKActionRow* first, const CKActionRow* row) {
  for (CKActionRow* r = first; r != nullptr; r = RowInternals::next(*r))
    if (r == row) return true;
  return false;
}

}  // namespace

CKDecide::CKDecide()
    : m_traceStream(nullptr),
      m_errorID(KDE_ERROR_NONE),
      m_itemScaleFactor(1.0f),
      m_inputFIFO(nullptr),
      m_outputFIFO(nullptr),
      m_clockDateTime(),
      m_tickInSecond(-1),
      m_lastSecond(-1),
      m_clockRan(0),
      m_selectedRow(nullptr),
      m_rowNumbering(0),
      m_firstRow(nullptr) {
  std::strcpy(m_delimitingFileTag, "[RVA]");
  std::strcpy(m_endTag, "]AVR[");
  m_comment[0] = '\0';
}

CKDecide::~CKDecide() {
  DEDeleteAllActionRows();
  DECloseTrace();
}

int CKDecide::DEInitialise() {
  std::strcpy(m_delimitingFileTag, "[RVA]");
  std::strcpy(m_endTag, "]AVR[");
  // The constructor starts without a stream, so one open here belongs to this table: close it
  // rather than leak it.
  DECloseTrace();
  m_comment[0] = '\0';
  m_errorID = KDE_ERROR_NONE;
  m_inputFIFO = nullptr;
  m_outputFIFO = nullptr;
  m_tickInSecond = -1;
  m_lastSecond = -1;
  m_clockRan = 0;
  m_selectedRow = nullptr;
  m_rowNumbering = 0;
  m_firstRow = nullptr;
  // The clock reads local time.
  kutil::platform::resetTimeZone();
  return 1;
}

// A row already in the table is refused by the three linking operations: linking it twice would
// make the list a cycle.
int CKDecide::DEAddActionRow(CKActionRow* row) {
  if (row == nullptr || isInList(m_firstRow, row)) return 0;
  RowInternals::setNext(*row, nullptr);
  if (m_firstRow == nullptr) {
    m_firstRow = row;
    return 1;
  }
  CKActionRow* last = m_firstRow;
  while (RowInternals::next(*last) != nullptr) last = RowInternals::next(*last);
  RowInternals::setNext(*last, row);
  return 1;
}

int CKDecide::DEInsertActionRow(CKActionRow* row) {
  if (row == nullptr || m_selectedRow == nullptr || isInList(m_firstRow, row)) return 0;
  if (m_selectedRow == m_firstRow) {
    RowInternals::setNext(*row, m_firstRow);
    m_firstRow = row;
    m_selectedRow = row;
    return 1;
  }
  for (CKActionRow* r = m_firstRow; r != nullptr; r = RowInternals::next(*r)) {
    if (RowInternals::next(*r) == m_selectedRow) {
      RowInternals::setNext(*row, m_selectedRow);
      RowInternals::setNext(*r, row);
      m_selectedRow = row;
      return 1;
    }
  }
  return 0;
}

int CKDecide::DEAppendActionRow(CKActionRow* row) {
  if (row == nullptr || m_selectedRow == nullptr || row == m_selectedRow || isInList(m_firstRow, row))
    return 0;
  RowInternals::setNext(*row, RowInternals::next(*m_selectedRow));
  RowInternals::setNext(*m_selectedRow, row);
  m_selectedRow = row;
  return 1;
}

int CKDecide::DEDeleteSelectedActionRow() {
  if (m_selectedRow == nullptr) return 0;
  CKActionRow* victim = m_selectedRow;
  m_selectedRow = nullptr;
  if (victim == m_firstRow) {
    m_firstRow = RowInternals::next(*victim);
  } else {
    CKActionRow* before = m_firstRow;
    while (before != nullptr && RowInternals::next(*before) != victim) before = RowInternals::next(*before);
    if (before == nullptr) return 0;
    RowInternals::setNext(*before, RowInternals::next(*victim));
  }
  delete victim;
  return 1;
}

int CKDecide::DEDeleteAllActionRows() {
  CKActionRow* r = m_firstRow;
  while (r != nullptr) {
    CKActionRow* next = RowInternals::next(*r);
    delete r;
    r = next;
  }
  m_firstRow = nullptr;
  m_selectedRow = nullptr;
  return 1;
}

int CKDecide::DESelectFirstActionRow(CKActionRow** row) {
  if (row == nullptr || m_firstRow == nullptr) return 0;
  m_selectedRow = m_firstRow;
  *row = m_selectedRow;
  return 1;
}

int CKDecide::DESelectNextActionRow(CKActionRow** row) {
  if (row == nullptr || m_selectedRow == nullptr) return 0;
  CKActionRow* next = RowInternals::next(*m_selectedRow);
  if (next == nullptr) return 0;
  m_selectedRow = next;
  *row = next;
  return 1;
}

int CKDecide::DEGetSelectedActionRow(CKActionRow** row) {
  if (row == nullptr || m_selectedRow == nullptr) return 0;
  *row = m_selectedRow;
  return 1;
}

int CKDecide::DESetSelectedActionRow(CKActionRow* row) {
  m_selectedRow = row;
  return 1;
}

int CKDecide::DEAttachInputFIFO(CKFIFO* fifo) {
  m_inputFIFO = fifo;
  return 1;
}

int CKDecide::DEAttachOutputFIFO(CKFIFO* fifo) {
  m_outputFIFO = fifo;
  return 1;
}

int CKDecide::DESetDelimitingFileTag(const char* tag) {
  if (tag == nullptr) return 0;
  copyBounded(m_delimitingFileTag, tag, KDE_TAG_LEN);
  reverseFully(m_endTag, m_delimitingFileTag);
  return 1;
}

int CKDecide::DESetItemScaleFactor(float factor) {
  m_itemScaleFactor = factor;
  return 1;
}

int CKDecide::DESetComment(const char* text) {
  copyBounded(m_comment, text, KDE_COMMENT_LEN);
  return 1;
}

int CKDecide::DEGetComment(char* out) {
  if (out == nullptr) return 0;
  std::strcpy(out, m_comment);
  return 1;
}

int CKDecide::DEGetErrorID(unsigned int* id) {
  if (id == nullptr || m_errorID == KDE_ERROR_NONE) return 0;
  *id = m_errorID;
  return 1;
}

int CKDecide::DEEnableRowNumbering() {
  m_rowNumbering = 1;
  return 1;
}

int CKDecide::DEDisableRowNumbering() {
  m_rowNumbering = 0;
  return 1;
}

int CKDecide::DEOpenTrace(const char* fileName, int append) {
  DECloseTrace();
  if (kutil::detail::isEmpty(fileName)) return 0;
  m_traceStream = std::fopen(fileName, append ? "a" : "w");
  return m_traceStream != nullptr ? 1 : 0;
}

int CKDecide::DECloseTrace() {
  if (m_traceStream == nullptr) return 0;
  std::fclose(m_traceStream);
  m_traceStream = nullptr;
  return 1;
}

int CKDecide::DECopyFrom(CKDecide* source) {
  if (source == nullptr || source == this) return 0;
  DEDeleteAllActionRows();
  DECloseTrace();
  DEInitialise();
  CKActionRow* from = nullptr;
  if (!source->DESelectFirstActionRow(&from)) return 0;
  m_itemScaleFactor = source->m_itemScaleFactor;
  do {
    CKActionRow* row = new (std::nothrow) CKActionRow;
    if (row == nullptr) return 0;
    row->ARInitialise();
    row->ARCopyFrom(from);
    if (!DEAddActionRow(row)) {
      delete row;
      return 0;
    }
  } while (source->DESelectNextActionRow(&from));
  return 1;
}
