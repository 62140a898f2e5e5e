// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// One row of a behaviour table, and the lookups of the behaviour language's keywords.
#include <cstddef>
#include <cstring>
#include <new>

#include "KActionRow.h"
#include "KText.h"
#include "Vocabulary.h"

namespace {

using kutil::detail::actionWord;
using kutil::detail::ActionWord;
using kutil::detail::Keyword;

template <std::size_t N>
int copyKeyword(const Keyword (&table)[N], int code, char* text) {
  if (!text) return 0;
  for (const Keyword& k : table) {
    if (k.code == code) {
      std::strcpy(text, k.text);
      return 1;
    }
  }
  return 0;
}

}  // namespace

CKActionRow::CKActionRow() : m_pRecorder(nullptr) { ARInitialise(); }

CKActionRow::~CKActionRow() { delete m_pRecorder; }

int CKActionRow::ARInitialise() {
  // A recorder left here would be lost for good, so it is destroyed rather than dropped.
  delete m_pRecorder;
  m_pRecorder = nullptr;
  m_pNext = nullptr;
  m_rowType = -1;
  m_event = 0;
  m_action = -1;
  m_motion = KAR_MOTION_NONE;
  m_repeatClicks = -1;
  m_iterations = 0;
  m_magnitude = 0.0f;
  std::strcpy(m_runState, "idle");
  m_grouping[0] = '\0';
  m_callStack[0] = '\0';
  m_textData[0] = '\0';
  return 1;
}

int CKActionRow::ARCopyFrom(const CKActionRow* source) {
  if (!source || source == this) return source ? 1 : 0;
  delete m_pRecorder;
  m_pRecorder = nullptr;
  ARInitialise();
  // Each field only where the source's getter reports it set; link, run state, call stack and
  // iterations stay fresh so the copy starts idle and outside any table.
  int value = 0;
  float magnitude = 0.0f;
  char text[KAR_TEXTDATA_LEN + 1];
  if (source->ARGetRowType(&value)) ARSetRowType(value);
  if (source->ARGetGrouping(text)) ARSetGrouping(text);
  if (source->ARGetEvent(&value)) ARSetEvent(value);
  if (source->ARGetAction(&value)) ARSetAction(value);
  if (source->ARGetMotion(&value)) ARSetMotion(value);
  if (source->ARGetTextData(text)) ARSetTextData(text);
  if (source->ARGetMagnitude(&magnitude)) ARSetMagnitude(magnitude);
  if (source->ARGetRepeatClicks(&value)) ARSetRepeatClicks(value);
  return 1;
}

int CKActionRow::ARSetGrouping(const char* text) {
  if (!text) return 0;
  return KUSafeStrncpy(m_grouping, text, KAR_GROUPING_LEN), 1;
}

int CKActionRow::ARGetGrouping(char* out) const {
  if (!out || m_grouping[0] == '\0') return 0;
  std::strcpy(out, m_grouping);
  return 1;
}

int CKActionRow::ARSetCallStack(const char* text) {
  if (!text) return 0;
  return KUSafeStrncpy(m_callStack, text, KAR_CALLSTACK_LEN), 1;
}

int CKActionRow::ARGetCallStack(char* out) const {
  if (!out) return 0;
  std::strcpy(out, m_callStack);
  return 1;
}

int CKActionRow::ARSetEvent(int event) {
  m_event = event;
  return 1;
}

int CKActionRow::ARGetEvent(int* event) const {
  if (!event || m_event == 0) return 0;
  *event = m_event;
  return 1;
}

int CKActionRow::ARSetRowType(int rowType) {
  m_rowType = rowType;
  return 1;
}

int CKActionRow::ARGetRowType(int* rowType) const {
  if (!rowType) return 0;
  *rowType = m_rowType;
  return 1;
}

int CKActionRow::ARSetAction(int action) {
  m_action = action;
  return 1;
}

int CKActionRow::ARGetAction(int* action) const {
  if (!action) return 0;
  *action = m_action;
  return 1;
}

int CKActionRow::ARSetMotion(int motion) {
  m_motion = motion;
  return 1;
}

int CKActionRow::ARGetMotion(int* motion) const {
  if (!motion) return 0;
  *motion = m_motion;
  return 1;
}

int CKActionRow::ARSetMagnitude(float magnitude) {
  m_magnitude = magnitude;
  return 1;
}

int CKActionRow::ARGetMagnitude(float* magnitude) const {
  if (!magnitude) return 0;
  *magnitude = m_magnitude;
  return 1;
}

int CKActionRow::ARSetTextData(const char* text) {
  if (!text) return 0;
  return KUSafeStrncpy(m_textData, text, KAR_TEXTDATA_LEN), 1;
}

int CKActionRow::ARGetTextData(char* out) const {
  if (!out || m_textData[0] == '\0') return 0;
  std::strcpy(out, m_textData);
  return 1;
}

int CKActionRow::ARSetRepeatClicks(int clicks) {
  m_repeatClicks = clicks;
  return 1;
}

int CKActionRow::ARGetRepeatClicks(int* clicks) const {
  if (!clicks || m_repeatClicks < 0) return 0;
  *clicks = m_repeatClicks;
  return 1;
}

int CKActionRow::ARSetRunState(const char* text) {
  if (!text) return 0;
  return KUSafeStrncpy(m_runState, text, KAR_RUNSTATE_LEN), 1;
}

int CKActionRow::ARGetRunState(char* out) const {
  if (!out) return 0;
  std::strcpy(out, m_runState);
  return 1;
}

int CKActionRow::ARSetIterations(int iterations) {
  m_iterations = iterations;
  return 1;
}

int CKActionRow::ARGetIterations(int* iterations) const {
  if (!iterations) return 0;
  *iterations = m_iterations;
  return 1;
}

int CKActionRow::ARGetTextForRowType(int code, char* text) {
  return copyKeyword(kutil::detail::kRowKeywords, code, text);
}

int CKActionRow::ARGetTextForEventType(int code, char* text) {
  return copyKeyword(kutil::detail::kEventKeywords, code, text);
}

int CKActionRow::ARGetTextForActionType(int code, char* text) {
  const ActionWord* info = actionWord(code);
  if (!info || !text) return 0;
  std::strcpy(text, info->text);
  return 1;
}

int CKActionRow::ARGetTextForMotionType(int code, char* text) {
  return copyKeyword(kutil::detail::kMotionKeywords, code, text);
}

int CKActionRow::ARGetEventTypeFromText(int* code, const char* text) {
  if (!code || !text) return 0;
  for (const Keyword& event : kutil::detail::kEventKeywords) {
    if (std::strcmp(event.text, text) == 0) {
      *code = event.code;
      return 1;
    }
  }
  return 0;
}

int CKActionRow::ARIsRepeatable(int action) {
  const ActionWord* info = actionWord(action);
  return (info && info->repeatable) ? 1 : 0;
}

int CKActionRow::ARAcceptsTextData(int action) {
  const ActionWord* info = actionWord(action);
  return (info && info->takesText) ? 1 : 0;
}

int CKActionRow::ARAcceptsMagnitude(int action) {
  const ActionWord* info = actionWord(action);
  return (info && info->takesMagnitude) ? 1 : 0;
}

int CKActionRow::ARGetPlaybackCommand(int* code, int* flags, char* text) {
  if (!code || !flags || !text || m_textData[0] == '\0') return 0;
  if (!m_pRecorder) {
    // The only allocation a behaviour tick may make: a PLAYBACK row's first recorder.
    m_pRecorder = new (std::nothrow) CKInputRecord();
    if (!m_pRecorder) return 0;
    m_pRecorder->IRInitialise();
    m_pRecorder->IRSetFileName(m_textData, KIR_MODE_PLAY);
  }
  if (m_pRecorder->IRGetCommand(code, flags, text)) return 1;
  m_pRecorder->IRTerminate();  // recording exhausted
  return 0;
}

int CKActionRow::ARIsPlayingBack() { return m_pRecorder ? m_pRecorder->IRIsPlaying() : 0; }

int CKActionRow::ARRestartPlayback() {
  if (m_textData[0] != '\0' && m_pRecorder) m_pRecorder->IRSetFileName(m_textData, KIR_MODE_PLAY);
  // Always 0, as it always was; callers ignore it.
  return 0;
}
