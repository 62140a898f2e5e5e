// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Overlong texts, null texts and junk files against the application services:
// settings, info sheets and the log, shell helpers, sound and the splash.
// Output buffers are heap blocks of exactly the documented capacity.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "KInfo.h"
#include "KRegistry.h"
#include "KShell.h"
#include "KSound.h"
#include "KSplash.h"
#include "KText.h"
#include "Overlong.h"
#include "ServicesTestSupport.h"
#include "TestHooks.h"
#include "TestSupport.h"

#if !defined(_WIN32)
#include <cairo/cairo.h>
#endif

namespace {

using kutil::test::kLong;
using kutil::test::longText;
using kutil::test::OutBuffer;
using kutil::test::readFile;
using kutil::test::TempDir;
using kutil::test::writeFile;

const char* const kSettings = "Software\\kaldo3d\\Kaldo\\CurrentVersion";

std::string junkBytes() {
  std::string junk;
  for (int i = 0; i < 4096; ++i) junk += static_cast<char>((i * 131 + 7) & 0xff);
  junk += "\n[iid][[[]]][itx][999999999999]x\n[iid][2]12[itx][-4]\n";
  return junk;
}

// ---- Settings ----

class RegistryOverlong : public ::testing::Test {
 protected:
  kutil::test::RegistrySandbox m_sandbox;
};

TEST_F(RegistryOverlong, LongValuesNeverOverrunTheReader) {
  const std::string text = longText('v');
  KUSetRegText(HKEY_CURRENT_USER, kSettings, "Long", text.c_str());
  OutBuffer out(261);
  if (KUGetRegText(HKEY_CURRENT_USER, kSettings, "Long", out.data()) == 1) {
    EXPECT_EQ(out.str(), longText('v', out.str().size()));
    EXPECT_LE(out.str().size(), 260u);
  } else {
    EXPECT_TRUE(out.untouched());
  }

  KUSetRegGraphics(text.c_str());
  KUSetRegSharedMemory(text.c_str());
  OutBuffer graphics(261);
  OutBuffer shared(261);
  EXPECT_TRUE(KUGetRegGraphics(graphics.data()) == 1 ? graphics.terminated() : graphics.untouched());
  EXPECT_TRUE(KUGetRegSharedMemory(shared.data()) == 1 ? shared.terminated() : shared.untouched());

  // A value that exactly fills the reader's buffer comes back whole.
  ASSERT_EQ(KUSetRegGraphics(longText('g', 260).c_str()), 1);
  OutBuffer full(261);
  ASSERT_EQ(KUGetRegGraphics(full.data()), 1);
  EXPECT_EQ(full.str(), longText('g', 260));
  ASSERT_EQ(KUSetRegSharedMemory(longText('s', 260).c_str()), 1);
  OutBuffer fullShared(261);
  ASSERT_EQ(KUGetRegSharedMemory(fullShared.data()), 1);
  EXPECT_EQ(fullShared.str(), longText('s', 260));

  // A number with ten thousand digits is no crash either way.
  KUSetRegText(HKEY_CURRENT_USER, kSettings, "HintNumber", longText('9').c_str());
  unsigned int hint = 7;
  KUGetRegHintNumber(&hint);
  KUSetRegText(HKEY_CURRENT_USER, kSettings, "Resolution", ("-" + longText('9')).c_str());
  int resolution = 7;
  KUGetRegResolution(&resolution);
}

TEST_F(RegistryOverlong, LongAndNullKeyNamesFailQuietly) {
  const std::string key = "Software\\kaldo3d\\KUtilTest\\" + longText('k');
  const std::string name = longText('n');
  OutBuffer out(261);
  KUSetRegText(HKEY_CURRENT_USER, key.c_str(), "x", "y");
  KUSetRegText(HKEY_CURRENT_USER, kSettings, name.c_str(), "y");
  KUGetRegText(HKEY_CURRENT_USER, key.c_str(), "x", out.data());
  KUGetRegText(HKEY_CURRENT_USER, kSettings, name.c_str(), out.data());
  EXPECT_TRUE(out.terminated() || out.untouched());
  KUIsRegKeyReadable(HKEY_CURRENT_USER, key.c_str());
  KURegDeleteFirstSubSubKey(HKEY_CURRENT_USER, key.c_str());
  KURegDeleteKey(("HKEY_CURRENT_USER\\" + key).c_str());
  KURegDeleteKey(("HKEY_CURRENT_USER\\Software\\kaldo3d\\KUtilTest\\" + name).c_str());
  EXPECT_EQ(KURegDeleteKey(longText('H').c_str()), 0);

  EXPECT_EQ(KUGetRegText(HKEY_CURRENT_USER, nullptr, "x", out.data()), 0);
  EXPECT_EQ(KUGetRegText(HKEY_CURRENT_USER, kSettings, "x", nullptr), 0);
  EXPECT_EQ(KUSetRegText(HKEY_CURRENT_USER, nullptr, "x", "y"), 0);
  EXPECT_EQ(KUSetRegText(HKEY_CURRENT_USER, kSettings, "x", nullptr), 0);
  EXPECT_EQ(KUIsRegKeyReadable(HKEY_CURRENT_USER, nullptr), 0);
  EXPECT_EQ(KURegDeleteFirstSubSubKey(HKEY_CURRENT_USER, nullptr), 0);
  EXPECT_EQ(KURegDeleteKey(nullptr), 0);
  EXPECT_EQ(KUSetRegGraphics(nullptr), 0);
  EXPECT_EQ(KUSetRegSharedMemory(nullptr), 0);
}

// ---- Info sheets, messages and the log ----

std::string g_shown;
void recordMessage(const char*, const char* text) { g_shown = text; }

class InfoOverlong : public ::testing::Test {
 protected:
  void SetUp() override { KUSetMessageSink(recordMessage); }
  void TearDown() override {
    KUSetMessageSink(nullptr);
    KULoadStringTerminate();
  }
  TempDir m_dir;
};

TEST_F(InfoOverlong, FieldsKeepTheirCapacity) {
  CKaldoInfo info;
  ASSERT_EQ(info.KISetLogFileName(longText('l').c_str()), 1);
  OutBuffer log(261);
  ASSERT_EQ(info.KIGetLogFileName(log.data()), 1);
  EXPECT_EQ(log.str(), longText('l', 260));

  ASSERT_EQ(info.KISetComment(longText('c').c_str()), 1);
  OutBuffer comment(259);
  ASSERT_EQ(info.KIGetComment(comment.data()), 1);
  EXPECT_EQ(comment.str(), longText('c', 258));
  ASSERT_EQ(info.KICatComment(longText('d').c_str()), 1);
  OutBuffer grown(259);
  ASSERT_EQ(info.KIGetComment(grown.data()), 1);
  EXPECT_EQ(grown.str(), longText('c', 258));
  ASSERT_EQ(info.KISetComment("x"), 1);
  ASSERT_EQ(info.KICatComment(longText('d').c_str()), 1);
  OutBuffer caught(259);
  ASSERT_EQ(info.KIGetComment(caught.data()), 1);
  EXPECT_EQ(caught.str(), "x\n         " + longText('d', 258 - 11));

  EXPECT_EQ(info.KISetComment(nullptr), 1);
  OutBuffer empty(259);
  EXPECT_EQ(info.KIGetComment(empty.data()), 0);
  EXPECT_TRUE(empty.untouched());
  EXPECT_EQ(info.KICatComment(nullptr), 1);
  EXPECT_EQ(info.KISetLogFileName(nullptr), 1);
  OutBuffer none(261);
  EXPECT_EQ(info.KIGetLogFileName(none.data()), 0);
  EXPECT_TRUE(none.untouched());
}

TEST_F(InfoOverlong, LongMessageTextsAreCutOnlyWhereTheBufferIsFixed) {
  CKaldoInfo info;
  const std::string text = longText('m');
  ASSERT_EQ(info.KINewInfoSheet(text.c_str(), 42), 1);
  EXPECT_EQ(info.KINewInfoSheet(nullptr, 43), 0);
  CInfoSheet* loose = nullptr;
  EXPECT_EQ(info.KICreateInfoSheet(nullptr, 1, &loose), 0);
  EXPECT_EQ(loose, nullptr);

  info.KISetInfoMessage(42);
  OutBuffer out(261);
  ASSERT_EQ(info.KIGetInfoText(out.data()), 1);
  EXPECT_EQ(out.str(), longText('m', 260));
  const char* fetched = info.KIFetchStringForID(42);
  ASSERT_NE(fetched, nullptr);
  EXPECT_EQ(std::string(fetched), text);
  EXPECT_EQ(info.KIDisplayInfo(), 0);
  EXPECT_EQ(g_shown, text);
  EXPECT_EQ(info.KISetInfoText(longText('n')), 1);
  OutBuffer replaced(261);
  ASSERT_EQ(info.KIGetInfoText(replaced.data()), 1);
  EXPECT_EQ(replaced.str(), longText('n', 260));

  // The log takes the whole text: nothing of a message is lost there.
  const std::string logFile = m_dir.file("kaldo.log");
  info.KISetLogFileName(logFile.c_str());
  info.KISetInfoType(1);
  info.KISetComment(longText('c').c_str());
  EXPECT_EQ(info.KIFlushInfoMessage(longText('f').c_str()), 1);
  EXPECT_EQ(info.KISetInfoMessage(42), 1);
  EXPECT_EQ(info.KIFlushInfoMessage(nullptr), 1);
  const std::string logged = readFile(logFile);
  EXPECT_NE(logged.find("MESSAGE: " + longText('f')), std::string::npos);
  EXPECT_NE(logged.find("MESSAGE: " + longText('n')), std::string::npos);
  EXPECT_NE(logged.find("COMMENT: "), std::string::npos);
  info.KISetInfoType(0);

  const std::string saved = m_dir.file("saved.kiq");
  EXPECT_EQ(info.KISaveFile(saved.c_str()), 1);
  EXPECT_EQ(info.KISaveFile(longText('p').c_str()), 0);
  EXPECT_EQ(info.KISaveFile(nullptr), 0);
  EXPECT_EQ(info.KIWriteAllSheets(nullptr), 0);
  EXPECT_EQ(info.KIWriteSingleSheet(nullptr, nullptr), 0);
}

TEST_F(InfoOverlong, SheetFilesWithLongLinesAndJunkLoadSafely) {
  const std::string file = m_dir.file("lang.kiq");
  ASSERT_TRUE(writeFile(file, "[iid][1]1[itx][10000]" + longText('t') + "\n[iid][10000]" + longText('9') +
                                  "[itx][2]ok\n[iid][1]3[itx][128]" + longText('u', 128) + "\n"));
  CKaldoInfo info;
  ASSERT_EQ(info.KILoadInfoSheets(file.c_str()), 1);
  for (unsigned int id : {1u, 3u}) {
    info.KISetInfoMessage(id);
    OutBuffer out(261);
    ASSERT_EQ(info.KIGetInfoText(out.data()), 1) << id;
    EXPECT_LE(out.str().size(), 128u);
  }

  const std::string junk = m_dir.file("junk.kiq");
  ASSERT_TRUE(writeFile(junk, junkBytes()));
  CKaldoInfo other;
  other.KISetComment("config");
  other.KIConfigForLanguage(junk.c_str());
  for (int step = 0; step < 8 && other.KISetToNext(); ++step) {
    OutBuffer out(261);
    other.KIGetInfoText(out.data());
    EXPECT_TRUE(out.terminated());
  }
  const std::string missing = "/" + longText('m') + ".kiq";
  EXPECT_EQ(other.KILoadInfoSheets(missing.c_str()), 0);
  EXPECT_EQ(other.KILoadInfoSheets(nullptr), 0);
  EXPECT_EQ(other.KIConfigForLanguage(missing.c_str()), 0);
  EXPECT_EQ(other.KIConfigForLanguage(nullptr), 0);

  // The string table hands texts into buffers of exactly the size asked for.
  EXPECT_EQ(KULoadStringInitialise(missing.c_str()), 0);
  EXPECT_EQ(KULoadStringInitialise(nullptr), 0);
  ASSERT_EQ(KULoadStringInitialise(file.c_str()), 1);
  for (int size = 1; size <= 130; ++size) {
    OutBuffer out(static_cast<std::size_t>(size));
    ASSERT_EQ(KULoadString(3, out.data(), size), 1);
    EXPECT_EQ(out.str(), longText('u', static_cast<std::size_t>(size - 1 < 128 ? size - 1 : 128)));
  }
  OutBuffer absent(4);
  EXPECT_EQ(KULoadString(99, absent.data(), 4), 0);
  EXPECT_EQ(absent.str(), "");
  OutBuffer zero(1);
  EXPECT_EQ(KULoadString(3, zero.data(), 0), 0);
  EXPECT_TRUE(zero.untouched());
}

// ---- Shell helpers ----

#if !defined(_WIN32)
class ScopedEnv {
 public:
  ScopedEnv(const char* name, const std::string& value) : m_name(name) {
    const char* old = std::getenv(name);
    m_had = old != nullptr;
    if (old) m_old = old;
    setenv(name, value.c_str(), 1);
  }
  ~ScopedEnv() {
    if (m_had) {
      setenv(m_name.c_str(), m_old.c_str(), 1);
    } else {
      unsetenv(m_name.c_str());
    }
  }
  ScopedEnv(const ScopedEnv&) = delete;
  ScopedEnv& operator=(const ScopedEnv&) = delete;

 private:
  std::string m_name;
  std::string m_old;
  bool m_had = false;
};

TEST(ShellOverlong, LongNamesNeverStartAnythingOrOverrun) {
  TempDir dir;
  kutil::test::RegistrySandbox registry;
  ScopedEnv data("XDG_DATA_HOME", dir.file("data"));
  ScopedEnv config("XDG_CONFIG_HOME", dir.file("config"));

  const std::string missing = dir.path() + "/" + longText('f');
  EXPECT_EQ(KURawRunSysCmd(nullptr, "open", missing.c_str(), longText('p').c_str(), nullptr), 0);
  EXPECT_EQ(KURawRunSysCmd(nullptr, longText('v').c_str(), missing.c_str(), nullptr, nullptr), 0);
  EXPECT_EQ(KURawRunSysCmd(nullptr, "open", missing.c_str(), nullptr, longText('d').c_str()), 0);
  EXPECT_EQ(KURawRunSysCmd(nullptr, nullptr, nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(KULaunchKALDOTargetURL(nullptr, missing.c_str()), 0);
  EXPECT_EQ(KULaunchKALDOTargetURL(nullptr, nullptr), 0);
  KUSetError(5);

  ITEMIDLIST* list = nullptr;
  if (KUPath2ItemList(missing.c_str(), &list) == 1) KUFreeItemList(list);
  EXPECT_EQ(KUPath2ItemList(nullptr, &list), 0);

  // A data folder too long for a path gives no screen-saver folder.
  {
    ScopedEnv deep("XDG_DATA_HOME", dir.path() + "/" + longText('x', 300));
    OutBuffer out(261);
    EXPECT_EQ(KUGetScreenSaverDirectory(out.data()), 0);
    EXPECT_TRUE(out.untouched());
  }
  OutBuffer saverDir(261);
  ASSERT_EQ(KUGetScreenSaverDirectory(saverDir.data()), 1);
  EXPECT_TRUE(saverDir.terminated());
}
#endif

TEST(ShellOverlong, ScreenSaversAndVersionWithLongNames) {
  TempDir dir;
#if !defined(_WIN32)
  ScopedEnv data("XDG_DATA_HOME", dir.file("data"));
#endif
  const std::string missing = dir.path() + "/" + longText('s') + ".scr";
  EXPECT_EQ(KUSetScreenSaver(missing.c_str()), 0);
  EXPECT_EQ(KUIsScreenSaver(missing.c_str()), 0);
  EXPECT_EQ(KUDeleteScreenSaver(missing.c_str()), 0);
  EXPECT_EQ(KUSetScreenSaver(nullptr), 0);
  EXPECT_EQ(KUIsScreenSaver(nullptr), 0);
  EXPECT_EQ(KUDeleteScreenSaver(nullptr), 0);

  int isNT = 0, major = 0, minor = 0, build = 0;
  OutBuffer servicePack(128);
  ASSERT_EQ(KUCheckForNT(&isNT, &major, &minor, &build, servicePack.data()), 1);
  EXPECT_TRUE(servicePack.terminated());
  EXPECT_EQ(KUCheckForNT(&isNT, &major, &minor, &build, nullptr), 0);
}

// ---- Sound ----

std::vector<std::string> g_played;
int recordSound(const char* file, unsigned int) {
  if (file != nullptr) g_played.push_back(file);
  return 1;
}

class SoundOverlong : public ::testing::Test {
 protected:
  void SetUp() override {
    g_played.clear();
    kutil::detail::setSoundPlayer(recordSound);
    sound.SOInitialise();
    sound.SOEnableSound(1);
  }
  void TearDown() override {
    sound.SOClearSound();
    kutil::detail::setSoundPlayer(nullptr);
  }
  CKSound sound;
  TempDir m_dir;
};

TEST_F(SoundOverlong, RequestedNamesAreCutToTheirField) {
  EXPECT_EQ(sound.SORequestSound(longText('a').c_str(), 5), 1);
  EXPECT_EQ(sound.SORequestSound(longText('b').c_str(), 1), 1);
  EXPECT_EQ(sound.SORequestSound(nullptr, 0), 1);
  EXPECT_EQ(sound.SOPlaySound(), 1);
  EXPECT_EQ(sound.SOPlaySound(), 1);
  ASSERT_EQ(g_played.size(), 2u);
  EXPECT_EQ(g_played[0], longText('a', 260));
  EXPECT_EQ(g_played[1], longText('b', 260));
}

TEST_F(SoundOverlong, BackgroundListsWithLongLinesAndJunk) {
  const std::string sound1 = m_dir.file("one.wav");
  ASSERT_TRUE(writeFile(sound1, "RIFF"));
  const std::string list = m_dir.file("list.txt");
  ASSERT_TRUE(
      writeFile(list, longText('x') + "\n" + sound1 + "\n" + junkBytes() + "\n" + longText(' ') + "\n"));
  EXPECT_EQ(sound.SOLoadBackgroundList(list.c_str(), 1), 1);
  for (int i = 0; i < 200; ++i) {
    sound.SOPlaySound();
    sound.SORequestSound("x.wav", 1);
  }
  for (const std::string& played : g_played) EXPECT_LE(played.size(), 260u);

  EXPECT_EQ(sound.SOLoadBackgroundList(("/" + longText('m')).c_str(), 1), 0);
  EXPECT_EQ(sound.SOLoadBackgroundList(nullptr, 1), 0);
  EXPECT_EQ(sound.SOPlaySound(), 1);
}

// ---- Splash ----

TEST(SplashOverlong, LongLinesArePaintedWithoutOverrun) {
  CKSplash splash;
  splash.SPInitialise();
  EXPECT_EQ(splash.SPSetText(longText('t').c_str()), 1);
  EXPECT_EQ(splash.SPSetComment(longText('c').c_str()), 1);
  EXPECT_EQ(splash.SPSetExtra(longText('e').c_str()), 1);
  EXPECT_EQ(splash.SPSetText(nullptr), 1);
  EXPECT_EQ(splash.SPSetComment(longText('c').c_str()), 1);
#if !defined(_WIN32)
  cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, 640, 480);
  cairo_t* cr = cairo_create(surface);
  splash.SPEnable(1);
  for (int mode : {1, 2}) {
    splash.SPSetDisplayMode(mode);
    EXPECT_EQ(splash.SPPaint(cr), 1);
  }
  cairo_destroy(cr);
  cairo_surface_destroy(surface);
#endif
}

}  // namespace
