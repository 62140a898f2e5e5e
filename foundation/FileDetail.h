// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Internal file helpers shared by the library's writers.
#pragma once
#include <initializer_list>

namespace kutil::detail {

/// Appends the texts (null reads as "") one after another to the file at path, as KUAppendLine
/// appends one: opened "a+", flushed and closed. True when every write succeeded; false for an
/// empty path or a file that cannot be opened.
bool appendTexts(const char* path, std::initializer_list<const char*> texts);

}  // namespace kutil::detail
