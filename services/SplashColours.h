// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Where the splash screen takes its system colours from, replaceable for tests.
#pragma once
#include "KSplash.h"

namespace kutil::detail {

/// Gives the system colour of a GetSysColor index.
using SysColourProvider = COLORREF (*)(int index);

/// Installs provider in place of the platform's (null restores it).
void setSysColourProvider(SysColourProvider provider);

}  // namespace kutil::detail
