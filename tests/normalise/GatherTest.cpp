// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>

#include "KNormalise.h"
#include "KText.h"
#include "TestSupport.h"

namespace {

using namespace kutil::test;

TEST(KUCopyToTarget, SkipsProgramsAndVariablisedNames) {
  TempDir target;
  const std::string to = target.file("");
  char out[264] = "keep";
  for (const char* name : {"?KALDOKWQDIR?a.bmp", "tool.exe", "lib.DLL", ""})
    EXPECT_EQ(KUCopyToTarget(name, to.c_str(), out), 1) << name;
  EXPECT_EQ(KUCopyToTarget("a.bmp", "", out), 1);
  EXPECT_STREQ(out, "keep");
}

TEST(KUCopyToTarget, CopiesOnceNeverOverwritesAndNamesTheSourceInTheComment) {
  TempDir source, target;
  const std::string to = target.file(""), bmp = source.file("photo.bmp");
  writeFile(bmp, "BM-original");
  char out[264] = "";
  ASSERT_EQ(KUCopyToTarget(bmp.c_str(), to.c_str(), out), 1);
  EXPECT_EQ(std::string(out), to + "photo.bmp");
  EXPECT_EQ(readFile(out), "BM-original");
  char comment[264] = "";
  KUGetComment(comment);
  EXPECT_EQ(std::string(comment), bmp);
  writeFile(bmp, "BM-changed");
  ASSERT_EQ(KUCopyToTarget(bmp.c_str(), to.c_str(), out), 1);
  EXPECT_EQ(readFile(out), "BM-original");

  const std::string missing = source.file("gone.wav");  // fails unless already gathered
  EXPECT_EQ(KUCopyToTarget(missing.c_str(), to.c_str(), out), 0);
  EXPECT_EQ(std::string(out), to + "gone.wav");
  writeFile(to + "gone.wav", "RIFF");
  EXPECT_EQ(KUCopyToTarget(missing.c_str(), to.c_str(), out), 1);
}

TEST(KUCopyToTarget, SkyFaceBringsItsCompanions) {
  TempDir source, target;
  const std::string to = target.file("");
  for (const char* face : {"fw", "rh", "bk", "lf", "up"})
    writeFile(source.file(std::string("sky_") + face + ".bmp"), face);
  writeFile(to + "sky_up.bmp", "already");
  char out[264] = "";
  ASSERT_EQ(KUCopyToTarget(source.file("sky_rh.bmp").c_str(), to.c_str(), out), 1);
  for (const char* face : {"fw", "rh", "bk", "lf"}) EXPECT_EQ(readFile(to + "sky_" + face + ".bmp"), face);
  EXPECT_EQ(readFile(to + "sky_up.bmp"), "already");
  EXPECT_FALSE(fileExists(to + "sky_dn.bmp"));
}

}  // namespace
