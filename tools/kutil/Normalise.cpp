// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// `kutil normalise`, `kutil denormalise` and `kutil gather`: machine-independent content.
#include <CLI/CLI.hpp>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "Common.h"
#include "KUtil.h"

namespace kutool {
namespace {

namespace fs = std::filesystem;

constexpr const char* kKwqDir = "?KALDOKWQDIR?";
// Progress is shown on a terminal once a gathering has this many items or runs this long.
constexpr std::size_t kProgressItems = 10;
constexpr double kProgressSeconds = 0.5;

// The library resolves names against the folder of the path it is given, so it gets absolute paths.
std::string absolutePath(const std::string& file) {
  std::error_code ec;
  const fs::path p = fs::absolute(fs::path(file), ec);
  return ec ? file : p.string();
}

// The absolute folder of a file, with its trailing separator, as the path functions expect it.
std::string absoluteDirectory(const std::string& file) {
  return withSeparator(fs::path(absolutePath(file)).parent_path().string());
}

// The sentence for a file of a kind that is not rewritten; done is what would be done to it.
int notContentFile(const std::string& path, const char* done) {
  return fail(path + ": only behaviour (.kvc), scene-list (.ksl) and shape (.ksf) files are " + done + ".");
}

std::string libraryComment() {
  char comment[264] = {0};
  KUGetComment(comment);
  return comment;
}

// Shows "label n/total" on one terminal line for long runs; silent otherwise.
class Progress {
 public:
  Progress(const char* label, std::size_t total)
      : m_label(label),
        m_total(total),
        m_start(std::chrono::steady_clock::now()),
        m_terminal(stderrIsTerminal()) {}
  ~Progress() {
    if (m_shown) std::fprintf(stderr, "\r%-72s\r", "");
  }
  void step(std::size_t done, const std::string& item) {
    if (!m_terminal) return;
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - m_start).count();
    if (!m_shown && m_total < kProgressItems && seconds < kProgressSeconds) return;
    m_shown = true;
    std::string name = baseName(item);
    if (name.size() > 40) name = "..." + name.substr(name.size() - 37);
    std::fprintf(stderr, "\r%s %zu/%zu %-40s", m_label, done, m_total, name.c_str());
    std::fflush(stderr);
  }

 private:
  const char* m_label;
  std::size_t m_total;
  std::chrono::steady_clock::time_point m_start;
  bool m_terminal;
  bool m_shown = false;
};

int normaliseFile(const std::string& path) {
  if (!isReadable(path)) return fail(path + ": the file cannot be read.");
  const std::string full = absolutePath(path);
  int ok = 0;
  switch (detectKind(path)) {
    case FileKind::Behaviour:
      ok = KUConvertKCVToRelative(full.c_str());
      break;
    case FileKind::SceneList:
      ok = KUConvertKSLToRelative(full.c_str());
      break;
    case FileKind::Shape:
      ok = KUConvertKSFToRelative(full.c_str());
      break;
    default:
      return notContentFile(path, "normalised");
  }
  if (!ok) {
    const std::string at = libraryComment();
    return fail(path + ": the file could not be normalised" +
                (at.empty() || at == full ? "" : " (while at " + at + ")") + ".");
  }
  std::printf("normalised %s\n", path.c_str());
  return kExitOk;
}

int denormaliseFile(const std::string& path) {
  if (!isReadable(path)) return fail(path + ": the file cannot be read.");
  const std::string dir = absoluteDirectory(path);
  const std::string full = absolutePath(path);
  switch (detectKind(path)) {
    case FileKind::Behaviour:
      if (!KUDeRelativiseKCV(full.c_str()))
        return fail(path + ": the behaviour file could not be denormalised.");
      break;
    case FileKind::SceneList: {
      std::string content;
      readFile(path, &content);
      // An empty list has nothing to change; the library reports it as a failure.
      if (!splitLines(content).empty() && !KUDeRelativiseKSL(full.c_str(), kKwqDir, dir.c_str())) {
        return fail(path + ": the scene list could not be denormalised.");
      }
      break;
    }
    case FileKind::Shape: {
      // 0 means "nothing changed" as well as failure: a shape that restores had nothing to change.
      if (!KUDeRelativiseKSF(dir.c_str(), full.c_str())) {
        CKVGen gen;
        gen.KVInitialise();
        if (!gen.KVRestore(path.c_str())) return fail(path + ": the shape file could not be denormalised.");
      }
      break;
    }
    default:
      return notContentFile(path, "denormalised");
  }
  std::printf("denormalised %s against %s\n", path.c_str(), dir.c_str());
  return kExitOk;
}

// Gathers one behaviour table's files into target, row by row so that progress can be shown.
void gatherRows(CKDecide& table, const std::string& target, Progress* progress, std::size_t* done) {
  CKActionRow* row = nullptr;
  std::vector<CKActionRow*> rows;
  for (int ok = table.DESelectFirstActionRow(&row); ok; ok = table.DESelectNextActionRow(&row))
    rows.push_back(row);
  for (CKActionRow* r : rows) {
    char text[KAR_TEXTDATA_LEN + 1] = {0};
    if (r->ARGetTextData(text)) {
      CKDecide single;
      single.DEInitialise();
      CKActionRow* copy = new CKActionRow;
      copy->ARCopyFrom(r);
      single.DEAddActionRow(copy);
      KUCopyKCVForNormalise(target.c_str(), &single);
      char gathered[KAR_TEXTDATA_LEN + 1] = {0};
      if (copy->ARGetTextData(gathered)) r->ARSetTextData(gathered);
    }
    progress->step(++*done, text);
  }
}

int gatherBehaviour(const std::string& path, const std::string& target, std::string* result) {
  CKDecide table;
  table.DEInitialise();
  if (!table.DELoadFromFile(path.c_str())) return fail(path + ": the behaviour file does not load.");
  KUDeRelativiseKCV(absoluteDirectory(path).c_str(), &table);
  std::size_t rows = 0, done = 0;
  CKActionRow* row = nullptr;
  for (int ok = table.DESelectFirstActionRow(&row); ok; ok = table.DESelectNextActionRow(&row)) ++rows;
  Progress progress("gathering", rows);
  gatherRows(table, target, &progress, &done);
  *result = target + baseName(path);
  if (!table.DEStoreToFile(result->c_str()))
    return fail(*result + ": the gathered behaviour cannot be written.");
  return kExitOk;
}

int gatherShape(const std::string& path, const std::string& target, std::string* result) {
  *result = target + baseName(path);
  std::error_code ec;
  if (fs::absolute(path, ec) != fs::absolute(*result, ec))
    fs::copy_file(path, *result, fs::copy_options::overwrite_existing, ec);
  if (ec) return fail(*result + ": the shape file cannot be copied there.");
  KUDeRelativiseKSF(absoluteDirectory(path).c_str(), result->c_str());
  if (!KUCopyKSFFileParts(result->c_str(), target.c_str()))
    return fail(path + ": the shape's textures cannot be gathered.");
  return kExitOk;
}

int gatherSceneList(const std::string& path, const std::string& target, std::string* result) {
  std::string content;
  if (!readFile(path, &content)) return fail(path + ": the scene list cannot be read.");
  const std::vector<std::string> lines = splitLines(content);
  std::size_t names = 0, done = 0, missing = 0;
  for (const std::string& l : lines) names += (!l.empty() && l[0] != '#') ? 1 : 0;
  Progress progress("gathering", names);
  std::vector<std::string> out;
  for (const std::string& line : lines) {
    if (line.empty() || line[0] == '#') {
      out.push_back(line);
      continue;
    }
    char name[264] = {0};
    KUSafeStrncpy(name, line.c_str(), 263);
    KUDeRelativiseFileName(path.c_str(), name);
    std::string gathered = name;
    if (!KUIsFileReadable(name)) {
      ++missing;
    } else if (endsWithNoCase(name, ".kvc")) {
      gatherBehaviour(name, target, &gathered);
    } else if (endsWithNoCase(name, ".ksf")) {
      gatherShape(name, target, &gathered);
    } else {
      char copied[264] = {0};
      if (KUCopyToTarget(name, target.c_str(), copied)) gathered = copied;
    }
    out.push_back(gathered);
    progress.step(++done, line);
  }
  *result = target + baseName(path);
  std::ofstream f(*result, std::ios::binary | std::ios::trunc);
  for (const std::string& l : out) f << l << '\n';
  if (!f) return fail(*result + ": the gathered scene list cannot be written.");
  if (missing)
    warn(path + ": " + std::to_string(missing) + " named files cannot be read and were not gathered.");
  return kExitOk;
}

int gatherFile(const std::string& path, const std::string& into) {
  if (!isReadable(path)) return fail(path + ": the file cannot be read.");
  std::error_code ec;
  fs::create_directories(into, ec);
  if (!fs::is_directory(into)) return fail(into + ": the directory cannot be made.");
  const std::string target = withSeparator(fs::absolute(into, ec).string());
  std::string result;
  int status = kExitFailed;
  switch (detectKind(path)) {
    case FileKind::Behaviour:
      status = gatherBehaviour(path, target, &result);
      break;
    case FileKind::SceneList:
      status = gatherSceneList(path, target, &result);
      break;
    case FileKind::Shape:
      status = gatherShape(path, target, &result);
      break;
    default:
      return notContentFile(path, "gathered");
  }
  if (status != kExitOk) return status;
  std::size_t files = 0;
  for (const auto& entry : fs::directory_iterator(target, ec)) files += entry.is_regular_file() ? 1 : 0;
  std::printf("gathered %s into %s (%zu files there)\n", path.c_str(), target.c_str(), files);
  return kExitOk;
}

}  // namespace

void addNormaliseCommands(CLI::App& app, int* result) {
  auto files = std::make_shared<std::vector<std::string>>();
  CLI::App* n = app.add_subcommand(
      "normalise",
      "Put the file names inside behaviour, scene-list and shape files into path-variable form.");
  n->add_option("files", *files, "Files to rewrite in place")->required();
  n->callback([files, result] { *result = forEachFile(*files, normaliseFile); });
  auto dfiles = std::make_shared<std::vector<std::string>>();
  CLI::App* d = app.add_subcommand(
      "denormalise", "Turn path variables back into paths, ?KALDOKWQDIR? being each file's own folder.");
  d->add_option("files", *dfiles, "Files to rewrite in place")->required();
  d->callback([dfiles, result] { *result = forEachFile(*dfiles, denormaliseFile); });
  auto gfile = std::make_shared<std::string>();
  auto into = std::make_shared<std::string>();
  CLI::App* g = app.add_subcommand(
      "gather",
      "Copy a file and everything it references into one directory, pointing the copy at the copies.");
  g->add_option("file", *gfile, "Behaviour, scene-list or shape file")->required();
  g->add_option("--into", *into, "Directory to gather into (made when missing)")->required();
  g->callback([gfile, into, result] { *result = gatherFile(*gfile, *into); });
}

}  // namespace kutool
