// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Shared set-up of the file normaliser tests: default path variables before
// and after each test, and small helpers for content trees.
#pragma once
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TestHooks.h"
#include "TestSupport.h"

namespace kutil::test {

/// The line end the library's text streams write on this platform.
#ifdef _WIN32
inline const std::string kNl = "\r\n";
inline const char kSep = '\\';
#else
inline const std::string kNl = "\n";
inline const char kSep = '/';
#endif

/// A sub-directory path of a TempDir, created, with its trailing separator.
std::string makeSubDir(const TempDir& dir, const std::string& name);

/// The given lines, each followed by the platform's line end.
std::string joinLines(std::initializer_list<std::string> lines);

/// The text data of every row of a behaviour file, in order (a failed load is a test failure).
std::vector<std::string> rowTexts(const std::string& path);

/// Saves a shape file with a square seed and the given front, back and wrap textures.
void writeShape(const std::string& path, const std::string& front, const std::string& back,
                const std::string& wrap);

/// The front, back and wrap textures of a shape file (a failed restore is a test failure).
std::vector<std::string> shapeTextures(const std::string& path);

/// Resets the path variables around every test.
class NormaliseTest : public ::testing::Test {
 protected:
  void SetUp() override { kutil::detail::resetPathVariables(); }
  void TearDown() override { kutil::detail::resetPathVariables(); }
};

}  // namespace kutil::test
