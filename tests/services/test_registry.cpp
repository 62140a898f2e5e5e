// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "KRegistry.h"
#include "Registry.h"
#include "ServicesTestEnv.h"

#if !defined(_WIN32)
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace {

const char* const kSettings = "Software\\kaldo3d\\Kaldo\\CurrentVersion";

std::string readSetting(const char* name) {
  char out[261] = "untouched";
  if (!KUGetRegText(HKEY_CURRENT_USER, kSettings, name, out)) return "<absent>";
  return out;
}

class Registry : public ::testing::Test {
 protected:
  kutil::test::RegistrySandbox m_sandbox;
};

struct UnsignedSetting {
  int (*set)(unsigned int);
  int (*get)(unsigned int*);
  const char* name;
};

struct SignedSetting {
  int (*set)(int);
  int (*get)(int*);
  const char* name;
};

TEST_F(Registry, NumericSettingsAreDecimalTextUnderTheirExactNames) {
  const UnsignedSetting unsignedOnes[] = {
      {KUSetRegHintNumber, KUGetRegHintNumber, "HintNumber"},
      {KUSetRegMainTimer, KUGetRegMainTimer, "MainTimer"},
      {KUSetRegJoystickActive, KUGetRegJoystickActive, "JoystickActive"},
      {KUSetRegTitleTips, KUGetRegTitleTips, "TitleTips"},
      {KUSetRegUseHardware, KUGetRegUseHardware, "TryHardware"},
      {KUSetRegAutosave, KUGetRegAutosave, "Autosave"},
      {KUSetRegAutoWallPaper, KUGetRegAutoWallPaper, "AutoWallPaper"},
      {KUSetRegBackgroundRunning, KUGetRegBackgroundRunning, "Background"},
      {KUSetRegDisableDisplayChange, KUGetRegDisableDisplayChange, "DisableDisplayChange"},
      {KUSetRegAnimationClickDelay, KUGetRegAnimationClickDelay, "AnimationDelay"},
  };
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
  const SignedSetting signedOnes[] = {
      {KUSetRegResolution, KUGetRegResolution, "Resolution"},
      {KUSetRegSkyResolution, KUGetRegSkyResolution, "SkyResolution"},
      {KUSetRegShimmer, KUGetRegShimmer, "Shimmer"},
      {KUSetRegRenderHeight, KUGetRegRenderHeight, "RenderHeight"},
      {KUSetRegRenderWidth, KUGetRegRenderWidth, "RenderWidth"},
  };
  for (const auto& s : signedOnes) {
    SCOPED_TRACE(s.name);
    int got = 99;
    EXPECT_EQ(0, s.get(&got));
    EXPECT_EQ(99, got);
    ASSERT_EQ(1, s.set(-42));
    EXPECT_EQ("-42", readSetting(s.name));
    EXPECT_EQ(1, s.get(&got));
    EXPECT_EQ(-42, got);
  }
  // An unsigned setting is printed with "%d" as well.
  ASSERT_EQ(1, KUSetRegHintNumber(4294967295u));
  EXPECT_EQ("-1", readSetting("HintNumber"));
}

TEST_F(Registry, NumbersFollowTheLeadingCharacterRule) {
  int value = 5;
  ASSERT_EQ(1, KUSetRegText(HKEY_CURRENT_USER, kSettings, "Resolution", " 640"));
  EXPECT_EQ(0, KUGetRegResolution(&value));
  EXPECT_EQ(5, value);
  ASSERT_EQ(1, KUSetRegText(HKEY_CURRENT_USER, kSettings, "Resolution", "800x600"));
  EXPECT_EQ(1, KUGetRegResolution(&value));
  EXPECT_EQ(800, value);
  ASSERT_EQ(1, KUSetRegText(HKEY_CURRENT_USER, kSettings, "Resolution", ""));
  EXPECT_EQ(0, KUGetRegResolution(&value));
  EXPECT_EQ(800, value);
}

TEST_F(Registry, OnlyTextValuesAreRead) {
  namespace pf = kutil::platform;
  HKEY key = nullptr;
  ASSERT_EQ(pf::kRegOk, pf::regCreateKey(HKEY_CURRENT_USER, kSettings, &key));
  const unsigned char number[4] = {1, 0, 0, 0};
  ASSERT_EQ(pf::kRegOk, pf::regSetValue(key, "Autosave", pf::kRegDword, number, 4));
  pf::regCloseKey(key);
  unsigned int value = 77;
  char text[261] = "keep";
  EXPECT_EQ(0, KUGetRegText(HKEY_CURRENT_USER, kSettings, "Autosave", text));
  EXPECT_STREQ("keep", text);
  EXPECT_EQ(0, KUGetRegAutosave(&value));
  EXPECT_EQ(77u, value);
  EXPECT_EQ(0, KUGetRegText(HKEY_CURRENT_USER, "Software\\kaldo3d\\NoSuchKey", "Autosave", text));
  EXPECT_EQ(0, KUGetRegText(HKEY_CURRENT_USER, nullptr, "Autosave", text));
  EXPECT_EQ(0, KUSetRegText(HKEY_CURRENT_USER, kSettings, "Autosave", nullptr));
}

TEST_F(Registry, TextSettingsAndTheirLimits) {
  char out[300];
  EXPECT_EQ(0, KUGetRegGraphics(out));
  ASSERT_EQ(1, KUSetRegGraphics("Direct3D HAL"));
  EXPECT_EQ(1, KUGetRegGraphics(out));
  EXPECT_STREQ("Direct3D HAL", out);
  EXPECT_EQ("Direct3D HAL", readSetting("GLibrary"));

  const std::string longest(260, 'm');
  ASSERT_EQ(1, KUSetRegSharedMemory(longest.c_str()));
  std::memset(out, 'x', sizeof out);
  EXPECT_EQ(1, KUGetRegSharedMemory(out));
  EXPECT_EQ(longest, std::string(out));

  // 261 characters plus the terminator no longer fit the 261-byte read.
  const std::string tooLong(261, 'n');
  ASSERT_EQ(1, KUSetRegSharedMemory(tooLong.c_str()));
  std::strcpy(out, "old");
  EXPECT_EQ(0, KUGetRegSharedMemory(out));
  EXPECT_STREQ("old", out);
}

TEST_F(Registry, BuildNumberLivesUnderTheInstallationKeyWhateverItsCase) {
  unsigned int build = 3;
  EXPECT_EQ(0, KUGetRegBuildNumber(&build));
  EXPECT_EQ(3u, build);
  ASSERT_EQ(1, KUSetRegBuildNumber(401));
  EXPECT_EQ(1, KUGetRegBuildNumber(&build));
  EXPECT_EQ(401u, build);
  char out[261];
  ASSERT_EQ(1, KUGetRegText(HKEY_LOCAL_MACHINE, "Software\\Kaldo3D\\kaldo\\currentversion", "BuildNumber", out));
  EXPECT_STREQ("401", out);
  EXPECT_EQ(0, KUGetRegText(HKEY_CURRENT_USER, kSettings, "BuildNumber", out));
}

TEST_F(Registry, DeleteKeyRecognisesOnlyExactRootNames) {
  ASSERT_EQ(1, KUSetRegText(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest\\B", "v", "1"));
  EXPECT_EQ(0, KURegDeleteKey("HKEY_CURRENT_USER\\"));
  EXPECT_EQ(0, KURegDeleteKey("HKEY_CURRENT_USER"));
  EXPECT_EQ(0, KURegDeleteKey("hkey_current_user\\Software\\kaldo3d\\KUtilTest\\B"));
  EXPECT_EQ(0, KURegDeleteKey("HKEY_NOWHERE\\Software\\kaldo3d\\KUtilTest\\B"));
  EXPECT_EQ(0, KURegDeleteKey(nullptr));
  EXPECT_EQ(1, KUIsRegKeyReadable(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest\\B"));
  EXPECT_EQ(1, KURegDeleteKey("HKEY_CURRENT_USER\\Software\\kaldo3d\\KUtilTest\\B"));
  EXPECT_EQ(0, KUIsRegKeyReadable(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest\\B"));
  EXPECT_EQ(0, KURegDeleteKey("HKEY_CURRENT_USER\\Software\\kaldo3d\\KUtilTest\\B"));
}

TEST_F(Registry, DeleteKeyClearsAtMostOneLevelOfSubKeys) {
  ASSERT_EQ(1, KUSetRegText(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest\\A", "v", "1"));
  ASSERT_EQ(1, KUSetRegText(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest\\B", "v", "2"));
#if defined(_WIN32)
  // Windows rejects the stale handle, so the clearing loop stops at once and
  // a key with sub-keys stays.
  EXPECT_EQ(0, KURegDeleteFirstSubSubKey(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest"));
  EXPECT_EQ(0, KURegDeleteKey("HKEY_CURRENT_USER\\Software\\kaldo3d\\KUtilTest"));
  EXPECT_EQ(1, KUIsRegKeyReadable(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest\\A"));
#else
  EXPECT_EQ(1, KURegDeleteFirstSubSubKey(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest"));
  EXPECT_EQ(0, KUIsRegKeyReadable(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest\\A"));
  EXPECT_EQ(1, KUIsRegKeyReadable(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest\\B"));
  EXPECT_EQ(1, KURegDeleteKey("HKEY_CURRENT_USER\\Software\\kaldo3d\\KUtilTest"));
  EXPECT_EQ(0, KUIsRegKeyReadable(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest"));
  EXPECT_EQ(0, KURegDeleteFirstSubSubKey(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest"));

  // A grandchild blocks the removal of its parent, and so of the key itself.
  ASSERT_EQ(1, KUSetRegText(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest\\A\\Deep", "v", "3"));
  EXPECT_EQ(0, KURegDeleteKey("HKEY_CURRENT_USER\\Software\\kaldo3d\\KUtilTest"));
  EXPECT_EQ(1, KUIsRegKeyReadable(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest\\A\\Deep"));
#endif
}

#if !defined(_WIN32)
// Several processes write distinct values and fight over one shared value;
// every distinct value must arrive and the shared one must be some writer's
// complete text.
TEST_F(Registry, ConcurrentProcessesLoseNoUpdateAndSeeNoHalfValue) {
  constexpr int kWriters = 4;
  constexpr int kValuesEach = 25;
  auto sharedText = [](int writer) { return std::string(200, static_cast<char>('a' + writer)); };
  ASSERT_EQ(1, KUSetRegText(HKEY_CURRENT_USER, kSettings, "Shared", sharedText(0).c_str()));
  std::vector<pid_t> children;
  for (int w = 0; w < kWriters; ++w) {
    const pid_t pid = fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
      int failures = 0;
      for (int n = 0; n < kValuesEach; ++n) {
        const std::string name = "W" + std::to_string(w) + "_" + std::to_string(n);
        if (!KUSetRegText(HKEY_CURRENT_USER, kSettings, name.c_str(), name.c_str())) ++failures;
        if (!KUSetRegText(HKEY_CURRENT_USER, kSettings, "Shared", sharedText(w).c_str())) ++failures;
        char seen[261];
        if (!KUGetRegText(HKEY_CURRENT_USER, kSettings, "Shared", seen)) {
          ++failures;
        } else if (std::strlen(seen) != 200 || std::string(200, seen[0]) != seen) {
          ++failures;
        }
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
    for (int n = 0; n < kValuesEach; ++n) {
      const std::string name = "W" + std::to_string(w) + "_" + std::to_string(n);
      EXPECT_EQ(name, readSetting(name.c_str()));
    }
  }
  const std::string shared = readSetting("Shared");
  ASSERT_EQ(200u, shared.size());
  EXPECT_EQ(std::string(200, shared[0]), shared);
}

TEST_F(Registry, MachineStoreThatCannotBeWrittenRefusesWrites) {
  // A store folder that cannot be created stands for a machine-wide store
  // without write rights.
  setenv("KUTIL_REGISTRY_DIR", "/proc/kutil-no-such-dir", 1);
  EXPECT_EQ(0, KUSetRegBuildNumber(5));
  unsigned int build = 9;
  EXPECT_EQ(0, KUGetRegBuildNumber(&build));
  EXPECT_EQ(9u, build);
}
#endif

}  // namespace
