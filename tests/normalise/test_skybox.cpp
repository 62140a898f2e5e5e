// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>

#include "KNormalise.h"
#include "TestSupport.h"

namespace {

using kutil::test::fileExists;
using kutil::test::readFile;
using kutil::test::TempDir;
using kutil::test::writeFile;

TEST(KUCopySkyBoxFaces, CopiesOtherFacesUnderTheNewBaseKeepingCase) {
  TempDir from;
  TempDir to;
  for (const char* face : {"FW", "RH", "BK", "LF", "UP", "DN"})
    writeFile(from.file(std::string("BOX_") + face + ".ANB"), face);
  const std::string newName = to.file("hall_fw.anb");
  writeFile(newName, "copied");
  ASSERT_EQ(KUCopySkyBoxFaces(from.file("BOX_FW.ANB").c_str(), newName.c_str()), 1);
  EXPECT_EQ(readFile(newName), "copied");  // its own face is left alone
  EXPECT_EQ(readFile(to.file("hall_rh.anb")), "RH");
  EXPECT_EQ(readFile(to.file("hall_dn.anb")), "DN");
#ifndef _WIN32
  // The new name's lower-case letters are kept, not the source's upper case.
  EXPECT_FALSE(fileExists(to.file("hall_RH.anb")));
#endif
}

TEST(KUCopySkyBoxFaces, RejectsNamesWithoutFaceEnding) {
  TempDir dir;
  EXPECT_EQ(KUCopySkyBoxFaces(dir.file("a.bmp").c_str(), dir.file("b_fw.bmp").c_str()), 0);
  EXPECT_EQ(KUCopySkyBoxFaces(dir.file("a_fw.bmp").c_str(), nullptr), 0);
  EXPECT_EQ(KUCopySkyBoxFaces(nullptr, nullptr), 0);
}

}  // namespace
