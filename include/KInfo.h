// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KInfo.h
/// CKaldoInfo: info sheets, messages and the log.
#pragma once
#include <cstdio>
#include <string>

#include "KUtilBase.h"

/// One message text for one info-message id; a node of CKaldoInfo's list. A record the API hands
/// out (KICreateInfoSheet gives the caller one to own, KIWriteSingleSheet writes one), so its fields
/// are public; it has no behaviour and nothing of it is exported.
class CInfoSheet {
 public:
  std::string m_text;            ///< the message text
  unsigned int m_id = 0;         ///< the info-message id
  CInfoSheet* m_next = nullptr;  ///< the following sheet, or null
};

/// Message texts by id, loaded from per-language info-sheet files, with an optional log.
class KUTIL_API CKaldoInfo {
 public:
  /// Sets the initial state: current id 3, info type 0, no log, comment "<empty>", no sheets.
  CKaldoInfo();
  /// Deletes every sheet.
  ~CKaldoInfo();
  CKaldoInfo(const CKaldoInfo&) = delete;
  CKaldoInfo& operator=(const CKaldoInfo&) = delete;

  /// Appends the sheets of an info-sheet file; 1 if at least one was read, 0 otherwise.
  int KILoadInfoSheets(const char* fileName);
  /// Writes all sheets to fileName (created or truncated); 0 for an empty name, an unopenable file or no
  /// sheets.
  int KISaveFile(const char* fileName);
  /// Writes every sheet to stream in list order; 0 if there are none or a write failed.
  int KIWriteAllSheets(FILE* stream);
  /// Writes one sheet as an "[iid]" and an "[itx]" segment and a line feed; 1 when written.
  int KIWriteSingleSheet(FILE* stream, CInfoSheet* sheet);
  /// Creates a sheet and appends it to the list; 0 for a null text or when out of memory.
  int KINewInfoSheet(const char* text, unsigned int id);
  /// Creates a sheet outside the list and hands it to *sheet (the caller owns it); 0 on failure.
  int KICreateInfoSheet(const char* text, unsigned int id, CInfoSheet** sheet);
  /// Makes id current and logs it when logging is on; 1 when an entry was logged, else 0.
  int KISetInfoMessage(unsigned int id);
  /// Hands out the current id; always 1 (0 for a null pointer).
  int KIGetInfoMessage(unsigned int* id);
  /// Writes a log entry with text as its message when a log file is set; always 1.
  int KIFlushInfoMessage(const char* text);
  /// Copies the current id's text to out (261 bytes, at most 260 characters, always terminated);
  /// 0 with the no-message fallback text in out when no sheet has the id.
  int KIGetInfoText(char* out);
  /// The same lookup for a string taken by value: the caller sees only the result (1 found, 0 not).
  int KIGetInfoText(std::string text);
  /// Replaces the text of the current id's sheet; 0 if there is none.
  int KISetInfoText(std::string text);
  /// Shows the current id's text (or the fallback) captioned "KALDO Message" through the message sink; always
  /// 0.
  int KIDisplayInfo();
  /// Hands out the info type; always 1 (0 for a null pointer).
  int KIGetInfoType(int* type);
  /// Sets the info type (logging happens only while it is non-zero); always 1.
  int KISetInfoType(int type);
  /// Sets the log file name (at most 260 characters kept; "" switches the log off); 1.
  int KISetLogFileName(const char* name);
  /// Copies the log file name to out (261 bytes, always terminated); 0 (out untouched) when none is set.
  int KIGetLogFileName(char* out);
  /// Sets the comment (at most 258 characters kept); 1.
  int KISetComment(const char* text);
  /// Copies the comment to out (259 bytes, always terminated); 0 (out untouched) when it is empty.
  int KIGetComment(char* out);
  /// Appends a line feed, nine blanks and text to the comment (kept within 258 characters); always 1.
  int KICatComment(const char* text);
  /// Loads a language's info-sheet file after the sheets held and switches logging off; 0 when the
  /// comment is empty or nothing was loaded.
  int KIConfigForLanguage(const char* fileName);
  /// Makes id current (through KISetInfoMessage) and returns its text, or null when no sheet has it.
  const char* KIFetchStringForID(unsigned int id);
  /// Makes the first sheet's id current; 0 if there are no sheets.
  int KISetToFirst();
  /// Makes the next sheet's id current; 0 if the current id has no sheet or is the last.
  /// Sheets are found by id, so when a file repeats an id a walk comes back to the first sheet
  /// of that id: stop walking at an id already seen.
  int KISetToNext();
  /// Makes the previous sheet's id current through KISetInfoMessage (so it may be logged); 0 at the first
  /// sheet or with no sheets.
  int KISetToPrevious();
  /// The info-message id for a DirectX result, as KUdxrval2kwinfo.
  int KIdxrval2kwinfo(long result);

 private:
  friend struct kutil::detail::Internals<CKaldoInfo>;

  CInfoSheet* findSheet(unsigned int id) const;
  void appendSheet(CInfoSheet* sheet);
  int writeLogEntry(const char* message);

  unsigned int m_currentId;  ///< the current message id
  int m_infoType;            ///< logging only while non-zero
  char m_logFileName[261];   ///< the log file, "" for none
  char m_comment[259];       ///< the comment written with each log entry
  CInfoSheet* m_sheets;      ///< the sheets in load order
};

/// A host's message display, given the caption and the text of each message.
typedef void (*KUMessageSink)(const char* caption, const char* text);
/// Installs the message sink used by KIDisplayInfo; null restores the platform's default
/// (a message box on Windows, standard error elsewhere); always 1.
KUTIL_API int KUSetMessageSink(KUMessageSink sink);

/// Replaces the process-wide string table by the sheets of fileName; 1 on success, 0 (no table) on failure.
KUTIL_API int KULoadStringInitialise(const char* fileName);
/// Copies the text of id to out (maxLength bytes, at most maxLength-1 characters, always terminated);
/// 0 with out = "" when there is no table or no such id, 0 without writing for maxLength < 1.
KUTIL_API int KULoadString(int id, char* out, int maxLength);
/// Deletes the process-wide string table; always 1.
KUTIL_API int KULoadStringTerminate();

/// The info-message id for a Windows error state: 800 for 0, else 15.
KUTIL_API int KUwinerr2kwinfo(int error);
/// The info-message id for a DirectX result code (its low 32 bits): 800 for success, 930 when unknown.
KUTIL_API int KUdxrval2kwinfo(long result);
