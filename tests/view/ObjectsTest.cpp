// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <string>

#include "Messages.h"
#include "Objects.h"
#include "TestSupport.h"

namespace kview {
namespace {

using kutil::test::writeFile;
using Lines = std::vector<std::string>;

class ViewObjects : public ::testing::Test {
 protected:
  ViewObjects() { messages.setEcho(false); }
  // A file of the given name in the scratch folder, loaded as an object at the origin.
  std::unique_ptr<SceneObject> make(const std::string& name, const std::string& shape = "",
                                    const std::string& behaviour = "") {
    if (!std::filesystem::exists(dir.file(name))) writeFile(dir.file(name), "x\n");
    auto object = std::make_unique<SceneObject>();
    object->load({dir.file(name), name, categoryOf(name, false), shape.empty() ? "" : dir.file(shape),
                  behaviour.empty() ? "" : dir.file(behaviour)},
                 messages);
    object->place(0.0f, 0.0f, 0.0f);
    return object;
  }
  // Ticks the behaviour n times after pushing code: what comes out, as "command magnitude text".
  Lines run(SceneObject& o, int code, int ticks) {
    o.input.FIPushFIFOCommand(code, 1.0f, o.name.c_str(), 0);
    Lines out;
    int c = 0, flags = 0;
    float m = 0.0f;
    char t[KFI_TEXT_LEN + 1], magnitude[32];
    for (int i = 0; i < ticks; ++i) {
      o.behaviour.DEClock();
      while (o.output.FIPopFIFOCommand(&c, &m, t, &flags)) {
        std::snprintf(magnitude, sizeof magnitude, "%.4f", m);
        out.push_back(commandName(c) + " " + magnitude + " " + t);
      }
    }
    return out;
  }
  // The messages shown so far, as "id file".
  Lines shown() const {
    Lines out;
    for (const Message& m : messages.shown()) out.push_back(std::to_string(m.id) + " " + m.file);
    return out;
  }

  kutil::test::TempDir dir;
  Messages messages;
};

TEST_F(ViewObjects, EveryStockSolidFitsItsCellStandingOnTheFloorAndItsFootprintFollowsIt) {
  for (const char* name : {"tool.exe", "notes.txt", "photo.bmp", "song.wav", "hall.ksl", "readme"}) {
    SCOPED_TRACE(name);
    auto o = make(name);
    const Mesh& m = o->mesh;
    EXPECT_EQ(o->shapeSource, "stock");
    ASSERT_FALSE(m.vertices.empty());
    EXPECT_EQ(m.vertices.size(), 3 * m.tags.size());
    EXPECT_NEAR(m.min.y, 0.0f, 1e-4f);
    EXPECT_LE(m.max.y, kCellHeight + 1e-4f);
    EXPECT_LE(std::max(m.max.x - m.min.x, m.max.z - m.min.z), kCellWidth + 1e-4f);
    EXPECT_NEAR(std::hypot(m.min.x + m.max.x, m.min.z + m.max.z), 0.0f, 1e-4f);  // centred
    const _D3DVECTOR centre = {0, 0, 0};
    EXPECT_TRUE(o->footprint.FPIsPointInside(&centre));
    EXPECT_GT(o->reach, 0.3f);
  }
  auto o = make("notes.txt");
  const float half = o->mesh.max.x;  // the sheet is wider than it is deep
  o->scale = 2.0f;
  o->place(5.0f, -3.0f, 1.5707963f);
  const _D3DVECTOR alongZ = {5.0f, 0, -3.0f + 1.9f * half}, alongX = {5.0f + 1.9f * half, 0, -3.0f};
  EXPECT_TRUE(o->footprint.FPIsPointInside(&alongZ));  // turned a quarter: its width now runs along z
  EXPECT_FALSE(o->footprint.FPIsPointInside(&alongX));
  EXPECT_NEAR(o->reach, 2.0f * std::hypot(o->mesh.max.x, o->mesh.max.z), 1e-3f);
}

TEST_F(ViewObjects, StockBehaviourTurnsOnceRoundOnSelectAndAsksForTheFileOnOpen) {
  auto o = make("song.wav");
  EXPECT_EQ(Lines(30, "TURNLEFT 0.2094 "), run(*o, KAR_EVENT_SELECT, 40));  // 30 steps of 2 pi / 30
  // The ON row's PING carries its event's code.
  EXPECT_EQ((Lines{"open 1.0000 open", "PLAY 1.0000 ?KALDOKWQDIR?song.wav"}), run(*o, KAR_EVENT_OPEN, 2));
}

TEST_F(ViewObjects, ShapeFilesAreDrawnWithTheirReadableTextures) {
  std::filesystem::copy_file(kutil::test::testDataPath("view/data/kinds/photo.bmp"), dir.file("wood.bmp"));
  writeFile(dir.file("box.ksf"),
            "[VGEN]\n[FPT][21]?KALDOKWQDIR?wood.bmp\n[BPT][21]?KALDOKWQDIR?none.bmp\n"
            "[SED]\n[SEX][6]0.0000\n[SEY][6]0.0000\n[DES]\n[SED]\n[SEX][6]1.0000\n[SEY][6]0.0000\n[DES]\n"
            "[SED]\n[SEX][6]1.0000\n[SEY][6]1.0000\n[DES]\n[SED]\n[SEX][6]0.0000\n[SEY][6]1.0000\n[DES]\n"
            "[INS]\n[CMD][1]3\n[IMG][6]0.5000\n[SNI]\n[NEGV]\n");
  auto box = make("box.ksf", "box.ksf");
  EXPECT_EQ(box->shapeSource, dir.file("box.ksf"));
  // The square's two triangles on each end, four side faces of two triangles.
  const Mesh& m = box->mesh;
  EXPECT_EQ((std::vector<int>{6, 6, 24}),
            (std::vector<int>{m.count[kFrontGroup], m.count[kBackGroup], m.count[kSidesGroup]}));
  EXPECT_EQ((Lines{dir.file("wood.bmp"), ""}), (Lines{m.textures[kFrontGroup], m.textures[kBackGroup]}));
  EXPECT_EQ((Lines{"118 " + dir.file("none.bmp")}), shown());
}

}  // namespace
}  // namespace kview
