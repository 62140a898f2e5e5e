// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include "Mesh.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "Scene.h"

namespace kview {
namespace {

struct Vec {
  float x, y, z;
};
Vec sub(Vec a, Vec b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
Vec cross(Vec a, Vec b) { return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x}; }
float length(Vec a) { return std::sqrt(a.x * a.x + a.y * a.y + a.z * a.z); }
Vec toVec(const _D3DVECTOR& v) { return {v.x, v.y, v.z}; }

struct Corner {
  int point;   // index into the solid's points
  float u, v;  // texture coordinates
};

// Everything the triangles are made from: the planes' points in the mesh frame.
struct Solid {
  int n = 0;       // vertices per plane
  int planes = 0;  // generated planes
  std::vector<Vec> points;
  int at(int plane, int i) const { return plane * n + (i % n); }
};

// Positions of the seed plane, then of every generated plane, in generator units.
void collectPoints(CKVGen* gen, Solid* solid) {
  for (int i = 0; i < solid->n; ++i) {
    _D3DVECTOR p{};
    gen->KVGetSeedVertexByNumber(i, &p);
    solid->points.push_back(toVec(p));
  }
  for (int ok = gen->KVSelectFirstGenPlane(); ok; ok = gen->KVSelectNextGenPlane()) {
    ++solid->planes;
    for (int i = 0; i < solid->n; ++i) {
      _D3DVECTOR p{};
      gen->KVGetGenVertexByNumber(i, &p);
      solid->points.push_back(toVec(p));
    }
  }
}

// Scales the solid into its cell, standing on y = 0 and centred in x and z.
void fitPoints(Solid* solid, float cellWidth, float cellHeight, Mesh* mesh) {
  Vec lo = solid->points[0], hi = solid->points[0];
  for (const Vec& p : solid->points) {
    lo = {std::min(lo.x, p.x), std::min(lo.y, p.y), std::min(lo.z, p.z)};
    hi = {std::max(hi.x, p.x), std::max(hi.y, p.y), std::max(hi.z, p.z)};
  }
  const float across = std::max(hi.x - lo.x, hi.z - lo.z);
  const float tall = hi.y - lo.y;
  float fit = 1.0f;
  if (across > 1e-6f) fit = cellWidth / across;
  if (tall > 1e-6f) fit = std::min(fit, cellHeight / tall);
  mesh->fit = fit;
  mesh->offset = {(lo.x + hi.x) * 0.5f, lo.y, (lo.z + hi.z) * 0.5f};
  for (Vec& p : solid->points) p = toVec(meshPoint(*mesh, {p.x, p.y, p.z}));
  mesh->min = meshPoint(*mesh, {lo.x, lo.y, lo.z});
  mesh->max = meshPoint(*mesh, {hi.x, hi.y, hi.z});
}

// A triangle joins the list unless it is degenerate (a lathe's poles collapse to lines).
void addTriangle(const Solid& solid, const Corner (&c)[3], FaceTag tag, std::vector<MeshVertex>* out,
                 std::vector<FaceTag>* tags) {
  const Vec a = solid.points[c[0].point], b = solid.points[c[1].point], d = solid.points[c[2].point];
  const Vec n = cross(sub(b, a), sub(d, a));
  const float area2 = length(n);
  const float edge = std::max({length(sub(b, a)), length(sub(d, b)), length(sub(a, d))});
  if (edge <= 0.0f || area2 <= 1e-7f * edge * edge) return;
  for (const Corner& k : c) {
    const Vec p = solid.points[k.point];
    out->push_back({{p.x, p.y, p.z}, {n.x / area2, n.y / area2, n.z / area2}, {k.u, k.v}});
  }
  tags->push_back(tag);
}

// Texture coordinates the library maps onto one end plane, by vertex number.
std::vector<std::array<float, 2>> endPlaneUvs(CKVGen* gen, int end, int n, float size) {
  int tiling = 1;
  if (end == 0)
    gen->KVGetFrontTiling(&tiling);
  else
    gen->KVGetBackTiling(&tiling);
  std::vector<std::array<float, 2>> uvs(n, {0.0f, 0.0f});
  if (!GKVCalculateEndPlaneVertexMappings(gen, end, tiling, size)) return uvs;
  if (end == 1) {
    _D3DRMBOX* box = nullptr;
    gen->KVGetGenFaceBox(&box);  // makes the last plane current
  }
  for (int i = 0; i < n; ++i) {
    tagKTessVertex* t = nullptr;
    const bool ok = end == 0
                        ? gen->KVSelectSeedVertexByNumber(i) && gen->KVGetSelectedSeedVertexTessPointer(&t)
                        : gen->KVSelectGenVertexByNumber(i) && gen->KVGetSelectedGenVertexTessPointer(&t);
    // The library's u runs from 0 at the seed's left edge to -tiling at its right (mirrored on the
    // back, so both ends read alike from outside); drawn as -u, a picture reads left to right.
    if (ok && t) uvs[i] = {static_cast<float>(-t->u), static_cast<float>(t->v)};
  }
  return uvs;
}

// Both end planes from the seed's triangles: the seed as the front, the last plane as the back.
void addEndPlanes(CKVGen* gen, const Solid& solid, float size, std::vector<MeshVertex> (&groups)[kGroupCount],
                  std::vector<FaceTag> (&tags)[kGroupCount]) {
  const auto front = endPlaneUvs(gen, 0, solid.n, size);
  const auto back = solid.planes > 0 ? endPlaneUvs(gen, 1, solid.n, size) : front;
  int a = 0, b = 0, c = 0;
  for (int ok = gen->KVGetFirstTesselatedTriangle(&a, &b, &c); ok;
       ok = gen->KVGetNextTesselatedTriangle(&a, &b, &c)) {
    if (std::min({a, b, c}) < 0 || std::max({a, b, c}) >= solid.n) continue;
    const Corner f[3] = {{solid.at(0, c), front[c][0], front[c][1]},
                         {solid.at(0, b), front[b][0], front[b][1]},
                         {solid.at(0, a), front[a][0], front[a][1]}};
    addTriangle(solid, f, {-1, -1}, &groups[kFrontGroup], &tags[kFrontGroup]);
    if (solid.planes == 0) continue;
    const int last = solid.planes;
    const Corner k[3] = {{solid.at(last, a), back[a][0], back[a][1]},
                         {solid.at(last, b), back[b][0], back[b][1]},
                         {solid.at(last, c), back[c][0], back[c][1]}};
    addTriangle(solid, k, {last - 1, -1}, &groups[kBackGroup], &tags[kBackGroup]);
  }
}

// Two triangles per side face; u runs round the seed's outline, v from the seed to the last plane.
void addSides(CKVGen* gen, const Solid& solid, std::vector<MeshVertex>* out, std::vector<FaceTag>* tags) {
  if (solid.n < 2 || solid.planes == 0) return;
  int tiling = 1;
  gen->KVGetWrapTiling(&tiling);
  tiling = std::max(tiling, 1);
  std::vector<float> around(solid.n + 1, 0.0f);
  for (int i = 0; i < solid.n; ++i) {
    around[i + 1] = around[i] + length(sub(solid.points[solid.at(0, i + 1)], solid.points[solid.at(0, i)]));
  }
  const float perimeter = around[solid.n] > 0.0f ? around[solid.n] : 1.0f;
  for (int k = 1; k <= solid.planes; ++k) {
    const float v0 = static_cast<float>(k - 1) / solid.planes * tiling,
                v1 = static_cast<float>(k) / solid.planes * tiling;
    for (int i = 0; i < solid.n; ++i) {
      const float u0 = around[i] / perimeter * tiling, u1 = around[i + 1] / perimeter * tiling;
      // Corners as the library orders a side face: previous i, previous i+1, current i+1, current i.
      const Corner q[4] = {{solid.at(k - 1, i), u0, v0},
                           {solid.at(k - 1, i + 1), u1, v0},
                           {solid.at(k, i + 1), u1, v1},
                           {solid.at(k, i), u0, v1}};
      addTriangle(solid, {q[0], q[1], q[2]}, {k - 1, i}, out, tags);
      addTriangle(solid, {q[0], q[2], q[3]}, {k - 1, i}, out, tags);
    }
  }
}

// A texture name made absolute against the shape's own file; "" when it names no bitmap here.
std::string resolveTexture(const char* name, const std::string& base, Mesh* mesh) {
  const std::string path = resolvePath(base, name);
  if (!path.empty() && KUIsBitmap(path.c_str())) return path;
  mesh->unreadableTextures.push_back(path.empty() ? name : path);
  return "";
}

void collectTextures(CKVGen* gen, const std::string& base, Mesh* mesh) {
  char name[280] = {0};
  if (gen->KVGetFrontPlaneTexture(name)) mesh->textures[kFrontGroup] = resolveTexture(name, base, mesh);
  if (gen->KVGetBackPlaneTexture(name)) mesh->textures[kBackGroup] = resolveTexture(name, base, mesh);
  if (gen->KVGetWrapSurfaceTexture(name)) mesh->textures[kSidesGroup] = resolveTexture(name, base, mesh);
}

}  // namespace

_D3DVECTOR meshPoint(const Mesh& mesh, const _D3DVECTOR& p) {
  return {(p.x - mesh.offset.x) * mesh.fit, (p.y - mesh.offset.y) * mesh.fit,
          (p.z - mesh.offset.z) * mesh.fit};
}

bool buildMesh(CKVGen* gen, float cellWidth, float cellHeight, const std::string& textureBase, Mesh* out) {
  *out = Mesh();
  Solid solid;
  if (!gen->KVGetNumVertices(&solid.n) || solid.n < 1) return false;
  // A seed that does not tessellate (a lathe's profile) is closed by its side faces alone. The
  // tessellation's time grows with about the fourth power of the seed, so a huge seed (a second for
  // 200 vertices) is not filled rather than holding the whole room up.
  out->endsOmitted = solid.n > kMaxFilledSeed;
  const bool tessellated = !out->endsOmitted && gen->KVTesselateSeedPlane() != 0;
  if (!gen->KVGenerate()) return false;
  gen->KVUpdateVertexDependencies();
  collectPoints(gen, &solid);
  // The end-plane mapping measures the seed in generator units, so map at the seed's own size.
  _D3DRMBOX* seedBox = nullptr;
  float seedSize = 1.0f;
  if (gen->KVGetSeedFaceBox(&seedBox) && seedBox) {
    seedSize = std::max(seedBox->max.x - seedBox->min.x, seedBox->max.y - seedBox->min.y);
  }
  fitPoints(&solid, cellWidth, cellHeight, out);
  std::vector<MeshVertex> groups[kGroupCount];
  std::vector<FaceTag> tags[kGroupCount];
  if (tessellated) addEndPlanes(gen, solid, seedSize > 0.0f ? seedSize : 1.0f, groups, tags);
  addSides(gen, solid, &groups[kSidesGroup], &tags[kSidesGroup]);
  for (int g = 0; g < kGroupCount; ++g) {
    out->first[g] = static_cast<int>(out->vertices.size());
    out->count[g] = static_cast<int>(groups[g].size());
    out->vertices.insert(out->vertices.end(), groups[g].begin(), groups[g].end());
    out->tags.insert(out->tags.end(), tags[g].begin(), tags[g].end());
  }
  collectTextures(gen, textureBase, out);
  return !out->vertices.empty();
}

}  // namespace kview
