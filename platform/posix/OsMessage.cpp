// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Without a desktop toolkit of its own the library reports messages on
// standard error; a host with a user interface installs its own sink.
#include "OsMessage.h"

#include <cstdio>

namespace kutil::platform {

void showMessage(const char* caption, const char* text) {
  std::fprintf(stderr, "%s: %s\n", caption ? caption : "", text ? text : "");
  std::fflush(stderr);
}

}  // namespace kutil::platform
