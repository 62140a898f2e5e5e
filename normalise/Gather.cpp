// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Copying a file that a behaviour, shape or list file references into the
// directory of a package being gathered.
#include <cstring>
#include <string>

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
  std::string newName = std::string(targetDir) + parts.name + parts.ext;
  // A name that would not fit the caller's path buffer cannot be handed back.
  if (newName.size() > static_cast<std::size_t>(kScratch - 1)) return 0;
  int result;
  if (KUIsFileReadable(source)) {
    if (kutil::platform::copyFile(source, newName.c_str(), true)) {
      if (KUFileHasSkyEnding(newName.c_str())) KUCopySkyBoxFaces(source, newName.c_str());
      result = 1;
    } else {
      result = KUIsFileReadable(newName.c_str());  // already there
    }
  } else {
    result = KUIsFileReadable(newName.c_str());
  }
  std::memcpy(out, newName.c_str(), newName.size() + 1);
  return result;
}
