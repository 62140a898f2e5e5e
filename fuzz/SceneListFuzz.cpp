// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Scene lists and animation files: write the input as a list in a scratch
// folder and run every normaliser over it. The list must survive each step.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "FuzzSupport.h"
#include "KNormalise.h"

namespace {

const std::string& packageDir() {
  static const std::string dir = [] {
    std::filesystem::path list(kutil::fuzz::scratchPath(".ksl", 0));
    return (list.parent_path() / "package").string() + "/";
  }();
  return dir;
}

void requireFile(const std::string& path) {
  std::error_code ec;
  if (!std::filesystem::is_regular_file(path, ec)) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::error_code ec;
  std::filesystem::remove_all(packageDir(), ec);
  std::filesystem::create_directories(packageDir(), ec);
  const char* package = packageDir().c_str();

  const std::string list = kutil::fuzz::writeScratch(data, size, ".ksl", 0);
  std::remove((list + ".TMP").c_str());
  KUIsKSLFileNormalised(list.c_str());
  KUCopyKSLFileParts(list.c_str(), package);
  requireFile(list);
  KUConvertKSLToRelative(list.c_str());
  requireFile(list);
  KUIsKSLFileNormalised(list.c_str());
  KUDeRelativiseKSL(list.c_str(), "?KALDOKWQDIR?", package);
  requireFile(list);

  const std::string animation = kutil::fuzz::writeScratch(data, size, ".anb", 1);
  KUCopyANBFileParts(animation.c_str(), package);
  KUConvertANBToRelative(animation.c_str());
  KUDeRelativiseANB(animation.c_str(), "?KALDOKWQDIR?", package);
  requireFile(animation);
  return 0;
}
