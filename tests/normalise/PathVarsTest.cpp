// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "KPathVars.h"
#include "NormaliseTestSupport.h"

namespace {

// A name, its normalised form, and what that resolves to against a reference file.
struct Row {
  std::string name, normalised, reference;
  int resolves;
  std::string resolved;
};

class KUPathVars : public kutil::test::NormaliseTest {
 protected:
  static void check(const std::vector<Row>& rows) {
    for (const Row& r : rows) {
      char text[264];
      std::strcpy(text, r.name.c_str());
      EXPECT_EQ(KUConvertToRelative(text), 1) << r.name;
      EXPECT_EQ(text, r.normalised) << r.name;
      EXPECT_EQ(KUIsVariablised(text), r.resolves) << r.name;
      EXPECT_EQ(KUDeRelativiseFileName(r.reference.c_str(), text), r.resolves) << r.name;
      EXPECT_EQ(text, r.resolved) << r.name;
    }
  }
};

TEST_F(KUPathVars, ProgramsTakeTheMostSpecificDirectoryContentItsBareNameAndBothResolve) {
  check({
      {"c:\\program files\\kaldo3d\\kaldo\\bin\\viewer.exe", "?KALDOHOMEDIR?\\bin\\viewer.exe", "x", 1,
       "C:\\Program Files\\kaldo3d\\kaldo\\bin\\viewer.exe"},
      {"C:\\PROGRA~1\\KALDO3D\\KALDO\\x.dll", "?KALDOHOMEDIR?\\x.dll", "x", 1,
       "C:\\Program Files\\kaldo3d\\kaldo\\x.dll"},  // short forms are recognised, never produced
      {"C:\\Windows\\System\\shell32.dll", "?WINDOWSSYSDIR?\\shell32.dll", "x", 1,
       "C:\\Windows\\System\\shell32.dll"},
      {"C:/WINDOWS/notepad.exe", "?WINDOWSDIR?/notepad.exe", "x", 1, "C:\\Windows/notepad.exe"},
      {"C:\\Windows\\README", "?WINDOWSDIR?\\README", "x", 1, "C:\\Windows\\README"},  // no ending: a program
      {"C:\\Program Files2\\x.exe", "?WINDOWSPROGDIR?2\\x.exe", "x", 1,
       "C:\\Program Files2\\x.exe"},  // a prefix
      {"E:\\tools\\app.exe", "E:\\tools\\app.exe", "x", 0, "E:\\tools\\app.exe"},
      {"E:\\pictures\\sky_fw.bmp", "?KALDOKWQDIR?sky_fw.bmp", "F:\\scenes\\a.kwq", 1,
       "F:\\scenes\\sky_fw.bmp"},
      {"/home/user/scenes/hall.KWQ", "?KALDOKWQDIR?hall.KWQ", "/pkg/list.ksl", 1, "/pkg/hall.KWQ"},
      {"bare.ico", "bare.ico", "x", 0, "bare.ico"},
      {"?KALDOHOMEDIR?\\a.bmp", "?KALDOHOMEDIR?\\a.bmp", "x", 1, "C:\\Program Files\\kaldo3d\\kaldo\\a.bmp"},
      {"?windowsdir?\\x.exe", "?windowsdir?\\x.exe", "x", 0,
       "?windowsdir?\\x.exe"},  // variables are case-sensitive
      {"", "", "x", 0, ""},
  });
  EXPECT_EQ(KUIsVariablised("x?WINDOWSDIR?"), 0);
}

TEST_F(KUPathVars, RealDirectoriesOfThisMachine) {
  kutil::test::TempDir home;
  const std::string h = home.path();
  ASSERT_EQ(KUSetNormalisationVariables("/usr", "/usr/lib", "/opt", h.c_str()), 1);
  check(
      {{"/usr/lib/libz.so", "?WINDOWSSYSDIR?/libz.so", "/s/a.kwq", 1, "/usr/lib/libz.so"},
       {"/USR/bin/env", "?WINDOWSDIR?/bin/env", "x", 1, "/usr/bin/env"},
       {"/opt/kaldo/k.exe", "?WINDOWSPROGDIR?/kaldo/k.exe", "x", 1, "/opt/kaldo/k.exe"},
       {h + "/bin/viewer.exe", "?KALDOHOMEDIR?/bin/viewer.exe", "x", 1, h + "/bin/viewer.exe"},
       {"C:\\Windows\\x.exe", "C:\\Windows\\x.exe", "x", 0, "C:\\Windows\\x.exe"}});  // the defaults are gone

  // An empty directory begins every name: the search stops there, unreplaced.
  ASSERT_EQ(KUSetNormalisationVariables("/usr", nullptr, "", "/opt/kaldo"), 1);
  check({{"/opt/kaldo/k.exe", "?KALDOHOMEDIR?/k.exe", "x", 1, "/opt/kaldo/k.exe"}});
  char text[264] = "/usr/bin/k.exe";
  EXPECT_EQ(KUSubstitute4Directory(text), 0);
  EXPECT_STREQ(text, "/usr/bin/k.exe");
}

}  // namespace
