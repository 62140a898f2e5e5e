// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Gathering a whole sky box when one of its faces is copied.
//
// A sky box is six files that differ only in a face suffix before the
// extension: "_fw", "_rh", "_bk", "_lf", "_up", "_dn" (".bmp" or ".anb").
// Given one face and the name it was copied to, the other five faces are
// copied beside the new name under the same base and extension. Faces that
// do not exist are skipped and existing targets are never overwritten. The
// face letters take the letter case of the given face's suffix, so
// "SKY_FW.BMP" brings "SKY_RH.BMP" along.
#include <cctype>
#include <cstring>
#include <string>

#include "Boundary.h"
#include "KFile.h"
#include "KNormalise.h"
#include "OsFileSystem.h"

namespace {

constexpr const char* kFaces[] = {"fw", "rh", "bk", "lf", "up", "dn"};
// "_xx.ext": the suffix starts this many characters before the end.
constexpr std::size_t kSuffixLength = 7;

// The name with its two face letters replaced by face, in the case of the originals.
std::string withFace(const std::string& name, const char* face) {
  std::string result = name;
  std::size_t at = name.size() - kSuffixLength + 1;
  for (std::size_t i = 0; i < 2; ++i) {
    unsigned char c = static_cast<unsigned char>(face[i]);
    bool upper = std::isupper(static_cast<unsigned char>(name[at + i])) != 0;
    result[at + i] = static_cast<char>(upper ? std::toupper(c) : c);
  }
  return result;
}

bool sameFace(const std::string& name, const char* face) {
  std::size_t at = name.size() - kSuffixLength + 1;
  return std::tolower(static_cast<unsigned char>(name[at])) == face[0] &&
         std::tolower(static_cast<unsigned char>(name[at + 1])) == face[1];
}

}  // namespace

int KUCopySkyBoxFaces(const char* sourceFace, const char* newName) {
  if (!KUFileHasSkyEnding(sourceFace) || !KUFileHasSkyEnding(newName)) return 0;
  // The face names are strings: out of memory the faces not yet copied are left out, and 0 says so.
  return kutil::detail::guarded([&] {
    const std::string source(sourceFace);
    const std::string target(newName);
    for (const char* face : kFaces) {
      if (sameFace(source, face)) continue;
      // Missing faces and faces already in place both just fail the copy.
      kutil::platform::copyFile(withFace(source, face).c_str(), withFace(target, face).c_str(), true);
    }
    return 1;
  });
}
