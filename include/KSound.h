// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KSound.h
/// CKSound: sound effects with a two-place priority queue and random background sounds.
#pragma once
#include "KUtilBase.h"

/// Plays the application's sounds one at a time, highest priority first, mixing in background sounds.
class KUTIL_API CKSound {
 public:
  /// Leaves the object empty and disabled; call SOInitialise before use.
  CKSound();
  /// Stops all sounds (SOClearSound) and empties the background list.
  ~CKSound();
  CKSound(const CKSound&) = delete;
  CKSound& operator=(const CKSound&) = delete;

  /// Resets every field (background frequency 10, sound disabled, nothing queued) and seeds rand(); 1.
  int SOInitialise();
  /// Sets the enabled field (sounds play only while it is exactly 1); 1.
  int SOEnableSound(int on);
  /// Returns the enabled field itself.
  int SOIsSoundEnabled();
  /// Replaces the background list by the readable files named in a list file; 0 for an empty path or an
  /// unopenable file (the list then stays empty), else 1.
  int SOLoadBackgroundList(const char* path, int frequency);
  /// Queues a sound file by priority (at most 260 characters kept); always 1.
  int SORequestSound(const char* file, int priority);
  /// Now and then draws a background sound, then plays the current sound and moves the queue up;
  /// 0 when there is nothing to play, else 1 when played (or when disabled), 0 when playing failed.
  int SOPlaySound();
  /// Empties the queue and stops every sound playing; 1.
  int SOClearSound();

 private:
  friend struct kutil::detail::Internals<CKSound>;

  struct BackgroundEntry;
  void emptyBackgroundList();

  char m_backgroundPath[261];     ///< the list file last loaded
  int m_backgroundCount;          ///< entries in the background list
  int m_backgroundFrequency;      ///< background sounds come about once in 30 x this many plays
  BackgroundEntry* m_background;  ///< the background list (owned)
  BackgroundEntry* m_cursor;      ///< the entry last drawn (borrowed)
  int m_enabled;                  ///< sounds play only when exactly 1
  char m_current[261];            ///< the file to play next, "" for none
  char m_queued[261];             ///< the file to play after it, "" for none
  int m_currentPriority;          ///< priority of the current sound, -1 for none
  int m_queuedPriority;           ///< priority of the queued sound, -1 for none
};
