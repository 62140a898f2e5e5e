// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Property tests against GLM as an independent peer. GLM uses column vectors
// (M * v) and column-major storage; this library uses row vectors (v * M) and
// row-major storage. The two transposes cancel: the same transform has the
// same sixteen floats in both, so matrices are compared element by element.
#include <gtest/gtest.h>

#if __has_include(<glm/glm.hpp>)

#include <cmath>
#include <glm/glm.hpp>
#include <glm/gtc/matrix_transform.hpp>
#include <glm/gtc/quaternion.hpp>
#include <glm/gtc/type_ptr.hpp>
#include <random>

#include "GeometryTestUtil.h"
#include "KVector.h"

using kutil::test::vec;

namespace {

constexpr int kRounds = 3000;

class GlmPeer : public ::testing::Test {
 protected:
  std::mt19937 m_rng{20260101};
  std::uniform_real_distribution<float> m_unit{-1.0f, 1.0f};
  std::uniform_real_distribution<float> m_wide{-100.0f, 100.0f};
  std::uniform_real_distribution<float> m_angle{-7.0f, 7.0f};

  _D3DVECTOR unitish() { return vec(m_unit(m_rng), m_unit(m_rng), m_unit(m_rng)); }
  _D3DVECTOR wide() { return vec(m_wide(m_rng), m_wide(m_rng), m_wide(m_rng)); }
  tagKFQUATERN quat() { return {m_unit(m_rng), m_unit(m_rng), m_unit(m_rng), m_unit(m_rng)}; }
};

glm::vec3 toGlm(const _D3DVECTOR& v) { return {v.x, v.y, v.z}; }
glm::quat toGlm(const tagKFQUATERN& q) { return glm::quat(q.w, q.x, q.y, q.z); }

void expectNear(const glm::vec3& want, const _D3DVECTOR& got, float tol) {
  EXPECT_NEAR(want.x, got.x, tol);
  EXPECT_NEAR(want.y, got.y, tol);
  EXPECT_NEAR(want.z, got.z, tol);
}

void expectNear(const glm::quat& want, const tagKFQUATERN& got, float tol) {
  EXPECT_NEAR(want.w, got.w, tol);
  EXPECT_NEAR(want.x, got.x, tol);
  EXPECT_NEAR(want.y, got.y, tol);
  EXPECT_NEAR(want.z, got.z, tol);
}

void expectSameMatrix(const glm::mat4& want, const tagKFMATRIX& got, float tol) {
  const float* w = glm::value_ptr(want);
  for (int i = 0; i < 16; ++i) EXPECT_NEAR(w[i], got.m[i], tol) << "element " << i;
}

}  // namespace

TEST_F(GlmPeer, VectorRotateMatchesAngleAxisRotation) {
  for (int i = 0; i < kRounds; ++i) {
    const _D3DVECTOR v = wide(), axis = unitish();
    const float angle = m_angle(m_rng);
    _D3DVECTOR out;
    ASSERT_EQ(1, KUVectorRotate(&out, &v, &axis, angle));
    const glm::vec3 a = toGlm(axis);
    if (glm::length(a) < 1e-3f) continue;
    const glm::vec3 want = glm::angleAxis(angle, glm::normalize(a)) * toGlm(v);
    SCOPED_TRACE(i);
    expectNear(want, out, 1e-4f * (1.0f + glm::length(toGlm(v))));
  }
}

TEST_F(GlmPeer, QuaternionProductIsTheNormalisedHamiltonProduct) {
  for (int i = 0; i < kRounds; ++i) {
    const tagKFQUATERN a = quat(), b = quat();
    tagKFQUATERN out;
    ASSERT_EQ(1, KUQuatMultiply(&out, &a, &b));
    SCOPED_TRACE(i);
    expectNear(glm::normalize(toGlm(a) * toGlm(b)), out, 1e-5f);
  }
}

TEST_F(GlmPeer, QuaternionInverseMatchesGlm) {
  for (int i = 0; i < kRounds; ++i) {
    const tagKFQUATERN q = quat();
    const glm::quat g = toGlm(q);
    if (glm::dot(g, g) < 1e-2f) continue;
    tagKFQUATERN out;
    ASSERT_EQ(1, KUQuatInverse(&q, &out));
    const glm::quat want = glm::inverse(g);
    SCOPED_TRACE(i);
    expectNear(want, out, 1e-4f * glm::length(want));
  }
}

TEST_F(GlmPeer, QuaternionFromAxisAngleMatchesGlm) {
  for (int i = 0; i < kRounds; ++i) {
    _D3DVECTOR axis = unitish();
    if (!KUVectorNormalise(&axis)) continue;
    const float angle = m_angle(m_rng);
    tagKFQUATERN q;
    KUQuatCreate(&q, &axis, angle);
    expectNear(glm::angleAxis(angle, toGlm(axis)), q, 1e-6f);
  }
}

TEST_F(GlmPeer, RotationAndTranslationMatricesMatchGlm) {
  const glm::mat4 one(1.0f);
  for (int i = 0; i < kRounds; ++i) {
    const float angle = m_angle(m_rng);
    const _D3DVECTOR t = wide();
    tagKFMATRIX m;
    SCOPED_TRACE(i);
    KUMtxMakeXRot(angle, &m);
    expectSameMatrix(glm::rotate(one, angle, glm::vec3(1, 0, 0)), m, 1e-6f);
    KUMtxMakeYRot(angle, &m);
    expectSameMatrix(glm::rotate(one, angle, glm::vec3(0, 1, 0)), m, 1e-6f);
    KUMtxMakeZRot(angle, &m);
    expectSameMatrix(glm::rotate(one, angle, glm::vec3(0, 0, 1)), m, 1e-6f);
    KUMtxMakeTranslate(&t, &m);
    expectSameMatrix(glm::translate(one, toGlm(t)), m, 0.0f);
  }
}

TEST_F(GlmPeer, MatrixTimesVectorMatchesGlmWithoutDivisionByW) {
  for (int i = 0; i < kRounds; ++i) {
    tagKFMATRIX m;
    for (float& e : m.m) e = m_unit(m_rng) * 10.0f;
    const _D3DVECTOR v = wide();
    _D3DVECTOR out;
    ASSERT_EQ(1, KUMtxMultiplyVect(&v, &m, &out));
    const glm::vec4 want = glm::make_mat4(m.m) * glm::vec4(toGlm(v), 1.0f);  // w is ignored
    SCOPED_TRACE(i);
    expectNear(glm::vec3(want), out, 5e-3f);

    const _D3DRMVECTOR4D h = {v.x, v.y, v.z, m_unit(m_rng)};
    _D3DRMVECTOR4D hOut;
    ASSERT_EQ(1, KUMtxMultiplyVectHomog(&h, &m, &hOut));
    const glm::vec4 wantH = glm::make_mat4(m.m) * glm::vec4(h.x, h.y, h.z, h.w);
    EXPECT_NEAR(wantH.w, hOut.w, 5e-3f);
    EXPECT_NEAR(wantH.x, hOut.x, 5e-3f);
  }
}

TEST_F(GlmPeer, FrustumMatrixInverseMatchesGlmInverse) {
  std::uniform_real_distribution<float> nearDist(0.1f, 2.0f), halfDist(0.1f, 2.0f), farDist(5.0f, 100.0f);
  for (int i = 0; i < kRounds / 10; ++i) {
    const _D3DVECTOR p = vec(nearDist(m_rng), halfDist(m_rng), farDist(m_rng));
    tagKFMATRIX P, Q;
    KUMtxMakeFrustrumToView(&p, &P);
    KUMtxMakeViewToFrustrum(&p, &Q);
    const glm::mat4 want = glm::inverse(glm::make_mat4(P.m));
    const float* w = glm::value_ptr(want);
    for (int k = 0; k < 16; ++k) EXPECT_NEAR(w[k], Q.m[k], 1e-4f * (1.0f + std::fabs(w[k])));
  }
}

TEST_F(GlmPeer, AngleBetweenVectorsIsPiMinusTheTextbookAngle) {
  // The library deliberately reports the supplement of glm::angle.
  for (int i = 0; i < kRounds; ++i) {
    const _D3DVECTOR a = wide(), b = wide();
    double got = 0;
    KUGetAngleBetweenVectors(&a, &b, &got);
    const glm::dvec3 da = glm::normalize(glm::dvec3(toGlm(a))), db = glm::normalize(glm::dvec3(toGlm(b)));
    const double textbook = std::acos(glm::clamp(glm::dot(da, db), -1.0, 1.0));
    EXPECT_NEAR(3.14159265358979 - textbook, got, 1e-6);
  }
}

TEST_F(GlmPeer, ParallelApproxUsesTheFixedComponentBand) {
  // Not an angular tolerance: two unit vectors count as parallel when every
  // component differs by less than 0.001, whatever angle that is.
  for (int i = 0; i < kRounds; ++i) {
    std::uniform_real_distribution<float> noise(-0.0015f, 0.0015f);
    _D3DVECTOR a = unitish();
    if (!KUVectorNormalise(&a)) continue;
    const float sign = (i % 2) ? 1.0f : -1.0f;
    _D3DVECTOR b = vec(sign * a.x + noise(m_rng), sign * a.y + noise(m_rng), sign * a.z + noise(m_rng));
    KUVectorNormalise(&b);
    const glm::vec3 ga = toGlm(a), gb = toGlm(b);
    const glm::vec3 d = glm::abs(ga - gb), s = glm::abs(ga + gb);
    const bool same = d.x < 0.00099f && d.y < 0.00099f && d.z < 0.00099f;
    const bool opposite = s.x < 0.00099f && s.y < 0.00099f && s.z < 0.00099f;
    const bool distant = glm::max(d.x, glm::max(d.y, d.z)) > 0.00101f && glm::max(s.x, glm::max(s.y, s.z)) > 0.00101f;
    if (same || opposite) {
      EXPECT_EQ(1, KUIsParallelVectorAPPROX(&a, &b));
    }
    if (distant) {
      EXPECT_EQ(0, KUIsParallelVectorAPPROX(&a, &b));
    }
  }
}

#else

TEST(GlmPeer, SkippedWithoutGlm) { GTEST_SKIP() << "GLM headers are not available for this target"; }

#endif
