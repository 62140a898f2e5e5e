// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include "Picking.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "Objects.h"

namespace kview {
namespace {

// The camera's near and far planes: its screen depth runs from 0 at the near to 1 at the far plane.
constexpr double kNear = 0.7, kFar = 750.0;
// Where drawing starts in front of the eye.
constexpr double kDrawNear = 0.05;

struct Vec {
  float x, y, z;
};
Vec sub(Vec a, Vec b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
Vec cross(Vec a, Vec b) { return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x}; }
float dot(Vec a, Vec b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
Vec toVec(const _D3DVECTOR& v) { return {v.x, v.y, v.z}; }
Vec toVec(const float (&v)[3]) { return {v[0], v[1], v[2]}; }

_D3DRMVECTOR4D screenOf(CKTrans& camera, float x, float y, float z) {
  _D3DRMVECTOR4D out{};
  const _D3DVECTOR p = {x, y, z};
  camera.KTWorld2Screen(&out, &p);
  return out;
}

// The point at view depth d under the pixel offset (sx, sy) from the view's centre, y up.
_D3DVECTOR worldAtDepth(CKTrans& camera, float sx, float sy, double d) {
  const double z = d * kFar / (kFar - kNear) - kNear * kFar / (kFar - kNear);
  const _D3DRMVECTOR4D screen = {static_cast<float>(sx * d), static_cast<float>(sy * d),
                                 static_cast<float>(z), static_cast<float>(d)};
  _D3DVECTOR world{};
  camera.KTScreen2World(&world, &screen);
  return world;
}

// Slab test of a ray against a box; the entry distance, or a negative value for a miss.
float hitBox(Vec o, Vec d, Vec lo, Vec hi) {
  float t0 = 0.0f, t1 = std::numeric_limits<float>::max();
  const float os[3] = {o.x, o.y, o.z}, ds[3] = {d.x, d.y, d.z}, ls[3] = {lo.x, lo.y, lo.z},
              hs[3] = {hi.x, hi.y, hi.z};
  for (int i = 0; i < 3; ++i) {
    if (std::fabs(ds[i]) < 1e-12f) {
      if (os[i] < ls[i] || os[i] > hs[i]) return -1.0f;
      continue;
    }
    float a = (ls[i] - os[i]) / ds[i], b = (hs[i] - os[i]) / ds[i];
    if (a > b) std::swap(a, b);
    t0 = std::max(t0, a);
    t1 = std::min(t1, b);
    if (t0 > t1) return -1.0f;
  }
  return t0;
}

// Moller-Trumbore; the distance along the ray, or a negative value for a miss.
float hitTriangle(Vec o, Vec d, Vec a, Vec b, Vec c) {
  const Vec e1 = sub(b, a), e2 = sub(c, a), p = cross(d, e2);
  const float det = dot(e1, p);
  if (std::fabs(det) < 1e-12f) return -1.0f;
  const Vec s = sub(o, a);
  const float u = dot(s, p) / det;
  if (u < 0.0f || u > 1.0f) return -1.0f;
  const Vec q = cross(s, e1);
  const float v = dot(d, q) / det;
  if (v < 0.0f || u + v > 1.0f) return -1.0f;
  return dot(e2, q) / det;
}

// The boxes the generator keeps, one for the seed and one per generated plane (each covering the
// slab from the plane before), in the mesh's frame; index 0 is the seed.
std::vector<std::pair<Vec, Vec>> planeBoxes(SceneObject& object) {
  std::vector<std::pair<Vec, Vec>> boxes;
  _D3DRMBOX* box = nullptr;
  auto add = [&](bool ok) {
    if (ok && box)
      boxes.push_back({toVec(meshPoint(object.mesh, box->min)), toVec(meshPoint(object.mesh, box->max))});
    else
      boxes.push_back({toVec(object.mesh.min), toVec(object.mesh.max)});
  };
  add(object.gen.KVGetSeedFaceBox(&box) != 0);
  for (int ok = object.gen.KVSelectFirstGenBox(&box); ok; ok = object.gen.KVSelectNextGenBox(&box)) add(true);
  return boxes;
}

// The nearest face of one object hit by a ray given in the object's frame.
bool hitObject(SceneObject& object, Vec o, Vec d, float* best, FaceTag* face) {
  if (hitBox(o, d, toVec(object.mesh.min), toVec(object.mesh.max)) < 0.0f) return false;
  const auto boxes = planeBoxes(object);
  std::vector<bool> open(boxes.size());
  for (std::size_t i = 0; i < boxes.size(); ++i)
    open[i] = hitBox(o, d, boxes[i].first, boxes[i].second) >= 0.0f;
  bool found = false;
  const auto& v = object.mesh.vertices;
  for (std::size_t t = 0; t < object.mesh.tags.size(); ++t) {
    const std::size_t slab = static_cast<std::size_t>(object.mesh.tags[t].plane + 1);
    if (slab < open.size() && !open[slab]) continue;
    const float at = hitTriangle(o, d, toVec(v[3 * t].position), toVec(v[3 * t + 1].position),
                                 toVec(v[3 * t + 2].position));
    if (at > 0.0f && at < *best) {
      *best = at;
      *face = object.mesh.tags[t];
      found = true;
    }
  }
  return found;
}

}  // namespace

std::array<float, 16> clipMatrix(CKTrans& camera, int width, int height) {
  // The conversion is projective: out = (p, 1) A. Its rows come from the origin and the unit points.
  const _D3DRMVECTOR4D o = screenOf(camera, 0, 0, 0);
  const _D3DRMVECTOR4D e[3] = {screenOf(camera, 1, 0, 0), screenOf(camera, 0, 1, 0),
                               screenOf(camera, 0, 0, 1)};
  const float sx = 2.0f / std::max(width, 1), sy = 2.0f / std::max(height, 1);
  // Depth is OpenGL's own from kDrawNear: the camera's near plane (0.7) lies beyond the library's wall
  // margin (0.3), so a wall the viewer stands at would be cut away. What lands where stays the camera's.
  const float zw = static_cast<float>((kFar + kDrawNear) / (kFar - kDrawNear));
  const float z1 = static_cast<float>(-2.0 * kFar * kDrawNear / (kFar - kDrawNear));
  std::array<float, 16> m{};
  for (int j = 0; j < 4; ++j) {
    const _D3DRMVECTOR4D r =
        j < 3 ? _D3DRMVECTOR4D{e[j].x - o.x, e[j].y - o.y, e[j].z - o.z, e[j].w - o.w} : o;
    // Pixels from the centre become -1..1; w is the view depth.
    m[j * 4 + 0] = r.x * sx;
    m[j * 4 + 1] = r.y * sy;
    m[j * 4 + 2] = zw * r.w + (j == 3 ? z1 : 0.0f);
    m[j * 4 + 3] = r.w;
  }
  return m;
}

bool worldToPixel(CKTrans& camera, int width, int height, const _D3DVECTOR& world, float* x, float* y) {
  _D3DRMVECTOR4D out{};
  camera.KTWorld2Screen(&out, &world);
  if (out.w < static_cast<float>(kNear)) return false;
  // The camera divides by nothing and keeps y up: the caller divides by w and adds the centre.
  *x = width * 0.5f + out.x / out.w;
  *y = height * 0.5f - out.y / out.w;
  return true;
}

bool pixelRay(CKTrans& camera, int width, int height, float x, float y, _D3DVECTOR* origin,
              _D3DVECTOR* direction) {
  screenOf(camera, 0, 0, 0);  // the inverse uses the angles of the last forward conversion
  const float sx = x - width * 0.5f, sy = height * 0.5f - y;
  const _D3DVECTOR near = worldAtDepth(camera, sx, sy, kNear);
  const _D3DVECTOR far = worldAtDepth(camera, sx, sy, 10.0 * kNear);
  const _D3DVECTOR span = {far.x - near.x, far.y - near.y, far.z - near.z};
  // Points under a pixel move linearly with depth: the eye lies a ninth of the span before the near one,
  // so objects nearer than the near plane can be picked too.
  *origin = {near.x - span.x / 9.0f, near.y - span.y / 9.0f, near.z - span.z / 9.0f};
  _D3DVECTOR d = span;
  if (!KUVectorNormalise(&d)) return false;
  *direction = d;
  return true;
}

Pick pickObject(const std::vector<std::unique_ptr<SceneObject>>& objects, const _D3DVECTOR& origin,
                const _D3DVECTOR& direction) {
  Pick pick;
  float best = std::numeric_limits<float>::max();
  for (std::size_t i = 0; i < objects.size(); ++i) {
    SceneObject& object = *objects[i];
    // Into the object's frame: undo its position, heading and zoom. The direction is not made
    // unit again, so distances along the ray stay those of the world.
    const float c = std::cos(-object.heading), s = std::sin(-object.heading), k = 1.0f / object.scale;
    const Vec p = {origin.x - object.position.x, origin.y - object.position.y, origin.z - object.position.z};
    const Vec o = {(c * p.x + s * p.z) * k, p.y * k, (-s * p.x + c * p.z) * k};
    const Vec d = {(c * direction.x + s * direction.z) * k, direction.y * k,
                   (-s * direction.x + c * direction.z) * k};
    FaceTag face{-1, -1};
    if (hitObject(object, o, d, &best, &face)) pick = {static_cast<int>(i), best, face};
  }
  return pick;
}

void markHitFace(SceneObject& object, const FaceTag& face) {
  CKVGen& gen = object.gen;
  gen.KVClearHitFaces();
  if (face.plane < 0) {
    gen.KVSetSeedFaceHit();
    return;
  }
  gen.KVSelectFirstGenPlane();
  for (int i = 0; i < face.plane; ++i) gen.KVSelectNextGenPlane();
  if (face.vertex < 0) {
    gen.KVSetGenFaceHit();
  } else if (gen.KVSelectGenVertexByNumber(face.vertex)) {
    gen.KVSetSelectedHitFace();
  }
}

}  // namespace kview
