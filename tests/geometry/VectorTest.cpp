// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "GeometryTestSupport.h"
#include "KVector.h"
#include "TestSupport.h"

using kutil::test::nearVec;
using kutil::test::seq;
using kutil::test::vec;

namespace {
const double kPi = 3.14159265358979323846;
}

TEST(KUVector, FrustumMatricesAreExactInverses) {
  std::mt19937 rng(7);
  std::uniform_real_distribution<float> nearDist(0.1f, 5), halfDist(0.1f, 3), farDist(10, 1000);
  tagKFMATRIX P, Q;
  for (int i = 0; i < 200; ++i) {
    _D3DVECTOR p = vec(nearDist(rng), halfDist(rng), farDist(rng));
    ASSERT_EQ(1, KUMtxMakeFrustrumToView(&p, &P) * KUMtxMakeViewToFrustrum(&p, &Q));
    for (int r = 0; r < 4; ++r)
      for (int c = 0; c < 4; ++c) {
        double s = 0;
        for (int k = 0; k < 4; ++k) s += static_cast<double>(P.m[4 * r + k]) * Q.m[4 * k + c];
        ASSERT_NEAR(r == c ? 1.0 : 0.0, s, 1e-5) << r << "," << c;
      }
  }
}

// (2, 3, 6) has length 7 and (4, -5, 6) makes a dot of 29 and a cross of (48, 12, -22) with it: every
// component enters with its own partner.
TEST(KUVector, DoubleAndFloatTripleArithmetic) {
  const double a[3] = {2, 3, 6}, b[3] = {4, -5, 6}, small[3] = {0.01, 0, 0}, other[3] = {0, 0.05, 0};
  double len = 0, dot = 0, cross[3] = {9, 9, 9}, n[3] = {2, 3, 6}, zero[3] = {0, 0, 0}, mod = 0;
  // The small product (0, 0, 0.0005) is refused and the output kept; a null vector is not normalised.
  EXPECT_EQ(seq({KUVectorMagnitude(a, &len), len, KUVectorDotProduct(a, b, &dot), dot, KUModD(-2.5, &mod),
                 mod, KUVectorCrossProduct(a, b, cross), cross[0], cross[1], cross[2],
                 KUVectorCrossProduct(small, other, cross), cross[2], KUVectorNormalise(zero),
                 zero[0] + zero[1] + zero[2]}),
            "1 7 1 29 1 2.5 1 48 12 -22 0 -22 0 0");
  EXPECT_EQ(1, KUVectorNormalise(n));
  EXPECT_TRUE(std::fabs(n[0] - 2 / 7.0) + std::fabs(n[1] - 3 / 7.0) + std::fabs(n[2] - 6 / 7.0) < 1e-12);

  _D3DVECTOR fa = vec(2, 3, 6), fb = vec(4, -5, 6), sum, difference, scaled, null = vec(0, 0, 0);
  float flen = 0, fdot = 0, fmod = 0;
  EXPECT_EQ(1, KUVectorMagnitude(&fa, &flen) * KUVectorDotProduct(&fa, &fb, &fdot) * KUModF(-2.5f, &fmod) *
                   KUVectorAdd(&sum, &fa, &fb) * KUVectorSubtract(&difference, &fa, &fb) *
                   KUVectorScale(&scaled, &fa, -0.5f));
  EXPECT_TRUE(flen == 7 && fdot == 29 && fmod == 2.5f) << flen << " " << fdot << " " << fmod;
  EXPECT_TRUE(nearVec(sum, 6, -2, 12, 0) && nearVec(difference, -2, 8, 0, 0) &&
              nearVec(scaled, -1, -1.5f, -3, 0));
  EXPECT_EQ(1, KUVectorNormalise(&fa) + KUVectorNormalise(&null));
  EXPECT_TRUE(nearVec(fa, 2 / 7.0f, 3 / 7.0f, 6 / 7.0f, 1e-7f) && nearVec(null, 0, 0, 0, 0));
}

TEST(KUVector, GetRotationReportsKindAndSignedAngle) {
  _D3DVECTOR x = vec(1, 0, 0), z = vec(0, 0, 1), negX = vec(-2, 0, 0), same = vec(5, 0.001f, 0),
             axis = vec(9, 9, 9);
  double angle = 42;
  int kind = -1, kinds[3] = {};
  // Opposite, parallel (angle and axis untouched) and square.
  EXPECT_EQ(1, KUVectorGetRotation(&x, &negX, &axis, &angle, &kinds[0]) *
                   KUVectorGetRotation(&x, &same, &axis, &angle, &kinds[1]));
  EXPECT_TRUE(kinds[0] == 0 && kinds[1] == 1 && angle == 42.0);
  EXPECT_EQ(seq({KUVectorGetRotation(&x, &z, &axis, &angle, &kinds[2]), kinds[2]}), "1 2");
  EXPECT_TRUE(nearVec(axis, 0, -1, 0, 1e-6f));
  EXPECT_NEAR(kPi / 2, angle, 1e-6);
  // Outside the 0.001 band yet every cross component under 0.001: failure.
  _D3DVECTOR close = vec(1, 0.0008f, 0.0008f), null = vec(0, 0, 0);
  EXPECT_EQ(0, KUVectorGetRotation(&x, &close, &axis, &angle, &kind));
  EXPECT_EQ(0, KUVectorGetRotation(&null, &x, &axis, &angle, &kind));  // NaN maths, no crash
}

TEST(KUVector, AngleBetweenVectorsIsTheSupplement) {
  _D3DVECTOR x = vec(1, 0, 0), negX = vec(-1, 0, 0), diag = vec(1, 1, 0), odd = vec(0.3f, -0.7f, 0.11f),
             null = vec(0, 0, 0);
  double a[5] = {};
  EXPECT_EQ(1, KUGetAngleBetweenVectors(&x, &x, &a[0]) * KUGetAngleBetweenVectors(&x, &negX, &a[1]) *
                   KUGetAngleBetweenVectors(&x, &diag, &a[2]) * KUGetAngleBetweenVectors(&odd, &odd, &a[3]) *
                   KUGetAngleBetweenVectors(&null, &x, &a[4]));
  EXPECT_TRUE(a[0] == kPi && a[1] == 0.0) << a[0] << " " << a[1];
  EXPECT_NEAR(3 * kPi / 4, a[2], 1e-7);  // the textbook angle would be pi / 4
  EXPECT_NEAR(kPi, a[3], 1e-6);          // rounding must not give NaN
  EXPECT_TRUE(std::isnan(a[4]));
}

TEST(KUVector, HeadingsAndWrappedSums) {
  const double nearQuarter = std::atan(1.0 / static_cast<double>(0.0001f));  // zero abscissa taken as 0.0001
  const struct {
    float a, b;
    double want;
  } headings[] = {{0, 0, 0.0},      {0, 1, nearQuarter},    {0, -1, -nearQuarter}, {-1, 0, kPi},
                  {-1, -0.0f, kPi}, {-1, -1, -3 * kPi / 4}, {1, -1, -kPi / 4}};
  for (const auto& h : headings) {
    double got = 99;
    EXPECT_EQ(1, KUGetRotationalAngle(h.a, h.b, &got));
    EXPECT_DOUBLE_EQ(h.want, got) << "(" << h.a << ", " << h.b << ")";
  }
  const double sums[][3] = {{kPi, kPi, 0.0}, {3, 1, 4 - 2 * kPi}, {-3, -1, 2 * kPi - 4}, {1, 0.5, 1.5}};
  for (const auto& s : sums) {
    double got = 99;
    EXPECT_EQ(1, KURotationalAdd(s[0], s[1], &got));
    EXPECT_NEAR(s[2], got, 1e-12) << s[0] << " + " << s[1];
  }
}

TEST(KUVector, ParallelIsExactAndPlanarNormalReturnsZero) {
  _D3DVECTOR x = vec(1, 0, 0), negX = vec(-1, 0, 0), twoX = vec(2, 0, 0), tilted = vec(1, 0.01f, 0);
  _D3DVECTOR nudged = vec(std::nextafter(1.0f, 2.0f), 0, 0), o = vec(0, 0, 0);
  _D3DVECTOR in = vec(0.0009f, -0.0009f, 0), edge = vec(0.001f, 0, 0);
  // Exact tests, then within the 0.001 band (strict: 0.001f is just above it).
  EXPECT_EQ((std::vector<int>{1, 0, 0, 0, 1, 1, 0, 1, 0}),
            (std::vector<int>{KUIsParallelVector(&x, &negX), KUIsParallelVector(&x, &twoX),
                              KUIsParallelVector(&x, &nudged), KUIsSameVector(&x, &nudged),
                              KUIsSameVectorAPPROX(&x, &nudged), KUIsParallelVectorAPPROX(&twoX, &negX),
                              KUIsParallelVectorAPPROX(&x, &tilted), KUIsSameVectorAPPROX(&in, &o),
                              KUIsSameVectorAPPROX(&edge, &o)}));
  _D3DVECTOR p0 = vec(1, 5, 1), p1 = vec(3, -2, 1), normal;
  EXPECT_EQ(0, KUMkPlanarNormal(&p0, &p1, &normal));  // deliberately 0, yet the normal is written
  EXPECT_TRUE(nearVec(normal, 0, 0, 1, 0));
}

TEST(KUVector, AreaUniquenessAndBetween) {
  _D3DVECTOR a = vec(0, 0, 0), b = vec(1, 0, 0), c = vec(0, 0, 1);
  EXPECT_EQ(seq({KUHasArea(&a, &b, &a, &b), KUHasArea(&a, &b, &c, &a)}), "0 1");
  const float between[][4] = {{1, 2, 1, 1},    {2, 2, 1, 1}, {2, 1, 2, 1},
                              {1, 1, 2, 0},  // v == a < b is outside
                              {1.5f, 1, 2, 1}, {3, 3, 3, 1}, {2.5f, 1, 2, 0}};
  for (const auto& r : between)
    EXPECT_EQ(r[3], KUIsBetween(r[0], r[1], r[2])) << r[0] << " " << r[1] << " " << r[2];
}

TEST(KUVector, CoExtensiveNeedsAUsableOverlap) {
  const struct {
    _D3DVECTOR p0, p1, q0, q1;
    int want;
  } rows[] = {
      {vec(0, 0, 0), vec(1, 0, 0), vec(1, 0, 0), vec(2, 0, 0), 0},          // shared end point only
      {vec(0, 0, 0), vec(1, 0, 0), vec(0.01f, 0, 0), vec(1.01f, 0, 0), 1},  // within 0.02 at both ends
      {vec(0, 0, 0), vec(1, 0, 0), vec(0.5f, 0, 0), vec(0.6f, 0, 0), 1},
      {vec(0, 0, 0), vec(1, 0, 0), vec(0.99f, 0, 0), vec(2, 0, 0), 0},  // overlap 0.01
      {vec(3, 0, 0), vec(3, 0, 2), vec(3, 9, 1), vec(3, -9, 5), 1},     // along z; y ignored
  };
  for (const auto& r : rows) {
    SCOPED_TRACE(::testing::Message() << r.q0.x << "," << r.q0.z << " " << r.q1.x << "," << r.q1.z);
    EXPECT_EQ(r.want, KUIsCoExtensive(&r.p0, &r.p1, &r.q0, &r.q1));
  }
}

TEST(KUVector, NextPowerUpIsFlooredAndCapped) {
  const int cases[][2] = {{16, 16}, {17, 32}, {257, 512}, {513, 1024}, {1024, 1024}, {5000, 1024}, {-3, 16}};
  for (const auto& c : cases) {
    int out = 0;
    EXPECT_EQ(1, KUGetNextPowerUp(c[0], &out));
    EXPECT_EQ(c[1], out) << "n = " << c[0];
  }
}

namespace {
// Maps the frame's forward and up axes with mode 1 and brings them back with mode 0.
void expectFrameMaps(_D3DVECTOR dir, _D3DVECTOR up, _D3DVECTOR wantUp, float tol) {
  _D3DVECTOR d = dir, fwd = vec(0, 0, 1), top = vec(0, 1, 0), out, back;
  KUVectorNormalise(&d);
  KUVectorNormalise(&wantUp);
  ASSERT_EQ(1, KUVectorRotateAgainstFrame(&out, &fwd, &dir, &up, 1));
  EXPECT_TRUE(nearVec(out, d, tol));
  ASSERT_EQ(1, KUVectorRotateAgainstFrame(&back, &out, &dir, &up, 0));
  EXPECT_TRUE(nearVec(back, 0, 0, 1, tol));
  ASSERT_EQ(1, KUVectorRotateAgainstFrame(&out, &top, &dir, &up, 1));
  EXPECT_TRUE(nearVec(out, wantUp, tol));
  ASSERT_EQ(1, KUVectorRotateAgainstFrame(&back, &out, &dir, &up, 0));
  EXPECT_TRUE(nearVec(back, 0, 1, 0, tol));
}
}  // namespace

TEST(KUVector, RotateAgainstFrameRollCases) {
  const struct {
    _D3DVECTOR dir, up, wantUp;
    float tol;
  } rows[] = {
      {vec(1, 0, 1), vec(0, 1, 0), vec(0, 1, 0), 1e-5f},    // upright
      {vec(1, 0, 1), vec(0, -1, 0), vec(0, -1, 0), 1e-5f},  // upside down
      {vec(0, 0, 1), vec(1, 0, 0), vec(1, 0, 0), 1e-5f},    // up lying sideways
      {vec(0, 1, 0), vec(1, 0, 0), vec(1, 0, 0), 2e-4f},    // straight up: heading via the 0.0001 abscissa
      {vec(0, -1, 0), vec(0, 0, 1), vec(0, 0, 1), 1e-5f},   // straight down: a sideways up comes out mirrored
      {vec(0, -1, 0), vec(1, 0, 0), vec(-1, 0, 0), 2e-4f},
  };
  for (const auto& r : rows) {
    SCOPED_TRACE(::testing::Message()
                 << "dir " << r.dir.x << "," << r.dir.y << " up " << r.up.x << "," << r.up.z);
    expectFrameMaps(r.dir, r.up, r.wantUp, r.tol);
  }
  // Any length is carried through (v itself is normalised); up along dir leaves no roll plane.
  _D3DVECTOR dir = vec(0, 0, 1), up = vec(0, 1, 0), out = vec(9, 9, 9), v = vec(0, 3, 4);
  EXPECT_EQ(1, KUVectorRotateAgainstFrame(&out, &v, &dir, &up, 1));
  EXPECT_TRUE(nearVec(out, 0, 3, 4));
  EXPECT_TRUE(nearVec(v, 0, 0.6f, 0.8f, 1e-6f));  // side effect: v normalised
  _D3DVECTOR slanted = vec(1, 0.5f, 1), alsoSlanted = vec(2, 1, 2);
  out = vec(9, 9, 9);
  EXPECT_EQ(0, KUVectorRotateAgainstFrame(&out, &v, &slanted, &alsoSlanted, 1));
  EXPECT_TRUE(nearVec(out, 9, 9, 9, 0));
}
