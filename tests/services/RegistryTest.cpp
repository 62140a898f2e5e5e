// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "KRegistry.h"
#include "ServicesTestSupport.h"

namespace {

using kutil::test::written;

const char* const kSettings = "Software\\kaldo3d\\Kaldo\\CurrentVersion";
const char* const kTest = "HKEY_CURRENT_USER\\Software\\kaldo3d\\KUtilTest";

// A value's text as KUGetRegText reads it, "<absent>" when it fails.
std::string readSetting(const char* name, HKEY root = HKEY_CURRENT_USER, const char* key = kSettings) {
  const std::string got = written([&](char* out) { return KUGetRegText(root, key, name, out); });
  return got == "0 -" ? "<absent>" : got.substr(2);
}

bool readable(const std::string& key) { return KUIsRegKeyReadable(HKEY_CURRENT_USER, key.c_str()) == 1; }

class Registry : public ::testing::Test {
 protected:
  kutil::test::RegistrySandbox m_sandbox;
};

// Absent first (0, output kept: the library has no defaults), then stored as
// "%d" text under its exact name and read back.
template <typename Set, typename Get, typename T>
void expectRoundTrip(Set set, Get get, const char* name, T value, const std::string& text) {
  SCOPED_TRACE(name);
  T got = T(12345);
  EXPECT_EQ(0, get(&got));
  EXPECT_EQ(T(12345), got);
  ASSERT_EQ(1, set(value));
  EXPECT_EQ(text, readSetting(name));
  EXPECT_EQ(1, get(&got));
  EXPECT_EQ(value, got);
}

TEST_F(Registry, EverySettingIsDecimalTextUnderItsExactName) {
  expectRoundTrip(KUSetRegHintNumber, KUGetRegHintNumber, "HintNumber", 7u, "7");
  expectRoundTrip(KUSetRegMainTimer, KUGetRegMainTimer, "MainTimer", 18u, "18");
  expectRoundTrip(KUSetRegJoystickActive, KUGetRegJoystickActive, "JoystickActive", 29u, "29");
  expectRoundTrip(KUSetRegTitleTips, KUGetRegTitleTips, "TitleTips", 1u, "1");
  expectRoundTrip(KUSetRegUseHardware, KUGetRegUseHardware, "TryHardware", 2u, "2");
  expectRoundTrip(KUSetRegAutosave, KUGetRegAutosave, "Autosave", 3u, "3");
  expectRoundTrip(KUSetRegAutoWallPaper, KUGetRegAutoWallPaper, "AutoWallPaper", 4u, "4");
  expectRoundTrip(KUSetRegBackgroundRunning, KUGetRegBackgroundRunning, "Background", 5u, "5");
  expectRoundTrip(KUSetRegDisableDisplayChange, KUGetRegDisableDisplayChange, "DisableDisplayChange", 6u,
                  "6");
  expectRoundTrip(KUSetRegAnimationClickDelay, KUGetRegAnimationClickDelay, "AnimationDelay", 250u, "250");
  expectRoundTrip(KUSetRegResolution, KUGetRegResolution, "Resolution", -42, "-42");
  expectRoundTrip(KUSetRegShimmer, KUGetRegShimmer, "Shimmer", -1, "-1");
  expectRoundTrip(KUSetRegSkyResolution, KUGetRegSkyResolution, "SkyResolution", 512, "512");
  expectRoundTrip(KUSetRegRenderHeight, KUGetRegRenderHeight, "RenderHeight", 600, "600");
  expectRoundTrip(KUSetRegRenderWidth, KUGetRegRenderWidth, "RenderWidth", 800, "800");
  ASSERT_EQ(1, KUSetRegHintNumber(4294967295u));  // printed with "%d" as well
  EXPECT_EQ("-1", readSetting("HintNumber"));
  // The build number lives under the machine's installation key, found whatever its case.
  expectRoundTrip(KUSetRegBuildNumber, KUGetRegBuildNumber, "BuildNumber", 401u, "<absent>");
  EXPECT_EQ("401",
            readSetting("BuildNumber", HKEY_LOCAL_MACHINE, "Software\\Kaldo3D\\kaldo\\currentversion"));
}

TEST_F(Registry, TextsAreReadExactlyAndOnlyWhenTheyFit) {
  const struct {
    int (*set)(const char*);
    int (*get)(char*);
    const char* name;
  } rows[] = {{KUSetRegGraphics, KUGetRegGraphics, "GLibrary"},
              {KUSetRegSharedMemory, KUGetRegSharedMemory, "SharedMemory"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ("0 -", written(row.get));
    for (const std::string& text : {std::string("Direct3D HAL"), std::string()}) {
      ASSERT_EQ(1, row.set(text.c_str()));
      EXPECT_EQ(text, readSetting(row.name));
      EXPECT_EQ("1 " + text, written(row.get));
    }
    // 261 characters and the terminator no longer fit the 261-byte read.
    ASSERT_EQ(1, row.set(std::string(261, 'n').c_str()));
    EXPECT_EQ("0 -", written(row.get));
  }
}

TEST_F(Registry, NumbersNeedALeadingDigitOrSignAndOnlyTextIsRead) {
  const struct {
    const char* text;
    int status, value;
  } rows[] = {{" 640", 0, 5}, {"800x600", 1, 800}, {"", 0, 5}, {"+7", 1, 7}, {"-12", 1, -12}, {"x1", 0, 5}};
  for (const auto& row : rows) {
    int value = 5;
    ASSERT_EQ(1, KUSetRegText(HKEY_CURRENT_USER, kSettings, "Resolution", row.text));
    EXPECT_EQ(row.status, KUGetRegResolution(&value)) << row.text;
    EXPECT_EQ(row.value, value) << row.text;
  }
}

TEST_F(Registry, DeleteKeyNeedsAnExactRootNameAndClearsOneLevel) {
  ASSERT_EQ(1, KUSetRegText(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest\\A", "v", "1"));
  ASSERT_EQ(1, KUSetRegText(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest\\B", "v", "2"));
  for (const char* bad : {"HKEY_CURRENT_USER\\", "HKEY_CURRENT_USER", "hkey_current_user\\Software\\kaldo3d",
                          "HKEY_NOWHERE\\Software\\kaldo3d\\KUtilTest\\B", "HKEY_USERS\\Software"}) {
    EXPECT_EQ(0, KURegDeleteKey(bad)) << bad;
  }
  EXPECT_TRUE(readable("Software\\kaldo3d\\KUtilTest\\B"));
  EXPECT_TRUE(readable(""));  // the root itself
  EXPECT_FALSE(readable("Software\\kaldo3d\\KUtilTest\\C"));
#if defined(_WIN32)
  // Windows rejects the stale handle, so the clearing loop stops at once and
  // a key with sub-keys stays.
  EXPECT_EQ(0, KURegDeleteKey(kTest));
  EXPECT_TRUE(readable("Software\\kaldo3d\\KUtilTest\\A"));
#else
  EXPECT_EQ(kutil::test::seq({KURegDeleteFirstSubSubKey(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest"),
                              readable("Software\\kaldo3d\\KUtilTest\\A"),
                              readable("Software\\kaldo3d\\KUtilTest\\B"), KURegDeleteKey(kTest),
                              readable("Software\\kaldo3d\\KUtilTest"),
                              KURegDeleteFirstSubSubKey(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest")}),
            "1 0 1 1 0 0");
  // A grandchild blocks the removal of its parent, and so of the key itself.
  ASSERT_EQ(1, KUSetRegText(HKEY_CURRENT_USER, "Software\\kaldo3d\\KUtilTest\\A\\C", "v", "3"));
  EXPECT_EQ(0, KURegDeleteKey(kTest));
  EXPECT_TRUE(readable("Software\\kaldo3d\\KUtilTest\\A\\C"));
#endif
}

#if !defined(_WIN32)
TEST_F(Registry, StoresThatCannotBeWrittenOrReadRefuseQuietly) {
  // A store file that is no database: nothing is read or written, nothing breaks.
  kutil::test::TempDir dir;
  kutil::test::writeFile(dir.file("user.db"), std::string(4096, 'x'));
  kutil::test::ScopedEnv store("KUTIL_REGISTRY_DIR", dir.path());
  EXPECT_EQ(0, KUSetRegGraphics("x"));
  EXPECT_EQ("<absent>", readSetting("GLibrary"));
  EXPECT_FALSE(readable("Software"));
}
#endif

}  // namespace
