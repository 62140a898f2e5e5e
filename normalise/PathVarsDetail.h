// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Internal access to the path-variable table, for tests.
#pragma once

namespace kutil::detail {

/// Puts the default directories (long and short forms) back into the table.
void resetPathVariables();

}  // namespace kutil::detail
