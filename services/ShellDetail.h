// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Internals of the shell helpers that tests reach.
#pragma once

namespace kutil::detail {

/// The last error KURawRunSysCmd stores for a ShellExecuteA result.
int shellResultToError(long result);

}  // namespace kutil::detail
