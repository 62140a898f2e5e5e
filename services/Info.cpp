// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Info sheets: message texts by id, their files, the message log and the
// process-wide string table.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string>

#include "Boundary.h"
#include "FileDetail.h"
#include "KFile.h"
#include "KInfo.h"
#include "KText.h"
#include "OsMessage.h"
#include "TextDetail.h"

using kutil::detail::copyBounded;

namespace {

constexpr const char* kCaption = "KALDO Message";
constexpr const char* kNoMessage = "An error has been detected for which there is no message";
constexpr const char* kNoLogText = "<Unable to get message text for this error>";
constexpr const char* kEmptyComment = "<empty>";
constexpr unsigned int kNoMessageId = 5;  // also the "no error" last-error value: never logged
constexpr int kLineLimit = 255;
constexpr int kIdLimit = 16;
constexpr int kTextLimit = 128;
constexpr int kLogFileLimit = 260;
constexpr int kCommentLimit = 258;
constexpr int kOutLimit = 260;
constexpr long kLogMaxLines = 1000;
constexpr long kLogKeptLines = 500;

KUMessageSink g_sink = nullptr;
CKaldoInfo* g_stringTable = nullptr;

}  // namespace

int KUSetMessageSink(KUMessageSink sink) {
  g_sink = sink;
  return 1;
}

CKaldoInfo::CKaldoInfo() : m_currentId(3), m_infoType(0), m_logFileName{}, m_comment{}, m_sheets(nullptr) {
  copyBounded(m_comment, kEmptyComment, kCommentLimit);
}

CKaldoInfo::~CKaldoInfo() {
  while (m_sheets) {
    CInfoSheet* next = m_sheets->m_next;
    delete m_sheets;
    m_sheets = next;
  }
}

CInfoSheet* CKaldoInfo::findSheet(unsigned int id) const {
  for (CInfoSheet* s = m_sheets; s; s = s->m_next) {
    if (s->m_id == id) return s;
  }
  return nullptr;
}

void CKaldoInfo::appendSheet(CInfoSheet* sheet) {
  sheet->m_next = nullptr;
  if (!m_sheets) {
    m_sheets = sheet;
    return;
  }
  CInfoSheet* last = m_sheets;
  while (last->m_next) last = last->m_next;
  last->m_next = sheet;
}

int CKaldoInfo::KILoadInfoSheets(const char* fileName) {
  if (!fileName || !*fileName) return 0;
  FILE* in = std::fopen(fileName, "r");
  if (!in) return 0;
  int loaded = 0;
  char line[kLineLimit + 1];
  while (std::fgets(line, sizeof line, in)) {
    KUNoNewLine(line);
    char idText[kIdLimit + 1];
    char text[kTextLimit + 1];
    if (!KUExtractField("[iid]", line, idText, kIdLimit)) continue;
    if (!KUExtractField("[itx]", line, text, kTextLimit)) continue;
    if (KINewInfoSheet(text, static_cast<unsigned int>(std::atoi(idText)))) ++loaded;
  }
  std::fclose(in);
  return loaded > 0 ? 1 : 0;
}

int CKaldoInfo::KISaveFile(const char* fileName) {
  // An empty list is refused before the file is touched, so nothing is truncated for nothing.
  if (!fileName || !*fileName || !m_sheets) return 0;
  FILE* out = std::fopen(fileName, "w");
  if (!out) return 0;
  const int written = KIWriteAllSheets(out);
  const bool closed = std::fclose(out) == 0;
  return written && closed ? 1 : 0;
}

int CKaldoInfo::KIWriteAllSheets(FILE* stream) {
  if (!stream || !m_sheets) return 0;
  int ok = 1;
  for (CInfoSheet* s = m_sheets; s; s = s->m_next) {
    if (!KIWriteSingleSheet(stream, s)) ok = 0;
  }
  return ok;
}

int CKaldoInfo::KIWriteSingleSheet(FILE* stream, CInfoSheet* sheet) {
  if (!stream || !sheet) return 0;
  int length = 0;
  char idSegment[64];
  KUMkNumSegment(idSegment, "[iid]", static_cast<int>(sheet->m_id), &length);
  // The "[itx]" segment goes straight to the stream: a text has no length limit.
  const char* text = sheet->m_text.c_str();
  return std::fprintf(stream, "%s[itx][%zu]%s\n", idSegment, std::strlen(text), text) >= 0 ? 1 : 0;
}

int CKaldoInfo::KINewInfoSheet(const char* text, unsigned int id) {
  CInfoSheet* sheet = nullptr;
  if (!KICreateInfoSheet(text, id, &sheet)) return 0;
  appendSheet(sheet);
  return 1;
}

int CKaldoInfo::KICreateInfoSheet(const char* text, unsigned int id, CInfoSheet** sheet) {
  if (!text || !sheet) return 0;
  return kutil::detail::guarded([&] {
    std::unique_ptr<CInfoSheet> made(new CInfoSheet);
    made->m_text = text;
    made->m_id = id;
    *sheet = made.release();
    return 1;
  });
}

int CKaldoInfo::writeLogEntry(const char* message) {
  // Keeps the log bounded; the clipper leaves it empty, so this entry starts it afresh.
  long lines = 0;
  if (KUCountLinesInFile(m_logFileName, &lines) && lines > kLogMaxLines) {
    KUClipFile(m_logFileName, static_cast<int>(lines - kLogKeptLines), static_cast<int>(lines));
  }
  char stamp[264];
  const char* when = KUGetTimeStamp(stamp) ? stamp : "<Unable to get time> : ";
  if (!kutil::detail::appendTexts(m_logFileName, {when, "MESSAGE: ", message, "\n"})) return 0;
  KUAppendLine(m_logFileName, "COMMENT: ");
  kutil::detail::appendTexts(m_logFileName, {m_comment, "\n\n"});
  return 1;
}

int CKaldoInfo::KISetInfoMessage(unsigned int id) {
  m_currentId = id;
  if (id == kNoMessageId || m_logFileName[0] == '\0' || m_infoType == 0) return 0;
  const CInfoSheet* sheet = findSheet(id);
  writeLogEntry(sheet ? sheet->m_text.c_str() : kNoLogText);
  return 1;
}

int CKaldoInfo::KIGetInfoMessage(unsigned int* id) {
  if (!id) return 0;
  *id = m_currentId;
  return 1;
}

int CKaldoInfo::KIFlushInfoMessage(const char* text) {
  if (m_logFileName[0] != '\0') writeLogEntry(text ? text : "");
  return 1;
}

int CKaldoInfo::KIGetInfoText(char* out) {
  if (!out) return 0;
  const CInfoSheet* sheet = findSheet(m_currentId);
  copyBounded(out, sheet ? sheet->m_text.c_str() : kNoMessage, kOutLimit);
  return sheet ? 1 : 0;
}

int CKaldoInfo::KIGetInfoText(std::string /*text*/) {
  // The string is the caller's copy, so nothing written to it would be seen:
  // the caller learns only whether the id has a text.
  return findSheet(m_currentId) ? 1 : 0;
}

int CKaldoInfo::KISetInfoText(std::string text) {
  CInfoSheet* sheet = findSheet(m_currentId);
  if (!sheet) return 0;
  sheet->m_text = std::move(text);
  return 1;
}

int CKaldoInfo::KIDisplayInfo() {
  const CInfoSheet* sheet = findSheet(m_currentId);
  const char* text = sheet ? sheet->m_text.c_str() : kNoMessage;
  if (g_sink) {
    g_sink(kCaption, text);
  } else {
    kutil::platform::showMessage(kCaption, text);
  }
  return 0;  // callers never act on the result
}

int CKaldoInfo::KIGetInfoType(int* type) {
  if (!type) return 0;
  *type = m_infoType;
  return 1;
}

int CKaldoInfo::KISetInfoType(int type) {
  m_infoType = type;
  return 1;
}

int CKaldoInfo::KISetLogFileName(const char* name) {
  copyBounded(m_logFileName, name, kLogFileLimit);
  return 1;
}

int CKaldoInfo::KIGetLogFileName(char* out) {
  if (!out || m_logFileName[0] == '\0') return 0;
  std::memcpy(out, m_logFileName, std::strlen(m_logFileName) + 1);
  return 1;
}

int CKaldoInfo::KISetComment(const char* text) {
  copyBounded(m_comment, text, kCommentLimit);
  return 1;
}

int CKaldoInfo::KIGetComment(char* out) {
  if (!out || m_comment[0] == '\0') return 0;
  std::memcpy(out, m_comment, std::strlen(m_comment) + 1);
  return 1;
}

int CKaldoInfo::KICatComment(const char* text) {
  // The nine blanks line the new part up under the "COMMENT: " label. Built
  // aside, so that text may be the comment itself.
  char grown[kCommentLimit + 1];
  copyBounded(grown, m_comment, kCommentLimit);
  std::size_t used = std::strlen(grown);
  copyBounded(grown + used, "\n         ", kCommentLimit - used);
  used = std::strlen(grown);
  copyBounded(grown + used, text, kCommentLimit - used);
  std::memcpy(m_comment, grown, std::strlen(grown) + 1);
  return 1;
}

int CKaldoInfo::KIConfigForLanguage(const char* fileName) {
  if (m_comment[0] == '\0') return 0;
  if (!KILoadInfoSheets(fileName)) return 0;
  m_infoType = 0;
  m_logFileName[0] = '\0';
  return 1;
}

const char* CKaldoInfo::KIFetchStringForID(unsigned int id) {
  KISetInfoMessage(id);
  const CInfoSheet* sheet = findSheet(id);
  return sheet ? sheet->m_text.c_str() : nullptr;
}

int CKaldoInfo::KISetToFirst() {
  if (!m_sheets) return 0;
  m_currentId = m_sheets->m_id;
  return 1;
}

int CKaldoInfo::KISetToNext() {
  const CInfoSheet* sheet = findSheet(m_currentId);
  if (!sheet || !sheet->m_next) return 0;
  m_currentId = sheet->m_next->m_id;
  return 1;
}

int CKaldoInfo::KISetToPrevious() {
  if (!m_sheets || m_sheets->m_id == m_currentId) return 0;
  // Stops on the sheet before the first match, or on the last sheet when
  // the current id is in none. Unlike its siblings this step goes through
  // KISetInfoMessage and may therefore be logged.
  CInfoSheet* previous = m_sheets;
  for (CInfoSheet* s = m_sheets->m_next; s && s->m_id != m_currentId; s = s->m_next) previous = s;
  KISetInfoMessage(previous->m_id);
  return 1;
}

int CKaldoInfo::KIdxrval2kwinfo(long result) { return KUdxrval2kwinfo(result); }

int KULoadStringInitialise(const char* fileName) {
  delete g_stringTable;
  g_stringTable = new (std::nothrow) CKaldoInfo;
  if (!g_stringTable) return 0;
  if (!g_stringTable->KILoadInfoSheets(fileName)) {
    delete g_stringTable;
    g_stringTable = nullptr;
    return 0;
  }
  return 1;
}

int KULoadString(int id, char* out, int maxLength) {
  if (!out || maxLength < 1) return 0;
  const char* text =
      g_stringTable ? g_stringTable->KIFetchStringForID(static_cast<unsigned int>(id)) : nullptr;
  if (!text) {
    out[0] = '\0';
    return 0;
  }
  // Copying maxLength-1 characters keeps the same surviving text as copying
  // maxLength and cutting the last one, without touching out[maxLength].
  KUSafeStrncpy(out, text, maxLength - 1);
  out[maxLength - 1] = '\0';
  return 1;
}

int KULoadStringTerminate() {
  delete g_stringTable;
  g_stringTable = nullptr;
  return 1;
}
