// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include "Walker.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kview {
namespace {

constexpr float kPi = 3.14159265f;
constexpr float kMinEye = 0.4f, kMaxEye = 2.6f;
constexpr float kMaxPitch = 1.3f;
constexpr double kMinZoom = 0.08, kMaxZoom = 1.6;
constexpr int kNoBlocker = -2, kRoom = -1;
// The library's wall margin; a step that stays this close is only refused when it comes closer.
constexpr float kMargin = 0.3f;

float wrapAngle(float a) {
  while (a > kPi) a -= 2.0f * kPi;
  while (a <= -kPi) a += 2.0f * kPi;
  return a;
}

// Distance from p to the segment a-b in the x-z plane.
float segmentDistance(const _D3DVECTOR& p, const _D3DVECTOR& a, const _D3DVECTOR& b) {
  const float dx = b.x - a.x, dz = b.z - a.z;
  const float len2 = dx * dx + dz * dz;
  float t = len2 > 0.0f ? ((p.x - a.x) * dx + (p.z - a.z) * dz) / len2 : 0.0f;
  t = std::clamp(t, 0.0f, 1.0f);
  return std::hypot(p.x - (a.x + t * dx), p.z - (a.z + t * dz));
}

struct EdgeHit {
  _D3DVECTOR a{}, b{};
  float distance = std::numeric_limits<float>::max();
};

// The edge of fp nearest to p.
EdgeHit nearestEdge(CKFootPrint* fp, const _D3DVECTOR& p) {
  EdgeHit best;
  for (int ok = fp->FPSelectFirstEdge(); ok; ok = fp->FPSelectNextEdgeNoWrap()) {
    _D3DVECTOR a{}, b{};
    fp->FPGetEdgeFromVector(&a);
    fp->FPGetEdgeToVector(&b);
    const float d = segmentDistance(p, a, b);
    if (d < best.distance) best = {a, b, d};
  }
  return best;
}

// Whether a step from p ends in a place the footprint forbids: across an edge, inside an obstacle
// or outside the room, or nearer than the margin to an edge and nearer than before.
bool forbids(CKFootPrint* fp, bool isRoom, const _D3DVECTOR& p, const _D3DVECTOR& step) {
  const _D3DVECTOR target = {p.x + step.x, p.y, p.z + step.z};
  if (fp->FPIsBoundaryCrossedNoMargin(&p, &step)) return true;
  if ((fp->FPIsPointInside(&target) != 0) != isRoom) return true;
  if (!fp->FPIsBoundaryCrossed(&p, &step)) return false;
  // A step along the wall keeps its distance but for rounding; only a step that comes nearer counts.
  return nearestEdge(fp, target).distance < std::min(nearestEdge(fp, p).distance - 1e-4f, kMargin);
}

int findBlocker(CKFootPrint* room, const std::vector<Obstacle>& obstacles, const _D3DVECTOR& p,
                const _D3DVECTOR& step) {
  if (room && forbids(room, true, p, step)) return kRoom;
  const float length = std::hypot(step.x, step.z);
  for (std::size_t i = 0; i < obstacles.size(); ++i) {
    const Obstacle& o = obstacles[i];
    // Only obstacles within a step and a margin of the viewer can be met.
    if (std::hypot(o.centre.x - p.x, o.centre.z - p.z) > o.reach + length + kMargin + 0.05f) continue;
    if (forbids(o.footprint, false, p, step)) return static_cast<int>(i);
  }
  return kNoBlocker;
}

}  // namespace

Walker::Walker() {
  m_queue.FIInitialise();
  m_camera.KTInitialise();
}

void Walker::reset(const _D3DVECTOR& position, float heading, float pitch) {
  m_state = ViewerState();
  m_state.position = position;
  m_state.heading = wrapAngle(heading);
  m_state.pitch = std::clamp(pitch, -kMaxPitch, kMaxPitch);
  m_touching.clear();
}

bool Walker::push(int code, int flags) {
  if (!m_queue.FIPushFIFOCommand(code, 0.0f, nullptr, flags)) return false;
  ++m_queued;
  return true;
}

void Walker::walk(CKFootPrint* room, const std::vector<Obstacle>& obstacles, WalkOutcome* out) {
  m_touchNow.clear();
  int code = 0, flags = 0;
  float magnitude = 0.0f;
  char text[KFI_TEXT_LEN + 1];
  while (m_queue.FIPopFIFOCommand(&code, &magnitude, text, &flags)) {
    --m_queued;
    // The library's standard step: (0.3 / speed) for translations, 0.02 rad for turns, a tenth of
    // either for fine steps; the walking speed scales translations only.
    KUGetMagnitudeForFIFOInput(&magnitude, flags, 1.0f / m_speed, code);
    apply(code, magnitude, room, obstacles, out);
  }
  m_touching.swap(m_touchNow);
}

void Walker::apply(int code, float m, CKFootPrint* room, const std::vector<Obstacle>& obstacles,
                   WalkOutcome* out) {
  const float s = std::sin(m_state.heading), c = std::cos(m_state.heading);
  switch (code) {
    case KAR_MOTION_FORWARD:
      stepBy({s * m, 0.0f, c * m}, room, obstacles, out);
      break;
    case KAR_MOTION_BACKWARD:
      stepBy({-s * m, 0.0f, -c * m}, room, obstacles, out);
      break;
    case KAR_MOTION_SHIFTLEFT:
      stepBy({-c * m, 0.0f, s * m}, room, obstacles, out);
      break;
    case KAR_MOTION_SHIFTRIGHT:
      stepBy({c * m, 0.0f, -s * m}, room, obstacles, out);
      break;
    case KAR_MOTION_UP:
      m_state.position.y = std::min(m_state.position.y + m, kMaxEye);
      break;
    case KAR_MOTION_DOWN:
      m_state.position.y = std::max(m_state.position.y - m, kMinEye);
      break;
    case KAR_MOTION_TURNLEFT:
      m_state.heading = wrapAngle(m_state.heading - m);
      break;
    case KAR_MOTION_TURNRIGHT:
      m_state.heading = wrapAngle(m_state.heading + m);
      break;
    case KAR_MOTION_LOOKUP:
    case KAR_MOTION_TURNUP:
      m_state.pitch = std::min(m_state.pitch + m, kMaxPitch);
      break;
    case KAR_MOTION_LOOKDOWN:
    case KAR_MOTION_TURNDOWN:
      m_state.pitch = std::max(m_state.pitch - m, -kMaxPitch);
      break;
    case KAR_MOTION_ROLLLEFT:
      m_state.roll = wrapAngle(m_state.roll - m);
      break;
    case KAR_MOTION_ROLLRIGHT:
      m_state.roll = wrapAngle(m_state.roll + m);
      break;
    case KAR_MOTION_AUTOLEVEL:
      m_state.pitch = m_state.roll = 0.0f;
      break;
    case KAR_CMD_ZOOMIN:
      m_state.zoom = std::max(m_state.zoom / (1.0 + 0.1 * m), kMinZoom);
      break;
    case KAR_CMD_ZOOMOUT:
      m_state.zoom = std::min(m_state.zoom * (1.0 + 0.1 * m), kMaxZoom);
      break;
    default:
      break;
  }
}

void Walker::stepBy(_D3DVECTOR step, CKFootPrint* room, const std::vector<Obstacle>& obstacles,
                    WalkOutcome* out) {
  const _D3DVECTOR at = {m_state.position.x, 0.0f, m_state.position.z};
  // A blocked step keeps only its part along the wall it met; that slide is tested again, so a
  // corner (the slide running into the next wall) stops the viewer.
  for (int attempt = 0; attempt < 3; ++attempt) {
    const int who = findBlocker(room, obstacles, at, step);
    if (who == kNoBlocker) {
      m_state.position.x += step.x;
      m_state.position.z += step.z;
      ++out->steps;
      return;
    }
    touch(who, out);
    CKFootPrint* wall = who == kRoom ? room : obstacles[who].footprint;
    const _D3DVECTOR target = {at.x + step.x, 0.0f, at.z + step.z};
    const EdgeHit edge = nearestEdge(wall, target);
    if (edge.distance == std::numeric_limits<float>::max()) return;
    CKFootPrint::FPAdjustTranslation(&edge.a, &edge.b, &step);
    if (std::hypot(step.x, step.z) < 1e-6f) return;
  }
}

void Walker::touch(int obstacle, WalkOutcome* out) {
  if (std::find(m_touchNow.begin(), m_touchNow.end(), obstacle) != m_touchNow.end()) return;
  m_touchNow.push_back(obstacle);
  if (std::find(m_touching.begin(), m_touching.end(), obstacle) != m_touching.end()) return;
  ++out->contacts;
  if (obstacle >= 0) out->bumped.push_back(obstacle);
}

bool Walker::standsClear(CKFootPrint* room, const std::vector<Obstacle>& obstacles, const _D3DVECTOR& point) {
  const _D3DVECTOR p = {point.x, 0.0f, point.z};
  if (room && !room->FPIsPointInside(&p)) return false;
  for (const Obstacle& o : obstacles) {
    if (std::hypot(o.centre.x - p.x, o.centre.z - p.z) > o.reach + 0.01f) continue;
    if (o.footprint->FPIsPointInside(&p)) return false;
  }
  return true;
}

_D3DVECTOR Walker::direction() const {
  const float cp = std::cos(m_state.pitch);
  return {std::sin(m_state.heading) * cp, std::sin(m_state.pitch), std::cos(m_state.heading) * cp};
}

void Walker::aim(int width, int height) {
  const _D3DVECTOR look = direction();
  const _D3DVECTOR level = {0.0f, 1.0f, 0.0f};
  _D3DVECTOR up = level;
  if (m_state.roll != 0.0f) KUVectorRotate(&up, &level, &look, m_state.roll);
  m_camera.KTSetCameraPosition(m_state.position.x, m_state.position.y, m_state.position.z);
  m_camera.KTSetCameraOrientation(&look, &up);
  m_camera.KTSetZoomFactor(m_state.zoom);
  const RECT view = {0, 0, std::max(width, 1), std::max(height, 1)};
  m_camera.KTSetAspectRatio(&view);
}

}  // namespace kview
