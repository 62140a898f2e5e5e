// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The JSON report of a run: where the viewer ended, what each object did, what it cost.
#pragma once
#include <string>
#include <vector>

namespace kview {

class World;

/// Per-frame times in milliseconds.
struct Timings {
  std::vector<double> libraryMs;  ///< the library's work: behaviour ticks, the viewer's steps
  std::vector<double> drawMs;     ///< drawing the room and the panel
};

/// The median of a list of times (0 for none).
double median(std::vector<double> values);

/// Writes the report of a run, with the window's size; false when the file cannot be written.
bool writeReport(const std::string& path, World& world, const Timings& timings, int width, int height);

}  // namespace kview
