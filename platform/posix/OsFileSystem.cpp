// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include "OsFileSystem.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace kutil::platform {
namespace {

bool isSeparator(char c) { return c == '\\' || c == '/'; }

void copyPart(char* out, const char* from, std::size_t count) {
  if (count >= static_cast<std::size_t>(kSplitPartSize)) count = kSplitPartSize - 1;
  std::memcpy(out, from, count);
  out[count] = '\0';
}

bool writeAll(int fd, const char* data, ssize_t size) {
  while (size > 0) {
    ssize_t done = write(fd, data, static_cast<std::size_t>(size));
    if (done < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    data += done;
    size -= done;
  }
  return true;
}

bool isSameFile(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

}  // namespace

void splitPath(const char* path, SplitPath* out) {
  if (out == nullptr) return;
  out->drive[0] = out->dir[0] = out->name[0] = out->ext[0] = '\0';
  if (path == nullptr) return;
  std::size_t len = strnlen(path, kSplitPartSize - 1);
  std::size_t p = 0;
  if (len >= 2 && path[1] == ':') {
    copyPart(out->drive, path, 2);
    p = 2;
  }
  std::size_t lastSep = len;  // none
  for (std::size_t i = p; i < len; ++i)
    if (isSeparator(path[i])) lastSep = i;
  if (lastSep != len) {
    copyPart(out->dir, path + p, lastSep + 1 - p);
    p = lastSep + 1;
  }
  std::size_t dot = len;
  for (std::size_t i = p; i < len; ++i)
    if (path[i] == '.') dot = i;
  copyPart(out->name, path + p, dot - p);
  copyPart(out->ext, path + dot, len - dot);
}

bool sameFile(const char* a, const char* b) {
  if (a == nullptr || b == nullptr || *a == '\0' || *b == '\0') return false;
  struct stat first, second;
  return stat(a, &first) == 0 && stat(b, &second) == 0 && isSameFile(first, second);
}

bool copyFile(const char* from, const char* to, bool failIfExists) {
  if (from == nullptr || to == nullptr || *from == '\0' || *to == '\0') return false;
  int in = open(from, O_RDONLY | O_CLOEXEC);
  if (in < 0) return false;
  struct stat info;
  if (fstat(in, &info) != 0 || !S_ISREG(info.st_mode)) {
    close(in);
    return false;
  }
  // Not O_TRUNC: the target is emptied only once it is known not to be the source.
  int flags = O_WRONLY | O_CREAT | O_CLOEXEC | (failIfExists ? O_EXCL : 0);
  int out = open(to, flags, info.st_mode & 0777);
  if (out < 0) {
    close(in);
    return false;
  }
  struct stat target;
  if (fstat(out, &target) != 0 || isSameFile(info, target) || ftruncate(out, 0) != 0) {
    close(out);
    close(in);
    return false;
  }
  char buffer[16384];
  bool ok = true;
  for (;;) {
    ssize_t got = read(in, buffer, sizeof buffer);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) {
      ok = got == 0;
      break;
    }
    if (!writeAll(out, buffer, got)) {
      ok = false;
      break;
    }
  }
  close(in);
  if (close(out) != 0) ok = false;
  // A half-written copy would later pass for the real file.
  if (!ok) unlink(to);
  return ok;
}

bool deleteFile(const char* path) {
  if (path == nullptr || *path == '\0') return false;
  return unlink(path) == 0;
}

bool moveFile(const char* from, const char* to) {
  if (from == nullptr || to == nullptr || *from == '\0' || *to == '\0') return false;
  // MoveFileA refuses an existing target; keep that contract.
  struct stat info;
  if (lstat(to, &info) == 0) return false;
  return rename(from, to) == 0;
}

int shortPathName(const char* longPath, char* out, int capacity) {
  // No 8.3 names here: the short form is the long form.
  if (longPath == nullptr || out == nullptr || capacity <= 0) return 0;
  std::size_t len = std::strlen(longPath);
  if (len + 1 > static_cast<std::size_t>(capacity)) return 0;
  std::memmove(out, longPath, len + 1);
  return static_cast<int>(len);
}

}  // namespace kutil::platform
