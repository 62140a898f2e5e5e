// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The command line of kutil-view.
#pragma once
#include <string>

namespace kview {

/// What the command line asked for.
struct Options {
  std::string path;        ///< folder or scene list
  std::string record;      ///< recording to write, "" for none
  std::string play;        ///< recording to play, "" for none
  std::string screenshot;  ///< PNG of the last frame, "" for none
  std::string report;      ///< JSON report, "" for none
  std::string log;         ///< message log ("" for the default place)
  std::string messages;    ///< info-sheet file with message texts, "" for the built-in ones
  int frames = 0;          ///< stop after this many frames, 0 to run until closed
  int width = 0;           ///< window size, 0 for the stored one
  int height = 0;
  float speed = 0.0f;   ///< walking speed, 0 for the stored one
  bool launch = false;  ///< let RUN requests start programs
  bool mute = false;    ///< play no sounds
};

/// Exit statuses.
constexpr int kExitOk = 0;
constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;

/// Reads the command line. Returns -1 to go on, or the status to exit with: 0 after --help or
/// --version, 2 after a usage error (one sentence on standard error).
int parseOptions(int argc, char** argv, Options* out);

/// Where messages are logged by default: $XDG_STATE_HOME/kaldo3d/kutil-view.log, else under
/// ~/.local/state; "" when neither is known.
std::string defaultLogPath();

}  // namespace kview
