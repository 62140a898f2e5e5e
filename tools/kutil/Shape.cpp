// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// `kutil shape` and `kutil globe`: solids from shape files, exported as Wavefront OBJ and as a picture.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>

#include "Common.h"
#include "KUtil.h"

#if defined(KUTIL_TOOL_HAS_CAIRO)
#include <cairo.h>
#endif
#if defined(KUTIL_TOOL_HAS_FONTCONFIG)
#include <fontconfig/fontconfig.h>
#endif

namespace kutool {
namespace {

struct Vec {
  double x = 0, y = 0, z = 0;
};
Vec operator-(Vec a, Vec b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
[[maybe_unused]] Vec operator+(Vec a, Vec b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
Vec operator*(Vec a, double s) { return {a.x * s, a.y * s, a.z * s}; }
Vec cross(Vec a, Vec b) { return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x}; }
double dot(Vec a, Vec b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
double length(Vec a) { return std::sqrt(dot(a, a)); }
Vec normalised(Vec a) {
  const double l = length(a);
  return l > 0 ? a * (1.0 / l) : Vec{0, 0, 0};
}

enum Group { kFront, kBack, kSides };
const char* const kGroupNames[] = {"front", "back", "sides"};

// A triangle of the exported mesh: position and texture indices (-1: none) and its group.
struct Triangle {
  std::array<int, 3> v{};
  std::array<int, 3> t{-1, -1, -1};
  Group group = kSides;
};

// A face as the picture paints it: the whole end plane or side quadrilateral.
struct Polygon {
  std::vector<int> v;
  Group group = kSides;
};

struct Mesh {
  std::vector<Vec> positions;
  std::vector<std::array<double, 2>> uvs;
  std::vector<Triangle> triangles;
  std::vector<Polygon> polygons;
  int seedVertices = 0;
  int planes = 0;  // generated planes
  int capTriangles = 0;
  bool tessellated = false;
  bool closed = false;
  double volume = 0.0;
  std::string textures[3];

  // The position index of seed vertex i (taken round the seed) on a plane, the seed being plane 0.
  int at(int plane, int i) const { return plane * seedVertices + (i % seedVertices); }
};

double triangleArea2(const Mesh& m, const std::array<int, 3>& t) {
  return length(cross(m.positions[t[1]] - m.positions[t[0]], m.positions[t[2]] - m.positions[t[0]]));
}

// A triangle counts as degenerate when its area is negligible beside its longest edge.
bool degenerate(const Mesh& m, const std::array<int, 3>& t) {
  double longest = 0;
  for (int i = 0; i < 3; ++i)
    longest = std::max(longest, length(m.positions[t[(i + 1) % 3]] - m.positions[t[i]]));
  return longest <= 0 || triangleArea2(m, t) <= 1e-9 * longest * longest;
}

void addTriangle(Mesh& m, std::array<int, 3> v, std::array<int, 3> t, Group g) {
  if (degenerate(m, v)) return;  // pole and axis faces of a lathed solid collapse to lines
  Triangle tri;
  tri.v = v;
  tri.t = t;
  tri.group = g;
  m.triangles.push_back(tri);
}

// A closed, consistently wound surface uses every edge once in each direction; points that
// coincide (a lathe's poles, its last plane on its seed) count as one.
bool isClosed(const Mesh& m) {
  if (m.triangles.empty()) return false;
  std::map<std::array<long long, 3>, int> weld;
  std::vector<int> id(m.positions.size());
  for (std::size_t i = 0; i < m.positions.size(); ++i) {
    const Vec& p = m.positions[i];
    const std::array<long long, 3> key = {std::llround(p.x * 1e4), std::llround(p.y * 1e4),
                                          std::llround(p.z * 1e4)};
    id[i] = weld.emplace(key, static_cast<int>(weld.size())).first->second;
  }
  std::map<std::pair<int, int>, int> edges;
  for (const Triangle& t : m.triangles) {
    for (int i = 0; i < 3; ++i) {
      const int a = id[t.v[i]], b = id[t.v[(i + 1) % 3]];
      if (a != b) ++edges[{a, b}];
    }
  }
  for (const auto& e : edges) {
    const auto back = edges.find({e.first.second, e.first.first});
    if (e.second != 1 || back == edges.end() || back->second != 1) return false;
  }
  return true;
}

// Tessellates the seed and generates the solid; false with the reason when there is nothing to export.
bool generateSolid(CKVGen& gen, Mesh& m, std::string* problem) {
  m.tessellated = gen.KVTesselateSeedPlane() != 0;
  if (!gen.KVGenerate()) {
    *problem = "the instructions of the shape do not generate a solid";
    return false;
  }
  gen.KVUpdateVertexDependencies();
  if (!gen.KVGetNumVertices(&m.seedVertices) || m.seedVertices < 1) {
    *problem = "the shape has no seed vertex";
    return false;
  }
  return true;
}

void readTextures(CKVGen& gen, Mesh& m) {
  char texture[280] = {0};
  if (gen.KVGetFrontPlaneTexture(texture)) m.textures[kFront] = texture;
  if (gen.KVGetBackPlaneTexture(texture)) m.textures[kBack] = texture;
  if (gen.KVGetWrapSurfaceTexture(texture)) m.textures[kSides] = texture;
}

// The seed's larger extent, which --size scales to and the end-plane mapping spans; 0 when unknown.
double seedExtent(CKVGen& gen) {
  _D3DRMBOX* box = nullptr;
  if (!gen.KVGetSeedFaceBox(&box) || !box) return 0.0;
  return std::max(static_cast<double>(box->max.x - box->min.x), static_cast<double>(box->max.y - box->min.y));
}

void addPosition(Mesh& m, const _D3DVECTOR& p, double scale) {
  m.positions.push_back(Vec{p.x * scale, p.y * scale, p.z * scale});
}

// Positions: the seed plane, then every generated plane.
void addPositions(CKVGen& gen, Mesh& m, double scale) {
  const int n = m.seedVertices;
  for (int i = 0; i < n; ++i) {
    _D3DVECTOR p{};
    gen.KVGetSeedVertexByNumber(i, &p);
    addPosition(m, p, scale);
  }
  for (int ok = gen.KVSelectFirstGenPlane(); ok; ok = gen.KVSelectNextGenPlane()) {
    ++m.planes;
    for (int i = 0; i < n; ++i) {
      _D3DVECTOR p{};
      gen.KVGetGenVertexByNumber(i, &p);
      addPosition(m, p, scale);
    }
  }
}

// The texture coordinates the tessellation mapped onto one end plane's vertices ((0, 0) where it did not);
// returns the index of the first.
int addEndPlaneUvs(CKVGen& gen, Mesh& m, bool mapped, int (CKVGen::*select)(int),
                   int (CKVGen::*tessVertex)(tagKTessVertex**)) {
  const int first = static_cast<int>(m.uvs.size());
  for (int i = 0; i < m.seedVertices; ++i) {
    tagKTessVertex* t = nullptr;
    (gen.*select)(i);
    if (mapped && (gen.*tessVertex)(&t) && t)
      m.uvs.push_back({t->u, t->v});
    else
      m.uvs.push_back({0.0, 0.0});
  }
  return first;
}

// The seed's triangles on the last plane as the library winds them, mirrored on the seed.
void addCapTriangles(CKVGen& gen, Mesh& m, int frontUv, int backUv) {
  const int n = m.seedVertices, last = m.planes;
  int a = 0, b = 0, c = 0;
  for (int ok = gen.KVGetFirstTesselatedTriangle(&a, &b, &c); ok;
       ok = gen.KVGetNextTesselatedTriangle(&a, &b, &c)) {
    if (a < 0 || b < 0 || c < 0 || a >= n || b >= n || c >= n) continue;
    ++m.capTriangles;
    if (last > 0) {
      addTriangle(m, {m.at(0, c), m.at(0, b), m.at(0, a)}, {frontUv + c, frontUv + b, frontUv + a}, kFront);
      addTriangle(m, {m.at(last, a), m.at(last, b), m.at(last, c)}, {backUv + a, backUv + b, backUv + c},
                  kBack);
    } else {
      addTriangle(m, {m.at(0, a), m.at(0, b), m.at(0, c)}, {frontUv + a, frontUv + b, frontUv + c}, kFront);
    }
  }
}

// The end planes as whole polygons for the picture. Ascending triangles follow the seed's own order;
// the front plane is painted the other way round when there is a back plane, and reversal turns both.
void addEndPolygons(Mesh& m, bool reversed) {
  const int n = m.seedVertices, last = m.planes;
  Polygon front, back;
  front.group = kFront;
  back.group = kBack;
  const bool frontForward = last > 0 ? reversed : !reversed;
  const bool backForward = !reversed;
  for (int i = 0; i < n; ++i) {
    front.v.push_back(m.at(0, frontForward ? i : n - 1 - i));
    back.v.push_back(m.at(last, backForward ? i : n - 1 - i));
  }
  m.polygons.push_back(front);
  if (last > 0) m.polygons.push_back(back);
}

// End planes: from the tessellation, textured as the library maps them over mapSize.
void addEndPlanes(CKVGen& gen, Mesh& m, double mapSize, bool reversed) {
  const int last = m.planes;
  int frontTiling = 1, backTiling = 1;
  gen.KVGetFrontTiling(&frontTiling);
  const bool frontMapped =
      GKVCalculateEndPlaneVertexMappings(&gen, 0, frontTiling, static_cast<float>(mapSize)) != 0;
  gen.KVGetBackTiling(&backTiling);
  const bool backMapped =
      last > 0 && GKVCalculateEndPlaneVertexMappings(&gen, 1, backTiling, static_cast<float>(mapSize));
  const int frontUv = addEndPlaneUvs(gen, m, frontMapped, &CKVGen::KVSelectSeedVertexByNumber,
                                     &CKVGen::KVGetSelectedSeedVertexTessPointer);
  int backUv = static_cast<int>(m.uvs.size());
  if (last > 0) {
    _D3DRMBOX* lastBox = nullptr;
    gen.KVGetGenFaceBox(&lastBox);  // makes the last plane current
    backUv = addEndPlaneUvs(gen, m, backMapped, &CKVGen::KVSelectGenVertexByNumber,
                            &CKVGen::KVGetSelectedGenVertexTessPointer);
  }
  addCapTriangles(gen, m, frontUv, backUv);
  addEndPolygons(m, reversed);
}

// Side-face texture coordinates: u runs round the seed's perimeter, v from the seed to the last plane;
// returns the index of the first, a row of seedVertices + 1 per plane.
int addSideUvs(CKVGen& gen, Mesh& m) {
  const int n = m.seedVertices, last = m.planes;
  int wrapTiling = 1;
  gen.KVGetWrapTiling(&wrapTiling);
  if (wrapTiling < 1) wrapTiling = 1;
  std::vector<double> around(static_cast<std::size_t>(n) + 1, 0.0);
  for (int i = 0; i < n; ++i)
    around[i + 1] = around[i] + length(m.positions[m.at(0, i + 1)] - m.positions[m.at(0, i)]);
  const double perimeter = around[n] > 0 ? around[n] : 1.0;
  const int first = static_cast<int>(m.uvs.size());
  for (int k = 0; k <= last; ++k) {
    for (int i = 0; i <= n; ++i) {
      m.uvs.push_back(
          {around[i] / perimeter * wrapTiling, last > 0 ? static_cast<double>(k) / last * wrapTiling : 0.0});
    }
  }
  return first;
}

// Side faces: each quadrilateral between two neighbouring planes as two triangles.
void addSideFaces(CKVGen& gen, Mesh& m, bool reversed) {
  const int n = m.seedVertices, last = m.planes;
  const int sideUv = addSideUvs(gen, m);
  if (n < 2) return;
  auto sideUvAt = [&](int plane, int i) { return sideUv + plane * (n + 1) + i; };
  for (int k = 1; k <= last; ++k) {
    for (int i = 0; i < n; ++i) {
      // Corners as the library orders a side face: previous i, previous i+1, current i+1, current i.
      std::array<int, 4> v = {m.at(k - 1, i), m.at(k - 1, i + 1), m.at(k, i + 1), m.at(k, i)};
      std::array<int, 4> t = {sideUvAt(k - 1, i), sideUvAt(k - 1, i + 1), sideUvAt(k, i + 1), sideUvAt(k, i)};
      if (reversed) {
        std::reverse(v.begin(), v.end());
        std::reverse(t.begin(), t.end());
      }
      addTriangle(m, {v[0], v[1], v[2]}, {t[0], t[1], t[2]}, kSides);
      addTriangle(m, {v[0], v[2], v[3]}, {t[0], t[2], t[3]}, kSides);
      Polygon quad;
      quad.v.assign(v.begin(), v.end());
      m.polygons.push_back(quad);
    }
  }
}

// Turns the whole mesh round when its signed volume says it faces in, so that viewers see it from outside.
void turnOutward(Mesh& m) {
  for (const Triangle& t : m.triangles) {
    m.volume += dot(m.positions[t.v[0]], cross(m.positions[t.v[1]], m.positions[t.v[2]])) / 6.0;
  }
  if (m.volume < 0) {
    for (Triangle& t : m.triangles) {
      std::swap(t.v[1], t.v[2]);
      std::swap(t.t[1], t.t[2]);
    }
    for (Polygon& p : m.polygons) std::reverse(p.v.begin(), p.v.end());
    m.volume = -m.volume;
  }
}

// Builds the solid of a restored generator: end planes from the tessellation, two triangles per side face.
// The winding follows the library's faces (normal reversal included); the whole mesh is then turned
// outward so that OBJ viewers see it from outside.
bool buildMesh(CKVGen& gen, double size, Mesh* out, std::string* problem) {
  Mesh& m = *out;
  if (!generateSolid(gen, m, problem)) return false;
  readTextures(gen, m);
  // --size makes the seed's larger extent that long, as the end-plane mapping does.
  const double extent = seedExtent(gen);
  const double scale = size > 0 && extent > 0 ? size / extent : 1.0;
  addPositions(gen, m, scale);
  const bool reversed = gen.KVIsNormalReversalActive() != 0;
  if (m.tessellated) addEndPlanes(gen, m, extent > 0 ? extent * scale : 1.0, reversed);
  addSideFaces(gen, m, reversed);
  turnOutward(m);
  m.closed = isClosed(m);
  return true;
}

bool writeObj(const Mesh& m, const std::string& source, const std::string& path) {
  std::ofstream f(path, std::ios::binary | std::ios::trunc);
  if (!f) return false;
  f << "# " << baseName(source) << " exported by kutil\n";
  f << "# " << m.seedVertices << " seed vertices, " << m.planes << " generated plane(s), "
    << m.triangles.size() << " faces\n";
  for (int g = 0; g < 3; ++g) {
    if (!m.textures[g].empty()) f << "# " << kGroupNames[g] << " texture: " << m.textures[g] << '\n';
  }
  std::string stem = baseName(source);
  const std::size_t dot = stem.find_last_of('.');
  if (dot != std::string::npos) stem = stem.substr(0, dot);
  f << "o " << (stem.empty() ? "shape" : stem) << '\n';
  char line[160];
  for (const Vec& p : m.positions) {
    std::snprintf(line, sizeof line, "v %.6f %.6f %.6f\n", p.x, p.y, p.z);
    f << line;
  }
  for (const auto& uv : m.uvs) {
    std::snprintf(line, sizeof line, "vt %.6f %.6f\n", uv[0], uv[1]);
    f << line;
  }
  for (const Triangle& t : m.triangles) {
    const Vec nrm = normalised(
        cross(m.positions[t.v[1]] - m.positions[t.v[0]], m.positions[t.v[2]] - m.positions[t.v[0]]));
    std::snprintf(line, sizeof line, "vn %.6f %.6f %.6f\n", nrm.x, nrm.y, nrm.z);
    f << line;
  }
  int normal = 0;
  for (int g = 0; g < 3; ++g) {
    bool opened = false;
    normal = 0;
    for (const Triangle& t : m.triangles) {
      ++normal;
      if (t.group != g) continue;
      if (!opened) {
        f << "g " << kGroupNames[g] << '\n';
        opened = true;
      }
      f << 'f';
      for (int i = 0; i < 3; ++i) {
        f << ' ' << t.v[i] + 1 << '/';
        if (t.t[i] >= 0) f << t.t[i] + 1;
        f << '/' << normal;
      }
      f << '\n';
    }
  }
  return static_cast<bool>(f);
}

#if defined(KUTIL_TOOL_HAS_CAIRO)
constexpr int kPictureWidth = 640, kPictureHeight = 480;

// The oblique view: the solid turned 35 degrees about y and seen from 25 degrees above,
// seen along +z as Direct3D does.
std::vector<Vec> obliqueView(const Mesh& m) {
  constexpr double kYaw = 35.0 * 3.14159265358979 / 180.0, kPitch = 25.0 * 3.14159265358979 / 180.0;
  std::vector<Vec> v;
  v.reserve(m.positions.size());
  for (const Vec& p : m.positions) {
    const double x = p.x * std::cos(kYaw) + p.z * std::sin(kYaw);
    const double z1 = -p.x * std::sin(kYaw) + p.z * std::cos(kYaw);
    const double y = p.y * std::cos(kPitch) + z1 * std::sin(kPitch);
    const double z = -p.y * std::sin(kPitch) + z1 * std::cos(kPitch);
    v.push_back(Vec{x, y, z});
  }
  return v;
}

// Places the viewed solid in the picture: centred, as large as fits with a margin for the caption.
class PictureFit {
 public:
  explicit PictureFit(const std::vector<Vec>& v) {
    for (const Vec& p : v) {
      minX = std::min(minX, p.x), maxX = std::max(maxX, p.x);
      minY = std::min(minY, p.y), maxY = std::max(maxY, p.y);
    }
    const double spanX = std::max(maxX - minX, 1e-9), spanY = std::max(maxY - minY, 1e-9);
    fit = std::min((kPictureWidth * 0.8) / spanX, (kPictureHeight * 0.72) / spanY);
  }
  void toScreen(const Vec& p, double* sx, double* sy) const {
    *sx = kPictureWidth / 2.0 + (p.x - (minX + maxX) / 2) * fit;
    *sy = kPictureHeight * 0.46 - (p.y - (minY + maxY) / 2) * fit;
  }

 private:
  double minX = 1e300, maxX = -1e300, minY = 1e300, maxY = -1e300;
  double fit = 1.0;
};

struct Painted {
  double depth;
  const Polygon* polygon;
  double shade;
};

// The faces to paint, back to front, each with its flat shade; a closed solid hides its back faces.
std::vector<Painted> paintingOrder(const Mesh& m, const std::vector<Vec>& v) {
  std::vector<Painted> order;
  const Vec light = normalised(Vec{0.35, 0.55, -0.75});
  for (const Polygon& p : m.polygons) {
    Vec normal, centre;
    for (std::size_t i = 0; i < p.v.size(); ++i) {
      const Vec a = v[p.v[i]], b = v[p.v[(i + 1) % p.v.size()]];
      normal = normal + cross(a, b);  // Newell's normal: robust for any simple polygon
      centre = centre + a;
    }
    if (length(normal) <= 1e-12) continue;
    normal = normalised(normal);
    centre = centre * (1.0 / static_cast<double>(p.v.size()));
    const bool facing = normal.z < 0;
    if (m.closed && !facing) continue;
    const double lit = std::max(0.0, dot(facing ? normal : normal * -1.0, light));
    order.push_back({centre.z, &p, 0.4 + 0.6 * lit});
  }
  std::sort(order.begin(), order.end(), [](const Painted& a, const Painted& b) { return a.depth > b.depth; });
  return order;
}

void paintSky(cairo_t* cr) {
  cairo_pattern_t* sky = cairo_pattern_create_linear(0, 0, 0, kPictureHeight);
  cairo_pattern_add_color_stop_rgb(sky, 0, 0.93, 0.95, 0.98);
  cairo_pattern_add_color_stop_rgb(sky, 1, 0.80, 0.83, 0.88);
  cairo_set_source(cr, sky);
  cairo_paint(cr);
  cairo_pattern_destroy(sky);
}

void paintFaces(cairo_t* cr, const std::vector<Painted>& order, const std::vector<Vec>& v,
                const PictureFit& fit) {
  cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
  const double base[3][3] = {{0.86, 0.62, 0.36}, {0.74, 0.52, 0.30}, {0.45, 0.60, 0.80}};
  for (const Painted& p : order) {
    const Polygon& poly = *p.polygon;
    for (std::size_t i = 0; i < poly.v.size(); ++i) {
      double sx = 0, sy = 0;
      fit.toScreen(v[poly.v[i]], &sx, &sy);
      if (i == 0)
        cairo_move_to(cr, sx, sy);
      else
        cairo_line_to(cr, sx, sy);
    }
    cairo_close_path(cr);
    const double* c = base[poly.group];
    cairo_set_source_rgb(cr, c[0] * p.shade, c[1] * p.shade, c[2] * p.shade);
    cairo_fill_preserve(cr);
    cairo_set_source_rgba(cr, c[0] * p.shade * 0.55, c[1] * p.shade * 0.55, c[2] * p.shade * 0.55, 0.9);
    cairo_set_line_width(cr, 0.8);
    cairo_stroke(cr);
  }
}

void paintCaption(cairo_t* cr, const Mesh& m, const std::string& source) {
  cairo_select_font_face(cr, "sans-serif", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
  cairo_set_font_size(cr, 14);
  cairo_set_source_rgb(cr, 0.15, 0.17, 0.22);
  std::ostringstream caption;
  caption << baseName(source) << ": " << m.seedVertices << " seed vertices, " << m.planes
          << (m.planes == 1 ? " generated plane, " : " generated planes, ") << m.triangles.size() << " faces"
          << (m.tessellated ? "" : " (side faces only)");
  cairo_move_to(cr, 14, kPictureHeight - 16);
  cairo_show_text(cr, caption.str().c_str());
}

// An oblique view of the solid, faces painted back to front with flat shading, and a caption.
bool writePng(const Mesh& m, const std::string& source, const std::string& path) {
  const std::vector<Vec> v = obliqueView(m);
  const PictureFit fit(v);
  const std::vector<Painted> order = paintingOrder(m, v);
  cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kPictureWidth, kPictureHeight);
  cairo_t* cr = cairo_create(surface);
  paintSky(cr);
  paintFaces(cr, order, v, fit);
  paintCaption(cr, m, source);
  cairo_destroy(cr);
  const bool ok = cairo_surface_write_to_png(surface, path.c_str()) == CAIRO_STATUS_SUCCESS;
  cairo_surface_destroy(surface);
  return ok;
}
#endif

}  // namespace

void releasePaintCaches() {
#if defined(KUTIL_TOOL_HAS_CAIRO)
  cairo_debug_reset_static_data();
#endif
#if defined(KUTIL_TOOL_HAS_FONTCONFIG)
  FcFini();
#endif
}

bool pngAvailable() {
#if defined(KUTIL_TOOL_HAS_CAIRO)
  return true;
#else
  return false;
#endif
}

const char* pngUnavailableSentence() {
  return "PNG export is not available in this build of kutil (it has no Cairo).";
}

int exportShape(const ShapeOptions& options) {
  if (!options.png.empty() && !pngAvailable()) return fail(pngUnavailableSentence());
  if (!isReadable(options.file)) return fail(options.file + ": the shape file cannot be read.");
  CKVGen gen;
  gen.KVInitialise();
  if (!gen.KVRestore(options.file.c_str())) {
    checkFile(options.file);  // names what is wrong
    return kExitFailed;
  }
  Mesh mesh;
  std::string problem;
  if (!buildMesh(gen, options.size, &mesh, &problem)) return fail(options.file + ": " + problem + ".");
  if (!options.quiet) {
    std::printf("%s: %d seed vertices, %d generated plane%s, %s, %zu faces (%s)\n", options.file.c_str(),
                mesh.seedVertices, mesh.planes, mesh.planes == 1 ? "" : "s",
                mesh.tessellated
                    ? ("end planes of " + std::to_string(mesh.capTriangles) + " triangles").c_str()
                    : "seed does not tessellate: side faces only",
                mesh.triangles.size(), mesh.closed ? "closed" : "open");
  }
  if (!options.obj.empty()) {
    if (!writeObj(mesh, options.file, options.obj))
      return fail(options.obj + ": the OBJ file cannot be written.");
    std::printf("wrote %s (%zu vertices, %zu faces)\n", options.obj.c_str(), mesh.positions.size(),
                mesh.triangles.size());
  }
#if defined(KUTIL_TOOL_HAS_CAIRO)
  if (!options.png.empty()) {
    if (!writePng(mesh, options.file, options.png))
      return fail(options.png + ": the picture cannot be written.");
    std::printf("wrote %s (%d x %d oblique view)\n", options.png.c_str(), kPictureWidth, kPictureHeight);
  }
#endif
  return kExitOk;
}

void addShapeCommands(CLI::App& app, int* result) {
  auto shape = std::make_shared<ShapeOptions>();
  CLI::App* sub = app.add_subcommand(
      "shape",
      "Restore a shape, tessellate and generate it, and export it as Wavefront OBJ and as a PNG picture.");
  sub->add_option("file", shape->file, "Shape file (.ksf)")->required();
  sub->add_option("--obj", shape->obj, "Write the solid as Wavefront OBJ");
  sub->add_option("--png", shape->png, "Paint an oblique view of the solid as PNG");
  sub->add_option("--size", shape->size, "Scale so that the seed's larger extent is this long")
      ->check(CLI::PositiveNumber);
  sub->callback([shape, result] { *result = exportShape(*shape); });

  struct Globe {
    int segments = 12;
    int rings = 8;
    float radius = 1.0f;
    std::string out;
  };
  auto globe = std::make_shared<Globe>();
  CLI::App* g =
      app.add_subcommand("globe", "Write a globe shape file: a half circle turned about the y axis.");
  g->add_option("--segments", globe->segments, "Turns about the y axis (default 12)")
      ->check(CLI::Range(1, 10000));
  g->add_option("--rings", globe->rings, "Steps of the half circle (default 8)")->check(CLI::Range(1, 10000));
  g->add_option("--radius", globe->radius, "Radius (default 1)")->check(CLI::PositiveNumber);
  g->add_option("--out", globe->out, "Shape file to write")->required();
  g->callback([globe, result] {
    CKVGen gen;
    gen.KVInitialise();  // the destructor terminates, so the generator must be initialised even on failure
    if (!GKVSeedExtruderGlobe(&gen, globe->segments, globe->rings, globe->radius)) {
      *result = fail("the globe cannot be made from these counts and radius.");
      return;
    }
    if (!gen.KVSave(globe->out.c_str())) {
      *result = fail(globe->out + ": the shape file cannot be written.");
      return;
    }
    int vertices = 0, instructions = 0;
    gen.KVGetNumVertices(&vertices);
    gen.KVGetNumInstructs(&instructions);
    std::printf("wrote %s (%d seed vertices, %d instructions)\n", globe->out.c_str(), vertices, instructions);
    *result = kExitOk;
  });
}

}  // namespace kutool
