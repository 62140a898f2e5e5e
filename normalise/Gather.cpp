// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Copying a file that a behaviour, shape or list file references into the
// directory of a package being gathered.
#include <cstring>

#include "KFile.h"
#include "KNormalise.h"
#include "KPathVars.h"
#include "KText.h"
#include "OsFileSystem.h"
#include "TextDetail.h"

using kutil::detail::isEmpty;
using kutil::detail::kScratch;

int KUCopyToTarget(const char* source, const char* targetDir, char* out) {
  if (isEmpty(source) || isEmpty(targetDir)) return 1;
  int type = KUGetFileType(source);
  // Programs are never gathered, and variablised names are already portable.
  if (type == KFT_LIBRARY || type == KFT_PROGRAM || type == KFT_CONTROL || KUIsVariablised(source)) return 1;
  if (out == nullptr) return 0;
  KUSetComment(source);
  kutil::platform::SplitPath parts;
  kutil::platform::splitPath(source, &parts);
  // A name that would not fit the caller's path buffer cannot be handed back.
  const std::size_t dirLength = std::strlen(targetDir);
  const std::size_t nameLength = std::strlen(parts.name);
  const std::size_t extLength = std::strlen(parts.ext);
  if (dirLength + nameLength + extLength > static_cast<std::size_t>(kScratch - 1)) return 0;
  // Built aside: out may be source itself (a list line rewritten in place).
  char newName[kScratch];
  std::memcpy(newName, targetDir, dirLength);
  std::memcpy(newName + dirLength, parts.name, nameLength);
  std::memcpy(newName + dirLength + nameLength, parts.ext, extLength + 1);
  int result;
  if (KUIsFileReadable(source)) {
    if (kutil::platform::copyFile(source, newName, true)) {
      if (KUFileHasSkyEnding(newName)) KUCopySkyBoxFaces(source, newName);
      result = 1;
    } else {
      result = KUIsFileReadable(newName);  // already there
    }
  } else {
    result = KUIsFileReadable(newName);
  }
  std::memcpy(out, newName, std::strlen(newName) + 1);
  return result;
}
