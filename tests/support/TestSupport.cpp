// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include "TestSupport.h"

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
  fs::path p = fs::temp_directory_path() /
               ("kutil-test-" + std::to_string(stamp) + "-" + std::to_string(counter++));
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

std::string testDataPath(const std::string& relative) { return std::string(KUTIL_TEST_DATA_DIR) + "/" + relative; }

}  // namespace kutil::test
