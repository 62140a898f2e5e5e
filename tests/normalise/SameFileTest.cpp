// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Gathering into the folder a file already lives in: every copying path meets
// the file as its own target, named in each of the spellings of one table, and
// must leave it whole and in place (the same file, not a rewritten copy).
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "KDecide.h"
#include "KFile.h"
#include "KNormalise.h"
#include "KVGen.h"
#include "NormaliseTestSupport.h"

namespace {

using namespace kutil::test;

class SameFile : public NormaliseTest {};

TEST_F(SameFile, EveryGatheringPathLeavesAFileThatIsItsOwnTargetWhole) {
  TempDir root;
  const std::string dir = makeSubDir(root, "content"),
                    scratch = (makeSubDir(root, "scratch"), root.file("scratch"));
  const std::string list = dir + "hall.ksl", animation = dir + "sky.anb", shape = dir + "door.ksf";
  // Each path gathers the file named by spelling into dir and gives the name it now has.
  using Gather = std::function<int(const std::string& spelling, std::string* name)>;
  const std::pair<const char*, Gather> paths[] = {
      {"wood.bmp",
       [&](const std::string& s, std::string* name) {
         char out[264] = "";
         const int r = KUCopyToTarget(s.c_str(), dir.c_str(), out);
         *name = out;
         return r;
       }},
      {"hall.kwq",
       [&](const std::string& s, std::string* name) {
         writeFile(list, s + "\n");
         const int r = KUCopyKSLFileParts(list.c_str(), dir.c_str());
         *name = readLines(list).at(0);
         return r;
       }},
      {"cloud.bmp",
       [&](const std::string& s, std::string* name) {
         writeFile(animation, s + "\n");
         const int r = KUCopyANBFileParts(animation.c_str(), dir.c_str());
         *name = readLines(animation).at(0);
         return r;
       }},
      {"oak.bmp",
       [&](const std::string& s, std::string* name) {
         writeShape(shape, s, "", "");
         const int r = KUCopyKSFFileParts(shape.c_str(), dir.c_str());
         *name = shapeTextures(shape)[0];
         return r;
       }},
      {"creak.wav",
       [&](const std::string& s, std::string* name) {
         writeFile(dir + "door.kvc", "ON open PLAY \"" + s + "\"\n");
         const int r = KUCopyKCVFileParts((dir + "door.kvc").c_str());
         *name = rowTexts(dir + "door.kvc").at(0);
         return r;
       }},
  };
  for (const auto& [file, gather] : paths) {
    writeFile(dir + file, std::string("content of ") + file);
    for (const Spelling& s : sameFileSpellings(root.file("content"), file, scratch)) {
      SCOPED_TRACE(s.how + ": " + s.path);
      std::string name;
      EXPECT_EQ(gather(s.path, &name), 1);
      EXPECT_EQ(name, dir + file);
      EXPECT_EQ(readFile(dir + file), std::string("content of ") + file);
      // A hard link made before the copy still reaches the file: it was not replaced.
      EXPECT_TRUE(s.how != "a hard link" || sameFile(dir + file, s.path));
    }
  }
  for (const char* face : {"fw", "rh", "bk", "lf", "up", "dn"}) writeFile(dir + "sky_" + face + ".bmp", face);
  for (const Spelling& s : sameFileSpellings(root.file("content"), "sky_fw.bmp", scratch)) {
    EXPECT_EQ(KUCopySkyBoxFaces(s.path.c_str(), (dir + "sky_fw.bmp").c_str()), 1) << s.how;
    for (const char* face : {"fw", "rh", "bk", "lf", "up", "dn"})
      EXPECT_EQ(readFile(dir + "sky_" + face + ".bmp"), face) << s.how;
  }
}

}  // namespace
