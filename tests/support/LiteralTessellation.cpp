// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Reference tessellation, written to follow the method step by step with no
// shortcut: plain segment records, marks, and a full re-count of every chord's
// crossings after each removal. Its geometry (the chord probe, the outside
// point and the footprint's crossing tests) is the library's own, so that a
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
  int first = -1;
  int second = -1;
  int boundary = 0;
  int removed = 0;
  int mark = -1;
  int crossings = -1;
};

bool shareEnd(const Segment& a, const Segment& b) {
  return a.first == b.first || a.first == b.second || a.second == b.first || a.second == b.second;
}

bool hasEnd(const Segment& s, int v) { return s.first == v || s.second == v; }

_D3DVECTOR vec(double x, double y, double z) {
  return _D3DVECTOR{static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
}

}  // namespace

int literalTessellate(const std::vector<_D3DVECTOR>& seed, std::vector<Triple>* triangles) {
  triangles->clear();
  const int n = static_cast<int>(seed.size());
  if (n == 0) return 0;
  std::vector<_D3DVECTOR> laid;
  for (const _D3DVECTOR& v : seed) laid.push_back(kutil::detail::layOnFloor(v));
  auto at = [&](int i) -> const _D3DVECTOR* { return &laid[static_cast<std::size_t>(i)]; };

  // 1. The working footprint: the laid seed.
  CKFootPrint fp;
  fp.FPInitialise();
  kutil::detail::fillLaidFootPrint(fp, seed);

  // 2. Candidate segments.
  const _D3DVECTOR reference = kutil::detail::outsideReference(fp);
  std::vector<Segment> segs;
  for (int i = 0; i < n; ++i) {
    for (int j = i + 1; j < n; ++j) {
      Segment s;
      s.first = i;
      s.second = j;
      if (j == i + 1 || (i == 0 && j == n - 1)) {
        s.boundary = 1;
      } else {
        _D3DVECTOR start, step, mid;
        kutil::detail::chordProbe(*at(i), *at(j), &start, &step, &mid);
        if (fp.FPIsBoundaryCrossedNoMargin(&start, &step)) continue;
        if (fp.FPPointsAreOnTheSameSide(&reference, &mid) != 0) continue;
      }
      segs.push_back(s);
    }
  }

  // 3. Self-crossing outline.
  for (std::size_t a = 0; a < segs.size(); ++a) {
    if (!segs[a].boundary) continue;
    for (std::size_t b = a + 1; b < segs.size(); ++b) {
      if (!segs[b].boundary || shareEnd(segs[a], segs[b])) continue;
      if (fp.FPDoLinesCross(at(segs[a].first), at(segs[a].second), at(segs[b].first), at(segs[b].second))) {
        fp.FPTerminate();
        return 0;
      }
    }
  }

  // 4. Greedy removal, re-counting everything on every pass.
  int maximum = 0;
  for (;;) {
    for (Segment& s : segs) s.crossings = -1;
    for (Segment& s : segs) {
      if (s.removed || s.boundary) continue;
      int count = 0;
      for (const Segment& t : segs) {
        if (&t == &s || t.removed || t.boundary || shareEnd(s, t)) continue;
        // The library's chord-crossing test (the footprint's), on freshly made lines.
        kutil::detail::TessLine ls, lt;
        kutil::detail::prepareTessLine(fp, *at(s.first), *at(s.second), s.first, s.second, &ls);
        kutil::detail::prepareTessLine(fp, *at(t.first), *at(t.second), t.first, t.second, &lt);
        int kind = 0;
        if (kutil::detail::tessLinesCross(fp, ls, lt, &kind)) ++count;
      }
      s.crossings = count;
    }
    int best = -1;
    for (const Segment& s : segs) {
      if (s.crossings != -1 && s.crossings > best) best = s.crossings;
    }
    if (best != -1) maximum = best;
    if (maximum < 1) break;
    Segment* victim = nullptr;
    for (Segment& s : segs) {
      if (s.crossings == maximum) {
        victim = &s;
        break;
      }
    }
    if (victim == nullptr) break;  // cannot happen: the chord it crossed is still live
    victim->removed = 1;
  }

  // 5. Triangles read off by spokes.
  bool anyTwo = false;
  for (int v = 0; v <= n; ++v) {
    for (Segment& s : segs)
      if (s.mark == 0) s.mark = -1;
    int spokes = 0;
    for (Segment& s : segs) {
      if (!s.removed && hasEnd(s, v)) {
        s.mark = 0;
        ++spokes;
      }
    }
    if (spokes < 2) break;
    anyTwo = true;
    for (const Segment& c : segs) {
      if (c.mark != 0) continue;
      for (Segment& s : segs)
        if (s.mark == 1) s.mark = -1;
      for (Segment& s : segs) {
        if (s.removed || s.mark == 0 || !shareEnd(s, c)) continue;
        for (const Segment& t : segs) {
          if (t.mark == 0 && &t != &c && shareEnd(s, t)) {
            s.mark = 1;
            break;
          }
        }
      }
      for (const Segment& s : segs) {
        if (s.mark != 1) continue;
        Triple t = {s.first, s.second, hasEnd(s, c.first) ? c.second : c.first};
        std::sort(t.begin(), t.end());
        triangles->push_back(t);
      }
    }
  }
  fp.FPTerminate();
  if (!anyTwo) {
    triangles->clear();
    return 0;
  }

  // 6. Duplicates removed, first copies kept.
  for (std::size_t i = 0; i < triangles->size(); ++i) {
    for (std::size_t k = i + 1; k < triangles->size();) {
      if ((*triangles)[k] == (*triangles)[i]) {
        triangles->erase(triangles->begin() + static_cast<std::ptrdiff_t>(k));
      } else {
        ++k;
      }
    }
  }
  return triangles->empty() ? 0 : 1;
}

std::vector<_D3DVECTOR> convexSeed(int n, float radius, double phase) {
  std::vector<_D3DVECTOR> out;
  const double pi = 3.14159265358979323846;
  for (int k = 0; k < n; ++k) {
    const double a = phase + 2.0 * pi * k / n;
    out.push_back(vec(radius * std::cos(a), radius * std::sin(a), 0.0));
  }
  return out;
}

std::vector<_D3DVECTOR> jitteredConvexSeed(int n, std::uint32_t seed) {
  std::mt19937 rng(seed);
  std::uniform_real_distribution<double> angle(0.0, 6.283185307179586);
  std::vector<double> angles;
  for (int k = 0; k < n; ++k) angles.push_back(angle(rng));
  std::sort(angles.begin(), angles.end());
  std::vector<_D3DVECTOR> out;
  for (double a : angles) out.push_back(vec(12.0 * std::cos(a) + 3.0, 7.0 * std::sin(a) - 2.0, 0.0));
  return out;
}

std::vector<_D3DVECTOR> starSeed(int points, float outer, float inner) {
  std::vector<_D3DVECTOR> out;
  const double pi = 3.14159265358979323846;
  for (int k = 0; k < 2 * points; ++k) {
    const double a = pi * k / points + 0.1;
    const double r = (k % 2 == 0) ? outer : inner;
    out.push_back(vec(r * std::cos(a), r * std::sin(a), 0.0));
  }
  return out;
}

std::vector<_D3DVECTOR> lShapeSeed(float w, float h, float t, int parts) {
  const float corners[6][2] = {{0, 0}, {w, 0}, {w, t}, {t, t}, {t, h}, {0, h}};
  std::vector<_D3DVECTOR> out;
  for (int c = 0; c < 6; ++c) {
    const float* p = corners[c];
    const float* q = corners[(c + 1) % 6];
    for (int k = 0; k < parts; ++k) {
      const double f = static_cast<double>(k) / parts;
      out.push_back(vec(p[0] + f * (q[0] - p[0]), p[1] + f * (q[1] - p[1]), 0.0));
    }
  }
  return out;
}

std::vector<_D3DVECTOR> combSeed(int teeth) {
  // Bar from y = 0 to 2, teeth of width 1 and height 4 with gaps of 1.
  std::vector<_D3DVECTOR> out;
  const double width = 2.0 * teeth - 1.0;
  out.push_back(vec(0, 0, 0));
  out.push_back(vec(width, 0, 0));
  for (int k = teeth - 1; k >= 0; --k) {
    const double left = 2.0 * k;
    out.push_back(vec(left + 1.0, 6.0, 0));
    out.push_back(vec(left, 6.0, 0));
    if (k > 0) {
      out.push_back(vec(left, 2.0, 0));
      out.push_back(vec(left - 1.0, 2.0, 0));
    }
  }
  return out;
}

std::vector<_D3DVECTOR> collinearSquareSeed(int perSide, float side) {
  std::vector<_D3DVECTOR> out;
  const int k = std::max(1, perSide - 1);  // steps per side
  const double corners[4][2] = {{0, 0}, {side, 0}, {side, side}, {0, side}};
  for (int c = 0; c < 4; ++c) {
    const double* p = corners[c];
    const double* q = corners[(c + 1) % 4];
    for (int s = 0; s < k; ++s) {
      const double f = static_cast<double>(s) / k;
      out.push_back(vec(p[0] + f * (q[0] - p[0]), p[1] + f * (q[1] - p[1]), 0.0));
    }
  }
  return out;
}

std::vector<_D3DVECTOR> randomSimpleSeed(int n, std::uint32_t seed) {
  std::mt19937 rng(seed);
  std::uniform_real_distribution<double> angle(0.0, 6.283185307179586);
  std::uniform_real_distribution<double> radius(2.0, 20.0);
  std::vector<double> angles;
  for (int k = 0; k < n; ++k) angles.push_back(angle(rng));
  std::sort(angles.begin(), angles.end());
  std::vector<_D3DVECTOR> out;
  for (double a : angles) {
    const double r = radius(rng);
    out.push_back(vec(r * std::cos(a), r * std::sin(a), 0.0));
  }
  return out;
}

std::vector<_D3DVECTOR> globeSeed(int rings, float radius) {
  CKVGen gen;
  std::vector<_D3DVECTOR> out;
  if (GKVSeedExtruderGlobe(&gen, 4, rings, radius)) {
    _D3DVECTOR p;
    for (int i = 0; gen.KVGetSeedVertexByNumber(i, &p) == 1; ++i) out.push_back(p);
  }
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
