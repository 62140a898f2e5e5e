// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Internals of the shell helpers that tests reach.
#pragma once

namespace kutil::detail {

/// Empties the process-wide special-folder caches, so that the next lookup starts afresh.
void resetSpecialFolderCaches();

/// The last error KURawRunSysCmd stores for a ShellExecuteA result.
int shellResultToError(long result);

}  // namespace kutil::detail
