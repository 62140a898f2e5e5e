// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Gathering into the folder a file already lives in: every copying path meets
// the file as its own target, named in each of the spellings of one table, and
// must leave it whole and in place (the same file, not a rewritten copy).
#include <gtest/gtest.h>

#include <string>

#include "KDecide.h"
#include "KFile.h"
#include "KNormalise.h"
#include "KVGen.h"
#include "NormaliseTestSupport.h"

namespace {

using namespace kutil::test;

class SameFile : public NormaliseTest {
 protected:
  void SetUp() override {
    NormaliseTest::SetUp();
    m_dir = m_root.file("content");
    makeSubDir(m_root, "content");
    makeSubDir(m_root, "scratch");
  }

  // Writes dir/name with its own content and returns its plain path.
  std::string make(const std::string& name) {
    const std::string path = m_dir + kSep + name;
    writeFile(path, "content of " + name);
    return path;
  }

  // The file is still there with its content, and a hard link made before the
  // copy (when the system allows one) still reaches it: it was not replaced.
  void expectIntact(const std::string& name, const Spelling& how) {
    const std::string path = m_dir + kSep + name;
    EXPECT_EQ(readFile(path), "content of " + name) << how.how << ": " << how.path;
    if (how.how == "a hard link") {
      EXPECT_TRUE(sameFile(path, how.path)) << "replaced, not left alone";
    }
  }

  std::vector<Spelling> spellings(const std::string& name) {
    return sameFileSpellings(m_dir, name, m_root.file("scratch"));
  }

  std::string target() const { return m_dir + kSep; }

  TempDir m_root;
  std::string m_dir;
};

TEST_F(SameFile, CopyToTargetFindsTheFileAlreadyThere) {
  make("wood.bmp");
  for (const Spelling& s : spellings("wood.bmp")) {
    char out[264] = "";
    EXPECT_EQ(KUCopyToTarget(s.path.c_str(), target().c_str(), out), 1) << s.how;
    EXPECT_EQ(std::string(out), target() + "wood.bmp");
    expectIntact("wood.bmp", s);
  }
}

TEST_F(SameFile, SkyBoxFacesAreNotCopiedOntoThemselves) {
  for (const char* face : {"fw", "rh", "bk", "lf", "up", "dn"}) make(std::string("sky_") + face + ".bmp");
  for (const Spelling& s : spellings("sky_fw.bmp")) {
    EXPECT_EQ(KUCopySkyBoxFaces(s.path.c_str(), (target() + "sky_fw.bmp").c_str()), 1) << s.how;
    for (const char* face : {"fw", "rh", "bk", "lf", "up", "dn"}) {
      const std::string name = std::string("sky_") + face + ".bmp";
      EXPECT_EQ(readFile(target() + name), "content of " + name) << s.how;
    }
  }
}

TEST_F(SameFile, SceneListGatheredIntoItsOwnFolder) {
  make("hall.kwq");
  for (const Spelling& s : spellings("hall.kwq")) {
    const std::string list = target() + "hall.ksl";
    writeFile(list, s.path + "\n");
    EXPECT_EQ(KUCopyKSLFileParts(list.c_str(), target().c_str()), 1) << s.how;
    EXPECT_EQ(readLines(list), std::vector<std::string>{target() + "hall.kwq"}) << s.how;
    expectIntact("hall.kwq", s);
  }
}

TEST_F(SameFile, AnimationGatheredIntoItsOwnFolder) {
  make("cloud.bmp");
  for (const Spelling& s : spellings("cloud.bmp")) {
    const std::string animation = target() + "sky.anb";
    writeFile(animation, s.path + "\n");
    EXPECT_EQ(KUCopyANBFileParts(animation.c_str(), target().c_str()), 1) << s.how;
    EXPECT_EQ(readLines(animation), std::vector<std::string>{target() + "cloud.bmp"}) << s.how;
    expectIntact("cloud.bmp", s);
  }
}

TEST_F(SameFile, ShapeGatheredIntoItsOwnFolder) {
  make("oak.bmp");
  for (const Spelling& s : spellings("oak.bmp")) {
    const std::string shape = target() + "door.ksf";
    writeShape(shape, s.path, "", "");
    EXPECT_EQ(KUCopyKSFFileParts(shape.c_str(), target().c_str()), 1) << s.how;
    EXPECT_EQ(shapeTextures(shape)[0], target() + "oak.bmp") << s.how;
    expectIntact("oak.bmp", s);
  }
}

TEST_F(SameFile, BehaviourGatheredIntoItsOwnFolder) {
  make("creak.wav");
  for (const Spelling& s : spellings("creak.wav")) {
    const std::string behaviour = target() + "door.kvc";
    writeFile(behaviour, "ON open PLAY \"" + s.path + "\"\n");
    EXPECT_EQ(KUCopyKCVFileParts(behaviour.c_str()), 1) << s.how;
    EXPECT_EQ(rowTexts(behaviour), std::vector<std::string>{target() + "creak.wav"}) << s.how;
    expectIntact("creak.wav", s);
  }
}

}  // namespace
