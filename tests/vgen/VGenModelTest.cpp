// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdlib>

#include "Allocation.h"
#include "VGenTestSupport.h"

using namespace kutil::test;

TEST(CKVGenModel, SeedAndInstructionCursorMovesHaveExactOutcomes) {
  Gen gen, instructions;  // the seed script ends with null arguments, which fail
  run(instructions.g,
      {{FirstI, 0, 0, U}, {NextI, 0, 0, U},   {DelI, 0, 0, U},   {CountI, 0, 0, U}, {AddI, 7, 1, U},
       {AddI, 8, 1, U},   {AddI, 9, 1, U},    {CountI, 0, 1, 3}, {NextI, 0, 0, U},  {FirstI, 0, 1, 7},
       {NextI, 0, 1, 8},  {NextI, 0, 1, 9},   {NextI, 0, 0, U},  {DelI, 0, 1, U},   {DelI, 0, 0, U},
       {NextI, 0, 0, U},  {CountI, 0, 1, 2},  {FirstI, 0, 1, 7}, {DelI, 0, 1, U},   {FirstI, 0, 1, 8},
       {NextI, 0, 0, U},  {DelAllI, 0, 1, U}, {CountI, 0, 0, U}, {FirstI, 0, 0, U}});
  run(gen.g, {{Del, 0, 1, U},    {First, 0, 0, U}, {Next, 0, 0, U},  {Prev, 0, 0, U},  {Count, 0, 0, U},
              {Ins, 5, 0, U},    {Upd, 5, 0, U},   {Add, 10, 1, U},  {Add, 20, 1, U},  {Add, 30, 1, U},
              {Del, 0, 0, U},    {Next, 0, 0, U},  {Cur, 0, 0, U},   {Count, 0, 1, 3}, {First, 0, 1, 10},
              {Prev, 0, 0, U},   {Cur, 0, 1, 10},  {Next, 0, 1, 20}, {Next, 0, 1, 30}, {Next, 0, 0, U},
              {Cur, 0, 1, 30},   {Prev, 0, 1, 20}, {Sel, 3, 0, U},   {Cur, 0, 1, 20},  {Sel, -5, 1, U},
              {Cur, 0, 1, 10},   {Ins, 15, 1, U},  {Cur, 0, 1, 10},  {GetN, 1, 1, 15}, {Upd, 16, 1, U},
              {Cur, 0, 1, 16},   {Last, 0, 1, 30}, {Add, 40, 1, U},  {Cur, 0, 1, 30},  {Count, 0, 1, 5},
              {Del, 0, 1, U},    {Cur, 0, 0, U},   {Count, 0, 1, 4}, {GetN, 3, 1, 40}, {Prev, 0, 1, 20},
              {DelAll, 0, 1, U}, {Cur, 0, 0, U},   {Del, 0, 1, U},   {Count, 0, 0, U}, {Add, 50, 1, U},
              {Last, 0, 1, 50},  {Del, 0, 1, U},   {Del, 0, 1, U},   {First, 0, 0, U}, {Count, 0, 0, U},
              {Add, 1, 1, U},    {AddI, 3, 1, U},  {First, 0, 1, 1}, {Add, N, 0, U},   {Ins, N, 0, U},
              {Upd, N, 0, U},    {First, N, 0, U}, {Cur, N, 0, U},   {Count, N, 0, U}, {CountI, N, 0, U}});
}

TEST(CKVGenModel, PlaneAndGeneratedVertexCursorsHaveExactOutcomes) {
  Gen gen({vec(1, 0, 0), vec(2, 0, 0), vec(3, 0, 0)}, {1, 1, 1});  // plane k at z = k + 1
  run(gen.g, {{FirstP, 0, 0, U}, {NextP, 0, 0, U},    {PrevP, 0, 0, U},  {FirstV, 0, 0, U}, {SelV, 0, 0, U},
              {GetV, 0, 0, U},   {Generate, 0, 1, U}, {GetV, 0, 1, 301}, {CurV, 0, 0, U},   {PrevP, 0, 1, U},
              {GetV, 0, 1, 201}, {NextP, 0, 1, U},    {NextP, 0, 0, U},  {GetV, 0, 1, 301}, {FirstP, 0, 1, U},
              {PrevP, 0, 0, U},  {GetV, 0, 1, 101},   {NextV, 0, 0, U},  {UpdV, 9, 0, U},   {FirstV, 0, 1, U},
              {CurV, 0, 1, 101}, {NextV, 0, 1, U},    {NextV, 0, 1, U},  {NextV, 0, 0, U},  {CurV, 0, 1, 103},
              {GetV, 1, 1, 102}, {GetV, -2, 1, 101},  {GetV, 3, 0, U},   {CurV, 0, 1, 103}, {SelV, -1, 1, U},
              {CurV, 0, 1, 101}, {SelV, 3, 0, U},     {CurV, 0, 0, U},   {SelV, 1, 1, U},   {UpdV, 9, 1, U},
              {GetV, 1, 1, 9},   {CurV, 0, 1, 9}});
  run(gen.g, {{CurV, N, 0, U}, {GetV, N, 0, U}, {UpdV, N, 0, U}, {CurV, 0, 1, 9}});
  GenInternals::currentPlane(gen.g) = nullptr;
  run(gen.g, {{CurV, 0, 0, U}, {UpdV, 9, 0, U}, {NextV, 0, 0, U}, {FirstV, 0, 0, U}, {GetV, 0, 0, U}});
}

TEST(CKVGenModel, ListsStayAsTheyWereWithoutMemoryAndOnlyAddedVerticesGetFaceOutlines) {
  Gen gen;
  gen->KVSetEdgeDetectType(EDGE_DETECT_FACE);
  run(gen.g, {{Add, 0, 1, U}, {Add, 4, 1, U}, {First, 0, 1, 0}, {Ins, 2, 1, U}, {AddI, 3, 1, U}});
  const tagKExtrudeVertex* v = GenInternals::seedPlane(gen.g)->vertices;
  EXPECT_EQ((Ints{v->faceOutline != nullptr, v->next->faceOutline != nullptr,
                  v->next->next->faceOutline != nullptr}),
            (Ints{1, 0, 1}));
  int status[3];
  {
    AllocationFailure noMemory;
    const _D3DVECTOR p = vec(9, 9, 9);
    status[0] = gen->KVAddSeedVertex(&p);
    status[1] = gen->KVInsertAfterSelectedSeedVertex(&p);
    status[2] = gen->KVAddInstruction(3, &p, 1);
  }
  EXPECT_EQ(Ints(status, status + 3), (Ints{0, 0, 0}));
  run(gen.g, {{Count, 0, 1, 3}, {CountI, 0, 1, 1}, {Cur, 0, 1, 0}});
  Gen box({vec(0, 0, 0)});
  EXPECT_EQ(GenInternals::seedPlane(box.g)->vertices->faceOutline, nullptr);
}

TEST(CKVGenModel, SettingsStartAtTheirDefaultsAndRoundTrip) {
  Gen gen;  // empty texts and icons are "not set"; the normal direction is unset (-1)
  run(gen.g, {{GetFPT, 0, 0, U},     {SetFPT, 12, 1, U},   {GetFPT, 0, 1, 12},   {SetFPT, 0, 1, U},
              {GetFPT, 0, 0, U},     {GetBPT, 0, 0, U},    {GetWST, 0, 0, U},    {GetFIC, 0, 0, U},
              {GetBIC, 0, 0, U},     {GetWIC, 0, 0, U},    {SetWIC, 17, 1, U},   {SetWIC, 0, 1, U},
              {GetWIC, 0, 0, U},     {GetWT, 0, 1, 1},     {SetWT, 9, 1, U},     {GetWT, 0, 1, 9},
              {GetEdge, 0, 1, 1},    {IsBox, 0, 1, U},     {SetEdge, 2, 1, U},   {GetEdge, 0, 1, 2},
              {IsBox, 0, 0, U},      {GetNormal, 0, 0, U}, {SetNormal, 1, 1, U}, {GetNormal, 0, 1, 1},
              {SetNormal, -1, 1, U}, {GetNormal, 0, 0, U}, {GetDT, 0, 1, 20000}, {GetDR, 0, 1, 349},
              {SetDT, 10, 1, U},     {SetDR, 3, 1, U},     {GetDT, 0, 1, 2500},  {GetDR, 0, 1, 750},
              {GetDT, N, 0, U},      {GetFT, N, 0, U}});
}

TEST(CKVGenModel, SeedFromFootPrintAndValidity) {
  CKFootPrint fp, empty;
  fp.FPInitialise();
  empty.FPInitialise();
  for (int i = 0; i < 3; ++i) fp.FPAddVertex(1.0f + 3 * i, 2.0f + 3 * i, 3.0f + 3 * i);
  fp.FPSelectFirstEdge();
  fp.FPSelectNextEdgeNoWrap();
  Gen gen({vec(100, 0, 0)});
  ASSERT_EQ(gen->KVSeedFromFootPrint(&fp), 1);
  expectNear(planeOf(gen.g), {vec(1, 2, 3), vec(4, 5, 6), vec(7, 8, 9)}, 0.0f);
  EXPECT_EQ(gen->KVSeedFromFootPrint(&empty), 0);
  run(gen.g, {{Count, 0, 0, U}});  // the old seed is gone
  fp.FPTerminate();
  empty.FPTerminate();

  const Points seeds[] = {
      {}, {vec(0, 0, 0)}, {vec(0, 0, 0), vec(2, 0, 0)}, {vec(0, 0, 0), vec(2, 0, 0), vec(1, 3, 0)}};
  const Ints valid[] = {{0, 0, 0, 0, 0}, {0, 1, 0, 0, 0}, {0, 1, 1, 0, 0}, {0, 1, 1, 1, 0}};  // levels 0 to 4
  for (int n = 0; n < 4; ++n) {
    Gen g(seeds[n]);
    EXPECT_EQ((Ints{g->KVIsValid(0), g->KVIsValid(1), g->KVIsValid(2), g->KVIsValid(3), g->KVIsValid(4)}),
              valid[n]);
  }
}

TEST(KUVertexText, SegmentRoundTripAndShortInput) {
  char text[160];
  _D3DVECTOR v = vec(1.5f, -2.0f, 3.25f), back = vec(9, 9, 9);
  EXPECT_EQ((Ints{KUMkVertexSegment(text, &v), KUExtractVertexSegment(&back, "1.0,2.0")}), (Ints{1, 0}));
  EXPECT_STREQ(text, "1.5000,-2.0000,3.2500");
  expectNear(back, vec(9, 9, 9), 0.0f);
  ASSERT_EQ(KUExtractVertexSegment(&back, text), 1);
  expectNear(back, v, 0.0f);
}

TEST(KUVertexText, VertexListIsMadeOnDemandAndHoldsCopiesInOrder) {
  const _D3DVECTOR v = vec(1.5f, -2.0f, 3.25f), w = vec(4, 5, 6);
  CKGenList* list = nullptr;
  EXPECT_EQ(
      (Ints{KUUpdateVertexList(&list, &v), KUUpdateVertexList(&list, &w), KUUpdateVertexList(nullptr, &v)}),
      (Ints{1, 1, 0}));
  Points held;
  void* block = nullptr;
  for (int ok = list ? list->GLSelectFirstObject(&block, nullptr) : 0; ok;
       ok = list->GLSelectNextObject(&block, nullptr)) {
    const float* f = static_cast<float*>(block);
    held.push_back(vec(f[0], f[1], f[2]));
    std::free(block);  // the caller owns the blocks
  }
  delete list;
  expectNear(held, {v, w}, 0.0f);
}
