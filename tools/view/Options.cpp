// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include "Options.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "KUtilVersion.h"

namespace kview {
namespace {

int usageError(std::string sentence) {
  while (!sentence.empty() && (sentence.back() == '\n' || sentence.back() == '.')) sentence.pop_back();
  std::cerr << "kutil-view: " << sentence << "; see kutil-view --help.\n";
  return kExitUsage;
}

// "1280x800" into a width and a height.
bool parseSize(const std::string& text, int* width, int* height) {
  int w = 0, h = 0;
  char x = 0, rest = 0;
  if (std::sscanf(text.c_str(), "%d%c%d%c", &w, &x, &h, &rest) != 3 || (x != 'x' && x != 'X')) return false;
  if (w < 320 || h < 240 || w > 16384 || h > 16384) return false;
  *width = w;
  *height = h;
  return true;
}

void describe(CLI::App& app, Options* o, std::string* size) {
  app.add_option("PATH", o->path, "a folder (each file becomes an object) or a scene list (.ksl)")
      ->required();
  app.add_option("--record", o->record, "write the input to this recording (CKInputRecord)");
  app.add_option("--play", o->play, "feed this recording back, one command per frame");
  app.add_option("--frames", o->frames, "stop after N frames")->check(CLI::Range(1, 100000000));
  app.add_option("--screenshot", o->screenshot, "save the last frame as a PNG picture");
  app.add_option("--report", o->report, "write a JSON report of the run");
  app.add_option("--size", *size, "window size, e.g. 1280x800 (kept in the settings)");
  app.add_option("--speed", o->speed,
                 "walking speed, 1 for the library's standard step (kept in the settings)")
      ->check(CLI::Range(0.01f, 10.0f));
  app.add_option("--log", o->log, "the message log (default: $XDG_STATE_HOME/kaldo3d/kutil-view.log)");
  app.add_option("--messages", o->messages, "an info-sheet file with the message texts");
  app.add_flag("--launch", o->launch, "let behaviours' RUN requests start programs");
  app.add_flag("--mute", o->mute, "play no sounds");
}

}  // namespace

int parseOptions(int argc, char** argv, Options* out) {
  CLI::App app{
      "kutil-view: walk through a folder or scene list as a room of objects run by the KUtil library.\n"
      "Keys: arrows or WASD walk and turn, PageUp/PageDown look up and down, Shift for fine steps,\n"
      "Home levels the view, +/- zoom, 1-9 jump to viewpoints, M saves one, click selects, double\n"
      "click opens, Tab hides the panel, Esc quits."};
  app.name("kutil-view");
  app.set_version_flag("--version", std::string(KUTIL_VERSION_STRING));
  app.allow_windows_style_options(false);
  std::string size;
  describe(app, out, &size);
  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp& e) {
    return app.exit(e);
  } catch (const CLI::CallForVersion& e) {
    return app.exit(e);
  } catch (const CLI::ParseError& e) {
    return usageError(e.what());
  }
  if (!out->record.empty() && !out->play.empty())
    return usageError("--record and --play cannot be used together");
  if (!size.empty() && !parseSize(size, &out->width, &out->height)) {
    return usageError("--size takes a width and a height such as 1280x800, at least 320x240");
  }
  return -1;
}

std::string defaultLogPath() {
  namespace fs = std::filesystem;
  fs::path dir;
  if (const char* state = std::getenv("XDG_STATE_HOME"); state && *state)
    dir = state;
  else if (const char* home = std::getenv("HOME"); home && *home)
    dir = fs::path(home) / ".local" / "state";
  else
    return "";
  dir /= "kaldo3d";
  std::error_code ec;
  fs::create_directories(dir, ec);
  return ec ? "" : (dir / "kutil-view.log").string();
}

}  // namespace kview
