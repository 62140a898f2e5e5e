// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The file operations the library needs from the operating system.
#pragma once

namespace kutil::platform {

/// Capacity of every part of a SplitPath, terminator included.
constexpr int kSplitPartSize = 264;

/// A path taken apart as _splitpath does: drive ("C:" or ""), directory with
/// its trailing separator, bare name, extension with its dot.
struct SplitPath {
  char drive[kSplitPartSize];
  char dir[kSplitPartSize];
  char name[kSplitPartSize];
  char ext[kSplitPartSize];
};

/// Splits path (only its first 263 characters are looked at; null counts as
/// ""). Backslash and '/' both separate directories; a drive is recognised
/// only as a leading "X:".
void splitPath(const char* path, SplitPath* out);

/// True when both names exist and are the same file, however they are spelled
/// ("." and ".." parts, separators, symbolic or hard links): the files'
/// identities are compared, not their names.
bool sameFile(const char* a, const char* b);

/// Copies a file (CopyFileA); with failIfExists an existing target is left
/// alone and the call fails. A copy of a file onto itself fails and leaves it
/// whole, as CopyFileA does. True on success.
bool copyFile(const char* from, const char* to, bool failIfExists);

/// Deletes a file (DeleteFileA). True on success.
bool deleteFile(const char* path);

/// Renames a file (MoveFileA); fails when the target exists. True on success.
bool moveFile(const char* from, const char* to);

/// Writes the short (8.3) form of longPath to out (GetShortPathNameA) and
/// returns its length; 0 with out untouched when the platform has none for
/// it. Where the platform has no short names the short form is the long one.
int shortPathName(const char* longPath, char* out, int capacity);

}  // namespace kutil::platform
