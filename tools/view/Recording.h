// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The input stream: what keys and clicks ask for, recorded to a file and played back from one.
#pragma once
#include <string>

#include "KUtil.h"

namespace kview {

/// One input command: a motion code (moves the viewer), an event code with an object's name as its
/// text (acts on that object), GOTO with a viewpoint's name, or NULL for a frame without input.
struct InputCommand {
  int code = 0;
  int flags = 0;     ///< bit value 2: a fine step
  std::string text;  ///< object or viewpoint name
};

/// Writes every command to a recording.
class Recorder {
 public:
  /// Starts a recording, replacing an earlier one; false when the file cannot be written or already
  /// holds something that is no recording (it is then left as it is).
  bool open(const std::string& path);
  /// Stores one command; runs of the same command become one line.
  void store(const InputCommand& command);
  /// Writes the last run and closes the file.
  void close();
  bool active() const { return m_active; }

 private:
  CKInputRecord m_record;
  bool m_active = false;
};

/// Reads a recording back, one command at a time.
class Player {
 public:
  /// Opens a recording; false when it cannot be read.
  bool open(const std::string& path);
  /// The next command; false once the recording is exhausted.
  bool next(InputCommand* out);
  bool active() const { return m_active; }

 private:
  CKInputRecord m_record;
  bool m_active = false;
};

}  // namespace kview
