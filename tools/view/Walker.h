// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The viewer walking through the room: motion commands through a queue, each step tested against
// the walls and the objects' footprints, blocked steps slid along the wall they met.
#pragma once
#include <vector>

#include "KUtil.h"

namespace kview {

/// Something the viewer may not walk into.
struct Obstacle {
  CKFootPrint* footprint;  ///< its outline, dependencies up to date
  _D3DVECTOR centre;       ///< for the quick distance test
  float reach;             ///< largest distance of the outline from the centre
};

/// Where the viewer stands and looks.
struct ViewerState {
  _D3DVECTOR position{0.0f, 1.6f, 0.0f};  ///< eye position
  float heading = 0.0f;                   ///< radians; looking along (sin, 0, cos); grows to the right
  float pitch = 0.0f;                     ///< radians, up positive
  float roll = 0.0f;                      ///< radians
  double zoom = 0.4;                      ///< the camera's zoom factor (45 degrees per unit)
};

/// What the commands of one frame did.
struct WalkOutcome {
  std::vector<int> bumped;  ///< obstacles newly touched this frame (index into the obstacle list)
  int contacts = 0;         ///< new contacts with a wall or an obstacle
  int steps = 0;            ///< translation steps taken (whole or slid)
};

/// The viewer: a point on the floor plane with an eye height, moved by motion commands.
class Walker {
 public:
  /// An empty queue, the camera at its defaults.
  Walker();

  /// Puts the viewer at a place, looking along heading, up by pitch.
  void reset(const _D3DVECTOR& position, float heading, float pitch = 0.0f);
  /// Restores a whole state (a viewpoint); the caller checks that the place is clear.
  void setState(const ViewerState& state) { m_state = state; }
  /// Multiplies every translation step (1 keeps the library's standard step).
  void setWalkSpeed(float speed) { m_speed = speed > 0.0f ? speed : 1.0f; }
  float walkSpeed() const { return m_speed; }

  /// Queues a motion command (flags as the library's: bit value 2 asks for a fine step); false when
  /// the queue is full.
  bool push(int code, int flags);
  /// Carries out every queued command: turns at once, translation steps against the room (which the
  /// viewer must stay inside) and the obstacles (which it must stay out of).
  void walk(CKFootPrint* room, const std::vector<Obstacle>& obstacles, WalkOutcome* out);
  /// True when the point stands inside the room and outside every obstacle.
  static bool standsClear(CKFootPrint* room, const std::vector<Obstacle>& obstacles, const _D3DVECTOR& point);

  /// Points the camera as the viewer looks, for a view of width x height pixels.
  void aim(int width, int height);
  CKTrans& camera() { return m_camera; }
  const ViewerState& state() const { return m_state; }
  /// Direction the viewer looks in.
  _D3DVECTOR direction() const;
  /// Commands queued and not yet carried out.
  int queued() const { return m_queued; }

 private:
  void apply(int code, float magnitude, CKFootPrint* room, const std::vector<Obstacle>& obstacles,
             WalkOutcome* out);
  void stepBy(_D3DVECTOR step, CKFootPrint* room, const std::vector<Obstacle>& obstacles, WalkOutcome* out);
  void touch(int obstacle, WalkOutcome* out);

  CKFIFO m_queue;
  CKTrans m_camera;
  ViewerState m_state;
  float m_speed = 0.25f;
  int m_queued = 0;
  std::vector<int> m_touching;  ///< obstacles (room: -1) in contact during the last frame
  std::vector<int> m_touchNow;  ///< the same for the frame being walked
};

}  // namespace kview
