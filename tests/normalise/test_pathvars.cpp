// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "KPathVars.h"
#include "TestSupport.h"
#include "pathvars_detail.h"

namespace {

class KUPathVars : public ::testing::Test {
 protected:
  void SetUp() override { kutil::detail::resetPathVariables(); }
  void TearDown() override { kutil::detail::resetPathVariables(); }

  static std::string relative(const std::string& name) {
    char text[264];
    std::strcpy(text, name.c_str());
    EXPECT_EQ(KUConvertToRelative(text), 1);
    return text;
  }
  static std::string absolute(const std::string& reference, const std::string& name, int expected) {
    char text[264];
    std::strcpy(text, name.c_str());
    EXPECT_EQ(KUDeRelativiseFileName(reference.c_str(), text), expected) << name;
    return text;
  }
};

TEST_F(KUPathVars, VariableTestIsCaseSensitive) {
  EXPECT_EQ(KUIsVariablised("?KALDOKWQDIR?a.bmp"), 1);
  EXPECT_EQ(KUIsVariablised("?WINDOWSPROGDIR?\\x"), 1);
  EXPECT_EQ(KUIsVariablised("?windowsdir?\\x.exe"), 0);
  EXPECT_EQ(KUIsVariablised("x?WINDOWSDIR?"), 0);
  EXPECT_EQ(KUIsVariablised(nullptr), 0);
  EXPECT_EQ(absolute("F:\\a.kwq", "?windowsdir?\\x.exe", 0), "?windowsdir?\\x.exe");
}

TEST_F(KUPathVars, ProgramsTakeTheMostSpecificDirectory) {
  EXPECT_EQ(relative("c:\\program files\\kaldo3d\\kaldo\\bin\\viewer.exe"), "?KALDOHOMEDIR?\\bin\\viewer.exe");
  EXPECT_EQ(relative("C:\\PROGRA~1\\KALDO3D\\KALDO\\x.dll"), "?KALDOHOMEDIR?\\x.dll");
  EXPECT_EQ(relative("C:\\Windows\\System\\shell32.dll"), "?WINDOWSSYSDIR?\\shell32.dll");
  EXPECT_EQ(relative("C:/WINDOWS/notepad.exe"), "?WINDOWSDIR?/notepad.exe");
  EXPECT_EQ(relative("C:\\Program Files\\Other\\desk.lnk"), "?WINDOWSPROGDIR?\\Other\\desk.lnk");
  EXPECT_EQ(relative("E:\\tools\\app.exe"), "E:\\tools\\app.exe");
  EXPECT_EQ(relative("C:\\Windows\\README"), "?WINDOWSDIR?\\README");  // no ending: a program
  // A plain prefix test: no separator needs to follow, and the reverse undoes it.
  EXPECT_EQ(relative("C:\\Program Files2\\x.exe"), "?WINDOWSPROGDIR?2\\x.exe");
  EXPECT_EQ(absolute("F:\\a.kwq", "?WINDOWSPROGDIR?2\\x.exe", 1), "C:\\Program Files2\\x.exe");
}

TEST_F(KUPathVars, ContentKeepsOnlyItsBareName) {
  EXPECT_EQ(relative("E:\\pictures\\sky_fw.bmp"), "?KALDOKWQDIR?sky_fw.bmp");
  EXPECT_EQ(relative("C:\\Windows\\media\\ding.wav"), "?KALDOKWQDIR?ding.wav");
  EXPECT_EQ(relative("/home/user/scenes/hall.kwq"), "?KALDOKWQDIR?hall.kwq");
  EXPECT_EQ(relative("bare.bmp"), "bare.bmp");
  EXPECT_EQ(relative("?KALDOHOMEDIR?\\a.bmp"), "?KALDOHOMEDIR?\\a.bmp");
  EXPECT_EQ(relative(" \t"), " \t");
  EXPECT_EQ(relative(""), "");
  EXPECT_EQ(KUConvertToRelative(nullptr), 1);
}

TEST_F(KUPathVars, DeRelativiseGivesLongForms) {
  EXPECT_EQ(absolute("F:\\scenes\\a.kwq", "?KALDOKWQDIR?sky_fw.bmp", 1), "F:\\scenes\\sky_fw.bmp");
  EXPECT_EQ(absolute("anything", "?WINDOWSDIR?\\notepad.exe", 1), "C:\\Windows\\notepad.exe");
  EXPECT_EQ(absolute("x", "?WINDOWSSYSDIR?\\a.dll", 1), "C:\\Windows\\System\\a.dll");
  EXPECT_EQ(absolute("x", "?KALDOHOMEDIR?\\bin\\v.exe", 1), "C:\\Program Files\\kaldo3d\\kaldo\\bin\\v.exe");
  EXPECT_EQ(absolute("x", "E:\\a.bmp", 0), "E:\\a.bmp");

  char text[264] = "?MYVAR?rest";
  EXPECT_EQ(KUSubstitute4Variable(text, "?MYVAR?", "/data/"), 1);
  EXPECT_STREQ(text, "/data/rest");
  EXPECT_EQ(KUSubstitute4Variable(text, "?MYVAR?", "/data/"), 0);
  EXPECT_EQ(KUSubstitute4Directory(text), 0);
  EXPECT_STREQ(text, "/data/rest");
}

TEST_F(KUPathVars, RealDirectoriesOfThisMachine) {
  kutil::test::TempDir home;
  const std::string homeDir = home.path();
  ASSERT_EQ(KUSetNormalisationVariables("/usr", "/usr/lib", "/opt", homeDir.c_str()), 1);
  EXPECT_EQ(relative("/usr/lib/libz.so"), "?WINDOWSSYSDIR?/libz.so");
  EXPECT_EQ(relative("/USR/bin/env"), "?WINDOWSDIR?/bin/env");
  EXPECT_EQ(relative(homeDir + "/bin/viewer.exe"), "?KALDOHOMEDIR?/bin/viewer.exe");
  // The old defaults no longer apply.
  EXPECT_EQ(relative("C:\\Windows\\x.exe"), "C:\\Windows\\x.exe");
  EXPECT_EQ(absolute("/scenes/a.kwq", "?WINDOWSSYSDIR?/libz.so", 1), "/usr/lib/libz.so");
  EXPECT_EQ(absolute("/scenes/a.kwq", "?KALDOKWQDIR?b.bmp", 1), "/scenes/b.bmp");
  EXPECT_EQ(absolute(homeDir + "/x", "?KALDOHOMEDIR?/bin/viewer.exe", 1), homeDir + "/bin/viewer.exe");

  // An empty directory begins every name: the search stops there, unreplaced.
  ASSERT_EQ(KUSetNormalisationVariables("/usr", nullptr, "", "/opt/kaldo"), 1);
  EXPECT_EQ(relative("/opt/kaldo/k.exe"), "?KALDOHOMEDIR?/k.exe");
  char text[264] = "/usr/bin/k.exe";
  EXPECT_EQ(KUSubstitute4Directory(text), 0);
  EXPECT_STREQ(text, "/usr/bin/k.exe");

  // Overlong directories are kept within the table.
  std::string huge(1000, 'd');
  EXPECT_EQ(KUSetNormalisationVariables(huge.c_str(), huge.c_str(), huge.c_str(), huge.c_str()), 1);
}

TEST_F(KUPathVars, LongSubstitutionStaysWithinTheBuffer) {
  std::string deep = "/" + std::string(250, 'p');
  ASSERT_EQ(KUSetNormalisationVariables("/w", "/w/s", "/p", deep.c_str()), 1);
  char text[264] = "?KALDOHOMEDIR?/some/longer/tail/name.exe";
  EXPECT_EQ(KUDeRelativiseFileName("/x", text), 1);
  EXPECT_EQ(std::strlen(text), 263u);
}

}  // namespace
