// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The keywords of the behaviour language, shared by the action rows (code to keyword) and the
// behaviour-file reader (keyword to code).
#pragma once
#include "KActionRow.h"

namespace kutil::detail {

struct Keyword {
  int code;
  const char* text;
};

/// Row-type (trigger) keywords.
inline constexpr Keyword kRowKeywords[] = {{KAR_ROW_ON, "ON"}, {KAR_ROW_IN, "IN"}, {KAR_ROW_AT, "AT"}};

/// Event keywords in the order the reader tries them; the codes are deliberately sparse.
inline constexpr Keyword kEventKeywords[] = {
    {KAR_EVENT_COLLIDE, "collide"},   {KAR_EVENT_IMPACT, "impact"},     {KAR_EVENT_SELECT, "select"},
    {KAR_EVENT_DESELECT, "deselect"}, {KAR_EVENT_PROPERTY, "property"}, {KAR_EVENT_OPEN, "open"},
    {KAR_EVENT_COPY, "copy"},         {KAR_EVENT_DELETE, "delete"},     {KAR_EVENT_CUT, "cut"},
    {KAR_EVENT_PING, "ping"},
};

/// Motion keywords. They are matched whole and their codes are distinct, so the order is free.
inline constexpr Keyword kMotionKeywords[] = {
    {KAR_MOTION_FORWARD, "FORWARD"},
    {KAR_MOTION_BACKWARD, "BACKWARD"},
    {KAR_MOTION_TURNLEFT, "TURNLEFT"},
    {KAR_MOTION_TURNRIGHT, "TURNRIGHT"},
    {KAR_MOTION_UP, "UP"},
    {KAR_MOTION_DOWN, "DOWN"},
    {KAR_MOTION_LOOKUP, "LOOKUP"},
    {KAR_MOTION_LOOKDOWN, "LOOKDOWN"},
    {KAR_MOTION_AUTOLEVEL, "AUTOLEVEL"},
    {KAR_MOTION_SHIFTLEFT, "SHIFTLEFT"},
    {KAR_MOTION_SHIFTRIGHT, "SHIFTRIGHT"},
    {KAR_MOTION_TURNUP, "TURNUP"},
    {KAR_MOTION_TURNDOWN, "TURNDOWN"},
    {KAR_MOTION_ROLLLEFT, "ROLLLEFT"},
    {KAR_MOTION_ROLLRIGHT, "ROLLRIGHT"},
};

/// An action's keyword and what it takes.
struct ActionWord {
  const char* text;
  bool repeatable;
  bool takesText;
  bool takesMagnitude;
};

/// Indexed by action code 0..19.
inline constexpr ActionWord kActionWords[] = {
    {"CALL", true, true, false},     {"RETURN", false, false, false},  {"MOVE", true, false, true},
    {"STOP", false, false, false},   {"NULL", true, false, false},     {"REPLACE", false, true, false},
    {"PLAY", true, true, false},     {"LOAD", false, true, false},     {"RUN", true, true, false},
    {"DELETE", false, false, false}, {"COPY", false, false, false},    {"CUT", false, false, false},
    {"FOR", false, false, false},    {"BY", false, false, false},      {"PING", true, true, false},
    {"GOTO", false, true, false},    {"PLAYBACK", true, true, false},  {"ZOOMIN", true, false, true},
    {"ZOOMOUT", true, false, true},  {"USERGOTO", false, true, false},
};
inline constexpr int kActionCount = static_cast<int>(sizeof kActionWords / sizeof kActionWords[0]);

/// The action's keyword and properties; null for a code without one.
inline const ActionWord* actionWord(int action) {
  return (action >= 0 && action < kActionCount) ? &kActionWords[action] : nullptr;
}

}  // namespace kutil::detail
