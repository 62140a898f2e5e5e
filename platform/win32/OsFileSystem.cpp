// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include "OsFileSystem.h"

#include <windows.h>

#include <cstdlib>
#include <cstring>

namespace kutil::platform {
namespace {

void copyPart(char* out, const char* from) {
  std::size_t n = strnlen(from, kSplitPartSize - 1);
  std::memcpy(out, from, n);
  out[n] = '\0';
}

// The volume and file index that identify an existing file, through a handle
// opened for no access so that open or locked files still answer.
bool fileIdentity(const char* path, BY_HANDLE_FILE_INFORMATION* info) {
  HANDLE file = CreateFileA(path, 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  const bool ok = GetFileInformationByHandle(file, info) != 0;
  CloseHandle(file);
  return ok;
}

}  // namespace

void splitPath(const char* path, SplitPath* out) {
  if (out == nullptr) return;
  out->drive[0] = out->dir[0] = out->name[0] = out->ext[0] = '\0';
  if (path == nullptr) return;
  // _splitpath writes up to the input's length into each part; a bounded
  // input keeps every part within its buffer.
  char bounded[kSplitPartSize];
  copyPart(bounded, path);
  char drive[kSplitPartSize], dir[kSplitPartSize], name[kSplitPartSize], ext[kSplitPartSize];
  _splitpath(bounded, drive, dir, name, ext);
  copyPart(out->drive, drive);
  copyPart(out->dir, dir);
  copyPart(out->name, name);
  copyPart(out->ext, ext);
}

bool sameFile(const char* a, const char* b) {
  if (a == nullptr || b == nullptr || *a == '\0' || *b == '\0') return false;
  BY_HANDLE_FILE_INFORMATION first, second;
  return fileIdentity(a, &first) && fileIdentity(b, &second) &&
         first.dwVolumeSerialNumber == second.dwVolumeSerialNumber &&
         first.nFileIndexHigh == second.nFileIndexHigh && first.nFileIndexLow == second.nFileIndexLow;
}

bool copyFile(const char* from, const char* to, bool failIfExists) {
  if (from == nullptr || to == nullptr) return false;
  // CopyFileA refuses a file copied onto itself on Windows; say so here too,
  // so that no emulation or file system lets the target's truncation empty it.
  if (sameFile(from, to)) return false;
  return CopyFileA(from, to, failIfExists ? TRUE : FALSE) != 0;
}

bool deleteFile(const char* path) {
  if (path == nullptr) return false;
  return DeleteFileA(path) != 0;
}

bool moveFile(const char* from, const char* to) {
  if (from == nullptr || to == nullptr) return false;
  return MoveFileA(from, to) != 0;
}

int shortPathName(const char* longPath, char* out, int capacity) {
  if (longPath == nullptr || out == nullptr || capacity <= 0) return 0;
  // Through a scratch buffer so that a failed or too-long result leaves out as it was.
  char scratch[MAX_PATH + 4];
  DWORD len = GetShortPathNameA(longPath, scratch, sizeof scratch);
  if (len == 0 || len >= sizeof scratch || len + 1 > static_cast<DWORD>(capacity)) return 0;
  std::memcpy(out, scratch, len + 1);
  return static_cast<int>(len);
}

}  // namespace kutil::platform
