// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Animation files (".anb"): the frames of an animated texture, one file name
// per line in the order they are shown. Empty lines and lines beginning with
// '#' are comments and are kept as they are, exactly as in a scene list.
//
// Unlike the scene-list operations, an animation is rewritten through a fresh
// "<file>.TMP" that only replaces the file when it was written completely and
// something changed; a file that needs no change is never rewritten.
#include <cstdio>
#include <cstring>

#include "Boundary.h"
#include "KFile.h"
#include "KNormalise.h"
#include "KPathVars.h"
#include "LineFile.h"
#include "OsFileSystem.h"

using kutil::detail::kListLineCapacity;
using kutil::detail::LineEdit;
using kutil::detail::RewriteOutcome;

namespace {

bool isAnimation(const char* name) { return name != nullptr && KUFileHasEnding(name, ".anb") == 1; }

// Rewrites the animation's name lines; 1 when every line was handled, 0 when
// the file could not be read or rewritten or a rewrite failed.
int rewriteAnimation(const char* path, const kutil::detail::LineRewrite& rewrite) {
  const std::string temp = kutil::detail::temporaryName(path);
  RewriteOutcome outcome = kutil::detail::copyLinesThrough(path, temp, "w", rewrite);
  if (!outcome.sourceOpened) return 0;
  if (!outcome.tempOpened) return 0;
  if (outcome.writeFailed || !outcome.changed) {
    kutil::platform::deleteFile(temp.c_str());
    return outcome.writeFailed || outcome.failed ? 0 : 1;
  }
  if (!kutil::detail::replaceByRename(path, temp)) return 0;
  return outcome.failed ? 0 : 1;
}

LineEdit changedIfDifferent(const char* before, const char* after) {
  return std::strcmp(before, after) != 0 ? LineEdit::changed : LineEdit::kept;
}

int convertAnimation(const char* path) {
  if (!isAnimation(path) || KUIsVariablised(path)) return 1;
  return rewriteAnimation(path, [](char* line) {
    char before[kListLineCapacity];
    std::memcpy(before, line, std::strlen(line) + 1);
    KUConvertToRelative(line);
    return changedIfDifferent(before, line);
  });
}

int copyAnimationParts(const char* path, const char* target) {
  if (!isAnimation(path) || KUIsVariablised(path)) return 1;
  if (target == nullptr || target[0] == '\0') return 1;
  return rewriteAnimation(path, [target](char* line) {
    char newName[kListLineCapacity];
    std::memcpy(newName, line, std::strlen(line) + 1);
    // A frame that cannot be gathered keeps its old name, which still opens
    // where it was; the animation as a whole then reports failure.
    if (!KUCopyToTarget(line, target, newName)) return LineEdit::failed;
    LineEdit edit = changedIfDifferent(line, newName);
    std::memcpy(line, newName, std::strlen(newName) + 1);
    return edit;
  });
}

int deRelativiseAnimation(const char* texture, const char* variable, const char* directory) {
  if (!isAnimation(texture)) return 1;
  return rewriteAnimation(texture, [variable, directory](char* line) {
    if (!KUIsVariablised(line)) return LineEdit::kept;
    return KUSubstitute4Variable(line, variable, directory) ? LineEdit::changed : LineEdit::kept;
  });
}

}  // namespace

// The temporary name and the rewrite are standard-library objects: out of
// memory they throw, before any file is touched, and the call reports 0.
int KUConvertANBToRelative(const char* path) {
  return kutil::detail::guarded([&] { return convertAnimation(path); });
}

int KUCopyANBFileParts(const char* path, const char* target) {
  return kutil::detail::guarded([&] { return copyAnimationParts(path, target); });
}

int KUDeRelativiseANB(const char* texture, const char* variable, const char* directory) {
  return kutil::detail::guarded([&] { return deRelativiseAnimation(texture, variable, directory); });
}
