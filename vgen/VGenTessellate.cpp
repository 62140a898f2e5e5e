// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// CKVGen's tessellation methods: building the triangulation of the seed and
// iterating its triangles.
#include <new>
#include <utility>
#include <vector>

#include "Boundary.h"
#include "KVGen.h"
#include "Tessellation.h"

using kutil::detail::TessResult;

namespace {

// Hands out triangle t, reversed (c, b, a) when faces are to be wound the other way.
void handOut(CKVGen& gen, const kutil::detail::TessTriangle& t, int* a, int* b, int* c) {
  if (gen.KVIsNormalReversalActive()) {
    *a = t.v[2];
    *b = t.v[1];
    *c = t.v[0];
  } else {
    *a = t.v[0];
    *b = t.v[1];
    *c = t.v[2];
  }
}

// Fills tess with the triangulation of the seed vertices; 0 when there is none.
int triangulate(CKVGen& gen, const tagKExtrudeVertex* vertices, KVTessellation* tess) {
  std::vector<_D3DVECTOR> seed;
  for (const tagKExtrudeVertex* v = vertices; v != nullptr; v = v->next) seed.push_back(v->point.position);
  CKFootPrint laid;
  laid.FPInitialise();
  // Its status only says whether the box and centre could be made; a seed
  // without a box is measured against the origin as its outside point.
  gen.KVFootPrintFromSeed(&laid, 1);
  TessResult result;
  const int ok = kutil::detail::tessellateSeed(seed, laid, &result);
  if (ok) {
    tess->segments = std::move(result.segments);
    tess->triangles = std::move(result.triangles);
  }
  laid.FPTerminate();
  return ok;
}

}  // namespace

int CKVGen::KVTesselateSeedPlane() {
  KVDeleteTessellation();
  if (m_seedPlane == nullptr || m_seedPlane->vertices == nullptr) return 0;
  KVTessellation* tess = new (std::nothrow) KVTessellation();
  if (tess == nullptr) return 0;
  // The engine works in standard-library vectors: out of memory is a failure like any other.
  if (!kutil::detail::guarded([&] { return triangulate(*this, m_seedPlane->vertices, tess); })) {
    delete tess;
    return 0;
  }
  m_tessellation = tess;
  _D3DVECTOR normal;
  KVCalcSeedNormal(&normal);  // refreshes the seed orientation; its status is not ours
  return 1;
}

int CKVGen::KVGetFirstTesselatedTriangle(int* a, int* b, int* c) {
  if (a == nullptr || b == nullptr || c == nullptr || m_tessellation == nullptr) return 0;
  if (m_tessellation->triangles.empty()) {
    m_tessellation->triangleCursor = -1;
    return 0;
  }
  m_tessellation->triangleCursor = 0;
  handOut(*this, m_tessellation->triangles[0], a, b, c);
  return 1;
}

int CKVGen::KVGetNextTesselatedTriangle(int* a, int* b, int* c) {
  if (a == nullptr || b == nullptr || c == nullptr || m_tessellation == nullptr) return 0;
  KVTessellation& t = *m_tessellation;
  if (t.triangles.empty()) {
    t.triangleCursor = -1;
    return 0;
  }
  // Without a cursor there is nothing to step on from.
  if (t.triangleCursor < 0) return 0;
  const std::size_t next = static_cast<std::size_t>(t.triangleCursor) + 1;
  if (next >= t.triangles.size()) return 0;
  t.triangleCursor = static_cast<int>(next);
  handOut(*this, t.triangles[next], a, b, c);
  return 1;
}

void CKVGen::KVDeleteTessellation() {
  delete m_tessellation;
  m_tessellation = nullptr;
}
