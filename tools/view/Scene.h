// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// What a folder or a scene list holds, where each object stands, and the room around them.
#pragma once
#include <string>
#include <vector>

#include "KUtil.h"
#include "Stock.h"

namespace kview {

/// Something wrong with the content, reported through the message system once the scene is read.
struct Problem {
  unsigned int id;     ///< info-message id
  std::string file;    ///< the file concerned
  std::string detail;  ///< what exactly, "" when the message says it all
};

/// One file of the scene: it becomes one object.
struct SceneEntry {
  std::string path;           ///< the file itself
  std::string name;           ///< its last path element, shown above the object
  Category category;          ///< what kind of file it is
  std::string shapePath;      ///< the ".ksf" it is drawn from, "" for the stock solid
  std::string behaviourPath;  ///< the ".kvc" it runs, "" for the stock behaviour
};

/// The files of a folder or scene list, with the marker list of its viewpoints.
struct SceneSource {
  std::string path;                 ///< what the user named
  std::vector<SceneEntry> entries;  ///< in name order for a folder, in list order for a scene list
  std::string markersPath;          ///< "<list>.mkl" beside a scene list, "views.mkl" in a folder
  std::vector<Problem> problems;    ///< missing and unreadable files
};

/// name with its leading path variable resolved ("?KALDOKWQDIR?" as reference's folder); name itself
/// when it holds no variable, "" when the result would not fit the library's 263 characters.
std::string resolvePath(const std::string& reference, const std::string& name);

/// Reads a folder, a ".ksl" scene list or a single file. A ".ksf" or ".kvc" that shares its stem
/// with another file of the scene is that file's shape or behaviour, not an object of its own.
SceneSource listScene(const std::string& path);

/// Where one object stands on the floor and which way it faces.
struct Placement {
  float x, z;     ///< centre on the floor
  float heading;  ///< radians; 0 faces the viewer's start
};

/// The objects' places and the room's walls.
struct Layout {
  std::vector<Placement> places;
  float minX = 0, maxX = 0, minZ = 0, maxZ = 0;  ///< the room's walls
  _D3DVECTOR start{};                            ///< where the viewer starts
  float startHeading = 0.0f;                     ///< looking into the room
  float startPitch = 0.0f;                       ///< radians, up positive
};

/// Distance between neighbouring objects and the size of the cell an object is fitted into.
constexpr float kSpacing = 2.6f;
constexpr float kCellWidth = 1.6f;
constexpr float kCellHeight = 2.0f;
/// Height of the viewer's eyes above the floor.
constexpr float kEyeHeight = 1.6f;

/// Fills grid with this viewer's arrangement of count objects: items per row (the item step's
/// selector), spacing, and an aisle after every few columns and rows (the column and row steps).
void configureGrid(int count, CKArrange* grid);
/// Places count objects as the grid says and puts walls around them.
Layout arrange(int count, CKArrange* grid);
/// Makes the room's footprint: the four walls of the layout, dependencies updated.
bool makeRoom(const Layout& layout, CKFootPrint* room);

}  // namespace kview
