// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include "Common.h"

#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <sstream>

#include "KUtil.h"

#if defined(_WIN32)
#include <io.h>
#else
#include <unistd.h>
#endif

namespace kutool {
namespace {

// Request codes the clock pushes, with the action whose keyword names them.
struct Request {
  int code;
  int action;
};
constexpr Request kRequests[] = {
    {KAR_CMD_RUN, KAR_ACTION_RUN},         {KAR_CMD_PLAY, KAR_ACTION_PLAY},
    {KAR_CMD_REPLACE, KAR_ACTION_REPLACE}, {KAR_CMD_LOAD, KAR_ACTION_LOAD},
    {KAR_CMD_GOTO, KAR_ACTION_GOTO},       {KAR_CMD_USERGOTO, KAR_ACTION_USERGOTO},
    {KAR_CMD_ZOOMIN, KAR_ACTION_ZOOMIN},   {KAR_CMD_RUN_NOTEXT, KAR_ACTION_RUN},
    {KAR_CMD_ZOOMOUT, KAR_ACTION_ZOOMOUT},
};
constexpr const char* kResetName = "RESET";
// Code 0 is the empty command: no motion, the NULL a recording may hold.
constexpr const char* kNullName = "NULL";

std::string lower(std::string s) {
  for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return s;
}

bool startsWith(const std::string& text, const char* prefix) { return text.rfind(prefix, 0) == 0; }

}  // namespace

int fail(const std::string& sentence) {
  std::cerr << "kutil: " << sentence << '\n';
  return kExitFailed;
}

int usage(const std::string& sentence) {
  std::cerr << "kutil: " << sentence << '\n';
  return kExitUsage;
}

void warn(const std::string& sentence) { std::cerr << "kutil: warning: " << sentence << '\n'; }

bool readFile(const std::string& path, std::string* out) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  std::ostringstream buffer;
  buffer << in.rdbuf();
  *out = buffer.str();
  return true;
}

std::vector<std::string> splitLines(const std::string& text) {
  std::vector<std::string> lines;
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t end = text.find('\n', start);
    if (end == std::string::npos) end = text.size();
    std::string line = text.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(line);
    start = end + 1;
  }
  return lines;
}

bool isReadable(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return static_cast<bool>(in);
}

std::string directoryOf(const std::string& path) {
  const std::size_t cut = path.find_last_of("/\\");
  return cut == std::string::npos ? std::string() : path.substr(0, cut + 1);
}

std::string baseName(const std::string& path) {
  const std::size_t cut = path.find_last_of("/\\");
  return cut == std::string::npos ? path : path.substr(cut + 1);
}

std::string withSeparator(const std::string& dir) {
  if (dir.empty()) return dir;
  const char last = dir.back();
  if (last == '/' || last == '\\') return dir;
#if defined(_WIN32)
  return dir + "\\";
#else
  return dir + "/";
#endif
}

bool equalsNoCase(const std::string& a, const std::string& b) {
  return a.size() == b.size() && lower(a) == lower(b);
}

bool endsWithNoCase(const std::string& text, const std::string& ending) {
  if (ending.size() > text.size()) return false;
  return equalsNoCase(text.substr(text.size() - ending.size()), ending);
}

FileKind detectKind(const std::string& path) {
  if (endsWithNoCase(path, ".kvc")) return FileKind::Behaviour;
  if (endsWithNoCase(path, ".ksf")) return FileKind::Shape;
  if (endsWithNoCase(path, ".ksl")) return FileKind::SceneList;
  std::string text;
  if (!readFile(path, &text)) return FileKind::Unknown;
  // The other formats have no fixed ending: their first tagged line tells them apart.
  for (const std::string& line : splitLines(text)) {
    if (line.empty()) continue;
    if (startsWith(line, "[MKJ]")) return FileKind::Markers;
    if (startsWith(line, "[CM]")) return FileKind::Recording;
    if (startsWith(line, "[iid]") || startsWith(line, "[itx]")) return FileKind::InfoSheet;
    if (startsWith(line, "[VGEN]")) return FileKind::Shape;
    break;
  }
  return FileKind::Unknown;
}

int forEachFile(const std::vector<std::string>& files, int (*each)(const std::string&)) {
  int status = kExitOk;
  for (const std::string& f : files) {
    if (each(f) != kExitOk) status = kExitFailed;
  }
  return status;
}

std::string commandName(int code) {
  char text[32] = {0};
  if (CKActionRow::ARGetTextForMotionType(code, text)) return text;
  if (CKActionRow::ARGetTextForEventType(code, text)) return text;
  for (const Request& r : kRequests) {
    if (r.code == code && CKActionRow::ARGetTextForActionType(r.action, text)) return text;
  }
  if (code == KAR_CMD_RESET) return kResetName;
  if (code == KAR_MOTION_NONE) return kNullName;
  return std::string();
}

bool parseInt(const std::string& text, long long* value) {
  if (text.empty()) return false;
  errno = 0;
  char* end = nullptr;
  const long long v = std::strtoll(text.c_str(), &end, 10);
  if (errno != 0 || end == text.c_str() || *end != '\0') return false;
  *value = v;
  return true;
}

bool parseFloat(const std::string& text, double* value) {
  if (text.empty()) return false;
  errno = 0;
  char* end = nullptr;
  const double v = std::strtod(text.c_str(), &end);
  if (errno != 0 || end == text.c_str() || *end != '\0' || !std::isfinite(v)) return false;
  *value = v;
  return true;
}

bool parseCommandCode(const std::string& text, int* code) {
  long long number = 0;
  if (parseInt(text, &number)) {
    *code = static_cast<int>(number);
    return true;
  }
  CKDecide words;
  int motion = 0;
  if (words.DEGetMoveType(&motion, text.c_str())) {
    *code = motion;
    return true;
  }
  int event = 0;
  if (CKActionRow::ARGetEventTypeFromText(&event, text.c_str())) {
    *code = event;
    return true;
  }
  for (const Request& r : kRequests) {
    char keyword[32] = {0};
    if (CKActionRow::ARGetTextForActionType(r.action, keyword) && text == keyword) {
      *code = r.code;
      return true;
    }
  }
  if (text == kNullName) {
    *code = KAR_MOTION_NONE;
    return true;
  }
  if (text == kResetName) {
    *code = KAR_CMD_RESET;
    return true;
  }
  return false;
}

std::string jsonString(const std::string& text) {
  std::string out = "\"";
  for (unsigned char c : text) {
    switch (c) {
      case '"':
        out += "\\\"";
        break;
      case '\\':
        out += "\\\\";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      case '\t':
        out += "\\t";
        break;
      case '\b':
        out += "\\b";
        break;
      case '\f':
        out += "\\f";
        break;
      default:
        if (c < 0x20) {
          char escaped[8];
          std::snprintf(escaped, sizeof escaped, "\\u%04x", c);
          out += escaped;
        } else if (c >= 0x80) {
          // Stored texts are 8-bit code-page text, not UTF-8: escape them as Latin-1 code points.
          char escaped[8];
          std::snprintf(escaped, sizeof escaped, "\\u%04x", c);
          out += escaped;
        } else {
          out += static_cast<char>(c);
        }
    }
  }
  out += '"';
  return out;
}

std::string jsonNumber(double value) {
  if (!std::isfinite(value)) return "null";
  return shortNumber(value);
}

std::string shortNumber(double value) {
  char text[64];
  std::snprintf(text, sizeof text, "%g", value);
  return text;
}

bool stderrIsTerminal() {
#if defined(_WIN32)
  return _isatty(_fileno(stderr)) != 0;
#else
  return isatty(fileno(stderr)) != 0;
#endif
}

}  // namespace kutool
