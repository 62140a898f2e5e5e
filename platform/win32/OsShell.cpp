// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Shell services on the Windows shell.
#include "OsShell.h"

#include <shellapi.h>
#include <shlobj.h>
#include <windows.h>

#include <cstdint>
#include <cstdio>
#include <cstring>

namespace kutil::platform {

char pathSeparator() { return '\\'; }

bool specialFolderPath(HWND owner, int csidl, char* out) {
  if (!out) return false;
  LPITEMIDLIST list = nullptr;
  if (FAILED(SHGetSpecialFolderLocation(owner, csidl, &list)) || !list) return false;
  char path[MAX_PATH + 1] = {0};
  const bool found = SHGetPathFromIDListA(list, path) != FALSE;
  freeItemList(list);
  if (!found) return false;
  std::memcpy(out, path, std::strlen(path) + 1);
  return true;
}

bool pathToItemList(const char* path, ITEMIDLIST** out) {
  if (!path || !out) return false;
  WCHAR wide[MAX_PATH + 1] = {0};
  if (MultiByteToWideChar(CP_ACP, MB_PRECOMPOSED, path, -1, wide, MAX_PATH) == 0) return false;
  IShellFolder* desktop = nullptr;
  if (FAILED(SHGetDesktopFolder(&desktop)) || !desktop) return false;
  ULONG eaten = 0;
  LPITEMIDLIST list = nullptr;
  const HRESULT hr = desktop->ParseDisplayName(nullptr, nullptr, wide, &eaten, &list, nullptr);
  desktop->Release();
  if (FAILED(hr)) return false;
  *out = list;
  return true;
}

bool freeItemList(ITEMIDLIST* list) {
  IMalloc* allocator = nullptr;
  if (FAILED(SHGetMalloc(&allocator)) || !allocator) return false;
  if (list) allocator->Free(list);
  allocator->Release();
  return true;
}

void flushAllStreams() { std::fflush(nullptr); }

long shellExecute(HWND owner, const char* verb, const char* file, const char* parameters,
                  const char* directory) {
  HINSTANCE result = ShellExecuteA(owner, verb, file, parameters, directory, SW_SHOWNORMAL);
  return static_cast<long>(reinterpret_cast<intptr_t>(result));
}

bool versionInfo(VersionInfo* out) {
  if (!out) return false;
  OSVERSIONINFOA info;
  std::memset(&info, 0, sizeof info);
  info.dwOSVersionInfoSize = 148;
  if (!GetVersionExA(&info)) return false;
  out->isNT = info.dwPlatformId == VER_PLATFORM_WIN32_NT ? 1 : 0;
  out->major = static_cast<int>(info.dwMajorVersion);
  out->minor = static_cast<int>(info.dwMinorVersion);
  out->build = static_cast<int>(info.dwBuildNumber);
  std::snprintf(out->servicePack, sizeof out->servicePack, "%s", info.szCSDVersion);
  return true;
}

bool screenSaverDirectory(char* out) {
  if (!out) return false;
  char dir[MAX_PATH + 1] = {0};
  const UINT length = GetWindowsDirectoryA(dir, MAX_PATH);
  if (length == 0 || length >= MAX_PATH) return false;
  std::memcpy(out, dir, length + 1);
  return true;
}

}  // namespace kutil::platform
