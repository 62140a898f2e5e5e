// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Out of memory inside the behaviour and normaliser calls: each reports its failure status (or, no
// longer allocating, succeeds), none throws or touches its files, and all work again afterwards.
#include <gtest/gtest.h>

#include <string>

#include "Allocation.h"
#include "DecideTestSupport.h"
#include "KNormalise.h"
#include "KVGen.h"

namespace {

using kutil::test::AllocationFailure;
using kutil::test::readFile;

// A square shape file and a behaviour file that loads it.
struct Files {
  kutil::test::TempDir dir;
  std::string shape = dir.file("box.ksf");
  std::string behaviour = dir.file("door.kvc");
  CKVGen square;
  Files() {
    square.KVInitialise();
    for (const _D3DVECTOR& p :
         {_D3DVECTOR{0, 0, 0}, _D3DVECTOR{2, 0, 0}, _D3DVECTOR{2, 2, 0}, _D3DVECTOR{0, 2, 0}})
      square.KVAddSeedVertex(&p);
    square.KVSetFrontPlaneTexture(dir.file("front.bmp").c_str());
    square.KVSave(shape.c_str());
    kutil::test::writeFile(behaviour, "ON select MOVE FORWARD BY 0.5\nON open LOAD \"" + shape + "\"\n");
  }
};

// Every result is taken while allocation fails and checked afterwards, when the test framework
// may allocate again.
TEST(Boundary, NormalisersFailWholeWithoutMemory) {
  Files f;
  const std::string kvc = readFile(f.behaviour), ksf = readFile(f.shape);
  int results[5] = {-1, -1, -1, -1, -1};
  {
    AllocationFailure noMemory;
    results[0] = KUConvertKCVToRelative(f.behaviour.c_str());
    results[1] = KUCopyKCVFileParts(f.behaviour.c_str());
    results[2] = KUDeRelativiseKCV(f.behaviour.c_str());
    results[3] = KUConvertKSFToRelative(f.shape.c_str());
    results[4] = KUDeRelativiseKSF(f.dir.path().c_str(), f.shape.c_str());
  }
  CKDecide table;
  EXPECT_EQ(kutil::test::seq(
                {results[0], results[1], results[2], results[3], results[4], readFile(f.behaviour) == kvc,
                 readFile(f.shape) == ksf, KUConvertKCVToRelative(f.behaviour.c_str()),
                 KUConvertKSFToRelative(f.shape.c_str()), table.DELoadFromFile(f.behaviour.c_str())}),
            "0 0 0 0 0 1 1 1 1 1");
}

TEST(Boundary, BehaviourCallsFailWithoutMemoryAndWorkAfterwards) {
  kutil::test::ScriptedClock clock;
  kutil::test::TempDir dir;
  const std::string rec = dir.file("r.rec"), kvc = dir.file("t.kvc");
  kutil::test::writeFile(rec, "[CM][1]1[MG][1]0[TX][0][RP][1]0\n");
  kutil::test::Behaviour b;
  ASSERT_EQ(kutil::test::loadText(b.table, dir, "ON select PLAYBACK \"" + rec + "\"\n"), 1);
  b.table.DESetItemScaleFactor(1.5f);
  CKDecide other;
  int loaded = -1, ticked = -1;
  {
    AllocationFailure noMemory;
    loaded = other.DELoadFromFile(kvc.c_str());  // no row can be made
    b.in.FIPushFIFOCommand(KAR_EVENT_SELECT, 1.0f);
    ticked = b.table.DEClock();  // no recorder can be made: nothing is played
  }
  EXPECT_EQ(kutil::test::seq({loaded, ticked, kutil::test::rowCount(other), kutil::test::drain(b.out),
                              b.run(KAR_EVENT_SELECT), other.DELoadFromFile(kvc.c_str())}),
            "0 1 0  1:0.2 1");
}

}  // namespace
