// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Triangles of a generated solid: its two end planes from the tessellation and its side faces.
#pragma once
#include <array>
#include <string>
#include <vector>

#include "KUtil.h"

namespace kview {

/// One corner of a drawn triangle.
struct MeshVertex {
  float position[3];  ///< in the object's own frame
  float normal[3];    ///< the triangle's normal (the renderer lights both sides)
  float uv[2];        ///< texture coordinates
};

/// The parts of a solid that carry their own texture.
enum FaceGroup { kFrontGroup = 0, kBackGroup = 1, kSidesGroup = 2, kGroupCount = 3 };

/// Which face of the generator a triangle belongs to: plane -1 is the seed (front end plane);
/// for a side face, vertex is the generated vertex it starts at; for an end plane it is -1.
struct FaceTag {
  int plane;
  int vertex;
};

/// A solid ready to draw and to pick: a plain triangle list in group order.
struct Mesh {
  std::vector<MeshVertex> vertices;               ///< three per triangle
  std::vector<FaceTag> tags;                      ///< one per triangle
  std::array<int, kGroupCount> first{};           ///< first vertex of each group
  std::array<int, kGroupCount> count{};           ///< vertex count of each group
  std::array<std::string, kGroupCount> textures;  ///< texture file per group, "" for a flat colour
  std::vector<std::string> unreadableTextures;    ///< textures named but not readable as bitmaps
  bool endsOmitted = false;                       ///< the seed was too large to fill the end planes
  _D3DVECTOR min{}, max{};                        ///< bounds in the object's frame
  _D3DVECTOR offset{};                            ///< generator point that becomes the frame's origin
  float fit = 1.0f;                               ///< generator units to frame units
};

/// The largest seed whose end planes are filled.
constexpr int kMaxFilledSeed = 160;

/// Tessellates and generates gen (a restored or stock generator) and builds its triangles, fitted
/// into a cell of the given width and height, standing on y = 0 and centred in x and z.
/// textureBase is the file that "?KALDOKWQDIR?" in texture names refers to. False when the
/// instructions make no solid.
bool buildMesh(CKVGen* gen, float cellWidth, float cellHeight, const std::string& textureBase, Mesh* out);

/// Turns a generator point into the mesh's frame.
_D3DVECTOR meshPoint(const Mesh& mesh, const _D3DVECTOR& generatorPoint);

}  // namespace kview
