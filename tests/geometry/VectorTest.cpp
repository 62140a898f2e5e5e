// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "GeometryTestUtil.h"
#include "KVector.h"

using kutil::test::nearVec;
using kutil::test::vec;

namespace {
const double kPi = 3.14159265358979323846;
}

TEST(KUVector, CrossProductRefusesNearNullResultAndKeepsOutput) {
  // Long, nearly parallel inputs: every component of the product stays under 0.001.
  _D3DVECTOR a = vec(1000, 0, 0), b = vec(1000, 0.0000005f, 0), out = vec(7, 8, 9);
  EXPECT_EQ(0, KUVectorCrossProduct(&a, &b, &out));
  EXPECT_TRUE(nearVec(out, 7, 8, 9, 0));

  _D3DVECTOR x = vec(1, 0, 0), y = vec(0, 1, 0);
  EXPECT_EQ(1, KUVectorCrossProduct(&x, &y, &out));
  EXPECT_TRUE(nearVec(out, 0, 0, 1, 0));

  // A null vector is refused by normalisation and by the cross product alike.
  _D3DVECTOR null = vec(0, 0, 0);
  EXPECT_EQ(0, KUVectorNormalise(&null));
  EXPECT_EQ(0, KUVectorCrossProduct(&null, &x, &out));
}



TEST(KUVector, MatrixProductUsesRowVectorsWithoutDivisionByW) {
  tagKFMATRIX t;
  _D3DVECTOR move = vec(1, 2, 3), p = vec(10, 20, 30), out;
  KUMtxMakeTranslate(&move, &t);
  t.m[15] = 5;  // a homogeneous weight other than 1 must not divide the result
  EXPECT_EQ(1, KUMtxMultiplyVect(&p, &t, &out));
  EXPECT_TRUE(nearVec(out, 11, 22, 33, 0));

  tagKFMATRIX yRot;
  KUMtxMakeYRot(kPi / 2, &yRot);
  _D3DVECTOR x = vec(1, 0, 0), y = vec(0, 1, 0), viaMatrix, viaQuat;
  KUMtxMultiplyVect(&x, &yRot, &viaMatrix);
  KUVectorRotate(&viaQuat, &x, &y, static_cast<float>(kPi / 2));
  EXPECT_TRUE(nearVec(viaMatrix, 0, 0, -1, 1e-6f));
  EXPECT_TRUE(nearVec(viaQuat, viaMatrix, 1e-6f));
}

TEST(KUVector, FrustumMatricesAreExactInverses) {
  std::mt19937 rng(7);
  std::uniform_real_distribution<float> nearDist(0.1f, 5), halfDist(0.1f, 3), farDist(10, 1000);
  for (int i = 0; i < 200; ++i) {
    _D3DVECTOR p = vec(nearDist(rng), halfDist(rng), farDist(rng));
    tagKFMATRIX P, Q;
    KUMtxMakeFrustrumToView(&p, &P);
    KUMtxMakeViewToFrustrum(&p, &Q);
    for (int r = 0; r < 4; ++r)
      for (int c = 0; c < 4; ++c) {
        double s = 0;
        for (int k = 0; k < 4; ++k) s += static_cast<double>(P.m[4 * r + k]) * Q.m[4 * k + c];
        ASSERT_NEAR(r == c ? 1.0 : 0.0, s, 1e-5) << "element " << r << "," << c;
      }
  }
  // A zero near plane is not guarded: infinities, but no crash.
  _D3DVECTOR bad = vec(0, 1, 0);
  tagKFMATRIX Q;
  EXPECT_EQ(1, KUMtxMakeViewToFrustrum(&bad, &Q));
  EXPECT_EQ(1.0f, Q.m[14]);
  EXPECT_TRUE(std::isinf(Q.m[0]));
}


TEST(KUVector, RotateLeavesVectorsAlongTheAxisAndNullVectorsAlone) {
  _D3DVECTOR axis = vec(0, 3, 0), out;
  _D3DVECTOR along = vec(0, 5, 0), against = vec(0, -0.25f, 0), null = vec(0, 0, 0);
  EXPECT_EQ(1, KUVectorRotate(&out, &along, &axis, 1.0f));
  EXPECT_TRUE(nearVec(out, along, 0));
  EXPECT_EQ(1, KUVectorRotate(&out, &against, &axis, 1.0f));
  EXPECT_TRUE(nearVec(out, against, 0));
  EXPECT_EQ(1, KUVectorRotate(&out, &null, &axis, 1.0f));
  EXPECT_TRUE(nearVec(out, 0, 0, 0, 0));
  // A zero axis turns nothing either.
  _D3DVECTOR noAxis = vec(0, 0, 0), v = vec(1, 2, 3);
  EXPECT_EQ(1, KUVectorRotate(&out, &v, &noAxis, 0.7f));
  EXPECT_TRUE(nearVec(out, v, 1e-5f));
  // Length is kept and the output may alias the input.
  _D3DVECTOR w = vec(4, 0, 0);
  EXPECT_EQ(1, KUVectorRotate(&w, &w, &axis, static_cast<float>(kPi)));
  EXPECT_TRUE(nearVec(w, -4, 0, 0, 1e-5f));
  EXPECT_EQ(0, KUVectorRotate(nullptr, &w, &axis, 1.0f));
}

TEST(KUVector, GetRotationReportsKindAndSignedAngle) {
  _D3DVECTOR x = vec(1, 0, 0), z = vec(0, 0, 1), negX = vec(-2, 0, 0), axis = vec(9, 9, 9);
  double angle = 42;
  int kind = -1;
  EXPECT_EQ(1, KUVectorGetRotation(&x, &negX, &axis, &angle, &kind));
  EXPECT_EQ(0, kind);
  EXPECT_EQ(42.0, angle);  // opposite: neither angle nor axis written
  EXPECT_TRUE(nearVec(axis, 9, 9, 9, 0));
  _D3DVECTOR x2 = vec(5, 0.001f, 0);
  EXPECT_EQ(1, KUVectorGetRotation(&x, &x2, &axis, &angle, &kind));
  EXPECT_EQ(1, kind);
  EXPECT_EQ(42.0, angle);

  EXPECT_EQ(1, KUVectorGetRotation(&x, &z, &axis, &angle, &kind));
  EXPECT_EQ(2, kind);
  EXPECT_TRUE(nearVec(axis, 0, -1, 0, 1e-6f));
  EXPECT_NEAR(kPi / 2, angle, 1e-6);
  _D3DVECTOR turned;
  KUVectorRotate(&turned, &x, &axis, static_cast<float>(angle));
  EXPECT_TRUE(nearVec(turned, z, 1e-5f));

  // Just above the 0.001 band, but every cross component under 0.001: failure.
  _D3DVECTOR close = vec(1, 0.0008f, 0.0008f);
  kind = -1;
  EXPECT_EQ(0, KUVectorGetRotation(&x, &close, &axis, &angle, &kind));
  EXPECT_EQ(-1, kind);
  // A null vector gives NaN maths but no crash.
  _D3DVECTOR null = vec(0, 0, 0);
  EXPECT_EQ(0, KUVectorGetRotation(&null, &x, &axis, &angle, &kind));
}

TEST(KUVector, AngleBetweenVectorsIsTheSupplement) {
  // Deliberately pi minus the textbook angle.
  _D3DVECTOR x = vec(1, 0, 0), y = vec(0, 3, 0), negX = vec(-1, 0, 0), diag = vec(1, 1, 0);
  double a = 0;
  KUGetAngleBetweenVectors(&x, &x, &a);
  EXPECT_DOUBLE_EQ(kPi, a);
  KUGetAngleBetweenVectors(&x, &y, &a);
  EXPECT_DOUBLE_EQ(kPi / 2, a);
  KUGetAngleBetweenVectors(&x, &negX, &a);
  EXPECT_DOUBLE_EQ(0.0, a);
  KUGetAngleBetweenVectors(&x, &diag, &a);
  EXPECT_NEAR(3 * kPi / 4, a, 1e-7);
  _D3DVECTOR odd = vec(0.3f, -0.7f, 0.11f);
  KUGetAngleBetweenVectors(&odd, &odd, &a);  // rounding must not give NaN
  EXPECT_NEAR(kPi, a, 1e-6);
  _D3DVECTOR null = vec(0, 0, 0);
  EXPECT_EQ(1, KUGetAngleBetweenVectors(&null, &x, &a));
  EXPECT_TRUE(std::isnan(a));
}

TEST(KUVector, HeadingsAndWrappedSums) {
  const double nearQuarter = std::atan(1.0 / static_cast<double>(0.0001f));  // just under pi/2
  // -0.0 counts as not negative, so (-1, -0.0) faces pi like (-1, 0).
  const struct {
    float a, b;
    double want;
  } headings[] = {{0, 0, 0.0},          {0, 1, nearQuarter},         {0, -1, -nearQuarter}, {-1, 0, kPi},
                  {-1, -0.0f, kPi},     {-1, -1, -3 * kPi / 4},      {1, -1, -kPi / 4},     {2, 2, kPi / 4}};
  for (const auto& h : headings) {
    double got = 99;
    EXPECT_EQ(1, KUGetRotationalAngle(h.a, h.b, &got));
    EXPECT_DOUBLE_EQ(h.want, got) << "(" << h.a << ", " << h.b << ")";
  }
  const double sums[][3] = {{kPi, kPi, 0.0}, {3, 1, 4 - 2 * kPi}, {-3, -1, 2 * kPi - 4}, {1, 0.5, 1.5}};
  for (const auto& s : sums) {
    double got = 99;
    KURotationalAdd(s[0], s[1], &got);
    EXPECT_NEAR(s[2], got, 1e-12) << s[0] << " + " << s[1];
  }
}

TEST(KUVector, PlanarNormalReturnsZeroYetWritesTheNormal) {
  _D3DVECTOR p0 = vec(1, 5, 1), p1 = vec(3, -2, 1), out;
  EXPECT_EQ(0, KUMkPlanarNormal(&p0, &p1, &out));
  EXPECT_TRUE(nearVec(out, 0, 0, 1, 0));
  EXPECT_EQ(0, KUMkPlanarNormal(&p0, &p0, &out));  // degenerate: null normal
  EXPECT_TRUE(nearVec(out, 0, 0, 0, 0));
}

TEST(KUVector, EqualityAndParallelTests) {
  _D3DVECTOR x = vec(1, 0, 0), negX = vec(-1, 0, 0), twoX = vec(2, 0, 0);
  _D3DVECTOR nudged = vec(std::nextafter(1.0f, 2.0f), 0, 0);
  // Exact on purpose: no tolerance and no scaling.
  EXPECT_EQ(1, KUIsParallelVector(&x, &negX));
  EXPECT_EQ(0, KUIsParallelVector(&x, &twoX));
  EXPECT_EQ(0, KUIsParallelVector(&x, &nudged));
  EXPECT_EQ(0, KUIsSameVector(&x, &nudged));
  EXPECT_EQ(1, KUIsSameVectorAPPROX(&x, &nudged));
  // The approximate version normalises, so length does not matter.
  EXPECT_EQ(1, KUIsParallelVectorAPPROX(&twoX, &negX));
  _D3DVECTOR tilted = vec(1, 0.01f, 0);
  EXPECT_EQ(0, KUIsParallelVectorAPPROX(&x, &tilted));
  _D3DVECTOR null = vec(0, 0, 0), shortVec = vec(0.0005f, 0, 0);
  EXPECT_EQ(1, KUIsParallelVectorAPPROX(&null, &null));
  EXPECT_EQ(0, KUIsParallelVectorAPPROX(&null, &shortVec));  // shortVec normalises to unit length
  // The band is strict: 0.001f (slightly above 0.001 in double) is outside.
  _D3DVECTOR o = vec(0, 0, 0), in = vec(0.0009f, -0.0009f, 0), out = vec(0.001f, 0, 0);
  EXPECT_EQ(1, KUIsSameVectorAPPROX(&in, &o));
  EXPECT_EQ(0, KUIsSameVectorAPPROX(&out, &o));
  EXPECT_EQ(0, KUIsSameVector(nullptr, &o));
}

TEST(KUVector, HasAreaCountsUniquePoints) {
  _D3DVECTOR a = vec(0, 0, 0), b = vec(1, 0, 0), c = vec(0, 0, 1);
  EXPECT_EQ(0, KUHasArea(&a, &a, &a, &a));
  EXPECT_EQ(0, KUHasArea(&a, &b, &a, &b));
  EXPECT_EQ(1, KUHasArea(&a, &b, &c, &a));
  EXPECT_EQ(1, KUIsUniqueIn(&c, &a, &b, &b));
  EXPECT_EQ(0, KUIsUniqueIn(&b, &a, &a, &b));
}

TEST(KUVector, IsBetweenExcludesTheLowerBoundOnlyWhenGivenFirst) {
  EXPECT_EQ(1, KUIsBetween(1.0f, 2.0f, 1.0f));  // b <= v <= a: both ends count
  EXPECT_EQ(1, KUIsBetween(2.0f, 2.0f, 1.0f));
  EXPECT_EQ(1, KUIsBetween(2.0f, 1.0f, 2.0f));  // a < v <= b
  EXPECT_EQ(0, KUIsBetween(1.0f, 1.0f, 2.0f));  // ... so v == a < b is outside
  EXPECT_EQ(1, KUIsBetween(1.5f, 1.0f, 2.0f));
  EXPECT_EQ(1, KUIsBetween(3.0f, 3.0f, 3.0f));
  EXPECT_EQ(0, KUIsBetween(2.5f, 1.0f, 2.0f));
}

TEST(KUVector, CoExtensiveNeedsAUsableOverlap) {
  _D3DVECTOR p0 = vec(0, 0, 0), p1 = vec(1, 0, 0);
  _D3DVECTOR touch0 = vec(1, 0, 0), touch1 = vec(2, 0, 0);
  _D3DVECTOR part0 = vec(0.75f, 0, 0);
  EXPECT_EQ(0, KUIsCoExtensive(&p0, &p1, &touch0, &touch1));  // a shared end point only
  EXPECT_EQ(1, KUIsCoExtensive(&p0, &p1, &part0, &touch1));
  EXPECT_EQ(1, KUIsCoExtensive(&p0, &p1, &p1, &p0));  // the same edge reversed
  _D3DVECTOR near0 = vec(0.01f, 0, 0), near1 = vec(1.01f, 0, 0);
  EXPECT_EQ(1, KUIsCoExtensive(&p0, &p1, &near0, &near1));  // within 0.02 at both ends
  // Containment counts only when the inner edge is at least 0.02 long.
  _D3DVECTOR in0 = vec(0.5f, 0, 0), in1 = vec(0.51f, 0, 0), in2 = vec(0.6f, 0, 0);
  EXPECT_EQ(0, KUIsCoExtensive(&p0, &p1, &in0, &in1));
  EXPECT_EQ(1, KUIsCoExtensive(&p0, &p1, &in0, &in2));
  EXPECT_EQ(0, KUIsCoExtensive(&in0, &in1, &p0, &p1));
  // A partial overlap of 0.01 is too short; 0.05 is enough.
  _D3DVECTOR tail0 = vec(0.99f, 0, 0), tail1 = vec(0.95f, 0, 0);
  EXPECT_EQ(0, KUIsCoExtensive(&p0, &p1, &tail0, &touch1));
  EXPECT_EQ(1, KUIsCoExtensive(&p0, &p1, &tail1, &touch1));
  // Edges running along z use the z components; y is ignored.
  _D3DVECTOR z0 = vec(3, 0, 0), z1 = vec(3, 0, 2), w0 = vec(3, 9, 1), w1 = vec(3, -9, 5);
  EXPECT_EQ(1, KUIsCoExtensive(&z0, &z1, &w0, &w1));
  _D3DVECTOR w2 = vec(3, 0, 4);
  EXPECT_EQ(0, KUIsCoExtensive(&z0, &z1, &w1, &w2));
}

TEST(KUVector, NextPowerUpIsFlooredAndCapped) {
  const int cases[][2] = {{16, 16}, {17, 32}, {64, 64}, {65, 128}, {256, 256}, {257, 512},
                          {513, 1024}, {1024, 1024}, {5000, 1024}, {-3, 16}, {0, 16}};
  for (const auto& c : cases) {
    int out = 0;
    EXPECT_EQ(1, KUGetNextPowerUp(c[0], &out));
    EXPECT_EQ(c[1], out) << "n = " << c[0];
  }
}

TEST(KUVector, RotateAgainstFrameNormalisesVAndRejectsUnknownModes) {
  _D3DVECTOR dir = vec(0, 0, 1), up = vec(0, 1, 0), out = vec(9, 9, 9), v = vec(0, 3, 4);
  EXPECT_EQ(0, KUVectorRotateAgainstFrame(&out, &v, &dir, &up, 2));
  EXPECT_TRUE(nearVec(out, 9, 9, 9, 0));
  EXPECT_TRUE(nearVec(v, 0, 3, 4, 0));
  // The world frame changes nothing but leaves v with unit length.
  EXPECT_EQ(1, KUVectorRotateAgainstFrame(&out, &v, &dir, &up, 1));
  EXPECT_TRUE(nearVec(out, 0, 3, 4, 1e-5f));
  EXPECT_TRUE(nearVec(v, 0, 0.6f, 0.8f, 1e-6f));
  _D3DVECTOR null = vec(0, 0, 0);
  EXPECT_EQ(1, KUVectorRotateAgainstFrame(&out, &null, &dir, &up, 0));
  EXPECT_TRUE(nearVec(out, 0, 0, 0, 0));
  // Up along dir leaves no roll plane.
  _D3DVECTOR slanted = vec(1, 0.5f, 1), alsoSlanted = vec(2, 1, 2);
  out = vec(9, 9, 9);
  v = vec(1, 0, 0);
  EXPECT_EQ(0, KUVectorRotateAgainstFrame(&out, &v, &slanted, &alsoSlanted, 1));
  EXPECT_TRUE(nearVec(out, 9, 9, 9, 0));
}

namespace {
// Maps the frame's forward and up axes with mode 1 and brings them back with mode 0.
void expectFrameMaps(const _D3DVECTOR& dir, const _D3DVECTOR& up, const _D3DVECTOR& wantUp, float tol) {
  _D3DVECTOR d = dir, u = wantUp;
  KUVectorNormalise(&d);
  KUVectorNormalise(&u);
  _D3DVECTOR fwd = vec(0, 0, 2), top = vec(0, 1, 0), out, back;
  ASSERT_EQ(1, KUVectorRotateAgainstFrame(&out, &fwd, &dir, &up, 1));
  EXPECT_TRUE(nearVec(out, 2 * d.x, 2 * d.y, 2 * d.z, 2 * tol)) << "forward axis";
  ASSERT_EQ(1, KUVectorRotateAgainstFrame(&back, &out, &dir, &up, 0));
  EXPECT_TRUE(nearVec(back, 0, 0, 2, 2 * tol)) << "forward axis back";
  ASSERT_EQ(1, KUVectorRotateAgainstFrame(&out, &top, &dir, &up, 1));
  EXPECT_TRUE(nearVec(out, u, tol)) << "up axis";
  ASSERT_EQ(1, KUVectorRotateAgainstFrame(&back, &out, &dir, &up, 0));
  EXPECT_TRUE(nearVec(back, 0, 1, 0, tol)) << "up axis back";
}
}  // namespace

TEST(KUVector, RotateAgainstFrameMapsRandomFramesBothWays) {
  std::mt19937 rng(2024);
  std::uniform_real_distribution<float> u(-1, 1);
  for (int i = 0; i < 2000; ++i) {
    _D3DVECTOR dir = vec(u(rng), u(rng), u(rng)), helper = vec(u(rng), u(rng), u(rng)), side, up;
    // Nearly level views (|dir.y| < 0.01) take world up as the unrolled up
    // and keep the roll's sign even where that mirrors it: no round trip there.
    if (!KUVectorNormalise(&dir) || std::fabs(dir.y) > 0.99f || std::fabs(dir.y) < 0.01f) continue;
    if (!KUVectorCrossProduct(&dir, &helper, &side)) continue;
    KUVectorNormalise(&side);
    KUVectorCrossProduct(&side, &dir, &up);  // perpendicular to dir
    KUVectorNormalise(&up);
    SCOPED_TRACE(::testing::Message() << "case " << i << " dir " << dir.x << "," << dir.y << "," << dir.z
                                      << " up " << up.x << "," << up.y << "," << up.z);
    expectFrameMaps(dir, up, up, 2e-3f);
  }
}

TEST(KUVector, RotateAgainstFrameRollCases) {
  // Upright frame, upside-down frame, and up lying sideways on either hand.
  expectFrameMaps(vec(1, 0, 1), vec(0, 1, 0), vec(0, 1, 0), 1e-5f);
  expectFrameMaps(vec(1, 0, 1), vec(0, -1, 0), vec(0, -1, 0), 1e-5f);
  expectFrameMaps(vec(0, 0, 1), vec(1, 0, 0), vec(1, 0, 0), 1e-5f);
  expectFrameMaps(vec(0, 0, 1), vec(-1, 0, 0), vec(-1, 0, 0), 1e-5f);
  // Looking straight up, up is free in the horizontal plane. Its heading
  // comes from atan with 0.0001 for a zero abscissa, hence the tolerance.
  expectFrameMaps(vec(0, 1, 0), vec(1, 0, 0), vec(1, 0, 0), 2e-4f);
  expectFrameMaps(vec(0, 1, 0), vec(0.6f, 0, -0.8f), vec(0.6f, 0, -0.8f), 1e-5f);
  // Looking straight down, the roll is the heading of up itself, so a
  // sideways up comes out mirrored in x; only ups along z map back as given.
  expectFrameMaps(vec(0, -1, 0), vec(0, 0, 1), vec(0, 0, 1), 1e-5f);
  expectFrameMaps(vec(0, -1, 0), vec(1, 0, 0), vec(-1, 0, 0), 2e-4f);
}
