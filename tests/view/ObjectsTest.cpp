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

using kutil::test::TempDir;
using kutil::test::writeFile;

constexpr float kTwoPi = 6.2831853f;

class ViewObjects : public ::testing::Test {
 protected:
  ViewObjects() { messages.setEcho(false); }

  // A file of the given name in the scratch folder, loaded as an object at the origin.
  std::unique_ptr<SceneObject> make(const std::string& name, const std::string& shape = "",
                                    const std::string& behaviour = "") {
    if (!std::filesystem::exists(dir.file(name))) writeFile(dir.file(name), "x\n");
    SceneEntry e{dir.file(name), name, categoryOf(name, false), shape.empty() ? "" : dir.file(shape),
                 behaviour.empty() ? "" : dir.file(behaviour)};
    auto object = std::make_unique<SceneObject>();
    object->load(e, messages);
    object->place(0.0f, 0.0f, 0.0f);
    return object;
  }

  // Ticks the behaviour n times after pushing code, collecting what comes out.
  std::vector<std::pair<int, float>> run(SceneObject& o, int code, int ticks, std::string* text = nullptr) {
    o.input.FIPushFIFOCommand(code, 1.0f, o.name.c_str(), 0);
    std::vector<std::pair<int, float>> out;
    int c = 0, flags = 0;
    float m = 0.0f;
    char t[KFI_TEXT_LEN + 1];
    for (int i = 0; i < ticks; ++i) {
      o.behaviour.DEClock();
      while (o.output.FIPopFIFOCommand(&c, &m, t, &flags)) {
        out.push_back({c, m});
        if (text) *text = t;
      }
    }
    return out;
  }

  TempDir dir;
  Messages messages;
};

TEST_F(ViewObjects, EveryStockSolidFitsItsCellStandingOnTheFloor) {
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
    EXPECT_NEAR(m.min.x + m.max.x, 0.0f, 1e-4f);
    EXPECT_NEAR(m.min.z + m.max.z, 0.0f, 1e-4f);
    const _D3DVECTOR centre = {0, 0, 0};
    EXPECT_TRUE(o->footprint.FPIsPointInside(&centre));
    EXPECT_GT(o->reach, 0.3f);
  }
}

TEST_F(ViewObjects, FootprintFollowsPositionHeadingAndZoom) {
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
  float turned = 0.0f;
  const auto turns = run(*o, KAR_EVENT_SELECT, 40);
  for (const auto& c : turns) {
    EXPECT_EQ(c.first, KAR_MOTION_TURNLEFT);
    turned += c.second;
  }
  EXPECT_EQ(turns.size(), 30u);
  EXPECT_NEAR(turned, kTwoPi, 1e-3f);
  std::string text;
  const auto opened = run(*o, KAR_EVENT_OPEN, 2, &text);
  ASSERT_EQ(opened.size(), 2u);
  EXPECT_EQ(opened[0].first, KAR_EVENT_OPEN);  // the ON row's PING carries its event's code
  EXPECT_EQ(opened[1].first, KAR_CMD_PLAY);
  EXPECT_EQ(text, "?KALDOKWQDIR?song.wav");
}

TEST_F(ViewObjects, BrokenFilesAreReportedAndFallBackToStock) {
  writeFile(dir.file("bad.kvc"), "ON select PING \"fine\"\nON open MOVE SIDEWAYS BY 2\n");
  writeFile(dir.file("bad.ksf"), "[VGEN]\n[SED]\n[SEX][6]1.0000\n[CMD][1]3\n[DES]\n[NEGV]\n");
  auto o = make("bad.txt", "bad.ksf", "bad.kvc");
  ASSERT_EQ(messages.shown().size(), 2u);
  EXPECT_EQ(messages.shown()[0].id, kMsgShape);
  EXPECT_EQ(messages.shown()[1].id, kMsgBehaviour);
  EXPECT_NE(messages.shown()[1].detail.find("6007"), std::string::npos);
  EXPECT_EQ(o->shapeSource, "stock");
  EXPECT_EQ(o->behaviourSource, "stock");
  EXPECT_FALSE(o->mesh.vertices.empty());
  // The rows read before the failure are dropped with the file: select turns, as the stock does.
  const auto out = run(*o, KAR_EVENT_SELECT, 1);
  ASSERT_EQ(out.size(), 1u);
  EXPECT_EQ(out[0].first, KAR_MOTION_TURNLEFT);
}

TEST_F(ViewObjects, ShapeFileIsDrawnWithItsReadableTextures) {
  std::filesystem::copy_file(kutil::test::testDataPath("view/data/kinds/photo.bmp"), dir.file("wood.bmp"));
  writeFile(dir.file("box.ksf"),
            "[VGEN]\n[FPT][21]?KALDOKWQDIR?wood.bmp\n[BPT][21]?KALDOKWQDIR?none.bmp\n"
            "[SED]\n[SEX][6]0.0000\n[SEY][6]0.0000\n[DES]\n[SED]\n[SEX][6]1.0000\n[SEY][6]0.0000\n[DES]\n"
            "[SED]\n[SEX][6]1.0000\n[SEY][6]1.0000\n[DES]\n[SED]\n[SEX][6]0.0000\n[SEY][6]1.0000\n[DES]\n"
            "[INS]\n[CMD][1]3\n[IMG][6]0.5000\n[SNI]\n[NEGV]\n");
  auto o = make("box.ksf", "box.ksf");
  EXPECT_EQ(o->shapeSource, dir.file("box.ksf"));
  EXPECT_EQ(o->mesh.count[kFrontGroup], 6);  // the square's two triangles on each end
  EXPECT_EQ(o->mesh.count[kBackGroup], 6);
  EXPECT_EQ(o->mesh.count[kSidesGroup], 24);  // four side faces of two triangles
  EXPECT_EQ(o->mesh.textures[kFrontGroup], dir.file("wood.bmp"));
  EXPECT_EQ(o->mesh.textures[kBackGroup], "");
  ASSERT_EQ(messages.shown().size(), 1u);
  EXPECT_EQ(messages.shown()[0].id, kMsgTexture);
  EXPECT_EQ(messages.shown()[0].file, dir.file("none.bmp"));
}

TEST_F(ViewObjects, AHugeSeedIsDrawnByItsSidesAloneRatherThanHoldingTheRoomUp) {
  std::string text = "[VGEN]\n";
  for (int i = 0; i < 400; ++i) {
    char block[128];
    std::snprintf(block, sizeof(block), "[SED]\n[SEX][7]%+.4f\n[SEY][7]%+.4f\n[DES]\n", std::cos(i * 0.0157f),
                  std::sin(i * 0.0157f));
    text += block;
  }
  writeFile(dir.file("disc.ksf"), text + "[INS]\n[CMD][1]3\n[IMG][6]0.2000\n[SNI]\n[NEGV]\n");
  auto o = make("disc.ksf", "disc.ksf");
  EXPECT_EQ(o->shapeSource, dir.file("disc.ksf"));
  EXPECT_EQ(o->mesh.count[kFrontGroup], 0);
  EXPECT_EQ(o->mesh.count[kSidesGroup], 400 * 6);
  ASSERT_EQ(messages.shown().size(), 1u);
  EXPECT_EQ(messages.shown()[0].id, kMsgShape);
}

TEST(ViewCommandNames, CodesReadAsTheirKeywords) {
  EXPECT_EQ(commandName(KAR_MOTION_FORWARD), "FORWARD");
  EXPECT_EQ(commandName(KAR_EVENT_OPEN), "open");
  EXPECT_EQ(commandName(KAR_CMD_PLAY), "PLAY");
  EXPECT_EQ(commandName(KAR_CMD_RUN_NOTEXT), "RUN");
  EXPECT_EQ(commandName(KAR_CMD_ZOOMOUT), "ZOOMOUT");
  EXPECT_EQ(commandName(KAR_CMD_RESET), "RESET");
  EXPECT_EQ(commandName(999), "999");
}

}  // namespace
}  // namespace kview
