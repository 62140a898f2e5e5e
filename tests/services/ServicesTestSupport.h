// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// A private registry for each test: on POSIX a store folder of its own, on
// Windows the real registry with the test's keys removed afterwards.
#pragma once
#include <cstdlib>
#include <string>

#include "KRegistry.h"
#include "TestSupport.h"

namespace kutil::test {

class RegistrySandbox {
 public:
  RegistrySandbox() {
#if !defined(_WIN32)
    const char* old = std::getenv("KUTIL_REGISTRY_DIR");
    m_hadOld = old != nullptr;
    if (old) m_old = old;
    setenv("KUTIL_REGISTRY_DIR", m_dir.path().c_str(), 1);
#endif
    cleanup();
  }
  ~RegistrySandbox() {
    cleanup();
#if !defined(_WIN32)
    if (m_hadOld)
      setenv("KUTIL_REGISTRY_DIR", m_old.c_str(), 1);
    else
      unsetenv("KUTIL_REGISTRY_DIR");
#endif
  }

 private:
  // Removes, deepest first, every key the services tests create.
  static void cleanup() {
    static const char* const kKeys[] = {
        "HKEY_CURRENT_USER\\Software\\kaldo3d\\Kaldo\\CurrentVersion",
        "HKEY_CURRENT_USER\\Software\\kaldo3d\\Kaldo",
        "HKEY_CURRENT_USER\\Software\\kaldo3d\\KUtilTest\\A\\Deep",
        "HKEY_CURRENT_USER\\Software\\kaldo3d\\KUtilTest\\A",
        "HKEY_CURRENT_USER\\Software\\kaldo3d\\KUtilTest\\B",
        "HKEY_CURRENT_USER\\Software\\kaldo3d\\KUtilTest",
        "HKEY_CURRENT_USER\\Software\\kaldo3d",
        "HKEY_LOCAL_MACHINE\\SOFTWARE\\kaldo3d\\KALDO\\CurrentVersion",
        "HKEY_LOCAL_MACHINE\\SOFTWARE\\kaldo3d\\KALDO",
        "HKEY_LOCAL_MACHINE\\SOFTWARE\\kaldo3d",
    };
    for (const char* key : kKeys) KURegDeleteKey(key);
  }

  TempDir m_dir;
  std::string m_old;
  bool m_hadOld = false;
};

}  // namespace kutil::test
