// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// What the viewer keeps between runs, in the settings store.
#pragma once
#include <string>

#include "KUtil.h"

namespace kview {

/// The viewer's own settings; the defaults stand where the store has nothing (or nonsense).
struct Settings {
  int width = 1280;  ///< window size (the store's render width and height)
  int height = 800;
  float walkSpeed = 0.25f;  ///< multiplies the library's standard step of 0.3
};

/// Reads the settings, keeping the defaults for values that are absent or out of range.
Settings loadSettings();
/// Writes the settings; false when the store cannot be written.
bool saveSettings(const Settings& settings);

/// Reads where the viewer last stood in a scene (named by its absolute path).
bool loadPosition(const std::string& scene, _D3DVECTOR* position, float* heading);
/// Writes where the viewer stands in a scene.
bool savePosition(const std::string& scene, const _D3DVECTOR& position, float heading);

}  // namespace kview
