// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Line-by-line rewriting of list files through a temporary companion file.
#include "LineFile.h"

#include <cstdio>
#include <cstring>

#include "KFile.h"
#include "KText.h"
#include "OsFileSystem.h"

namespace kutil::detail {

bool isNameLine(const char* line) { return line != nullptr && line[0] != '\0' && line[0] != '#'; }

std::string temporaryName(const char* path) { return std::string(path != nullptr ? path : "") + ".TMP"; }

RewriteOutcome copyLinesThrough(const char* path, const std::string& temp, const char* tempMode,
                                const LineRewrite& rewrite) {
  RewriteOutcome outcome;
  std::FILE* source = std::fopen(path, "r");
  if (source == nullptr) return outcome;
  outcome.sourceOpened = true;
  std::FILE* target = std::fopen(temp.c_str(), tempMode);
  if (target == nullptr) {
    std::fclose(source);
    return outcome;
  }
  outcome.tempOpened = true;
  char line[kListLineCapacity];
  while (std::fgets(line, kListLineBuffer, source) != nullptr) {
    outcome.anyLine = true;
    KUNoNewLine(line);  // cuts at the first CR or LF, as every list reader does
    if (isNameLine(line)) {
      switch (rewrite(line)) {
        case LineEdit::changed:
          outcome.changed = true;
          break;
        case LineEdit::failed:
          outcome.failed = true;
          break;
        case LineEdit::kept:
          break;
      }
    }
    if (std::fprintf(target, "%s\n", line) < 0) outcome.writeFailed = true;
  }
  std::fclose(source);
  if (std::fclose(target) != 0) outcome.writeFailed = true;
  return outcome;
}

bool replaceByCopy(const char* path, const std::string& temp, bool* listLost) {
  *listLost = false;
  platform::deleteFile(path);
  if (platform::copyFile(temp.c_str(), path, true)) return true;
  *listLost = KUIsFileReadable(path) == 0;
  return false;
}

int writeThroughTemporary(const char* path, const std::function<int(const char* temp)>& write) {
  const std::string temp = temporaryName(path);
  if (write(temp.c_str()) != 1) {
    platform::deleteFile(temp.c_str());
    return 0;
  }
  return replaceByRename(path, temp) ? 1 : 0;
}

bool replaceByRename(const char* path, const std::string& temp) {
  if (!platform::deleteFile(path) && KUIsFileReadable(path)) {
    platform::deleteFile(temp.c_str());
    return false;
  }
  return platform::moveFile(temp.c_str(), path);
}

}  // namespace kutil::detail
