// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// CKFootPrint: the polygon model (edge list, vertex records, boxes, line and
// plane equations, transforms).
#include <cmath>
#include <new>

#include "FootPrintInternals.h"
#include "KFootPrint.h"
#include "KVector.h"
#include "VectorDetail.h"

using kutil::detail::edgeEnd;
using kutil::detail::kFootTolerance;
using kutil::detail::kPlaneTolerance;
using kutil::detail::makeVector;

namespace {

// Irregular offsets, so that a ray from an interior point towards the external
// vertex is unlikely to pass exactly through a vertex. They are added in float:
// the external vertex is a float record, and the tessellation takes its outside
// point from here rather than working the offsets out again.
constexpr float kExternalOffsetX = 17.3133f;
constexpr float kExternalOffsetY = 6.550404f;
constexpr float kExternalOffsetZ = 103.00314f;

constexpr int kFlagClearance = 1;
constexpr int kFlagHorizontal = 2;
constexpr int kFlagBoth = kFlagClearance | kFlagHorizontal;

void growBox(_D3DRMBOX* box, const _D3DVECTOR* v) {
  if (v->x < box->min.x) box->min.x = v->x;
  if (v->y < box->min.y) box->min.y = v->y;
  if (v->z < box->min.z) box->min.z = v->z;
  if (v->x > box->max.x) box->max.x = v->x;
  if (v->y > box->max.y) box->max.y = v->y;
  if (v->z > box->max.z) box->max.z = v->z;
}

}  // namespace

// ---------------------------------------------------------------- lifecycle

CKFootPrint::~CKFootPrint() { FPDeleteAllEdges(); }

int CKFootPrint::FPInitialise() {
  // Members start out null, so edges still held can only be real ones: free
  // them rather than lose them when a footprint is initialised again.
  FPDeleteAllEdges();
  m_currentEdge = nullptr;
  m_lastStatus = 0;
  m_vertexCount = 0;
  m_firstEdge = nullptr;
  m_centreOfGravity = makeVector(0.0f, 0.0f, 0.0f);
  m_externalVertex = makeVector(0.0f, 0.0f, 0.0f);
  m_coincidence.point = makeVector(0.0f, 0.0f, 0.0f);
  m_coincidence.kind = -1;
  m_boxFlags = 0;
  m_box.min = makeVector(0.0f, 0.0f, 0.0f);
  m_box.max = makeVector(0.0f, 0.0f, 0.0f);
  m_type = 0;
  return FPInitPlaneEquation(&m_planeEquation);
}

int CKFootPrint::FPTerminate() {
  FPDeleteAllEdges();
  m_firstEdge = nullptr;
  return 1;
}

int CKFootPrint::FPIsUncorrupted() { return 1; }

int CKFootPrint::FPSetType(int type) {
  m_type = type;
  return 1;
}

int CKFootPrint::FPGetType(int* type) {
  if (type == nullptr || m_type == -1) return 0;
  *type = m_type;
  return 1;
}

int CKFootPrint::FPSetCentreOfGravity(float x, float y, float z) {
  m_centreOfGravity = makeVector(x, y, z);
  return 1;
}

int CKFootPrint::FPSetCentreOfGravity(const _D3DVECTOR* centre) {
  if (centre == nullptr) return 0;
  m_centreOfGravity = *centre;
  return 1;
}

int CKFootPrint::FPGetCentreOfGravity(_D3DVECTOR* centre) {
  if (centre == nullptr) return 0;
  *centre = m_centreOfGravity;
  return 1;
}

int CKFootPrint::FPCalcCentreOfGravity(_D3DVECTOR* out) {
  if (out == nullptr) return 0;
  if (!FPSet3DBoxFromVertices()) return 0;
  // The box centre, not the area centroid: cheap and good enough for placing.
  out->x = static_cast<float>(m_box.min.x + 0.5 * (static_cast<double>(m_box.max.x) - m_box.min.x));
  out->y = static_cast<float>(m_box.min.y + 0.5 * (static_cast<double>(m_box.max.y) - m_box.min.y));
  out->z = static_cast<float>(m_box.min.z + 0.5 * (static_cast<double>(m_box.max.z) - m_box.min.z));
  return 1;
}

int CKFootPrint::FPGetExternalVertex(_D3DVECTOR** out) {
  if (out == nullptr) return 0;
  *out = &m_externalVertex;
  return 1;
}

int CKFootPrint::FPSetExternalVertex(const _D3DVECTOR* vertex) {
  if (vertex == nullptr) return 0;
  m_externalVertex = *vertex;
  return 1;
}

int CKFootPrint::FPUpdateExternalVertex() {
  if ((m_boxFlags & kFlagBoth) != kFlagBoth) return 0;
  m_externalVertex.x = m_box.max.x + kExternalOffsetX;
  m_externalVertex.y = m_box.max.y + kExternalOffsetY;
  m_externalVertex.z = m_box.max.z + kExternalOffsetZ;
  return 1;
}

int CKFootPrint::FPSetClearance(float top, float bottom) {
  m_box.max.y = top;
  m_box.min.y = bottom;
  m_boxFlags |= kFlagClearance;
  return 1;
}

int CKFootPrint::FPGetClearance(float* top, float* bottom) {
  if (top == nullptr || bottom == nullptr || (m_boxFlags & kFlagClearance) == 0) return 0;
  *top = m_box.max.y;
  *bottom = m_box.min.y;
  return 1;
}

int CKFootPrint::FPGetBox(_D3DRMBOX** out) {
  if (out == nullptr || (m_boxFlags & kFlagBoth) != kFlagBoth) return 0;
  *out = &m_box;
  return 1;
}

int CKFootPrint::FPSetBox(const _D3DRMBOX* box, float dx, float dy, float dz) {
  const _D3DVECTOR offset = makeVector(dx, dy, dz);
  return FPSetBox(box, &offset);
}

int CKFootPrint::FPSetBox(const _D3DRMBOX* box, const _D3DVECTOR* offset) {
  if (!FPSetBox(&m_box, box, offset)) return 0;
  m_boxFlags = kFlagBoth;
  return 1;
}

int CKFootPrint::FPSetBox(_D3DRMBOX* target, const _D3DRMBOX* box, const _D3DVECTOR* offset) {
  if (target == nullptr || box == nullptr || offset == nullptr) return 0;
  const _D3DRMBOX source = *box;  // target may be the box itself
  target->min = makeVector(source.min.x + offset->x, source.min.y + offset->y, source.min.z + offset->z);
  target->max = makeVector(source.max.x + offset->x, source.max.y + offset->y, source.max.z + offset->z);
  return 1;
}

int CKFootPrint::FPCopyBox(_D3DRMBOX* dst, const _D3DRMBOX* src) {
  if (dst == nullptr || src == nullptr) return 0;
  dst->min = src->min;
  dst->max = src->max;
  return 1;
}

int CKFootPrint::FPSet2DBoxFromVertices() {
  if (m_firstEdge == nullptr) return 0;
  const _D3DVECTOR& first = m_firstEdge->vertex->position;
  float minX = first.x, maxX = first.x, minZ = first.z, maxZ = first.z;
  for (const tagKEdge* e = m_firstEdge->next; e != nullptr; e = e->next) {
    const _D3DVECTOR& p = e->vertex->position;
    if (p.x < minX) minX = p.x;
    if (p.x > maxX) maxX = p.x;
    if (p.z < minZ) minZ = p.z;
    if (p.z > maxZ) maxZ = p.z;
  }
  m_box.min.x = minX;
  m_box.max.x = maxX;
  m_box.min.z = minZ;
  m_box.max.z = maxZ;
  m_boxFlags |= kFlagHorizontal;
  return 1;
}

int CKFootPrint::FPSet3DBoxFromVertices() {
  if (m_firstEdge == nullptr) return 0;
  m_box.min = m_firstEdge->vertex->position;
  m_box.max = m_firstEdge->vertex->position;
  m_boxFlags |= kFlagBoth;
  // The result is that of the last growth step: a lone vertex answers 0.
  int result = 0;
  for (const tagKEdge* e = m_firstEdge->next; e != nullptr; e = e->next) {
    result = FPUpdate3DBoxFromVertex(&e->vertex->position);
  }
  return result;
}

int CKFootPrint::FPUpdate3DBoxFromVertex(const _D3DVECTOR* v) {
  if (v == nullptr) return 0;
  growBox(&m_box, v);
  return 1;
}

int CKFootPrint::FPUpdate3DBoxFromBox(_D3DRMBOX* box, const _D3DRMBOX* other) {
  if (box == nullptr || other == nullptr) return 0;
  const _D3DRMBOX o = *other;
  growBox(box, &o.min);
  growBox(box, &o.max);
  return 1;
}

int CKFootPrint::FPUpdateVertexDependencies() {
  _D3DVECTOR centre;
  if (!FPCalcCentreOfGravity(&centre)) return 0;
  if (!FPSetCentreOfGravity(&centre)) return 0;
  if (!FPSet3DBoxFromVertices()) return 0;
  if (!FPUpdateExternalVertex()) return 0;
  if (!FPUpdateEdgeLineEquations()) return 0;
  if (!FPUpdatePlaneEquation()) return 0;
  return 1;
}

int CKFootPrint::FPCopyFrom(CKFootPrint* source) {
  if (source == nullptr) return 0;
  if (source == this) return 1;  // copying onto itself would free the source first
  FPTerminate();
  FPInitialise();
  // The count is copied and then raised by every vertex added, so a copy
  // counts its vertices twice over; only the "more than two" tests read it.
  m_vertexCount = source->m_vertexCount;
  m_centreOfGravity = source->m_centreOfGravity;
  m_externalVertex = source->m_externalVertex;
  if ((source->m_boxFlags & kFlagBoth) == kFlagBoth) FPSetBox(&source->m_box, 0.0f, 0.0f, 0.0f);
  for (const tagKEdge* e = source->m_firstEdge; e != nullptr; e = e->next) {
    if (!FPAddVertex(&e->vertex->position)) {
      FPDeleteAllEdges();
      return 0;
    }
  }
  tagKEdge* target = m_firstEdge;
  for (const tagKEdge* e = source->m_firstEdge; e != nullptr && target != nullptr; e = e->next) {
    const tagKVertex* from = e->vertex;
    tagKVertex* to = target->vertex;
    if (from->sectorAccess != -1) to->sectorAccess = from->sectorAccess;
    to->property = from->property;
    to->resist = from->resist;
    // Item access stays unset: it belongs to the placed item, not to the outline.
    FPCopyLineEquation(&e->line, &target->line);
    target = target->next;
  }
  if (source->m_firstEdge != nullptr) FPCopyPlaneEquation(&source->m_planeEquation, &m_planeEquation);
  return 1;
}

// ------------------------------------------------------- vertices and edges

int CKFootPrint::FPInitVertex(tagKVertex* vertex) {
  if (vertex == nullptr) return 0;
  vertex->position = makeVector(0.0f, 0.0f, 0.0f);
  vertex->resist = 999;
  vertex->sectorAccess = -1;
  vertex->itemAccess = -1;
  vertex->property = 3;
  vertex->tess.u = 0.0;
  vertex->tess.v = 0.0;
  vertex->tess.x = 0.0f;
  vertex->tess.y = 0.0f;
  vertex->tess.z = 0.0f;
  return 1;
}

int CKFootPrint::FPAddVertex(float x, float y, float z) {
  const _D3DVECTOR v = makeVector(x, y, z);
  return FPAddVertex(&v);
}

int CKFootPrint::FPAddVertex(const _D3DVECTOR* v) {
  if (v == nullptr) return 0;
  tagKEdge* edge = new (std::nothrow) tagKEdge;
  if (edge == nullptr) return 0;
  edge->vertex = new (std::nothrow) tagKVertex;
  if (edge->vertex == nullptr) {
    delete edge;
    return 0;
  }
  FPInitVertex(edge->vertex);
  edge->vertex->position = *v;
  edge->line.start = makeVector(0.0f, 0.0f, 0.0f);
  edge->line.end = makeVector(0.0f, 0.0f, 0.0f);
  edge->line.gradient = 0.001f;
  edge->line.xIntercept = 0.0f;
  edge->line.constZ = 0.0f;
  edge->line.kind = -1;
  edge->next = nullptr;
  if (m_firstEdge == nullptr) {
    m_firstEdge = edge;
  } else {
    tagKEdge* tail = m_firstEdge;
    while (tail->next != nullptr) tail = tail->next;
    tail->next = edge;
  }
  ++m_vertexCount;
  return 1;
}

int CKFootPrint::FPDeleteAllEdges() {
  tagKEdge* e = m_firstEdge;
  while (e != nullptr) {
    tagKEdge* next = e->next;
    delete e->vertex;
    delete e;
    e = next;
  }
  m_firstEdge = nullptr;
  m_currentEdge = nullptr;
  m_vertexCount = 0;
  return 1;
}

int CKFootPrint::FPDeleteSelectedEdge() {
  if (m_currentEdge == nullptr || m_firstEdge == nullptr) return m_lastStatus = 0;
  tagKEdge* victim = m_currentEdge;
  if (victim == m_firstEdge) {
    m_firstEdge = victim->next;
  } else {
    tagKEdge* previous = m_firstEdge;
    while (previous->next != nullptr && previous->next != victim) previous = previous->next;
    if (previous->next != victim) return m_lastStatus = 0;  // cursor not in this list
    previous->next = victim->next;
  }
  // The successor takes the removed edge's place, so a walk can go on from here.
  m_currentEdge = victim->next;
  delete victim->vertex;
  delete victim;
  return m_lastStatus = 1;
}

int CKFootPrint::FPSelectFirstEdge() {
  m_currentEdge = m_firstEdge;
  return m_lastStatus = (m_currentEdge != nullptr) ? 1 : 0;
}

int CKFootPrint::FPSelectNextEdgeNoWrap() {
  if (m_currentEdge == nullptr || m_currentEdge->next == nullptr) return m_lastStatus = 0;
  m_currentEdge = m_currentEdge->next;
  return m_lastStatus = 1;
}

int CKFootPrint::FPSelectPreviousEdgeNoWrap() {
  if (m_currentEdge == nullptr || m_currentEdge == m_firstEdge || m_firstEdge == nullptr)
    return m_lastStatus = 0;
  tagKEdge* previous = m_firstEdge;
  while (previous->next != nullptr && previous->next != m_currentEdge) previous = previous->next;
  if (previous->next != m_currentEdge) return m_lastStatus = 0;
  m_currentEdge = previous;
  return m_lastStatus = 1;
}

int CKFootPrint::FPSelectNextEdgeWrapping() {
  if (m_currentEdge == nullptr) return m_lastStatus = 0;
  m_currentEdge = (m_currentEdge->next != nullptr) ? m_currentEdge->next : m_firstEdge;
  return m_lastStatus = 1;
}

int CKFootPrint::FPSelectPreviousEdgeWrapping() {
  if (m_currentEdge == nullptr || m_firstEdge == nullptr) return m_lastStatus = 0;
  if (m_currentEdge == m_firstEdge) {
    tagKEdge* tail = m_firstEdge;
    while (tail->next != nullptr) tail = tail->next;
    m_currentEdge = tail;
    return m_lastStatus = 1;
  }
  return FPSelectPreviousEdgeNoWrap();
}

int CKFootPrint::FPIsSelectedTheFirst() {
  return (m_currentEdge != nullptr && m_firstEdge != nullptr && m_currentEdge == m_firstEdge) ? 1 : 0;
}

int CKFootPrint::FPGetEdgeFromVector(_D3DVECTOR* out) {
  if (out == nullptr || m_currentEdge == nullptr) return m_lastStatus = 0;
  *out = m_currentEdge->vertex->position;
  return m_lastStatus = 1;
}

int CKFootPrint::FPUpdateEdgeFromVector(const _D3DVECTOR* in) {
  if (in == nullptr || m_currentEdge == nullptr) return m_lastStatus = 0;
  m_currentEdge->vertex->position = *in;
  return m_lastStatus = 1;
}

int CKFootPrint::FPGetEdgeToVector(_D3DVECTOR* out) {
  if (out == nullptr || m_currentEdge == nullptr || m_firstEdge == nullptr) return m_lastStatus = 0;
  *out = edgeEnd(m_currentEdge, m_firstEdge)->position;
  return m_lastStatus = 1;
}

int CKFootPrint::FPSetThisEdgeResist(int resist) {
  if (m_currentEdge == nullptr) return m_lastStatus = 0;
  m_currentEdge->vertex->resist = resist;
  return m_lastStatus = 1;
}

int CKFootPrint::FPGetThisEdgeResist(int* resist) {
  if (resist == nullptr || m_currentEdge == nullptr) return m_lastStatus = 0;
  *resist = m_currentEdge->vertex->resist;
  return m_lastStatus = 1;
}

int CKFootPrint::FPSetThisEdgeSectorAccess(int access) {
  if (m_currentEdge == nullptr) return m_lastStatus = 0;
  m_currentEdge->vertex->sectorAccess = access;
  return m_lastStatus = 1;
}

int CKFootPrint::FPGetThisEdgeSectorAccess(int* access) {
  if (access == nullptr || m_currentEdge == nullptr || m_currentEdge->vertex->sectorAccess == -1) {
    return m_lastStatus = 0;
  }
  *access = m_currentEdge->vertex->sectorAccess;
  return m_lastStatus = 1;
}

int CKFootPrint::FPSetThisEdgeItemAccess(int access) {
  if (m_currentEdge == nullptr) return m_lastStatus = 0;
  m_currentEdge->vertex->itemAccess = access;
  return m_lastStatus = 1;
}

int CKFootPrint::FPGetThisEdgeItemAccess(int* access) {
  if (access == nullptr || m_currentEdge == nullptr || m_currentEdge->vertex->itemAccess == -1) {
    return m_lastStatus = 0;
  }
  *access = m_currentEdge->vertex->itemAccess;
  return m_lastStatus = 1;
}

int CKFootPrint::FPSetThisEdgeProperty(int property) {
  if (m_currentEdge == nullptr) return m_lastStatus = 0;
  m_currentEdge->vertex->property = property;
  return m_lastStatus = 1;
}

int CKFootPrint::FPGetThisEdgeProperty(int* property) {
  if (property == nullptr || m_currentEdge == nullptr) return m_lastStatus = 0;
  *property = m_currentEdge->vertex->property;
  return m_lastStatus = 1;
}

int CKFootPrint::FPGetThisEdgeLineEquation(tagKLineEquation** out) {
  if (out == nullptr || m_currentEdge == nullptr) return m_lastStatus = 0;
  *out = &m_currentEdge->line;
  return m_lastStatus = 1;
}

int CKFootPrint::FPGetVertexCount(int* count) {
  if (count == nullptr) return 0;
  *count = m_vertexCount;
  return 1;
}

int CKFootPrint::FPSetAllEdgeResist(int resist) {
  if (m_firstEdge == nullptr) return 0;
  for (tagKEdge* e = m_firstEdge; e != nullptr; e = e->next) e->vertex->resist = resist;
  return 1;
}

int CKFootPrint::FPSetAllAccess(int access) {
  if (m_firstEdge == nullptr) return 0;
  for (tagKEdge* e = m_firstEdge; e != nullptr; e = e->next) e->vertex->sectorAccess = access;
  return 1;
}

int CKFootPrint::FPUpdateEdgeLineEquations() {
  if (m_firstEdge == nullptr) return 0;
  for (tagKEdge* e = m_firstEdge; e != nullptr; e = e->next) {
    if (!FPMakeLineEquation(&e->line, &e->vertex->position, &edgeEnd(e, m_firstEdge)->position)) return 0;
  }
  return 1;
}

int CKFootPrint::FPMakeLineEquation(tagKLineEquation* line, const _D3DVECTOR* start, const _D3DVECTOR* end) {
  if (line == nullptr || start == nullptr || end == nullptr) return 0;
  const _D3DVECTOR p0 = *start;
  const _D3DVECTOR p1 = *end;
  line->start = p0;
  line->end = p1;
  line->gradient = 0.0f;
  line->xIntercept = 0.0f;
  line->constZ = 0.0f;
  const float dx = p0.x - p1.x;
  const float dz = p0.z - p1.z;
  const float gradient = (std::fabs(dx) >= kFootTolerance) ? dz / dx : 0.0f;
  if (std::fabs(dx) < kFootTolerance) {
    line->kind = 1;
    line->gradient = 999.0f;
    line->xIntercept = p0.x;
  } else if (std::fabs(dz) >= kFootTolerance && gradient != 0.0f) {
    // (A gradient that underflows to zero only happens for absurd extents; it
    // falls through to the constant-z form instead of dividing by zero.)
    line->kind = 0;
    line->gradient = gradient;
    line->xIntercept = static_cast<float>(p0.x - p0.z / static_cast<double>(gradient));
  } else {
    line->kind = 2;
    line->gradient = 0.001f;
    line->constZ = p0.z;
  }
  return 1;
}

int CKFootPrint::FPCopyLineEquation(const tagKLineEquation* src, tagKLineEquation* dst) {
  if (src == nullptr || dst == nullptr) return 0;
  *dst = *src;
  return 1;
}

int CKFootPrint::FPTranslate(const _D3DVECTOR* t) {
  if (t == nullptr) return 0;
  for (tagKEdge* e = m_firstEdge; e != nullptr; e = e->next) {
    _D3DVECTOR& p = e->vertex->position;
    p.x += t->x;
    p.y += t->y;
    p.z += t->z;
  }
  return 1;
}

namespace {

void rotateAll(tagKEdge* first, float ax, float ay, float az, float angle) {
  const _D3DVECTOR axis = makeVector(ax, ay, az);
  for (tagKEdge* e = first; e != nullptr; e = e->next) {
    const _D3DVECTOR v = e->vertex->position;
    KUVectorRotate(&e->vertex->position, &v, &axis, angle);
  }
}

}  // namespace

int CKFootPrint::FPRotateHorizontal(float angle) {
  rotateAll(m_firstEdge, 0.0f, 1.0f, 0.0f, angle);
  return 1;
}

int CKFootPrint::FPElevate(float angle) {
  rotateAll(m_firstEdge, -1.0f, 0.0f, 0.0f, angle);
  return 1;
}

int CKFootPrint::FPRoll(float angle) {
  rotateAll(m_firstEdge, 0.0f, 0.0f, 1.0f, angle);
  return 1;
}

int CKFootPrint::FPResize(float factor) {
  for (tagKEdge* e = m_firstEdge; e != nullptr; e = e->next) {
    _D3DVECTOR& p = e->vertex->position;
    p.x *= factor;
    p.y *= factor;
    p.z *= factor;
  }
  return 1;
}

// ----------------------------------------------------------- plane equations

int CKFootPrint::FPInitPlaneEquation(tagKPlaneEquation* plane) {
  if (plane == nullptr) return 0;
  plane->d = 0.0f;
  plane->a = 0.0f;
  plane->b = 0.0f;
  plane->c = 0.0f;
  plane->kind = -1;
  plane->made = 0;
  return 1;
}

int CKFootPrint::FPIsPlaneEquationInUse() { return m_planeEquation.made != 0 ? 1 : 0; }

int CKFootPrint::FPGetPlaneEquation(tagKPlaneEquation** out) {
  if (out == nullptr) return 0;
  *out = &m_planeEquation;
  return 1;
}

int CKFootPrint::FPMakePlaneEquation(tagKPlaneEquation* plane, const _D3DVECTOR* p1, const _D3DVECTOR* p2,
                                     const _D3DVECTOR* p3) {
  if (plane == nullptr || p1 == nullptr || p2 == nullptr || p3 == nullptr) return 0;
  const double x1 = p1->x, y1 = p1->y, z1 = p1->z;
  const double x2 = p2->x, y2 = p2->y, z2 = p2->z;
  const double x3 = p3->x, y3 = p3->y, z3 = p3->z;
  plane->d =
      static_cast<float>(x1 * (y2 * z3 - z2 * y3) - y1 * (x2 * z3 - z2 * x3) + z1 * (x2 * y3 - y2 * x3));
  plane->a = static_cast<float>((z1 - z2) * y3 + (z2 - z3) * y1 + (z3 - z1) * y2);
  plane->b = static_cast<float>((z1 - z3) * x2 + (z2 - z1) * x3 + (z3 - z2) * x1);
  plane->c = static_cast<float>((y2 - y3) * x1 + (y1 - y2) * x3 + (y3 - y1) * x2);

  _D3DVECTOR u, v, n;
  KUVectorSubtract(&u, p1, p2);
  KUVectorSubtract(&v, p3, p2);
  if (!KUVectorCrossProduct(&u, &v, &n)) return 0;  // near-collinear points
  KUVectorNormalise(&n);
  if (std::fabs(n.y) < kPlaneTolerance) {
    plane->kind = 0;
  } else if (std::fabs(n.y) < 0.5) {
    plane->kind = 1;
  } else if (std::fabs(plane->a) < kPlaneTolerance && std::fabs(plane->c) < kPlaneTolerance) {
    plane->kind = 2;
  } else {
    plane->kind = 3;
  }
  plane->made = 1;
  return 1;
}

int CKFootPrint::FPMakePlaneEquation(tagKPlaneEquation* plane, const _D3DVECTOR* p1, const _D3DVECTOR* p2,
                                     const _D3DVECTOR* p3, const _D3DVECTOR* p4) {
  if (plane == nullptr || p1 == nullptr || p2 == nullptr || p3 == nullptr || p4 == nullptr) return 0;
  if (KUIsUniqueIn(p1, p2, p3, p4)) {
    if (!KUIsSameVector(p2, p3)) return FPMakePlaneEquation(plane, p1, p2, p3);
    if (!KUIsSameVector(p2, p4)) return FPMakePlaneEquation(plane, p1, p2, p4);
  }
  if (!KUIsSameVector(p2, p3) && !KUIsSameVector(p2, p4) && !KUIsSameVector(p3, p4)) {
    return FPMakePlaneEquation(plane, p2, p3, p4);
  }
  return 0;
}

int CKFootPrint::FPCopyPlaneEquation(const tagKPlaneEquation* src, tagKPlaneEquation* dst) {
  if (src == nullptr || dst == nullptr) return 0;
  *dst = *src;
  return 1;
}

int CKFootPrint::FPSolvePlaneEquation(const tagKPlaneEquation* plane, const _D3DVECTOR* in, _D3DVECTOR* out) {
  if (plane == nullptr || in == nullptr || out == nullptr) return 0;
  if (plane->kind == 0 || std::fabs(plane->b) < kPlaneTolerance) return 0;
  const _D3DVECTOR p = *in;
  out->x = p.x;
  out->y = static_cast<float>((static_cast<double>(plane->d) - static_cast<double>(plane->a) * p.x -
                               static_cast<double>(plane->c) * p.z) /
                              plane->b);
  out->z = p.z;
  return 1;
}

int CKFootPrint::FPSolvePlaneEquationBroadly(const tagKPlaneEquation* plane, const _D3DVECTOR* in,
                                             _D3DVECTOR* out) {
  return FPSolvePlaneEquation(plane, in, out);
}

int CKFootPrint::FPUpdatePlaneEquation() {
  const tagKEdge* e1 = m_firstEdge;
  const tagKEdge* e2 = (e1 != nullptr) ? e1->next : nullptr;
  const tagKEdge* e3 = (e2 != nullptr) ? e2->next : nullptr;
  if (e3 == nullptr) return FPInitPlaneEquation(&m_planeEquation);
  const tagKEdge* e4 = e3->next;
  const int made = (e4 != nullptr)
                       ? FPMakePlaneEquation(&m_planeEquation, &e1->vertex->position, &e2->vertex->position,
                                             &e3->vertex->position, &e4->vertex->position)
                       : FPMakePlaneEquation(&m_planeEquation, &e1->vertex->position, &e2->vertex->position,
                                             &e3->vertex->position);
  if (!made) return FPInitPlaneEquation(&m_planeEquation);
  return 1;
}

int CKFootPrint::FPGetConstYVector(const tagKPlaneEquation* plane, const _D3DVECTOR* reference,
                                   _D3DVECTOR* out) {
  if (plane == nullptr || reference == nullptr || out == nullptr) return 0;
  if (plane->kind != 3) return 0;
  const double a = plane->a, c = plane->c, d = plane->d;
  _D3DVECTOR v;
  if (std::fabs(c) < kPlaneTolerance) {
    v = makeVector(1.0f, 0.0f, 0.0f);
  } else if (std::fabs(a) < kPlaneTolerance) {
    v = makeVector(0.0f, 0.0f, 1.0f);
  } else {
    // Compared by whole units on purpose; the two forms are kept as they have always been.
    if (std::trunc(std::fabs(a)) <= std::trunc(std::fabs(c))) {
      v = makeVector(1.0f, 0.0f, static_cast<float>((a - d) / c));
    } else {
      v = makeVector(static_cast<float>((d - c) / a), 0.0f, 1.0f);
    }
    KUVectorNormalise(&v);
  }
  double alpha1 = 0.0, alpha2 = 0.0;
  KUGetAngleBetweenVectors(reference, &v, &alpha1);
  v = makeVector(-v.x, -v.y, -v.z);
  KUGetAngleBetweenVectors(reference, &v, &alpha2);
  if (std::fabs(alpha1) >= std::fabs(alpha2)) v = makeVector(-v.x, -v.y, -v.z);
  *out = v;
  return 1;
}

int CKFootPrint::FPGetPlaneProjectionOf(const _D3DVECTOR* /*in*/, _D3DVECTOR* /*out*/) { return 0; }

int CKFootPrint::FPGetPlaneProjectionOf(const tagKPlaneEquation* /*plane*/, const _D3DVECTOR* /*in*/,
                                        _D3DVECTOR* /*out*/) {
  return 0;
}
