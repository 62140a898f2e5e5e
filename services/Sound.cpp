// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Sound effects: a two-place queue ordered by priority, and background
// sounds drawn at random from a list file.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <new>

#include "KFile.h"
#include "KSound.h"
#include "KText.h"
#include "OsSound.h"
#include "TestHooks.h"
#include "TextDetail.h"

using kutil::detail::copyBounded;

namespace {

namespace pf = kutil::platform;

constexpr int kFileLimit = 260;
constexpr int kUrgentAbove = 100;  // higher priorities may cut off the sound in progress
constexpr unsigned int kOrdinaryFlags = pf::kSoundFilename | pf::kSoundNoStop | pf::kSoundAsync;  // 0x20011
constexpr unsigned int kUrgentFlags = pf::kSoundFilename | pf::kSoundAsync;                       // 0x20001

int platformPlayer(const char* file, unsigned int flags) { return pf::playSound(file, flags) ? 1 : 0; }

kutil::detail::SoundPlayer g_player = platformPlayer;

}  // namespace

namespace kutil::detail {

void setSoundPlayer(SoundPlayer player) { g_player = player ? player : platformPlayer; }

}  // namespace kutil::detail

struct CKSound::BackgroundEntry {
  unsigned int reserved = 0;
  char file[261] = {0};
  BackgroundEntry* next = nullptr;
};

// Safe to destroy even when SOInitialise was never called.
CKSound::CKSound()
    : m_backgroundPath{},
      m_backgroundCount(0),
      m_backgroundFrequency(10),
      m_background(nullptr),
      m_cursor(nullptr),
      m_enabled(0),
      m_current{},
      m_queued{},
      m_currentPriority(-1),
      m_queuedPriority(-1) {}

CKSound::~CKSound() {
  SOClearSound();
  emptyBackgroundList();
}

void CKSound::emptyBackgroundList() {
  while (m_background) {
    BackgroundEntry* next = m_background->next;
    delete m_background;
    m_background = next;
  }
  m_backgroundCount = 0;
  m_cursor = nullptr;
}

int CKSound::SOInitialise() {
  emptyBackgroundList();
  m_backgroundPath[0] = '\0';
  m_backgroundFrequency = 10;
  m_enabled = 0;
  m_current[0] = '\0';
  m_queued[0] = '\0';
  m_currentPriority = -1;
  m_queuedPriority = -1;
  std::srand(static_cast<unsigned int>(std::time(nullptr)));
  return 1;
}

int CKSound::SOEnableSound(int on) {
  m_enabled = on;
  return 1;
}

int CKSound::SOIsSoundEnabled() { return m_enabled; }

int CKSound::SOLoadBackgroundList(const char* path, int frequency) {
  emptyBackgroundList();
  if (!path || !*path) return 0;
  copyBounded(m_backgroundPath, path, kFileLimit);
  m_backgroundFrequency = frequency;
  FILE* in = std::fopen(path, "r");
  if (!in) return 0;
  BackgroundEntry* last = nullptr;
  char line[kFileLimit];
  while (std::fgets(line, sizeof line, in)) {
    KUNoNewLine(line);
    if (line[0] == '\0' || line[0] == '#' || KUIsAllSpaces(line) || !KUIsFileReadable(line)) continue;
    BackgroundEntry* entry = new (std::nothrow) BackgroundEntry;
    if (!entry) continue;
    copyBounded(entry->file, line, kFileLimit);
    if (last) {
      last->next = entry;
    } else {
      m_background = entry;
    }
    last = entry;
    ++m_backgroundCount;
  }
  std::fclose(in);
  m_cursor = m_background;
  return 1;
}

int CKSound::SORequestSound(const char* file, int priority) {
  if (m_current[0] == '\0' || priority > m_currentPriority) {
    // A more urgent sound supersedes the current one, which is dropped, not queued.
    copyBounded(m_current, file, kFileLimit);
    m_currentPriority = priority;
  } else if (m_queued[0] == '\0' || m_queuedPriority < priority) {
    copyBounded(m_queued, file, kFileLimit);
    m_queuedPriority = priority;
  }
  return 1;
}

int CKSound::SOPlaySound() {
  // A frequency below 1 would divide by zero; it draws no background sound.
  const long long period = static_cast<long long>(m_backgroundFrequency) * 3 * 10;
  // With both places taken a hit draws no entry at all: no second rand(), the cursor stays.
  if (m_background && period > 0 && std::rand() % period == 0 &&
      (m_current[0] == '\0' || m_queued[0] == '\0')) {
    const int wanted = m_backgroundCount > 0 ? std::rand() % m_backgroundCount : 0;
    BackgroundEntry* entry = m_background;
    for (int i = 0; entry && i < wanted; ++i) entry = entry->next;
    if (!entry) {
      m_cursor = m_background;
    } else {
      m_cursor = entry;
      if (m_current[0] == '\0') {
        copyBounded(m_current, entry->file, kFileLimit);
        m_currentPriority = 0;
      } else {
        copyBounded(m_queued, entry->file, kFileLimit);
        m_queuedPriority = 0;
      }
    }
  }
  if (m_current[0] == '\0') return 0;
  int result = 1;
  if (m_enabled == 1) {
    const unsigned int flags = m_currentPriority <= kUrgentAbove ? kOrdinaryFlags : kUrgentFlags;
    result = g_player(m_current, flags) ? 1 : 0;
  }
  std::memcpy(m_current, m_queued, sizeof m_current);
  m_currentPriority = m_queued[0] != '\0' ? m_queuedPriority : -1;
  m_queued[0] = '\0';
  m_queuedPriority = -1;
  return result;
}

int CKSound::SOClearSound() {
  m_current[0] = '\0';
  m_queued[0] = '\0';
  m_currentPriority = -1;
  m_queuedPriority = -1;
  g_player(nullptr, pf::kSoundPurge);
  return 1;
}
