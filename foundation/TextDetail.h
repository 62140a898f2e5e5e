// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Internal text helpers shared by the library's file readers and path code.
#pragma once
#include <cstddef>
#include <cstdio>

#include "KUtilBase.h"

namespace kutil::detail {

/// The working path length of the library (the Windows limit).
constexpr int kMaxPath = 260;
/// Capacity of an internal scratch copy of a text, terminator included.
constexpr int kScratch = 264;

/// Backslash and '/' both separate path elements.
inline bool isPathSeparator(char c) { return c == '\\' || c == '/'; }

/// A null text reads as the empty text.
inline const char* orEmpty(const char* text) { return text != nullptr ? text : ""; }

/// True for a null or empty text.
inline bool isEmpty(const char* text) { return text == nullptr || text[0] == '\0'; }

/// Copies at most limit characters of in (null reads as "") into out and always terminates it.
inline void copyBounded(char* out, const char* in, std::size_t limit) {
  in = orEmpty(in);
  std::size_t i = 0;
  for (; i < limit && in[i] != '\0'; ++i) out[i] = in[i];
  out[i] = '\0';
}

/// 1 when both paths are equal over their whole length under KUstrNIcmp's
/// rule (case-insensitive, backslash equal to '/'); null counts as "".
bool samePath(const char* a, const char* b);

/// strlen that never looks further than limit characters.
std::size_t boundedLength(const char* text, std::size_t limit);

/// Prints the three-line time stamp of a date/time record into out.
void formatTimeStamp(const tagKDATETIME& when, char* out);

/// Prints the six-digit "hhmmss" stamp of a date/time record into out.
void formatSecondStamp(const tagKDATETIME& when, char* out);

/// Writes one line of a tagged-segment file: the segment of tag and value (exactly as
/// KUMkLineSegment makes it), then a line feed, each tried even if the other was refused.
/// True when the line feed was written. Nothing is allocated and no length is limited.
bool writeSegmentLine(std::FILE* stream, const char* tag, const char* value);
/// As above with the value printed as "%d".
bool writeSegmentLine(std::FILE* stream, const char* tag, int value);
/// As above with the value printed as "%.4f" (KUMkFloatSegment's form).
bool writeSegmentLine(std::FILE* stream, const char* tag, float value);

}  // namespace kutil::detail
