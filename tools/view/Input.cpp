// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include "Input.h"

#include "KUtil.h"

namespace kview {
namespace {

struct HeldKey {
  SDL_Scancode key;
  int code;
};
constexpr HeldKey kHeldKeys[] = {
    {SDL_SCANCODE_UP, KAR_MOTION_FORWARD},    {SDL_SCANCODE_W, KAR_MOTION_FORWARD},
    {SDL_SCANCODE_DOWN, KAR_MOTION_BACKWARD}, {SDL_SCANCODE_S, KAR_MOTION_BACKWARD},
    {SDL_SCANCODE_LEFT, KAR_MOTION_TURNLEFT}, {SDL_SCANCODE_RIGHT, KAR_MOTION_TURNRIGHT},
    {SDL_SCANCODE_A, KAR_MOTION_SHIFTLEFT},   {SDL_SCANCODE_D, KAR_MOTION_SHIFTRIGHT},
    {SDL_SCANCODE_PAGEUP, KAR_MOTION_LOOKUP}, {SDL_SCANCODE_PAGEDOWN, KAR_MOTION_LOOKDOWN},
};

void handleKey(const SDL_KeyboardEvent& key, Actions* actions) {
  if (key.repeat) return;
  const SDL_Keycode k = key.keysym.sym;
  if (k >= SDLK_1 && k <= SDLK_9) actions->jump = static_cast<int>(k - SDLK_1);
  switch (k) {
    case SDLK_ESCAPE:
      actions->quit = true;
      break;
    case SDLK_TAB:
      actions->togglePanel = true;
      break;
    case SDLK_m:
      actions->saveViewpoint = true;
      break;
    case SDLK_HOME:
      actions->commands.push_back({KAR_MOTION_AUTOLEVEL, 0, ""});
      break;
    case SDLK_PLUS:
    case SDLK_EQUALS:
    case SDLK_KP_PLUS:
      actions->commands.push_back({KAR_CMD_ZOOMIN, 0, ""});
      break;
    case SDLK_MINUS:
    case SDLK_KP_MINUS:
      actions->commands.push_back({KAR_CMD_ZOOMOUT, 0, ""});
      break;
    default:
      break;
  }
}

}  // namespace

void Input::handle(const SDL_Event& event, bool panelWantsMouse, bool panelWantsKeyboard, Actions* actions) {
  switch (event.type) {
    case SDL_QUIT:
      actions->quit = true;
      break;
    case SDL_KEYDOWN:
      if (!panelWantsKeyboard) handleKey(event.key, actions);
      break;
    case SDL_MOUSEBUTTONDOWN:
      if (panelWantsMouse || event.button.button != SDL_BUTTON_LEFT) break;
      actions->click = true;
      actions->doubleClick = event.button.clicks >= 2;
      actions->clickX = static_cast<float>(event.button.x);
      actions->clickY = static_cast<float>(event.button.y);
      break;
    default:
      break;
  }
}

void Input::heldMotions(bool panelWantsKeyboard, std::vector<InputCommand>* out) {
  if (panelWantsKeyboard) return;
  const Uint8* keys = SDL_GetKeyboardState(nullptr);
  // Bit value 2 asks the library for the fine step, a tenth of the standard one.
  const int flags = (SDL_GetModState() & KMOD_SHIFT) ? KFI_FLAG_FINE : 0;
  int done[64] = {0};
  for (const HeldKey& h : kHeldKeys) {
    if (!keys[h.key] || done[h.code]) continue;  // W and Up together still make one step
    done[h.code] = 1;
    out->push_back({h.code, flags, ""});
  }
}

}  // namespace kview
