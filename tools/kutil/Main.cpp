// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// kutil: checks, runs, exports and normalises the content the library reads.
#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>

#include "Common.h"
#include "KUtil.h"

int main(int argc, char** argv) {
  CLI::App app{
      "kutil: check, run, export and normalise KUtil content (behaviours, shapes, scene lists, "
      "recordings, markers, info sheets)."};
  app.name("kutil");
  app.set_version_flag("--version", std::string(KUTIL_VERSION_STRING));
  app.require_subcommand(1);
  app.fallthrough(false);
  // Absolute POSIX paths (as Wine passes them) begin with '/': they are arguments, never "/option"s.
  app.allow_windows_style_options(false);

  int result = kutool::kExitOk;
  kutool::addCheckCommand(app, &result);
  kutool::addRunCommands(app, &result);
  kutool::addShapeCommands(app, &result);
  kutool::addNormaliseCommands(app, &result);
  kutool::addServiceCommands(app, &result);
  kutool::addDemoCommand(app, &result);

  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp& e) {
    return app.exit(e);
  } catch (const CLI::CallForAllHelp& e) {
    return app.exit(e);
  } catch (const CLI::CallForVersion& e) {
    return app.exit(e);
  } catch (const CLI::ParseError& e) {
    app.exit(e);
    return kutool::kExitUsage;
  } catch (const std::exception& e) {
    return kutool::fail(std::string("unexpected failure: ") + e.what() + ".");
  }
  kutool::releasePaintCaches();
  return result;
}
