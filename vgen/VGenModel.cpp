// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The generator's lifecycle, settings, seed list, generated-plane cursors and instructions.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

#include "FootPrintInternals.h"
#include "KText.h"
#include "KVGen.h"
#include "KVector.h"
#include "TextDetail.h"
#include "VGenRecords.h"

using namespace kutil::detail;

namespace {

constexpr int kTextureCapacity = 277;
constexpr int kIconLength = 16;

// Copies a non-empty field out whole; 0 when it is empty.
int copyOut(char* out, const char* field) {
  if (out == nullptr || field[0] == '\0') return 0;
  std::strcpy(out, field);
  return 1;
}

// The icon setters and getters go through the library's bounded copy.
int copyIcon(char* out, const char* in) {
  if (out == nullptr || in == nullptr) return 0;
  return KUSafeStrncpy(out, in, kIconLength);
}

}  // namespace

// Every field defined, so that a generator destroyed without KVInitialise frees nothing.
CKVGen::CKVGen()
    : m_seedPlane(nullptr),
      m_currentPlane(nullptr),
      m_selectedGenVertex(nullptr),
      m_normalDirection(-1),
      m_seedOrientation(-1),
      m_reserved(-1),
      m_deltaTranslation(0.0f),
      m_deltaRotation(0.0f),
      m_frontPlaneTexture{},
      m_backPlaneTexture{},
      m_wrapSurfaceTexture{},
      m_frontIconIndex{},
      m_backIconIndex{},
      m_wrapIconIndex{},
      m_frontTiling(1),
      m_backTiling(1),
      m_wrapTiling(1),
      m_edgeDetectType(EDGE_DETECT_BOX),
      m_selectedSeedVertex(nullptr),
      m_instructions(nullptr),
      m_selectedInstruction(nullptr),
      m_genPlanes(nullptr),
      m_tessellation(nullptr) {}

CKVGen::~CKVGen() { KVTerminate(); }

int CKVGen::KVInitialise() {
  FPInitialise();
  m_seedPlane = nullptr;
  m_currentPlane = nullptr;
  m_selectedGenVertex = nullptr;
  m_normalDirection = -1;
  m_seedOrientation = -1;
  m_reserved = -1;
  m_deltaTranslation = 20.0f;
  m_deltaRotation = 0.34906584f;  // 20 degrees
  m_frontPlaneTexture[0] = '\0';
  m_backPlaneTexture[0] = '\0';
  m_wrapSurfaceTexture[0] = '\0';
  m_frontIconIndex[0] = '\0';
  m_backIconIndex[0] = '\0';
  m_wrapIconIndex[0] = '\0';
  m_frontTiling = 1;
  m_backTiling = 1;
  m_wrapTiling = 1;
  m_edgeDetectType = EDGE_DETECT_BOX;
  m_selectedSeedVertex = nullptr;
  m_instructions = nullptr;
  m_selectedInstruction = nullptr;
  m_genPlanes = nullptr;
  m_tessellation = nullptr;
  return 1;
}

int CKVGen::KVTerminate() {
  KVDeleteSeedList();
  m_selectedSeedVertex = nullptr;
  destroyPlaneList(m_genPlanes);
  m_genPlanes = nullptr;
  m_currentPlane = nullptr;
  m_selectedGenVertex = nullptr;
  KVDeleteAllInstructions();
  KVDeleteTessellation();
  FPTerminate();
  return 1;
}

// ---- appearance and settings ----

int CKVGen::KVSetNormalDirection(int direction) {
  m_normalDirection = direction;
  return 1;
}

int CKVGen::KVGetNormalDirection(int* direction) {
  if (direction == nullptr || m_normalDirection == -1) return 0;
  *direction = m_normalDirection;
  return 1;
}

int CKVGen::KVSetFrontPlaneTexture(const char* name) {
  copyBounded(m_frontPlaneTexture, name, kTextureCapacity - 1);
  return 1;
}
int CKVGen::KVGetFrontPlaneTexture(char* out) { return copyOut(out, m_frontPlaneTexture); }
int CKVGen::KVSetBackPlaneTexture(const char* name) {
  copyBounded(m_backPlaneTexture, name, kTextureCapacity - 1);
  return 1;
}
int CKVGen::KVGetBackPlaneTexture(char* out) { return copyOut(out, m_backPlaneTexture); }
int CKVGen::KVSetWrapSurfaceTexture(const char* name) {
  copyBounded(m_wrapSurfaceTexture, name, kTextureCapacity - 1);
  return 1;
}
int CKVGen::KVGetWrapSurfaceTexture(char* out) { return copyOut(out, m_wrapSurfaceTexture); }

int CKVGen::KVSetFrontTiling(int tiling) {
  m_frontTiling = tiling;
  return 1;
}
int CKVGen::KVGetFrontTiling(int* tiling) {
  if (tiling == nullptr) return 0;
  *tiling = m_frontTiling;
  return 1;
}
int CKVGen::KVSetBackTiling(int tiling) {
  m_backTiling = tiling;
  return 1;
}
int CKVGen::KVGetBackTiling(int* tiling) {
  if (tiling == nullptr) return 0;
  *tiling = m_backTiling;
  return 1;
}
int CKVGen::KVSetWrapTiling(int tiling) {
  m_wrapTiling = tiling;
  return 1;
}
int CKVGen::KVGetWrapTiling(int* tiling) {
  if (tiling == nullptr) return 0;
  *tiling = m_wrapTiling;
  return 1;
}

int CKVGen::KVSetFrontIconIndex(const char* index) { return copyIcon(m_frontIconIndex, index); }
int CKVGen::KVGetFrontIconIndex(char* out) {
  if (m_frontIconIndex[0] == '\0') return 0;
  return copyIcon(out, m_frontIconIndex);
}
int CKVGen::KVSetBackIconIndex(const char* index) { return copyIcon(m_backIconIndex, index); }
int CKVGen::KVGetBackIconIndex(char* out) {
  if (m_backIconIndex[0] == '\0') return 0;
  return copyIcon(out, m_backIconIndex);
}
int CKVGen::KVSetWrapIconIndex(const char* index) { return copyIcon(m_wrapIconIndex, index); }
int CKVGen::KVGetWrapIconIndex(char* out) {
  if (m_wrapIconIndex[0] == '\0') return 0;
  return copyIcon(out, m_wrapIconIndex);
}

int CKVGen::KVSetDeltaTranslation(float delta) {
  m_deltaTranslation = delta;
  return 1;
}
int CKVGen::KVGetDeltaTranslation(float* delta) {
  if (delta == nullptr) return 0;
  *delta = m_deltaTranslation;
  return 1;
}
int CKVGen::KVSetDeltaRotation(float delta) {
  m_deltaRotation = delta;
  return 1;
}
int CKVGen::KVGetDeltaRotation(float* delta) {
  if (delta == nullptr) return 0;
  *delta = m_deltaRotation;
  return 1;
}
int CKVGen::KVSetEdgeDetectType(int type) {
  m_edgeDetectType = type;
  return 1;
}
int CKVGen::KVGetEdgeDetectType(int* type) {
  if (type == nullptr) return 0;
  *type = m_edgeDetectType;
  return 1;
}
int CKVGen::KVIsEdgeDetectBoxType() { return m_edgeDetectType == EDGE_DETECT_BOX ? 1 : 0; }

// ---- seed list ----

int CKVGen::KVAddSeedVertex(const _D3DVECTOR* point) {
  if (point == nullptr) return 0;
  tagKExtrudeVertex* v = makeVertex(*point, m_edgeDetectType == EDGE_DETECT_FACE);
  if (v == nullptr) return 0;
  if (m_seedPlane == nullptr) {
    m_seedPlane = makePlane();
    if (m_seedPlane == nullptr) {
      destroyVertex(v);
      return 0;
    }
  }
  appendVertex(m_seedPlane, v);
  return 1;
}

int CKVGen::KVInsertAfterSelectedSeedVertex(const _D3DVECTOR* point) {
  if (point == nullptr || m_selectedSeedVertex == nullptr) return 0;
  // An inserted vertex never gets a face outline, whatever the edge-detect type; the footprint is
  // still made (and must be makeable) to keep the failure behaviour of the add.
  CKFootPrint* probe = makeFootPrint();
  if (probe == nullptr) return 0;
  destroyFootPrint(probe);
  tagKExtrudeVertex* v = makeVertex(*point, false);
  if (v == nullptr) return 0;
  v->next = m_selectedSeedVertex->next;
  m_selectedSeedVertex->next = v;
  return 1;
}

int CKVGen::KVDeleteSelectedSeedVertex() {
  // The empty cases come first: a generator without a seed never has a
  // selection, so checking the selection first would hide them.
  if (m_seedPlane == nullptr || m_seedPlane->vertices == nullptr) return 1;
  if (m_selectedSeedVertex == nullptr) return 0;
  tagKExtrudeVertex* doomed = m_selectedSeedVertex;
  bool found = false;
  tagKExtrudeVertex** link = &m_seedPlane->vertices;
  while (*link != nullptr) {
    if (*link == doomed) {
      *link = doomed->next;
      found = true;
    } else {
      link = &(*link)->next;
    }
  }
  if (!found) return 0;
  destroyVertex(doomed);
  m_selectedSeedVertex = nullptr;
  return 1;
}

int CKVGen::KVDeleteSeedList() {
  destroyPlane(m_seedPlane);
  m_seedPlane = nullptr;
  m_selectedSeedVertex = nullptr;
  return 1;
}

int CKVGen::KVGetFirstSeedVertex(_D3DVECTOR* out) {
  if (out == nullptr) return 0;
  m_selectedSeedVertex = nullptr;
  if (m_seedPlane == nullptr || m_seedPlane->vertices == nullptr) return 0;
  m_selectedSeedVertex = m_seedPlane->vertices;
  *out = m_selectedSeedVertex->point.position;
  return 1;
}

int CKVGen::KVGetLastSeedVertex(_D3DVECTOR* out) {
  if (out == nullptr) return 0;
  m_selectedSeedVertex = nullptr;
  if (m_seedPlane == nullptr || m_seedPlane->vertices == nullptr) return 0;
  m_selectedSeedVertex = lastVertex(m_seedPlane->vertices);
  *out = m_selectedSeedVertex->point.position;
  return 1;
}

int CKVGen::KVGetNextSeedVertex(_D3DVECTOR* out) {
  if (out == nullptr || m_selectedSeedVertex == nullptr || m_selectedSeedVertex->next == nullptr) return 0;
  m_selectedSeedVertex = m_selectedSeedVertex->next;
  *out = m_selectedSeedVertex->point.position;
  return 1;
}

int CKVGen::KVGetPrevSeedVertex(_D3DVECTOR* out) {
  if (out == nullptr || m_selectedSeedVertex == nullptr || m_seedPlane == nullptr) return 0;
  tagKExtrudeVertex* prev = nullptr;
  for (tagKExtrudeVertex* v = m_seedPlane->vertices; v != nullptr; v = v->next) {
    if (v->next == m_selectedSeedVertex) {
      prev = v;
      break;
    }
  }
  if (prev == nullptr) return 0;
  m_selectedSeedVertex = prev;
  *out = prev->point.position;
  return 1;
}

int CKVGen::KVSelectSeedVertexByNumber(int n) {
  if (m_seedPlane == nullptr) return 0;
  tagKExtrudeVertex* v = vertexByNumber(m_seedPlane->vertices, n);
  if (v == nullptr) return 0;
  m_selectedSeedVertex = v;
  return 1;
}

int CKVGen::KVGetSeedVertexByNumber(int n, _D3DVECTOR* out) {
  if (out == nullptr || KVSelectSeedVertexByNumber(n) == 0) return 0;
  *out = m_selectedSeedVertex->point.position;
  return 1;
}

int CKVGen::KVGetSelectedSeedVertex(_D3DVECTOR* out) {
  if (out == nullptr || m_selectedSeedVertex == nullptr) return 0;
  *out = m_selectedSeedVertex->point.position;
  return 1;
}

int CKVGen::KVUpdateSelectedSeedVertex(const _D3DVECTOR* point) {
  if (point == nullptr || m_selectedSeedVertex == nullptr) return 0;
  m_selectedSeedVertex->point.position = *point;
  return 1;
}

int CKVGen::KVGetSelectedSeedVertexTessPointer(tagKTessVertex** out) {
  if (out == nullptr || m_selectedSeedVertex == nullptr) return 0;
  *out = &m_selectedSeedVertex->point.tess;
  return 1;
}

int CKVGen::KVGetNumVertices(int* count) {
  if (count == nullptr || m_seedPlane == nullptr || m_seedPlane->vertices == nullptr) return 0;
  int n = 0;
  for (tagKExtrudeVertex* v = m_seedPlane->vertices; v != nullptr; v = v->next) ++n;
  *count = n;
  return 1;
}

int CKVGen::KVSeedFromFootPrint(CKFootPrint* footprint) {
  if (footprint == nullptr) return 0;
  KVDeleteSeedList();
  tagKEdge*& cursor = Internals<CKFootPrint>::cursor(*footprint);
  tagKEdge* saved = cursor;
  int status = footprint->FPSelectFirstEdge();
  if (status != 0) {
    do {
      _D3DVECTOR p;
      status = footprint->FPGetEdgeFromVector(&p);
      if (status != 0) status = KVAddSeedVertex(&p);
    } while (status != 0 && footprint->FPSelectNextEdgeNoWrap() != 0);
  }
  cursor = saved;
  return status;
}

// ---- generated planes and vertices ----

int CKVGen::KVSelectFirstGenPlane() {
  m_currentPlane = m_genPlanes;
  return m_currentPlane != nullptr ? 1 : 0;
}

int CKVGen::KVSelectNextGenPlane() {
  if (m_currentPlane == nullptr || m_currentPlane->next == nullptr) return 0;
  m_currentPlane = m_currentPlane->next;
  return 1;
}

int CKVGen::KVSelectPrevGenPlane() {
  if (m_currentPlane == nullptr) return 0;
  for (tagKExtrudePlane* p = m_genPlanes; p != nullptr; p = p->next) {
    if (p->next == m_currentPlane) {
      m_currentPlane = p;
      return 1;
    }
  }
  return 0;
}

int CKVGen::KVSelectFirstGenVertex() {
  if (m_currentPlane == nullptr) {
    m_selectedGenVertex = nullptr;
    return 0;
  }
  m_selectedGenVertex = m_currentPlane->vertices;
  return 1;
}

int CKVGen::KVSelectNextGenVertex() {
  if (m_currentPlane == nullptr || m_selectedGenVertex == nullptr || m_selectedGenVertex->next == nullptr)
    return 0;
  m_selectedGenVertex = m_selectedGenVertex->next;
  return 1;
}

int CKVGen::KVSelectGenVertexByNumber(int n) {
  m_selectedGenVertex = m_currentPlane != nullptr ? vertexByNumber(m_currentPlane->vertices, n) : nullptr;
  return m_selectedGenVertex != nullptr ? 1 : 0;
}

int CKVGen::KVGetGenVertexByNumber(int n, _D3DVECTOR* out) {
  if (out == nullptr || m_currentPlane == nullptr) return 0;
  tagKExtrudeVertex* v = vertexByNumber(m_currentPlane->vertices, n);
  if (v == nullptr) return 0;
  *out = v->point.position;
  return 1;
}

int CKVGen::KVGetSelectedGenVertex(_D3DVECTOR* out) {
  if (out == nullptr || m_currentPlane == nullptr || m_selectedGenVertex == nullptr) return 0;
  *out = m_selectedGenVertex->point.position;
  return 1;
}

int CKVGen::KVUpdateSelectedGenVertex(const _D3DVECTOR* point) {
  if (point == nullptr || m_currentPlane == nullptr || m_selectedGenVertex == nullptr) return 0;
  m_selectedGenVertex->point.position = *point;
  return 1;
}

int CKVGen::KVGetSelectedGenVertexTessPointer(tagKTessVertex** out) {
  if (out == nullptr || m_currentPlane == nullptr || m_selectedGenVertex == nullptr) return 0;
  *out = &m_selectedGenVertex->point.tess;
  return 1;
}

// ---- instructions ----

int CKVGen::KVAddInstruction(int code, const _D3DVECTOR* vector, float magnitude) {
  tagKExtrudeInstruction* ins = new (std::nothrow) tagKExtrudeInstruction();
  if (ins == nullptr) return 0;
  ins->reserved = -1;
  ins->code = code;
  if (vector != nullptr) ins->vector = *vector;
  ins->magnitude = magnitude;
  tagKExtrudeInstruction** link = &m_instructions;
  while (*link != nullptr) link = &(*link)->next;
  *link = ins;
  return 1;
}

namespace {
int copyInstruction(const tagKExtrudeInstruction* ins, int* code, _D3DVECTOR* vector, float* magnitude) {
  if (code != nullptr) *code = ins->code;
  if (vector != nullptr) *vector = ins->vector;
  if (magnitude != nullptr) *magnitude = ins->magnitude;
  return 1;
}
}  // namespace

int CKVGen::KVGetFirstInstruction(int* code, _D3DVECTOR* vector, float* magnitude) {
  m_selectedInstruction = m_instructions;
  if (m_selectedInstruction == nullptr) return 0;
  return copyInstruction(m_selectedInstruction, code, vector, magnitude);
}

int CKVGen::KVGetNextInstruction(int* code, _D3DVECTOR* vector, float* magnitude) {
  if (m_selectedInstruction == nullptr || m_selectedInstruction->next == nullptr) return 0;
  m_selectedInstruction = m_selectedInstruction->next;
  return copyInstruction(m_selectedInstruction, code, vector, magnitude);
}

int CKVGen::KVDeleteSelectedInstruction() {
  tagKExtrudeInstruction* doomed = m_selectedInstruction;
  m_selectedInstruction = nullptr;
  if (doomed == nullptr) return 0;
  for (tagKExtrudeInstruction** link = &m_instructions; *link != nullptr; link = &(*link)->next) {
    if (*link == doomed) {
      *link = doomed->next;
      delete doomed;
      return 1;
    }
  }
  return 0;
}

int CKVGen::KVDeleteAllInstructions() {
  tagKExtrudeInstruction* ins = m_instructions;
  while (ins != nullptr) {
    tagKExtrudeInstruction* next = ins->next;
    delete ins;
    ins = next;
  }
  m_instructions = nullptr;
  m_selectedInstruction = nullptr;
  return 1;
}

int CKVGen::KVGetNumInstructs(int* count) {
  if (count == nullptr || m_instructions == nullptr) return 0;
  int n = 0;
  for (tagKExtrudeInstruction* ins = m_instructions; ins != nullptr; ins = ins->next) ++n;
  *count = n;
  return 1;
}

// ---- validity ----

int CKVGen::KVIsValid(int level) {
  const tagKExtrudeVertex* head = m_seedPlane != nullptr ? m_seedPlane->vertices : nullptr;
  switch (level) {
    case 1:
      return head != nullptr ? 1 : 0;
    case 2:
      return head != nullptr && head->next != nullptr ? 1 : 0;
    case 3:
      return head != nullptr && KVTesselateSeedPlane() != 0 ? 1 : 0;
    default:
      return 0;
  }
}

int CKVGen::KVCheckIntegrity(char* error, FILE* log) {
  if (FPIsUncorrupted() != 0) {
    if (log != nullptr) std::fputs("  Extruder: footprint.", log);
    return 1;
  }
  static const char kCorrupted[] = "ERROR: Extruder footprint corrupted.";
  if (log != nullptr) std::fputs(kCorrupted, log);
  if (error != nullptr) std::strcpy(error, kCorrupted);
  return 0;
}

int CKVGen::KVGetSeedPlaneScale(float* width, float* height) {
  if (width == nullptr || height == nullptr || m_seedPlane == nullptr || m_seedPlane->vertices == nullptr)
    return 0;
  _D3DVECTOR d;
  KUVectorSubtract(&d, &m_seedPlane->corner3, &m_seedPlane->corner2);
  KUVectorMagnitude(&d, width);
  KUVectorSubtract(&d, &m_seedPlane->corner2, &m_seedPlane->corner0);
  KUVectorMagnitude(&d, height);
  return 1;
}

// ---- vertex text and list helpers ----

int KUMkVertexSegment(char* out, const _D3DVECTOR* v) {
  if (out == nullptr || v == nullptr) return 0;
  std::sprintf(out, "%.4f,%.4f,%.4f", static_cast<double>(v->x), static_cast<double>(v->y),
               static_cast<double>(v->z));
  return 1;
}

int KUExtractVertexSegment(_D3DVECTOR* v, const char* text) {
  if (v == nullptr || text == nullptr) return 0;
  float x = 0.0f, y = 0.0f, z = 0.0f;
  if (std::sscanf(text, "%f,%f,%f", &x, &y, &z) != 3) return 0;
  v->x = x;
  v->y = y;
  v->z = z;
  return 1;
}

int KUUpdateVertexList(CKGenList** list, const _D3DVECTOR* v) {
  if (list == nullptr || v == nullptr) return 0;
  if (*list == nullptr) {
    CKGenList* made = new (std::nothrow) CKGenList();
    if (made == nullptr) return 0;
    if (made->GLInitialise() == 0) {
      delete made;
      return 0;
    }
    *list = made;
  }
  float* block = static_cast<float*>(std::malloc(3 * sizeof(float)));
  if (block == nullptr) return 0;
  block[0] = v->x;
  block[1] = v->y;
  block[2] = v->z;
  int status = (*list)->GLAdd(block, nullptr);
  if (status == 0) std::free(block);
  return status;
}
