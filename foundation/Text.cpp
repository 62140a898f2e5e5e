// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Last error, comment, tagged line segments and the string toolkit.
#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "KText.h"
#include "KUtilVersion.h"
#include "TextDetail.h"

using kutil::detail::copyBounded;
using kutil::detail::kMaxPath;
using kutil::detail::kScratch;
using kutil::detail::orEmpty;

namespace {

constexpr int kNoError = 5;

int g_lastError = kNoError;
char g_comment[kScratch] = "KUtil " KUTIL_VERSION_STRING " - utility library of the kaldo 3D desktop";

bool isBlank(char c) { return c == ' ' || c == '\t'; }

bool startsNumber(const char* text) {
  char c = text[0];
  return (c >= '0' && c <= '9') || c == '+' || c == '-';
}

char foldForCompare(char c) {
  if (c == '/') return '\\';
  return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

// One part of a text being joined: length characters at text (not necessarily terminated).
struct Piece {
  const char* text;
  std::size_t length;
};

bool overlaps(const char* a, std::size_t aLength, const char* b, std::size_t bLength) {
  const std::uintptr_t a0 = reinterpret_cast<std::uintptr_t>(a);
  const std::uintptr_t b0 = reinterpret_cast<std::uintptr_t>(b);
  return aLength != 0 && bLength != 0 && a0 < b0 + bLength && b0 < a0 + aLength;
}

// Moves the pieces to their places in out when some order lets none overwrite
// a piece still to be moved; false (nothing written) when there is none.
bool movePieces(char* out, Piece (&pieces)[3]) {
  std::size_t at[3];
  std::size_t total = 0;
  for (int i = 0; i < 3; ++i) {
    at[i] = total;
    total += pieces[i].length;
  }
  int order[3] = {0, 1, 2};
  do {
    bool safe = true;
    for (int k = 0; k < 3 && safe; ++k)
      for (int later = k + 1; later < 3 && safe; ++later) {
        const Piece& moved = pieces[order[k]];
        const Piece& waiting = pieces[order[later]];
        safe = !overlaps(out + at[order[k]], moved.length, waiting.text, waiting.length);
      }
    if (!safe) continue;
    for (int i : order) std::memmove(out + at[i], pieces[i].text, pieces[i].length);
    out[total] = '\0';
    return true;
  } while (std::next_permutation(order, order + 3));
  return false;
}

// Writes the three pieces one after another into out and terminates it. A
// piece may lie in out itself (a caller may build a text in the buffer that
// holds one of its parts): the pieces are moved in an order in which none
// overwrites another still to be moved; where no such order exists a short
// piece is set aside first, and only failing that is a copy of the whole made
// on the C heap. False, out untouched, when that copy can't be had.
bool joinPieces(char* out, Piece (&pieces)[3]) {
  if (movePieces(out, pieces)) return true;
  char aside[kScratch];
  for (Piece& piece : pieces) {
    if (piece.length >= sizeof aside) continue;
    const Piece kept = piece;
    std::memcpy(aside, piece.text, piece.length);
    piece.text = aside;
    if (movePieces(out, pieces)) return true;
    piece = kept;
  }
  const std::size_t total = pieces[0].length + pieces[1].length + pieces[2].length;
  char* copy = static_cast<char*>(std::malloc(total + 1));
  if (copy == nullptr) return false;
  std::size_t at = 0;
  for (const Piece& piece : pieces) {
    std::memcpy(copy + at, piece.text, piece.length);
    at += piece.length;
  }
  copy[total] = '\0';
  std::memcpy(out, copy, total + 1);
  std::free(copy);
  return true;
}

}  // namespace

namespace kutil::detail {

std::size_t boundedLength(const char* text, std::size_t limit) {
  if (text == nullptr) return 0;
  std::size_t n = 0;
  while (n < limit && text[n] != '\0') ++n;
  return n;
}

bool samePath(const char* a, const char* b) {
  a = orEmpty(a);
  b = orEmpty(b);
  std::size_t la = std::strlen(a);
  if (la != std::strlen(b)) return false;
  return KUstrNIcmp(a, b, static_cast<int>(la < INT_MAX ? la : INT_MAX)) == 1;
}

bool writeSegmentLine(std::FILE* stream, const char* tag, const char* value) {
  value = orEmpty(value);
  std::fprintf(stream, "%s[%zu]%s", orEmpty(tag), std::strlen(value), value);
  return std::fputc('\n', stream) != EOF;
}

bool writeSegmentLine(std::FILE* stream, const char* tag, int value) {
  char text[32];
  std::snprintf(text, sizeof text, "%d", value);
  return writeSegmentLine(stream, tag, text);
}

bool writeSegmentLine(std::FILE* stream, const char* tag, float value) {
  // "%.4f" of the largest float has 39 digits before the point.
  char text[64];
  std::snprintf(text, sizeof text, "%.4f", static_cast<double>(value));
  return writeSegmentLine(stream, tag, text);
}

}  // namespace kutil::detail

int KUSetError(int code) {
  g_lastError = code;
  return 1;
}

int KUGetError(int* code) {
  if (g_lastError == kNoError || code == nullptr) return 0;
  *code = g_lastError;
  return 1;
}

int KUSetComment(const char* text) {
  // The buffer is the library's own: keep within it whatever the caller sends.
  KUSafeStrncpy(g_comment, orEmpty(text), kScratch - 1);
  return 1;
}

int KUGetComment(char* out) {
  if (out == nullptr || g_comment[0] == '\0') return 0;
  std::memcpy(out, g_comment, std::strlen(g_comment) + 1);
  return 1;
}

int KUMkLineSegment(char* out, const char* tag, const char* value, int* length) {
  if (out == nullptr) return 0;
  tag = orEmpty(tag);
  value = orEmpty(value);
  const std::size_t valueLength = std::strlen(value);
  char count[32];
  std::snprintf(count, sizeof count, "[%zu]", valueLength);
  Piece pieces[3] = {{tag, std::strlen(tag)}, {count, std::strlen(count)}, {value, valueLength}};
  const std::size_t total = pieces[0].length + pieces[1].length + valueLength;
  if (!joinPieces(out, pieces)) return 0;
  if (length != nullptr) *length = static_cast<int>(total);
  return 1;
}

int KUMkNumSegment(char* out, const char* tag, int value, int* length) {
  char text[32];
  std::snprintf(text, sizeof text, "%d", value);
  return KUMkLineSegment(out, tag, text, length);
}

int KUMkDoubleSegment(char* out, const char* tag, double value, int* length) {
  // Large magnitudes print up to ~310 digits.
  char text[400];
  std::snprintf(text, sizeof text, "%.4f", value);
  return KUMkLineSegment(out, tag, text, length);
}

int KUMkFloatSegment(char* out, const char* tag, float value, int* length) {
  return KUMkDoubleSegment(out, tag, static_cast<double>(value), length);
}

int KUExtractField(const char* tag, const char* line, char* out, int maxLength) {
  if (tag == nullptr || line == nullptr || out == nullptr) return 0;
  const std::size_t total = std::strlen(line);
  const std::size_t tagLength = std::strlen(tag);
  std::size_t p = 0;
  for (;;) {
    // Segments follow each other with nothing in between.
    if (line[p] != '[') return 0;
    bool matched = std::strncmp(tag, line + p, tagLength) == 0;
    while (p < total && line[p] != ']') ++p;
    if (line[p] != ']') return 0;
    ++p;
    if (line[p] != '[') return 0;
    ++p;
    long long count = std::strtoll(line + p, nullptr, 10);
    while (p < total && line[p] != ']') ++p;
    if (line[p] != ']') return 0;
    ++p;
    if (matched) {
      // A negative length copies nothing but still finds the segment.
      if (count > maxLength) count = maxLength;
      if (count < 0) count = 0;
      KUSafeStrncpy(out, line + p, static_cast<int>(count));
      return 1;
    }
    // A negative length cannot be walked past; treat it as a broken line.
    if (count < 0) return 0;
    if (static_cast<unsigned long long>(count) > total - p) return 0;
    p += static_cast<std::size_t>(count);
  }
}

int KUSafeStrncpy(char* out, const char* in, int n) {
  if (out == nullptr) return 0;
  if (n < 0) {
    out[0] = '\0';
    return 0;
  }
  in = orEmpty(in);
  int i = 0;
  // Byte by byte: out may overlap the tail of in.
  while (i < n && in[i] != '\0') {
    out[i] = in[i];
    ++i;
  }
  out[i] = '\0';
  return 1;
}

int KUstrNIcmp(const char* a, const char* b, int n) {
  if (n < 1) return 1;
  a = orEmpty(a);
  b = orEmpty(b);
  for (int i = 0; i < n; ++i) {
    if (foldForCompare(a[i]) != foldForCompare(b[i])) return 0;
    // Both ended together: nothing beyond is theirs to read.
    if (a[i] == '\0') return 1;
  }
  return 1;
}

int KUStringContains(const char* needle, const char* haystack) {
  if (needle == nullptr || haystack == nullptr) return 0;
  return std::strstr(haystack, needle) != nullptr ? 1 : 0;
}

int KUSafeATOI(const char* text, int* value) {
  if (value == nullptr) return 0;
  if (text == nullptr || !startsNumber(text)) {
    *value = 0;
    return 0;
  }
  // atoi's result, without its undefined overflow: clamp to the int range.
  long long v = std::strtoll(text, nullptr, 10);
  if (v > INT_MAX) v = INT_MAX;
  if (v < INT_MIN) v = INT_MIN;
  *value = static_cast<int>(v);
  return 1;
}

int KUSafeATOF(const char* text, float* value) {
  if (value == nullptr) return 0;
  if (text == nullptr || !startsNumber(text)) {
    *value = 0.0f;
    return 0;
  }
  double v = std::atof(text);
  if (v > FLT_MAX) {
    *value = HUGE_VALF;
  } else if (v < -FLT_MAX) {
    *value = -HUGE_VALF;
  } else {
    *value = static_cast<float>(v);
  }
  return 1;
}

int KUNoNewLine(char* line) {
  if (line == nullptr || line[0] == '\0') return 0;
  std::size_t n = std::strlen(line);
  int found = 0;
  for (std::size_t i = 0; i < n; ++i) {
    if (line[i] == '\r' || line[i] == '\n') {
      line[i] = '\0';
      found = 1;
    }
  }
  return found;
}

int KUIsAllSpaces(const char* text) {
  text = orEmpty(text);
  for (; *text != '\0'; ++text)
    if (!isBlank(*text)) return 0;
  return 1;
}

int KUEncloseInQuotes(char* text) {
  if (text == nullptr || text[0] == '"') return 0;
  std::size_t n = std::strlen(text);
  std::memmove(text + 1, text, n);
  text[0] = '"';
  text[n + 1] = '"';
  text[n + 2] = '\0';
  return 1;
}

int KUStripQuotes(char* text) {
  if (text == nullptr) return 0;
  if (text[0] != '"') return 1;
  std::size_t n = std::strlen(text);
  if (text[n - 1] != '"') return 0;
  if (n < 2) {
    // A lone quote is both the opening and the closing one.
    text[0] = '\0';
    return 1;
  }
  std::memmove(text, text + 1, n - 2);
  text[n - 2] = '\0';
  return 1;
}

int KUReverse(char* out, const char* in) {
  if (out == nullptr || in == nullptr || in[0] == '\0') return 0;
  const std::size_t n = std::strlen(in);
  if (n == 1) {
    // The first character is also the last, so it is written twice.
    const char only = in[0];
    out[0] = only;
    out[1] = only;
    out[2] = '\0';
    return 1;
  }
  // The ends stay where they are; only the inside is reversed. out may be in.
  std::memmove(out, in, n + 1);
  std::reverse(out + 1, out + n - 1);
  return 1;
}

int KUCutString(const char* text, char delimiter, int index, char* out) {
  if (text == nullptr || out == nullptr) return 0;
  int p = 0;
  int passed = 0;
  while (passed < index && text[p] != '\0' && p < kMaxPath) {
    if (text[p] == delimiter) ++passed;
    ++p;
  }
  if (text[p] == '\0') return 0;
  int q = 0;
  while (p < kMaxPath && text[p] != '\0' && text[p] != delimiter) out[q++] = text[p++];
  out[q] = '\0';
  return 1;
}

int KUSubstitute(char* text, const char* prefix, const char* replacement) {
  if (text == nullptr || prefix == nullptr || text[0] == '\0' || prefix[0] == '\0') return 0;
  const std::size_t prefixLength = std::strlen(prefix);
  if (prefixLength > INT_MAX || KUstrNIcmp(text, prefix, static_cast<int>(prefixLength)) != 1) return 0;
  // Built aside: replacement may lie in text. The caller's buffer holds 264 characters.
  char result[kScratch];
  copyBounded(result, replacement, kScratch - 1);
  const std::size_t used = std::strlen(result);
  copyBounded(result + used, text + prefixLength, kScratch - 1 - used);
  std::memcpy(text, result, std::strlen(result) + 1);
  return 1;
}

int KUCommandSubstitue(const char* source, const char* token, const char* replacement, char* out) {
  if (out == nullptr) return 0;
  source = orEmpty(source);
  const std::size_t sourceLength = std::strlen(source);
  const char* found = token != nullptr ? std::strstr(source, token) : nullptr;
  if (found == nullptr) {
    std::memmove(out, source, sourceLength + 1);
    return 0;
  }
  const std::size_t at = static_cast<std::size_t>(found - source);
  const std::size_t after = at + std::strlen(token);
  replacement = orEmpty(replacement);
  Piece pieces[3] = {
      {source, at}, {replacement, std::strlen(replacement)}, {source + after, sourceLength - after}};
  return joinPieces(out, pieces) ? 1 : 0;
}

int KUGetSimpleArgument(const char* commandLine, char* out) {
  if (commandLine == nullptr || out == nullptr || commandLine[0] == '\0') return 0;
  const char first = commandLine[0];
  std::size_t p = 1;
  if (first == '"' || first == '\'') {
    while (commandLine[p] != '\0' && commandLine[p] != first) ++p;
  } else {
    while (commandLine[p] != '\0' && !isBlank(commandLine[p])) ++p;
  }
  if (commandLine[p] == '\0') return 0;
  ++p;
  // One separating blank only: further blanks belong to the argument.
  if (isBlank(commandLine[p])) ++p;
  if (commandLine[p] == '\0') return 0;
  KUSafeStrncpy(out, commandLine + p, kMaxPath);
  return 1;
}

int KUGetLastPathElement(char* out, const char* path) {
  if (out == nullptr || path == nullptr || path[0] == '\0') return 0;
  const std::size_t length = std::strlen(path);
  std::size_t end = length;
  // A separator at the very end is kept in the copy but not searched for.
  if (kutil::detail::isPathSeparator(path[length - 1])) --end;
  if (end > static_cast<std::size_t>(kMaxPath)) end = kMaxPath;
  std::size_t start = 0;
  for (std::size_t i = 0; i < end; ++i)
    if (kutil::detail::isPathSeparator(path[i])) start = i + 1;
  KUSafeStrncpy(out, path + start, kMaxPath);
  return 1;
}
