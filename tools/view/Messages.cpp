// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include "Messages.h"

#include <cstdio>

namespace kview {
namespace {

// The sink is a plain function without a context pointer, so it finds its host here.
Messages* g_messages = nullptr;

struct Sheet {
  unsigned int id;
  const char* text;
};
constexpr Sheet kSheets[] = {
    {80, "The program could not be started"},
    {100, "Access to the file was denied"},
    {101, "The file's association is incomplete or invalid"},
    {102, "The program that opens the file is busy"},
    {103, "The program that opens the file failed"},
    {104, "The program that opens the file did not answer in time"},
    {105, "A library the program needs was not found"},
    {106, "The file to run was not found"},
    {107, "No program is set to open this kind of file"},
    {108, "There is not enough memory to start the program"},
    {109, "The path of the file to run was not found"},
    {110, "The file is in use by another program"},
    {111, "There are not enough resources to start the program"},
    {kMsgFileNotFound, "File not found"},
    {kMsgBehaviour, "The behaviour file could not be loaded"},
    {kMsgShape, "The shape file could not be loaded"},
    {kMsgUnreadable, "The file could not be read"},
    {kMsgViewpoint, "The viewpoint is not a place to stand"},
    {kMsgViewpointsSaved, "The viewpoints could not be saved"},
    {kMsgTexture, "A texture could not be loaded"},
    {kMsgRecording, "The recording could not be opened"},
};

}  // namespace

Messages::Messages() {
  g_messages = this;
  KUSetMessageSink(&Messages::sink);
}

Messages::~Messages() {
  KUSetMessageSink(nullptr);
  g_messages = nullptr;
}

bool Messages::open(const std::string& sheetFile, const std::string& logFile) {
  bool ok = true;
  if (!sheetFile.empty()) ok = m_info.KILoadInfoSheets(sheetFile.c_str()) != 0;
  // Appended after the file's sheets: a lookup takes the first sheet of an id, so the file wins.
  for (const Sheet& s : kSheets) m_info.KINewInfoSheet(s.text, s.id);
  m_logFile = logFile;
  m_info.KISetLogFileName(logFile.c_str());
  m_info.KISetInfoType(logFile.empty() ? 0 : 1);
  if (!ok) report(kMsgUnreadable, sheetFile, "not an info-sheet file");
  return ok;
}

void Messages::report(unsigned int id, const std::string& file, const std::string& detail) {
  m_info.KISetComment(file.c_str());
  if (!detail.empty()) m_info.KICatComment(detail.c_str());
  m_info.KISetInfoMessage(id);  // logs the entry when a log is set
  m_pending = {id, "", file, detail};
  m_info.KIDisplayInfo();  // reaches the sink
}

void Messages::reportOnce(unsigned int id, const std::string& file, const std::string& detail) {
  if (m_once.insert({id, file}).second) report(id, file, detail);
}

void Messages::reportLastError(const std::string& file) {
  int id = 80;
  KUGetError(&id);
  report(static_cast<unsigned int>(id), file, "");
}

void Messages::sink(const char* caption, const char* text) {
  Messages* self = g_messages;
  if (!self) return;
  Message m = self->m_pending;
  m.text = text ? text : "";
  self->m_shown.push_back(m);
  if (self->m_echo) {
    std::string where = m.file.empty() ? "" : ": " + m.file;
    if (!m.detail.empty()) where += " (" + m.detail + ")";
    std::fprintf(stderr, "kutil-view: %s: %s%s\n", caption ? caption : "", m.text.c_str(), where.c_str());
  }
}

}  // namespace kview
