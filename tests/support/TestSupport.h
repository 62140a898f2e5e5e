// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Helpers shared by tests, benchmarks and fuzz targets.
#pragma once
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace kutil::test {

/// A fresh directory under the system's temporary folder, removed on destruction.
class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;
  /// The directory's path, without a trailing separator.
  const std::string& path() const { return m_path; }
  /// path() + separator + name.
  std::string file(const std::string& name) const;

 private:
  std::string m_path;
};

/// The whole content of a file ("" when it cannot be read).
std::string readFile(const std::string& path);
/// The file's lines without their line breaks.
std::vector<std::string> readLines(const std::string& path);
/// The whole content of a text file without the CRs that Windows text mode puts before line feeds.
std::string readText(const std::string& path);
/// Writes text to a file, replacing it; returns false on failure.
bool writeFile(const std::string& path, const std::string& text);
/// True when the file exists.
bool fileExists(const std::string& path);
/// A file under tests/ of the source tree.
std::string testDataPath(const std::string& relative);

/// One more way of naming an existing file.
struct Spelling {
  std::string how;   ///< what the spelling does, for failure messages
  std::string path;  ///< the other name
};

/// Names for dir + separator + name that all reach that same file: with "." and
/// ".." parts, a doubled separator, the other separator (Windows), through a
/// linked directory, and under the same name elsewhere as a symbolic and as a
/// hard link. The links are made under scratch; those the system refuses are
/// left out.
std::vector<Spelling> sameFileSpellings(const std::string& dir, const std::string& name,
                                        const std::string& scratch);

/// True when both names reach the same file (not merely equal content).
bool sameFile(const std::string& a, const std::string& b);

/// One value of a seq(): a number rounded to four decimals (so that rounding noise does not show), a
/// vector (anything with x, y and z) as "x,y,z", or a text.
struct Shown {
  std::string text;
  Shown(int v) : text(std::to_string(v)) {}       // NOLINT: implicit on purpose
  Shown(double v) : text(number(v)) {}            // NOLINT
  Shown(const char* t) : text(t ? t : "null") {}  // NOLINT
  Shown(std::string t) : text(std::move(t)) {}    // NOLINT
  template <typename V, typename = decltype(V::x + V::y + V::z)>
  Shown(const V& v) : text(number(v.x) + "," + number(v.y) + "," + number(v.z)) {}  // NOLINT
  static std::string number(double v) {
    char t[32];
    std::snprintf(t, sizeof t, "%g", std::round(v * 1e4) / 1e4 + 0.0);
    return t;
  }
};

/// The values blank-separated. A braced list is evaluated left to right, so calls and the outputs
/// they write can be listed in the order they happen.
inline std::string seq(std::initializer_list<Shown> values) {
  std::string out;
  for (const Shown& v : values) out += (&v == values.begin() ? "" : " ") + v.text;
  return out;
}

#if !defined(_WIN32)
/// Sets an environment variable for as long as it lives.
class ScopedEnv {
 public:
  ScopedEnv(const char* name, const std::string& value) : m_name(name), m_had(std::getenv(name) != nullptr) {
    if (m_had) m_old = std::getenv(name);
    setenv(name, value.c_str(), 1);
  }
  ~ScopedEnv() { m_had ? setenv(m_name, m_old.c_str(), 1) : unsetenv(m_name); }
  ScopedEnv(const ScopedEnv&) = delete;
  ScopedEnv& operator=(const ScopedEnv&) = delete;

 private:
  const char* m_name;
  bool m_had;
  std::string m_old;
};
#endif

}  // namespace kutil::test
