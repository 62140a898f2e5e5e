// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Triangulation of a seed polygon: the tessellation record kept by CKVGen and
// the chord-removal engine behind KVTesselateSeedPlane.
#pragma once
#include <cfloat>
#include <cmath>
#include <cstddef>
#include <vector>

#include "KFootPrint.h"

namespace kutil::detail {

/// One accepted pair of seed vertices: a polygon edge or an inner chord.
struct TessSegment {
  _D3DVECTOR start;   ///< seed position of the first vertex (not laid)
  _D3DVECTOR end;     ///< seed position of the second vertex
  int first;          ///< seed vertex number i
  int second;         ///< seed vertex number j, always j > i
  int boundary;       ///< 1 for a polygon edge, 0 for an inner chord
  int removed;        ///< 1 once the chord has been thrown out
  int mark;           ///< -1 none; only meaningful while triangles are read off
  int crossings;      ///< live chords it crosses; -1 when not counted
};

/// Three seed vertex numbers in ascending order.
struct TessTriangle {
  int v[3];
};

/// Working footprint of a tessellation: the laid seed, with the kind of its
/// last line intersection readable without a call.
class TessFootPrint : public CKFootPrint {
 public:
  /// Kind of the last intersection: 0 one point, 1 coincident, 2 parallel.
  int lastIntersectionKind() const { return m_coincidence.kind; }
};

/// A laid segment prepared for many crossing tests: its footprint line
/// equation plus the terms of the general-line intersection.
struct TessLine {
  tagKLineEquation eq;  ///< as the footprint makes it from the two end points
  double gradient;      ///< eq.gradient, widened
  double gradientX;     ///< gradient times x-intercept (exact in double)
  float xMin;           ///< smallest x of the two ends
  float xMax;           ///< largest x of the two ends
  int first;            ///< seed vertex number of the first end (-1 when not a seed pair)
  int second;           ///< seed vertex number of the second end
};

/// Prepares the segment a -> b (laid points) with the footprint's line equation.
inline void prepareTessLine(CKFootPrint& fp, const _D3DVECTOR& a, const _D3DVECTOR& b, int first, int second,
                            TessLine* out) {
  fp.FPMakeLineEquation(&out->eq, &a, &b);
  out->gradient = out->eq.gradient;
  out->gradientX = out->gradient * static_cast<double>(out->eq.xIntercept);
  out->xMin = a.x < b.x ? a.x : b.x;
  out->xMax = a.x < b.x ? b.x : a.x;
  out->first = first;
  out->second = second;
}

/// True when two sloped (kind 0) lines are not parallel for the footprint, so
/// that they meet in one point.
inline bool tessMeetInPoint(const TessLine& a, const TessLine& b) {
  return a.eq.kind == 0 && b.eq.kind == 0 && !(std::fabs(a.gradient - b.gradient) < 0.001);
}

/// The footprint's answer for two lines that meet in one point
/// (tessMeetInPoint): the crossing x, worked out and narrowed to float exactly
/// as the footprint does, must lie within both segments' x extents (by the
/// maths library's between test: closed above, open below an ascending range).
/// The same either way round. Branch-light, for the inner loops.
inline int tessPointCross(const TessLine& a, const TessLine& b) {
  const double x = (a.gradientX - b.gradientX) / (a.gradient - b.gradient);
  float px;
  if (x > FLT_MAX) {
    px = FLT_MAX;
  } else if (x < -FLT_MAX) {
    px = -FLT_MAX;
  } else if (x != x) {
    px = 0.0f;
  } else {
    px = static_cast<float>(x);
  }
  const float as = a.eq.start.x, ae = a.eq.end.x, bs = b.eq.start.x, be = b.eq.end.x;
  const bool inA = ((ae <= px) & (px <= as)) | ((as < px) & (px <= ae));
  const bool inB = ((be <= px) & (px <= bs)) | ((bs < px) & (px <= be));
  return static_cast<int>(inA & inB);
}

/// The footprint's crossing test of segment a against segment b
/// (FPDoLinesCross on the two line equations; the order matters only for
/// collinear segments), with its commonest case, two sloped lines meeting in
/// one point, worked out inline by tessPointCross. kind receives the
/// intersection kind: 0 one point, 1 coincident, 2 parallel.
inline int tessLinesCross(TessFootPrint& fp, const TessLine& a, const TessLine& b, int* kind) {
  if (tessMeetInPoint(a, b)) {
    *kind = 0;
    return tessPointCross(a, b);
  }
  const int r = fp.FPDoLinesCross(&a.eq, &b.eq);
  *kind = fp.lastIntersectionKind();
  return r;
}

/// A seed point laid on the floor: (x, y, z) becomes (x, 0, y).
inline _D3DVECTOR layOnFloor(const _D3DVECTOR& v) {
  _D3DVECTOR out;
  out.x = v.x;
  out.y = 0.0f;
  out.z = v.y;
  return out;
}

/// How a candidate chord p -> q (laid points) is probed: its middle 98 %
/// (start and step) and its midpoint. Shared by every implementation of the
/// method so that all of them probe bit-identical segments.
void chordProbe(const _D3DVECTOR& p, const _D3DVECTOR& q, _D3DVECTOR* start, _D3DVECTOR* step, _D3DVECTOR* mid);

/// The point known to lie outside the laid seed: box max + (17.3133, 0, 103.00314),
/// or the origin when the footprint has no box.
_D3DVECTOR outsideReference(CKFootPrint& laid);

/// Fills fp with the seed laid on the floor and updates its dependencies
/// (what the generator's footprint-from-seed does with lay set). Returns the
/// dependency update's status; 0 for an empty seed.
int fillLaidFootPrint(CKFootPrint& fp, const std::vector<_D3DVECTOR>& seed);

/// Tuning of the engine (tests use it to reach the low-memory path).
struct TessOptions {
  /// Largest chord-crossing matrix kept in memory; beyond it crossings are
  /// re-tested per removal instead (slower, but memory stays linear).
  std::size_t matrixLimitBytes = std::size_t(48) << 20;
};

/// Result of one tessellation run.
struct TessResult {
  std::vector<TessSegment> segments;    ///< every accepted segment, in list order
  std::vector<TessTriangle> triangles;  ///< the triangles, first-found order, no duplicates
};

/// Runs the whole method on a seed: laid holds the seed laid on the floor with
/// current dependencies. Returns 1 with the result filled, 0 on failure (no
/// vertex, a self-crossing outline, no triangle, or no memory).
int tessellateSeed(const std::vector<_D3DVECTOR>& seed, TessFootPrint& laid, TessResult* result,
                   const TessOptions& options = TessOptions());

}  // namespace kutil::detail

/// Triangulation of the seed polygon, owned by its generator.
struct KVTessellation {
  std::vector<kutil::detail::TessSegment> segments;    ///< accepted edges and chords
  std::vector<kutil::detail::TessTriangle> triangles;  ///< the result
  int triangleCursor = -1;                             ///< index of the current triangle, -1 none
  int reserved = 0;                                    ///< not used
};
