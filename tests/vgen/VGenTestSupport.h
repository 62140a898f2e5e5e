// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Small helpers shared by the generator tests.
#pragma once
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <initializer_list>
#include <string>
#include <variant>
#include <vector>

#include "KFootPrint.h"
#include "KVGen.h"
#include "TestSupport.h"
#include "VGenInternals.h"

namespace kutil::test {

/// The generator's planes, cursors and tessellation, for checks the methods cannot make.
using GenInternals = detail::Internals<CKVGen>;
using Points = std::vector<_D3DVECTOR>;
using Ints = std::vector<int>;

const float kPi = 3.14159265358979f;
const _D3DVECTOR kNoAxis = {0.0f, 0.0f, 0.0f};

inline _D3DVECTOR vec(float x, float y, float z) { return _D3DVECTOR{x, y, z}; }

/// The square (0, 0) - (2, 2) in the x-y plane, counter-clockwise.
inline Points square() { return {vec(0, 0, 0), vec(2, 0, 0), vec(2, 2, 0), vec(0, 2, 0)}; }

/// A generator initialised on construction (the destructor terminates it), optionally with a
/// seed and extrusions by the given depths.
struct Gen {
  CKVGen g;
  explicit Gen(const Points& seed = {}, std::initializer_list<int> extrusions = {}) {
    g.KVInitialise();
    for (const _D3DVECTOR& p : seed) EXPECT_EQ(g.KVAddSeedVertex(&p), 1);
    for (int depth : extrusions) g.KVAddInstruction(INSTR_EXTRUDE, &kNoAxis, float(depth));
  }
  CKVGen* operator->() { return &g; }
};

/// The positions of a plane's vertices in order (the seed plane's, or generated plane k's).
inline Points planeOf(const CKVGen& g, int k = -1) {
  const tagKExtrudePlane* p = k < 0 ? GenInternals::seedPlane(g) : GenInternals::genPlanes(g);
  for (int i = 0; i < k && p != nullptr; ++i) p = p->next;
  Points out;
  for (const tagKExtrudeVertex* v = p != nullptr ? p->vertices : nullptr; v != nullptr; v = v->next)
    out.push_back(v->point.position);
  return out;
}

/// The four corners of the selected generated vertex's front face, or of its back face when it
/// has no front face; empty when it has neither.
inline Points faceOf(CKVGen& g) {
  Points f(4);
  if (g.KVGetFrontFace(&f[0], &f[1], &f[2], &f[3]) == 0 && g.KVGetBackFace(&f[0], &f[1], &f[2], &f[3]) == 0)
    f.clear();
  return f;
}

/// The start vectors of a footprint's edges, from its first edge.
inline Points outlineOf(CKFootPrint& fp) {
  Points out;
  _D3DVECTOR p;
  for (int ok = fp.FPSelectFirstEdge(); ok == 1 && fp.FPGetEdgeFromVector(&p) == 1;
       ok = fp.FPSelectNextEdgeNoWrap())
    out.push_back(p);
  return out;
}

inline void expectNear(const _D3DVECTOR& a, const _D3DVECTOR& b, float tol = 1e-4f) {
  EXPECT_NEAR(a.x, b.x, tol);
  EXPECT_NEAR(a.y, b.y, tol);
  EXPECT_NEAR(a.z, b.z, tol);
}

inline void expectNear(const Points& a, const Points& b, float tol = 1e-4f) {
  ASSERT_EQ(a.size(), b.size());
  for (std::size_t i = 0; i < a.size(); ++i) expectNear(a[i], b[i], tol);
}

const int U = -99;    // what every output holds before the call
const int N = -1000;  // as an argument: the outputs are null

using Call =
    std::variant<int (CKVGen::*)(), int (CKVGen::*)(int), int (CKVGen::*)(int*), int (CKVGen::*)(float),
                 int (CKVGen::*)(float*), int (CKVGen::*)(const char*), int (CKVGen::*)(char*),
                 int (CKVGen::*)(const _D3DVECTOR*), int (CKVGen::*)(_D3DVECTOR*),
                 int (CKVGen::*)(int, _D3DVECTOR*), int (CKVGen::*)(int, const _D3DVECTOR*, float),
                 int (CKVGen::*)(int*, _D3DVECTOR*, float*), int (CKVGen::*)(_D3DRMBOX**)>;
/// The operations by short name. A vector argument is (arg, 0, 0), a float arg / 4, a text arg
/// in decimals ("" for 0).
const Call Add = &CKVGen::KVAddSeedVertex, Ins = &CKVGen::KVInsertAfterSelectedSeedVertex,
           Del = &CKVGen::KVDeleteSelectedSeedVertex, DelAll = &CKVGen::KVDeleteSeedList,
           First = &CKVGen::KVGetFirstSeedVertex, Last = &CKVGen::KVGetLastSeedVertex,
           Next = &CKVGen::KVGetNextSeedVertex, Prev = &CKVGen::KVGetPrevSeedVertex,
           Sel = &CKVGen::KVSelectSeedVertexByNumber, GetN = &CKVGen::KVGetSeedVertexByNumber,
           Cur = &CKVGen::KVGetSelectedSeedVertex, Upd = &CKVGen::KVUpdateSelectedSeedVertex,
           Count = &CKVGen::KVGetNumVertices, Generate = &CKVGen::KVGenerate,
           FirstP = &CKVGen::KVSelectFirstGenPlane, NextP = &CKVGen::KVSelectNextGenPlane,
           PrevP = &CKVGen::KVSelectPrevGenPlane, FirstV = &CKVGen::KVSelectFirstGenVertex,
           NextV = &CKVGen::KVSelectNextGenVertex, SelV = &CKVGen::KVSelectGenVertexByNumber,
           GetV = &CKVGen::KVGetGenVertexByNumber, CurV = &CKVGen::KVGetSelectedGenVertex,
           UpdV = &CKVGen::KVUpdateSelectedGenVertex, AddI = &CKVGen::KVAddInstruction,
           FirstI = &CKVGen::KVGetFirstInstruction, NextI = &CKVGen::KVGetNextInstruction,
           DelI = &CKVGen::KVDeleteSelectedInstruction, DelAllI = &CKVGen::KVDeleteAllInstructions,
           CountI = &CKVGen::KVGetNumInstructs, SetSeedHit = &CKVGen::KVSetSeedFaceHit,
           UnSetSeedHit = &CKVGen::KVUnSetSeedFaceHit, IsSeedHit = &CKVGen::KVIsSeedFaceHit,
           SetGenHit = &CKVGen::KVSetGenFaceHit, UnSetGenHit = &CKVGen::KVUnSetGenFaceHit,
           IsGenHit = &CKVGen::KVIsGenFaceHit, SetHit = &CKVGen::KVSetSelectedHitFace,
           UnSetHit = &CKVGen::KVUnSetSelectedHitFace, IsHit = &CKVGen::KVIsSelectedHitFace,
           ClearHits = &CKVGen::KVClearHitFaces, SelHit = &CKVGen::KVSelectHitFaceByNumber,
           SetFPT = &CKVGen::KVSetFrontPlaneTexture, GetFPT = &CKVGen::KVGetFrontPlaneTexture,
           GetBPT = &CKVGen::KVGetBackPlaneTexture, GetWST = &CKVGen::KVGetWrapSurfaceTexture,
           GetFIC = &CKVGen::KVGetFrontIconIndex, GetBIC = &CKVGen::KVGetBackIconIndex,
           SetWIC = &CKVGen::KVSetWrapIconIndex, GetWIC = &CKVGen::KVGetWrapIconIndex,
           GetFT = &CKVGen::KVGetFrontTiling, SetWT = &CKVGen::KVSetWrapTiling,
           GetWT = &CKVGen::KVGetWrapTiling, SetEdge = &CKVGen::KVSetEdgeDetectType,
           GetEdge = &CKVGen::KVGetEdgeDetectType, IsBox = &CKVGen::KVIsEdgeDetectBoxType,
           SetNormal = &CKVGen::KVSetNormalDirection, GetNormal = &CKVGen::KVGetNormalDirection,
           SetDT = &CKVGen::KVSetDeltaTranslation, GetDT = &CKVGen::KVGetDeltaTranslation,
           SetDR = &CKVGen::KVSetDeltaRotation, GetDR = &CKVGen::KVGetDeltaRotation,
           Update = &CKVGen::KVUpdateVertexDependencies, SeedBox = &CKVGen::KVGetSeedFaceBox,
           GenBox = &CKVGen::KVGetGenFaceBox, CurBox = &CKVGen::KVGetBoxForCurrentPlane,
           FirstBox = &CKVGen::KVSelectFirstGenBox, NextBox = &CKVGen::KVSelectNextGenBox,
           FirstFaceBox = &CKVGen::KVSelectFirstFaceBox, NextFaceBox = &CKVGen::KVSelectNextFaceBox;

/// Calls an operation; out receives what it copied out: a number, a float times 1000, a text's
/// number, a position as x + 100 z (so that a generated vertex names its plane), or a box as the
/// digits of its minimum and maximum x, y and z.
struct Apply {
  CKVGen& g;
  int arg;
  int* out;
  _D3DVECTOR p = vec(U, 0, 0), a = vec(float(arg), 0, 0), *pp = arg == N ? nullptr : &p;
  int operator()(int (CKVGen::*f)()) { return (g.*f)(); }
  int operator()(int (CKVGen::*f)(int)) { return (g.*f)(arg); }
  int operator()(int (CKVGen::*f)(int*)) { return (g.*f)(arg == N ? nullptr : out); }
  int operator()(int (CKVGen::*f)(float)) { return (g.*f)(float(arg) / 4); }
  int operator()(int (CKVGen::*f)(float*)) {
    float v = U;
    const int r = (g.*f)(arg == N ? nullptr : &v);
    *out = v == U ? U : int(std::lround(v * 1000));
    return r;
  }
  int operator()(int (CKVGen::*f)(const char*)) {
    return (g.*f)(arg == 0 ? "" : std::to_string(arg).c_str());
  }
  int operator()(int (CKVGen::*f)(char*)) {
    char text[300] = "";
    const int r = (g.*f)(text);
    *out = text[0] == '\0' ? U : std::atoi(text);
    return r;
  }
  int operator()(int (CKVGen::*f)(const _D3DVECTOR*)) { return (g.*f)(arg == N ? nullptr : &a); }
  int operator()(int (CKVGen::*f)(_D3DVECTOR*)) { return copied((g.*f)(pp)); }
  int operator()(int (CKVGen::*f)(int, _D3DVECTOR*)) { return copied((g.*f)(arg, pp)); }
  int operator()(int (CKVGen::*f)(int, const _D3DVECTOR*, float)) { return (g.*f)(arg, &a, 0.5f); }
  int operator()(int (CKVGen::*f)(int*, _D3DVECTOR*, float*)) {
    float m;
    return (g.*f)(arg == N ? nullptr : out, pp, arg == N ? nullptr : &m);
  }
  int operator()(int (CKVGen::*f)(_D3DRMBOX**)) {
    _D3DRMBOX* box = nullptr;
    const int r = (g.*f)(&box);
    const float d[] = {box ? box->min.x : 0, box ? box->min.y : 0, box ? box->min.z : 0,
                       box ? box->max.x : 0, box ? box->max.y : 0, box ? box->max.z : 0};
    for (int i = 0; box != nullptr && i < 6; ++i) *out = (i == 0 ? 0 : *out * 10) + int(d[i]);
    return r;
  }
  int copied(int r) {
    *out = int(p.x) + 100 * int(p.z);
    return r;
  }
};

/// One cursor operation with its exact status and output (U: the output is left untouched).
struct Step {
  Call op;
  int arg, status, out;
};

using Steps = std::initializer_list<Step>;

inline void run(CKVGen& g, Steps steps) {
  int i = 0;
  for (const Step& s : steps) {
    int out = U;
    EXPECT_EQ(std::visit(Apply{g, s.arg, &out}, s.op), s.status) << "step " << i;
    EXPECT_EQ(out, s.out) << "step " << i++;
  }
}

/// Restores a generator from the given shape-file text.
inline int restoreText(CKVGen& g, const std::string& text) {
  TempDir dir;
  const std::string path = dir.file("shape.ksf");
  EXPECT_TRUE(writeFile(path, text));
  return g.KVRestore(path.c_str());
}

}  // namespace kutil::test
