// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Faces, normals and orientation, outlines, boxes and hit marks of generated solids.
#include <gtest/gtest.h>

#include "VGenTestSupport.h"

using namespace kutil::test;

TEST(CKVGenFaces, ReversalFollowsDirectionAndOrientationAndOrdersTheCorners) {
  const struct {
    int direction, orientation, reversed;
  } rows[] = {{-1, -1, 1}, {-1, 0, 1}, {-1, 1, 0}, {0, -1, 0}, {0, 0, 0},
              {0, 1, 1},   {1, 0, 1},  {1, 1, 0},  {5, 1, 0},  {5, 0, 1}};
  const Points front = {vec(2, 0, 0), vec(2, 2, 0), vec(2, 2, 3), vec(2, 0, 3)};  // of vertex 1
  const Points back = {vec(0, 2, 0), vec(0, 0, 0), vec(0, 0, 3), vec(0, 2, 3)};   // of vertex 3, through 0
  Gen gen(square(), {3});
  ASSERT_EQ(gen->KVGenerate(), 1);
  Points f(4);
  EXPECT_EQ((Ints{gen->KVSelectGenVertexByNumber(3), gen->KVGetFrontFace(&f[0], &f[1], &f[2], &f[3])}),
            (Ints{1, 0}));
  for (const auto& r : rows) {
    SCOPED_TRACE(testing::Message() << r.direction << " " << r.orientation);
    gen->KVSetNormalDirection(r.direction);
    GenInternals::seedOrientation(gen.g) = r.orientation;
    EXPECT_EQ(gen->KVIsNormalReversalActive(), r.reversed);
    for (int n : {1, 3}) {
      const Points& c = n == 1 ? front : back;
      gen->KVSelectGenVertexByNumber(n);
      EXPECT_EQ((Ints{gen->KVGetBackFace(&f[0], &f[1], &f[2], &f[3]), gen->KVIsFaceUsable()}), (Ints{1, 1}));
      expectNear(faceOf(gen.g), r.reversed ? Points{c[1], c[0], c[3], c[2]} : c);
    }
  }
  GenInternals::currentPlane(gen.g) = nullptr;
  EXPECT_EQ((Ints{gen->KVGetBackFace(&f[0], &f[1], &f[2], &f[3]), gen->KVIsFaceUsable()}), (Ints{0, 0}));
  Gen coincident({vec(1, 1, 1), vec(1, 1, 1), vec(5, 1, 1)}, {0});
  EXPECT_EQ((Ints{coincident->KVGenerate(), coincident->KVSelectGenVertexByNumber(0),
                  coincident->KVIsFaceUsable()}),
            (Ints{1, 1, 0}));
}

TEST(CKVGenFaces, WindingDecidesOrientationAndEveryPlaneNormal) {
  for (int clockwise = 0; clockwise < 2; ++clockwise) {
    SCOPED_TRACE(clockwise);
    Gen gen(clockwise ? Points{vec(0, 0, 0), vec(0, 2, 0), vec(2, 2, 0), vec(2, 0, 0)} : square(), {5, 1});
    _D3DVECTOR n;
    EXPECT_EQ(
        (Ints{gen->KVTesselateSeedPlane(), GenInternals::seedOrientation(gen.g), gen->KVCalcSeedNormal(&n)}),
        (Ints{1, 1 - clockwise, 1}));
    expectNear(n, vec(0, 0, -1));  // the oriented normal never points to +z
    ASSERT_EQ(gen->KVGenerate(), 1);
    for (const tagKExtrudePlane* p = GenInternals::genPlanes(gen.g); p != nullptr; p = p->next)
      expectNear(p->normal, vec(0, 0, 1));
    expectNear(GenInternals::seedPlane(gen.g)->normal, vec(0, 0, 1));
  }
  Gen flat({vec(0, 0, 0), vec(1, 0, 0)});
  _D3DVECTOR n = vec(7, 7, 7);
  EXPECT_EQ((Ints{flat->KVCalcSeedNormal(&n), GenInternals::seedOrientation(flat.g)}), (Ints{0, -1}));
  expectNear(n, vec(7, 7, 7), 0.0f);
}

TEST(CKVGenFaces, PlaneOutlineStartsAtVertexOneUnderReversal) {
  for (int reversed = 0; reversed < 2; ++reversed) {
    SCOPED_TRACE(reversed);
    Gen gen(square(), {2});
    gen->KVSetNormalDirection(reversed ? 0 : 1);
    EXPECT_EQ((Ints{gen->KVTesselateSeedPlane(), gen->KVGenerate(), gen->KVUpdateVertexDependencies()}),
              (Ints{1, 1, 1}));
    const Points plane = {vec(0, 0, 2), vec(2, 0, 2), vec(2, 2, 2), vec(0, 2, 2)};
    expectNear(outlineOf(*GenInternals::genPlanes(gen.g)->outline),
               reversed ? Points{plane[1], plane[2], plane[3], plane[0]} : plane);
  }
}

TEST(CKVGenFaces, BoxesUnderBoxAndFaceEdgeDetect) {
  Gen empty, gen(square(), {3, 1}), faces;
  run(empty.g, {{SeedBox, 0, 0, U}, {Update, 0, 0, U}, {GenBox, 0, 0, U}, {FirstBox, 0, 0, U}});
  // A plane's box covers the slab from the plane before it; box type keeps no face outlines.
  const Steps boxes = {{Update, 0, 1, U},       {Generate, 0, 1, U},   {Update, 0, 1, U},
                       {FirstBox, 0, 1, 223},   {NextBox, 0, 1, 3224}, {NextBox, 0, 0, U},
                       {FirstFaceBox, 0, 0, U}, {SeedBox, 0, 1, 220},  {FirstP, 0, 1, U},
                       {CurBox, 0, 1, 223},     {GenBox, 0, 1, 3224},  {CurBox, 0, 1, 3224}};
  run(gen.g, boxes);
  GenInternals::currentPlane(gen.g) = nullptr;
  run(gen.g, {{CurBox, 0, 0, U}, {FirstFaceBox, 0, 0, U}});
  faces->KVSetEdgeDetectType(EDGE_DETECT_FACE);
  for (const _D3DVECTOR& p : square()) faces->KVAddSeedVertex(&p);
  faces->KVAddInstruction(INSTR_EXTRUDE, &kNoAxis, 3.0f);
  // One box per face; switched to box type and back, a vertex without a face outline fails the rebuild.
  const Steps perFace = {{Generate, 0, 1, U},         {Update, 0, 1, U},          {FirstFaceBox, 0, 1, 203},
                         {NextFaceBox, 0, 1, 200223}, {NextFaceBox, 0, 1, 20223}, {NextFaceBox, 0, 1, 23},
                         {NextFaceBox, 0, 0, U},      {SetEdge, 1, 1, U},         {Generate, 0, 1, U},
                         {SetEdge, 0, 1, U},          {Update, 0, 0, U}};
  run(faces.g, perFace);
}

TEST(CKVGenFaces, HitMarksAndSelectionByNumber) {
  Gen empty,
      gen({vec(0, 0, 0), vec(1, 0, 0), vec(2, 1, 0), vec(2, 2, 0), vec(1, 3, 0), vec(0, 2, 0)}, {1, 1});
  const Steps none = {{SetSeedHit, 0, 0, U}, {UnSetSeedHit, 0, 0, U}, {IsSeedHit, 0, 0, U},
                      {SetGenHit, 0, 0, U},  {UnSetGenHit, 0, 0, U},  {IsGenHit, 0, 0, U},
                      {SetHit, 0, 0, U},     {UnSetHit, 0, 0, U},     {IsHit, 0, 0, U},
                      {SelHit, 1, 0, U},     {ClearHits, 0, 1, U}};
  run(empty.g, none);
  // Vertex x + 100 z names the plane (z = 1 or 2); the seed's are at z = 0.
  run(gen.g, {{Generate, 0, 1, U},     {IsGenHit, 0, 0, U},    {SetSeedHit, 0, 1, U}, {IsSeedHit, 0, 1, U},
              {FirstP, 0, 1, U},       {SetGenHit, 0, 1, U},   {IsGenHit, 0, 1, U},   {SelV, 2, 1, U},
              {IsHit, 0, 0, U},        {SetHit, 0, 1, U},      {IsHit, 0, 1, U},      {SelV, 5, 1, U},
              {SetHit, 0, 1, U},       {SelHit, 2, 1, U},      {CurV, 0, 1, 100},     {GetV, 2, 1, 102},
              {SelHit, 3, 0, U},       {GetV, 2, 1, 202},      {SelHit, 0, 0, U},     {SelHit, 1, 1, U},
              {CurV, 0, 1, 102},       {UnSetHit, 0, 1, U},    {IsHit, 0, 0, U},      {SelHit, 2, 0, U},
              {FirstP, 0, 1, U},       {UnSetGenHit, 0, 1, U}, {IsGenHit, 0, 0, U},   {SetGenHit, 0, 1, U},
              {UnSetSeedHit, 0, 1, U}, {IsSeedHit, 0, 0, U},   {SetSeedHit, 0, 1, U}, {ClearHits, 0, 1, U},
              {GetV, 0, 1, 200},       {IsSeedHit, 0, 0, U},   {FirstP, 0, 1, U},     {IsGenHit, 0, 0, U},
              {SelHit, 1, 0, U}});
}
