// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>

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
using kutil::test::fileExists;
using kutil::test::readFile;
using kutil::test::TempDir;
using kutil::test::writeFile;

const char* const kUserFolders = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";
const char* const kMachineFolders = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";

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

int lastError() {
  int code = -1;
  return KUGetError(&code) ? code : 5;
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
};

TEST_F(Shell, MissingFileLeaves106AndSuccessClearsTheError) {
  TempDir dir;
  EXPECT_EQ(0, KURawRunSysCmd(nullptr, "open", dir.file("no-such-file.txt").c_str(), nullptr, nullptr));
  EXPECT_EQ(106, lastError());
#if defined(_WIN32)
  char system[MAX_PATH];
  GetSystemDirectoryA(system, MAX_PATH);
  const std::string program = std::string(system) + "\\cmd.exe";
  EXPECT_EQ(1, KURawRunSysCmd(nullptr, "open", program.c_str(), "/c exit 0", nullptr));
#else
  EXPECT_EQ(1, KURawRunSysCmd(nullptr, "open", "/bin/true", "-x", dir.path().c_str()));
#endif
  int code = 0;
  EXPECT_EQ(0, KUGetError(&code));
}

#if !defined(_WIN32)
class ScopedEnv {
 public:
  ScopedEnv(const char* name, const std::string& value) : m_name(name) {
    const char* old = std::getenv(name);
    m_had = old != nullptr;
    if (old) m_old = old;
    setenv(name, value.c_str(), 1);
  }
  ~ScopedEnv() { m_had ? setenv(m_name.c_str(), m_old.c_str(), 1) : unsetenv(m_name.c_str()); }

 private:
  std::string m_name, m_old;
  bool m_had = false;
};

TEST_F(Shell, FailuresMapOntoTheShellTable) {
  TempDir dir;
  writeFile(dir.file("doc.txt"), "text");
  // An executable that is no program is the bad-format result, which falls into 80.
  writeFile(dir.file("bad.bin"), std::string("\x01\x02\x03junk", 7));
  fs::permissions(dir.file("bad.bin"), fs::perms::owner_all);
  const struct {
    const char* verb;
    std::string file;
    const char* dir;
    int error;
  } rows[] = {{"open", dir.file("gone/x.txt"), nullptr, 109},
              {"open", "/bin/true", "/proc/kutil-gone", 109},
              {"print", dir.file("doc.txt"), nullptr, 107},
              {"open", dir.file("bad.bin"), nullptr, 80}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.file);
    EXPECT_EQ(0, KURawRunSysCmd(nullptr, row.verb, row.file.c_str(), nullptr, row.dir));
    EXPECT_EQ(row.error, lastError());
  }
}

// A stand-in opener on PATH records what it was asked to open.
TEST_F(Shell, DocumentsAndAddressesGoToTheDesktopOpener) {
  TempDir bin;
  const std::string log = bin.file("opened.txt");
  writeFile(bin.file("xdg-open"), "#!/bin/sh\necho \"$1\" >> '" + log + "'\n");
  fs::permissions(bin.file("xdg-open"), fs::perms::owner_all);
  writeFile(bin.file("notes.txt"), "text");
  {
    ScopedEnv path("PATH", bin.path());
    EXPECT_EQ(1, KULaunchKALDOWebSite(nullptr));
    EXPECT_EQ(1, KULaunchKALDOWebSiteLatest(nullptr));
    EXPECT_EQ(1, KUEmailKALDOSupport(nullptr));
    EXPECT_EQ(1, KULaunchKALDOTargetURL(nullptr, "https://www.example.com/kaldo3d/faq"));
    EXPECT_EQ(1, KURawRunSysCmd(nullptr, nullptr, "notes.txt", nullptr, bin.path().c_str()));
    for (int i = 0; i < 500 && kutil::test::readLines(log).size() < 5; ++i) usleep(10000);
    const auto opened = kutil::test::readLines(log);
    // Each launch is its own process, so the order is not fixed.
    EXPECT_EQ((std::set<std::string>{"https://www.example.com/kaldo3d",
                                     "https://www.example.com/kaldo3d/latest", "mailto:support@example.com",
                                     "https://www.example.com/kaldo3d/faq", bin.file("notes.txt")}),
              std::set<std::string>(opened.begin(), opened.end()));
  }
  ScopedEnv noOpener("PATH", bin.file("empty"));
  EXPECT_EQ(0, KULaunchKALDOWebSite(nullptr));
  EXPECT_EQ(107, lastError());
}

class ShellFolders : public Shell {
 protected:
  ShellFolders()
      : m_home("HOME", m_dir.path()),
        m_config("XDG_CONFIG_HOME", m_dir.file("config")),
        m_data("XDG_DATA_HOME", m_dir.file("data")),
        m_dataDirs("XDG_DATA_DIRS", m_dir.file("nowhere") + ":" + m_dir.file("system")) {}
  std::string make(const std::string& relative) {
    fs::create_directories(m_dir.file(relative));
    return m_dir.file(relative);
  }
  TempDir m_dir;
  ScopedEnv m_home, m_config, m_data, m_dataDirs;
};

TEST_F(ShellFolders, RegistryComesFirstThenTheUserDirectoriesAndFoundPathsAreCached) {
  char out[264] = "untouched";
  EXPECT_EQ(0, KUGetWinUserDesktopDir(nullptr, out));  // ~/Desktop does not exist
  EXPECT_STREQ("untouched", out);
  const std::string desk = make("Schreibtisch");
  make("config");
  writeFile(m_dir.file("config/user-dirs.dirs"), "# comment\nXDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"\n");
  ASSERT_EQ(1, KUGetWinUserDesktopDir(nullptr, out));  // the failed lookup was not cached
  EXPECT_EQ(desk, out);
  kutil::detail::resetSpecialFolderCaches();
  ASSERT_EQ(1, KUSetRegText(HKEY_CURRENT_USER, kUserFolders, "Desktop", "/from/registry"));
  ASSERT_EQ(1, KUGetWinUserDesktopDir(nullptr, out));
  EXPECT_STREQ("/from/registry", out);
  ASSERT_EQ(1, KUSetRegText(HKEY_CURRENT_USER, kUserFolders, "Desktop", "/changed"));
  ASSERT_EQ(1, KUGetWinUserDesktopDir(nullptr, out));
  EXPECT_STREQ("/from/registry", out);

  EXPECT_EQ(0, KUGetWinUserSendToDir(nullptr, out));
  const struct {
    int (*get)(HWND, char*);
    std::string expected;
  } rows[] = {{KUGetUserStartupMenuDir, make("config/autostart")},
              {KUGetWinUserRecentDir, make("data/RecentDocuments")},
              {KUGetWinUserSendToDir, make("data/kaldo3d/SendTo")}};
  for (const auto& row : rows) {
    ASSERT_EQ(1, row.get(nullptr, out));
    EXPECT_EQ(row.expected, out);
  }
}

TEST_F(ShellFolders, CommonStartMenuFallsBackToTheUsersOwn) {
  const std::string system = make("system/applications");
  ASSERT_EQ(1, KUSetRegText(HKEY_CURRENT_USER, kUserFolders, "Start Menu", "/user/start"));
  char out[264];
  ASSERT_EQ(1, KUGetCommonStartMenuDir(nullptr, out));
  EXPECT_STREQ("/user/start", out);
  kutil::detail::resetSpecialFolderCaches();
  ASSERT_EQ(1, KUSetRegText(HKEY_LOCAL_MACHINE, kMachineFolders, "Common Start Menu", "/common/start"));
  ASSERT_EQ(1, KUGetCommonStartMenuDir(nullptr, out));
  EXPECT_STREQ("/common/start", out);
  // With neither value the machine-wide applications folder is found.
  kutil::detail::resetSpecialFolderCaches();
  ASSERT_EQ(1, KURegDeleteKey((std::string("HKEY_LOCAL_MACHINE\\") + kMachineFolders).c_str()));
  ASSERT_EQ(1, KURegDeleteKey((std::string("HKEY_CURRENT_USER\\") + kUserFolders).c_str()));
  ASSERT_EQ(1, KUGetCommonStartMenuDir(nullptr, out));
  EXPECT_EQ(system, out);
}

TEST_F(ShellFolders, WritePermissionProbesLeaveNothingBehind) {
  const std::string menu = make("menu");
  ASSERT_EQ(1, KUSetRegText(HKEY_LOCAL_MACHINE, kMachineFolders, "Common Start Menu", menu.c_str()));
  EXPECT_EQ(1, KUHasStartMenuWritePerms(nullptr));
  EXPECT_TRUE(fs::is_empty(menu));
  kutil::detail::resetSpecialFolderCaches();
  ASSERT_EQ(
      1, KUSetRegText(HKEY_LOCAL_MACHINE, kMachineFolders, "Common Start Menu", m_dir.file("gone").c_str()));
  EXPECT_EQ(0, KUHasStartMenuWritePerms(nullptr));
  EXPECT_EQ(1, KUHasRegistryWritePerms());
  EXPECT_EQ(0, KUIsRegKeyReadable(HKEY_LOCAL_MACHINE, "SOFTWARE\\MorvaneTest"));
  ScopedEnv readOnly("KUTIL_REGISTRY_DIR", "/proc/kutil-no-such-dir");
  EXPECT_EQ(0, KUHasRegistryWritePerms());
}

TEST_F(ShellFolders, ScreenSaversAreCopiedReplacedAndDeleted) {
  char dir[261];
  ASSERT_EQ(1, KUGetScreenSaverDirectory(dir));
  EXPECT_EQ(m_dir.file("data/kaldo3d/screensavers"), dir);
  const std::string source = make("downloads") + "/Stars.scr";
  writeFile(source, "old");
  EXPECT_EQ(0, KUIsScreenSaver(source.c_str()));
  ASSERT_EQ(1, KUSetScreenSaver(source.c_str()));
  writeFile(source, "new");
  ASSERT_EQ(1, KUSetScreenSaver(source.c_str()));
  EXPECT_EQ("new", readFile(std::string(dir) + "/Stars.scr"));
  // Only the last path element counts, whatever the separators.
  EXPECT_EQ(1, KUIsScreenSaver("D:\\downloads\\Stars.scr"));
  EXPECT_EQ(0, KUSetScreenSaver("D:\\downloads\\Missing.scr"));
  EXPECT_EQ(1, KUDeleteScreenSaver("Stars.scr"));
  EXPECT_EQ(0, KUIsScreenSaver(source.c_str()));
  EXPECT_EQ(0, KUDeleteScreenSaver(source.c_str()));
  EXPECT_EQ(0, KUSetScreenSaver(""));
}

TEST_F(ShellFolders, AScreenSaverIsNeverCopiedOntoItself) {
  char dir[261];
  ASSERT_EQ(1, KUGetScreenSaverDirectory(dir));
  expectSelfInstallRefused(dir);
}

#else
TEST_F(Shell, FoldersComeFromTheShellAndTheProbeLeavesNoKey) {
  KUHasRegistryWritePerms();
  EXPECT_EQ(0, KUIsRegKeyReadable(HKEY_LOCAL_MACHINE, "SOFTWARE\\MorvaneTest"));
  char first[264] = "";
  ASSERT_EQ(1, KUGetWinUserDesktopDir(nullptr, first));
  EXPECT_NE('\0', first[0]);
  char dir[261];
  char windows[MAX_PATH];
  GetWindowsDirectoryA(windows, MAX_PATH);
  ASSERT_EQ(1, KUGetScreenSaverDirectory(dir));
  EXPECT_STREQ(windows, dir);
  // Installing a screen saver writes into the Windows folder itself: done only
  // under Wine, whose Windows folder is the test run's own private prefix.
  EXPECT_EQ(0, KUIsScreenSaver("D:\\downloads\\kutil-no-such-saver.scr"));
  if (GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version") != nullptr)
    expectSelfInstallRefused(dir);
}
#endif

TEST_F(Shell, SystemVersion) {
  int isNT = -1, major = -1, minor = -1, build = -1;
  char servicePack[128];
  ASSERT_EQ(1, KUCheckForNT(&isNT, &major, &minor, &build, servicePack));
  EXPECT_GT(major, 0);
  EXPECT_EQ(0, KUCheckForNT(nullptr, &major, &minor, &build, servicePack));
#if !defined(_WIN32)
  EXPECT_EQ(1, isNT);
#endif
}

}  // namespace
