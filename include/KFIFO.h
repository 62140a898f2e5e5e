// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KFIFO.h
/// CKFIFO: the eight-slot command queue.
#pragma once
#include "KUtilBase.h"

/// Number of command slots in every CKFIFO ring; fixed, not configurable.
constexpr int KFI_SLOT_COUNT = 8;
/// Longest text a queued command carries; longer texts are cut silently.
constexpr int KFI_TEXT_LEN = 260;
/// Command code that marks a slot as empty.
constexpr int KFI_EMPTY_CODE = -1;
/// Flag bit that asks KUGetMagnitudeForFIFOInput for the fine (one tenth) step.
constexpr int KFI_FLAG_FINE = 2;
/// Low flag bits holding a target or channel number that FIPeekFIFOTo can rewrite.
constexpr int KFI_FLAG_CHANNEL_MASK = 15;
/// FIPeekFIFOTo selection mask bit: select every command.
constexpr int KFI_SELECT_ALL = 32;
/// FIPeekFIFOTo mode bit: keep each copied command's flags unchanged.
constexpr int KFI_MODE_KEEP = 64;
/// FIPeekFIFOTo mode bit: OR the mode's low four bits into each copied command's flags.
constexpr int KFI_MODE_OR = 128;

/// One command record of a CKFIFO slot.
typedef struct tagKFIFOCommand {
  int code;                     ///< command code (motion, event or request); -1 marks the slot empty
  int flags;                    ///< caller-defined bits; the low four are a channel number
  float magnitude;              ///< size or amount of the command; -1.0 when empty
  _D3DVECTOR vector;            ///< position or direction that goes with the command
  char text[KFI_TEXT_LEN + 1];  ///< file name, row name or other text; always terminated
} tagKFIFOCommand;

/// A fixed ring of eight commands between the host and a behaviour table; never allocates.
class KUTIL_API CKFIFO {
 public:
  /// Leaves the queue empty, as FIInitialise does.
  CKFIFO();
  /// Sets the last-result word to 1.
  ~CKFIFO();

  /// Empties all eight slots, sets both indices to 0 and empties the transfer buffer; returns 1.
  int FIInitialise();

  /// Pushes code and magnitude with vector 0,0,0, empty text and flags 0; 0 when the queue is full.
  int FIPushFIFOCommand(int code, float magnitude);
  /// Pushes with vector 0,0,0; a null text counts as empty; 0 when the queue is full.
  int FIPushFIFOCommand(int code, float magnitude, const char* text, int flags);
  /// The full push; a null vector counts as 0,0,0 and a null text as empty; texts are cut at 260
  /// characters; 0 when the queue is full (nothing changes).
  int FIPushFIFOCommand(int code, float magnitude, const _D3DVECTOR* vector, const char* text, int flags);

  /// Removes the oldest command and discards it; 0 when the queue is empty.
  int FIPopFIFOCommand();
  /// Removes the oldest command into code and magnitude; 0 (outputs untouched) when empty or on a null
  /// pointer.
  int FIPopFIFOCommand(int* code, float* magnitude);
  /// As above with text (capacity 261, always terminated, untouched on failure) and flags.
  int FIPopFIFOCommand(int* code, float* magnitude, char* text, int* flags);
  /// The full pop; text needs 261 bytes, is always terminated and is untouched on failure.
  int FIPopFIFOCommand(int* code, float* magnitude, _D3DVECTOR* vector, char* text, int* flags);

  /// Copies out the oldest command without removing it; 0 (outputs untouched) when empty or on a null
  /// pointer.
  int FIPeekFIFOCommand(int* code, float* magnitude);
  /// As above with text (capacity 261, always terminated, untouched on failure) and flags.
  int FIPeekFIFOCommand(int* code, float* magnitude, char* text, int* flags);
  /// The full peek; text needs 261 bytes, is always terminated and is untouched on failure.
  int FIPeekFIFOCommand(int* code, float* magnitude, _D3DVECTOR* vector, char* text, int* flags);

  /// Empties every slot and sets both indices to 0; returns 0 by long-standing convention (callers ignore
  /// it).
  int FIClearFIFOCommandPipe();
  /// 1 when the queue holds at least one command, else 0.
  int FITestFIFOCommandPipe();

  /// Moves every command of source into this queue, dropping what does not fit; 1 if anything was taken.
  int FIUpdateFIFOFrom(CKFIFO* source);
  /// As above, OR-ing extraFlags into each moved command's flags.
  int FIUpdateFIFOFrom(CKFIFO* source, int extraFlags);
  /// Copies the commands selected by mask into destination with flags rewritten by mode; this queue is
  /// unchanged; 1 if at least one command was copied.
  int FIPeekFIFOTo(CKFIFO* destination, int mask, int mode);

  /// The value the last operation returned (the last-result word).
  int FIGetLastResult() const;

 private:
  friend struct kutil::detail::Internals<CKFIFO>;

  /// Copies out the command in the given slot; checks only that the queue is not empty.
  int FIPeekFIFOCommand(int slot, int* code, float* magnitude, _D3DVECTOR* vector, char* text, int* flags);

  tagKFIFOCommand m_slots[KFI_SLOT_COUNT];  ///< the ring
  int m_writeIndex;                         ///< slot of the most recently pushed command
  int m_readIndex;                          ///< slot of the oldest command
  char m_transfer[KFI_TEXT_LEN + 1];        ///< scratch text of FIUpdateFIFOFrom
  int m_lastResult;                         ///< what the last operation returned
};

/// Writes the standard step for a motion command into *magnitude (-1.0 for codes without one);
/// flags with bit value 2 give a tenth; returns 1 (0 only for a null magnitude).
KUTIL_API int KUGetMagnitudeForFIFOInput(float* magnitude, int flags, float speed, int code);
