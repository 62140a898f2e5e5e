// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// A content tree gathered into a package, made portable, moved elsewhere and
// resolved there: every name must open again.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "KDecide.h"
#include "KFile.h"
#include "KNormalise.h"
#include "KPathVars.h"
#include "KVGen.h"
#include "NormaliseTestSupport.h"

namespace {

namespace fs = std::filesystem;
using namespace kutil::test;
using Texts = std::vector<std::string>;

constexpr const char* kFaces[] = {"fw", "rh", "bk", "lf", "up", "dn"};

// Every line of every file below dir that mentions text.
Texts linesMentioning(const std::string& dir, const std::string& text) {
  Texts found;
  for (const auto& entry : fs::directory_iterator(dir))
    for (const std::string& line : readLines(entry.path().string()))
      if (line.find(text) != std::string::npos) found.push_back(entry.path().string() + ": " + line);
  return found;
}

class Package : public NormaliseTest {};

TEST_F(Package, GatherRelativiseMoveAndResolve) {
  TempDir root;
  std::string behave, shapes, tex, sky, sounds, scenes, home, package;
  const std::pair<std::string*, const char*> dirs[] = {
      {&behave, "behave"}, {&shapes, "shapes"}, {&tex, "tex"},    {&sky, "sky"},
      {&sounds, "sounds"}, {&scenes, "scenes"}, {&home, "kaldo"}, {&package, "package"}};
  for (const auto& [dir, name] : dirs) *dir = makeSubDir(root, name);
  ASSERT_EQ(KUSetNormalisationVariables("/w", "/w/s", "/p", home.substr(0, home.size() - 1).c_str()), 1);

  for (const char* face : kFaces) writeFile(sky + "sky_" + face + ".bmp", std::string("face ") + face);
  writeFile(tex + "wood.bmp", "wood");
  writeFile(tex + "cloud.bmp", "cloud");
  writeFile(tex + "sky.anb", "# sky animation\n" + sky + "sky_fw.bmp\n\n" + tex + "cloud.bmp\n");
  writeShape(shapes + "box.ksf", tex + "wood.bmp", tex + "sky.anb", "");
  writeFile(sounds + "bump.wav", "bump");
  writeFile(home + "viewer.exe", "viewer");
  writeFile(behave + "room.kvc",
            "ON select LOAD \"" + behave + "door.kvc\"\nON open PLAY \"" + sounds + "bump.wav\"\n");
  writeFile(behave + "door.kvc", "ON select REPLACE \"" + shapes + "box.ksf\"\nON open LOAD \"" + behave +
                                     "room.kvc\"\nON collide PLAY \"" + sounds +
                                     "bump.wav\"\nON ping CALL spin\nIN spin PING hall\n");
  writeFile(scenes + "hall.ksl", "# hall\n\n" + behave + "door.kvc\n" + home + "viewer.exe\n");

  // Gather: the list, then the behaviour files with their shapes and animations.
  char list[264] = "";
  ASSERT_EQ(
      seq({KUCopyToTarget((scenes + "hall.ksl").c_str(), package.c_str(), list),
           KUCopyKSLFileParts(list, package.c_str()), KUCopyKCVFileParts((package + "door.kvc").c_str())}),
      "1 1 1");

  // Relativise: no name in the package refers to the content tree any more.
  ASSERT_EQ(seq({KUConvertKSLToRelative(list), KUConvertKCVToRelative((package + "door.kvc").c_str()),
                 KUIsKSLFileNormalised(list), KUIsKCVFileNormalised((package + "room.kvc").c_str()),
                 KUIsKSFFileNormalised((package + "box.ksf").c_str())}),
            "1 1 1 1 1");
  EXPECT_EQ(readLines(list), (Texts{"# hall", "", "?KALDOKWQDIR?door.kvc",
                                    "?KALDOHOMEDIR?" + std::string(1, kSep) + "viewer.exe"}));
  EXPECT_EQ(readLines(package + "sky.anb"),
            (Texts{"# sky animation", "?KALDOKWQDIR?sky_fw.bmp", "", "?KALDOKWQDIR?cloud.bmp"}));
  EXPECT_EQ(linesMentioning(package, root.path()), Texts{});

  // Move the package away and drop the content tree.
  TempDir elsewhere;
  const std::string arrived = elsewhere.file("arrived") + kSep;
  fs::rename(fs::path(package).parent_path(), elsewhere.file("arrived"));
  for (const char* dir : {"behave", "shapes", "tex", "sky", "sounds", "scenes"})
    fs::remove_all(root.file(dir));

  // Resolve against the new place.
  const std::string movedList = arrived + "hall.ksl";
  ASSERT_EQ(KUDeRelativiseKSL(movedList.c_str(), "?KALDOKWQDIR?", arrived.c_str()), 1);
  ASSERT_EQ(KUDeRelativiseKCV((arrived + "door.kvc").c_str()), 1);
  ASSERT_EQ(KUDeRelativiseKCV((arrived + "room.kvc").c_str()), 1);

  EXPECT_EQ(readLines(movedList), (Texts{"# hall", "", arrived + "door.kvc", home + "viewer.exe"}));
  EXPECT_EQ(rowTexts(arrived + "door.kvc"),
            (Texts{arrived + "box.ksf", arrived + "room.kvc", arrived + "bump.wav", "spin", "hall"}));
  EXPECT_EQ(rowTexts(arrived + "room.kvc"), (Texts{arrived + "door.kvc", arrived + "bump.wav"}));
  EXPECT_EQ(shapeTextures(arrived + "box.ksf"), (Texts{arrived + "wood.bmp", arrived + "sky.anb", ""}));
  EXPECT_EQ(readLines(arrived + "sky.anb"),
            (Texts{"# sky animation", arrived + "sky_fw.bmp", "", arrived + "cloud.bmp"}));
  // Every name above opens: the gathering copied what it renamed.
  Texts names = {home + "viewer.exe", arrived + "wood.bmp", arrived + "cloud.bmp", arrived + "bump.wav"};
  for (const char* face : kFaces) names.push_back(arrived + "sky_" + face + ".bmp");
  for (const std::string& name : names) EXPECT_EQ(KUIsFileReadable(name.c_str()), 1) << name;
  EXPECT_EQ(readFile(arrived + "sky_dn.bmp"), "face dn");
}

}  // namespace
