// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// What the host does with the commands an object's behaviour emits: motions move, turn and zoom the
// object; requests (PLAY, RUN, LOAD, GOTO, PING, ...) are carried out where the viewer can, and shown.
#include <algorithm>
#include <cmath>

#include "World.h"

namespace kview {
namespace {

constexpr std::size_t kRecentKept = 40;
constexpr std::size_t kRequestsKept = 200;
constexpr float kMaxLift = 2.0f, kMinScale = 0.25f, kMaxScale = 3.0f;
// Sounds asked for by behaviours queue behind nothing urgent.
constexpr int kSoundPriority = 50;

// A behaviour's text with "?KALDOKWQDIR?" and the other variables resolved against its file.
std::string resolve(const std::string& base, const std::string& text) {
  const std::string path = resolvePath(base, text);
  return path.empty() ? text : path;
}

// DELETE, CUT and COPY share their codes with the delete, cut and copy events; an ON row's PING
// sends its event's code too, but never without a text.
bool isPing(int code, const std::string& text) {
  char name[32];
  return code == KAR_EVENT_PING || (CKActionRow::ARGetTextForEventType(code, name) && !text.empty());
}

}  // namespace

void World::carryOut(int index, int code, float magnitude, const std::string& text) {
  SceneObject& object = *m_objects[index];
  std::string shown = text;
  const std::string note =
      isMotionCode(code) ? moveObject(index, code, magnitude) : request(object, code, text, &shown);
  remember(object, code, magnitude, shown, note);
}

std::string World::moveObject(int index, int code, float magnitude) {
  SceneObject& object = *m_objects[index];
  float m = magnitude;
  // A MOVE without BY carries magnitude 0: it takes the standard step at the object's scale.
  if (m <= 0.0f) KUGetMagnitudeForFIFOInput(&m, 0, 1.0f / object.scale, code);
  if (m <= 0.0f) return "no step";
  const _D3DVECTOR was = object.position;
  const float heading = object.heading, scale = object.scale;
  const float s = std::sin(heading), c = std::cos(heading);
  _D3DVECTOR& p = object.position;
  switch (code) {
    case KAR_MOTION_FORWARD:
      p.x += s * m, p.z += c * m;
      break;
    case KAR_MOTION_BACKWARD:
      p.x -= s * m, p.z -= c * m;
      break;
    case KAR_MOTION_SHIFTLEFT:
      p.x -= c * m, p.z += s * m;
      break;
    case KAR_MOTION_SHIFTRIGHT:
      p.x += c * m, p.z -= s * m;
      break;
    case KAR_MOTION_UP:
      p.y = std::min(p.y + m, kMaxLift);
      break;
    case KAR_MOTION_DOWN:
      p.y = std::max(p.y - m, 0.0f);
      break;
    case KAR_MOTION_TURNLEFT:
      object.heading -= m;
      break;
    case KAR_MOTION_TURNRIGHT:
      object.heading += m;
      break;
    case KAR_CMD_ZOOMIN:
      object.scale = std::min(scale * (1.0f + 0.1f * m), kMaxScale);
      break;
    case KAR_CMD_ZOOMOUT:
      object.scale = std::max(scale / (1.0f + 0.1f * m), kMinScale);
      break;
    default:
      return "not a motion an object makes";
  }
  object.heading = std::remainder(object.heading, 2.0f * 3.14159265f);
  object.updateFootprint();
  if (objectFits(object)) {
    updateObstacle(index);
    return "done";
  }
  // The viewer never ends up inside an object, and objects stay in the room.
  object.position = was;
  object.heading = heading;
  object.scale = scale;
  object.updateFootprint();
  return "blocked";
}

bool World::objectFits(SceneObject& object) {
  const _D3DVECTOR eye = m_walker.state().position;
  const _D3DVECTOR foot = {eye.x, 0.0f, eye.z};
  if (object.footprint.FPIsPointInside(&foot)) return false;
  _D3DVECTOR corner{};
  for (int ok = object.footprint.FPSelectFirstEdge(); ok; ok = object.footprint.FPSelectNextEdgeNoWrap()) {
    object.footprint.FPGetEdgeFromVector(&corner);
    if (!m_room.FPIsPointInside(&corner)) return false;
  }
  return true;
}

std::string World::request(SceneObject& object, int code, const std::string& text, std::string* shown) {
  // RUN without a text runs the object's own file.
  const std::string path = code == KAR_CMD_RUN_NOTEXT ? object.path : resolve(object.behaviourBase, text);
  *shown = path;
  std::string name = isPing(code, text) ? "PING" : commandName(code);
  std::string outcome = "shown";
  tagMarkerItem marker{};
  if (code == KAR_CMD_PLAY) {
    m_sound.SORequestSound(path.c_str(), kSoundPriority);
    outcome = KUIsFileReadable(path.c_str()) ? "queued" : "queued; no such file";
  } else if (code == KAR_CMD_RUN || code == KAR_CMD_RUN_NOTEXT) {
    if (!m_launch) {
      outcome = "not started (start the viewer with --launch)";
    } else if (KURawRunSysCmd(nullptr, "open", path.c_str(), nullptr, nullptr)) {
      outcome = "started";
    } else {
      m_messages.reportLastError(path);
      outcome = "failed";
    }
  } else if (code == KAR_CMD_GOTO && m_viewpoints.find(text, &marker)) {
    outcome = placeViewer(Viewpoints::stateOf(marker, m_walker.state().zoom)) ? "went to the viewpoint"
                                                                              : "viewpoint blocked";
  } else if (name == "PING" && code != KAR_EVENT_PING) {
    name += " (" + commandName(code) + ")";
  } else if (code == KAR_EVENT_DELETE || code == KAR_EVENT_CUT || code == KAR_EVENT_COPY) {
    outcome = "shown; the viewer never changes files";
  }
  m_requests.push_back({m_frames, object.name, name, path, outcome});
  if (m_requests.size() > kRequestsKept) m_requests.pop_front();
  return outcome;
}

void World::remember(SceneObject& object, int code, float magnitude, const std::string& text,
                     const std::string& note) {
  object.recent.push_back({m_frames, code, magnitude, text, note});
  if (object.recent.size() > kRecentKept) object.recent.pop_front();
}

}  // namespace kview
