// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Folder helpers the POSIX backends share.
#pragma once
#include <string>

namespace kutil::platform {

/// True when path names an existing directory (links followed).
bool isDirectory(const std::string& path);

/// Creates dir and every missing folder above it; true when dir is a directory afterwards.
bool makeDirectories(const std::string& dir);

}  // namespace kutil::platform
