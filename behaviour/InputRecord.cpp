// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Recording and playback of input commands: one line of "[CM]", "[MG]", "[TX]" and "[RP]" segments
// per run of identical commands.
#include <cstring>

#include "KInputRecord.h"
#include "KText.h"

namespace {

// Segment scratch: a tag, a bracketed length and at most a 260-character value.
constexpr int kSegmentSize = KIR_TEXT_LEN + 32;

}  // namespace

CKInputRecord::CKInputRecord() : m_stream(nullptr) { IRInitialise(); }

CKInputRecord::~CKInputRecord() {
  if (m_stream) std::fclose(m_stream);
}

int CKInputRecord::IRInitialise() {
  // A stream still open here would otherwise be lost for good; close it (without writing the
  // pending command, which only IRTerminate does).
  if (m_stream) std::fclose(m_stream);
  m_stream = nullptr;
  m_fileName[0] = '\0';
  m_mode = KIR_MODE_NONE;
  m_nullCancelling = 0;
  m_pendingCode = 0;
  m_currentCode = 0;
  m_pendingFlags = -1;
  m_currentFlags = -1;
  m_repeatCount = 0;
  m_repeatsLeft = 0;
  m_cancelArmed = 0;
  m_pendingText[0] = '\0';
  m_currentText[0] = '\0';
  m_line[0] = '\0';
  return 1;
}

int CKInputRecord::IRTerminate() {
  if (m_mode == KIR_MODE_STORE && m_stream) writePending();
  if (m_stream) std::fclose(m_stream);
  m_stream = nullptr;
  return IRInitialise();
}

int CKInputRecord::IRSetFileName(const char* name, int mode) {
  if (!name) return 0;
  KUSafeStrncpy(m_fileName, name, KIR_TEXT_LEN);
  m_mode = mode;
  return 1;
}

int CKInputRecord::IRGetFileName(char* out) {
  if (!out || m_fileName[0] == '\0') return 0;
  std::strcpy(out, m_fileName);
  return 1;
}

int CKInputRecord::IRSetNULLCancelling(int on) {
  m_nullCancelling = on;
  return 1;
}

int CKInputRecord::IRIsStoring() { return m_mode == KIR_MODE_STORE ? 1 : 0; }

int CKInputRecord::IRIsPlaying() { return m_mode == KIR_MODE_PLAY ? 1 : 0; }

int CKInputRecord::openStream(const char* how) {
  if (m_stream) return 1;
  if (m_fileName[0] == '\0') return 0;
  m_stream = std::fopen(m_fileName, how);
  return m_stream ? 1 : 0;
}

int CKInputRecord::IRStoreCommand(int code, int flags, const char* text, int /*unused*/) {
  if ((flags & KIR_FLAG_CANCEL) != 0) m_cancelArmed = 1;
  if (code == 0 && m_cancelArmed) {
    // The NULL that follows a flagged command is dropped on purpose.
    m_cancelArmed = 0;
    return 0;
  }
  m_currentCode = code;
  m_currentFlags = flags;
  if (text) {
    KUSafeStrncpy(m_currentText, text, KIR_TEXT_LEN);
    // The file is line-based: a line break would split the record, so the text ends there.
    KUNoNewLine(m_currentText);
  }
  if (m_mode != KIR_MODE_STORE) return 0;
  if (!openStream("w")) return 0;
  if (m_currentCode == m_pendingCode && m_currentFlags == m_pendingFlags &&
      std::strcmp(m_currentText, m_pendingText) == 0) {
    ++m_repeatCount;
    return 1;
  }
  const int written = writePending();
  m_pendingCode = m_currentCode;
  m_pendingFlags = m_currentFlags;
  std::strcpy(m_pendingText, m_currentText);
  m_repeatCount = 0;
  return written;
}

int CKInputRecord::writePending() {
  if (!m_stream) return 0;
  // Each segment is written on its own so that a full-length text cannot overrun a line buffer.
  char segment[kSegmentSize];
  int length = 0;
  KUMkNumSegment(segment, "[CM]", m_pendingCode, &length);
  std::fputs(segment, m_stream);
  KUMkNumSegment(segment, "[MG]", m_pendingFlags, &length);
  std::fputs(segment, m_stream);
  KUMkLineSegment(segment, "[TX]", m_pendingText, &length);
  std::fputs(segment, m_stream);
  KUMkNumSegment(segment, "[RP]", m_repeatCount, &length);
  std::fputs(segment, m_stream);
  std::fputs("\n", m_stream);
  return 1;
}

int CKInputRecord::readLine(int* code, int* flags, char* text, int* repeats) {
  if (!std::fgets(m_line, KIR_LINE_LEN, m_stream)) return 0;
  KUNoNewLine(m_line);
  // Only a line without a command segment ends the recording. A value that is no number reads as 0
  // (KUSafeATOI); a missing flags or repeat segment counts as 0 and a missing text as empty.
  char field[KIR_TEXT_LEN + 1];
  if (!KUExtractField("[CM]", m_line, field, KIR_TEXT_LEN)) return 0;
  KUSafeATOI(field, code);
  *flags = 0;
  *repeats = 0;
  if (KUExtractField("[MG]", m_line, field, KIR_TEXT_LEN)) KUSafeATOI(field, flags);
  if (KUExtractField("[RP]", m_line, field, KIR_TEXT_LEN)) KUSafeATOI(field, repeats);
  if (!KUExtractField("[TX]", m_line, text, KIR_TEXT_LEN)) text[0] = '\0';
  return 1;
}

int CKInputRecord::IRGetCommand(int* code, int* flags, char* text) {
  if (!code || !flags || !text) return 0;
  if (m_mode != KIR_MODE_PLAY) return 0;
  if (!m_stream) {
    if (!openStream("r")) return 0;
    m_repeatsLeft = 0;
  }
  if (m_repeatsLeft > 0) {
    --m_repeatsLeft;
    *code = m_currentCode;
    *flags = m_currentFlags;
    std::strcpy(text, m_currentText);
    return 1;
  }
  int readCode = 0;
  int readFlags = 0;
  int repeats = 0;
  char readText[KIR_TEXT_LEN + 1];
  if (!readLine(&readCode, &readFlags, readText, &repeats)) return 0;
  m_currentCode = readCode;
  m_currentFlags = readFlags;
  m_repeatsLeft = repeats;
  std::strcpy(m_currentText, readText);
  *code = readCode;
  *flags = readFlags;
  std::strcpy(text, readText);

  // A flagged single command looks one line ahead: its successor becomes the current command,
  // returned by the following calls.
  if ((readFlags & KIR_FLAG_CANCEL) != 0 && repeats == 0) {
    if (!readLine(&readCode, &readFlags, readText, &repeats)) return 1;
    m_currentCode = readCode;
    m_currentFlags = readFlags;
    m_repeatsLeft = repeats;
    std::strcpy(m_currentText, readText);
    if ((readFlags & KIR_FLAG_CANCEL) != 0 && repeats == 0) {
      m_repeatsLeft = 1;
      *flags |= KIR_FLAG_PAIRED;
    } else {
      ++m_repeatsLeft;
    }
  }
  return 1;
}
