// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>

#include "Messages.h"
#include "Objects.h"
#include "Picking.h"
#include "TestSupport.h"
#include "Walker.h"

namespace kview {
namespace {

constexpr int kWidth = 800, kHeight = 600;

// The pixel a world point shows at, and the ray back through it: it starts at the eye and meets the
// point; the drawing's clip matrix puts the point at the same pixel, ever deeper for further points.
TEST(ViewPicking, WorldToPixelToRayIsTheIdentityAndTheDrawingAgrees) {
  Walker w;
  ViewerState s;
  s.position = {1.0f, 1.6f, -4.0f};
  s.heading = 0.3f, s.pitch = 0.15f, s.roll = 0.1f;  // turned, looking up, rolled: no axis lines up
  w.setState(s);
  w.aim(kWidth, kHeight);
  const std::array<float, 16> m = clipMatrix(w.camera(), kWidth, kHeight);
  float lastDepth = -1.0f;
  for (const _D3DVECTOR p : {_D3DVECTOR{1, 1.5f, 0}, {3, 1, 2}, {-2, 2.5f, 8}, {9, 0, 40}}) {
    float clip[4], x = 0, y = 0;
    for (int r = 0; r < 4; ++r) clip[r] = m[r] * p.x + m[4 + r] * p.y + m[8 + r] * p.z + m[12 + r];
    ASSERT_TRUE(worldToPixel(w.camera(), kWidth, kHeight, p, &x, &y));
    EXPECT_NEAR((clip[0] / clip[3] + 1.0f) * 0.5f * kWidth, x, 0.05f);
    EXPECT_NEAR((1.0f - clip[1] / clip[3]) * 0.5f * kHeight, y, 0.05f);
    EXPECT_GT(clip[2] / clip[3], lastDepth);
    EXPECT_LT(clip[2] / clip[3], 1.0f);
    lastDepth = clip[2] / clip[3];
    _D3DVECTOR origin{}, d{}, off{};
    ASSERT_TRUE(pixelRay(w.camera(), kWidth, kHeight, x, y, &origin, &d));
    EXPECT_NEAR(std::hypot(origin.x - 1.0f, origin.y - 1.6f, origin.z + 4.0f), 0.0f, 1e-3f);
    const _D3DVECTOR to = {p.x - origin.x, p.y - origin.y, p.z - origin.z};
    KUVectorCrossProduct(&to, &d, &off);
    EXPECT_LT(std::hypot(off.x, off.y, off.z), 2e-3f);
  }
}

TEST(ViewPicking, APickFindsTheObjectUnderThePixelAndMarksTheFaceHit) {
  kutil::test::TempDir dir;
  Messages messages;
  messages.setEcho(false);
  std::vector<std::unique_ptr<SceneObject>> objects;
  for (const char* name : {"a.txt", "b.wav"}) {
    kutil::test::writeFile(dir.file(name), "x\n");
    objects.push_back(std::make_unique<SceneObject>());
    objects.back()->load({dir.file(name), name, categoryOf(name, false), "", ""}, messages);
  }
  objects[0]->scale = 1.5f;
  objects[0]->place(0.0f, 5.0f, 0.7f);
  objects[1]->place(3.0f, 5.0f, 0.0f);
  Walker w;
  w.reset({0.0f, 1.6f, 0.0f}, 0.0f);
  w.aim(kWidth, kHeight);
  auto pickAt = [&](const _D3DVECTOR& p) {
    float x = 0, y = 0;
    _D3DVECTOR origin{}, d{};
    if (!worldToPixel(w.camera(), kWidth, kHeight, p, &x, &y) ||
        !pixelRay(w.camera(), kWidth, kHeight, x, y, &origin, &d)) {
      return Pick();
    }
    return pickObject(objects, origin, d);
  };
  const Pick a = pickAt({0.0f, 0.8f, 5.0f});
  EXPECT_EQ(a.object, 0);
  EXPECT_GT(a.distance, 3.0f);
  EXPECT_LT(a.distance, 5.0f);
  EXPECT_EQ(pickAt({3.0f, 0.5f, 5.0f}).object, 1);
  EXPECT_EQ(pickAt({0.0f, 6.0f, 5.0f}).object, -1);  // above both
  markHitFace(*objects[0], a.face);
  CKVGen& gen = objects[0]->gen;
  EXPECT_EQ(1, a.face.plane < 0     ? gen.KVIsSeedFaceHit()
               : a.face.vertex >= 0 ? gen.KVSelectHitFaceByNumber(1)
                                    : gen.KVIsGenFaceHit());
}

}  // namespace
}  // namespace kview
