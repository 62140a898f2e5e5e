// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

#include "Scene.h"
#include "TestSupport.h"

namespace kview {
namespace {

using kutil::test::TempDir;
using Lines = std::vector<std::string>;

// A scene as "name category shape behaviour" lines (paths relative to dir), then its problems and markers.
Lines describe(const SceneSource& s, const std::string& dir) {
  auto rel = [&dir](const std::string& p) {
    return p.rfind(dir + "/", 0) == 0 ? p.substr(dir.size() + 1) : p;
  };
  Lines out;
  for (const SceneEntry& e : s.entries) {
    out.push_back(rel(e.path) + " " + categoryName(e.category) + " " + rel(e.shapePath) + " " +
                  rel(e.behaviourPath));
  }
  for (const Problem& p : s.problems) out.push_back("problem " + std::to_string(p.id) + " " + p.file);
  out.push_back("markers " + rel(s.markersPath));
  return out;
}

TEST(ViewScene, FoldersGroupShapesAndBehavioursWithTheirStemAndListsResolveVariables) {
  TempDir dir;
  std::filesystem::create_directory(dir.file("sub"));
  for (const char* name : {"readme.txt", "readme.ksf", "readme.kvc", "door.ksf", "door.kvc", "solo.kvc",
                           ".hidden", "old.TMP", "views.mkl", "sub/d.bmp", "b.wav"}) {
    ASSERT_TRUE(kutil::test::writeFile(dir.file(name), "x\n"));
  }
  EXPECT_EQ(
      (Lines{"b.wav sound  ", "door.ksf scene door.ksf door.kvc", "readme.txt document readme.ksf readme.kvc",
             "solo.kvc document  solo.kvc", "sub folder  ", "markers views.mkl"}),
      describe(listScene(dir.path()), dir.path()));
  ASSERT_TRUE(kutil::test::writeFile(
      dir.file("hall.ksl"), "# the hall\r\n\n?KALDOKWQDIR?readme.txt\nb.wav\n/no/such/c.txt\nsub\\d.bmp\n"));
  EXPECT_EQ((Lines{"readme.txt document readme.ksf readme.kvc", "b.wav sound  ", "sub/d.bmp picture  ",
                   "problem 112 /no/such/c.txt", "markers hall.mkl"}),
            describe(listScene(dir.file("hall.ksl")), dir.path()));
  EXPECT_EQ((Lines{"problem 112 /no/such/folder", "markers "}), describe(listScene("/no/such/folder"), ""));
}

TEST(ViewScene, PathVariablesResolveAgainstTheirFileAndACutNameIsRefused) {
  EXPECT_EQ(resolvePath("/rooms/hall.ksl", "?KALDOKWQDIR?a.txt"), "/rooms/a.txt");
  EXPECT_EQ(resolvePath("/rooms/hall.ksl", "plain.txt"), "plain.txt");
  // The library cuts a result beyond 263 characters and still succeeds: such a name is not used.
  EXPECT_EQ(resolvePath("/" + std::string(256, 'd') + "/door.ksf", "?KALDOKWQDIR?oak.bmp"), "");
  EXPECT_EQ(resolvePath("/rooms/hall.ksl", "?KALDOKWQDIR?" + std::string(300, 'x')), "");
}

TEST(ViewScene, ArrangementKeepsObjectsApartInsideTheRoomAndTheStartClear) {
  for (int count : {1, 2, 7, 16, 30}) {
    SCOPED_TRACE(count);
    CKArrange grid;
    configureGrid(count, &grid);
    const Layout layout = arrange(count, &grid);
    CKFootPrint room;
    ASSERT_TRUE(makeRoom(layout, &room));
    ASSERT_EQ(layout.places.size(), static_cast<std::size_t>(count));
    EXPECT_TRUE(room.FPIsPointInside(&layout.start));
    for (std::size_t i = 0; i < layout.places.size(); ++i) {
      const Placement& p = layout.places[i];
      const _D3DVECTOR at = {p.x, 0, p.z};
      EXPECT_TRUE(room.FPIsPointInside(&at));
      EXPECT_GE(std::min({p.x - layout.minX, layout.maxX - p.x, p.z - layout.minZ, layout.maxZ - p.z}), 2.0f);
      EXPECT_GE(std::hypot(p.x - layout.start.x, p.z - layout.start.z), 3.0f);
      for (std::size_t j = 0; j < i; ++j) {
        EXPECT_GE(std::hypot(p.x - layout.places[j].x, p.z - layout.places[j].z), kSpacing - 1e-4f);
      }
    }
  }
}

}  // namespace
}  // namespace kview
