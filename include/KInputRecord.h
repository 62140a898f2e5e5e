// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KInputRecord.h
/// CKInputRecord: recording and playback of input commands.
#pragma once
#include <cstdio>

#include "KUtilBase.h"

/// Longest file name and command text a recorder keeps.
constexpr int KIR_TEXT_LEN = 260;
/// Size of the recorder's line buffer; lines are read with at most KIR_LINE_LEN - 1 characters.
constexpr int KIR_LINE_LEN = 324;
/// Recorder mode: neither storing nor playing.
constexpr int KIR_MODE_NONE = -1;
/// Recorder mode: storing commands to the file.
constexpr int KIR_MODE_STORE = 0;
/// Recorder mode: playing commands back from the file.
constexpr int KIR_MODE_PLAY = 1;
/// Command flag bit: a following NULL (code 0) is dropped when storing; playback looks one line ahead.
constexpr int KIR_FLAG_CANCEL = 4;
/// Command flag bit set by playback on a flagged command that is followed by another flagged command.
constexpr int KIR_FLAG_PAIRED = 8;

/// Records input commands to a text file, one line per run of identical commands, and plays them back.
class KUTIL_API CKInputRecord {
 public:
  /// Leaves the recorder as IRInitialise does, with no stream.
  CKInputRecord();
  /// Closes a stream that is still open; a pending command is not written (IRTerminate writes it).
  ~CKInputRecord();
  CKInputRecord(const CKInputRecord&) = delete;
  CKInputRecord& operator=(const CKInputRecord&) = delete;

  /// Sets every field to its initial value, closing a stream left open without writing to it; returns 1.
  int IRInitialise();
  /// When storing, writes the pending command line; closes the stream; initialises; returns 1.
  int IRTerminate();
  /// Copies name (at most 260 characters) and sets mode (0 store, 1 play); the file opens on first use;
  /// returns 1 (0 for a null name).
  int IRSetFileName(const char* name, int mode);
  /// Copies the file name into out (capacity 261, always terminated); 0 (out untouched) when it is empty.
  int IRGetFileName(char* out);
  /// Stores the host's NULL-cancelling flag (the recorder itself does not consult it); returns 1.
  int IRSetNULLCancelling(int on);
  /// Stores one command (a null text keeps the previous text); 0 for a dropped NULL, the wrong mode or
  /// a file that cannot be written; the last argument is not used.
  int IRStoreCommand(int code, int flags, const char* text, int unused);
  /// Returns the next recorded command; text needs 261 bytes and is always terminated when 1 is returned;
  /// 0 at the end of the recording, in the wrong mode, or when the file cannot be read.
  int IRGetCommand(int* code, int* flags, char* text);
  /// 1 when the mode is storing.
  int IRIsStoring();
  /// 1 when the mode is playing.
  int IRIsPlaying();

 private:
  friend struct kutil::detail::Internals<CKInputRecord>;

  int openStream(const char* how);
  int writePending();
  int readLine(int* code, int* flags, char* text, int* repeats);

  std::FILE* m_stream;                   ///< the recording being written or read, or none
  char m_fileName[KIR_TEXT_LEN + 1];     ///< the recording's path
  int m_mode;                            ///< 0 storing, 1 playing, -1 neither
  int m_nullCancelling;                  ///< the host's flag, kept only
  int m_pendingCode;                     ///< command waiting to be written
  int m_currentCode;                     ///< command just stored or read
  int m_pendingFlags;                    ///< flags of the pending command
  int m_currentFlags;                    ///< flags of the current command
  int m_repeatCount;                     ///< storing: further occurrences of the pending command
  int m_repeatsLeft;                     ///< playing: further returns of the current command
  int m_cancelArmed;                     ///< set by a stored command flagged with bit value 4
  char m_pendingText[KIR_TEXT_LEN + 1];  ///< text of the pending command
  char m_currentText[KIR_TEXT_LEN + 1];  ///< text of the current command
  char m_line[KIR_LINE_LEN];             ///< one file line
};
