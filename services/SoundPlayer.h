// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The player CKSound hands its sounds to, replaceable so that tests can record them.
#pragma once

namespace kutil::detail {

/// Plays file with PlaySoundA flags (null file: stop all); nonzero on success.
using SoundPlayer = int (*)(const char* file, unsigned int flags);

/// Installs player in place of the platform's (null restores it).
void setSoundPlayer(SoundPlayer player);

}  // namespace kutil::detail
