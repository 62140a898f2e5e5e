// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Messages in a modal Win32 message box.
#include "OsMessage.h"

#include <windows.h>

namespace kutil::platform {

void showMessage(const char* caption, const char* text) {
  MessageBoxA(nullptr, text ? text : "", caption ? caption : "", MB_OK);
}

}  // namespace kutil::platform
