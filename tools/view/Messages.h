// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Problems reported through the library's message system: looked up by id, logged, and shown.
#pragma once
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "KUtil.h"

namespace kview {

/// Info-message ids the viewer reports (texts in its own sheets, overridable by an info-sheet file).
constexpr unsigned int kMsgFileNotFound = 112;
constexpr unsigned int kMsgBehaviour = 113;
constexpr unsigned int kMsgShape = 114;
constexpr unsigned int kMsgUnreadable = 115;
constexpr unsigned int kMsgViewpoint = 116;
constexpr unsigned int kMsgViewpointsSaved = 117;
constexpr unsigned int kMsgTexture = 118;
constexpr unsigned int kMsgRecording = 119;

/// One message as it was shown.
struct Message {
  unsigned int id;
  std::string text;    ///< the message text of the id
  std::string file;    ///< the file concerned
  std::string detail;  ///< further explanation, may be empty
};

/// The host's side of the message system: one CKaldoInfo with the viewer's sheets and a log,
/// and a message sink that collects what is shown (for the panel) and echoes it on standard error.
class Messages {
 public:
  /// Installs the sink; only one Messages may exist at a time.
  Messages();
  /// Removes the sink.
  ~Messages();
  Messages(const Messages&) = delete;
  Messages& operator=(const Messages&) = delete;

  /// Loads an info-sheet file (its texts win over the built-in ones; "" for none) and sets the
  /// log file ("" for no log). False when the sheet file could not be read.
  bool open(const std::string& sheetFile, const std::string& logFile);
  /// Logs and shows the message id about file, with an optional detail.
  void report(unsigned int id, const std::string& file, const std::string& detail);
  /// As report, but only the first time for this id and file (a texture many shapes name).
  void reportOnce(unsigned int id, const std::string& file, const std::string& detail);
  /// Shows the message of an id the library set as its last error (a failed shell run).
  void reportLastError(const std::string& file);
  /// Every message shown so far, oldest first.
  const std::vector<Message>& shown() const { return m_shown; }
  /// The log file, "" for none.
  const std::string& logFile() const { return m_logFile; }
  /// Silences the standard-error echo (the panel still gets every message).
  void setEcho(bool on) { m_echo = on; }

 private:
  static void sink(const char* caption, const char* text);

  CKaldoInfo m_info;
  std::vector<Message> m_shown;
  std::string m_logFile;
  Message m_pending{};  ///< the file and detail of the message being shown, which the sink cannot see
  std::set<std::pair<unsigned int, std::string>> m_once;  ///< what reportOnce has reported
  bool m_echo = true;
};

}  // namespace kview
