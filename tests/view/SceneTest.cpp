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
using kutil::test::writeFile;

const SceneEntry* entryNamed(const SceneSource& s, const std::string& name) {
  for (const SceneEntry& e : s.entries) {
    if (e.name == name) return &e;
  }
  return nullptr;
}

TEST(ViewScene, FolderGroupsShapeAndBehaviourFilesWithTheFileOfTheirStem) {
  TempDir dir;
  for (const char* name : {"readme.txt", "readme.ksf", "readme.kvc", "door.ksf", "door.kvc", "solo.kvc",
                           ".hidden", "old.TMP", "views.mkl"}) {
    ASSERT_TRUE(writeFile(dir.file(name), "x\n"));
  }
  std::filesystem::create_directory(dir.file("sub"));
  const SceneSource s = listScene(dir.path());
  ASSERT_EQ(s.entries.size(), 4u);
  EXPECT_EQ(s.entries[0].name, "door.ksf");  // name order
  const SceneEntry* readme = entryNamed(s, "readme.txt");
  ASSERT_NE(readme, nullptr);
  EXPECT_EQ(readme->shapePath, dir.file("readme.ksf"));
  EXPECT_EQ(readme->behaviourPath, dir.file("readme.kvc"));
  EXPECT_EQ(readme->category, Category::Document);
  const SceneEntry* door = entryNamed(s, "door.ksf");
  EXPECT_EQ(door->shapePath, dir.file("door.ksf"));
  EXPECT_EQ(door->behaviourPath, dir.file("door.kvc"));
  EXPECT_EQ(door->category, Category::Scene);
  const SceneEntry* solo = entryNamed(s, "solo.kvc");
  ASSERT_NE(solo, nullptr);
  EXPECT_EQ(solo->behaviourPath, dir.file("solo.kvc"));
  EXPECT_TRUE(solo->shapePath.empty());
  const SceneEntry* sub = entryNamed(s, "sub");
  ASSERT_NE(sub, nullptr);
  EXPECT_EQ(sub->category, Category::Folder);
  EXPECT_EQ(s.markersPath, dir.file("views.mkl"));
  EXPECT_TRUE(s.problems.empty());
}

TEST(ViewScene, SceneListResolvesItsVariablesAndReportsMissingFiles) {
  TempDir dir;
  std::filesystem::create_directory(dir.file("sub"));
  for (const char* name : {"a.txt", "b.wav", "sub/d.bmp"}) ASSERT_TRUE(writeFile(dir.file(name), "x\n"));
  ASSERT_TRUE(writeFile(dir.file("hall.ksl"),
                        "# the hall\r\n\n?KALDOKWQDIR?a.txt\nb.wav\n/no/such/c.txt\nsub\\d.bmp\n"));
  const SceneSource s = listScene(dir.file("hall.ksl"));
  ASSERT_EQ(s.entries.size(), 3u);
  EXPECT_EQ(s.entries[0].path, dir.file("a.txt"));
  EXPECT_EQ(s.entries[1].category, Category::Sound);
  EXPECT_EQ(s.entries[2].category, Category::Picture);
  ASSERT_EQ(s.problems.size(), 1u);
  EXPECT_EQ(s.problems[0].id, 112u);
  EXPECT_EQ(s.problems[0].file, "/no/such/c.txt");
  EXPECT_EQ(s.markersPath, dir.file("hall.mkl"));
}

TEST(ViewScene, PathVariablesResolveAgainstTheirFileAndACutNameIsRefused) {
  EXPECT_EQ(resolvePath("/rooms/hall.ksl", "?KALDOKWQDIR?a.txt"), "/rooms/a.txt");
  EXPECT_EQ(resolvePath("/rooms/hall.ksl", "plain.txt"), "plain.txt");
  // The library cuts a result beyond 263 characters and still succeeds: such a name is not used.
  EXPECT_EQ(resolvePath("/" + std::string(256, 'd') + "/door.ksf", "?KALDOKWQDIR?oak.bmp"), "");
  EXPECT_EQ(resolvePath("/rooms/hall.ksl", "?KALDOKWQDIR?" + std::string(300, 'x')), "");
}

TEST(ViewScene, MissingPathGivesAnEmptySceneAndAProblem) {
  const SceneSource s = listScene("/no/such/folder");
  EXPECT_TRUE(s.entries.empty());
  ASSERT_EQ(s.problems.size(), 1u);
  EXPECT_EQ(s.problems[0].id, 112u);
}

TEST(ViewScene, ArrangementKeepsObjectsApartInsideTheRoomAndTheStartClear) {
  for (int count : {1, 2, 7, 30}) {
    SCOPED_TRACE(count);
    CKArrange grid;
    configureGrid(count, &grid);
    const Layout layout = arrange(count, &grid);
    CKFootPrint room;
    ASSERT_TRUE(makeRoom(layout, &room));
    ASSERT_EQ(layout.places.size(), static_cast<std::size_t>(count));
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
    EXPECT_TRUE(room.FPIsPointInside(&layout.start));
  }
}

TEST(ViewScene, ColumnStepPutsAnAisleAfterEveryTwoColumns) {
  CKArrange grid;
  configureGrid(16, &grid);  // four a row
  const Layout layout = arrange(16, &grid);
  EXPECT_NEAR(layout.places[1].x - layout.places[0].x, kSpacing, 1e-4f);
  EXPECT_NEAR(layout.places[2].x - layout.places[1].x, kSpacing + 1.0f, 1e-4f);
  EXPECT_NEAR(layout.places[0].x + layout.places[3].x, 0.0f, 1e-4f);  // centred on x = 0
}

}  // namespace
}  // namespace kview
