// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Side faces and their corner order, collision outlines, boxes and hit marks.
#include "KVGen.h"
#include "KVector.h"
#include "VGenInternals.h"
#include "VGenRecords.h"

using namespace kutil::detail;
using GenInternals = Internals<CKVGen>;

namespace {

// The plane before `plane`: the seed for the first generated plane; null when not found.
tagKExtrudePlane* previousPlane(CKVGen& gen, tagKExtrudePlane* plane) {
  if (plane == GenInternals::genPlanes(gen)) return GenInternals::seedPlane(gen);
  for (tagKExtrudePlane* p = GenInternals::genPlanes(gen); p != nullptr; p = p->next) {
    if (p->next == plane) return p;
  }
  return nullptr;
}

// Positions of the face corners: previous i, previous j, current i, current j.
struct FaceQuad {
  _D3DVECTOR prevI, prevJ, curI, curJ;
};

// Gathers the quad between the selected vertex i and vertex j (i + 1, or 0 for the back face).
int gatherFace(CKVGen& gen, bool back, FaceQuad* q) {
  tagKExtrudePlane* cur = GenInternals::currentPlane(gen);
  tagKExtrudeVertex* sel = GenInternals::selectedGenVertex(gen);
  if (cur == nullptr || sel == nullptr) return 0;
  if (!back && sel->next == nullptr) return 0;
  tagKExtrudePlane* prev = previousPlane(gen, cur);
  if (prev == nullptr) return 0;
  const int i = numberOfVertex(cur->vertices, sel);
  if (i < 0) return 0;
  const int j = back ? 0 : i + 1;
  tagKExtrudeVertex* pi = vertexByNumber(prev->vertices, i);
  tagKExtrudeVertex* pj = vertexByNumber(prev->vertices, j);
  tagKExtrudeVertex* cj = vertexByNumber(cur->vertices, j);
  if (pi == nullptr || pj == nullptr || cj == nullptr) return 0;
  q->prevI = pi->point.position;
  q->prevJ = pj->point.position;
  q->curI = sel->point.position;
  q->curJ = cj->point.position;
  return 1;
}

int emitFace(CKVGen& gen, bool back, _D3DVECTOR* c1, _D3DVECTOR* c2, _D3DVECTOR* c3, _D3DVECTOR* c4) {
  if (c1 == nullptr || c2 == nullptr || c3 == nullptr || c4 == nullptr) return 0;
  FaceQuad q;
  if (gatherFace(gen, back, &q) == 0) return 0;
  if (gen.KVIsNormalReversalActive() != 0) {
    *c1 = q.prevJ;
    *c2 = q.prevI;
    *c3 = q.curI;
    *c4 = q.curJ;
  } else {
    *c1 = q.prevI;
    *c2 = q.prevJ;
    *c3 = q.curJ;
    *c4 = q.curI;
  }
  return 1;
}

int boxOf(CKFootPrint* fp, _D3DRMBOX** box) {
  if (box == nullptr || fp == nullptr) return 0;
  return fp->FPGetBox(box);
}

}  // namespace

int CKVGen::KVIsNormalReversalActive() {
  // An unset direction counts as non-zero and an unknown orientation as 0.
  const bool directionSet = m_normalDirection != 0;
  const bool seedFacesDown = m_seedOrientation == 1;
  return directionSet != seedFacesDown ? 1 : 0;
}

int CKVGen::KVGetFrontFace(_D3DVECTOR* c1, _D3DVECTOR* c2, _D3DVECTOR* c3, _D3DVECTOR* c4) {
  return emitFace(*this, false, c1, c2, c3, c4);
}

int CKVGen::KVGetBackFace(_D3DVECTOR* c1, _D3DVECTOR* c2, _D3DVECTOR* c3, _D3DVECTOR* c4) {
  return emitFace(*this, true, c1, c2, c3, c4);
}

int CKVGen::KVIsFaceUsable() {
  _D3DVECTOR c[4];
  if (KVGetFrontFace(&c[0], &c[1], &c[2], &c[3]) == 0 && KVGetBackFace(&c[0], &c[1], &c[2], &c[3]) == 0)
    return 0;
  return KUHasArea(&c[0], &c[1], &c[2], &c[3]) > 0 ? 1 : 0;
}

int CKVGen::KVUpdateVertexDependencies() {
  if (m_seedPlane == nullptr) return 0;
  if (KVFootPrintFromSeed(m_seedPlane->outline, 0) == 0) return 0;
  for (tagKExtrudePlane* p = m_genPlanes; p != nullptr; p = p->next) {
    m_currentPlane = p;
    if (KVFootPrintFromSelectedGen(p->outline) == 0) return 0;
    if (m_edgeDetectType != EDGE_DETECT_FACE) continue;
    KVSelectFirstGenVertex();
    for (; m_selectedGenVertex != nullptr; m_selectedGenVertex = m_selectedGenVertex->next) {
      if (m_selectedGenVertex->faceOutline == nullptr) return 0;
      if (KVFootPrintFromSelectedFace(m_selectedGenVertex->faceOutline) == 0) return 0;
      if (m_selectedGenVertex->next == nullptr) break;  // leave the last vertex selected
    }
  }
  return 1;
}

// ---- boxes ----

int CKVGen::KVGetSeedFaceBox(_D3DRMBOX** box) {
  return m_seedPlane != nullptr ? boxOf(m_seedPlane->outline, box) : 0;
}

int CKVGen::KVGetGenFaceBox(_D3DRMBOX** box) {
  tagKExtrudePlane* last = lastPlane(m_genPlanes);
  if (box == nullptr || last == nullptr) return 0;
  m_currentPlane = last;
  return boxOf(last->outline, box);
}

int CKVGen::KVGetBoxForCurrentPlane(_D3DRMBOX** box) {
  return m_currentPlane != nullptr ? boxOf(m_currentPlane->outline, box) : 0;
}

int CKVGen::KVSelectFirstGenBox(_D3DRMBOX** box) {
  if (box == nullptr || KVSelectFirstGenPlane() == 0) return 0;
  return boxOf(m_currentPlane->outline, box);
}

int CKVGen::KVSelectNextGenBox(_D3DRMBOX** box) {
  if (box == nullptr || KVSelectNextGenPlane() == 0) return 0;
  return boxOf(m_currentPlane->outline, box);
}

int CKVGen::KVSelectFirstFaceBox(_D3DRMBOX** box) {
  if (box == nullptr || KVSelectFirstGenVertex() == 0 || m_selectedGenVertex == nullptr) return 0;
  return boxOf(m_selectedGenVertex->faceOutline, box);
}

int CKVGen::KVSelectNextFaceBox(_D3DRMBOX** box) {
  if (box == nullptr || KVSelectNextGenVertex() == 0) return 0;
  return boxOf(m_selectedGenVertex->faceOutline, box);
}

// ---- hit marks ----

int CKVGen::KVSetSeedFaceHit() {
  if (m_seedPlane == nullptr) return 0;
  m_seedPlane->hit = 1;
  return 1;
}
int CKVGen::KVUnSetSeedFaceHit() {
  if (m_seedPlane == nullptr) return 0;
  m_seedPlane->hit = 0;
  return 1;
}
int CKVGen::KVIsSeedFaceHit() { return m_seedPlane != nullptr ? m_seedPlane->hit : 0; }

int CKVGen::KVSetGenFaceHit() {
  if (m_currentPlane == nullptr) return 0;
  m_currentPlane->hit = 1;
  return 1;
}
int CKVGen::KVUnSetGenFaceHit() {
  if (m_currentPlane == nullptr) return 0;
  m_currentPlane->hit = 0;
  return 1;
}
int CKVGen::KVIsGenFaceHit() { return m_currentPlane != nullptr ? m_currentPlane->hit : 0; }

int CKVGen::KVSetSelectedHitFace() {
  if (m_currentPlane == nullptr || m_selectedGenVertex == nullptr) return 0;
  m_selectedGenVertex->hitFace = 1;
  return 1;
}
int CKVGen::KVUnSetSelectedHitFace() {
  if (m_currentPlane == nullptr || m_selectedGenVertex == nullptr) return 0;
  m_selectedGenVertex->hitFace = 0;
  return 1;
}
int CKVGen::KVIsSelectedHitFace() {
  if (m_currentPlane == nullptr || m_selectedGenVertex == nullptr) return 0;
  return m_selectedGenVertex->hitFace;
}

int CKVGen::KVClearHitFaces() {
  if (m_seedPlane != nullptr) m_seedPlane->hit = 0;
  for (tagKExtrudePlane* p = m_genPlanes; p != nullptr; p = p->next) {
    m_currentPlane = p;
    p->hit = 0;
    for (tagKExtrudeVertex* v = p->vertices; v != nullptr; v = v->next) v->hitFace = 0;
  }
  return 1;
}

int CKVGen::KVSelectHitFaceByNumber(int n) {
  int count = 0;
  for (tagKExtrudePlane* p = m_genPlanes; p != nullptr; p = p->next) {
    m_currentPlane = p;
    for (tagKExtrudeVertex* v = p->vertices; v != nullptr; v = v->next) {
      m_selectedGenVertex = v;
      if (v->hitFace != 0 && ++count == n) return 1;
    }
  }
  return 0;
}
