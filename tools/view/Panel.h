// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The Dear ImGui panel: the objects, the selected object's rows and commands, the queues, requests,
// messages, viewpoints, and the frame time split into library work and drawing.
#pragma once
#include <vector>

#include "Recording.h"

namespace kview {

class World;
struct Timings;
struct Settings;

/// What the panel asked for in this frame.
struct PanelRequests {
  std::vector<InputCommand> commands;  ///< selections made in the object list
  int jump = -1;                       ///< viewpoint to jump to
  bool saveViewpoint = false;
};

/// Draws the panel (inside a Dear ImGui frame).
class Panel {
 public:
  /// Draws the panel; the walking speed slider changes settings and the viewer at once. Returns the
  /// panel's right edge in pixels, where the view of the room begins.
  float draw(World& world, const Timings& timings, Settings& settings, PanelRequests* out);

 private:
  void frameSection(const Timings& timings);
  void viewerSection(World& world, Settings& settings, PanelRequests* out);
  void objectsSection(World& world, PanelRequests* out);
  void selectedSection(World& world);
  void queuesSection(World& world);
  void requestsSection(World& world);
  void messagesSection(World& world);
};

}  // namespace kview
