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
// the chords that cross it, and a tournament tree over the counts yields the
// most-crossed chord (first in list order) at once. The crossing test itself is
// the footprint's, so the triangles are exactly those of the re-counting method.
#include "tess.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <new>
#include <unordered_set>

namespace kutil::detail {

namespace {

// The footprint's crossing test answers true only where the crossing point lies
// within the x extent of both segments, except for two collinear lines of
// constant x whose x values differ by less than its 0.001 tolerance; pairs whose
// x ranges are further apart than that cannot cross and are not tested.
constexpr double kXGap = 0.002;

// A chord as the removal step needs it: its laid line equation and x range.
struct Chord {
  tagKLineEquation line;
  float xMin;
  float xMax;
  int first;
  int second;
};

bool xRangesApart(const Chord& a, const Chord& b) {
  return static_cast<double>(a.xMax) + kXGap < b.xMin || static_cast<double>(b.xMax) + kXGap < a.xMin;
}

bool chordsShareEnd(const Chord& a, const Chord& b) {
  return a.first == b.first || a.first == b.second || a.second == b.first || a.second == b.second;
}

// Leftmost maximum over the crossing counts, as a tournament tree. Counts only
// ever go down, so an update climbs only while the changed chord was the winner.
class MaxTree {
 public:
  explicit MaxTree(const std::vector<int>& counts) : m_counts(counts) {
    m_size = 1;
    while (m_size < counts.size()) m_size <<= 1;
    m_node.assign(2 * m_size, -1);
    for (std::size_t i = 0; i < m_size; ++i) m_node[m_size + i] = i < counts.size() ? static_cast<int>(i) : -1;
    for (std::size_t p = m_size - 1; p >= 1; --p) m_node[p] = pick(m_node[2 * p], m_node[2 * p + 1]);
  }
  // Chord with the largest count, the first in list order among equals; -1 when empty.
  int top() const { return m_node.size() > 1 ? m_node[1] : -1; }
  // Call after lowering the count of chord i.
  void lowered(int i) {
    for (std::size_t p = (m_size + static_cast<std::size_t>(i)) >> 1; p >= 1 && m_node[p] == i; p >>= 1) {
      m_node[p] = pick(m_node[2 * p], m_node[2 * p + 1]);
    }
  }

 private:
  int pick(int a, int b) const {
    if (a < 0) return b;
    if (b < 0) return a;
    const int ca = m_counts[static_cast<std::size_t>(a)], cb = m_counts[static_cast<std::size_t>(b)];
    if (ca != cb) return ca > cb ? a : b;
    return a < b ? a : b;
  }
  const std::vector<int>& m_counts;
  std::vector<int> m_node;
  std::size_t m_size = 1;
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

// Step 2: every pair of seed vertices that is a polygon edge, or whose chord
// (shortened to its middle 98 %) stays clear of the outline with its midpoint
// inside, in list order (i ascending, then j ascending).
void collectCandidates(const std::vector<_D3DVECTOR>& seed, const std::vector<_D3DVECTOR>& laid, CKFootPrint& fp,
                       std::vector<TessSegment>* out) {
  const _D3DVECTOR reference = outsideReference(fp);
  const int n = static_cast<int>(seed.size());
  for (int i = 0; i < n; ++i) {
    for (int j = i + 1; j < n; ++j) {
      int boundary = 0;
      if (j == i + 1 || (i == 0 && j == n - 1)) {
        boundary = 1;
      } else {
        _D3DVECTOR start, step, mid;
        chordProbe(laid[static_cast<std::size_t>(i)], laid[static_cast<std::size_t>(j)], &start, &step, &mid);
        if (fp.FPIsBoundaryCrossedNoMargin(&start, &step)) continue;
        if (fp.FPPointsAreOnTheSameSide(&reference, &mid)) continue;
      }
      TessSegment s;
      s.start = seed[static_cast<std::size_t>(i)];
      s.end = seed[static_cast<std::size_t>(j)];
      s.first = i;
      s.second = j;
      s.boundary = boundary;
      s.removed = 0;
      s.mark = -1;
      s.crossings = -1;
      out->push_back(s);
    }
  }
}

// Step 3: two polygon edges without a common vertex that cross.
bool outlineCrossesItself(const std::vector<TessSegment>& segments, const std::vector<_D3DVECTOR>& laid,
                          TessFootPrint& fp) {
  std::vector<Chord> edges;
  for (const TessSegment& s : segments) {
    if (!s.boundary) continue;
    Chord c;
    fp.FPMakeLineEquation(&c.line, &laid[static_cast<std::size_t>(s.first)], &laid[static_cast<std::size_t>(s.second)]);
    c.xMin = std::min(c.line.start.x, c.line.end.x);
    c.xMax = std::max(c.line.start.x, c.line.end.x);
    c.first = s.first;
    c.second = s.second;
    edges.push_back(c);
  }
  for (std::size_t a = 0; a < edges.size(); ++a) {
    for (std::size_t b = a + 1; b < edges.size(); ++b) {
      if (chordsShareEnd(edges[a], edges[b]) || xRangesApart(edges[a], edges[b])) continue;
      if (fp.FPDoLinesCross(&edges[a].line, &edges[b].line)) return true;
    }
  }
  return false;
}

// Step 4: greedy removal of crossing chords. Counts follow the re-counting
// method exactly: the count of s is the number of live chords t, without a
// common vertex, for which the test (s, t) answers true.
void removeCrossingChords(std::vector<TessSegment>* segments, const std::vector<_D3DVECTOR>& laid,
                          TessFootPrint& fp, const TessOptions& options) {
  std::vector<std::size_t> where;  // chord number -> position in the segment list
  std::vector<Chord> chords;
  for (std::size_t k = 0; k < segments->size(); ++k) {
    TessSegment& s = (*segments)[k];
    s.crossings = -1;
    if (s.boundary) continue;
    Chord c;
    fp.FPMakeLineEquation(&c.line, &laid[static_cast<std::size_t>(s.first)], &laid[static_cast<std::size_t>(s.second)]);
    c.xMin = std::min(c.line.start.x, c.line.end.x);
    c.xMax = std::max(c.line.start.x, c.line.end.x);
    c.first = s.first;
    c.second = s.second;
    chords.push_back(c);
    where.push_back(k);
  }
  const std::size_t m = chords.size();
  if (m == 0) return;

  // Chords in order of their smallest x, so that each one meets only the
  // following chords whose x range starts before its own ends.
  std::vector<int> order(m);
  for (std::size_t i = 0; i < m; ++i) order[i] = static_cast<int>(i);
  std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
    return chords[static_cast<std::size_t>(a)].xMin < chords[static_cast<std::size_t>(b)].xMin;
  });
  std::vector<int> rank(m);
  for (std::size_t r = 0; r < m; ++r) rank[static_cast<std::size_t>(order[r])] = static_cast<int>(r);

  const std::size_t words = (m + 63) / 64;
  const bool useMatrix = words * 64 * words * 8 <= options.matrixLimitBytes;
  // crossedBy: row r (by rank) holds the ranks of the chords whose count drops
  // when chord r goes, i.e. the chords s for which the test (s, r) is true.
  std::vector<std::uint64_t> crossedBy;
  if (useMatrix) crossedBy.assign(words * 64 * words, 0);
  struct OneWay {
    std::size_t low, high;  // ranks, low < high
    bool lowCrossesHigh, highCrossesLow;
  };
  std::vector<OneWay> oneWay;  // collinear pairs, where the test depends on the order
  std::vector<int> counts(m, 0);

  for (std::size_t a = 0; a < m; ++a) {
    const int s = order[a];
    const Chord& cs = chords[static_cast<std::size_t>(s)];
    const double reach = static_cast<double>(cs.xMax) + kXGap;
    std::uint64_t* row = useMatrix ? &crossedBy[a * words] : nullptr;
    for (std::size_t b = a + 1; b < m; ++b) {
      const int t = order[b];
      const Chord& ct = chords[static_cast<std::size_t>(t)];
      if (ct.xMin > reach) break;
      if (chordsShareEnd(cs, ct)) continue;
      const bool st = fp.FPDoLinesCross(&cs.line, &ct.line) != 0;
      bool ts = st;
      // Lines meeting in one point give the same answer either way round (the
      // point is computed symmetrically); collinear ones are tested both ways.
      if (fp.lastIntersectionKind() == 1) ts = fp.FPDoLinesCross(&ct.line, &cs.line) != 0;
      if (st) ++counts[static_cast<std::size_t>(s)];
      if (ts) ++counts[static_cast<std::size_t>(t)];
      if (!useMatrix) continue;
      if (st != ts) {
        oneWay.push_back({a, b, st, ts});
      } else if (st) {
        row[b >> 6] |= std::uint64_t(1) << (b & 63);
      }
    }
  }

  if (useMatrix) {
    // Mirror the upper triangle into the lower one, 64 x 64 bits at a time.
    std::uint64_t block[64];
    for (std::size_t bi = 0; bi < words; ++bi) {
      for (std::size_t bj = bi; bj < words; ++bj) {
        for (std::size_t k = 0; k < 64; ++k) block[k] = crossedBy[(bi * 64 + k) * words + bj];
        transpose64(block);
        for (std::size_t k = 0; k < 64; ++k) crossedBy[(bj * 64 + k) * words + bi] |= block[k];
      }
    }
    for (const OneWay& p : oneWay) {
      // Row high, column low: the count of low drops when high goes.
      if (p.lowCrossesHigh) crossedBy[p.high * words + (p.low >> 6)] |= std::uint64_t(1) << (p.low & 63);
      if (p.highCrossesLow) crossedBy[p.low * words + (p.high >> 6)] |= std::uint64_t(1) << (p.high & 63);
    }
  }

  std::vector<std::uint64_t> live(words, 0);  // by rank
  for (std::size_t r = 0; r < m; ++r) live[r >> 6] |= std::uint64_t(1) << (r & 63);
  MaxTree tree(counts);
  for (;;) {
    const int top = tree.top();
    if (top < 0 || counts[static_cast<std::size_t>(top)] < 1) break;
    const std::size_t gone = static_cast<std::size_t>(top);
    (*segments)[where[gone]].removed = 1;
    counts[gone] = -1;
    tree.lowered(top);
    const std::size_t goneRank = static_cast<std::size_t>(rank[gone]);
    live[goneRank >> 6] &= ~(std::uint64_t(1) << (goneRank & 63));
    if (useMatrix) {
      const std::uint64_t* row = &crossedBy[goneRank * words];
      for (std::size_t w = 0; w < words; ++w) {
        std::uint64_t bits = row[w] & live[w];
        while (bits != 0) {
          const unsigned bit = static_cast<unsigned>(__builtin_ctzll(bits));
          bits &= bits - 1;
          const int s = order[w * 64 + bit];
          --counts[static_cast<std::size_t>(s)];
          tree.lowered(s);
        }
      }
    } else {
      const Chord& cg = chords[gone];
      for (std::size_t w = 0; w < words; ++w) {
        std::uint64_t bits = live[w];
        while (bits != 0) {
          const unsigned bit = static_cast<unsigned>(__builtin_ctzll(bits));
          bits &= bits - 1;
          const int s = order[w * 64 + bit];
          const Chord& cs = chords[static_cast<std::size_t>(s)];
          if (chordsShareEnd(cs, cg) || xRangesApart(cs, cg)) continue;
          if (fp.FPDoLinesCross(&cs.line, &cg.line)) {
            --counts[static_cast<std::size_t>(s)];
            tree.lowered(s);
          }
        }
      }
    }
  }
  for (std::size_t c = 0; c < m; ++c) (*segments)[where[c]].crossings = counts[c];
}

// Steps 5 and 6: for each vertex v in turn, for each spoke (v, a) in list
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
  for (auto& list : spokes) std::sort(list.begin(), list.end());
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
      for (const auto& far : spokes[static_cast<std::size_t>(a)]) {
        const int x = far.second;
        if (x == v || joined[static_cast<std::size_t>(x)] != v) continue;
        int t[3] = {v, a, x};
        std::sort(t, t + 3);
        const std::uint64_t key = (static_cast<std::uint64_t>(t[0]) * un + static_cast<std::uint64_t>(t[1])) * un +
                                  static_cast<std::uint64_t>(t[2]);
        if (!seen.insert(key).second) continue;
        out->push_back({{t[0], t[1], t[2]}});
      }
    }
  }
  return anyTwo && !out->empty();
}

}  // namespace

void chordProbe(const _D3DVECTOR& p, const _D3DVECTOR& q, _D3DVECTOR* start, _D3DVECTOR* step, _D3DVECTOR* mid) {
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
  if (laid.FPGetBox(&box) && box != nullptr) {
    // Irregular offsets keep the point out of line with the outline's vertices.
    ref.x = static_cast<float>(box->max.x + 17.3133);
    ref.z = static_cast<float>(box->max.z + 103.00314);
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

int tessellateSeed(const std::vector<_D3DVECTOR>& seed, TessFootPrint& laid, TessResult* result,
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
