// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// In-place access to an action row's fields for the behaviour table, its reader, writer and clock,
// which walk and compare rows on every tick and must neither copy texts nor allocate.
#pragma once
#include "KActionRow.h"

namespace kutil::detail {

template <>
struct Internals<CKActionRow> {
  static CKActionRow* next(const CKActionRow& row) { return row.m_pNext; }
  static void setNext(CKActionRow& row, CKActionRow* next) { row.m_pNext = next; }

  static int rowType(const CKActionRow& row) { return row.m_rowType; }
  static int event(const CKActionRow& row) { return row.m_event; }
  static int action(const CKActionRow& row) { return row.m_action; }
  static int motion(const CKActionRow& row) { return row.m_motion; }
  static int repeatClicks(const CKActionRow& row) { return row.m_repeatClicks; }
  static int& iterations(CKActionRow& row) { return row.m_iterations; }
  static float magnitude(const CKActionRow& row) { return row.m_magnitude; }

  // Terminated texts inside the row; write them through the AR setters, which bound the copy.
  static const char* runState(const CKActionRow& row) { return row.m_runState; }
  static const char* grouping(const CKActionRow& row) { return row.m_grouping; }
  static const char* callStack(const CKActionRow& row) { return row.m_callStack; }
  static const char* textData(const CKActionRow& row) { return row.m_textData; }

  // The playback of a PLAYBACK row, which only the clock drives.
  static CKInputRecord* recorder(const CKActionRow& row) { return row.m_pRecorder; }
  static int getPlaybackCommand(CKActionRow& row, int* code, int* flags, char* text) {
    return row.ARGetPlaybackCommand(code, flags, text);
  }
  static int isPlayingBack(CKActionRow& row) { return row.ARIsPlayingBack(); }
  static int restartPlayback(CKActionRow& row) { return row.ARRestartPlayback(); }
};

}  // namespace kutil::detail
