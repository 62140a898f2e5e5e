// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// `kutil splash`, `kutil settings` and `kutil message`: the application services.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <iostream>

#include "Common.h"
#include "KUtil.h"

#if defined(KUTIL_TOOL_HAS_CAIRO)
#include <cairo.h>
#endif

namespace kutool {
namespace {

enum class SettingType { Unsigned, Signed, Text, Build };

// The user settings by their registry value names.
struct Setting {
  const char* name;
  SettingType type;
  int (*getUnsigned)(unsigned int*);
  int (*setUnsigned)(unsigned int);
  int (*getSigned)(int*);
  int (*setSigned)(int);
  int (*getText)(char*);
  int (*setText)(const char*);
};

constexpr Setting unsignedSetting(const char* name, int (*get)(unsigned int*), int (*set)(unsigned int)) {
  return {name, SettingType::Unsigned, get, set, nullptr, nullptr, nullptr, nullptr};
}
constexpr Setting signedSetting(const char* name, int (*get)(int*), int (*set)(int)) {
  return {name, SettingType::Signed, nullptr, nullptr, get, set, nullptr, nullptr};
}
constexpr Setting textSetting(const char* name, int (*get)(char*), int (*set)(const char*)) {
  return {name, SettingType::Text, nullptr, nullptr, nullptr, nullptr, get, set};
}

const Setting kSettings[] = {
    unsignedSetting("HintNumber", KUGetRegHintNumber, KUSetRegHintNumber),
    unsignedSetting("MainTimer", KUGetRegMainTimer, KUSetRegMainTimer),
    unsignedSetting("JoystickActive", KUGetRegJoystickActive, KUSetRegJoystickActive),
    unsignedSetting("TitleTips", KUGetRegTitleTips, KUSetRegTitleTips),
    unsignedSetting("TryHardware", KUGetRegUseHardware, KUSetRegUseHardware),
    unsignedSetting("Autosave", KUGetRegAutosave, KUSetRegAutosave),
    unsignedSetting("AutoWallPaper", KUGetRegAutoWallPaper, KUSetRegAutoWallPaper),
    unsignedSetting("Background", KUGetRegBackgroundRunning, KUSetRegBackgroundRunning),
    unsignedSetting("DisableDisplayChange", KUGetRegDisableDisplayChange, KUSetRegDisableDisplayChange),
    unsignedSetting("AnimationDelay", KUGetRegAnimationClickDelay, KUSetRegAnimationClickDelay),
    signedSetting("Resolution", KUGetRegResolution, KUSetRegResolution),
    signedSetting("SkyResolution", KUGetRegSkyResolution, KUSetRegSkyResolution),
    signedSetting("Shimmer", KUGetRegShimmer, KUSetRegShimmer),
    signedSetting("RenderHeight", KUGetRegRenderHeight, KUSetRegRenderHeight),
    signedSetting("RenderWidth", KUGetRegRenderWidth, KUSetRegRenderWidth),
    textSetting("GLibrary", KUGetRegGraphics, KUSetRegGraphics),
    textSetting("SharedMemory", KUGetRegSharedMemory, KUSetRegSharedMemory),
    {"BuildNumber", SettingType::Build, KUGetRegBuildNumber, nullptr, nullptr, KUSetRegBuildNumber, nullptr,
     nullptr},
};

const Setting* findSetting(const std::string& name) {
  for (const Setting& s : kSettings) {
    if (equalsNoCase(name, s.name)) return &s;
  }
  return nullptr;
}

std::string settingNames() {
  std::string names;
  for (const Setting& s : kSettings) names += (names.empty() ? "" : ", ") + std::string(s.name);
  return names;
}

// The value as text, or false when it is not set.
bool readSetting(const Setting& s, std::string* value) {
  switch (s.type) {
    case SettingType::Unsigned:
    case SettingType::Build: {
      unsigned int v = 0;
      if (!s.getUnsigned(&v)) return false;
      *value = std::to_string(v);
      return true;
    }
    case SettingType::Signed: {
      int v = 0;
      if (!s.getSigned(&v)) return false;
      *value = std::to_string(v);
      return true;
    }
    case SettingType::Text: {
      char text[264] = {0};
      if (!s.getText(text)) return false;
      *value = text;
      return true;
    }
  }
  return false;
}

int writeSetting(const Setting& s, const std::string& value) {
  long long number = 0;
  const bool numeric = parseInt(value, &number);
  int ok = 0;
  switch (s.type) {
    case SettingType::Unsigned:
      if (!numeric || number < 0 || number > 4294967295LL) {
        return usage(std::string(s.name) + " takes a whole number from 0, not " + value + ".");
      }
      ok = s.setUnsigned(static_cast<unsigned int>(number));
      break;
    case SettingType::Signed:
    case SettingType::Build:
      if (!numeric || number < -2147483647LL - 1 || number > 2147483647LL) {
        return usage(std::string(s.name) + " takes a whole number, not " + value + ".");
      }
      ok = s.setSigned(static_cast<int>(number));
      break;
    case SettingType::Text:
      if (value.size() > 260) return usage(std::string(s.name) + " holds at most 260 characters.");
      ok = s.setText(value.c_str());
      break;
  }
  if (!ok) {
    return fail(std::string("the setting ") + s.name + " cannot be written" +
                (s.type == SettingType::Build
                     ? " (the build number lives in the machine-wide store, which needs "
                       "administrator rights)."
                     : "."));
  }
  return kExitOk;
}

struct SplashOptions {
  std::string text, comment, extra, out;
  int progress = -1;
  int max = 100;
  int mode = 0;
};

int paintSplash(const SplashOptions& o) {
#if defined(KUTIL_TOOL_HAS_CAIRO)
  constexpr int kWidth = 608, kHeight = 272;  // room for the fixed positions the splash paints at
  if (o.text.size() > 260 || o.comment.size() > 260 || o.extra.size() > 260) {
    return usage("splash texts hold at most 260 characters.");
  }
  cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, kWidth, kHeight);
  cairo_t* cr = cairo_create(surface);
  cairo_set_source_rgb(cr, 0.92, 0.92, 0.92);
  cairo_paint(cr);
  CKSplash splash;
  splash.SPInitialise();
  splash.SPEnable(1);
  splash.SPSetHwnd(reinterpret_cast<HWND>(surface));
  splash.SPSetDisplayMode(o.mode);
  splash.SPSetText(o.text.c_str());
  splash.SPSetComment(o.comment.c_str());
  splash.SPSetExtra(o.extra.c_str());
  splash.SPSetMax(o.max);
  splash.SPSetProgress(o.progress);
  const int painted = splash.SPPaint(cr);
  cairo_destroy(cr);
  cairo_surface_flush(surface);
  const bool written = painted && cairo_surface_write_to_png(surface, o.out.c_str()) == CAIRO_STATUS_SUCCESS;
  cairo_surface_destroy(surface);
  if (!painted) return fail("the splash screen could not be painted.");
  if (!written) return fail(o.out + ": the picture cannot be written.");
  std::printf("wrote %s (%d x %d splash, display mode %d)\n", o.out.c_str(), kWidth, kHeight, o.mode);
  return kExitOk;
#else
  (void)o;
  return fail(pngUnavailableSentence());
#endif
}

int unknownSetting(const std::string& name) {
  return usage(name + " is not a setting; the settings are " + settingNames() + ".");
}

int printSetting(const std::string& name) {
  const Setting* s = findSetting(name);
  if (!s) return unknownSetting(name);
  std::string v;
  if (!readSetting(*s, &v)) return fail(std::string("the setting ") + s->name + " is not set.");
  std::printf("%s\n", v.c_str());
  return kExitOk;
}

int changeSetting(const std::string& name, const std::string& value) {
  const Setting* s = findSetting(name);
  if (!s) return unknownSetting(name);
  return writeSetting(*s, value);
}

int listSettings() {
  for (const Setting& s : kSettings) {
    std::string v;
    std::printf("%-21s %s\n", s.name, readSetting(s, &v) ? v.c_str() : "(not set)");
  }
  return kExitOk;
}

void addSplashCommand(CLI::App& app, int* result) {
  auto splash = std::make_shared<SplashOptions>();
  CLI::App* sp = app.add_subcommand("splash", "Paint the splash screen into a PNG picture.");
  sp->add_option("--text", splash->text, "Main line");
  sp->add_option("--comment", splash->comment, "Comment line");
  sp->add_option("--extra", splash->extra, "The only line of display mode 2");
  sp->add_option("--progress", splash->progress, "Progress (-1 hides the bar)")
      ->check(CLI::Range(-1, 1000000));
  sp->add_option("--max", splash->max, "Progress that fills the bar (default 100)")
      ->check(CLI::Range(1, 1000000));
  sp->add_option("--mode", splash->mode, "Display mode: 0 whole window, 1 panel, 2 one extra line")
      ->check(CLI::Range(0, 2));
  sp->add_option("--out", splash->out, "PNG picture to write")->required();
  sp->callback([splash, result] { *result = paintSplash(*splash); });
}

void addSettingsCommands(CLI::App& app, int* result) {
  CLI::App* settings = app.add_subcommand("settings", "Read and write the user settings.");
  settings->require_subcommand(1);
  auto name = std::make_shared<std::string>();
  auto value = std::make_shared<std::string>();
  CLI::App* get = settings->add_subcommand("get", "Print one setting");
  get->add_option("name", *name, "Setting name (" + settingNames() + ")")->required();
  get->callback([name, result] { *result = printSetting(*name); });
  CLI::App* set = settings->add_subcommand("set", "Write one setting");
  set->add_option("name", *name, "Setting name")->required();
  set->add_option("value", *value, "New value")->required();
  set->callback([name, value, result] { *result = changeSetting(*name, *value); });
  CLI::App* list = settings->add_subcommand("list", "Print every setting");
  list->callback([result] { *result = listSettings(); });
}

void addMessageCommand(CLI::App& app, int* result) {
  auto id = std::make_shared<unsigned int>(0);
  auto sheets = std::make_shared<std::string>();
  CLI::App* msg = app.add_subcommand("message", "Print the text of an info-message id from an info sheet.");
  msg->add_option("id", *id, "Info-message id")->required();
  msg->add_option("--sheets", *sheets, "Info-sheet file")->required();
  msg->callback([id, sheets, result] { *result = printMessage(*id, *sheets); });
}

}  // namespace

int printMessage(unsigned int id, const std::string& sheets) {
  if (!isReadable(sheets)) return fail(sheets + ": the info sheet cannot be read.");
  CKaldoInfo info;
  if (!info.KILoadInfoSheets(sheets.c_str())) return fail(sheets + ": the info sheet holds no message.");
  const char* text = info.KIFetchStringForID(id);
  if (text == nullptr) return fail(sheets + ": there is no message with id " + std::to_string(id) + ".");
  std::printf("%s\n", text);
  return kExitOk;
}

void addServiceCommands(CLI::App& app, int* result) {
  addSplashCommand(app, result);
  addSettingsCommands(app, result);
  addMessageCommand(app, result);
}

}  // namespace kutool
