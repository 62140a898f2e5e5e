// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The registry operations the settings code needs, in the shape of the Win32
// registry API: keys are opened and closed through handles, values are typed,
// results are Win32 error codes (0 = ERROR_SUCCESS). Like the Win32 API, no
// call throws: running out of memory is ERROR_OUTOFMEMORY.
#pragma once
#include "KUtilBase.h"

namespace kutil::platform {

/// Win32 error codes the backends report.
constexpr long kRegOk = 0;             ///< ERROR_SUCCESS
constexpr long kRegNotFound = 2;       ///< ERROR_FILE_NOT_FOUND
constexpr long kRegAccessDenied = 5;   ///< ERROR_ACCESS_DENIED
constexpr long kRegBadHandle = 6;      ///< ERROR_INVALID_HANDLE
constexpr long kRegOutOfMemory = 14;   ///< ERROR_OUTOFMEMORY
constexpr long kRegBadParameter = 87;  ///< ERROR_INVALID_PARAMETER
constexpr long kRegMoreData = 234;     ///< ERROR_MORE_DATA
constexpr long kRegNoMoreItems = 259;  ///< ERROR_NO_MORE_ITEMS
constexpr long kRegBusy = 170;         ///< ERROR_BUSY

/// Value types (REG_NONE, REG_SZ, REG_BINARY, REG_DWORD).
constexpr unsigned long kRegNone = 0;
constexpr unsigned long kRegSz = 1;
constexpr unsigned long kRegBinary = 3;
constexpr unsigned long kRegDword = 4;

/// The predefined root keys, by their Win32 values.
HKEY rootClassesRoot();
HKEY rootCurrentUser();
HKEY rootLocalMachine();
HKEY rootUsers();
HKEY rootPerformanceData();
HKEY rootCurrentConfig();
HKEY rootDynData();

/// Opens an existing key (RegOpenKeyExA with KEY_READ, or KEY_READ | KEY_WRITE).
long regOpenKey(HKEY parent, const char* path, bool forWriting, HKEY* out);
/// Creates or opens a key with full access (RegCreateKeyExA, non-volatile).
long regCreateKey(HKEY parent, const char* path, HKEY* out);
/// Reads a value (RegQueryValueExA): *size is the buffer size in, the value size out.
long regQueryValue(HKEY key, const char* name, unsigned long* type, unsigned char* data, unsigned long* size);
/// Writes a value (RegSetValueExA).
long regSetValue(HKEY key, const char* name, unsigned long type, const unsigned char* data,
                 unsigned long size);
/// Commits the key's changes to the store (RegFlushKey).
long regFlushKey(HKEY key);
/// Names the sub-key at index (RegEnumKeyExA); *size is the buffer size in, the name length out.
long regEnumKey(HKEY key, unsigned long index, char* name, unsigned long* size);
/// Deletes a sub-key that has no sub-keys of its own (RegDeleteKeyA).
long regDeleteKey(HKEY parent, const char* subKey);
/// Closes a key handle (RegCloseKey).
long regCloseKey(HKEY key);

}  // namespace kutil::platform
