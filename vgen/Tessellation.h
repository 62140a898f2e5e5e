// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Triangulation of a seed polygon: the tessellation record kept by CKVGen and
// the chord-removal engine behind KVTesselateSeedPlane.
#pragma once
#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstddef>
#include <vector>

#include "FootPrintInternals.h"

namespace kutil::detail {

/// One accepted pair of seed vertices: a polygon edge or an inner chord.
struct TessSegment {
  _D3DVECTOR start;  ///< seed position of the first vertex (not laid)
  _D3DVECTOR end;    ///< seed position of the second vertex
  int first;         ///< seed vertex number i
  int second;        ///< seed vertex number j, always j > i
  int boundary;      ///< 1 for a polygon edge, 0 for an inner chord
  int removed;       ///< 1 once the chord has been thrown out
  int mark;          ///< -1 none; only meaningful while triangles are read off
  int crossings;     ///< live chords it crosses; -1 when not counted
};

/// Three seed vertex numbers in ascending order.
struct TessTriangle {
  int v[3];
};

/// A laid segment prepared for many crossing tests: its footprint line
/// equation plus the terms of the sloped-line intersection.
struct TessLine {
  tagKLineEquation eq;  ///< as the footprint makes it from the two end points
  double gradient;      ///< eq.gradient widened; NaN unless the line is sloped (kind 0)
  double gradientX;     ///< eq.gradient times the x-intercept (exact in double)
  float xLow;           ///< a crossing x must lie strictly above this ...
  float xHigh;          ///< ... and at or below this to be within the segment
  float xMin;           ///< smallest x of the two ends
  float xMax;           ///< largest x of the two ends
  int first;            ///< seed vertex number of the first end (-1 when not a seed pair)
  int second;           ///< seed vertex number of the second end
};

/// Fills out from a footprint line equation. The x window restates the
/// footprint's closed extent test (both ends count) as one open and one
/// closed bound.
inline void tessLineFromEquation(const tagKLineEquation& eq, int first, int second, TessLine* out) {
  out->eq = eq;
  out->gradient = eq.kind == 0 ? static_cast<double>(eq.gradient) : std::nan("");
  out->gradientX = static_cast<double>(eq.gradient) * static_cast<double>(eq.xIntercept);
  const float s = eq.start.x, e = eq.end.x;
  if (s <= e) {
    out->xLow = std::nextafter(s, -HUGE_VALF);
    out->xHigh = e;
  } else if (e < s) {
    out->xLow = std::nextafter(e, -HUGE_VALF);
    out->xHigh = s;
  } else {
    out->xLow = out->xHigh = std::nanf("");  // no point is within a NaN extent
  }
  out->xMin = s < e ? s : e;
  out->xMax = s < e ? e : s;
  out->first = first;
  out->second = second;
}

/// Prepares the segment a -> b (laid points) with the footprint's line equation.
inline void prepareTessLine(CKFootPrint& fp, const _D3DVECTOR& a, const _D3DVECTOR& b, int first, int second,
                            TessLine* out) {
  tagKLineEquation eq;
  fp.FPMakeLineEquation(&eq, &a, &b);
  tessLineFromEquation(eq, first, second, out);
}

/// The footprint's answer for two sloped lines that meet in one point (the
/// difference of their gradients, dg, is at least 0.001): their crossing x,
/// worked out and narrowed to float exactly as the footprint does, must lie
/// within both segments' x windows. The same either way round. (A sloped
/// line's ends have finite x, so its window is never NaN.)
inline int tessPointCross(double gradientXA, float lowA, float highA, double gradientXB, float lowB,
                          float highB, double dg) {
  double x = (gradientXA - gradientXB) / dg;
  if (x != x) x = 0.0;  // the footprint keeps a NaN crossing as 0
  const float px =
      static_cast<float>(std::max(-static_cast<double>(FLT_MAX), std::min(x, static_cast<double>(FLT_MAX))));
  const float low = std::max(lowA, lowB), high = std::min(highA, highB);
  return static_cast<int>((px > low) & (px <= high));
}

/// The footprint's crossing test of segment a against segment b
/// (FPDoLinesCross on the two line equations; the order matters only for
/// collinear segments), with its commonest case, two sloped lines meeting in
/// one point, worked out inline by tessPointCross. kind receives the
/// intersection kind: 0 one point, 1 coincident, 2 parallel.
inline int tessLinesCross(CKFootPrint& fp, const TessLine& a, const TessLine& b, int* kind) {
  const double dg = a.gradient - b.gradient;
  if (std::fabs(dg) >= 0.001) {
    *kind = 0;
    return tessPointCross(a.gradientX, a.xLow, a.xHigh, b.gradientX, b.xLow, b.xHigh, dg);
  }
  const int r = fp.FPDoLinesCross(&a.eq, &b.eq);
  *kind = Internals<CKFootPrint>::coincidenceKind(fp);
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
void chordProbe(const _D3DVECTOR& p, const _D3DVECTOR& q, _D3DVECTOR* start, _D3DVECTOR* step,
                _D3DVECTOR* mid);

/// The point known to lie outside the laid seed: the footprint's external vertex
/// (box max + (17.3133, 6.550404, 103.00314), added in float) with y = 0, or the
/// origin when the footprint has no box. laid must have current dependencies.
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
int tessellateSeed(const std::vector<_D3DVECTOR>& seed, CKFootPrint& laid, TessResult* result,
                   const TessOptions& options = TessOptions());

}  // namespace kutil::detail

/// Triangulation of the seed polygon, owned by its generator.
struct KVTessellation {
  std::vector<kutil::detail::TessSegment> segments;    ///< accepted edges and chords
  std::vector<kutil::detail::TessTriangle> triangles;  ///< the result
  int triangleCursor = -1;                             ///< index of the current triangle, -1 none
  int reserved = 0;                                    ///< not used
};
