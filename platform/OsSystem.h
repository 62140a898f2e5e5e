// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Clock and time-zone services of the operating system's C runtime.
#pragma once
#include <ctime>

namespace kutil::platform {

/// Re-reads the time-zone settings of the C runtime (_tzset / tzset).
void resetTimeZone();

/// Fills *out with the current local time (time, then localtime); false when it can't be had.
bool localNow(std::tm* out);

}  // namespace kutil::platform
