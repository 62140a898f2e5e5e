// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Sounds through the multimedia PlaySoundA.
#include "OsSound.h"

#include <windows.h>
// mmsystem.h needs the Windows types first.
#include <mmsystem.h>

namespace kutil::platform {

bool playSound(const char* file, unsigned int flags) {
  return PlaySoundA(file, nullptr, static_cast<DWORD>(flags)) != FALSE;
}

}  // namespace kutil::platform
