// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The tessellation engine. Every pair of seed vertices whose chord lies inside
// the polygon is a candidate; chords that cross are thrown out greedily, the
// most-crossed first (the first in list order among equals), until none cross;
// triangles are then read off as triples of mutually joined vertices.
//
// Re-counting every chord's crossings after each removal costs the sixth power
// of the vertex count on convex outlines. Here the crossings between chords are
// tested once and kept in a bit matrix; removing a chord lowers the counts of
// the chords that cross it, and per-block maxima over the counts yield the
// most-crossed chord (first in list order) cheaply. The crossing test itself is
// the footprint's, so the triangles are exactly those of the re-counting method.
#include "Tessellation.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <new>
#include <unordered_set>

#include "KVector.h"

namespace kutil::detail {

namespace {

// The footprint's crossing test answers true only where the crossing point lies
// within the x extent of both segments, except for two collinear lines of
// constant x whose x values differ by less than its 0.001 tolerance; pairs whose
// x ranges are further apart than that cannot cross and are not tested.
constexpr double kXGap = 0.002;

bool xRangesApart(const TessLine& a, const TessLine& b) {
  return static_cast<double>(a.xMax) + kXGap < b.xMin || static_cast<double>(b.xMax) + kXGap < a.xMin;
}

bool shareEnd(const TessLine& a, const TessLine& b) {
  return a.first == b.first || a.first == b.second || a.second == b.first || a.second == b.second;
}

int crosses(CKFootPrint& fp, const TessLine& a, const TessLine& b) {
  int kind = 0;
  return tessLinesCross(fp, a, b, &kind);
}

// Leftmost largest crossing count, kept per block of 64 chords. Counts only go
// down; a block is re-scanned only after its own maximum was lowered.
class BlockMax {
 public:
  explicit BlockMax(std::vector<int>& counts) : m_counts(counts) {
    const std::size_t blocks = (counts.size() + 63) / 64;
    m_max.assign(blocks, INT_MIN);
    m_dirty.assign(blocks, 1);
  }
  void lower(std::size_t i) {
    const std::size_t b = i >> 6;
    if (m_counts[i] == m_max[b]) m_dirty[b] = 1;
    --m_counts[i];
  }
  void remove(std::size_t i) {
    m_dirty[i >> 6] = 1;
    m_counts[i] = -1;
  }
  // Chord with the largest count, the first in list order among equals.
  std::size_t top() {
    const std::size_t n = m_counts.size();
    int best = INT_MIN;
    std::size_t bestBlock = 0;
    for (std::size_t b = 0; b < m_max.size(); ++b) {
      if (m_dirty[b]) {
        int mx = INT_MIN;
        const std::size_t end = std::min(n, (b + 1) * 64);
        for (std::size_t i = b * 64; i < end; ++i) mx = std::max(mx, m_counts[i]);
        m_max[b] = mx;
        m_dirty[b] = 0;
      }
      if (m_max[b] > best) {
        best = m_max[b];
        bestBlock = b;
      }
    }
    std::size_t i = bestBlock * 64;
    while (m_counts[i] != best) ++i;
    return i;
  }

 private:
  std::vector<int>& m_counts;
  std::vector<int> m_max;
  std::vector<unsigned char> m_dirty;
};

// Transposes a 64 x 64 bit block in place: bit c of row r moves to bit r of row c.
void transpose64(std::uint64_t a[64]) {
  std::uint64_t mask = 0x00000000FFFFFFFFull;
  for (unsigned j = 32; j != 0; j >>= 1, mask ^= (mask << j)) {
    for (unsigned k = 0; k < 64; k = ((k | j) + 1) & ~j) {
      const std::uint64_t t = ((a[k] >> j) ^ a[k | j]) & mask;
      a[k] ^= t << j;
      a[k | j] ^= t;
    }
  }
}

// The outline's edges prepared for the two footprint tests: made afresh from
// the vertices (as the boundary test makes them) and as the footprint holds
// them (as the same-side test reads them).
struct Outline {
  std::vector<TessLine> fresh, held;
  int vertexCount = 0;
  _D3DVECTOR reference;  // the outside point
};

Outline prepareOutline(const std::vector<_D3DVECTOR>& laid, CKFootPrint& fp) {
  Outline o;
  o.reference = outsideReference(fp);
  const std::size_t n = laid.size();
  o.fresh.resize(n);
  for (std::size_t k = 0; k < n; ++k) prepareTessLine(fp, laid[k], laid[(k + 1) % n], -1, -1, &o.fresh[k]);
  fp.FPSelectFirstEdge();
  do {
    tagKLineEquation* eq = nullptr;
    if (!fp.FPGetThisEdgeLineEquation(&eq) || eq == nullptr) break;
    TessLine line;
    tessLineFromEquation(*eq, -1, -1, &line);
    o.held.push_back(line);
  } while (fp.FPSelectNextEdgeNoWrap());
  fp.FPGetVertexCount(&o.vertexCount);
  return o;
}

// The two footprint tests on the chord p -> q (laid points), walked here over
// the prepared edges with the footprint's own crossing test: its middle 98 %
// crosses no edge (boundary crossed without margin), and its midpoint is not
// on the outside point's side (points on the same side).
bool chordInside(const _D3DVECTOR& p, const _D3DVECTOR& q, const Outline& outline, CKFootPrint& fp) {
  _D3DVECTOR start, step, mid, target;
  chordProbe(p, q, &start, &step, &mid);
  KUVectorAdd(&target, &start, &step);
  TessLine probe;
  prepareTessLine(fp, start, target, -1, -1, &probe);
  for (const TessLine& e : outline.fresh) {
    if (!xRangesApart(e, probe) && crosses(fp, e, probe)) return false;
  }
  if (outline.vertexCount <= 2) return false;  // two vertices are always "on the same side"
  TessLine toMid;
  prepareTessLine(fp, outline.reference, mid, -1, -1, &toMid);
  bool same = true;
  for (const TessLine& e : outline.held) {
    if (!xRangesApart(e, toMid) && crosses(fp, e, toMid)) same = !same;
  }
  return !same;
}

// Candidates: every pair of seed vertices that is a polygon edge, or whose
// chord lies inside the polygon, in list order (i ascending, then j ascending).
void collectCandidates(const std::vector<_D3DVECTOR>& seed, const std::vector<_D3DVECTOR>& laid,
                       CKFootPrint& fp, std::vector<TessSegment>* out) {
  const Outline outline = prepareOutline(laid, fp);
  const int n = static_cast<int>(seed.size());
  for (int i = 0; i < n; ++i) {
    for (int j = i + 1; j < n; ++j) {
      const bool edge = j == i + 1 || (i == 0 && j == n - 1);
      if (!edge &&
          !chordInside(laid[static_cast<std::size_t>(i)], laid[static_cast<std::size_t>(j)], outline, fp))
        continue;
      TessSegment s;
      s.start = seed[static_cast<std::size_t>(i)];
      s.end = seed[static_cast<std::size_t>(j)];
      s.first = i;
      s.second = j;
      s.boundary = edge ? 1 : 0;
      s.removed = 0;
      s.mark = -1;
      s.crossings = -1;
      out->push_back(s);
    }
  }
}

// Self-crossing outline: two polygon edges without a common vertex that cross,
// each pair tested once with the earlier edge (in list order) first.
bool outlineCrossesItself(const std::vector<TessSegment>& segments, const std::vector<_D3DVECTOR>& laid,
                          CKFootPrint& fp) {
  std::vector<TessLine> edges;
  for (const TessSegment& s : segments) {
    if (!s.boundary) continue;
    TessLine line;
    prepareTessLine(fp, laid[static_cast<std::size_t>(s.first)], laid[static_cast<std::size_t>(s.second)],
                    s.first, s.second, &line);
    edges.push_back(line);
  }
  for (std::size_t a = 0; a < edges.size(); ++a) {
    for (std::size_t b = a + 1; b < edges.size(); ++b) {
      if (shareEnd(edges[a], edges[b]) || xRangesApart(edges[a], edges[b])) continue;
      if (crosses(fp, edges[a], edges[b])) return true;
    }
  }
  return false;
}

// The inner chords of the segment list as laid lines, numbered in list order.
struct Chords {
  std::vector<TessLine> lines;     // by chord number
  std::vector<std::size_t> where;  // chord number -> position in the segment list
};

// Collects the inner chords, and marks every segment's crossings as not counted.
Chords innerChords(std::vector<TessSegment>* segments, const std::vector<_D3DVECTOR>& laid, CKFootPrint& fp) {
  Chords chords;
  for (std::size_t k = 0; k < segments->size(); ++k) {
    TessSegment& s = (*segments)[k];
    s.crossings = -1;
    if (s.boundary) continue;
    TessLine line;
    prepareTessLine(fp, laid[static_cast<std::size_t>(s.first)], laid[static_cast<std::size_t>(s.second)],
                    s.first, s.second, &line);
    chords.lines.push_back(line);
    chords.where.push_back(k);
  }
  return chords;
}

// The chords in sweep order (by smallest x): chords are numbered by their
// place in it (rank), and their terms are split into plain arrays so that the
// pair loop streams through them.
struct Sweep {
  std::vector<std::uint32_t> order;  // rank -> chord number
  std::vector<TessLine> sorted;      // by rank
  std::vector<float> xMin, xLow, xHigh;
  std::vector<double> gradient, gradientX;
  std::vector<int> first, second;
};

Sweep sweepOrder(const std::vector<TessLine>& chords) {
  const std::size_t m = chords.size();
  // A chord whose ends both have a NaN x sorts first; its reach (NaN) then
  // takes in every later chord, so nothing is left untested.
  std::vector<float> key(m);
  for (std::size_t i = 0; i < m; ++i) key[i] = chords[i].xMin != chords[i].xMin ? -HUGE_VALF : chords[i].xMin;
  Sweep sw;
  sw.order.resize(m);
  for (std::size_t i = 0; i < m; ++i) sw.order[i] = static_cast<std::uint32_t>(i);
  std::stable_sort(sw.order.begin(), sw.order.end(),
                   [&](std::uint32_t a, std::uint32_t b) { return key[a] < key[b]; });
  sw.sorted.resize(m);
  sw.xMin.resize(m);
  sw.xLow.resize(m);
  sw.xHigh.resize(m);
  sw.gradient.resize(m);
  sw.gradientX.resize(m);
  sw.first.resize(m);
  sw.second.resize(m);
  for (std::size_t r = 0; r < m; ++r) {
    const TessLine& c = chords[sw.order[r]];
    sw.sorted[r] = c;
    sw.xMin[r] = key[sw.order[r]];
    sw.xLow[r] = c.xLow;
    sw.xHigh[r] = c.xHigh;
    sw.gradient[r] = c.gradient;
    sw.gradientX[r] = c.gradientX;
    sw.first[r] = c.first;
    sw.second[r] = c.second;
  }
  return sw;
}

// A collinear pair whose test answers differently the two ways round.
struct OneWay {
  std::uint32_t s, t;  // ranks
  bool st, ts;
};

// Who crosses whom, by rank. Counts follow the re-counting method exactly: the
// count of s is the number of live chords t, without a common vertex, for
// which the test (s, t) answers true. The matrix row of rank r holds the ranks
// of the chords whose count drops when r goes, i.e. those s for which the test
// (s, r) is true; it is kept only while it fits the memory limit.
struct Crossings {
  std::size_t words = 0;  // 64-bit words per matrix row
  bool useMatrix = false;
  std::vector<std::uint64_t> crossedBy;
  std::vector<int> rankCounts;
  std::vector<OneWay> oneWay;
};

// Tests chord a against the following chords whose x range starts before its
// own ends, adding to the counts of both sides and to row a of the matrix;
// ends marks the vertices of chord a.
void countPairsOf(std::size_t a, const Sweep& sw, const std::vector<unsigned char>& ends, CKFootPrint& fp,
                  Crossings* c) {
  const TessLine& cs = sw.sorted[a];
  const double reach = static_cast<double>(cs.xMax) + kXGap;
  const std::size_t end = static_cast<std::size_t>(
      std::upper_bound(sw.xMin.begin() + static_cast<std::ptrdiff_t>(a) + 1, sw.xMin.end(), reach,
                       [](double limit, float x) { return limit < static_cast<double>(x); }) -
      sw.xMin.begin());
  std::uint64_t* row = c->useMatrix ? &c->crossedBy[a * c->words] : nullptr;
  std::vector<int>& rankCounts = c->rankCounts;
  const double gs = cs.gradient, gxs = cs.gradientX;
  const float lowS = cs.xLow, highS = cs.xHigh;
  int countS = 0;
  std::uint64_t acc = 0;
  for (std::size_t b = a + 1; b < end; ++b) {
    // Chords sharing a vertex with this one are not tested against it.
    const bool share =
        (ends[static_cast<std::size_t>(sw.first[b])] | ends[static_cast<std::size_t>(sw.second[b])]) != 0;
    const double dg = gs - sw.gradient[b];
    if (std::fabs(dg) >= 0.001) {
      // Two sloped lines meeting in one point (tessLinesCross's first case):
      // the same answer either way round.
      const int st = tessPointCross(gxs, lowS, highS, sw.gradientX[b], sw.xLow[b], sw.xHigh[b], dg) &
                     static_cast<int>(!share);
      countS += st;
      rankCounts[b] += st;
      acc |= static_cast<std::uint64_t>(st) << (b & 63);
    } else if (!share) {
      int kind = 0;
      const int st = tessLinesCross(fp, cs, sw.sorted[b], &kind);
      // Collinear segments may answer differently the other way round.
      const int ts = (kind == 1) ? crosses(fp, sw.sorted[b], cs) : st;
      countS += st;
      rankCounts[b] += ts;
      if (st != ts) {
        c->oneWay.push_back({static_cast<std::uint32_t>(a), static_cast<std::uint32_t>(b), st != 0, ts != 0});
      } else {
        acc |= static_cast<std::uint64_t>(st) << (b & 63);
      }
    }
    if ((b & 63) == 63) {
      if (row != nullptr) row[b >> 6] |= acc;
      acc = 0;
    }
  }
  if (acc != 0 && row != nullptr) row[(end - 1) >> 6] |= acc;
  rankCounts[a] += countS;
}

// Each crossing pair set one of its two matrix bits (the earlier rank's row);
// mirrors them block by block to set the other, then adds the one-way pairs.
void mirrorMatrix(Crossings* c) {
  const std::size_t words = c->words;
  std::vector<std::uint64_t>& crossedBy = c->crossedBy;
  std::uint64_t upper[64], lower[64];
  for (std::size_t bi = 0; bi < words; ++bi) {
    for (std::size_t bj = bi; bj < words; ++bj) {
      for (std::size_t k = 0; k < 64; ++k) {
        upper[k] = crossedBy[(bi * 64 + k) * words + bj];
        lower[k] = crossedBy[(bj * 64 + k) * words + bi];
      }
      transpose64(upper);
      if (bi == bj) {
        for (std::size_t k = 0; k < 64; ++k) crossedBy[(bi * 64 + k) * words + bi] |= upper[k];
        continue;
      }
      transpose64(lower);
      for (std::size_t k = 0; k < 64; ++k) {
        crossedBy[(bi * 64 + k) * words + bj] |= lower[k];
        crossedBy[(bj * 64 + k) * words + bi] |= upper[k];
      }
    }
  }
  for (const OneWay& p : c->oneWay) {
    // Row t, bit s: the count of s drops when t goes, when (s, t) is true.
    if (p.st) crossedBy[std::size_t(p.t) * words + (p.s >> 6)] |= std::uint64_t(1) << (p.s & 63);
    if (p.ts) crossedBy[std::size_t(p.s) * words + (p.t >> 6)] |= std::uint64_t(1) << (p.t & 63);
  }
}

// Counts every chord's crossings in one sweep over the pairs, keeping the
// matrix when it fits options' memory limit.
Crossings countCrossings(const Sweep& sw, std::size_t vertexCount, CKFootPrint& fp,
                         const TessOptions& options) {
  const std::size_t m = sw.sorted.size();
  Crossings c;
  c.words = (m + 63) / 64;
  c.useMatrix = c.words * 64 * c.words * sizeof(std::uint64_t) <= options.matrixLimitBytes;
  if (c.useMatrix) c.crossedBy.assign(c.words * 64 * c.words, 0);
  c.rankCounts.assign(m, 0);
  std::vector<unsigned char> ends(vertexCount, 0);
  for (std::size_t a = 0; a < m; ++a) {
    const TessLine& cs = sw.sorted[a];
    ends[static_cast<std::size_t>(cs.first)] = 1;
    ends[static_cast<std::size_t>(cs.second)] = 1;
    countPairsOf(a, sw, ends, fp, &c);
    ends[static_cast<std::size_t>(cs.first)] = 0;
    ends[static_cast<std::size_t>(cs.second)] = 0;
  }
  if (c.useMatrix) mirrorMatrix(&c);
  return c;
}

// The greedy removal: while some live chord crosses another, the most-crossed
// (the first in list order among equals) is removed and the counts of the
// chords it crossed drop, read from the matrix or, without one, tested again.
// Leaves every chord's final count in its segment.
void removeMostCrossed(std::vector<TessSegment>* segments, const Chords& chords, const Sweep& sw,
                       const Crossings& c, CKFootPrint& fp) {
  const std::size_t m = chords.lines.size();
  const std::size_t words = c.words;
  std::vector<int> counts(m);  // by chord number
  std::vector<std::uint32_t> rank(m);
  for (std::size_t r = 0; r < m; ++r) {
    counts[sw.order[r]] = c.rankCounts[r];
    rank[sw.order[r]] = static_cast<std::uint32_t>(r);
  }
  std::vector<std::uint64_t> live(words, 0);  // by rank
  for (std::size_t r = 0; r < m; ++r) live[r >> 6] |= std::uint64_t(1) << (r & 63);
  BlockMax best(counts);
  for (;;) {
    const std::size_t gone = best.top();
    if (counts[gone] < 1) break;
    (*segments)[chords.where[gone]].removed = 1;
    best.remove(gone);
    const std::size_t goneRank = rank[gone];
    live[goneRank >> 6] &= ~(std::uint64_t(1) << (goneRank & 63));
    if (c.useMatrix) {
      const std::uint64_t* row = &c.crossedBy[goneRank * words];
      for (std::size_t w = 0; w < words; ++w) {
        std::uint64_t bits = row[w] & live[w];
        while (bits != 0) {
          const std::size_t r = w * 64 + static_cast<std::size_t>(__builtin_ctzll(bits));
          bits &= bits - 1;
          best.lower(sw.order[r]);
        }
      }
    } else {
      const TessLine& cg = chords.lines[gone];
      for (std::size_t w = 0; w < words; ++w) {
        std::uint64_t bits = live[w];
        while (bits != 0) {
          const std::size_t r = w * 64 + static_cast<std::size_t>(__builtin_ctzll(bits));
          bits &= bits - 1;
          const TessLine& cs = sw.sorted[r];
          if (shareEnd(cs, cg) || xRangesApart(cs, cg)) continue;
          if (crosses(fp, cs, cg)) best.lower(sw.order[r]);
        }
      }
    }
  }
  for (std::size_t k = 0; k < m; ++k) (*segments)[chords.where[k]].crossings = counts[k];
}

// Greedy removal of crossing chords: the sweep, the pair counting, then the
// removal of the most-crossed chord until none crosses another.
void removeCrossingChords(std::vector<TessSegment>* segments, const std::vector<_D3DVECTOR>& laid,
                          CKFootPrint& fp, const TessOptions& options) {
  const Chords chords = innerChords(segments, laid, fp);
  if (chords.lines.empty()) return;
  const Sweep sweep = sweepOrder(chords.lines);
  const Crossings crossings = countCrossings(sweep, laid.size(), fp, options);
  removeMostCrossed(segments, chords, sweep, crossings, fp);
}

// Triangles: for each vertex v in turn, for each spoke (v, a) in list
// order, for each live segment (a, x) in list order with (v, x) also a spoke:
// the triangle {v, a, x}; only the first copy of each triangle is kept.
bool readTriangles(std::vector<TessSegment>* segments, int n, std::vector<TessTriangle>* out) {
  // Live segments of each vertex, in list order, as (segment, other end).
  std::vector<std::vector<std::pair<int, int>>> spokes(static_cast<std::size_t>(n));
  for (std::size_t k = 0; k < segments->size(); ++k) {
    TessSegment& s = (*segments)[k];
    s.mark = -1;
    if (s.removed) continue;
    spokes[static_cast<std::size_t>(s.first)].push_back({static_cast<int>(k), s.second});
    spokes[static_cast<std::size_t>(s.second)].push_back({static_cast<int>(k), s.first});
  }
  // (Each vertex's list is in list order already: segments were added in order.)
  std::vector<int> joined(static_cast<std::size_t>(n), -1);  // joined[x] == v: (v, x) is a spoke of v
  std::unordered_set<std::uint64_t> seen;
  bool anyTwo = false;
  const std::uint64_t un = static_cast<std::uint64_t>(n);
  for (int v = 0; v < n; ++v) {
    const auto& mine = spokes[static_cast<std::size_t>(v)];
    if (mine.size() < 2) break;
    anyTwo = true;
    for (const auto& sp : mine) joined[static_cast<std::size_t>(sp.second)] = v;
    for (const auto& sp : mine) {
      const int a = sp.second;
      for (const auto& spoke : spokes[static_cast<std::size_t>(a)]) {
        const int x = spoke.second;
        if (x == v || joined[static_cast<std::size_t>(x)] != v) continue;
        int t[3] = {v, a, x};
        std::sort(t, t + 3);
        const std::uint64_t key =
            (static_cast<std::uint64_t>(t[0]) * un + static_cast<std::uint64_t>(t[1])) * un +
            static_cast<std::uint64_t>(t[2]);
        if (!seen.insert(key).second) continue;
        out->push_back({{t[0], t[1], t[2]}});
      }
    }
  }
  return anyTwo && !out->empty();
}

}  // namespace

void chordProbe(const _D3DVECTOR& p, const _D3DVECTOR& q, _D3DVECTOR* start, _D3DVECTOR* step,
                _D3DVECTOR* mid) {
  _D3DVECTOR d;
  d.x = q.x - p.x;
  d.y = q.y - p.y;
  d.z = q.z - p.z;
  start->x = static_cast<float>(p.x + 0.01 * d.x);
  start->y = static_cast<float>(p.y + 0.01 * d.y);
  start->z = static_cast<float>(p.z + 0.01 * d.z);
  step->x = static_cast<float>(0.98 * d.x);
  step->y = static_cast<float>(0.98 * d.y);
  step->z = static_cast<float>(0.98 * d.z);
  mid->x = static_cast<float>(p.x + 0.5 * d.x);
  mid->y = static_cast<float>(p.y + 0.5 * d.y);
  mid->z = static_cast<float>(p.z + 0.5 * d.z);
}

_D3DVECTOR outsideReference(CKFootPrint& laid) {
  _D3DVECTOR ref = {0.0f, 0.0f, 0.0f};
  _D3DRMBOX* box = nullptr;
  _D3DVECTOR* external = nullptr;
  // The footprint's own external vertex (box max plus its irregular offsets), on the floor.
  if (laid.FPGetBox(&box) && laid.FPGetExternalVertex(&external)) {
    ref.x = external->x;
    ref.z = external->z;
  }
  return ref;
}

int fillLaidFootPrint(CKFootPrint& fp, const std::vector<_D3DVECTOR>& seed) {
  fp.FPDeleteAllEdges();
  if (seed.empty()) return 0;
  for (const _D3DVECTOR& v : seed) {
    const _D3DVECTOR laid = layOnFloor(v);
    if (!fp.FPAddVertex(&laid)) return 0;
  }
  return fp.FPUpdateVertexDependencies();
}

int tessellateSeed(const std::vector<_D3DVECTOR>& seed, CKFootPrint& laid, TessResult* result,
                   const TessOptions& options) {
  if (result == nullptr) return 0;
  result->segments.clear();
  result->triangles.clear();
  if (seed.empty()) return 0;
  try {
    std::vector<_D3DVECTOR> floor;
    floor.reserve(seed.size());
    for (const _D3DVECTOR& v : seed) floor.push_back(layOnFloor(v));
    collectCandidates(seed, floor, laid, &result->segments);
    if (outlineCrossesItself(result->segments, floor, laid)) return 0;
    removeCrossingChords(&result->segments, floor, laid, options);
    if (!readTriangles(&result->segments, static_cast<int>(seed.size()), &result->triangles)) return 0;
    return 1;
  } catch (const std::bad_alloc&) {
    result->segments.clear();
    result->triangles.clear();
    return 0;
  }
}

}  // namespace kutil::detail
