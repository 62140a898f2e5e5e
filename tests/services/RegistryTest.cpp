// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "KRegistry.h"
#include "OsRegistry.h"
#include "ServicesTestSupport.h"

#if !defined(_WIN32)
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace {

const char* const kSettings = "Software\\kaldo3d\\Kaldo\\CurrentVersion";
const char* const kTest = "HKEY_CURRENT_USER\\Software\\kaldo3d\\KUtilTest";

std::string readSetting(const char* name) {
  char out[261];
  return KUGetRegText(HKEY_CURRENT_USER, kSettings, name, out) ? out : "<absent>";
}

class Registry : public ::testing::Test {
 protected:
  kutil::test::RegistrySandbox m_sandbox;
};

TEST_F(Registry, NumericSettingsAreDecimalTextUnderTheirExactNames) {
  struct U {
    int (*set)(unsigned int);
    int (*get)(unsigned int*);
    const char* name;
  };
  const U unsignedOnes[] = {
      {KUSetRegHintNumber, KUGetRegHintNumber, "HintNumber"},
      {KUSetRegMainTimer, KUGetRegMainTimer, "MainTimer"},
      {KUSetRegJoystickActive, KUGetRegJoystickActive, "JoystickActive"},
      {KUSetRegTitleTips, KUGetRegTitleTips, "TitleTips"},
      {KUSetRegUseHardware, KUGetRegUseHardware, "TryHardware"},
      {KUSetRegAutosave, KUGetRegAutosave, "Autosave"},
      {KUSetRegAutoWallPaper, KUGetRegAutoWallPaper, "AutoWallPaper"},
      {KUSetRegBackgroundRunning, KUGetRegBackgroundRunning, "Background"},
      {KUSetRegDisableDisplayChange, KUGetRegDisableDisplayChange, "DisableDisplayChange"},
      {KUSetRegAnimationClickDelay, KUGetRegAnimationClickDelay, "AnimationDelay"}};
  unsigned int seed = 7;
  for (const auto& s : unsignedOnes) {
    SCOPED_TRACE(s.name);
    unsigned int got = 12345;
    EXPECT_EQ(0, s.get(&got));
    EXPECT_EQ(12345u, got);
    ASSERT_EQ(1, s.set(seed));
    EXPECT_EQ(std::to_string(seed), readSetting(s.name));
    EXPECT_EQ(1, s.get(&got));
    EXPECT_EQ(seed, got);
    seed += 11;
  }
  struct S {
    int (*set)(int);
    int (*get)(int*);
    const char* name;
  };
  const S signedOnes[] = {{KUSetRegResolution, KUGetRegResolution, "Resolution"},
                          {KUSetRegShimmer, KUGetRegShimmer, "Shimmer"},
                          {KUSetRegSkyResolution, KUGetRegSkyResolution, "SkyResolution"},
                          {KUSetRegRenderHeight, KUGetRegRenderHeight, "RenderHeight"},
                          {KUSetRegRenderWidth, KUGetRegRenderWidth, "RenderWidth"}};
  for (const auto& s : signedOnes) {
    SCOPED_TRACE(s.name);
    int got = 99;
    ASSERT_EQ(1, s.set(-42));
    EXPECT_EQ("-42", readSetting(s.name));
    EXPECT_EQ(1, s.get(&got));
    EXPECT_EQ(-42, got);
  }
  // An unsigned setting is printed with "%d" as well.
  ASSERT_EQ(1, KUSetRegHintNumber(4294967295u));
  EXPECT_EQ("-1", readSetting("HintNumber"));
}

TEST_F(Registry, NumbersFollowTheLeadingCharacterRuleAndOnlyTextIsRead) {
  int value = 5;
  const struct {
    const char* text;
    int ok, value;
  } rows[] = {{" 640", 0, 5}, {"800x600", 1, 800}, {"", 0, 800}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    ASSERT_EQ(1, KUSetRegText(HKEY_CURRENT_USER, kSettings, "Resolution", row.text));
    EXPECT_EQ(row.ok, KUGetRegResolution(&value));
    EXPECT_EQ(row.value, value);
  }
  namespace pf = kutil::platform;
  HKEY key = nullptr;
  ASSERT_EQ(pf::kRegOk, pf::regCreateKey(HKEY_CURRENT_USER, kSettings, &key));
  const unsigned char number[4] = {1, 0, 0, 0};
  ASSERT_EQ(pf::kRegOk, pf::regSetValue(key, "Autosave", pf::kRegDword, number, 4));
  pf::regCloseKey(key);
  unsigned int autosave = 77;
  char text[261] = "keep";
  EXPECT_EQ(0, KUGetRegText(HKEY_CURRENT_USER, kSettings, "Autosave", text));
  EXPECT_STREQ("keep", text);
  EXPECT_EQ(0, KUGetRegAutosave(&autosave));
  EXPECT_EQ(77u, autosave);
  EXPECT_EQ(0, KUGetRegText(HKEY_CURRENT_USER, nullptr, "Autosave", text));
  EXPECT_EQ(0, KUSetRegText(HKEY_CURRENT_USER, kSettings, "Autosave", nullptr));
}

TEST_F(Registry, TextSettingsKeepTheirNamesAndFitTheReadBuffer) {
  char out[300];
  ASSERT_EQ(1, KUSetRegGraphics("Direct3D HAL"));
  EXPECT_EQ("Direct3D HAL", readSetting("GLibrary"));
  // 261 characters plus the terminator no longer fit the 261-byte read.
  ASSERT_EQ(1, KUSetRegSharedMemory(std::string(261, 'n').c_str()));
  std::strcpy(out, "old");
  EXPECT_EQ(0, KUGetRegSharedMemory(out));
  EXPECT_STREQ("old", out);

  // The build number lives under the machine's installation key, whatever its case.
  ASSERT_EQ(1, KUSetRegBuildNumber(401));
  ASSERT_EQ(1,
            KUGetRegText(HKEY_LOCAL_MACHINE, "Software\\Kaldo3D\\kaldo\\currentversion", "BuildNumber", out));
  EXPECT_STREQ("401", out);
  EXPECT_EQ(0, KUGetRegText(HKEY_CURRENT_USER, kSettings, "BuildNumber", out));
}

TEST_F(Registry, DeleteKeyNeedsAnExactRootNameAndClearsOneLevel) {
  ASSERT_EQ(1, KUSetRegText(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest\\A", "v", "1"));
  ASSERT_EQ(1, KUSetRegText(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest\\B", "v", "2"));
  for (const char* bad :
       {"HKEY_CURRENT_USER\\", "HKEY_CURRENT_USER", "hkey_current_user\\Software\\kaldo3d\\KUtilTest\\B",
        "HKEY_NOWHERE\\Software\\kaldo3d\\KUtilTest\\B"}) {
    EXPECT_EQ(0, KURegDeleteKey(bad)) << bad;
  }
  EXPECT_EQ(0, KURegDeleteKey(nullptr));
  EXPECT_EQ(1, KUIsRegKeyReadable(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest\\B"));
#if defined(_WIN32)
  // Windows rejects the stale handle, so the clearing loop stops at once and
  // a key with sub-keys stays.
  EXPECT_EQ(0, KURegDeleteKey(kTest));
  EXPECT_EQ(1, KUIsRegKeyReadable(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest\\A"));
#else
  EXPECT_EQ(1, KURegDeleteFirstSubSubKey(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest"));
  EXPECT_EQ(0, KUIsRegKeyReadable(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest\\A"));
  EXPECT_EQ(1, KUIsRegKeyReadable(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest\\B"));
  EXPECT_EQ(1, KURegDeleteKey(kTest));
  EXPECT_EQ(0, KUIsRegKeyReadable(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest"));
  // A grandchild blocks the removal of its parent, and so of the key itself.
  ASSERT_EQ(1, KUSetRegText(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest\\A\\Deep", "v", "3"));
  EXPECT_EQ(0, KURegDeleteKey(kTest));
  EXPECT_EQ(1, KUIsRegKeyReadable(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest\\A\\Deep"));
#endif
}

#if !defined(_WIN32)
// Writers add distinct values and fight over one shared value: every distinct
// value must arrive and the shared one must always be some writer's whole text.
TEST_F(Registry, ConcurrentProcessesLoseNoUpdateAndSeeNoHalfValue) {
  constexpr int kWriters = 4;
  constexpr int kValuesEach = 25;
  auto name = [](int w, int n) { return "W" + std::to_string(w) + "_" + std::to_string(n); };
  auto whole = [](const std::string& s) { return s.size() == 200 && std::string(200, s[0]) == s; };
  ASSERT_EQ(1, KUSetRegText(HKEY_CURRENT_USER, kSettings, "Shared", std::string(200, 'a').c_str()));
  std::vector<pid_t> children;
  for (int w = 0; w < kWriters; ++w) {
    const pid_t pid = fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
      int failures = 0;
      const std::string mine(200, static_cast<char>('a' + w));
      for (int n = 0; n < kValuesEach; ++n) {
        failures += !KUSetRegText(HKEY_CURRENT_USER, kSettings, name(w, n).c_str(), name(w, n).c_str());
        failures += !KUSetRegText(HKEY_CURRENT_USER, kSettings, "Shared", mine.c_str());
        failures += !whole(readSetting("Shared"));
      }
      _exit(failures == 0 ? 0 : 1);
    }
    children.push_back(pid);
  }
  for (pid_t pid : children) {
    int status = 0;
    ASSERT_EQ(pid, waitpid(pid, &status, 0));
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
  }
  for (int w = 0; w < kWriters; ++w) {
    for (int n = 0; n < kValuesEach; ++n) EXPECT_EQ(name(w, n), readSetting(name(w, n).c_str()));
  }
  EXPECT_TRUE(whole(readSetting("Shared")));
}

TEST_F(Registry, MachineStoreThatCannotBeWrittenRefusesWrites) {
  // A store folder that cannot be created stands for a machine store without write rights.
  setenv("KUTIL_REGISTRY_DIR", "/proc/kutil-no-such-dir", 1);
  EXPECT_EQ(0, KUSetRegBuildNumber(5));
  unsigned int build = 9;
  EXPECT_EQ(0, KUGetRegBuildNumber(&build));
  EXPECT_EQ(9u, build);
}
#endif

}  // namespace
