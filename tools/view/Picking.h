// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Between the screen and the world through the camera: the drawing projection, labels' places
// and the ray under the cursor that picks an object by its boxes and faces.
#pragma once
#include <array>
#include <memory>
#include <vector>

#include "KUtil.h"
#include "Mesh.h"

namespace kview {

class SceneObject;

/// The clip-space matrix (column-major, as OpenGL takes it) under which the drawing matches the
/// camera's own world-to-screen conversion for a view of width x height pixels.
std::array<float, 16> clipMatrix(CKTrans& camera, int width, int height);

/// The pixel (x right, y down) at which a world point appears; false when it is behind the camera.
bool worldToPixel(CKTrans& camera, int width, int height, const _D3DVECTOR& world, float* x, float* y);

/// The ray through a pixel: the eye and a unit direction into the scene.
bool pixelRay(CKTrans& camera, int width, int height, float x, float y, _D3DVECTOR* origin,
              _D3DVECTOR* direction);

/// What a ray met.
struct Pick {
  int object = -1;        ///< index of the object hit, -1 for none
  float distance = 0.0f;  ///< along the ray
  FaceTag face{-1, -1};   ///< the face of the generator hit
};

/// The object whose faces the ray meets first (its boxes are tested before its faces).
Pick pickObject(const std::vector<std::unique_ptr<SceneObject>>& objects, const _D3DVECTOR& origin,
                const _D3DVECTOR& direction);

/// Clears the object's hit marks and marks the face of a pick on its generator.
void markHitFace(SceneObject& object, const FaceTag& face);

}  // namespace kview
