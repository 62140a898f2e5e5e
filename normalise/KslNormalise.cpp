// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Scene-list files (".ksl"): one file name per line, empty lines and lines
// beginning with '#' are comments. Each rewriting operation copies the list
// line by line into "<list>.TMP" and then puts that copy in the list's place.
//
// The temporary file is opened for appending, so a companion left over from
// an earlier run ends up in front of the new lines; the three operations also
// differ on purpose in what an empty list gives and when the list is replaced.
// Beyond that, a list is never replaced by a temporary file that could not be
// written completely. Only the conversion keeps the temporary file when the
// copy back fails; the other two delete it in every case.
#include <cstdio>
#include <cstring>

#include "Boundary.h"
#include "KFile.h"
#include "KNormalise.h"
#include "KPathVars.h"
#include "KText.h"
#include "LineFile.h"
#include "OsFileSystem.h"
#include "TextDetail.h"

using kutil::detail::isEmpty;
using kutil::detail::LineEdit;
using kutil::detail::RewriteOutcome;

namespace {

const char* const kAppend = "a+";

// Puts the rewritten list in place and deletes the temporary file, whether
// or not the copy back succeeded.
int replaceList(const char* path, const std::string& temp) {
  bool listLost = false;
  const int result = kutil::detail::replaceByCopy(path, temp, &listLost) ? 1 : 0;
  kutil::platform::deleteFile(temp.c_str());
  return result;
}

int convertList(const char* path) {
  if (isEmpty(path)) return 1;
  KUSetComment(path);
  const std::string temp = kutil::detail::temporaryName(path);
  RewriteOutcome outcome = kutil::detail::copyLinesThrough(path, temp, kAppend, [](char* line) {
    KUConvertToRelative(line);
    return LineEdit::changed;
  });
  if (!outcome.sourceOpened || !outcome.tempOpened) {
    kutil::platform::deleteFile(temp.c_str());
    return 0;
  }
  // An incomplete copy must not replace the list; it stays for inspection.
  if (outcome.writeFailed) return 0;
  // The list is always replaced, an empty one too. A failed copy back leaves
  // the temporary file in place.
  bool listLost = false;
  if (!kutil::detail::replaceByCopy(path, temp, &listLost)) return 0;
  kutil::platform::deleteFile(temp.c_str());
  return 1;
}

int deRelativiseList(const char* path, const char* variable, const char* value) {
  if (isEmpty(path)) return 1;
  const std::string temp = kutil::detail::temporaryName(path);
  RewriteOutcome outcome = kutil::detail::copyLinesThrough(path, temp, kAppend, [&](char* line) {
    if (!KUIsVariablised(line)) return LineEdit::kept;
    // A variablised line marks the list as changed even when the given pair
    // does not match its variable.
    KUSubstitute4Variable(line, variable, value);
    return LineEdit::changed;
  });
  // Only a list with at least one line succeeds; an empty one gives 0.
  int result = outcome.sourceOpened && outcome.tempOpened && outcome.anyLine && !outcome.writeFailed ? 1 : 0;
  if (result == 1 && outcome.changed) return replaceList(path, temp);
  kutil::platform::deleteFile(temp.c_str());
  return result;
}

int copyListParts(const char* path, const char* targetDir) {
  if (isEmpty(path) || KUIsVariablised(path)) return 1;
  KUSetComment(path);
  const std::string temp = kutil::detail::temporaryName(path);
  RewriteOutcome outcome = kutil::detail::copyLinesThrough(path, temp, kAppend, [targetDir](char* line) {
    // The file's own status is not the list's: a name that cannot be
    // gathered is still rewritten to where it would be.
    KUCopyToTarget(line, targetDir, line);
    return LineEdit::changed;
  });
  if (!outcome.sourceOpened || !outcome.tempOpened || outcome.writeFailed) {
    kutil::platform::deleteFile(temp.c_str());
    return 0;
  }
  return replaceList(path, temp);
}

}  // namespace

int KUIsKSLFileNormalised(const char* path) {
  if (isEmpty(path)) return 0;
  std::FILE* file = std::fopen(path, "r");
  if (file == nullptr) return 0;
  char line[kutil::detail::kListLineCapacity];
  int result = 0;
  while (result == 0 && std::fgets(line, kutil::detail::kListLineBuffer, file) != nullptr) {
    KUNoNewLine(line);
    if (kutil::detail::isNameLine(line) && KUIsVariablised(line)) result = 1;
  }
  std::fclose(file);
  return result;
}

// The temporary name and the rewrite are standard-library objects: out of
// memory they throw, before any file is touched, and the call reports 0.
int KUConvertKSLToRelative(const char* path) {
  return kutil::detail::guarded([&] { return convertList(path); });
}

int KUDeRelativiseKSL(const char* path, const char* variable, const char* value) {
  return kutil::detail::guarded([&] { return deRelativiseList(path, variable, value); });
}

int KUCopyKSLFileParts(const char* path, const char* targetDir) {
  return kutil::detail::guarded([&] { return copyListParts(path, targetDir); });
}
