// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Marker lists: read the input as a marker file (records from "[MKJ]" to
// "[MKE]", fields found with KUExtractField), keep the markers in a list,
// save the list and read the saved file back. Every marker must come back
// with its name, numbers and values; the file holds floats with four
// decimals, so floats come back to within that rounding.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "FuzzSupport.h"
#include "KMarkerList.h"
#include "KText.h"

namespace {

constexpr int kLine = 512;

float* floatField(tagMarkerItem& m, const char* tag) {
  struct Entry {
    const char* tag;
    float* value;
  } const table[] = {
      {"[MKX]", &m.position.x},  {"[MKY]", &m.position.y},  {"[MKZ]", &m.position.z},
      {"[MKP]", &m.direction.x}, {"[MKQ]", &m.direction.y}, {"[MKR]", &m.direction.z},
      {"[MKA]", &m.up.x},        {"[MKB]", &m.up.y},        {"[MKC]", &m.up.z},
      {"[MKO]", &m.valueO},      {"[MKF]", &m.valueF},
  };
  for (const Entry& e : table)
    if (std::strcmp(e.tag, tag) == 0) return e.value;
  return nullptr;
}

int* intField(tagMarkerItem& m, const char* tag) {
  if (std::strcmp(tag, "[MKI]") == 0) return &m.indexNumber;
  if (std::strcmp(tag, "[MKS]") == 0) return &m.sector;
  if (std::strcmp(tag, "[MKV]") == 0) return &m.valueV;
  return nullptr;
}

constexpr const char* kFieldTags[] = {"[MKN]", "[MKI]", "[MKS]", "[MKX]", "[MKY]", "[MKZ]", "[MKP]", "[MKQ]",
                                      "[MKR]", "[MKA]", "[MKB]", "[MKC]", "[MKV]", "[MKO]", "[MKF]"};

// One line of a record into the marker; the first segment's tag decides.
void readField(tagMarkerItem& m, const char* line) {
  char value[kLine];
  for (const char* tag : kFieldTags) {
    if (KUExtractField(tag, line, value, kLine - 1) != 1) continue;
    if (std::strcmp(tag, "[MKN]") == 0) {
      std::snprintf(m.name, sizeof m.name, "%.*s", static_cast<int>(sizeof m.name) - 1, value);
    } else if (int* i = intField(m, tag)) {
      KUSafeATOI(value, i);
    } else if (float* f = floatField(m, tag)) {
      KUSafeATOF(value, f);
    }
    return;
  }
}

// The markers of a marker file, in file order; a record left open at the end is dropped.
std::vector<tagMarkerItem> readMarkers(const std::string& path) {
  std::vector<tagMarkerItem> markers;
  FILE* f = std::fopen(path.c_str(), "r");
  if (f == nullptr) return markers;
  CKMarkerList scratch;
  scratch.MLInitialise();
  tagMarkerItem m;
  bool open = false;
  char line[kLine];
  char value[kLine];
  while (std::fgets(line, sizeof line, f) != nullptr) {
    KUNoNewLine(line);
    if (KUExtractField("[MKJ]", line, value, kLine - 1) == 1) {
      scratch.MLInitMarker(&m);
      open = true;
    } else if (KUExtractField("[MKE]", line, value, kLine - 1) == 1) {
      if (open) markers.push_back(m);
      open = false;
    } else if (open) {
      readField(m, line);
    }
  }
  std::fclose(f);
  return markers;
}

bool closeEnough(float a, float b) {
  if (!std::isfinite(a) || !std::isfinite(b)) return true;  // "%.4f" of inf or nan need not read back
  return std::fabs(a - b) <= 0.0001f + std::fabs(b) * 1e-6f;
}

bool sameMarker(const tagMarkerItem& a, tagMarkerItem b) {
  if (std::strcmp(a.name, b.name) != 0 || a.indexNumber != b.indexNumber || a.sector != b.sector ||
      a.valueV != b.valueV)
    return false;
  tagMarkerItem copy = a;
  for (const char* tag : kFieldTags)
    if (float* f = floatField(copy, tag))
      if (!closeEnough(*f, *floatField(b, tag))) return false;
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string path = kutil::fuzz::writeScratch(data, size, ".mkl", 0);
  const std::vector<tagMarkerItem> read = readMarkers(path);

  CKMarkerList list;
  list.MLInitialise();
  for (const tagMarkerItem& m : read)
    if (list.MLAddMarker(&m) != 1) std::abort();
  int next = 0;
  list.MLGetNextIndexNumber(&next);
  tagMarkerItem* found = nullptr;
  for (const tagMarkerItem& m : read) {
    list.MLFindMarkerByName(&found, m.name);
    list.MLFindMarkerByNumber(&found, m.indexNumber);
  }

  const std::string saved = kutil::fuzz::scratchPath(".mkl", 1);
  FILE* out = std::fopen(saved.c_str(), "w");
  if (out == nullptr) return 0;
  const int stored = list.MLSaveToFile(out);
  std::fclose(out);
  if (read.empty() || stored != 1) return 0;
  const std::vector<tagMarkerItem> back = readMarkers(saved);
  if (back.size() != read.size()) std::abort();
  for (size_t i = 0; i < read.size(); ++i)
    if (!sameMarker(back[i], read[i])) std::abort();
  return 0;
}
