// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include "Settings.h"

#include <cmath>
#include <cstdio>

namespace kview {
namespace {

// The viewer's values live in a key of their own under the application's settings key.
constexpr const char* kKey = "Software\\kaldo3d\\Kaldo\\CurrentVersion\\KUtilView";

bool readText(const std::string& name, char (&out)[261]) {
  return KUGetRegText(HKEY_CURRENT_USER, kKey, name.c_str(), out) != 0;
}

bool writeText(const std::string& name, const std::string& text) {
  return KUSetRegText(HKEY_CURRENT_USER, kKey, name.c_str(), text.c_str()) != 0;
}

std::string number(float value) {
  char text[64];
  std::snprintf(text, sizeof(text), "%.4f", value);
  return text;
}

}  // namespace

Settings loadSettings() {
  Settings s;
  int width = 0, height = 0;
  if (KUGetRegRenderWidth(&width) && KUGetRegRenderHeight(&height) && width >= 320 && height >= 240 &&
      width <= 16384 && height <= 16384) {
    s.width = width;
    s.height = height;
  }
  char text[261] = {0};
  float speed = 0.0f;
  if (readText("WalkSpeed", text) && KUSafeATOF(text, &speed) && speed >= 0.01f && speed <= 10.0f)
    s.walkSpeed = speed;
  return s;
}

bool saveSettings(const Settings& settings) {
  const bool size = KUSetRegRenderWidth(settings.width) && KUSetRegRenderHeight(settings.height);
  return writeText("WalkSpeed", number(settings.walkSpeed)) && size;
}

bool loadPosition(const std::string& scene, _D3DVECTOR* position, float* heading) {
  char place[261] = {0}, turn[261] = {0};
  _D3DVECTOR p{};
  float h = 0.0f;
  if (!readText("Position " + scene, place) || !KUExtractVertexSegment(&p, place)) return false;
  if (!readText("Heading " + scene, turn) || !KUSafeATOF(turn, &h)) return false;
  if (!std::isfinite(p.x) || !std::isfinite(p.y) || !std::isfinite(p.z) || !std::isfinite(h)) return false;
  *position = p;
  *heading = h;
  return true;
}

bool savePosition(const std::string& scene, const _D3DVECTOR& position, float heading) {
  char place[140] = {0};
  KUMkVertexSegment(place, &position);
  return writeText("Position " + scene, place) && writeText("Heading " + scene, number(heading));
}

}  // namespace kview
