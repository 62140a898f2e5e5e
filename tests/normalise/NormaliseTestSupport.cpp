// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include "NormaliseTestSupport.h"

#include <filesystem>

#include "KDecide.h"
#include "KVGen.h"

namespace kutil::test {

std::string makeSubDir(const TempDir& dir, const std::string& name) {
  std::filesystem::create_directories(dir.file(name));
  return dir.file(name) + kSep;
}

std::string joinLines(std::initializer_list<std::string> lines) {
  std::string text;
  for (const std::string& line : lines) text += line + kNl;
  return text;
}

std::vector<std::string> rowTexts(const std::string& path) {
  CKDecide table;
  table.DEInitialise();
  EXPECT_EQ(table.DELoadFromFile(path.c_str()), 1) << path;
  std::vector<std::string> texts;
  CKActionRow* row = nullptr;
  for (int ok = table.DESelectFirstActionRow(&row); ok; ok = table.DESelectNextActionRow(&row)) {
    char text[KAR_TEXTDATA_LEN + 1] = "";
    row->ARGetTextData(text);
    texts.push_back(text);
  }
  return texts;
}

void writeShape(const std::string& path, const std::string& front, const std::string& back,
                const std::string& wrap) {
  CKVGen shape;
  shape.KVInitialise();
  const _D3DVECTOR seed[] = {{0, 0, 0}, {1, 0, 0}, {1, 0, 1}, {0, 0, 1}};
  for (const _D3DVECTOR& v : seed) shape.KVAddSeedVertex(&v);
  shape.KVSetFrontPlaneTexture(front.c_str());
  shape.KVSetBackPlaneTexture(back.c_str());
  shape.KVSetWrapSurfaceTexture(wrap.c_str());
  ASSERT_EQ(shape.KVSave(path.c_str()), 1) << path;
}

std::vector<std::string> shapeTextures(const std::string& path) {
  CKVGen shape;
  shape.KVInitialise();
  EXPECT_EQ(shape.KVRestore(path.c_str()), 1) << path;
  char front[277] = "", back[277] = "", wrap[277] = "";
  shape.KVGetFrontPlaneTexture(front);
  shape.KVGetBackPlaneTexture(back);
  shape.KVGetWrapSurfaceTexture(wrap);
  return {front, back, wrap};
}

}  // namespace kutil::test
