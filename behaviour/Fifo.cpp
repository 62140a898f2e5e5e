// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The eight-slot command ring. Everything lives inside the object: the behaviour clock touches two
// of these on every tick, so nothing here may allocate.
#include "KActionRow.h"
#include "KFIFO.h"
#include "KText.h"

namespace {

int nextSlot(int index) { return (index + 1) % KFI_SLOT_COUNT; }

void emptySlot(tagKFIFOCommand& slot) {
  slot.vector.x = 0.0f;
  slot.vector.y = 0.0f;
  slot.vector.z = 0.0f;
  slot.code = KFI_EMPTY_CODE;
  slot.magnitude = -1.0f;
  slot.flags = 0;
  slot.text[0] = '\0';
}

}  // namespace

CKFIFO::CKFIFO() { FIInitialise(); }

CKFIFO::~CKFIFO() { m_lastResult = 1; }

int CKFIFO::FIInitialise() {
  FIClearFIFOCommandPipe();
  m_transfer[0] = '\0';
  return m_lastResult = 1;
}

int CKFIFO::FIPushFIFOCommand(int code, float magnitude) {
  return FIPushFIFOCommand(code, magnitude, nullptr, "", 0);
}

int CKFIFO::FIPushFIFOCommand(int code, float magnitude, const char* text, int flags) {
  return FIPushFIFOCommand(code, magnitude, nullptr, text, flags);
}

int CKFIFO::FIPushFIFOCommand(int code, float magnitude, const _D3DVECTOR* vector, const char* text,
                              int flags) {
  m_lastResult = 0;
  int slot = m_writeIndex;
  if (m_slots[slot].code != KFI_EMPTY_CODE) {
    slot = nextSlot(slot);
    if (m_slots[slot].code != KFI_EMPTY_CODE) return 0;  // full
  }
  tagKFIFOCommand& entry = m_slots[slot];
  entry.code = code;
  entry.magnitude = magnitude;
  entry.flags = flags;
  if (vector) {
    entry.vector = *vector;
  } else {
    entry.vector.x = entry.vector.y = entry.vector.z = 0.0f;
  }
  KUSafeStrncpy(entry.text, text ? text : "", KFI_TEXT_LEN);
  m_writeIndex = slot;
  return m_lastResult = 1;
}

int CKFIFO::FIPopFIFOCommand() {
  int code = 0;
  float magnitude = 0.0f;
  _D3DVECTOR vector;
  int flags = 0;
  char text[KFI_TEXT_LEN + 1];
  return FIPopFIFOCommand(&code, &magnitude, &vector, text, &flags);
}

int CKFIFO::FIPopFIFOCommand(int* code, float* magnitude) {
  if (!code || !magnitude) return m_lastResult = 0;
  _D3DVECTOR vector;
  int flags = 0;
  char text[KFI_TEXT_LEN + 1];
  return FIPopFIFOCommand(code, magnitude, &vector, text, &flags);
}

int CKFIFO::FIPopFIFOCommand(int* code, float* magnitude, char* text, int* flags) {
  if (!code || !magnitude || !text || !flags) return m_lastResult = 0;
  _D3DVECTOR vector;
  return FIPopFIFOCommand(code, magnitude, &vector, text, flags);
}

int CKFIFO::FIPopFIFOCommand(int* code, float* magnitude, _D3DVECTOR* vector, char* text, int* flags) {
  m_lastResult = 0;
  if (!code || !magnitude || !vector || !text || !flags) return 0;
  if (FIPeekFIFOCommand(m_readIndex, code, magnitude, vector, text, flags) == 0) return m_lastResult = 0;
  emptySlot(m_slots[m_readIndex]);
  // An emptied queue keeps read == write, so the read index only moves onto an occupied slot.
  const int next = nextSlot(m_readIndex);
  if (m_slots[next].code != KFI_EMPTY_CODE) m_readIndex = next;
  return m_lastResult = 1;
}

int CKFIFO::FIPeekFIFOCommand(int* code, float* magnitude) {
  if (!code || !magnitude) return m_lastResult = 0;
  _D3DVECTOR vector;
  int flags = 0;
  char text[KFI_TEXT_LEN + 1];
  return FIPeekFIFOCommand(m_readIndex, code, magnitude, &vector, text, &flags);
}

int CKFIFO::FIPeekFIFOCommand(int* code, float* magnitude, char* text, int* flags) {
  if (!code || !magnitude || !text || !flags) return m_lastResult = 0;
  _D3DVECTOR vector;
  return FIPeekFIFOCommand(m_readIndex, code, magnitude, &vector, text, flags);
}

int CKFIFO::FIPeekFIFOCommand(int* code, float* magnitude, _D3DVECTOR* vector, char* text, int* flags) {
  return FIPeekFIFOCommand(m_readIndex, code, magnitude, vector, text, flags);
}

int CKFIFO::FIPeekFIFOCommand(int slot, int* code, float* magnitude, _D3DVECTOR* vector, char* text,
                              int* flags) {
  m_lastResult = 0;
  if (!code || !magnitude || !vector || !text || !flags) return 0;
  if (slot < 0 || slot >= KFI_SLOT_COUNT) return 0;
  if (m_slots[m_writeIndex].code == KFI_EMPTY_CODE) return 0;  // empty queue
  const tagKFIFOCommand& entry = m_slots[slot];
  *code = entry.code;
  *magnitude = entry.magnitude;
  *flags = entry.flags;
  *vector = entry.vector;
  KUSafeStrncpy(text, entry.text, KFI_TEXT_LEN);
  return m_lastResult = 1;
}

int CKFIFO::FIClearFIFOCommandPipe() {
  m_lastResult = 0;
  for (tagKFIFOCommand& slot : m_slots) emptySlot(slot);
  m_writeIndex = 0;
  m_readIndex = 0;
  // Returns the word as set on entry (0); callers have always ignored it.
  return m_lastResult;
}

int CKFIFO::FITestFIFOCommandPipe() {
  return m_lastResult = (m_slots[m_writeIndex].code != KFI_EMPTY_CODE) ? 1 : 0;
}

int CKFIFO::FIUpdateFIFOFrom(CKFIFO* source) { return FIUpdateFIFOFrom(source, 0); }

int CKFIFO::FIUpdateFIFOFrom(CKFIFO* source, int extraFlags) {
  // Moving a queue into itself would never drain it.
  if (!source || source == this) return m_lastResult = 0;
  m_transfer[0] = '\0';
  int moved = 0;
  int code = 0;
  int flags = 0;
  float magnitude = 0.0f;
  _D3DVECTOR vector;
  while (source->FIPopFIFOCommand(&code, &magnitude, &vector, m_transfer, &flags)) {
    moved = 1;
    // Once this queue is full the rest of the source is still drained and lost, on purpose.
    FIPushFIFOCommand(code, magnitude, &vector, m_transfer, flags | extraFlags);
  }
  return m_lastResult = moved;
}

int CKFIFO::FIPeekFIFOTo(CKFIFO* destination, int mask, int mode) {
  // Copying a queue into itself would chase its own write index.
  if (!destination || destination == this) return m_lastResult = 0;
  int copied = 0;
  if (m_slots[m_writeIndex].code != KFI_EMPTY_CODE) {
    const int last = m_writeIndex;
    int code = 0;
    int flags = 0;
    float magnitude = 0.0f;
    _D3DVECTOR vector;
    char text[KFI_TEXT_LEN + 1];
    for (int slot = m_readIndex;; slot = nextSlot(slot)) {
      FIPeekFIFOCommand(slot, &code, &magnitude, &vector, text, &flags);
      if ((mask & KFI_SELECT_ALL) != 0 || (mask & flags) != 0) {
        int passed = mode & KFI_FLAG_CHANNEL_MASK;
        if ((mode & KFI_MODE_OR) != 0) {
          passed = flags | (mode & KFI_FLAG_CHANNEL_MASK);
        } else if ((mode & KFI_MODE_KEEP) != 0) {
          passed = flags;
        }
        destination->FIPushFIFOCommand(code, magnitude, &vector, text, passed);  // overflow is lost
        copied = 1;
      }
      if (slot == last) break;
    }
  }
  return m_lastResult = copied;
}

int CKFIFO::FIGetLastResult() const { return m_lastResult; }

int KUGetMagnitudeForFIFOInput(float* magnitude, int flags, float speed, int code) {
  if (!magnitude) return 0;
  const int divisor = (flags != 0 && (flags & KFI_FLAG_FINE) != 0) ? 10 : 1;
  switch (code) {
    case KAR_MOTION_FORWARD:
    case KAR_MOTION_BACKWARD:
    case KAR_MOTION_UP:
    case KAR_MOTION_DOWN:
    case KAR_MOTION_SHIFTLEFT:
    case KAR_MOTION_SHIFTRIGHT: {
      // Single precision throughout: 0.3f / 1.5f must come out as exactly 0.2f.
      const float step = 0.3f / speed;
      *magnitude = step / static_cast<float>(divisor);
      break;
    }
    case KAR_MOTION_TURNLEFT:
    case KAR_MOTION_TURNRIGHT:
    case KAR_MOTION_LOOKUP:
    case KAR_MOTION_LOOKDOWN:
    case KAR_MOTION_TURNUP:
    case KAR_MOTION_TURNDOWN:
    case KAR_MOTION_ROLLLEFT:
    case KAR_MOTION_ROLLRIGHT:
      *magnitude = static_cast<float>(0.02 / divisor);
      break;
    case KAR_CMD_ZOOMIN:
    case KAR_CMD_ZOOMOUT:
      *magnitude = static_cast<float>(1.0 / divisor);
      break;
    default:
      *magnitude = -1.0f;
      break;
  }
  return 1;
}
