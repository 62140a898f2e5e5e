// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Playing sound files, in the manner of PlaySoundA.
#pragma once

namespace kutil::platform {

constexpr unsigned int kSoundAsync = 0x1;         ///< SND_ASYNC: return at once
constexpr unsigned int kSoundNoStop = 0x10;       ///< SND_NOSTOP: never cut off a sound in progress
constexpr unsigned int kSoundPurge = 0x40;        ///< SND_PURGE: stop all sounds (with no file)
constexpr unsigned int kSoundFilename = 0x20000;  ///< SND_FILENAME: the sound names a file

/// Plays file with the given flags, or with no file and kSoundPurge stops every
/// sound of the process. False when the sound can't be played (no device, no
/// such file, or a sound in progress under kSoundNoStop).
bool playSound(const char* file, unsigned int flags);

}  // namespace kutil::platform
