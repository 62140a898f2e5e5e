// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The desktop shell and system services the shell helpers need. No call
// throws: running out of memory is a failure like any other.
#pragma once
#include "KUtilBase.h"

namespace kutil::platform {

/// The platform's path separator, used when joining a folder and a file name.
char pathSeparator();

/// Writes the path of special folder csidl (7 startup, 8 recent, 9 send-to,
/// 16 desktop, 22 common start menu) to out (261 bytes); false when it has none.
bool specialFolderPath(HWND owner, int csidl, char* out);

/// Parses path into a shell item list owned by the caller; false when it can't be parsed.
bool pathToItemList(const char* path, ITEMIDLIST** out);

/// Frees an item list (null allowed); false when the shell allocator can't be had.
bool freeItemList(ITEMIDLIST* list);

/// Flushes every open C stream, so that other programs see complete files.
void flushAllStreams();

/// Runs verb on file as ShellExecuteA does and returns its result value:
/// above 32 on success, else one of ShellExecuteA's error values.
long shellExecute(HWND owner, const char* verb, const char* file, const char* parameters,
                  const char* directory);

/// The operating system's version as GetVersionExA reports it.
struct VersionInfo {
  int isNT;               ///< 1 for the NT family
  int major;              ///< major version
  int minor;              ///< minor version
  int build;              ///< build number
  char servicePack[128];  ///< service-pack text, terminated
};

/// Fills *out; false when the version can't be read.
bool versionInfo(VersionInfo* out);

/// Writes the folder screen savers are installed in to out (261 bytes); false when it can't be had.
bool screenSaverDirectory(char* out);

}  // namespace kutil::platform
