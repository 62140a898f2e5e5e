// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// In-place access to a behaviour table's fields for its reader, writer and clock, which live in
// separate files and keep their helpers out of the exported header.
#pragma once
#include <cstdio>

#include "KDecide.h"

namespace kutil::detail {

template <>
struct Internals<CKDecide> {
  static CKActionRow*& firstRow(CKDecide& t) { return t.m_firstRow; }
  static CKActionRow*& selectedRow(CKDecide& t) { return t.m_selectedRow; }
  static CKFIFO* inputFIFO(const CKDecide& t) { return t.m_inputFIFO; }
  static CKFIFO* outputFIFO(const CKDecide& t) { return t.m_outputFIFO; }
  static float itemScaleFactor(const CKDecide& t) { return t.m_itemScaleFactor; }
  static tagKDATETIME& clockDateTime(CKDecide& t) { return t.m_clockDateTime; }
  static int& tickInSecond(CKDecide& t) { return t.m_tickInSecond; }
  static int& lastSecond(CKDecide& t) { return t.m_lastSecond; }
  static int& clockRan(CKDecide& t) { return t.m_clockRan; }
  static int rowNumbering(const CKDecide& t) { return t.m_rowNumbering; }
  static const char* endTag(const CKDecide& t) { return t.m_endTag; }
  static void setErrorID(CKDecide& t, unsigned int id) { t.m_errorID = id; }
  static void setComment(CKDecide& t, const char* text) { t.DESetComment(text); }

  /// Writes line and a line break to the trace stream, if one is open, and flushes it.
  static void trace(CKDecide& t, const char* line) {
    if (t.m_traceStream == nullptr) return;
    std::fprintf(t.m_traceStream, "%s\n", line);
    std::fflush(t.m_traceStream);
  }
  static std::FILE* traceStream(const CKDecide& t) { return t.m_traceStream; }
};

}  // namespace kutil::detail
