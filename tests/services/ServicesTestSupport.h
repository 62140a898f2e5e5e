// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// A private registry for each test and what a text getter wrote into a marked
// buffer.
#pragma once
#include <cstring>
#include <string>

#include "KRegistry.h"
#include "TestSupport.h"

namespace kutil::test {

#if !defined(_WIN32)
/// On POSIX a store folder of the test's own.
class RegistrySandbox {
  TempDir m_dir;
  ScopedEnv m_store{"KUTIL_REGISTRY_DIR", m_dir.path()};
};
#else
/// On Windows the real registry, with the test's keys removed before and after.
class RegistrySandbox {
 public:
  RegistrySandbox() { cleanup(); }
  ~RegistrySandbox() { cleanup(); }

 private:
  static void cleanup() {
    RegDeleteTreeA(HKEY_CURRENT_USER, "Software\\kaldo3d");
    RegDeleteTreeA(HKEY_LOCAL_MACHINE, "SOFTWARE\\kaldo3d");
  }
};
#endif

/// What a text getter reports: its status and the text it wrote, "-" for none
/// (the buffer left alone), "<overrun>" when it wrote past the terminator.
template <typename Get>
std::string written(Get get) {
  char out[300];
  std::memset(out, '#', sizeof out);
  const std::string status = std::to_string(get(out));
  if (std::string(out, sizeof out) == std::string(sizeof out, '#')) return status + " -";
  const char* end = static_cast<const char*>(std::memchr(out, '\0', sizeof out - 1));
  return status + (end && end[1] == '#' ? " " + std::string(out) : " <overrun>");
}

}  // namespace kutil::test
