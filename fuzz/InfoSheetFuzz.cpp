// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Info sheets: load any file as a sheet file, look texts up into buffers of
// their exact documented size, write a few log entries into a scratch log,
// then save the sheets and check that the saved file loads back the same.
// Messages go to a silent sink, never to a message box or standard error.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "FuzzSupport.h"
#include "KInfo.h"

namespace {

void silentSink(const char*, const char*) {}

struct Sheet {
  unsigned int id;
  std::string text;
};

// Every sheet of info, walking from the first; the walk stops at a repeated
// id (KISetToNext moves from the first sheet with the current id).
std::vector<Sheet> sheetsOf(CKaldoInfo& info) {
  std::vector<Sheet> sheets;
  std::set<unsigned int> seen;
  if (info.KISetToFirst() != 1) return sheets;
  for (;;) {
    unsigned int id = 0;
    info.KIGetInfoMessage(&id);
    if (!seen.insert(id).second) break;
    std::vector<char> text(261);
    info.KIGetInfoText(text.data());
    sheets.push_back({id, text.data()});
    if (info.KISetToNext() != 1) break;
  }
  return sheets;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  KUSetMessageSink(&silentSink);
  const std::string path = kutil::fuzz::writeScratch(data, size, ".kiq", 0);
  const std::string log = kutil::fuzz::scratchPath(".log", 1);
  const std::string saved = kutil::fuzz::scratchPath(".kiq", 2);
  std::remove(log.c_str());

  CKaldoInfo info;
  const int loaded = info.KILoadInfoSheets(path.c_str());

  // Look a few ids up: the first bytes of the input, and ids the sheets hold.
  kutil::fuzz::Reader reader(data, size);
  std::vector<unsigned int> ids = {0u, 5u, 112u, 4294967295u};
  for (int i = 0; i < 3; ++i) ids.push_back(static_cast<unsigned int>(reader.integer(-1000, 100000)));
  for (const Sheet& s : sheetsOf(info)) {
    if (ids.size() >= 16) break;
    ids.push_back(s.id);
  }
  for (unsigned int id : ids) {
    info.KISetInfoMessage(id);
    std::vector<char> text(261);
    info.KIGetInfoText(text.data());
    if (std::memchr(text.data(), '\0', text.size()) == nullptr) std::abort();
    info.KIFetchStringForID(id);
    info.KIDisplayInfo();
  }

  // The log, with a fuzzed comment, gets an entry per message while logging is on.
  const std::string comment = kutil::fuzz::asText(data, size);
  info.KISetLogFileName(log.c_str());
  info.KISetInfoType(1);
  info.KISetComment(comment.c_str());
  info.KICatComment(comment.c_str());
  std::vector<char> commentOut(259);
  info.KIGetComment(commentOut.data());
  for (size_t i = 0; i < ids.size() && i < 4; ++i) info.KISetInfoMessage(ids[i]);
  info.KIFlushInfoMessage(comment.c_str());
  info.KISetToPrevious();
  info.KISetInfoType(0);
  info.KISetLogFileName("");

  // What loaded saves and loads back unchanged.
  const std::vector<Sheet> before = sheetsOf(info);
  if (loaded == 1 && info.KISaveFile(saved.c_str()) == 1) {
    CKaldoInfo again;
    if (again.KILoadInfoSheets(saved.c_str()) != 1) std::abort();
    const std::vector<Sheet> after = sheetsOf(again);
    if (after.size() != before.size()) std::abort();
    for (size_t i = 0; i < after.size(); ++i)
      if (after[i].id != before[i].id || after[i].text != before[i].text) std::abort();
  }

  // The process-wide string table over the same file, into buffers of the size asked for.
  if (KULoadStringInitialise(path.c_str()) == 1) {
    for (int maxLength : {1, 2, 17, 129, 300}) {
      std::vector<char> out(static_cast<size_t>(maxLength));
      KULoadString(static_cast<int>(ids[ids.size() - 1]), out.data(), maxLength);
      if (std::memchr(out.data(), '\0', out.size()) == nullptr) std::abort();
    }
  }
  KULoadStringTerminate();
  return 0;
}
