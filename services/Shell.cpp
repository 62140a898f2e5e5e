// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Special folders, running documents and programs, the product's web pages,
// the system version, write-permission probes and screen savers.
#include <cstdio>
#include <cstring>

#include "KFile.h"
#include "KRegistry.h"
#include "KShell.h"
#include "KText.h"
#include "OsFileSystem.h"
#include "OsRegistry.h"
#include "OsShell.h"
#include "ProductInfo.h"
#include "ShellDetail.h"
#include "TestHooks.h"

namespace {

namespace pf = kutil::platform;

constexpr const char* kMachineShellFolders =
    "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";
constexpr const char* kUserShellFolders =
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";
constexpr int kCacheSize = 264;
constexpr int kNoError = 5;

enum Folder { kCommonStartMenu, kStartup, kDesktop, kRecent, kSendTo, kFolderCount };

char g_folderCache[kFolderCount][kCacheSize];

struct RegistrySource {
  HKEY (*root)();
  const char* key;
  const char* value;
};

struct FolderLookup {
  RegistrySource first;
  RegistrySource second;  // root null when there is none
  int csidl;
};

const FolderLookup kLookups[kFolderCount] = {
    {{pf::rootLocalMachine, kMachineShellFolders, "Common Start Menu"},
     {pf::rootCurrentUser, kUserShellFolders, "Start Menu"},
     22},
    {{pf::rootCurrentUser, kUserShellFolders, "Startup"}, {nullptr, nullptr, nullptr}, 7},
    {{pf::rootCurrentUser, kUserShellFolders, "Desktop"}, {nullptr, nullptr, nullptr}, 16},
    {{pf::rootCurrentUser, kUserShellFolders, "Recent"}, {nullptr, nullptr, nullptr}, 8},
    {{pf::rootCurrentUser, kUserShellFolders, "SendTo"}, {nullptr, nullptr, nullptr}, 9},
};

// An empty registry value names no folder and counts as absent.
bool fromRegistry(const RegistrySource& source, char* cache) {
  if (!source.root) return false;
  char text[261];
  if (!KUGetRegText(source.root(), source.key, source.value, text) || text[0] == '\0') return false;
  KUSafeStrncpy(cache, text, kCacheSize - 1);
  return true;
}

int specialFolder(Folder which, HWND owner, char* out) {
  if (!out) return 0;
  char* cache = g_folderCache[which];
  if (cache[0] == '\0') {
    const FolderLookup& lookup = kLookups[which];
    if (!fromRegistry(lookup.first, cache) && !fromRegistry(lookup.second, cache)) {
      char path[261];
      if (!pf::specialFolderPath(owner, lookup.csidl, path) || path[0] == '\0') return 0;
      KUSafeStrncpy(cache, path, kCacheSize - 1);
    }
  }
  std::memcpy(out, cache, std::strlen(cache) + 1);
  return 1;
}

// Room for the screen-saver folder, a separator and a last path element, each at most 260 characters.
constexpr int kTargetSize = 2 * kCacheSize;

// The screen-saver folder joined with the file's last path element.
bool screenSaverTarget(const char* screenSaverFile, char (&target)[kTargetSize]) {
  if (!screenSaverFile || !*screenSaverFile) return false;
  char name[kCacheSize];
  if (!KUGetLastPathElement(name, screenSaverFile)) return false;
  char dir[kCacheSize];
  if (!pf::screenSaverDirectory(dir)) return false;
  std::snprintf(target, sizeof target, "%s%c%s", dir, pf::pathSeparator(), name);
  return true;
}

}  // namespace

namespace kutil::detail {

void resetSpecialFolderCaches() {
  for (auto& cache : g_folderCache) cache[0] = '\0';
}

int shellResultToError(long result) {
  switch (result) {
    case 0:
      return 111;
    case 2:
      return 106;
    case 3:
      return 109;
    case 5:
      return 100;
    case 8:
      return 108;
    case 26:
      return 110;
    case 27:
      return 101;
    case 28:
      return 104;
    case 29:
      return 103;
    case 30:
      return 102;
    case 31:
      return 107;
    case 32:
      return 105;
    default:
      return result > 32 ? kNoError : 80;  // bad format (11) too falls into 80
  }
}

}  // namespace kutil::detail

int KUGetCommonStartMenuDir(HWND owner, char* out) { return specialFolder(kCommonStartMenu, owner, out); }
int KUGetUserStartupMenuDir(HWND owner, char* out) { return specialFolder(kStartup, owner, out); }
int KUGetWinUserDesktopDir(HWND owner, char* out) { return specialFolder(kDesktop, owner, out); }
int KUGetWinUserRecentDir(HWND owner, char* out) { return specialFolder(kRecent, owner, out); }
int KUGetWinUserSendToDir(HWND owner, char* out) { return specialFolder(kSendTo, owner, out); }

int KUPath2ItemList(const char* path, ITEMIDLIST** list) {
  if (!path || !list) return 0;
  return pf::pathToItemList(path, list) ? 1 : 0;
}

int KUFreeItemList(ITEMIDLIST* list) { return pf::freeItemList(list) ? 1 : 0; }

int KURawRunSysCmd(HWND owner, const char* verb, const char* file, const char* parameters,
                   const char* directory) {
  KUSetError(kNoError);
  pf::flushAllStreams();
  const long result = pf::shellExecute(owner, verb, file, parameters, directory);
  const int error = kutil::detail::shellResultToError(result);
  KUSetError(error);
  return error == kNoError ? 1 : 0;
}

int KULaunchKALDOWebSite(HWND owner) {
  return KURawRunSysCmd(owner, "open", kutil::detail::kProductWebSite, nullptr, nullptr);
}

int KULaunchKALDOWebSiteLatest(HWND owner) {
  return KURawRunSysCmd(owner, "open", kutil::detail::kProductLatestRelease, nullptr, nullptr);
}

int KULaunchKALDOTargetURL(HWND owner, const char* address) {
  return KURawRunSysCmd(owner, "open", address, nullptr, nullptr);
}

int KUEmailKALDOSupport(HWND owner) {
  return KURawRunSysCmd(owner, "open", kutil::detail::kProductSupportMail, nullptr, nullptr);
}

int KUCheckForNT(int* isNT, int* major, int* minor, int* build, char* servicePack) {
  if (!isNT || !major || !minor || !build || !servicePack) return 0;
  pf::VersionInfo info{};
  if (!pf::versionInfo(&info)) return 0;
  *isNT = info.isNT;
  *major = info.major;
  *minor = info.minor;
  *build = info.build;
  KUSafeStrncpy(servicePack, info.servicePack, 127);
  return 1;
}

int KUHasRegistryWritePerms() {
  HKEY key = nullptr;
  if (pf::regCreateKey(pf::rootLocalMachine(), "SOFTWARE\\MorvaneTest", &key) != pf::kRegOk) return 0;
  // Deleted before the handle is closed, so nothing is left behind.
  pf::regDeleteKey(pf::rootLocalMachine(), "SOFTWARE\\MorvaneTest");
  pf::regCloseKey(key);
  return 1;
}

int KUHasStartMenuWritePerms(HWND owner) {
  char dir[kCacheSize];
  if (!KUGetCommonStartMenuDir(owner, dir)) return 0;
  char probe[kCacheSize + 16];
  std::snprintf(probe, sizeof probe, "%s%cMORVTEST.KWQ", dir, pf::pathSeparator());
  FILE* f = std::fopen(probe, "a+");
  if (!f) return 0;
  std::fclose(f);
  pf::deleteFile(probe);
  return 1;
}

int KUGetScreenSaverDirectory(char* out) {
  if (!out) return 0;
  char dir[264];
  if (!pf::screenSaverDirectory(dir)) return 0;
  std::memcpy(out, dir, std::strlen(dir) + 1);
  return 1;
}

int KUSetScreenSaver(const char* screenSaverFile) {
  char target[kTargetSize];
  if (!screenSaverTarget(screenSaverFile, target)) return 0;
  return pf::copyFile(screenSaverFile, target, false) ? 1 : 0;
}

int KUIsScreenSaver(const char* screenSaverFile) {
  char target[kTargetSize];
  if (!screenSaverTarget(screenSaverFile, target)) return 0;
  return KUIsFileReadable(target);
}

int KUDeleteScreenSaver(const char* screenSaverFile) {
  char target[kTargetSize];
  if (!screenSaverTarget(screenSaverFile, target)) return 0;
  return pf::deleteFile(target) ? 1 : 0;
}
