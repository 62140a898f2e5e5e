// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The host: owns the room, its objects and the viewer, and runs one frame of library work at a time.
#pragma once
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "KUtil.h"
#include "Messages.h"
#include "Objects.h"
#include "Recording.h"
#include "Scene.h"
#include "Viewpoints.h"
#include "Walker.h"

namespace kview {

/// A request a behaviour made of the host (LOAD, GOTO, RUN, PLAY, PING, DELETE, ...), for the panel.
struct Request {
  int frame;
  std::string object;   ///< whose behaviour asked
  std::string command;  ///< the command's name
  std::string text;     ///< its text, resolved to a path where it names a file
  std::string outcome;  ///< what the host did about it
};

/// Everything one frame did, for the panel.
struct FrameActivity {
  int viewerCommands = 0;  ///< motion commands through the viewer's queue
  int events = 0;          ///< events pushed into objects' input queues
  int emitted = 0;         ///< commands that came out of behaviours
  int dropped = 0;         ///< events that found a full queue
};

/// The room and everything in it.
class World {
 public:
  explicit World(Messages& messages);
  World(const World&) = delete;
  World& operator=(const World&) = delete;

  /// Called after each object is built: how many are done, of how many, and which one.
  using Progress = std::function<void(int done, int total, const std::string& name)>;
  /// Reads the folder or scene list at path and builds every object (problems are reported and the
  /// rest is shown); the viewer starts in front of the objects.
  void load(const std::string& path, const Progress& progress);

  /// RUN requests start programs through the shell only when launching is on.
  void setLaunch(bool on) { m_launch = on; }
  /// Sound requests are played only when sound is on.
  void setSound(bool on);

  /// One frame of library work: the input to the viewer's queue and the objects' queues, the
  /// viewer's steps, a tick of every behaviour with its commands carried out, and the sound queue.
  void frame(const std::vector<InputCommand>& input);

  /// Puts the viewer at a place when it is clear (inside the room, outside every object).
  bool placeViewer(const ViewerState& state);
  /// Jumps to the n-th viewpoint (0-based); reports a place that is not clear.
  bool jumpToViewpoint(int n);
  /// Adds the viewer's place as a viewpoint and writes the marker list.
  bool saveViewpoint();

  /// The object of that name (file name, or path), or -1.
  int find(const std::string& name) const;
  /// The selected object, or -1.
  int selected() const { return m_selected; }

  const std::vector<std::unique_ptr<SceneObject>>& objects() const { return m_objects; }
  Walker& walker() { return m_walker; }
  CKFootPrint& room() { return m_room; }
  const Layout& layout() const { return m_layout; }
  const SceneSource& source() const { return m_source; }
  Viewpoints& viewpoints() { return m_viewpoints; }
  const std::deque<Request>& requests() const { return m_requests; }
  const FrameActivity& activity() const { return m_activity; }
  const Messages& messages() const { return m_messages; }
  int frames() const { return m_frames; }
  int collisions() const { return m_collisions; }
  int insideFrames() const { return m_insideFrames; }

 private:
  void dispatch(const InputCommand& command);
  void sendEvent(int index, int code);
  void selectObject(int index);
  void walkViewer();
  void tickBehaviours();
  void updateObstacle(int index);

  // Commands.cpp: what the host does with what behaviours emit.
  void carryOut(int index, int code, float magnitude, const std::string& text);
  std::string moveObject(int index, int code, float magnitude);
  std::string request(SceneObject& object, int code, const std::string& text, std::string* shown);
  bool objectFits(SceneObject& object);
  void remember(SceneObject& object, int code, float magnitude, const std::string& text,
                const std::string& note);

  Messages& m_messages;
  SceneSource m_source;
  CKArrange m_grid;
  Layout m_layout;
  CKFootPrint m_room;
  std::vector<std::unique_ptr<SceneObject>> m_objects;
  std::vector<Obstacle> m_obstacles;  ///< each object's footprint, centre and reach, in object order
  Walker m_walker;
  Viewpoints m_viewpoints;
  CKSound m_sound;
  std::deque<Request> m_requests;
  std::vector<std::string> m_unknownNames;  ///< names already reported as matching no object
  FrameActivity m_activity;
  int m_selected = -1;
  int m_frames = 0;
  int m_collisions = 0;
  int m_insideFrames = 0;
  bool m_launch = false;
};

/// True for the codes that move the viewer (motions and the two zooms).
bool isMotionCode(int code);

}  // namespace kview
