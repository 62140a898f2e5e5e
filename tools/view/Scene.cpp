// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include "Scene.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <system_error>

#include "Messages.h"

namespace kview {
namespace fs = std::filesystem;
namespace {

// Extra room between the outermost objects and the walls.
constexpr float kMargin = 2.4f;
constexpr float kViewSlope = 0.55f;  // half the view's width at a distance of one, a panel beside it
constexpr float kMinBack = 4.0f, kMaxBack = 12.0f, kBehindStart = 1.5f;
constexpr float kStartPitch = -0.12f;  // a little down, to see the floor the objects stand on

bool hasEnding(const std::string& name, const char* ending) {
  return KUFileHasEnding(name.c_str(), ending) != 0;
}

bool isCompanion(const std::string& name) { return hasEnding(name, ".ksf") || hasEnding(name, ".kvc"); }

// "dir/door.ksf" -> "dir/door"
std::string stemOf(const std::string& path) {
  const fs::path p(path);
  return (p.parent_path() / p.stem()).string();
}

bool isFile(const std::string& path) {
  std::error_code ec;
  return fs::is_regular_file(path, ec);
}

bool isDirectory(const std::string& path) {
  std::error_code ec;
  return fs::is_directory(path, ec);
}

// A file named by the scene, as it was found.
struct Named {
  std::string path;
  bool directory;
};

std::vector<Named> listFolder(const std::string& folder, SceneSource* source) {
  std::vector<Named> found;
  std::error_code ec;
  for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
    const std::string name = it->path().filename().string();
    // Hidden files, the library's temporaries and the scene's own viewpoints are not content.
    if (name.empty() || name[0] == '.' || hasEnding(name, ".TMP") ||
        it->path() == fs::path(source->markersPath))
      continue;
    std::error_code kind;
    const bool directory = it->is_directory(kind);
    if (directory || it->is_regular_file(kind)) found.push_back({it->path().string(), directory});
  }
  if (ec) source->problems.push_back({kMsgUnreadable, folder, ec.message()});
  std::sort(found.begin(), found.end(), [](const Named& a, const Named& b) { return a.path < b.path; });
  return found;
}

// A scene-list line made into a path: variables resolved against the list, separators made '/'.
std::string resolveListed(const std::string& list, std::string name) {
  const std::string resolved = resolvePath(list, name);
  if (!resolved.empty()) name = resolved;
  if (!isFile(name) && !isDirectory(name)) std::replace(name.begin(), name.end(), '\\', '/');
  if (fs::path(name).is_relative()) name = (fs::path(list).parent_path() / name).string();
  return name;
}

std::vector<Named> listSceneList(const std::string& list, SceneSource* source) {
  std::vector<Named> found;
  std::ifstream in(list);
  if (!in) {
    source->problems.push_back({kMsgUnreadable, list, ""});
    return found;
  }
  std::string line;
  while (std::getline(in, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty() || line[0] == '#') continue;
    const std::string path = resolveListed(list, line);
    if (isDirectory(path) || isFile(path))
      found.push_back({path, isDirectory(path)});
    else
      source->problems.push_back({kMsgFileNotFound, line, ""});
  }
  return found;
}

// Groups the named files by stem; companions ride along with the file they belong to.
void makeEntries(const std::vector<Named>& named, SceneSource* source) {
  std::map<std::string, std::vector<const Named*>> byStem;
  for (const Named& n : named) byStem[stemOf(n.path)].push_back(&n);
  for (const Named& n : named) {
    const std::string stem = stemOf(n.path);
    const auto& group = byStem[stem];
    const bool hasContent =
        std::any_of(group.begin(), group.end(), [](const Named* g) { return !isCompanion(g->path); });
    if (isCompanion(n.path) && hasContent) continue;
    // Of a ".ksf" and ".kvc" pair alone, the shape file stands for both.
    if (hasEnding(n.path, ".kvc") && isFile(stem + ".ksf") && byStem[stem].size() > 1) continue;
    SceneEntry e;
    e.path = n.path;
    e.name = fs::path(n.path).filename().string();
    e.category = categoryOf(n.path, n.directory);
    if (!n.directory && isFile(stem + ".ksf")) e.shapePath = stem + ".ksf";
    if (!n.directory && isFile(stem + ".kvc")) e.behaviourPath = stem + ".kvc";
    if (!n.directory && !KUIsFileReadable(n.path.c_str()))
      source->problems.push_back({kMsgUnreadable, n.path, ""});
    source->entries.push_back(e);
  }
}

}  // namespace

std::string resolvePath(const std::string& reference, const std::string& name) {
  char buffer[264] = {0};
  if (!KUIsVariablised(name.c_str())) return name;
  if (name.size() >= sizeof(buffer)) return "";
  std::strcpy(buffer, name.c_str());
  KUDeRelativiseFileName(reference.c_str(), buffer);
  // The library cuts a longer result to fit and still succeeds: a name that fills the buffer may be cut.
  return std::strlen(buffer) >= sizeof(buffer) - 1 ? "" : buffer;
}

SceneSource listScene(const std::string& path) {
  SceneSource source;
  source.path = path;
  std::vector<Named> named;
  if (isDirectory(path)) {
    source.markersPath = (fs::path(path) / "views.mkl").string();
    named = listFolder(path, &source);
  } else if (isFile(path) && hasEnding(path, ".ksl")) {
    source.markersPath = stemOf(path) + ".mkl";
    named = listSceneList(path, &source);
  } else if (isFile(path)) {
    source.markersPath = stemOf(path) + ".mkl";
    named.push_back({path, false});
  } else {
    source.problems.push_back({kMsgFileNotFound, path, ""});
  }
  makeEntries(named, &source);
  return source;
}

void configureGrid(int count, CKArrange* grid) {
  grid->CAInitialise();
  const int perRow = std::max(1, static_cast<int>(std::ceil(std::sqrt(static_cast<double>(count)))));
  grid->CASetDeltaTranslation(perRow, kSpacing);
  // The row and column steps keep their defaults: an aisle of 1.0 after every 5 rows and every 2 columns.
  grid->CASetFirstPosition(0.0f, 0.0f, 0.0f);
}

Layout arrange(int count, CKArrange* grid) {
  Layout layout;
  int perRow = 1, rowBlock = 5, colBlock = 2, type = 0;
  float spacing = kSpacing, rowGap = 1.0f, colGap = 1.0f, x0 = 0, y0 = 0, z0 = 0;
  grid->CAGetDeltaTranslation(&perRow, &spacing);
  grid->CAGetDRowTranslation(&rowBlock, &rowGap);
  grid->CAGetDColTranslation(&colBlock, &colGap);
  grid->CAGetFirstPosition(&x0, &y0, &z0);
  grid->CAGetItemType(&type);
  _D3DVECTOR direction{0, 0, 1}, up{0, 1, 0};
  grid->CAGetFirstOrientation(&direction, &up);
  const float heading = static_cast<float>(std::atan2(direction.x, direction.z));
  perRow = std::max(perRow, 1);
  rowBlock = std::max(rowBlock, 1);
  colBlock = std::max(colBlock, 1);
  for (int i = 0; i < count; ++i) {
    const int col = i % perRow, row = i / perRow;
    layout.places.push_back({x0 + col * spacing + (col / colBlock) * colGap,
                             z0 + row * spacing + (row / rowBlock) * rowGap, heading});
  }
  float minX = x0, maxX = x0, minZ = z0, maxZ = z0;
  for (const Placement& p : layout.places) {
    minX = std::min(minX, p.x), maxX = std::max(maxX, p.x), minZ = std::min(minZ, p.z),
    maxZ = std::max(maxZ, p.z);
  }
  // Centre the grid on x = 0 so the viewer starts facing its middle.
  const float shift = -(minX + maxX) * 0.5f;
  for (Placement& p : layout.places) p.x += shift;
  layout.minX = minX + shift - kMargin;
  layout.maxX = maxX + shift + kMargin;
  // The viewer starts far enough back to have the front row in sight (the view is about 70 degrees
  // wide), but not so far that a large room is a long walk away.
  const float back = std::clamp(((maxX - minX) * 0.5f + kSpacing * 0.5f) / kViewSlope, kMinBack, kMaxBack);
  layout.start = {0.0f, kEyeHeight, minZ - back};
  layout.startPitch = kStartPitch;
  layout.minZ = layout.start.z - kBehindStart;
  layout.maxZ = maxZ + kMargin;
  return layout;
}

bool makeRoom(const Layout& layout, CKFootPrint* room) {
  room->FPInitialise();
  room->FPAddVertex(layout.minX, 0.0f, layout.minZ);
  room->FPAddVertex(layout.maxX, 0.0f, layout.minZ);
  room->FPAddVertex(layout.maxX, 0.0f, layout.maxZ);
  room->FPAddVertex(layout.minX, 0.0f, layout.maxZ);
  room->FPSetClearance(3.0f, 0.0f);
  return room->FPUpdateVertexDependencies() != 0;
}

}  // namespace kview
