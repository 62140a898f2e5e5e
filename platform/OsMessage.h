// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The platform's own way of showing a message to the user.
#pragma once

namespace kutil::platform {

/// Shows text captioned caption with an OK button, no owner window, and waits until it is closed.
void showMessage(const char* caption, const char* text);

}  // namespace kutil::platform
