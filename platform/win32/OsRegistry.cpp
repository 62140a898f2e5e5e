// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The registry interface on the real Win32 registry.
#include "OsRegistry.h"

#include <windows.h>

namespace kutil::platform {

HKEY rootClassesRoot() { return HKEY_CLASSES_ROOT; }
HKEY rootCurrentUser() { return HKEY_CURRENT_USER; }
HKEY rootLocalMachine() { return HKEY_LOCAL_MACHINE; }
HKEY rootUsers() { return HKEY_USERS; }
HKEY rootPerformanceData() { return HKEY_PERFORMANCE_DATA; }
HKEY rootCurrentConfig() { return HKEY_CURRENT_CONFIG; }
HKEY rootDynData() { return HKEY_DYN_DATA; }

long regOpenKey(HKEY parent, const char* path, bool forWriting, HKEY* out) {
  const REGSAM access = forWriting ? (KEY_READ | KEY_WRITE) : KEY_READ;
  return RegOpenKeyExA(parent, path, 0, access, out);
}

long regCreateKey(HKEY parent, const char* path, HKEY* out) {
  DWORD disposition = 0;
  char emptyClass[1] = {0};
  return RegCreateKeyExA(parent, path, 0, emptyClass, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr, out,
                         &disposition);
}

long regQueryValue(HKEY key, const char* name, unsigned long* type, unsigned char* data,
                   unsigned long* size) {
  DWORD t = 0;
  DWORD s = size ? *size : 0;
  const LONG rc = RegQueryValueExA(key, name, nullptr, &t, data, size ? &s : nullptr);
  if (type) *type = t;
  if (size) *size = s;
  return rc;
}

long regSetValue(HKEY key, const char* name, unsigned long type, const unsigned char* data,
                 unsigned long size) {
  return RegSetValueExA(key, name, 0, type, data, size);
}

long regFlushKey(HKEY key) { return RegFlushKey(key); }

long regEnumKey(HKEY key, unsigned long index, char* name, unsigned long* size) {
  DWORD s = size ? *size : 0;
  const LONG rc = RegEnumKeyExA(key, index, name, &s, nullptr, nullptr, nullptr, nullptr);
  if (size) *size = s;
  return rc;
}

long regDeleteKey(HKEY parent, const char* subKey) { return RegDeleteKeyA(parent, subKey); }

long regCloseKey(HKEY key) { return RegCloseKey(key); }

}  // namespace kutil::platform
