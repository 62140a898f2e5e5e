// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include "Viewpoints.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>

namespace kview {
namespace {

bool readFloat(const std::string& line, const char* tag, float* out) {
  char value[64] = {0};
  if (!KUExtractField(tag, line.c_str(), value, sizeof(value) - 1)) return false;
  return KUSafeATOF(value, out) != 0;
}

bool readInt(const std::string& line, const char* tag, int* out) {
  char value[64] = {0};
  if (!KUExtractField(tag, line.c_str(), value, sizeof(value) - 1)) return false;
  return KUSafeATOI(value, out) != 0;
}

// One line of a record: each line holds one segment, so only one of these takes.
void readField(const std::string& line, tagMarkerItem* m) {
  char name[KMARKER_NAME_SIZE] = {0};
  if (KUExtractField("[MKN]", line.c_str(), name, KMARKER_NAME_SIZE - 1)) std::strcpy(m->name, name);
  readInt(line, "[MKI]", &m->indexNumber);
  readInt(line, "[MKS]", &m->sector);
  readInt(line, "[MKV]", &m->valueV);
  float* floats[] = {&m->position.x,  &m->position.y,  &m->position.z, &m->direction.x,
                     &m->direction.y, &m->direction.z, &m->up.x,       &m->up.y,
                     &m->up.z,        &m->valueO,      &m->valueF};
  const char* tags[] = {"[MKX]", "[MKY]", "[MKZ]", "[MKP]", "[MKQ]", "[MKR]",
                        "[MKA]", "[MKB]", "[MKC]", "[MKO]", "[MKF]"};
  for (int i = 0; i < 11; ++i) readFloat(line, tags[i], floats[i]);
}

}  // namespace

int Viewpoints::load(const std::string& path) {
  m_list.MLTerminate();
  m_count = 0;
  std::ifstream in(path);
  tagMarkerItem marker{};
  bool open = false;
  std::string line;
  while (std::getline(in, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.rfind("[MKJ]", 0) == 0) {
      m_list.MLInitMarker(&marker);
      open = true;
    } else if (line.rfind("[MKE]", 0) == 0) {
      if (open && m_list.MLAddMarker(&marker)) ++m_count;
      open = false;
    } else if (open) {
      readField(line, &marker);
    }
  }
  return m_count;
}

bool Viewpoints::save(const std::string& path) {
  std::FILE* out = std::fopen(path.c_str(), "w");
  if (!out) return false;
  const bool ok = m_list.MLSaveToFile(out) != 0;
  return std::fclose(out) == 0 && ok;
}

bool Viewpoints::get(int n, tagMarkerItem* out) {
  tagMarkerItem* m = nullptr;
  int ok = m_list.MLSelectFirstMarker(&m);
  for (int i = 0; ok && i < n; ++i) ok = m_list.MLSelectNextMarker(&m);
  if (!ok || !m) return false;
  m_list.MLCopyMarker(out, m);
  return true;
}

bool Viewpoints::find(const std::string& name, tagMarkerItem* out) {
  tagMarkerItem* m = nullptr;
  if (!m_list.MLFindMarkerByName(&m, name.c_str()) || !m) return false;
  m_list.MLCopyMarker(out, m);
  return true;
}

bool Viewpoints::add(const ViewerState& state, tagMarkerItem* made) {
  tagMarkerItem m{};
  m_list.MLInitMarker(&m);
  int index = 1;
  m_list.MLGetNextIndexNumber(&index);  // no list yet: the first index stays 1
  m.indexNumber = index;
  std::snprintf(m.name, sizeof(m.name), "View %d", index);
  m.position = state.position;
  const float cp = std::cos(state.pitch);
  m.direction = {std::sin(state.heading) * cp, std::sin(state.pitch), std::cos(state.heading) * cp};
  if (!m_list.MLAddMarker(&m)) return false;
  ++m_count;
  if (made) *made = m;
  return true;
}

ViewerState Viewpoints::stateOf(const tagMarkerItem& marker, double zoom) {
  ViewerState s;
  s.position = marker.position;
  const _D3DVECTOR& d = marker.direction;
  s.heading = static_cast<float>(std::atan2(d.x, d.z));
  s.pitch = static_cast<float>(std::atan2(d.y, std::hypot(d.x, d.z)));
  s.zoom = zoom;
  return s;
}

}  // namespace kview
