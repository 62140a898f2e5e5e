// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include "OsSystem.h"

#include <time.h>

namespace kutil::platform {

void resetTimeZone() { _tzset(); }

bool localNow(std::tm* out) {
  if (out == nullptr) return false;
  time_t now = time(nullptr);
  if (now == static_cast<time_t>(-1)) return false;
  const std::tm* local = localtime(&now);
  if (local == nullptr) return false;
  *out = *local;
  return true;
}

}  // namespace kutil::platform
