// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include "Stock.h"

#include <cmath>
#include <initializer_list>

#include "KUtil.h"

namespace kview {
namespace {

constexpr float kPi = 3.14159265f;

struct Point2 {
  float x, y;
};

// A seed drawn in the x-y plane; the generator extrudes it along +z.
void addSeed(CKVGen* gen, std::initializer_list<Point2> points) {
  for (const Point2& p : points) {
    const _D3DVECTOR v = {p.x, p.y, 0.0f};
    gen->KVAddSeedVertex(&v);
  }
}

void addInstruction(CKVGen* gen, int code, float magnitude, _D3DVECTOR axis = {0.0f, 0.0f, 0.0f}) {
  gen->KVAddInstruction(code, &axis, magnitude);
}

// A profile in the y-z plane turned about the y axis, as the globe is made.
void addLathe(CKVGen* gen, std::initializer_list<Point2> profile, int segments) {
  for (const Point2& p : profile) {
    const _D3DVECTOR v = {0.0f, p.y, p.x};
    gen->KVAddSeedVertex(&v);
  }
  for (int i = 0; i < segments; ++i) addInstruction(gen, INSTR_ROTATE_AXIS, 2.0f * kPi / segments, {0, 1, 0});
  gen->KVSetNormalDirection(0);
}

}  // namespace

Category categoryOf(const std::string& path, bool isDirectory) {
  if (isDirectory) return Category::Folder;
  switch (KUGetFileType(path.c_str())) {
    case 2:
    case 3:
    case 4:
    case 5:  // icon, bitmap, animation, pixmap
      return Category::Picture;
    case 12:  // wave
      return Category::Sound;
    case 9:
    case 10:
    case 13:  // scene, shape, scene list
      return Category::Scene;
    case 1:
    case 6:
    case 7:
    case 8:
    case 14:
    case 22:  // the library's programs and shortcuts
      return Category::Program;
    default:
      return Category::Document;
  }
}

const char* categoryName(Category category) {
  switch (category) {
    case Category::Program:
      return "program";
    case Category::Document:
      return "document";
    case Category::Picture:
      return "picture";
    case Category::Sound:
      return "sound";
    case Category::Scene:
      return "scene";
    case Category::Folder:
      return "folder";
  }
  return "";
}

Colour categoryColour(Category category) {
  switch (category) {
    case Category::Program:
      return {0.30f, 0.52f, 0.88f};
    case Category::Document:
      return {0.93f, 0.91f, 0.84f};
    case Category::Picture:
      return {0.96f, 0.62f, 0.22f};
    case Category::Sound:
      return {0.68f, 0.38f, 0.88f};
    case Category::Scene:
      return {0.36f, 0.76f, 0.42f};
    case Category::Folder:
      return {0.97f, 0.82f, 0.30f};
  }
  return {0.8f, 0.8f, 0.8f};
}

bool buildStockShape(Category category, CKVGen* gen) {
  switch (category) {
    case Category::Program:  // a silo with a pointed roof
      addLathe(gen, {{0.0f, 0.0f}, {0.45f, 0.0f}, {0.45f, 0.75f}, {0.0f, 1.15f}}, 16);
      break;
    case Category::Document:  // a thick sheet with a dog-ear
      addSeed(gen, {{0.0f, 0.0f}, {0.8f, 0.0f}, {0.8f, 0.85f}, {0.55f, 1.1f}, {0.0f, 1.1f}});
      addInstruction(gen, INSTR_EXTRUDE, 0.16f);
      break;
    case Category::Picture:  // a frame leaning back on its bottom edge
      addSeed(gen, {{0.0f, 0.0f}, {1.3f, 0.0f}, {1.3f, 0.95f}, {0.0f, 0.95f}});
      addInstruction(gen, INSTR_EXTRUDE, 0.1f);
      addInstruction(gen, INSTR_HINGE_BOTTOM, 0.25f);
      addInstruction(gen, INSTR_EXTRUDE, 0.1f);
      break;
    case Category::Sound:
      return GKVSeedExtruderGlobe(gen, 14, 9, 0.55f) != 0;
    case Category::Scene:  // a house
      addSeed(gen, {{0.0f, 0.0f}, {1.1f, 0.0f}, {1.1f, 0.65f}, {0.55f, 1.15f}, {0.0f, 0.65f}});
      addInstruction(gen, INSTR_EXTRUDE, 0.9f);
      break;
    case Category::Folder:  // a folder with its tab, standing on its spine
      addSeed(gen, {{0.0f, 0.0f}, {1.2f, 0.0f}, {1.2f, 0.8f}, {0.55f, 0.8f}, {0.45f, 0.92f}, {0.0f, 0.92f}});
      addInstruction(gen, INSTR_EXTRUDE, 0.3f);
      break;
  }
  return true;
}

std::string stockBehaviour(Category category, const std::string& fileName) {
  // Names with a quote cannot be written as a token; long ones would break the 259-character line.
  if (fileName.find('"') != std::string::npos || fileName.size() > 200) return minimalBehaviour();
  const char* request = "LOAD";
  if (category == Category::Sound) request = "PLAY";
  if (category == Category::Program) request = "RUN";
  if (category == Category::Folder) request = "GOTO";
  std::string text = "# stock behaviour: select turns it once round, open pings and asks for the file\n";
  text += minimalBehaviour();
  text += std::string("ON open ") + request + " \"?KALDOKWQDIR?" + fileName + "\"\n";
  return text;
}

std::string minimalBehaviour() {
  // 30 steps of 2 pi / 30: one whole turn, half a second at 60 frames a second.
  return "ON select MOVE TURNLEFT BY 0.209440 FOR 30\nON open PING \"open\"\n";
}

}  // namespace kview
