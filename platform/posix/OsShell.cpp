// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Shell services on a freedesktop.org desktop: special folders from the XDG
// base and user directories, programs started with posix_spawn, documents
// and addresses handed to xdg-open, the version from uname.
#include "OsShell.h"

#include <spawn.h>
#include <strings.h>
#include <sys/stat.h>
#include <sys/utsname.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "Boundary.h"
#include "Directories.h"

extern char** environ;

/// A shell item list here is the absolute path it was parsed from.
struct _ITEMIDLIST {
  std::string path;
};

namespace kutil::platform {
namespace {

// ShellExecuteA's result values.
constexpr long kOutOfResources = 0;
constexpr long kFileNotFound = 2;
constexpr long kPathNotFound = 3;
constexpr long kAccessDenied = 5;
constexpr long kOutOfMemory = 8;
constexpr long kBadFormat = 11;
constexpr long kNoAssociation = 31;
constexpr long kStarted = 42;

std::string env(const char* name) {
  const char* v = std::getenv(name);
  return v ? std::string(v) : std::string();
}

std::string home() {
  const std::string h = env("HOME");
  return h.empty() ? std::string("/") : h;
}

std::string configHome() {
  const std::string c = env("XDG_CONFIG_HOME");
  return c.empty() ? home() + "/.config" : c;
}

std::string dataHome() {
  const std::string d = env("XDG_DATA_HOME");
  return d.empty() ? home() + "/.local/share" : d;
}

// XDG_<NAME>_DIR from user-dirs.dirs, with $HOME expanded; fallback when absent.
std::string userDir(const char* name, const std::string& fallback) {
  std::ifstream in(configHome() + "/user-dirs.dirs");
  const std::string key = std::string("XDG_") + name + "_DIR=";
  std::string line;
  while (std::getline(in, line)) {
    if (line.compare(0, key.size(), key) != 0) continue;
    std::string value = line.substr(key.size());
    if (value.size() >= 2 && value.front() == '"' && value.back() == '"')
      value = value.substr(1, value.size() - 2);
    if (value.compare(0, 5, "$HOME") == 0) value = home() + value.substr(5);
    if (!value.empty() && value[0] == '/') return value;
  }
  return fallback;
}

// The machine-wide menu folder: the first existing "applications" folder of XDG_DATA_DIRS.
std::string commonApplications() {
  std::string dirs = env("XDG_DATA_DIRS");
  if (dirs.empty()) dirs = "/usr/local/share:/usr/share";
  size_t start = 0;
  while (start <= dirs.size()) {
    const size_t end = dirs.find(':', start);
    const std::string dir = dirs.substr(start, end == std::string::npos ? std::string::npos : end - start);
    if (!dir.empty() && isDirectory(dir + "/applications")) return dir + "/applications";
    if (end == std::string::npos) break;
    start = end + 1;
  }
  return std::string();
}

std::vector<pid_t> g_children;

// Started programs are not waited for; they are collected here later so they leave no zombies.
void reapChildren() {
  const auto reaped = [](pid_t pid) {
    int status = 0;
    return ::waitpid(pid, &status, WNOHANG) != 0;
  };
  g_children.erase(std::remove_if(g_children.begin(), g_children.end(), reaped), g_children.end());
}

long spawnError(int error) {
  switch (error) {
    case ENOENT:
      return kFileNotFound;
    case ENOTDIR:
      return kPathNotFound;
    case EACCES:
    case EPERM:
      return kAccessDenied;
    case ENOMEM:
      return kOutOfMemory;
    case ENOEXEC:
      return kBadFormat;
    default:
      return kOutOfResources;
  }
}

long spawn(const std::string& program, bool searchPath, const std::vector<std::string>& args,
           const char* directory) {
  std::vector<char*> argv;
  argv.push_back(const_cast<char*>(program.c_str()));
  for (const auto& a : args) argv.push_back(const_cast<char*>(a.c_str()));
  argv.push_back(nullptr);
  // Room for the child is made first: once it runs it must be remembered.
  g_children.reserve(g_children.size() + 1);
  posix_spawn_file_actions_t actions;
  if (posix_spawn_file_actions_init(&actions) != 0) return kOutOfResources;
  if (directory && *directory) posix_spawn_file_actions_addchdir_np(&actions, directory);
  pid_t pid = 0;
  const int rc = searchPath ? posix_spawnp(&pid, program.c_str(), &actions, nullptr, argv.data(), environ)
                            : posix_spawn(&pid, program.c_str(), &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (rc != 0) return spawnError(rc);
  g_children.push_back(pid);
  return kStarted;
}

std::vector<std::string> splitParameters(const char* parameters) {
  std::vector<std::string> out;
  if (!parameters) return out;
  std::string cur;
  bool quoted = false;
  for (const char* p = parameters; *p; ++p) {
    if (*p == '"') {
      quoted = !quoted;
    } else if ((*p == ' ' || *p == '\t') && !quoted) {
      if (!cur.empty()) out.push_back(cur);
      cur.clear();
    } else {
      cur += *p;
    }
  }
  if (!cur.empty()) out.push_back(cur);
  return out;
}

// "scheme:" of two or more characters: a web or mail address rather than a file.
bool isAddress(const char* file) {
  const char* p = file;
  if (!std::isalpha(static_cast<unsigned char>(*p))) return false;
  while (std::isalnum(static_cast<unsigned char>(*p)) || *p == '+' || *p == '-' || *p == '.') ++p;
  return *p == ':' && p - file >= 2;
}

}  // namespace

char pathSeparator() { return '/'; }

namespace {

std::string specialFolder(int csidl) {
  switch (csidl) {
    case 7:
      return configHome() + "/autostart";
    case 8:
      return dataHome() + "/RecentDocuments";
    case 9:
      return dataHome() + "/kaldo3d/SendTo";
    case 16:
      return userDir("DESKTOP", home() + "/Desktop");
    case 22:
      return commonApplications();
    default:
      return std::string();
  }
}

}  // namespace

// Every call below that builds paths or argument lists runs through guarded:
// out of memory it fails as the shell would, and nothing throws.

bool specialFolderPath(HWND, int csidl, char* out) {
  if (!out) return false;
  return kutil::detail::guarded(
      [&] {
        const std::string path = specialFolder(csidl);
        // As with the shell, a folder that does not exist has no path.
        if (path.empty() || path.size() > 260 || !isDirectory(path)) return false;
        std::memcpy(out, path.c_str(), path.size() + 1);
        return true;
      },
      false);
}

bool pathToItemList(const char* path, ITEMIDLIST** out) {
  if (!path || !out || std::strlen(path) > 260) return false;
  return kutil::detail::guarded(
      [&] {
        const std::unique_ptr<char, void (*)(void*)> resolved(::realpath(path, nullptr), std::free);
        if (!resolved) return false;
        *out = new ITEMIDLIST{resolved.get()};
        return true;
      },
      false);
}

bool freeItemList(ITEMIDLIST* list) {
  delete list;
  return true;
}

void flushAllStreams() { std::fflush(nullptr); }

namespace {

long launch(const char* verb, const char* file, const char* parameters, const char* directory) {
  if (!file || !*file) return kFileNotFound;
  if (verb && *verb && ::strcasecmp(verb, "open") != 0 && ::strcasecmp(verb, "explore") != 0) {
    return kNoAssociation;  // printing, editing and the like have no handler here
  }
  if (directory && *directory && !isDirectory(directory)) return kPathNotFound;
  if (isAddress(file))
    return spawn("xdg-open", true, {file}, directory) == kStarted ? kStarted : kNoAssociation;

  std::string path = file;
  if (path[0] != '/' && directory && *directory) path = std::string(directory) + "/" + path;
  struct stat st {};
  if (::stat(path.c_str(), &st) != 0) {
    if (errno == EACCES) return kAccessDenied;
    if (errno == ENOTDIR) return kPathNotFound;
    const size_t cut = path.rfind('/');
    const std::string parent = cut == std::string::npos ? std::string(".") : path.substr(0, cut ? cut : 1);
    return isDirectory(parent) ? kFileNotFound : kPathNotFound;
  }
  if (S_ISREG(st.st_mode) && ::access(path.c_str(), X_OK) == 0) {
    return spawn(path, false, splitParameters(parameters), directory);
  }
  if (::access(path.c_str(), R_OK) != 0) return kAccessDenied;
  return spawn("xdg-open", true, {path}, directory) == kStarted ? kStarted : kNoAssociation;
}

}  // namespace

long shellExecute(HWND, const char* verb, const char* file, const char* parameters, const char* directory) {
  reapChildren();
  return kutil::detail::guarded([&] { return launch(verb, file, parameters, directory); }, kOutOfMemory);
}

bool versionInfo(VersionInfo* out) {
  struct utsname names {};
  if (!out || ::uname(&names) != 0) return false;
  int major = 0, minor = 0, build = 0;
  std::sscanf(names.release, "%d.%d.%d", &major, &minor, &build);
  // A protected multi-user system with per-user profiles: what callers test the NT family for.
  out->isNT = 1;
  out->major = major;
  out->minor = minor;
  out->build = build;
  std::snprintf(out->servicePack, sizeof out->servicePack, "%s", names.version);
  return true;
}

bool screenSaverDirectory(char* out) {
  if (!out) return false;
  return kutil::detail::guarded(
      [&] {
        const std::string dir = dataHome() + "/kaldo3d/screensavers";
        if (dir.size() > 260 || !makeDirectories(dir)) return false;
        std::memcpy(out, dir.c_str(), dir.size() + 1);
        return true;
      },
      false);
}

}  // namespace kutil::platform
