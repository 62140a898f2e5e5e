// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Property tests against GLM. GLM uses column vectors (M * v) stored column-major,
// this library row vectors (v * M) stored row-major: the transposes cancel, so
// the same transform has the same sixteen floats in both.
#include <gtest/gtest.h>

#if __has_include(<glm/glm.hpp>)

#include <cmath>
#include <glm/glm.hpp>
#include <glm/gtc/matrix_transform.hpp>
#include <glm/gtc/quaternion.hpp>
#include <glm/gtc/type_ptr.hpp>
#include <random>

#include "GeometryTestSupport.h"
#include "KVector.h"

using kutil::test::nearVec;
using kutil::test::vec;

namespace {

class GlmPeer : public ::testing::Test {
 protected:
  static constexpr int kRounds = 3000;
  std::mt19937 m_rng{20260101};
  std::uniform_real_distribution<float> m_unit{-1.0f, 1.0f}, m_wide{-100.0f, 100.0f}, m_angle{-7.0f, 7.0f};
  _D3DVECTOR wide() { return vec(m_wide(m_rng), m_wide(m_rng), m_wide(m_rng)); }
  tagKFQUATERN quat() { return {m_unit(m_rng), m_unit(m_rng), m_unit(m_rng), m_unit(m_rng)}; }
};

glm::vec3 toGlm(const _D3DVECTOR& v) { return {v.x, v.y, v.z}; }
glm::quat toGlm(const tagKFQUATERN& q) { return glm::quat(q.w, q.x, q.y, q.z); }
_D3DVECTOR fromGlm(const glm::vec3& v) { return vec(v.x, v.y, v.z); }

void expectNear(const glm::quat& want, const tagKFQUATERN& got, float tol) {
  EXPECT_LE(glm::length(glm::vec4(want.w - got.w, want.x - got.x, want.y - got.y, want.z - got.z)), tol);
}

void expectSameMatrix(const glm::mat4& want, const tagKFMATRIX& got, float tol) {
  const float* w = glm::value_ptr(want);
  for (int i = 0; i < 16; ++i) EXPECT_NEAR(w[i], got.m[i], tol) << "element " << i;
}

}  // namespace

TEST_F(GlmPeer, VectorRotateMatchesAngleAxisRotation) {
  for (int i = 0; i < kRounds; ++i) {
    const _D3DVECTOR v = wide(), axis = vec(m_unit(m_rng), m_unit(m_rng), m_unit(m_rng));
    const float angle = m_angle(m_rng);
    _D3DVECTOR out;
    ASSERT_EQ(1, KUVectorRotate(&out, &v, &axis, angle));
    if (glm::length(toGlm(axis)) < 1e-3f) continue;
    const glm::vec3 want = glm::angleAxis(angle, glm::normalize(toGlm(axis))) * toGlm(v);
    ASSERT_TRUE(nearVec(out, fromGlm(want), 1e-4f * (1.0f + glm::length(toGlm(v))))) << i;
  }
}

TEST_F(GlmPeer, QuaternionProductAndInverseMatchGlm) {
  for (int i = 0; i < kRounds; ++i) {
    const tagKFQUATERN a = quat(), b = quat();
    tagKFQUATERN out;
    SCOPED_TRACE(i);
    ASSERT_EQ(1, KUQuatMultiply(&out, &a, &b));
    expectNear(glm::normalize(toGlm(a) * toGlm(b)), out, 1e-5f);  // the product comes normalised
    if (glm::dot(toGlm(a), toGlm(a)) < 1e-2f) continue;
    ASSERT_EQ(1, KUQuatInverse(&a, &out));
    const glm::quat want = glm::inverse(toGlm(a));
    expectNear(want, out, 1e-4f * glm::length(want));
  }
}

TEST_F(GlmPeer, MatricesAndTheirProductWithAPointMatchGlm) {
  const glm::mat4 one(1.0f);
  tagKFMATRIX m;
  for (int i = 0; i < kRounds; ++i) {
    const float angle = m_angle(m_rng);
    const _D3DVECTOR t = wide();
    SCOPED_TRACE(i);
    int (*const makers[])(double, tagKFMATRIX*) = {KUMtxMakeXRot, KUMtxMakeYRot, KUMtxMakeZRot};
    for (int axis = 0; axis < 3; ++axis) {
      ASSERT_EQ(1, makers[axis](angle, &m));
      expectSameMatrix(glm::rotate(one, angle, glm::vec3(axis == 0, axis == 1, axis == 2)), m, 1e-6f);
    }
    ASSERT_EQ(1, KUMtxMakeTranslate(&t, &m));
    expectSameMatrix(glm::translate(one, toGlm(t)), m, 0.0f);
    // Any matrix times a point: the fourth column is not divided out.
    for (float& e : m.m) e = m_unit(m_rng) * 10.0f;
    _D3DVECTOR out;
    ASSERT_EQ(1, KUMtxMultiplyVect(&t, &m, &out));
    const glm::vec4 want = glm::make_mat4(m.m) * glm::vec4(toGlm(t), 1.0f);
    ASSERT_TRUE(nearVec(out, fromGlm(glm::vec3(want)), 5e-3f));
  }
}

TEST_F(GlmPeer, CrossProductMatchesGlmAboveTheCutOff) {
  // Unlike glm::cross, a product with every component within 0.001 is refused and the output kept.
  std::uniform_real_distribution<float> tiny(-0.03f, 0.03f);
  for (int i = 0; i < kRounds; ++i) {
    const _D3DVECTOR a = vec(tiny(m_rng), tiny(m_rng), tiny(m_rng)),
                     b = vec(tiny(m_rng), tiny(m_rng), tiny(m_rng));
    const glm::vec3 want = glm::cross(toGlm(a), toGlm(b)), mag = glm::abs(want);
    const float biggest = glm::max(mag.x, glm::max(mag.y, mag.z));
    if (std::fabs(biggest - 0.001f) < 0.00001f) continue;  // too close to call in float
    _D3DVECTOR out = vec(5, 5, 5);
    EXPECT_EQ(biggest > 0.001f ? 1 : 0, KUVectorCrossProduct(&a, &b, &out));
    EXPECT_TRUE(nearVec(out, biggest > 0.001f ? fromGlm(want) : vec(5, 5, 5), 1e-7f));
  }
}

#else

TEST(GlmPeer, SkippedWithoutGlm) { GTEST_SKIP() << "GLM headers are not available for this target"; }

#endif
