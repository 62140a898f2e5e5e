// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "KPathVars.h"
#include "NormaliseTestSupport.h"

namespace {

using Pair = std::pair<std::string, std::string>;

struct Resolve {
  std::string reference, name;
  int status;
  std::string out;
};

class KUPathVars : public kutil::test::NormaliseTest {
 protected:
  static void checkRelative(const std::vector<Pair>& rows) {
    for (const auto& [in, out] : rows) {
      char text[264];
      std::strcpy(text, in.c_str());
      EXPECT_EQ(KUConvertToRelative(text), 1) << in;
      EXPECT_EQ(text, out) << in;
    }
  }
  static void checkAbsolute(const std::vector<Resolve>& rows) {
    for (const Resolve& r : rows) {
      char text[264];
      std::strcpy(text, r.name.c_str());
      EXPECT_EQ(KUDeRelativiseFileName(r.reference.c_str(), text), r.status) << r.name;
      EXPECT_EQ(text, r.out) << r.name;
    }
  }
};

TEST_F(KUPathVars, ProgramsTakeTheMostSpecificDirectoryAndContentItsBareName) {
  checkRelative({
      {"c:\\program files\\kaldo3d\\kaldo\\bin\\viewer.exe", "?KALDOHOMEDIR?\\bin\\viewer.exe"},
      {"C:\\PROGRA~1\\KALDO3D\\KALDO\\x.dll", "?KALDOHOMEDIR?\\x.dll"},
      {"C:\\Windows\\System\\shell32.dll", "?WINDOWSSYSDIR?\\shell32.dll"},
      {"C:/WINDOWS/notepad.exe", "?WINDOWSDIR?/notepad.exe"},
      {"C:\\Program Files\\Other\\desk.lnk", "?WINDOWSPROGDIR?\\Other\\desk.lnk"},
      {"E:\\tools\\app.exe", "E:\\tools\\app.exe"},
      {"C:\\Windows\\README", "?WINDOWSDIR?\\README"},            // no ending: a program
      {"C:\\Program Files2\\x.exe", "?WINDOWSPROGDIR?2\\x.exe"},  // a plain prefix test
      {"E:\\pictures\\sky_fw.bmp", "?KALDOKWQDIR?sky_fw.bmp"},
      {"C:\\Windows\\media\\ding.wav", "?KALDOKWQDIR?ding.wav"},  // content even under a variable
      {"/home/user/scenes/hall.kwq", "?KALDOKWQDIR?hall.kwq"},
      {"bare.bmp", "bare.bmp"},
      {"?KALDOHOMEDIR?\\a.bmp", "?KALDOHOMEDIR?\\a.bmp"},
  });
}

TEST_F(KUPathVars, DeRelativiseGivesLongFormsAndVariablesAreCaseSensitive) {
  checkAbsolute({
      {"F:\\scenes\\a.kwq", "?KALDOKWQDIR?sky_fw.bmp", 1, "F:\\scenes\\sky_fw.bmp"},
      {"x", "?WINDOWSSYSDIR?\\a.dll", 1, "C:\\Windows\\System\\a.dll"},
      {"x", "?KALDOHOMEDIR?\\bin\\v.exe", 1, "C:\\Program Files\\kaldo3d\\kaldo\\bin\\v.exe"},
      {"x", "?WINDOWSPROGDIR?2\\x.exe", 1, "C:\\Program Files2\\x.exe"},
      {"x", "E:\\a.bmp", 0, "E:\\a.bmp"},
      {"x", "?windowsdir?\\x.exe", 0, "?windowsdir?\\x.exe"},
  });
  EXPECT_EQ(KUIsVariablised("x?WINDOWSDIR?"), 0);
  char text[264] = "?MYVAR?rest";
  EXPECT_EQ(KUSubstitute4Variable(text, "?MYVAR?", "/data/"), 1);
  EXPECT_STREQ(text, "/data/rest");
  EXPECT_EQ(KUSubstitute4Variable(text, "?MYVAR?", "/data/"), 0);
}

TEST_F(KUPathVars, RealDirectoriesOfThisMachine) {
  kutil::test::TempDir home;
  const std::string h = home.path();
  ASSERT_EQ(KUSetNormalisationVariables("/usr", "/usr/lib", "/opt", h.c_str()), 1);
  checkRelative({{"/usr/lib/libz.so", "?WINDOWSSYSDIR?/libz.so"},
                 {"/USR/bin/env", "?WINDOWSDIR?/bin/env"},
                 {h + "/bin/viewer.exe", "?KALDOHOMEDIR?/bin/viewer.exe"},
                 {"C:\\Windows\\x.exe", "C:\\Windows\\x.exe"}});  // the old defaults are gone
  checkAbsolute({{"/scenes/a.kwq", "?WINDOWSSYSDIR?/libz.so", 1, "/usr/lib/libz.so"},
                 {"/scenes/a.kwq", "?KALDOKWQDIR?b.bmp", 1, "/scenes/b.bmp"},
                 {h + "/x", "?KALDOHOMEDIR?/bin/viewer.exe", 1, h + "/bin/viewer.exe"}});

  // An empty directory begins every name: the search stops there, unreplaced.
  ASSERT_EQ(KUSetNormalisationVariables("/usr", nullptr, "", "/opt/kaldo"), 1);
  checkRelative({{"/opt/kaldo/k.exe", "?KALDOHOMEDIR?/k.exe"}});
  char text[264] = "/usr/bin/k.exe";
  EXPECT_EQ(KUSubstitute4Directory(text), 0);
  EXPECT_STREQ(text, "/usr/bin/k.exe");
}

}  // namespace
