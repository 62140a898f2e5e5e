// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The behaviour clock reads local time through a replaceable source, so that tests can run AT rows
// and tick numbering against a scripted time.
#pragma once
#include "KUtilBase.h"

namespace kutil::detail {

/// Fills a date-time record; 0 (record untouched) when the time can't be had.
using ClockTimeSource = int (*)(tagKDATETIME* when);

/// Makes every behaviour clock read its time from source (null restores the local time); returns the
/// source used before.
ClockTimeSource setClockTimeSource(ClockTimeSource source);

}  // namespace kutil::detail
