// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Sounds through the multimedia PlaySoundA.
#include <windows.h>
#include <mmsystem.h>

#include "OsSound.h"

namespace kutil::platform {

bool playSound(const char* file, unsigned int flags) {
  return PlaySoundA(file, nullptr, static_cast<DWORD>(flags)) != FALSE;
}

}  // namespace kutil::platform
