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
  const std::string behaviour = dir + "door.kvc";
  // Each path writes the spelling into its container, gathers into dir and reads the name back.
  std::string spelling;
  char copied[264] = "";
  const struct {
    const char* file;
    std::function<void(const std::string&)> write;
    std::function<int()> gather;
    std::function<std::string()> read;
  } paths[] = {
      {"wood.bmp", [&](const std::string& s) { spelling = s; },
       [&] { return KUCopyToTarget(spelling.c_str(), dir.c_str(), copied); }, [&] { return copied; }},
      {"hall.kwq", [&](const std::string& s) { writeFile(list, s + "\n"); },
       [&] { return KUCopyKSLFileParts(list.c_str(), dir.c_str()); }, [&] { return readLines(list).at(0); }},
      {"cloud.bmp", [&](const std::string& s) { writeFile(animation, s + "\n"); },
       [&] { return KUCopyANBFileParts(animation.c_str(), dir.c_str()); },
       [&] { return readLines(animation).at(0); }},
      {"oak.bmp", [&](const std::string& s) { writeShape(shape, s, "", ""); },
       [&] { return KUCopyKSFFileParts(shape.c_str(), dir.c_str()); },
       [&] { return shapeTextures(shape)[0]; }},
      {"creak.wav", [&](const std::string& s) { writeFile(behaviour, "ON open PLAY \"" + s + "\"\n"); },
       [&] { return KUCopyKCVFileParts(behaviour.c_str()); }, [&] { return rowTexts(behaviour).at(0); }},
  };
  for (const auto& p : paths) {
    const std::string file = p.file;
    writeFile(dir + file, "content of " + file);
    for (const Spelling& s : sameFileSpellings(root.file("content"), file, scratch)) {
      SCOPED_TRACE(s.how + ": " + s.path);
      p.write(s.path);
      EXPECT_EQ(p.gather(), 1);
      EXPECT_EQ(p.read(), dir + file);
      EXPECT_EQ(readFile(dir + file), "content of " + file);
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
