// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Every seam the tests use, in one place: the sources a test cannot observe
// or control (the clock, the sound device, the system colours) can be
// replaced, and the process-wide tables can be put back to their starting
// values. Each hook is defined by the layer that owns what it replaces; none
// is exported, and the library itself never calls them.
#pragma once
#include "KUtilBase.h"

namespace kutil::detail {

// ---- behaviour/ ----

/// Fills a date-time record; 0 (record untouched) when the time can't be had.
using ClockTimeSource = int (*)(tagKDATETIME* when);
/// Makes every behaviour clock read its time from source (null restores the local time);
/// returns the source used before.
ClockTimeSource setClockTimeSource(ClockTimeSource source);

// ---- normalise/ ----

/// Puts the default directories (long and short forms) back into the path-variable table.
void resetPathVariables();

// ---- services/ ----

/// Empties the special-folder caches, so that the next lookup starts afresh.
void resetSpecialFolderCaches();

/// Plays file with PlaySoundA flags (null file: stop all); nonzero on success.
using SoundPlayer = int (*)(const char* file, unsigned int flags);
/// Makes CKSound hand its sounds to player instead of the platform (null restores it).
void setSoundPlayer(SoundPlayer player);

/// Gives the system colour of a GetSysColor index.
using SysColourProvider = COLORREF (*)(int index);
/// Makes the splash screen take its colours from provider (null restores the platform's).
void setSysColourProvider(SysColourProvider provider);

}  // namespace kutil::detail
