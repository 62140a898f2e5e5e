// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KText.h
/// Status, last error and comment, tagged line segments and the text toolkit.
///
/// Every operation returns 1 for success/true and 0 for failure/false unless
/// its comment says otherwise. A null text argument is treated as failure (0)
/// or, where the operation has no failure, as an empty text; it never crashes.
#pragma once
#include "KUtilBase.h"

/// Stores code as the process-wide last error (5 means "no error"); always 1.
KUTIL_API int KUSetError(int code);
/// Reads the last error into *code; 0 (and *code untouched) while it is 5, else 1.
KUTIL_API int KUGetError(int* code);
/// Copies text into the 264-character process-wide comment (at most 263 characters kept); always 1.
KUTIL_API int KUSetComment(const char* text);
/// Copies the comment into out (264 bytes, always terminated); 0 with out untouched when the comment is
/// empty.
KUTIL_API int KUGetComment(char* out);

/// Writes tag + "[len]" + value into out (overwritten, unbounded, always terminated); *length =
/// strlen(out); 1.
KUTIL_API int KUMkLineSegment(char* out, const char* tag, const char* value, int* length);
/// As KUMkLineSegment with the value printed as "%d"; out is unbounded and always terminated; 1.
KUTIL_API int KUMkNumSegment(char* out, const char* tag, int value, int* length);
/// As KUMkLineSegment with the value printed as "%.4f"; out is unbounded and always terminated; 1.
KUTIL_API int KUMkDoubleSegment(char* out, const char* tag, double value, int* length);
/// As KUMkDoubleSegment with the float widened to double; out is unbounded and always terminated; 1.
KUTIL_API int KUMkFloatSegment(char* out, const char* tag, float value, int* length);
/// Copies the value of the first segment tagged tag in line to out (maxLength+1 bytes, always terminated); 0
/// with out untouched when absent or the line is malformed.
KUTIL_API int KUExtractField(const char* tag, const char* line, char* out, int maxLength);

/// Copies at most n characters of in to out (n+1 bytes, always terminated); 1 for n >= 0 (truncation
/// unreported), 0 and "" for n < 0.
KUTIL_API int KUSafeStrncpy(char* out, const char* in, int n);
/// 1 when the first n characters of a and b are equal ignoring case, with backslash equal to '/'; 0 on a
/// difference. Note: 1 means equal.
KUTIL_API int KUstrNIcmp(const char* a, const char* b, int n);
/// 1 when needle occurs in haystack (case-sensitive), else 0.
KUTIL_API int KUStringContains(const char* needle, const char* haystack);
/// *value = atoi(text) and 1 when text starts with a digit, '+' or '-'; else *value = 0 and 0.
KUTIL_API int KUSafeATOI(const char* text, int* value);
/// *value = atof(text) and 1 when text starts with a digit, '+' or '-'; else *value = 0 and 0.
KUTIL_API int KUSafeATOF(const char* text, float* value);

/// Cuts line at its first CR or LF (every CR and LF becomes a terminator); 1 if one was found, else 0.
KUTIL_API int KUNoNewLine(char* line);
/// 1 when text is empty or holds only blanks and tabs, else 0.
KUTIL_API int KUIsAllSpaces(const char* text);
/// Encloses text in double quotes in place (needs two more bytes); 0 and unchanged when it already starts
/// with one.
KUTIL_API int KUEncloseInQuotes(char* text);
/// Removes enclosing double quotes in place; 1 when none start it, 0 (unchanged) when the closing one is
/// missing.
KUTIL_API int KUStripQuotes(char* text);
/// Writes in to out (strlen(in)+1 bytes, 3 for a one-character in, always terminated) with the first and last
/// character kept and the inner ones reversed; 0 for an empty in.
KUTIL_API int KUReverse(char* out, const char* in);
/// Copies field index (0-based, fields split by delimiter, 260-character limit) to out (261 bytes, always
/// terminated); 0 with out untouched when there is no such field.
KUTIL_API int KUCutString(const char* text, char delimiter, int index, char* out);
/// Replaces prefix at the start of text (case-insensitive, backslash equals '/') by replacement in place
/// (264-byte buffer, always terminated); 1 replaced, 0 unchanged.
KUTIL_API int KUSubstitute(char* text, const char* prefix, const char* replacement);
/// out = source with its first occurrence of token replaced by replacement (caller-sized, always terminated);
/// 0 when token is absent (out holds the copy).
KUTIL_API int KUCommandSubstitue(const char* source, const char* token, const char* replacement, char* out);
/// Copies what follows the first (possibly quoted) word of commandLine to out (261 bytes, always terminated);
/// 0 with out untouched when there is none.
KUTIL_API int KUGetSimpleArgument(const char* commandLine, char* out);
/// Copies the last element of path to out (261 bytes, always terminated; a trailing separator is kept); 0
/// with out untouched for an empty path.
KUTIL_API int KUGetLastPathElement(char* out, const char* path);

/// Fills when with the current local time (reserved untouched, extra = -1); 0 and untouched when the time
/// can't be had.
KUTIL_API int KUGetDateTime(tagKDATETIME* when);
/// Writes the three-line "DATE:/TIME:/Build:" stamp to out (at least 80 bytes, always terminated); 0 with out
/// untouched when the time can't be had.
KUTIL_API int KUGetTimeStamp(char* out);
/// Writes the time as "hhmmss" to out (at least 16 bytes, always terminated); 0 with out untouched when the
/// time can't be had.
KUTIL_API int KUGetSecondStamp(char* out);
