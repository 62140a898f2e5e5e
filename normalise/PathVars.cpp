// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The path-variable table and the conversion of file names to and from
// their machine-independent form.
#include <cstring>
#include <initializer_list>

#include "KFile.h"
#include "KPathVars.h"
#include "KText.h"
#include "OsFileSystem.h"
#include "TestHooks.h"
#include "TextDetail.h"

using kutil::detail::kMaxPath;
using kutil::detail::kScratch;

namespace {

constexpr const char* kKwqDir = "?KALDOKWQDIR?";
constexpr const char* kHomeDir = "?KALDOHOMEDIR?";
constexpr const char* kWindowsDir = "?WINDOWSDIR?";
constexpr const char* kSystemDir = "?WINDOWSSYSDIR?";
constexpr const char* kProgramsDir = "?WINDOWSPROGDIR?";

struct PathVariable {
  const char* name;
  char longForm[kScratch];
  char shortForm[kScratch];
};

enum { kWindows, kSystem, kPrograms, kHome, kVariableCount };

// The same defaults on every platform: stored files carry Windows paths, and
// a host on any system sets its own directories at start-up. On Linux the
// natural choices are "/usr" (Windows), "/usr/lib" (system), "/opt"
// (programs) and the installation prefix (home); short forms equal long ones.
constexpr PathVariable kDefaults[kVariableCount] = {
    {kWindowsDir, "C:\\Windows", "C:\\WINDOWS"},
    {kSystemDir, "C:\\Windows\\System", "C:\\WINDOWS\\SYSTEM"},
    {kProgramsDir, "C:\\Program Files", "C:\\PROGRA~1"},
    {kHomeDir, "C:\\Program Files\\kaldo3d\\kaldo", "C:\\PROGRA~1\\KALDO3D\\KALDO"},
};

PathVariable g_variables[kVariableCount] = {kDefaults[0], kDefaults[1], kDefaults[2], kDefaults[3]};

bool beginsWith(const char* text, const char* prefix) {
  return std::strncmp(text, prefix, std::strlen(prefix)) == 0;
}

// An empty directory begins every name (KUstrNIcmp over no characters is 1),
// so it ends the search without a replacement: hosts set real directories.
bool beginsWithDirectory(const char* fileName, const char* directory) {
  std::size_t n = std::strlen(directory);
  return KUstrNIcmp(fileName, directory, static_cast<int>(n)) == 1;
}

bool isProgramOrShortcut(int type) {
  return type == KFT_OTHER || type == KFT_LIBRARY || type == KFT_PROGRAM || type == KFT_SHORTCUT ||
         type == KFT_CONTROL;
}

}  // namespace

namespace kutil::detail {

void resetPathVariables() {
  for (int i = 0; i < kVariableCount; ++i) g_variables[i] = kDefaults[i];
}

}  // namespace kutil::detail

int KUSetNormalisationVariables(const char* windowsDir, const char* systemDir, const char* programsDir,
                                const char* homeDir) {
  const char* values[kVariableCount] = {windowsDir, systemDir, programsDir, homeDir};
  for (int i = 0; i < kVariableCount; ++i) {
    KUSafeStrncpy(g_variables[i].longForm, kutil::detail::orEmpty(values[i]), kScratch - 1);
    // Unchecked: when the platform has no short name the slot keeps what it held.
    kutil::platform::shortPathName(g_variables[i].longForm, g_variables[i].shortForm, kMaxPath);
  }
  return 1;
}

int KUIsVariablised(const char* fileName) {
  if (fileName == nullptr) return 0;
  for (const char* name : {kKwqDir, kHomeDir, kWindowsDir, kSystemDir, kProgramsDir})
    if (beginsWith(fileName, name)) return 1;
  return 0;
}

int KUSubstitute4Directory(char* fileName) {
  if (fileName == nullptr) return 0;
  // Contained directories before their containers, long forms before short.
  for (int i : {kHome, kPrograms, kSystem, kWindows}) {
    const PathVariable& v = g_variables[i];
    if (beginsWithDirectory(fileName, v.longForm)) return KUSubstitute(fileName, v.longForm, v.name);
    if (beginsWithDirectory(fileName, v.shortForm)) return KUSubstitute(fileName, v.shortForm, v.name);
  }
  return 0;
}

int KUSubstitute4Variable(char* fileName, const char* variable, const char* value) {
  if (fileName == nullptr) return 0;
  for (int i : {kWindows, kSystem, kPrograms, kHome}) {
    const PathVariable& v = g_variables[i];
    if (beginsWith(fileName, v.name)) return KUSubstitute(fileName, v.name, v.longForm);
  }
  return KUSubstitute(fileName, variable, value);
}

int KUConvertToRelative(char* fileName) {
  if (fileName == nullptr || KUIsAllSpaces(fileName)) return 1;
  if (KUIsVariablised(fileName)) return 1;
  if (isProgramOrShortcut(KUGetFileType(fileName))) {
    KUSubstitute4Directory(fileName);
    return 1;
  }
  // Content travels with the file set: only its bare name is kept.
  char directory[kScratch];
  KUGetPathFromFile(directory, fileName);
  KUSubstitute(fileName, directory, kKwqDir);
  return 1;
}

int KUDeRelativiseFileName(const char* referenceFile, char* fileName) {
  if (fileName == nullptr) return 0;
  char directory[kScratch];
  KUGetPathFromFile(directory, referenceFile);
  if (!KUIsVariablised(fileName)) return 0;
  return KUSubstitute4Variable(fileName, kKwqDir, directory);
}
