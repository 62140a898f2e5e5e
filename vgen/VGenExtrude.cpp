// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Turning the seed and the instructions into planes; whole-solid transforms; footprints of the
// solid; the globe and the end-plane texture coordinates.
#include <cmath>
#include <utility>

#include "KVGen.h"
#include "KVector.h"
#include "VGenInternals.h"
#include "VGenRecords.h"

using namespace kutil::detail;
using GenInternals = Internals<CKVGen>;

namespace {

// One point of plane `frame` carried by one instruction, in that plane's frame.
int transformPoint(const tagKExtrudePlane& frame, const tagKExtrudeInstruction& ins, const _D3DVECTOR& in,
                   _D3DVECTOR* out) {
  _D3DVECTOR rightAxis, topAxis, d, r;
  KUVectorSubtract(&rightAxis, &frame.corner1, &frame.corner3);
  KUVectorSubtract(&topAxis, &frame.corner1, &frame.corner0);
  // Rotation about a line through `pivot`: move the point to the pivot, turn, move back.
  auto hinge = [&](const _D3DVECTOR& pivot, const _D3DVECTOR& axis, float angle) {
    KUVectorSubtract(&d, &in, &pivot);
    if (KUVectorRotate(&r, &d, &axis, angle) == 0) return 0;
    KUVectorAdd(out, &pivot, &r);
    return 1;
  };
  switch (ins.code) {
    case INSTR_ROTATE_AXIS:
      return KUVectorRotate(out, &in, &ins.vector, ins.magnitude);
    case INSTR_HINGE_RIGHT:
      return hinge(frame.corner1, rightAxis, ins.magnitude);
    case INSTR_HINGE_LEFT:
      return hinge(frame.corner2, rightAxis, -ins.magnitude);
    case INSTR_EXTRUDE:
      out->x = in.x + frame.normal.x * ins.magnitude;
      out->y = in.y + frame.normal.y * ins.magnitude;
      out->z = in.z + frame.normal.z * ins.magnitude;
      return 1;
    case INSTR_HINGE_TOP:
      return hinge(frame.corner0, topAxis, -ins.magnitude);
    case INSTR_HINGE_BOTTOM:
      return hinge(frame.corner3, topAxis, ins.magnitude);
    default:
      *out = in;  // unknown codes duplicate the plane
      return 1;
  }
}

// Fills plane with the images of prev's vertices and corners under the
// instruction, taken in prev's frame; 0 when a vertex cannot be carried or made.
int extrudePlane(const tagKExtrudePlane& prev, const tagKExtrudeInstruction& ins, bool faceOutlines,
                 tagKExtrudePlane* plane) {
  tagKExtrudeVertex** tail = &plane->vertices;
  for (const tagKExtrudeVertex* pv = prev.vertices; pv != nullptr; pv = pv->next) {
    _D3DVECTOR q;
    if (transformPoint(prev, ins, pv->point.position, &q) == 0) return 0;
    tagKExtrudeVertex* nv = makeVertex(q, faceOutlines);
    if (nv == nullptr) return 0;
    *tail = nv;
    tail = &nv->next;
  }
  // Corner failures are ignored: such a corner keeps its zero value.
  transformPoint(prev, ins, prev.corner0, &plane->corner0);
  transformPoint(prev, ins, prev.corner1, &plane->corner1);
  transformPoint(prev, ins, prev.corner3, &plane->corner3);
  transformPoint(prev, ins, prev.corner2, &plane->corner2);
  return 1;
}

// The stored (ascending) triple of the first triangle, whatever the normal reversal.
int firstTriangle(CKVGen& gen, int* a, int* b, int* c) {
  if (GenInternals::tessellation(gen) == nullptr) return 0;
  int t[3];
  if (gen.KVGetFirstTesselatedTriangle(&t[0], &t[1], &t[2]) == 0) return 0;
  // Reversal hands the triple out descending; sorting restores the stored order.
  for (int i = 0; i < 2; ++i)
    for (int j = 0; j < 2 - i; ++j)
      if (t[j] > t[j + 1]) std::swap(t[j], t[j + 1]);
  *a = t[0];
  *b = t[1];
  *c = t[2];
  return 1;
}

// Points a, b, c of a plane's vertex list; 0 when one of them is missing.
int trianglePoints(tagKExtrudePlane* plane, int a, int b, int c, _D3DVECTOR* pa, _D3DVECTOR* pb,
                   _D3DVECTOR* pc) {
  if (plane == nullptr || a < 0 || b < 0 || c < 0) return 0;
  tagKExtrudeVertex* va = vertexByNumber(plane->vertices, a);
  tagKExtrudeVertex* vb = vertexByNumber(plane->vertices, b);
  tagKExtrudeVertex* vc = vertexByNumber(plane->vertices, c);
  if (va == nullptr || vb == nullptr || vc == nullptr) return 0;
  *pa = va->point.position;
  *pb = vb->point.position;
  *pc = vc->point.position;
  return 1;
}

using PointOp = int (*)(_D3DVECTOR* p, const void* arg);

// Applies op to every seed vertex, the seed corners, and every generated plane's vertices and
// corners. The result is that of the last vertex update; the walk stops at the first 0.
int walkSolid(CKVGen& gen, PointOp op, const void* arg) {
  tagKExtrudePlane* seed = GenInternals::seedPlane(gen);
  if (seed == nullptr || seed->vertices == nullptr) return 0;
  auto corners = [&](tagKExtrudePlane* p) {
    op(&p->corner0, arg);
    op(&p->corner1, arg);
    op(&p->corner2, arg);
    op(&p->corner3, arg);
  };
  int status = 0;
  for (tagKExtrudeVertex* v = seed->vertices; v != nullptr; v = v->next) {
    status = op(&v->point.position, arg);
    if (status == 0) return 0;
  }
  corners(seed);
  for (tagKExtrudePlane* p = GenInternals::genPlanes(gen); p != nullptr; p = p->next) {
    status = 0;
    for (tagKExtrudeVertex* v = p->vertices; v != nullptr; v = v->next) {
      status = op(&v->point.position, arg);
      if (status == 0) return 0;
    }
    corners(p);
    if (status == 0) return 0;
  }
  return status;
}

struct Rotation {
  _D3DVECTOR axis;
  float angle;
};

int rotateOp(_D3DVECTOR* p, const void* arg) {
  const Rotation* r = static_cast<const Rotation*>(arg);
  _D3DVECTOR in = *p;
  return KUVectorRotate(p, &in, &r->axis, r->angle);
}

int rotateSolid(CKVGen& gen, float ax, float ay, float az, float angle) {
  Rotation r{{ax, ay, az}, angle};
  return walkSolid(gen, rotateOp, &r);
}

}  // namespace

int CKVGen::KVUpdateSeedList2DBox() {
  if (m_seedPlane == nullptr || m_seedPlane->vertices == nullptr) return 0;
  // Finite starting values, so a seed lying wholly beyond +-999 keeps them on that side.
  float minX = 999.0f, minY = 999.0f, maxX = -999.0f, maxY = -999.0f;
  for (tagKExtrudeVertex* v = m_seedPlane->vertices; v != nullptr; v = v->next) {
    const _D3DVECTOR& p = v->point.position;
    if (p.x < minX) minX = p.x;
    if (p.y < minY) minY = p.y;
    if (p.x > maxX) maxX = p.x;
    if (p.y > maxY) maxY = p.y;
  }
  m_seedPlane->corner0 = {minX, maxY, 0.0f};
  m_seedPlane->corner1 = {maxX, maxY, 0.0f};
  m_seedPlane->corner2 = {minX, minY, 0.0f};
  m_seedPlane->corner3 = {maxX, minY, 0.0f};
  return 1;
}

int CKVGen::KVCalcSeedNormal(_D3DVECTOR* out) {
  int a, b, c;
  _D3DVECTOR pa, pb, pc, e1, e2, n;
  if (out == nullptr || firstTriangle(*this, &a, &b, &c) == 0 ||
      trianglePoints(m_seedPlane, a, b, c, &pa, &pb, &pc) == 0) {
    m_seedOrientation = -1;
    return 0;
  }
  KUVectorSubtract(&e1, &pc, &pb);
  KUVectorSubtract(&e2, &pb, &pa);
  if (KUVectorCrossProduct(&e1, &e2, &n) == 0 || KUVectorNormalise(&n) == 0) {
    m_seedOrientation = -1;
    return 0;
  }
  m_seedOrientation = n.z >= 0.0f ? 0 : 1;
  // The oriented normal never points to positive z.
  if (m_seedOrientation == 1) {
    *out = n;
  } else {
    KUVectorScale(out, &n, -1.0f);
  }
  return 1;
}

int CKVGen::KVCalcGenPlaneNormal(_D3DVECTOR* out) {
  int a, b, c;
  _D3DVECTOR pa, pb, pc, e1, e2, n, seed;
  if (out == nullptr || firstTriangle(*this, &a, &b, &c) == 0 ||
      trianglePoints(m_currentPlane, a, b, c, &pa, &pb, &pc) == 0)
    return 0;
  // Operands in the opposite order to the seed's, so that the plane normals come out with the
  // opposite sign of the oriented seed normal, which is what the seed plane itself receives.
  KUVectorSubtract(&e1, &pb, &pa);
  KUVectorSubtract(&e2, &pc, &pb);
  if (KUVectorCrossProduct(&e1, &e2, &n) == 0 || KUVectorNormalise(&n) == 0) return 0;
  // Only the orientation is wanted from the seed: when its normal cannot be had the orientation
  // is unknown (-1), which counts as 0, and the plane's own normal still stands.
  KVCalcSeedNormal(&seed);
  if (m_seedOrientation == 1) {
    *out = n;
  } else {
    KUVectorScale(out, &n, -1.0f);
  }
  return 1;
}

int CKVGen::KVGenerate() {
  if (m_seedPlane == nullptr) return 0;
  // Deliberately: with no instructions, the planes generated earlier stay as they are.
  if (m_instructions == nullptr) return 1;
  auto dropPlanes = [this] {
    destroyPlaneList(m_genPlanes);
    m_genPlanes = nullptr;
    m_currentPlane = nullptr;
    m_selectedGenVertex = nullptr;
  };
  dropPlanes();
  if (KVUpdateSeedList2DBox() == 0) return 0;

  _D3DVECTOR work = {0.0f, 0.0f, -1.0f};
  KVCalcSeedNormal(&work);  // an untessellated seed keeps (0, 0, -1)
  KUVectorScale(&m_seedPlane->normal, &work, -1.0f);

  const bool faceOutlines = m_edgeDetectType == EDGE_DETECT_FACE;
  const tagKExtrudePlane* prev = m_seedPlane;
  tagKExtrudePlane** tail = &m_genPlanes;
  for (const tagKExtrudeInstruction* ins = m_instructions; ins != nullptr; ins = ins->next) {
    // A failure never leaves a half-built stack.
    tagKExtrudePlane* plane = makePlane();
    if (plane == nullptr) {
      dropPlanes();
      return 0;
    }
    *tail = plane;
    tail = &plane->next;
    m_currentPlane = plane;
    if (extrudePlane(*prev, *ins, faceOutlines, plane) == 0) {
      dropPlanes();
      return 0;
    }
    _D3DVECTOR n;
    if (KVCalcGenPlaneNormal(&n) != 0) plane->normal = n;
    prev = plane;
  }
  m_selectedGenVertex = nullptr;
  return 1;
}

// ---- whole-solid transforms ----

namespace {
int invertResizeOp(_D3DVECTOR* p, const void* arg) {
  const float f = *static_cast<const float*>(arg);
  _D3DVECTOR in = *p;
  KUVectorScale(p, &in, f);
  p->x = -p->x;
  return 1;
}

int translateOp(_D3DVECTOR* p, const void* arg) {
  _D3DVECTOR in = *p;
  return KUVectorAdd(p, &in, static_cast<const _D3DVECTOR*>(arg));
}
}  // namespace

int CKVGen::KVInvertResize(float f) { return walkSolid(*this, invertResizeOp, &f); }
int CKVGen::KVElevate(float angle) { return rotateSolid(*this, -1.0f, 0.0f, 0.0f, angle); }
int CKVGen::KVRoll(float angle) { return rotateSolid(*this, 0.0f, 0.0f, 1.0f, angle); }
int CKVGen::KVRotateHorizontal(float angle) { return rotateSolid(*this, 0.0f, 1.0f, 0.0f, angle); }
int CKVGen::KVTranslate(const _D3DVECTOR* t) {
  if (t == nullptr) return 0;
  _D3DVECTOR copy = *t;
  return walkSolid(*this, translateOp, &copy);
}

// ---- footprints ----

int CKVGen::KVFootPrintFromSeed(CKFootPrint* fp, int lay) {
  if (fp == nullptr || m_seedPlane == nullptr || m_seedPlane->vertices == nullptr) return 0;
  fp->FPDeleteAllEdges();
  for (tagKExtrudeVertex* v = m_seedPlane->vertices; v != nullptr; v = v->next) {
    _D3DVECTOR p = v->point.position;
    if (lay != 0) p = {p.x, 0.0f, p.y};  // laid on the floor; z is dropped
    if (fp->FPAddVertex(&p) == 0) return 0;
  }
  return fp->FPUpdateVertexDependencies();
}

int CKVGen::KVFootPrintFromSelectedFace(CKFootPrint* fp) {
  if (fp == nullptr) return 0;
  _D3DVECTOR c[4];
  if (KVGetFrontFace(&c[0], &c[1], &c[2], &c[3]) == 0 && KVGetBackFace(&c[0], &c[1], &c[2], &c[3]) == 0)
    return 0;
  fp->FPDeleteAllEdges();
  for (const _D3DVECTOR& p : c) {
    if (fp->FPAddVertex(&p) == 0) return 0;
  }
  return fp->FPUpdateVertexDependencies();
}

int CKVGen::KVFootPrintFromSelectedGen(CKFootPrint* fp) {
  if (fp == nullptr || KVSelectFirstGenVertex() == 0) return 0;
  fp->FPDeleteAllEdges();
  _D3DRMBOX box = {};
  bool first = true;
  auto widen = [&box](const _D3DVECTOR& p) {
    box.min.x = std::fmin(box.min.x, p.x);
    box.min.y = std::fmin(box.min.y, p.y);
    box.min.z = std::fmin(box.min.z, p.z);
    box.max.x = std::fmax(box.max.x, p.x);
    box.max.y = std::fmax(box.max.y, p.y);
    box.max.z = std::fmax(box.max.z, p.z);
  };
  while (m_selectedGenVertex != nullptr) {
    _D3DVECTOR c[4];
    if (KVGetFrontFace(&c[0], &c[1], &c[2], &c[3]) == 0 && KVGetBackFace(&c[0], &c[1], &c[2], &c[3]) == 0)
      return 0;
    if (fp->FPAddVertex(&c[3]) == 0) return 0;
    if (first) {
      box.min = c[3];
      box.max = c[3];
      first = false;
    }
    widen(c[0]);
    widen(c[3]);
    if (KVSelectNextGenVertex() == 0) break;
  }
  int status = fp->FPUpdateVertexDependencies();
  if (status != 0) {
    // The plane's box covers the slab between the previous plane and this one.
    fp->FPUpdate3DBoxFromVertex(&box.min);
    fp->FPUpdate3DBoxFromVertex(&box.max);
  }
  return status;
}

int CKVGen::KVFootPrintFromEnclosingBox(CKFootPrint* fp) {
  if (fp == nullptr) return 0;
  _D3DRMBOX* seedBox = nullptr;
  if (KVGetSeedFaceBox(&seedBox) == 0) return 0;
  _D3DRMBOX box = *seedBox;
  for (tagKExtrudePlane* p = m_genPlanes; p != nullptr; p = p->next) {
    _D3DRMBOX* planeBox = nullptr;
    if (p->outline == nullptr || p->outline->FPGetBox(&planeBox) == 0) return 0;
    if (fp->FPUpdate3DBoxFromBox(&box, planeBox) == 0) return 0;
  }
  fp->FPDeleteAllEdges();
  fp->FPAddVertex(box.min.x, box.min.y, box.min.z);
  fp->FPAddVertex(box.min.x, box.min.y, box.max.z);
  fp->FPAddVertex(box.max.x, box.max.y, box.max.z);
  fp->FPAddVertex(box.max.x, box.max.y, box.min.z);
  return fp->FPUpdateVertexDependencies();
}

// ---- globe and end-plane mapping ----

int GKVSeedExtruderGlobe(CKVGen* gen, int segments, int rings, float radius) {
  if (gen == nullptr || segments < 1 || rings < 1 || !(radius > 0.0f)) return 0;
  gen->KVInitialise();
  gen->KVSetNormalDirection(0);
  const float pi = 3.14159265358979f;
  const float step = pi / static_cast<float>(rings);
  // The half-step margin keeps the last vertex despite rounding.
  const float limit = pi / 2.0f + step / 2.0f;
  for (float a = -pi / 2.0f; a < limit;) {
    _D3DVECTOR p = {0.0f, std::sin(a) * radius, std::cos(a) * radius};
    if (gen->KVAddSeedVertex(&p) == 0) return 0;
    const float next = a + step;
    if (!(next > a)) break;  // a step below the angle's precision would never finish
    a = next;
  }
  const _D3DVECTOR up = {0.0f, 1.0f, 0.0f};
  const float turn = 2.0f * pi / static_cast<float>(segments);
  for (int i = 0; i < segments; ++i) {
    if (gen->KVAddInstruction(INSTR_ROTATE_AXIS, &up, turn) == 0) return 0;
  }
  return 1;
}

int GKVCalculateEndPlaneVertexMappings(CKVGen* gen, int end, int tiling, float size) {
  if (gen == nullptr) return 0;
  if (tiling < 1) tiling = 1;
  int count = 0;
  gen->KVGetNumVertices(&count);
  _D3DRMBOX* box = nullptr;
  if (gen->KVGetSeedFaceBox(&box) == 0) return 0;
  const float w = box->max.x - box->min.x;
  const float h = box->max.y - box->min.y;
  const float sf = w > h ? size / w : size / h;  // a tie takes h
  // The box's edges are scaled in single precision like the vertices, so that a vertex on an
  // edge maps to exactly 0.
  const float minXs = box->min.x * sf, maxXs = box->max.x * sf, minYs = box->min.y * sf;
  const double ws = static_cast<double>(w * sf), hs = static_cast<double>(h * sf);
  tagKExtrudeVertex* const seed = GenInternals::seedPlane(*gen)->vertices;  // the box is the seed's

  if (end == 0) {
    if (seed == nullptr) return 0;
    for (tagKExtrudeVertex* v = seed; v != nullptr; v = v->next) {
      _D3DVECTOR p;
      KUVectorScale(&p, &v->point.position, sf);
      tagKTessVertex& t = v->point.tess;
      t.u = (static_cast<double>(minXs) - p.x) / ws * tiling;
      t.v = (static_cast<double>(p.y) - minYs) / hs * tiling;
      t.x = p.x;
      t.y = p.y;
      t.z = p.z;
    }
    return 1;
  }
  if (end == 1) {
    tagKExtrudePlane* last = lastPlane(GenInternals::genPlanes(*gen));
    if (last == nullptr) return 0;
    GenInternals::currentPlane(*gen) = last;
    // Mirrored against the front, so the picture reads the same way from outside at either end.
    for (int n = count - 1; n >= 0; --n) {
      tagKExtrudeVertex* seedV = vertexByNumber(seed, n);
      tagKExtrudeVertex* genV = vertexByNumber(last->vertices, n);
      if (seedV == nullptr || genV == nullptr) return 0;
      _D3DVECTOR p, q;
      KUVectorScale(&p, &seedV->point.position, sf);
      KUVectorScale(&q, &genV->point.position, sf);
      tagKTessVertex& t = genV->point.tess;
      t.u = (static_cast<double>(p.x) - maxXs) / ws * tiling;
      t.v = (static_cast<double>(p.y) - minYs) / hs * tiling;
      t.x = q.x;
      t.y = q.y;
      t.z = q.z;
    }
    return 1;
  }
  return 0;
}
