// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Keys and the mouse: held walking keys become motion commands, other keys and clicks become actions.
#pragma once
#include <SDL.h>

#include <vector>

#include "Recording.h"

namespace kview {

/// What one frame's events asked for besides held motions.
struct Actions {
  std::vector<InputCommand> commands;  ///< one-shot commands (level the view, zoom)
  bool quit = false;
  bool togglePanel = false;
  bool saveViewpoint = false;
  int jump = -1;             ///< viewpoint to jump to (0-based), -1 for none
  bool click = false;        ///< a left click outside the panel
  bool doubleClick = false;  ///< ... that was the second of a double click
  float clickX = 0.0f, clickY = 0.0f;
};

/// Turns window events and the keyboard's state into commands.
class Input {
 public:
  /// Handles one event Dear ImGui has seen; the flags say whether the panel wants mouse or keyboard.
  static void handle(const SDL_Event& event, bool panelWantsMouse, bool panelWantsKeyboard, Actions* actions);
  /// One motion command per walking key held down (arrows, WASD, PageUp/PageDown); Shift makes it fine.
  static void heldMotions(bool panelWantsKeyboard, std::vector<InputCommand>* out);
};

}  // namespace kview
