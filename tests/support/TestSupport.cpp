// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include "TestSupport.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

namespace kutil::test {

TempDir::TempDir() {
  static std::atomic<unsigned> counter{0};
  const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
  fs::path p =
      fs::temp_directory_path() / ("kutil-test-" + std::to_string(stamp) + "-" + std::to_string(counter++));
  fs::create_directories(p);
  m_path = p.string();
}

TempDir::~TempDir() {
  std::error_code ec;
  fs::remove_all(m_path, ec);
}

std::string TempDir::file(const std::string& name) const { return (fs::path(m_path) / name).string(); }

std::string readFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream ss;
  ss << in.rdbuf();
  return ss.str();
}

std::string readText(const std::string& path) {
  std::string text = readFile(path);
  text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
  return text;
}

std::vector<std::string> readLines(const std::string& path) {
  std::vector<std::string> lines;
  std::ifstream in(path, std::ios::binary);
  std::string line;
  while (std::getline(in, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

bool writeFile(const std::string& path, const std::string& text) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << text;
  return static_cast<bool>(out);
}

bool fileExists(const std::string& path) {
  std::error_code ec;
  return fs::exists(path, ec);
}

std::string testDataPath(const std::string& relative) {
  return std::string(KUTIL_TEST_DATA_DIR) + "/" + relative;
}

std::vector<Spelling> sameFileSpellings(const std::string& dir, const std::string& name,
                                        const std::string& scratch) {
  const std::string sep(1, static_cast<char>(fs::path::preferred_separator));
  const std::string up = ".." + sep + fs::path(dir).filename().string();
  std::vector<Spelling> out = {
      {"a '.' part", dir + sep + "." + sep + name},
      {"a '..' part", dir + sep + up + sep + name},
      {"a doubled separator", dir + sep + sep + name},
  };
  if (sep == "\\") {
    std::string forward = dir + "/" + name;
    for (char& c : forward)
      if (c == '\\') c = '/';
    out.push_back({"forward slashes", forward});
  }
  std::error_code ec;
  const fs::path linkedDir = fs::path(scratch) / "linked-dir";
  fs::create_directory_symlink(dir, linkedDir, ec);
  if (!ec) out.push_back({"a linked directory", (linkedDir / name).string()});
  const fs::path symbolic = fs::path(scratch) / "symbolic";
  fs::create_directories(symbolic, ec);
  fs::create_symlink(fs::path(dir) / name, symbolic / name, ec);
  if (!ec) out.push_back({"a symbolic link", (symbolic / name).string()});
  const fs::path hard = fs::path(scratch) / "hard";
  fs::create_directories(hard, ec);
  fs::create_hard_link(fs::path(dir) / name, hard / name, ec);
  if (!ec) out.push_back({"a hard link", (hard / name).string()});
  return out;
}

bool sameFile(const std::string& a, const std::string& b) {
  std::error_code ec;
  return fs::equivalent(a, b, ec);
}

}  // namespace kutil::test
