// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Settings kept as text values under the application's registry keys.
#include <cstdio>
#include <cstring>

#include "KRegistry.h"
#include "KText.h"
#include "OsRegistry.h"

namespace {

namespace pf = kutil::platform;

constexpr const char* kSettingsKey = "Software\\kaldo3d\\Kaldo\\CurrentVersion";
// Spelled in this case on purpose: existing installations hold it so, and
// key paths compare without regard to case.
constexpr const char* kInstallKey = "SOFTWARE\\kaldo3d\\KALDO\\CurrentVersion";
constexpr unsigned long kTextCapacity = 261;

int getNumber(HKEY root, const char* key, const char* name, int* value) {
  char text[kTextCapacity];
  if (!KUGetRegText(root, key, name, text)) return 0;
  int number = 0;
  if (!KUSafeATOI(text, &number)) return 0;
  *value = number;
  return 1;
}

int getUser(const char* name, unsigned int* value) {
  if (!value) return 0;
  int number = 0;
  if (!getNumber(pf::rootCurrentUser(), kSettingsKey, name, &number)) return 0;
  *value = static_cast<unsigned int>(number);
  return 1;
}

int getUser(const char* name, int* value) {
  if (!value) return 0;
  return getNumber(pf::rootCurrentUser(), kSettingsKey, name, value);
}

int setNumber(HKEY root, const char* key, const char* name, int value) {
  char text[16];
  std::snprintf(text, sizeof text, "%d", value);
  return KUSetRegText(root, key, name, text);
}

int setUser(const char* name, int value) {
  return setNumber(pf::rootCurrentUser(), kSettingsKey, name, value);
}

struct RootName {
  const char* name;
  HKEY (*root)();
};

// Tested in this order, as case-sensitive prefixes.
const RootName kRootNames[] = {
    {"HKEY_CLASSES_ROOT", pf::rootClassesRoot},
    {"HKEY_CURRENT_CONFIG", pf::rootCurrentConfig},
    {"HKEY_CURRENT_USER", pf::rootCurrentUser},
    {"HKEY_LOCAL_MACHINE", pf::rootLocalMachine},
    {"HKEY_USERS", pf::rootUsers},
    {"HKEY_PERFORMANCE_DATA", pf::rootPerformanceData},
    {"HKEY_DYN_DATA", pf::rootDynData},
};

}  // namespace

int KUGetRegText(HKEY root, const char* keyPath, const char* valueName, char* out) {
  if (!keyPath || !out) return 0;
  HKEY key = nullptr;
  if (pf::regOpenKey(root, keyPath, false, &key) != pf::kRegOk) return 0;
  // Read into scratch so that a failed or non-text read leaves out alone; one
  // spare byte guarantees termination of a value stored without one.
  unsigned char buffer[kTextCapacity + 1] = {0};
  unsigned long type = pf::kRegNone;
  unsigned long size = kTextCapacity;
  const long rc = pf::regQueryValue(key, valueName, &type, buffer, &size);
  pf::regCloseKey(key);
  if (rc != pf::kRegOk || type != pf::kRegSz) return 0;
  buffer[size < kTextCapacity ? size : kTextCapacity - 1] = '\0';
  std::memcpy(out, buffer, std::strlen(reinterpret_cast<char*>(buffer)) + 1);
  return 1;
}

int KUSetRegText(HKEY root, const char* keyPath, const char* valueName, const char* text) {
  if (!keyPath || !text) return 0;
  HKEY key = nullptr;
  if (pf::regCreateKey(root, keyPath, &key) != pf::kRegOk) return 0;
  const long rc = pf::regSetValue(key, valueName, pf::kRegSz, reinterpret_cast<const unsigned char*>(text),
                                  static_cast<unsigned long>(std::strlen(text) + 1));
  pf::regFlushKey(key);
  pf::regCloseKey(key);
  return rc == pf::kRegOk ? 1 : 0;
}

int KUIsRegKeyReadable(HKEY root, const char* keyPath) {
  if (!keyPath) return 0;
  HKEY key = nullptr;
  if (pf::regOpenKey(root, keyPath, false, &key) != pf::kRegOk) return 0;
  pf::regCloseKey(key);
  return 1;
}

int KURegDeleteFirstSubSubKey(HKEY root, const char* keyPath) {
  if (!keyPath) return 0;
  HKEY key = nullptr;
  if (pf::regOpenKey(root, keyPath, true, &key) != pf::kRegOk) return 0;
  char name[kTextCapacity];
  unsigned long size = kTextCapacity;
  const long rc = pf::regEnumKey(key, 0, name, &size);
  pf::regCloseKey(key);
  if (rc != pf::kRegOk) return 0;
  // Relative to the handle just closed: this order is kept deliberately; a
  // platform that rejects the stale handle makes this fail.
  return pf::regDeleteKey(key, name) == pf::kRegOk ? 1 : 0;
}

int KURegDeleteKey(const char* fullKeyPath) {
  if (!fullKeyPath) return 0;
  for (const RootName& entry : kRootNames) {
    const size_t length = std::strlen(entry.name);
    if (std::strncmp(fullKeyPath, entry.name, length) != 0) continue;
    if (fullKeyPath[length] == '\0') return 0;
    const char* subKey = fullKeyPath + length + 1;  // past the one separator
    if (*subKey == '\0') return 0;                  // never a root itself
    const HKEY root = entry.root();
    while (KURegDeleteFirstSubSubKey(root, subKey)) {
    }
    return pf::regDeleteKey(root, subKey) == pf::kRegOk ? 1 : 0;
  }
  return 0;
}

int KUGetRegHintNumber(unsigned int* value) { return getUser("HintNumber", value); }
int KUSetRegHintNumber(unsigned int value) { return setUser("HintNumber", static_cast<int>(value)); }
int KUGetRegMainTimer(unsigned int* value) { return getUser("MainTimer", value); }
int KUSetRegMainTimer(unsigned int value) { return setUser("MainTimer", static_cast<int>(value)); }
int KUGetRegJoystickActive(unsigned int* value) { return getUser("JoystickActive", value); }
int KUSetRegJoystickActive(unsigned int value) { return setUser("JoystickActive", static_cast<int>(value)); }
int KUGetRegTitleTips(unsigned int* value) { return getUser("TitleTips", value); }
int KUSetRegTitleTips(unsigned int value) { return setUser("TitleTips", static_cast<int>(value)); }
int KUGetRegUseHardware(unsigned int* value) { return getUser("TryHardware", value); }
int KUSetRegUseHardware(unsigned int value) { return setUser("TryHardware", static_cast<int>(value)); }
int KUGetRegAutosave(unsigned int* value) { return getUser("Autosave", value); }
int KUSetRegAutosave(unsigned int value) { return setUser("Autosave", static_cast<int>(value)); }
int KUGetRegAutoWallPaper(unsigned int* value) { return getUser("AutoWallPaper", value); }
int KUSetRegAutoWallPaper(unsigned int value) { return setUser("AutoWallPaper", static_cast<int>(value)); }
int KUGetRegBackgroundRunning(unsigned int* value) { return getUser("Background", value); }
int KUSetRegBackgroundRunning(unsigned int value) { return setUser("Background", static_cast<int>(value)); }
int KUGetRegDisableDisplayChange(unsigned int* value) { return getUser("DisableDisplayChange", value); }
int KUSetRegDisableDisplayChange(unsigned int value) {
  return setUser("DisableDisplayChange", static_cast<int>(value));
}
int KUGetRegAnimationClickDelay(unsigned int* value) { return getUser("AnimationDelay", value); }
int KUSetRegAnimationClickDelay(unsigned int value) {
  return setUser("AnimationDelay", static_cast<int>(value));
}
int KUGetRegResolution(int* value) { return getUser("Resolution", value); }
int KUSetRegResolution(int value) { return setUser("Resolution", value); }
int KUGetRegSkyResolution(int* value) { return getUser("SkyResolution", value); }
int KUSetRegSkyResolution(int value) { return setUser("SkyResolution", value); }
int KUGetRegShimmer(int* value) { return getUser("Shimmer", value); }
int KUSetRegShimmer(int value) { return setUser("Shimmer", value); }
int KUGetRegRenderHeight(int* value) { return getUser("RenderHeight", value); }
int KUSetRegRenderHeight(int value) { return setUser("RenderHeight", value); }
int KUGetRegRenderWidth(int* value) { return getUser("RenderWidth", value); }
int KUSetRegRenderWidth(int value) { return setUser("RenderWidth", value); }

int KUGetRegGraphics(char* out) {
  if (!out) return 0;
  return KUGetRegText(pf::rootCurrentUser(), kSettingsKey, "GLibrary", out);
}

int KUSetRegGraphics(const char* text) {
  return KUSetRegText(pf::rootCurrentUser(), kSettingsKey, "GLibrary", text);
}

int KUGetRegSharedMemory(char* out) {
  if (!out) return 0;
  char scratch[kTextCapacity];
  if (!KUGetRegText(pf::rootCurrentUser(), kSettingsKey, "SharedMemory", scratch)) return 0;
  KUSafeStrncpy(out, scratch, 260);
  return 1;
}

int KUSetRegSharedMemory(const char* text) {
  return KUSetRegText(pf::rootCurrentUser(), kSettingsKey, "SharedMemory", text);
}

int KUGetRegBuildNumber(unsigned int* value) {
  if (!value) return 0;
  int number = 0;
  if (!getNumber(pf::rootLocalMachine(), kInstallKey, "BuildNumber", &number)) return 0;
  *value = static_cast<unsigned int>(number);
  return 1;
}

int KUSetRegBuildNumber(int value) {
  return setNumber(pf::rootLocalMachine(), kInstallKey, "BuildNumber", value);
}
