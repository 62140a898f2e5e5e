// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Last error, comment, tagged line segments and the string toolkit.
#include <cctype>
#include <cerrno>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "KText.h"
#include "KUtilVersion.h"
#include "TextDetail.h"

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

// Writes text into out, keeping at most limit characters, always terminated.
void copyBounded(char* out, const std::string& text, std::size_t limit) {
  std::size_t n = text.size() < limit ? text.size() : limit;
  std::memcpy(out, text.data(), n);
  out[n] = '\0';
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
  // Through a string so that value or tag may share storage with out.
  std::string segment(tag);
  segment += '[';
  segment += std::to_string(std::strlen(value));
  segment += ']';
  segment += value;
  std::memcpy(out, segment.c_str(), segment.size() + 1);
  if (length != nullptr) *length = static_cast<int>(segment.size());
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
  std::string source(in);
  const std::size_t n = source.size();
  // The ends stay where they are; only the inside is reversed.
  std::string result(1, source[0]);
  for (std::size_t i = n - 1; i-- > 1;) result += source[i];
  result += source[n - 1];
  std::memcpy(out, result.c_str(), result.size() + 1);
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
  char rest[kScratch];
  KUSafeStrncpy(rest, text + prefixLength, kScratch - 1);
  std::string result(orEmpty(replacement));
  result += rest;
  // The caller's buffer holds 264 characters.
  copyBounded(text, result, kScratch - 1);
  return 1;
}

int KUCommandSubstitue(const char* source, const char* token, const char* replacement, char* out) {
  if (out == nullptr) return 0;
  std::string text(orEmpty(source));
  std::size_t at = token != nullptr ? text.find(token) : std::string::npos;
  if (at == std::string::npos) {
    std::memcpy(out, text.c_str(), text.size() + 1);
    return 0;
  }
  std::string result = text.substr(0, at) + orEmpty(replacement) + text.substr(at + std::strlen(token));
  std::memcpy(out, result.c_str(), result.size() + 1);
  return 1;
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
