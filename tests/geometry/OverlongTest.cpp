// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Marker names that fill or overflow their field: the list keeps terminated
// copies, finds only exact names and writes them back whole.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

#include "KArrange.h"
#include "KMarkerList.h"
#include "KTrans.h"
#include "KVector.h"
#include "TestSupport.h"

namespace {

using kutil::test::readLines;
using kutil::test::TempDir;

constexpr std::size_t kLongName = KMARKER_NAME_SIZE - 1;

// A marker on the heap whose name fills the whole field with no terminator.
std::unique_ptr<tagMarkerItem> unterminatedMarker(CKMarkerList& list, char fill) {
  auto marker = std::make_unique<tagMarkerItem>();
  list.MLInitMarker(marker.get());
  std::memset(marker->name, fill, sizeof marker->name);
  return marker;
}

bool terminatedName(const tagMarkerItem* m) { return std::memchr(m->name, '\0', sizeof m->name) != nullptr; }

TEST(CKMarkerListOverlong, UnterminatedNamesAreCopiedTerminated) {
  CKMarkerList list;
  list.MLInitialise();
  auto source = unterminatedMarker(list, 'm');

  auto copy = std::make_unique<tagMarkerItem>();
  ASSERT_EQ(list.MLCopyMarker(copy.get(), source.get()), 1);
  ASSERT_TRUE(terminatedName(copy.get()));
  EXPECT_EQ(std::string(copy->name), std::string(kLongName, 'm'));

  ASSERT_EQ(list.MLAddMarker(source.get()), 1);
  tagMarkerItem* stored = nullptr;
  ASSERT_EQ(list.MLSelectFirstMarker(&stored), 1);
  ASSERT_TRUE(terminatedName(stored));
  EXPECT_EQ(std::string(stored->name), std::string(kLongName, 'm'));

  auto update = unterminatedMarker(list, 'u');
  ASSERT_EQ(list.MLUpdateSelectedMarker(update.get(), 1), 1);
  ASSERT_TRUE(terminatedName(stored));
  EXPECT_EQ(std::string(stored->name), std::string(kLongName, 'u'));
}

TEST(CKMarkerListOverlong, FindByNameMatchesOnlyTheExactName) {
  CKMarkerList list;
  list.MLInitialise();
  auto source = unterminatedMarker(list, 'n');
  ASSERT_EQ(list.MLAddMarker(source.get()), 1);

  tagMarkerItem* found = nullptr;
  const std::string stored(kLongName, 'n');
  EXPECT_EQ(list.MLFindMarkerByName(&found, std::string(10000, 'n').c_str()), 0);
  EXPECT_EQ(list.MLFindMarkerByName(&found, (stored + "n").c_str()), 0);
  EXPECT_EQ(found, nullptr);
  EXPECT_EQ(list.MLFindMarkerByName(&found, nullptr), 0);
  ASSERT_EQ(list.MLFindMarkerByName(&found, stored.c_str()), 1);
  EXPECT_EQ(std::string(found->name), stored);
}

TEST(CKMarkerListOverlong, FullLengthNamesAreSavedWhole) {
  CKMarkerList list;
  list.MLInitialise();
  auto first = unterminatedMarker(list, 'a');
  auto second = unterminatedMarker(list, 'b');
  ASSERT_EQ(list.MLAddMarker(first.get()), 1);
  ASSERT_EQ(list.MLAddMarker(second.get()), 1);

  TempDir dir;
  const std::string path = dir.file("markers.txt");
  std::FILE* stream = std::fopen(path.c_str(), "w");
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(list.MLSaveToFile(stream), 1);
  std::fclose(stream);

  int names = 0;
  for (const std::string& line : readLines(path)) {
    if (line.rfind("[MKN]", 0) != 0) continue;
    const char fill = names == 0 ? 'a' : 'b';
    EXPECT_EQ(line, "[MKN][131]" + std::string(kLongName, fill));
    ++names;
  }
  EXPECT_EQ(names, 2);
  EXPECT_EQ(list.MLSaveToFile(nullptr), 0);
}

TEST(KUGeometryNull, NullPointersAreRefusedWithoutWriting) {
  const _D3DVECTOR v = {1.0f, 2.0f, 3.0f};
  _D3DVECTOR out = {9.0f, 9.0f, 9.0f};
  const double dv[3] = {1.0, 2.0, 3.0};
  double d = 9.0;
  float f = 9.0f;
  int i = 9;
  tagKFMATRIX m = {};
  tagKFQUATERN q = {1.0f, 0.0f, 0.0f, 0.0f};
  _D3DRMVECTOR4D v4 = {};

  EXPECT_EQ(KUModF(1.0f, nullptr), 0);
  EXPECT_EQ(KUModD(1.0, nullptr), 0);
  EXPECT_EQ(KUVectorMagnitude(static_cast<const double*>(nullptr), &d), 0);
  EXPECT_EQ(KUVectorMagnitude(&v, nullptr), 0);
  EXPECT_EQ(KUVectorDotProduct(dv, nullptr, &d), 0);
  EXPECT_EQ(KUVectorDotProduct(&v, &v, nullptr), 0);
  EXPECT_EQ(KUVectorCrossProduct(dv, dv, nullptr), 0);
  EXPECT_EQ(KUVectorCrossProduct(nullptr, &v, &out), 0);
  EXPECT_EQ(KUVectorNormalise(static_cast<double*>(nullptr)), 0);
  EXPECT_EQ(KUVectorNormalise(static_cast<_D3DVECTOR*>(nullptr)), 0);
  EXPECT_EQ(KUVectorSubtract(&out, nullptr, &v), 0);
  EXPECT_EQ(KUVectorAdd(nullptr, &v, &v), 0);
  EXPECT_EQ(KUVectorScale(&out, nullptr, 2.0f), 0);
  EXPECT_EQ(KUMtxMultiplyVect(&v, nullptr, &out), 0);
  EXPECT_EQ(KUMtxMultiplyVectHomog(&v4, &m, nullptr), 0);
  EXPECT_EQ(KUMtxMakeXRot(1.0, nullptr), 0);
  EXPECT_EQ(KUMtxMakeTranslate(nullptr, &m), 0);
  EXPECT_EQ(KUMtxMakeFrustrumToView(nullptr, &m), 0);
  EXPECT_EQ(KUMtxMakeViewToFrustrum(&v, nullptr), 0);
  EXPECT_EQ(KUQuatCreate(nullptr, &v, 1.0f), 0);
  EXPECT_EQ(KUQuatInverse(nullptr, &q), 0);
  EXPECT_EQ(KUQuatMultiply(&q, nullptr, &q), 0);
  EXPECT_EQ(KUQuatNormalise(nullptr), 0);
  EXPECT_EQ(KUVectorRotate(nullptr, &v, &v, 1.0f), 0);
  EXPECT_EQ(KUVectorRotateAgainstFrame(&out, nullptr, &v, &v, 1), 0);
  EXPECT_EQ(KUVectorGetRotation(&v, nullptr, &out, &d, &i), 0);
  EXPECT_EQ(KUGetAngleBetweenVectors(&v, &v, nullptr), 0);
  EXPECT_EQ(KUGetRotationalAngle(1.0f, 1.0f, nullptr), 0);
  EXPECT_EQ(KURotationalAdd(1.0, 1.0, nullptr), 0);
  EXPECT_EQ(KUIsSameVector(nullptr, &v), 0);
  EXPECT_EQ(KUIsCoExtensive(&v, &v, nullptr, &v), 0);
  EXPECT_EQ(KUGetNextPowerUp(5, nullptr), 0);
  EXPECT_EQ(out.x, 9.0f);
  EXPECT_EQ(d, 9.0);
  EXPECT_EQ(f, 9.0f);

  CKTrans trans;
  trans.KTInitialise();
  EXPECT_EQ(trans.KTSetCameraOrientation(nullptr, &v), 0);
  EXPECT_EQ(trans.KTSetAspectRatio(nullptr), 0);
  EXPECT_EQ(trans.KTGetFieldOfView(nullptr, &d, &f, &f, &d), 0);
  EXPECT_EQ(trans.KTWorld2Screen(nullptr, &v), 0);
  EXPECT_EQ(trans.KTScreen2World(&out, nullptr), 0);

  CKArrange arrange;
  arrange.CAInitialise();
  EXPECT_EQ(arrange.CAGetItemType(nullptr), 0);
  EXPECT_EQ(arrange.CAGetFirstPosition(&f, nullptr, &f), 0);
  EXPECT_EQ(arrange.CASetFirstOrientation(nullptr, &v), 0);
  EXPECT_EQ(arrange.CAGetFirstOrientation(&out, nullptr), 0);
  EXPECT_EQ(arrange.CAGetDeltaTranslation(&i, nullptr), 0);
  EXPECT_EQ(arrange.CAGetDColOrientation(nullptr, &f), 0);
  EXPECT_EQ(out.x, 9.0f);

  CKMarkerList list;
  list.MLInitialise();
  EXPECT_EQ(list.MLInitMarker(nullptr), 0);
  EXPECT_EQ(list.MLCopyMarker(nullptr, nullptr), 0);
  EXPECT_EQ(list.MLAddMarker(nullptr), 0);
  EXPECT_EQ(list.MLSelectFirstMarker(nullptr), 0);
  EXPECT_EQ(list.MLFindMarkerByNumber(nullptr, 1), 0);
  EXPECT_EQ(list.MLUpdateSelectedMarker(nullptr, 0), 0);
  EXPECT_EQ(list.MLGetNextIndexNumber(nullptr), 0);
  EXPECT_EQ(list.MLCreateListFromList(nullptr), 1);
}

}  // namespace
