// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Reference tessellation, written to follow the method step by step with no
// shortcut: plain segment records, marks, the footprint's own crossing test on
// every pair, and a full re-count of every chord's crossings after each removal.
// Only the laid footprint and its outside point are the library's, so that a
// difference from the library's engine can only come from the algorithm.
#include "LiteralTessellation.h"

#include <algorithm>
#include <cmath>
#include <random>

#include "KFootPrint.h"
#include "KVGen.h"
#include "Tessellation.h"

namespace kutil::test {

namespace {

struct Segment {
  int first, second, boundary, removed = 0, mark = -1, crossings = -1;
};

bool hasEnd(const Segment& s, int v) { return s.first == v || s.second == v; }
bool shareEnd(const Segment& a, const Segment& b) { return hasEnd(b, a.first) || hasEnd(b, a.second); }

_D3DVECTOR vec(double x, double y) { return _D3DVECTOR{float(x), float(y), 0.0f}; }

_D3DVECTOR along(const _D3DVECTOR& p, const _D3DVECTOR& d, double f) {
  return _D3DVECTOR{float(p.x + f * d.x), float(p.y + f * d.y), float(p.z + f * d.z)};
}

}  // namespace

int literalTessellate(const std::vector<_D3DVECTOR>& seed, std::vector<Triple>* triangles) {
  triangles->clear();
  const int n = static_cast<int>(seed.size());
  if (n == 0) return 0;
  std::vector<_D3DVECTOR> laid;
  for (const _D3DVECTOR& v : seed) laid.push_back(kutil::detail::layOnFloor(v));
  CKFootPrint fp;
  fp.FPInitialise();
  kutil::detail::fillLaidFootPrint(fp, seed);
  auto cross = [&](const Segment& a, const Segment& b) {
    return fp.FPDoLinesCross(&laid[a.first], &laid[a.second], &laid[b.first], &laid[b.second]) != 0;
  };

  // Candidates: the polygon edges, and the chords whose middle 98 % crosses no edge and whose
  // midpoint is not on the outside point's side.
  const _D3DVECTOR reference = kutil::detail::outsideReference(fp);
  std::vector<Segment> segs;
  for (int i = 0; i < n; ++i) {
    for (int j = i + 1; j < n; ++j) {
      const int boundary = j == i + 1 || (i == 0 && j == n - 1);
      if (!boundary) {
        const _D3DVECTOR& p = laid[i];
        const _D3DVECTOR d = {laid[j].x - p.x, laid[j].y - p.y, laid[j].z - p.z};
        _D3DVECTOR start = along(p, d, 0.01),
                   step = {float(0.98 * d.x), float(0.98 * d.y), float(0.98 * d.z)};
        _D3DVECTOR mid = along(p, d, 0.5);
        if (fp.FPIsBoundaryCrossedNoMargin(&start, &step) || fp.FPPointsAreOnTheSameSide(&reference, &mid))
          continue;
      }
      segs.push_back({i, j, boundary});
    }
  }
  for (std::size_t a = 0; a < segs.size(); ++a)
    for (std::size_t b = a + 1; b < segs.size(); ++b)
      if (segs[a].boundary && segs[b].boundary && !shareEnd(segs[a], segs[b]) && cross(segs[a], segs[b])) {
        fp.FPTerminate();
        return 0;  // the outline crosses itself
      }

  // Greedy removal, re-counting everything on every pass.
  for (int maximum = 0;;) {
    for (Segment& s : segs) {
      s.crossings = -1;
      if (s.removed || s.boundary) continue;
      s.crossings = 0;
      for (const Segment& t : segs)
        if (&t != &s && !t.removed && !t.boundary && !shareEnd(s, t) && cross(s, t)) ++s.crossings;
    }
    for (const Segment& s : segs)
      maximum = s.crossings != -1 && s.crossings > maximum ? s.crossings : maximum;
    Segment* victim = nullptr;
    for (Segment& s : segs) {
      if (s.crossings == maximum && victim == nullptr) victim = &s;
    }
    if (maximum < 1 || victim == nullptr) break;
    victim->removed = 1;
    maximum = 0;
  }

  // Triangles read off by spokes.
  bool anyTwo = false;
  for (int v = 0; v <= n; ++v) {
    int spokes = 0;
    for (Segment& s : segs) {
      s.mark = !s.removed && hasEnd(s, v) ? 0 : s.mark == 0 ? -1 : s.mark;
      spokes += s.mark == 0;
    }
    if (spokes < 2) break;
    anyTwo = true;
    for (const Segment& c : segs) {
      if (c.mark != 0) continue;
      for (Segment& s : segs) {
        if (s.mark == 1) s.mark = -1;
        if (s.removed || s.mark == 0 || !shareEnd(s, c)) continue;
        for (const Segment& t : segs)
          if (t.mark == 0 && &t != &c && shareEnd(s, t)) s.mark = 1;
      }
      for (const Segment& s : segs) {
        if (s.mark != 1) continue;
        Triple t = {s.first, s.second, hasEnd(s, c.first) ? c.second : c.first};
        std::sort(t.begin(), t.end());
        if (std::find(triangles->begin(), triangles->end(), t) == triangles->end()) triangles->push_back(t);
      }
    }
  }
  fp.FPTerminate();
  if (!anyTwo) triangles->clear();
  return triangles->empty() ? 0 : 1;
}

namespace {
// n ascending random angles in [0, 2 pi).
std::vector<double> sortedAngles(std::mt19937& rng, int n) {
  std::uniform_real_distribution<double> angle(0.0, 6.283185307179586);
  std::vector<double> out;
  for (int k = 0; k < n; ++k) out.push_back(angle(rng));
  std::sort(out.begin(), out.end());
  return out;
}

// The closed outline through the corners, each edge split into parts.
std::vector<_D3DVECTOR> splitOutline(const std::vector<std::pair<double, double>>& corners, int parts) {
  std::vector<_D3DVECTOR> out;
  for (std::size_t c = 0; c < corners.size(); ++c) {
    const auto& p = corners[c];
    const auto& q = corners[(c + 1) % corners.size()];
    for (int k = 0; k < parts; ++k) {
      const double f = double(k) / parts;
      out.push_back(vec(p.first + f * (q.first - p.first), p.second + f * (q.second - p.second)));
    }
  }
  return out;
}
}  // namespace

std::vector<_D3DVECTOR> convexSeed(int n, float radius, double phase) {
  std::vector<_D3DVECTOR> out;
  for (int k = 0; k < n; ++k) {
    const double a = phase + 2.0 * 3.14159265358979323846 * k / n;
    out.push_back(vec(radius * std::cos(a), radius * std::sin(a)));
  }
  return out;
}

std::vector<_D3DVECTOR> jitteredConvexSeed(int n, std::uint32_t seed) {
  std::mt19937 rng(seed);
  std::vector<_D3DVECTOR> out;
  for (double a : sortedAngles(rng, n)) out.push_back(vec(12.0 * std::cos(a) + 3.0, 7.0 * std::sin(a) - 2.0));
  return out;
}

std::vector<_D3DVECTOR> starSeed(int points, float outer, float inner) {
  std::vector<_D3DVECTOR> out;
  for (int k = 0; k < 2 * points; ++k) {
    const double a = 3.14159265358979323846 * k / points + 0.1, r = k % 2 == 0 ? outer : inner;
    out.push_back(vec(r * std::cos(a), r * std::sin(a)));
  }
  return out;
}

std::vector<_D3DVECTOR> lShapeSeed(float w, float h, float t, int parts) {
  return splitOutline({{0, 0}, {w, 0}, {w, t}, {t, t}, {t, h}, {0, h}}, parts);
}

std::vector<_D3DVECTOR> combSeed(int teeth) {
  // Bar from y = 0 to 2, teeth of width 1 and height 4 with gaps of 1.
  std::vector<_D3DVECTOR> out = {vec(0, 0), vec(2.0 * teeth - 1.0, 0)};
  for (int k = teeth - 1; k >= 0; --k) {
    out.push_back(vec(2.0 * k + 1.0, 6.0));
    out.push_back(vec(2.0 * k, 6.0));
    if (k > 0) {
      out.push_back(vec(2.0 * k, 2.0));
      out.push_back(vec(2.0 * k - 1.0, 2.0));
    }
  }
  return out;
}

std::vector<_D3DVECTOR> collinearSquareSeed(int perSide, float side) {
  return splitOutline({{0, 0}, {side, 0}, {side, side}, {0, side}}, std::max(1, perSide - 1));
}

std::vector<_D3DVECTOR> randomSimpleSeed(int n, std::uint32_t seed) {
  std::mt19937 rng(seed);
  std::uniform_real_distribution<double> radius(2.0, 20.0);
  std::vector<_D3DVECTOR> out;
  for (double a : sortedAngles(rng, n)) {
    const double r = radius(rng);
    out.push_back(vec(r * std::cos(a), r * std::sin(a)));
  }
  return out;
}

std::vector<_D3DVECTOR> globeSeed(int rings, float radius) {
  CKVGen gen;
  std::vector<_D3DVECTOR> out;
  _D3DVECTOR p;
  if (GKVSeedExtruderGlobe(&gen, 4, rings, radius))
    for (int i = 0; gen.KVGetSeedVertexByNumber(i, &p) == 1; ++i) out.push_back(p);
  gen.KVTerminate();
  return out;
}

std::vector<_D3DVECTOR> halfDiscSeed(int rings, float radius) {
  std::vector<_D3DVECTOR> out = globeSeed(rings, radius);
  for (_D3DVECTOR& p : out) p = _D3DVECTOR{p.z, p.y, 0.0f};
  return out;
}

std::vector<_D3DVECTOR> reversedSeed(std::vector<_D3DVECTOR> seed) {
  std::reverse(seed.begin(), seed.end());
  return seed;
}

}  // namespace kutil::test
