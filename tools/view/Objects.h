// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// One object of the room: its solid, its behaviour with its two queues, and where it stands.
#pragma once
#include <deque>
#include <string>

#include "KUtil.h"
#include "Mesh.h"
#include "Scene.h"

namespace kview {

class Messages;

/// A command that came out of an object's behaviour, kept for the panel.
struct Emitted {
  int frame;         ///< frame in which it came out
  int code;          ///< command code
  float magnitude;   ///< its magnitude
  std::string text;  ///< its text
  std::string note;  ///< what the host did with it
};

/// A file shown as a solid that runs a behaviour.
class SceneObject {
 public:
  /// Initialises the generator, the behaviour table, its queues and the footprint.
  SceneObject();
  SceneObject(const SceneObject&) = delete;
  SceneObject& operator=(const SceneObject&) = delete;

  /// Builds the solid and loads the behaviour of entry; problems are reported, never fatal.
  void load(const SceneEntry& entry, Messages& messages);
  /// The first half of load: names the object and builds its solid.
  void loadSolid(const SceneEntry& entry, Messages& messages);
  /// The second half: loads its behaviour (or the stock one).
  void loadBehaviour(const SceneEntry& entry, Messages& messages);
  /// Puts the object at a place and rebuilds its footprint there.
  void place(float x, float z, float heading);
  /// Rebuilds the footprint after position, heading or scale changed.
  void updateFootprint();

  std::string name;  ///< the file's name, shown above it
  std::string path;  ///< the file
  Category category = Category::Document;
  std::string shapeSource;      ///< the ".ksf" drawn, or "stock"
  std::string behaviourSource;  ///< the ".kvc" run, or "stock"
  std::string behaviourBase;    ///< the file "?KALDOKWQDIR?" in the behaviour's texts refers to

  CKVGen gen;          ///< the solid's generator (kept for its boxes and hit marks)
  Mesh mesh;           ///< the solid's triangles in the object's frame
  CKDecide behaviour;  ///< the behaviour table
  CKFIFO input;        ///< events from the host
  CKFIFO output;       ///< commands to the host

  _D3DVECTOR position{};  ///< centre on the floor (y is a lift above it)
  float heading = 0.0f;   ///< radians about y; the frame's +z looks along (sin, 0, cos)
  float scale = 1.0f;     ///< zoom of the object
  CKFootPrint footprint;  ///< the outline on the floor, in the world
  float reach = 0.0f;     ///< largest distance of the outline from the centre

  bool selected = false;
  int commands = 0;            ///< commands its behaviour emitted
  int dropped = 0;             ///< events that found its input queue full
  std::deque<Emitted> recent;  ///< the latest emitted commands, newest last

 private:
  bool loadShape(const SceneEntry& entry, Messages& messages);
  bool loadBehaviourText(const std::string& text);
  void resetBehaviour();
};

/// The readable name of a command code: a motion, event or request keyword, or the number.
std::string commandName(int code);

}  // namespace kview
