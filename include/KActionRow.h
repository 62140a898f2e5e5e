// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KActionRow.h
/// CKActionRow: one row of a behaviour table and its vocabulary.
#pragma once
#include "KInputRecord.h"
#include "KUtilBase.h"

// Row types (triggers).
constexpr int KAR_ROW_ON = 1;  ///< "ON": fires on an event of the given event type
constexpr int KAR_ROW_IN = 2;  ///< "IN": a named group member, run when called or chained to
constexpr int KAR_ROW_AT = 3;  ///< "AT": fires at the clock time held in the grouping

// Event types; they share the command-code space with motions and requests.
constexpr int KAR_EVENT_SELECT = 20;    ///< "select"
constexpr int KAR_EVENT_DESELECT = 21;  ///< "deselect"
constexpr int KAR_EVENT_PROPERTY = 23;  ///< "property"
constexpr int KAR_EVENT_OPEN = 24;      ///< "open"
constexpr int KAR_EVENT_COLLIDE = 26;   ///< "collide"
constexpr int KAR_EVENT_IMPACT = 28;    ///< "impact"
constexpr int KAR_EVENT_DELETE = 45;    ///< "delete"
constexpr int KAR_EVENT_CUT = 46;       ///< "cut"
constexpr int KAR_EVENT_COPY = 48;      ///< "copy"
constexpr int KAR_EVENT_PING = 80;      ///< "ping"

// Action types.
constexpr int KAR_ACTION_CALL = 0;       ///< "CALL": run a named IN group
constexpr int KAR_ACTION_RETURN = 1;     ///< "RETURN": end of a called group
constexpr int KAR_ACTION_MOVE = 2;       ///< "MOVE": push the row's motion
constexpr int KAR_ACTION_STOP = 3;       ///< "STOP": reset the whole table
constexpr int KAR_ACTION_NULL = 4;       ///< "NULL": do nothing
constexpr int KAR_ACTION_REPLACE = 5;    ///< "REPLACE"
constexpr int KAR_ACTION_PLAY = 6;       ///< "PLAY"
constexpr int KAR_ACTION_LOAD = 7;       ///< "LOAD"
constexpr int KAR_ACTION_RUN = 8;        ///< "RUN"
constexpr int KAR_ACTION_DELETE = 9;     ///< "DELETE"
constexpr int KAR_ACTION_COPY = 10;      ///< "COPY"
constexpr int KAR_ACTION_CUT = 11;       ///< "CUT"
constexpr int KAR_ACTION_FOR = 12;       ///< "FOR": a keyword only, no behaviour
constexpr int KAR_ACTION_BY = 13;        ///< "BY": a keyword only, no behaviour
constexpr int KAR_ACTION_PING = 14;      ///< "PING"
constexpr int KAR_ACTION_GOTO = 15;      ///< "GOTO"
constexpr int KAR_ACTION_PLAYBACK = 16;  ///< "PLAYBACK": play a recorded-input file
constexpr int KAR_ACTION_ZOOMIN = 17;    ///< "ZOOMIN"
constexpr int KAR_ACTION_ZOOMOUT = 18;   ///< "ZOOMOUT"
constexpr int KAR_ACTION_USERGOTO = 19;  ///< "USERGOTO"

// Motion types; the gaps in the numbering are part of the command-code space.
constexpr int KAR_MOTION_NONE = 0;         ///< no motion
constexpr int KAR_MOTION_FORWARD = 1;      ///< "FORWARD" (translation)
constexpr int KAR_MOTION_BACKWARD = 2;     ///< "BACKWARD" (translation)
constexpr int KAR_MOTION_TURNLEFT = 3;     ///< "TURNLEFT" (rotation)
constexpr int KAR_MOTION_TURNRIGHT = 4;    ///< "TURNRIGHT" (rotation)
constexpr int KAR_MOTION_UP = 5;           ///< "UP" (translation)
constexpr int KAR_MOTION_DOWN = 6;         ///< "DOWN" (translation)
constexpr int KAR_MOTION_LOOKUP = 7;       ///< "LOOKUP" (rotation)
constexpr int KAR_MOTION_LOOKDOWN = 8;     ///< "LOOKDOWN" (rotation)
constexpr int KAR_MOTION_AUTOLEVEL = 11;   ///< "AUTOLEVEL" (no standard magnitude)
constexpr int KAR_MOTION_SHIFTLEFT = 12;   ///< "SHIFTLEFT" (translation)
constexpr int KAR_MOTION_SHIFTRIGHT = 13;  ///< "SHIFTRIGHT" (translation)
constexpr int KAR_MOTION_TURNUP = 41;      ///< "TURNUP" (rotation)
constexpr int KAR_MOTION_TURNDOWN = 42;    ///< "TURNDOWN" (rotation)
constexpr int KAR_MOTION_ROLLLEFT = 43;    ///< "ROLLLEFT" (rotation)
constexpr int KAR_MOTION_ROLLRIGHT = 44;   ///< "ROLLRIGHT" (rotation)

// Request codes the behaviour clock pushes to the host; DELETE, CUT and COPY reuse the event codes.
constexpr int KAR_CMD_RUN = 30;         ///< run the text data
constexpr int KAR_CMD_PLAY = 31;        ///< play the text data
constexpr int KAR_CMD_REPLACE = 32;     ///< replace with the text data
constexpr int KAR_CMD_LOAD = 33;        ///< load the text data
constexpr int KAR_CMD_GOTO = 35;        ///< go to the text data
constexpr int KAR_CMD_USERGOTO = 37;    ///< user go-to the text data
constexpr int KAR_CMD_ZOOMIN = 40;      ///< zoom in by the magnitude
constexpr int KAR_CMD_RUN_NOTEXT = 50;  ///< run without text
constexpr int KAR_CMD_ZOOMOUT = 58;     ///< zoom out by the magnitude
constexpr int KAR_CMD_RESET = 81;       ///< input only: reset the table, never passed on

// Field capacities (characters, without the terminator).
constexpr int KAR_RUNSTATE_LEN = 64;   ///< run state
constexpr int KAR_GROUPING_LEN = 64;   ///< grouping (IN name or AT time)
constexpr int KAR_CALLSTACK_LEN = 72;  ///< call stack
constexpr int KAR_TEXTDATA_LEN = 260;  ///< text data

/// One row of a behaviour table: a trigger, an action with its motion, magnitude and text, and the
/// state the behaviour clock keeps; also the vocabulary of the behaviour language.
class KUTIL_API CKActionRow {
 public:
  /// Leaves the row as ARInitialise does, without a playback recorder.
  CKActionRow();
  /// Destroys the playback recorder if there is one.
  ~CKActionRow();
  CKActionRow(const CKActionRow&) = delete;
  CKActionRow& operator=(const CKActionRow&) = delete;

  /// Sets every field to its initial value ("idle", types -1, texts empty), destroying a recorder; returns 1.
  int ARInitialise();
  /// Destroys this row's recorder, initialises, and copies the trigger, action, motion, text data,
  /// magnitude and repeat clicks of source (not the link, run state, call stack or iterations); 1, or 0
  /// for a null source (row unchanged).
  int ARCopyFrom(const CKActionRow* source);

  /// Copies at most 64 characters as the grouping; returns 1 (0 for a null text).
  int ARSetGrouping(const char* text);
  /// Copies the grouping into out (capacity 65, always terminated); 0 (out untouched) when it is empty.
  int ARGetGrouping(char* out) const;
  /// Copies at most 72 characters as the call stack; returns 1 (0 for a null text).
  int ARSetCallStack(const char* text);
  /// Copies the call stack into out (capacity 73, always terminated); returns 1.
  int ARGetCallStack(char* out) const;
  /// Sets the event type code; returns 1.
  int ARSetEvent(int event);
  /// Writes the event code; 0 (output untouched) when no event is set.
  int ARGetEvent(int* event) const;
  /// Sets the row type; returns 1.
  int ARSetRowType(int rowType);
  /// Writes the row type (-1 when not set); returns 1.
  int ARGetRowType(int* rowType) const;
  /// Sets the action code; returns 1.
  int ARSetAction(int action);
  /// Writes the action code (-1 when not set); returns 1.
  int ARGetAction(int* action) const;
  /// Sets the motion code; returns 1.
  int ARSetMotion(int motion);
  /// Writes the motion code (0 for none); returns 1.
  int ARGetMotion(int* motion) const;
  /// Sets the magnitude; returns 1.
  int ARSetMagnitude(float magnitude);
  /// Writes the magnitude; returns 1.
  int ARGetMagnitude(float* magnitude) const;
  /// Copies at most 260 characters as the text data; returns 1 (0 for a null text).
  int ARSetTextData(const char* text);
  /// Copies the text data into out (capacity 261, always terminated); 0 (out untouched) when it is empty.
  int ARGetTextData(char* out) const;
  /// Sets the repeat count (negative for none); returns 1.
  int ARSetRepeatClicks(int clicks);
  /// Writes the repeat count; 0 (output untouched) when it is negative.
  int ARGetRepeatClicks(int* clicks) const;
  /// Copies at most 64 characters as the run state; returns 1 (0 for a null text).
  int ARSetRunState(const char* text);
  /// Copies the run state into out (capacity 65, always terminated); returns 1.
  int ARGetRunState(char* out) const;
  /// Sets the repetitions still to perform; returns 1.
  int ARSetIterations(int iterations);
  /// Writes the repetitions still to perform; returns 1.
  int ARGetIterations(int* iterations) const;

  /// Copies the row-type keyword of code into text (capacity 3); 0 (text untouched) for a code without one.
  static int ARGetTextForRowType(int code, char* text);
  /// Copies the event keyword of code into text (capacity 9); 0 (text untouched) for a code without one.
  static int ARGetTextForEventType(int code, char* text);
  /// Copies the action keyword of code into text (capacity 9); 0 (text untouched) for a code without one.
  static int ARGetTextForActionType(int code, char* text);
  /// Copies the motion keyword of code into text (capacity 11); 0 (text untouched) for a code without one.
  static int ARGetTextForMotionType(int code, char* text);
  /// Writes the event code of an exact, case-sensitive keyword; 0 (code untouched) for any other text.
  static int ARGetEventTypeFromText(int* code, const char* text);
  /// 1 when the action takes a repeat count.
  static int ARIsRepeatable(int action);
  /// 1 when the action takes text data.
  static int ARAcceptsTextData(int action);
  /// 1 when the action takes a magnitude (MOVE, ZOOMIN, ZOOMOUT).
  static int ARAcceptsMagnitude(int action);

 private:
  friend struct kutil::detail::Internals<CKActionRow>;

  // Playback of the recorded-input file named by the text data, for the clock only.
  int ARGetPlaybackCommand(int* code, int* flags, char* text);
  int ARIsPlayingBack();
  int ARRestartPlayback();

  CKActionRow* m_pNext;                     ///< following row of the owning table
  CKInputRecord* m_pRecorder;               ///< owned playback recorder, made on first PLAYBACK
  int m_rowType;                            ///< trigger kind; -1 not set
  int m_event;                              ///< event code of an ON row; 0 not set
  int m_action;                             ///< action code; -1 not set
  int m_motion;                             ///< motion code of a MOVE; 0 none
  int m_repeatClicks;                       ///< repeat count; negative not set
  int m_iterations;                         ///< repetitions still to perform
  float m_magnitude;                        ///< amount for MOVE, ZOOMIN, ZOOMOUT
  char m_runState[KAR_RUNSTATE_LEN + 1];    ///< "idle", "next", "busy", "flag" or "call." entry
  char m_grouping[KAR_GROUPING_LEN + 1];    ///< IN name or AT time
  char m_callStack[KAR_CALLSTACK_LEN + 1];  ///< "empty" or "call." and the called group
  char m_textData[KAR_TEXTDATA_LEN + 1];    ///< argument of the action
};
