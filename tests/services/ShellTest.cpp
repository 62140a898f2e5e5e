// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "KRegistry.h"
#include "KShell.h"
#include "KText.h"
#include "ServicesTestSupport.h"
#include "ShellDetail.h"
#include "TestHooks.h"

#if !defined(_WIN32)
#include <unistd.h>
#endif

namespace {

namespace fs = std::filesystem;
using kutil::test::readFile;
using kutil::test::TempDir;
using kutil::test::writeFile;
using Lines = std::vector<std::string>;

const char* const kUserFolders = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";
const char* const kMachineFolders = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";

// The folder a getter hands out, "-" when it fails and leaves its output alone.
std::string folder(int (*get)(HWND, char*)) {
  const std::string got = kutil::test::written([get](char* out) { return get(nullptr, out); });
  return got == "0 -" ? "-" : got.substr(got.rfind("1 ", 0) == 0 ? 2 : 0);
}

// Installing a screen saver given the installed file itself, under every
// spelling of its name, fails and leaves the installed file whole.
void expectSelfInstallRefused(const std::string& dir) {
  TempDir scratch;
  const std::string installed = (fs::path(dir) / "Self.scr").string();
  ASSERT_TRUE(writeFile(installed, "saver"));
  for (const kutil::test::Spelling& s : kutil::test::sameFileSpellings(dir, "Self.scr", scratch.path())) {
    EXPECT_EQ(0, KUSetScreenSaver(s.path.c_str())) << s.how << ": " << s.path;
    EXPECT_EQ("saver", readFile(installed)) << s.how;
  }
  EXPECT_EQ(1, KUDeleteScreenSaver("Self.scr"));
}

// A run's status and the last error it leaves (5: none).
std::string run(const char* verb, const std::string& file, const char* parameters = nullptr,
                const char* directory = nullptr) {
  const int status = KURawRunSysCmd(nullptr, verb, file.c_str(), parameters, directory);
  int code = 5;
  KUGetError(&code);
  return std::to_string(status) + " " + std::to_string(code);
}

TEST(ShellResults, EveryShellExecuteResultMapsToItsInfoId) {
  const long rows[][2] = {{33, 5},   {42, 5},   {0, 111},  {2, 106},  {3, 109},  {5, 100},  {8, 108},
                          {26, 110}, {27, 101}, {28, 104}, {29, 103}, {30, 102}, {31, 107}, {32, 105},
                          {1, 80},   {4, 80},   {6, 80},   {7, 80},   {9, 80},   {11, 80},  {25, 80}};
  for (const auto& row : rows) EXPECT_EQ(row[1], kutil::detail::shellResultToError(row[0])) << row[0];
}

class Shell : public ::testing::Test {
 protected:
  void SetUp() override { kutil::detail::resetSpecialFolderCaches(); }
  void TearDown() override { kutil::detail::resetSpecialFolderCaches(); }
  kutil::test::RegistrySandbox m_registry;
  TempDir m_dir;
};

TEST_F(Shell, RunsReportThroughTheLastErrorItemListsNameRealPathsAndTheSystemIsNT) {
  EXPECT_EQ("0 106", run("open", m_dir.file("no-such-file.txt")));
#if defined(_WIN32)
  char system[MAX_PATH];
  GetSystemDirectoryA(system, MAX_PATH);
  EXPECT_EQ("1 5", run("open", std::string(system) + "\\cmd.exe", "/c exit 0"));
#else
  EXPECT_EQ("1 5", run("open", "/bin/true", nullptr, m_dir.path().c_str()));
#endif
  ITEMIDLIST* items = nullptr;
  int isNT = -1, major = -1, minor = -1, build = -1;
  char pack[128];
  // Every supported system is of the NT line.
  EXPECT_EQ(kutil::test::seq({KUPath2ItemList(m_dir.path().c_str(), &items), KUFreeItemList(items),
                              KUPath2ItemList(m_dir.file("none").c_str(), &items),
                              KUCheckForNT(&isNT, &major, &minor, &build, pack), isNT, major > 0,
                              KUCheckForNT(nullptr, &major, &minor, &build, pack)}),
            "1 1 0 1 1 1 0");
}

#if !defined(_WIN32)
using kutil::test::ScopedEnv;

// Stand-in programs write their arguments to a log.
std::string recorder(const std::string& dir, const std::string& name) {
  writeFile(dir + "/" + name, "#!/bin/sh\necho \"$#:$1|$2|$3\" >> '" + dir + "/log'\n");
  fs::permissions(dir + "/" + name, fs::perms::owner_all);
  return dir + "/" + name;
}

std::set<std::string> logged(const std::string& dir, size_t count) {
  for (int i = 0; i < 500 && kutil::test::readLines(dir + "/log").size() < count; ++i) usleep(10000);
  const auto lines = kutil::test::readLines(dir + "/log");
  return std::set<std::string>(lines.begin(), lines.end());  // each run is its own process: any order
}

TEST_F(Shell, ProgramsGetTheirParametersAndEverythingElseGoesToTheOpener) {
  recorder(m_dir.path(), "xdg-open");
  writeFile(m_dir.file("notes.txt"), "text");
  {
    ScopedEnv path("PATH", m_dir.path());
    EXPECT_EQ((std::vector<int>{1, 1, 1, 1}),
              (std::vector<int>{KULaunchKALDOWebSite(nullptr), KULaunchKALDOWebSiteLatest(nullptr),
                                KUEmailKALDOSupport(nullptr),
                                KULaunchKALDOTargetURL(nullptr, "https://x.org/faq")}));
    EXPECT_EQ("1 5", run("open", recorder(m_dir.path(), "prog"), "a \"b c\"  d"));
    EXPECT_EQ("1 5", run(nullptr, "notes.txt", nullptr, m_dir.path().c_str()));
    const auto opened = logged(m_dir.path(), 6);
    EXPECT_EQ(1u, opened.count("3:a|b c|d"));
    EXPECT_EQ(1u, opened.count("1:https://x.org/faq||"));
    EXPECT_EQ(1u, opened.count("1:" + m_dir.file("notes.txt") + "||"));
    EXPECT_EQ(6u, opened.size());
  }
  ScopedEnv noOpener("PATH", m_dir.file("empty"));
  EXPECT_EQ(0, KULaunchKALDOWebSite(nullptr));
  EXPECT_EQ(
      (Lines{"0 107", "0 109", "0 109", "0 109", "0 107"}),
      (Lines{run("open", "https://x.org"), run("open", m_dir.file("gone/x.txt")),
             run("open", m_dir.file("notes.txt/x")), run("open", "/bin/true", nullptr, "/proc/kutil-gone"),
             run("print", m_dir.file("notes.txt"))}));
}

// Special folders in a home of their own.
class ShellFolders : public Shell {
 protected:
  std::string make(const std::string& relative) {
    fs::create_directories(m_dir.file(relative));
    return m_dir.file(relative);
  }
  ScopedEnv m_home{"HOME", m_dir.path()}, m_config{"XDG_CONFIG_HOME", m_dir.file("config")},
      m_data{"XDG_DATA_HOME", m_dir.file("data")},
      m_dataDirs{"XDG_DATA_DIRS",
                 m_dir.file("nowhere") + ":" + m_dir.file("system") + ":" + m_dir.file("other")};
};

TEST_F(ShellFolders, RegistryComesFirstThenTheUserDirectoriesAndFoundPathsAreCached) {
  EXPECT_EQ("-", folder(KUGetWinUserDesktopDir));  // ~/Desktop does not exist
  const std::string desk = make("Schreibtisch");
  writeFile(make("config") + "/user-dirs.dirs",
            "# comment\nXDG_DESKTOP_DIR_X=\"/x\"\nXDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"\n");
  EXPECT_EQ(desk, folder(KUGetWinUserDesktopDir));  // the failed lookup was not cached
  kutil::detail::resetSpecialFolderCaches();
  // A found folder is kept; an empty value counts as absent.
  EXPECT_EQ(kutil::test::seq({KUSetRegText(HKEY_CURRENT_USER, kUserFolders, "Desktop", "/from/registry"),
                              folder(KUGetWinUserDesktopDir),
                              KUSetRegText(HKEY_CURRENT_USER, kUserFolders, "Desktop", "/changed"),
                              folder(KUGetWinUserDesktopDir),
                              KUSetRegText(HKEY_CURRENT_USER, kUserFolders, "SendTo", ""),
                              folder(KUGetWinUserSendToDir), folder(KUGetCommonStartMenuDir)}),
            "1 /from/registry 1 /from/registry 1 - -");
  const struct {
    int (*get)(HWND, char*);
    std::string expected;
  } rows[] = {{KUGetUserStartupMenuDir, make("config/autostart")},
              {KUGetWinUserRecentDir, make("data/RecentDocuments")},
              {KUGetWinUserSendToDir, make("data/kaldo3d/SendTo")},
              {KUGetCommonStartMenuDir, make("system/applications")}};  // the first of the data folders
  for (const auto& row : rows) EXPECT_EQ(row.expected, folder(row.get));

  // The common start menu falls back to the user's own, then to the shell's folder.
  for (auto [root, key, value] : {std::tuple{HKEY_CURRENT_USER, kUserFolders, "/user/start"},
                                  std::tuple{HKEY_LOCAL_MACHINE, kMachineFolders, "/common/start"}}) {
    kutil::detail::resetSpecialFolderCaches();
    ASSERT_EQ(1,
              KUSetRegText(root, key, root == HKEY_CURRENT_USER ? "Start Menu" : "Common Start Menu", value));
    EXPECT_EQ(value, folder(KUGetCommonStartMenuDir));
  }
}

TEST_F(ShellFolders, WritePermissionProbesLeaveNothingBehind) {
  const std::string menu = make("menu");
  for (const std::string& dir : {menu, m_dir.file("gone")}) {
    kutil::detail::resetSpecialFolderCaches();
    ASSERT_EQ(1, KUSetRegText(HKEY_LOCAL_MACHINE, kMachineFolders, "Common Start Menu", dir.c_str()));
    EXPECT_EQ(dir == menu ? 1 : 0, KUHasStartMenuWritePerms(nullptr));
  }
  EXPECT_TRUE(fs::is_empty(menu));
  EXPECT_EQ(1, KUHasRegistryWritePerms());
  ScopedEnv readOnly("KUTIL_REGISTRY_DIR", "/proc/kutil-no-such-dir");
  EXPECT_EQ(0, KUHasRegistryWritePerms());
}

TEST_F(ShellFolders, ScreenSaversAreCopiedReplacedAndDeleted) {
  const std::string dir = m_dir.file("data/kaldo3d/screensavers");
  EXPECT_EQ(dir, folder([](HWND, char* out) { return KUGetScreenSaverDirectory(out); }));
  const std::string source = make("downloads") + "/Stars.scr";
  writeFile(source, "old");
  EXPECT_EQ(0, KUIsScreenSaver(source.c_str()));
  ASSERT_EQ(1, KUSetScreenSaver(source.c_str()));
  writeFile(source, "new");
  ASSERT_EQ(1, KUSetScreenSaver(source.c_str()));
  EXPECT_EQ("new", readFile(dir + "/Stars.scr"));
  // Only the last path element counts, whatever the separators; no name names nothing.
  EXPECT_EQ((std::vector<int>{1, 0, 0, 0, 1, 0, 0}),
            (std::vector<int>{KUIsScreenSaver("D:\\downloads\\Stars.scr"), KUIsScreenSaver(""),
                              KUDeleteScreenSaver(""), KUSetScreenSaver("D:\\downloads\\Missing.scr"),
                              KUDeleteScreenSaver("Stars.scr"), KUIsScreenSaver(source.c_str()),
                              KUDeleteScreenSaver(source.c_str())}));
  expectSelfInstallRefused(dir);
}

#else
TEST_F(Shell, ScreenSaversGoToTheWindowsFolder) {
  char windows[MAX_PATH];
  GetWindowsDirectoryA(windows, MAX_PATH);
  EXPECT_EQ(windows, folder([](HWND, char* out) { return KUGetScreenSaverDirectory(out); }));
  // Installing a screen saver writes into the Windows folder itself: done only
  // under Wine, whose Windows folder is the test run's own private prefix.
  if (GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version") != nullptr)
    expectSelfInstallRefused(windows);
}
#endif

}  // namespace
