// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// File types, small file operations and path splitting.
#include <cctype>
#include <cstdio>
#include <cstring>
#include <initializer_list>

#include "FileDetail.h"
#include "KFile.h"
#include "KText.h"
#include "OsFileSystem.h"
#include "TextDetail.h"

using kutil::detail::isEmpty;
using kutil::detail::kMaxPath;
using kutil::detail::kScratch;
using kutil::detail::orEmpty;

namespace {

struct EndingType {
  const char* ending;
  int type;
};

// Tested top to bottom; ".scr" and ".txt" came later but keep their places.
constexpr EndingType kFileTypes[] = {
    {".bmp", KFT_BITMAP},       {".anb", KFT_ANIMATION}, {".ppm", KFT_PPM},      {".dll", KFT_LIBRARY},
    {".scr", KFT_SCREEN_SAVER}, {".exe", KFT_PROGRAM},   {".lnk", KFT_SHORTCUT}, {".kwq", KFT_SCENE},
    {".ksf", KFT_SHAPE},        {".kvc", KFT_BEHAVIOUR}, {".wav", KFT_SOUND},    {".ksl", KFT_SCENE_LIST},
    {".cpl", KFT_CONTROL},      {".kiq", KFT_KIQ},       {".kft", KFT_KFT},      {".kss", KFT_KSS},
    {".nss", KFT_NSS},          {".txt", KFT_TEXT},      {".kkp", KFT_KKP},      {".kdr", KFT_KDR},
    {".kud", KFT_KUD},
};

constexpr const char* kSkyEndings[] = {
    "_fw.bmp", "_rh.bmp", "_bk.bmp", "_lf.bmp", "_up.bmp", "_dn.bmp",
    "_fw.anb", "_rh.anb", "_bk.anb", "_lf.anb", "_up.anb", "_dn.anb",
};

char upper(char c) { return static_cast<char>(std::toupper(static_cast<unsigned char>(c))); }

}  // namespace

int KUFileHasEnding(const char* name, const char* ending) {
  if (name == nullptr || ending == nullptr) return 0;
  std::size_t n = std::strlen(name);
  std::size_t e = std::strlen(ending);
  if (n < e) return 0;
  for (std::size_t i = 1; i <= e; ++i)
    if (upper(name[n - i]) != upper(ending[e - i])) return 0;
  return 1;
}

int KUGetFileType(const char* name) {
  if (name == nullptr) return KFT_OTHER;
  if (KUFileHasEnding(name, ".ico")) return KUIsBitmap(name) ? KFT_BITMAP : KFT_ICON;
  for (const EndingType& entry : kFileTypes)
    if (KUFileHasEnding(name, entry.ending)) return entry.type;
  return KFT_OTHER;
}

int KUIsBitmap(const char* path) {
  if (isEmpty(path)) return 0;
  std::FILE* file = std::fopen(path, "rb");
  if (file == nullptr) return 0;
  unsigned char head[8];
  std::size_t got = std::fread(head, 1, sizeof head, file);
  std::fclose(file);
  return got == sizeof head && head[0] == 'B' && head[1] == 'M' ? 1 : 0;
}

int KUFileHasSkyEnding(const char* name) {
  for (const char* ending : kSkyEndings)
    if (KUFileHasEnding(name, ending)) return 1;
  return 0;
}

int KUIsFileReadable(const char* path) {
  if (isEmpty(path)) return 0;
  std::FILE* file = std::fopen(path, "r");
  if (file == nullptr) return 0;
  // POSIX opens directories for reading; the first read tells them apart.
  std::fgetc(file);
  bool ok = std::ferror(file) == 0;
  std::fclose(file);
  return ok ? 1 : 0;
}

int KUTouch(const char* path) {
  if (isEmpty(path)) return 0;
  std::FILE* file = std::fopen(path, "a+");
  if (file == nullptr) return 0;
  std::fclose(file);
  return 1;
}

int KUIsADriveName(const char* name) {
  if (name == nullptr) return 0;
  return std::isalpha(static_cast<unsigned char>(name[0])) && name[1] == ':' && name[2] == '\0' ? 1 : 0;
}

namespace kutil::detail {

bool appendTexts(const char* path, std::initializer_list<const char*> texts) {
  if (isEmpty(path)) return false;
  std::FILE* file = std::fopen(path, "a+");
  if (file == nullptr) return false;
  bool ok = true;
  for (const char* text : texts)
    if (std::fputs(orEmpty(text), file) < 0) ok = false;
  if (std::fflush(file) != 0) ok = false;
  if (std::fclose(file) != 0) ok = false;
  return ok;
}

}  // namespace kutil::detail

int KUAppendLine(const char* path, const char* text) {
  return kutil::detail::appendTexts(path, {text}) ? 1 : 0;
}

int KUCountLinesInFile(const char* path, long* count) {
  if (isEmpty(path) || count == nullptr) return 0;
  std::FILE* file = std::fopen(path, "r");
  if (file == nullptr) return 0;
  char line[266];
  long lines = 0;
  while (std::fgets(line, sizeof line, file) != nullptr) ++lines;
  std::fclose(file);
  *count = lines;
  return 1;
}

int KUClipFile(const char* path, int first, int last) {
  if (path == nullptr) return 0;
  const std::size_t length = std::strlen(path);
  if (length + 1 > 256) return 0;
  char temporary[kMaxPath];  // at most 255 characters, ".TMP" and the terminator
  std::memcpy(temporary, path, length);
  std::memcpy(temporary + length, ".TMP", 5);
  std::FILE* source = std::fopen(path, "r");
  if (source == nullptr) return 0;
  std::FILE* target = std::fopen(temporary, "w");
  if (target == nullptr) {
    std::fclose(source);
    return 0;
  }
  char line[kMaxPath];
  int number = 0;
  bool kept = false;
  while (std::fgets(line, sizeof line, source) != nullptr) {
    ++number;
    if (number >= first && number <= last) {
      // The kept lines go to the stream opened for reading, so the write
      // fails and the temporary file stays empty: a successful clip empties
      // the file. The message log relies on exactly this.
      if (std::fputs(line, source) < 0) std::clearerr(source);
      kept = true;
    }
  }
  std::fflush(target);
  std::fclose(target);
  std::fclose(source);
  if (!kept) return 0;
  if (!kutil::platform::deleteFile(path)) {
    kutil::platform::deleteFile(temporary);
    return 0;
  }
  // The rename's own result is not reported: once the file is deleted the
  // clip has happened, and the log that relies on it only needs to know that.
  kutil::platform::moveFile(temporary, path);
  return 1;
}

int KUGetPathFromFile(char* out, const char* file) {
  if (out == nullptr) return 0;
  kutil::platform::SplitPath parts;
  kutil::platform::splitPath(file, &parts);
  char path[2 * kutil::platform::kSplitPartSize];
  const std::size_t driveLength = std::strlen(parts.drive);
  std::memcpy(path, parts.drive, driveLength);
  std::memcpy(path + driveLength, parts.dir, std::strlen(parts.dir) + 1);
  KUSafeStrncpy(out, path, kMaxPath);
  return 1;
}

int KUGetImageComponents(const char* imageText, char* name, int* index, char* extra) {
  if (imageText == nullptr || name == nullptr || index == nullptr) return 0;
  char first[kScratch];
  char second[kScratch];
  if (!KUCutString(imageText, '|', 0, first) || !KUCutString(imageText, '|', 1, second)) return 0;
  std::strcpy(name, first);
  KUSafeATOI(second, index);
  char third[kScratch];
  if (extra != nullptr && KUCutString(imageText, '|', 2, third)) std::strcpy(extra, third);
  return 1;
}
