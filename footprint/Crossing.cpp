// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// CKFootPrint: boundary crossing, point location, sliding along walls and the
// clearance along a step. Every test works in the x-z plane; y is carried.
// The walks iterate the edge list directly, so the cursor is never disturbed.
#include <cfloat>
#include <cmath>

#include "FootPrintInternals.h"
#include "KFootPrint.h"
#include "KVector.h"

using kutil::detail::edgeEnd;
using kutil::detail::kBoundaryMargin;
using kutil::detail::kFootTolerance;

namespace {

// Crossing points of nearly parallel lines can lie far away; keep them finite
// when they are narrowed to float.
float toFloat(double v) {
  if (v > FLT_MAX) return FLT_MAX;
  if (v < -FLT_MAX) return -FLT_MAX;
  if (v != v) return 0.0f;  // NaN from degenerate input
  return static_cast<float>(v);
}

// A line is of kind 1 (constant x), kind 2 (constant z) or general; a line
// that was never made is read as general.
int lineKind(const tagKLineEquation* line) { return (line->kind == 1 || line->kind == 2) ? line->kind : 0; }

// Both bounds count. (KUIsBetween leaves out the lower bound when the bounds
// come in rising order, which would lose crossings at a segment's start.)
bool inClosedRange(float v, float a, float b) { return a <= b ? (a <= v && v <= b) : (b <= v && v <= a); }

// Closed-range test of a point against a segment's extent: z for a line of
// constant x, x otherwise. No tolerance.
bool withinExtent(float x, float z, const tagKLineEquation* line) {
  if (line->kind == 1) return inClosedRange(z, line->start.z, line->end.z);
  return inClosedRange(x, line->start.x, line->end.x);
}

// How two lines meet: in the point (x, z), or, parallel, with the two
// intercepts whose distance tells coincident lines from distinct ones.
struct Meeting {
  bool parallel;
  double x, z;
  double interceptA, interceptB;
};

Meeting pointAt(double x, double z) { return {false, x, z, 0.0, 0.0}; }
Meeting parallelAt(double interceptA, double interceptB) { return {true, 0.0, 0.0, interceptA, interceptB}; }

// A line of constant z against a general line of gradient g through x-intercept.
Meeting meetFlat(const tagKLineEquation* flat, double g, double intercept) {
  // A hand-made general line without slope cannot meet the flat one in a point.
  if (g == 0.0) return parallelAt(flat->constZ, FLT_MAX);
  const double z = flat->constZ;
  return pointAt(z / g + intercept, z);
}

// Lines of constant x (kind 1) and constant z (kind 2) are met directly; two
// general lines are parallel when their gradients differ by less than the
// tolerance.
Meeting meetLines(const tagKLineEquation* a, const tagKLineEquation* b) {
  const int ka = lineKind(a);
  const int kb = lineKind(b);
  const double ga = a->gradient, gb = b->gradient;
  if (ka == 1 && kb == 1) return parallelAt(a->xIntercept, b->xIntercept);
  if (ka == 2 && kb == 2) return parallelAt(a->constZ, b->constZ);
  if (ka == 1 && kb == 2) return pointAt(a->xIntercept, b->constZ);
  if (ka == 2 && kb == 1) return pointAt(b->xIntercept, a->constZ);
  if (ka == 1) {
    const double x = a->xIntercept;
    return pointAt(x, gb * (x - b->xIntercept));
  }
  if (kb == 1) {
    const double x = b->xIntercept;
    return pointAt(x, ga * (x - a->xIntercept));
  }
  if (ka == 2) return meetFlat(a, gb, b->xIntercept);
  if (kb == 2) return meetFlat(b, ga, a->xIntercept);
  if (std::fabs(ga - gb) < kFootTolerance) return parallelAt(a->xIntercept, b->xIntercept);
  const double x = (ga * a->xIntercept - gb * b->xIntercept) / (ga - gb);
  return pointAt(x, ga * (x - a->xIntercept));
}

bool nearInPlane(const _D3DVECTOR& a, const _D3DVECTOR& b) {
  return std::fabs(static_cast<double>(a.x) - b.x) < kFootTolerance &&
         std::fabs(static_cast<double>(a.z) - b.z) < kFootTolerance;
}

}  // namespace

int CKFootPrint::FPGetLineIntersection(const tagKLineEquation* a, const tagKLineEquation* b) {
  if (a == nullptr || b == nullptr) return 0;
  const Meeting m = meetLines(a, b);
  if (m.parallel) {
    if (std::fabs(m.interceptA - m.interceptB) < kFootTolerance) {
      m_coincidence.kind = 1;
    } else {
      m_coincidence.kind = 2;
      m_coincidence.point.x = 0.0f;
      m_coincidence.point.y = 0.0f;
      m_coincidence.point.z = 0.0f;
    }
    return 0;
  }
  m_coincidence.kind = 0;
  m_coincidence.point.x = toFloat(m.x);
  m_coincidence.point.y = 0.0f;
  m_coincidence.point.z = toFloat(m.z);
  return 1;
}

int CKFootPrint::FPDoLinesCross(const tagKLineEquation* a, const tagKLineEquation* b) {
  if (a == nullptr || b == nullptr) return 0;
  if (FPGetLineIntersection(a, b)) {
    const _D3DVECTOR& p = m_coincidence.point;
    return (withinExtent(p.x, p.z, a) && withinExtent(p.x, p.z, b)) ? 1 : 0;
  }
  if (m_coincidence.kind != 1) return 0;
  // Collinear segments touch where an end of the first lies on the second.
  const _D3DVECTOR* ends[2] = {&a->start, &a->end};
  for (const _D3DVECTOR* end : ends) {
    if (withinExtent(end->x, end->z, b)) {
      m_coincidence.point.x = end->x;
      m_coincidence.point.y = 0.0f;
      m_coincidence.point.z = end->z;
      return 1;
    }
  }
  return 0;
}

int CKFootPrint::FPDoLinesCross(const tagKLineEquation* a, const _D3DVECTOR* b1, const _D3DVECTOR* b2) {
  if (a == nullptr || b1 == nullptr || b2 == nullptr) return 0;
  tagKLineEquation lb;
  FPMakeLineEquation(&lb, b1, b2);
  return FPDoLinesCross(a, &lb);
}

int CKFootPrint::FPDoLinesCross(const _D3DVECTOR* a1, const _D3DVECTOR* a2, const _D3DVECTOR* b1,
                                const _D3DVECTOR* b2) {
  if (a1 == nullptr || a2 == nullptr || b1 == nullptr || b2 == nullptr) return 0;
  tagKLineEquation la, lb;
  FPMakeLineEquation(&la, a1, a2);
  FPMakeLineEquation(&lb, b1, b2);
  return FPDoLinesCross(&la, &lb);
}

int CKFootPrint::FPGetCrossingPoint(_D3DVECTOR* out) {
  if (out == nullptr) return 0;
  *out = m_coincidence.point;
  return 1;
}

int CKFootPrint::FPGetCoincidenceKind(int* kind) {
  if (kind == nullptr || m_coincidence.kind == -1) return 0;
  *kind = m_coincidence.kind;
  return 1;
}

int CKFootPrint::FPIsBoundaryCrossed(const _D3DVECTOR* position, const _D3DVECTOR* step) {
  if (position == nullptr || step == nullptr || m_firstEdge == nullptr) return 0;
  const float tx = position->x + step->x;
  const float tz = position->z + step->z;
  for (const tagKEdge* e = m_firstEdge; e != nullptr; e = e->next) {
    const _D3DVECTOR& a = e->vertex->position;
    const _D3DVECTOR& b = edgeEnd(e, m_firstEdge)->position;
    // The foot of the perpendicular must lie strictly between the edge's ends:
    // both angles at the edge's ends in the triangle (a, b, target) are acute.
    const double ux = static_cast<double>(a.x) - b.x, uz = static_cast<double>(a.z) - b.z;
    const double vx = static_cast<double>(tx) - a.x, vz = static_cast<double>(tz) - a.z;
    const double wx = static_cast<double>(b.x) - tx, wz = static_cast<double>(b.z) - tz;
    const double uu = ux * ux + uz * uz;
    const double vv = vx * vx + vz * vz;
    const double ww = wx * wx + wz * wz;
    if (!(ww < uu + vv && vv < uu + ww)) continue;  // also rules out a zero-length edge
    // Cheap rejection of edges clearly farther than the margin (the slack covers
    // rounding). Where a heading would use its stand-in for a zero abscissa the
    // headings alone decide, as they do for every edge near the margin.
    const double across = std::fabs(ux * vz - uz * vx) / std::sqrt(uu);
    const double slack = 1e-6 * (1.0 + std::sqrt(vv));
    const bool exactAxis = (b.z - a.z) == 0.0f || (tz - a.z) == 0.0f;
    if (!exactAxis && across > kBoundaryMargin + slack) continue;
    double phiEdge = 0.0, phiTarget = 0.0;
    KUGetRotationalAngle(b.z - a.z, b.x - a.x, &phiEdge);
    KUGetRotationalAngle(tz - a.z, tx - a.x, &phiTarget);
    if (std::fabs(std::sin(phiTarget - phiEdge)) * std::sqrt(vv) <= kBoundaryMargin) return 1;
  }
  return 0;
}

int CKFootPrint::FPIsBoundaryCrossedNoMargin(const _D3DVECTOR* position, const _D3DVECTOR* step) {
  if (position == nullptr || step == nullptr || m_firstEdge == nullptr) return 0;
  _D3DVECTOR target;
  KUVectorAdd(&target, position, step);
  tagKLineEquation stepLine, edgeLine;
  FPMakeLineEquation(&stepLine, position, &target);
  for (const tagKEdge* e = m_firstEdge; e != nullptr; e = e->next) {
    FPMakeLineEquation(&edgeLine, &e->vertex->position, &edgeEnd(e, m_firstEdge)->position);
    if (FPDoLinesCross(&edgeLine, &stepLine)) return 1;
  }
  return 0;
}

int CKFootPrint::FPPointsAreOnTheSameSide(const _D3DVECTOR* p, const _D3DVECTOR* q) {
  if (p == nullptr || q == nullptr) return 0;
  int same = 1;
  if (m_vertexCount <= 2) return same;
  tagKLineEquation segment;
  FPMakeLineEquation(&segment, p, q);
  for (const tagKEdge* e = m_firstEdge; e != nullptr; e = e->next) {
    if (FPDoLinesCross(&e->line, &segment)) same = !same;
  }
  return same;
}

int CKFootPrint::FPIsPointInside(const _D3DVECTOR* point) {
  if (point == nullptr || m_vertexCount <= 2) return 0;
  return FPPointsAreOnTheSameSide(&m_externalVertex, point) ? 0 : 1;
}

int CKFootPrint::FPAdjustTranslation(const _D3DVECTOR* edgeStart, const _D3DVECTOR* edgeEnd,
                                     _D3DVECTOR* step) {
  if (edgeStart == nullptr || edgeEnd == nullptr || step == nullptr) return 0;
  const float entryY = step->y;
  _D3DVECTOR e, unit, sum, difference;
  KUVectorSubtract(&e, edgeStart, edgeEnd);
  unit = e;
  // A wall of no length stays a null direction: the slide then keeps only y.
  KUVectorNormalise(&unit);
  float m = 0.0f;
  KUVectorDotProduct(step, &unit, &m);
  m = std::fabs(m);
  KUVectorAdd(&sum, &e, step);
  KUVectorSubtract(&difference, &e, step);
  float sumLength = 0.0f, differenceLength = 0.0f;
  KUVectorMagnitude(&sum, &sumLength);
  KUVectorMagnitude(&difference, &differenceLength);
  const float sense = (sumLength <= differenceLength) ? -m : m;
  KUVectorScale(step, &unit, sense);
  step->y = entryY;
  return 1;
}

int CKFootPrint::FPUpdateYFromSelectedEdgeCrossing(_D3DVECTOR* point) {
  if (point == nullptr || m_currentEdge == nullptr || m_firstEdge == nullptr) return m_lastStatus = 0;
  const _D3DVECTOR& s = m_currentEdge->vertex->position;
  const _D3DVECTOR& e = edgeEnd(m_currentEdge, m_firstEdge)->position;
  const double dx = static_cast<double>(e.x) - s.x;
  const double dz = static_cast<double>(e.z) - s.z;
  const double rise = static_cast<double>(e.y) - s.y;
  if (std::fabs(dx) <= kFootTolerance) {
    if (std::fabs(dz) <= kFootTolerance) {
      point->y = s.y;
    } else {
      point->y = toFloat(s.y + (point->z - s.z) / dz * rise);
    }
  } else {
    point->y = toFloat(s.y + (point->x - s.x) / dx * rise);
  }
  return m_lastStatus = 1;
}

int CKFootPrint::FPDistanceToEdge(const _D3DVECTOR* p1, const _D3DVECTOR* p2, const _D3DVECTOR* q1,
                                  const _D3DVECTOR* q2, float* out) {
  if (p1 == nullptr || p2 == nullptr || q1 == nullptr || q2 == nullptr || out == nullptr) return 0;
  tagKLineEquation lp, lq;
  FPMakeLineEquation(&lp, p1, p2);
  FPMakeLineEquation(&lq, q1, q2);
  if (FPGetLineIntersection(&lp, &lq)) {
    const _D3DVECTOR& c = m_coincidence.point;
    if (!withinExtent(c.x, c.z, &lp) || !withinExtent(c.x, c.z, &lq)) return 0;
    // The crossing point lies at y = 0, so q1's height is part of the distance.
    _D3DVECTOR d;
    KUVectorSubtract(&d, &c, q1);
    return KUVectorMagnitude(&d, out);
  }
  if (m_coincidence.kind == 1 && (withinExtent(p1->x, p1->z, &lq) || withinExtent(p2->x, p2->z, &lq))) {
    *out = 0.0f;
    return 1;
  }
  return 0;
}

// The box crossing of a step: every edge the step from -> to crosses adds its
// crossing point to the box, with the edge's height there. An edge that is a
// point in x-z (a vertical edge of a wall face) adds its whole height, so a
// step through a wall face spans the face from its floor to its ceiling.
// The exclusive form ignores crossings within 0.001 (in x-z) of from or to, so
// a step starting or ending on the boundary does not cross it there.
int CKFootPrint::boxCrossing(const _D3DVECTOR* from, const _D3DVECTOR* to, _D3DRMBOX* out, bool inclusive) {
  if (from == nullptr || to == nullptr || out == nullptr || m_firstEdge == nullptr) return 0;
  const _D3DVECTOR start = *from;
  const _D3DVECTOR finish = *to;
  tagKLineEquation stepLine, edgeLine;
  FPMakeLineEquation(&stepLine, &start, &finish);
  bool found = false;
  _D3DRMBOX box = {};
  for (const tagKEdge* e = m_firstEdge; e != nullptr; e = e->next) {
    const _D3DVECTOR& a = e->vertex->position;
    const _D3DVECTOR& b = edgeEnd(e, m_firstEdge)->position;
    FPMakeLineEquation(&edgeLine, &a, &b);
    if (!FPDoLinesCross(&edgeLine, &stepLine)) continue;
    const _D3DVECTOR c = m_coincidence.point;
    if (!inclusive && (nearInPlane(c, start) || nearInPlane(c, finish))) continue;
    const double dx = static_cast<double>(b.x) - a.x, dz = static_cast<double>(b.z) - a.z;
    float low, high;
    if (std::fabs(dx) < kFootTolerance && std::fabs(dz) < kFootTolerance) {
      low = a.y < b.y ? a.y : b.y;
      high = a.y < b.y ? b.y : a.y;
    } else {
      const double t = (std::fabs(dx) >= std::fabs(dz)) ? (c.x - a.x) / dx : (c.z - a.z) / dz;
      low = high = toFloat(a.y + t * (static_cast<double>(b.y) - a.y));
    }
    if (!found) {
      box.min.x = box.max.x = c.x;
      box.min.z = box.max.z = c.z;
      box.min.y = low;
      box.max.y = high;
      found = true;
    } else {
      if (c.x < box.min.x) box.min.x = c.x;
      if (c.x > box.max.x) box.max.x = c.x;
      if (c.z < box.min.z) box.min.z = c.z;
      if (c.z > box.max.z) box.max.z = c.z;
      if (low < box.min.y) box.min.y = low;
      if (high > box.max.y) box.max.y = high;
    }
  }
  if (!found) return 0;
  *out = box;
  return 1;
}

int CKFootPrint::FPBoxBoundaryCrossingExclusive(const _D3DVECTOR* from, const _D3DVECTOR* to,
                                                _D3DRMBOX* out) {
  return boxCrossing(from, to, out, false);
}

int CKFootPrint::FPBoxBoundaryCrossingInclusive(const _D3DVECTOR* from, const _D3DVECTOR* to,
                                                _D3DRMBOX* out) {
  return boxCrossing(from, to, out, true);
}

// Selects the first edge (in list order) whose line coincides with the line of
// p0 -> p1 (the line intersection reports kind 1) and that overlaps p0 -> p1
// by a usable length (KUIsCoExtensive). Touching end to end is not enough.
int CKFootPrint::FPSelectCoincidentEdge(const _D3DVECTOR* p0, const _D3DVECTOR* p1) {
  if (p0 == nullptr || p1 == nullptr) return m_lastStatus = 0;
  tagKLineEquation given, edgeLine;
  FPMakeLineEquation(&given, p0, p1);
  for (tagKEdge* e = m_firstEdge; e != nullptr; e = e->next) {
    const _D3DVECTOR& a = e->vertex->position;
    const _D3DVECTOR& b = edgeEnd(e, m_firstEdge)->position;
    FPMakeLineEquation(&edgeLine, &a, &b);
    if (FPGetLineIntersection(&edgeLine, &given) || m_coincidence.kind != 1) continue;
    if (KUIsCoExtensive(&a, &b, p0, p1)) {
      m_currentEdge = e;
      return m_lastStatus = 1;
    }
  }
  return m_lastStatus = 0;
}

// The sample distance of the current edge is how far a point stands from it in
// the x-z plane: the distance to the nearest point of the segment (its ends
// included), which movement code compares against its margin. A zero-length
// edge answers the distance to its start.
int CKFootPrint::FPGetEdgeSampleDistance(const _D3DVECTOR* point, float* out) {
  if (point == nullptr || out == nullptr || m_currentEdge == nullptr || m_firstEdge == nullptr) {
    return m_lastStatus = 0;
  }
  const _D3DVECTOR& a = m_currentEdge->vertex->position;
  const _D3DVECTOR& b = edgeEnd(m_currentEdge, m_firstEdge)->position;
  const double ex = static_cast<double>(b.x) - a.x, ez = static_cast<double>(b.z) - a.z;
  const double px = static_cast<double>(point->x) - a.x, pz = static_cast<double>(point->z) - a.z;
  const double lengthSquared = ex * ex + ez * ez;
  double t = 0.0;
  if (lengthSquared > 0.0) {
    t = (px * ex + pz * ez) / lengthSquared;
    if (t < 0.0) t = 0.0;
    if (t > 1.0) t = 1.0;
  }
  const double dx = px - t * ex, dz = pz - t * ez;
  *out = toFloat(std::sqrt(dx * dx + dz * dz));
  return m_lastStatus = 1;
}

// ------------------------------------------------------------------ clearance

int CKFootPrint::solveAtStep(const _D3DVECTOR* at, const _D3DVECTOR* from, const _D3DVECTOR* to,
                             _D3DVECTOR* top, _D3DVECTOR* bottom) {
  _D3DVECTOR solved;
  if (!FPSolvePlaneEquation(&m_planeEquation, at, &solved)) return 0;
  _D3DRMBOX box;
  if (!FPBoxBoundaryCrossingExclusive(from, to, &box)) return 0;
  if (solved.y < box.min.y) box.min.y = solved.y;
  if (solved.y > box.max.y) box.max.y = solved.y;
  top->y = box.max.y;
  bottom->y = box.min.y;
  return 1;
}

int CKFootPrint::FPGetFaceClearance(const _D3DVECTOR* from, const _D3DVECTOR* to, _D3DVECTOR* top,
                                    _D3DVECTOR* bottom, int mode) {
  if (from == nullptr || to == nullptr || top == nullptr || bottom == nullptr) return 0;
  switch (mode) {
    case 0: {
      if (FPIsPointInside(to)) return solveAtStep(to, from, to, top, bottom);
      if (FPIsPointInside(from)) return solveAtStep(from, from, to, top, bottom);
      _D3DRMBOX box;
      if (!FPBoxBoundaryCrossingExclusive(from, to, &box)) return 0;
      top->y = box.max.y;
      bottom->y = box.min.y;
      return 1;
    }
    case 1: {
      _D3DVECTOR solved;
      if (!FPSolvePlaneEquation(&m_planeEquation, from, &solved)) return 0;
      top->y = solved.y;
      bottom->y = solved.y;
      return 1;
    }
    case 2: {
      _D3DRMBOX box;
      if (!FPBoxBoundaryCrossingExclusive(from, to, &box)) return 0;
      top->y = box.max.y;
      bottom->y = box.min.y;
      return 1;
    }
    default:
      return 0;
  }
}

int CKFootPrint::FPGetClearance(const _D3DVECTOR* from, const _D3DVECTOR* to, _D3DVECTOR* top,
                                _D3DVECTOR* bottom, int mode, int preferFace) {
  if (from == nullptr || to == nullptr || top == nullptr || bottom == nullptr) return 0;
  if (m_planeEquation.made) {
    const bool upright = m_planeEquation.kind == 0 || m_planeEquation.kind == 1;
    const int faceMode = (preferFace && upright) ? 2 : mode;
    if (FPGetFaceClearance(from, to, top, bottom, faceMode)) return 1;
  }
  if ((m_boxFlags & 1) == 0) return 0;
  top->y = m_box.max.y;
  bottom->y = m_box.min.y;
  return 1;
}
