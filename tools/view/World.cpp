// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include "World.h"

#include <algorithm>
#include <filesystem>

namespace kview {

bool isMotionCode(int code) {
  char text[32];
  return CKActionRow::ARGetTextForMotionType(code, text) || code == KAR_CMD_ZOOMIN || code == KAR_CMD_ZOOMOUT;
}

World::World(Messages& messages) : m_messages(messages) {
  m_grid.CAInitialise();
  m_room.FPInitialise();
  m_sound.SOInitialise();
}

void World::setSound(bool on) { m_sound.SOEnableSound(on ? 1 : 0); }

void World::load(const std::string& path, const Progress& progress) {
  m_source = listScene(path);
  for (const Problem& p : m_source.problems) m_messages.report(p.id, p.file, p.detail);
  const int count = static_cast<int>(m_source.entries.size());
  configureGrid(count, &m_grid);
  m_layout = arrange(count, &m_grid);
  makeRoom(m_layout, &m_room);
  m_objects.clear();
  for (int i = 0; i < count; ++i) {
    auto object = std::make_unique<SceneObject>();
    object->loadSolid(m_source.entries[i], m_messages);
    object->place(m_layout.places[i].x, m_layout.places[i].z, m_layout.places[i].heading);
    m_objects.push_back(std::move(object));
    if (progress) progress(i + 1, count, m_source.entries[i].name);
  }
  // Behaviours are read after all the solids, so that the rows every frame walks lie together in
  // memory rather than between the solids' much larger data: that halves a frame's library work.
  for (int i = 0; i < count; ++i) m_objects[i]->loadBehaviour(m_source.entries[i], m_messages);
  // Kept beside the objects, so a frame's walking reads one small array instead of every object.
  m_obstacles.assign(count, Obstacle{});
  for (int i = 0; i < count; ++i) updateObstacle(i);
  m_viewpoints.load(m_source.markersPath);
  m_walker.reset(m_layout.start, m_layout.startHeading, m_layout.startPitch);
  m_selected = -1;
}

void World::updateObstacle(int index) {
  SceneObject& o = *m_objects[index];
  m_obstacles[index] = {&o.footprint, o.position, o.reach};
}

int World::find(const std::string& name) const {
  for (std::size_t i = 0; i < m_objects.size(); ++i) {
    if (m_objects[i]->name == name || m_objects[i]->path == name) return static_cast<int>(i);
  }
  return -1;
}

void World::frame(const std::vector<InputCommand>& input) {
  m_activity = FrameActivity();
  for (const InputCommand& c : input) dispatch(c);
  walkViewer();
  tickBehaviours();
  m_sound.SOPlaySound();
  ++m_frames;
}

void World::dispatch(const InputCommand& command) {
  if (command.code == 0) return;  // a frame without input
  if (isMotionCode(command.code)) {
    if (m_walker.push(command.code, command.flags)) ++m_activity.viewerCommands;
    return;
  }
  if (command.code == KAR_CMD_GOTO) {
    tagMarkerItem marker{};
    if (!m_viewpoints.find(command.text, &marker)) {
      m_messages.report(kMsgViewpoint, command.text, "no viewpoint of that name");
    } else if (!placeViewer(Viewpoints::stateOf(marker, m_walker.state().zoom))) {
      m_messages.report(kMsgViewpoint, command.text, "the place lies outside the room or inside an object");
    }
    return;
  }
  const int index = find(command.text);
  if (index < 0) {
    if (std::find(m_unknownNames.begin(), m_unknownNames.end(), command.text) == m_unknownNames.end()) {
      m_unknownNames.push_back(command.text);
      m_messages.report(kMsgFileNotFound, command.text, "no object of that name in the room");
    }
    return;
  }
  if (command.code == KAR_EVENT_SELECT)
    selectObject(index);
  else if (command.code == KAR_EVENT_DESELECT && index == m_selected)
    selectObject(-1);
  else
    sendEvent(index, command.code);
}

void World::sendEvent(int index, int code) {
  SceneObject& object = *m_objects[index];
  // Flags 0 tell a passed-through event from the commands a behaviour emits, which carry flags 1.
  if (object.input.FIPushFIFOCommand(code, 1.0f, object.name.c_str(), 0)) {
    ++m_activity.events;
  } else {
    ++object.dropped;
    ++m_activity.dropped;
  }
}

void World::selectObject(int index) {
  if (m_selected >= 0 && m_selected != index) {
    m_objects[m_selected]->selected = false;
    sendEvent(m_selected, KAR_EVENT_DESELECT);
  }
  m_selected = index;
  if (index < 0) return;
  m_objects[index]->selected = true;
  sendEvent(index, KAR_EVENT_SELECT);
}

void World::walkViewer() {
  WalkOutcome outcome;
  m_walker.walk(&m_room, m_obstacles, &outcome);
  m_collisions += outcome.contacts;
  for (int bumped : outcome.bumped) sendEvent(bumped, KAR_EVENT_COLLIDE);
  if (!Walker::standsClear(&m_room, m_obstacles, m_walker.state().position)) ++m_insideFrames;
}

void World::tickBehaviours() {
  int code = 0, flags = 0;
  float magnitude = 0.0f;
  _D3DVECTOR vector{};
  char text[KFI_TEXT_LEN + 1];
  for (std::size_t i = 0; i < m_objects.size(); ++i) {
    SceneObject& object = *m_objects[i];
    object.behaviour.DEClock();
    while (object.output.FIPopFIFOCommand(&code, &magnitude, &vector, text, &flags)) {
      if (!(flags & 1)) continue;  // an event no ON row wanted, passed through unchanged
      ++object.commands;
      ++m_activity.emitted;
      carryOut(static_cast<int>(i), code, magnitude, text);
    }
  }
}

bool World::placeViewer(const ViewerState& state) {
  if (!Walker::standsClear(&m_room, m_obstacles, state.position)) return false;
  m_walker.setState(state);
  return true;
}

bool World::jumpToViewpoint(int n) {
  tagMarkerItem marker{};
  if (!m_viewpoints.get(n, &marker)) return false;
  if (placeViewer(Viewpoints::stateOf(marker, m_walker.state().zoom))) return true;
  m_messages.report(kMsgViewpoint, marker.name, "the place lies outside the room or inside an object");
  return false;
}

bool World::saveViewpoint() {
  if (m_viewpoints.add(m_walker.state(), nullptr) && m_viewpoints.save(m_source.markersPath)) return true;
  m_messages.report(kMsgViewpointsSaved, m_source.markersPath, "");
  return false;
}

}  // namespace kview
