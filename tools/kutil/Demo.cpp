// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// `kutil demo`: a guided tour over the sample scene in examples/.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <iostream>

#include "Common.h"
#include "KUtil.h"

namespace kutool {
namespace {

namespace fs = std::filesystem;

void heading(int step, const std::string& title) {
  std::cout << (step > 1 ? "\n" : "") << "== " << step << ". " << title << " ==\n";
  std::cout.flush();
}

// build/demo when run from a source tree (as scripts/demo.sh does), else a folder in the temporary directory.
std::string defaultOutput() {
  std::error_code ec;
  if (fs::is_directory("build", ec)) return (fs::path("build") / "demo").string();
  return (fs::temp_directory_path(ec) / "kutil-demo").string();
}

bool inside(const fs::path& child, const fs::path& parent) {
  std::error_code ec;
  const fs::path c = fs::weakly_canonical(child, ec), p = fs::weakly_canonical(parent, ec);
  auto ci = c.begin();
  for (auto pi = p.begin(); pi != p.end(); ++pi, ++ci) {
    if (pi->empty()) continue;
    if (ci == c.end() || *ci != *pi) return false;
  }
  return true;
}

std::string sample(const fs::path& dir, const char* name) { return (dir / name).string(); }

// Makes sure the samples are there and the output folder (never inside them) exists; an exit status.
int prepareFolders(const std::string& examples, std::string* out) {
  std::error_code ec;
  if (!fs::is_directory(examples, ec)) return fail(examples + ": the sample folder does not exist.");
  if (out->empty()) *out = defaultOutput();
  if (inside(*out, examples))
    return usage("the demo never writes into the sample folder; give --out another folder.");
  fs::create_directories(*out, ec);
  if (!fs::is_directory(*out, ec)) return fail(*out + ": the output folder cannot be made.");
  for (const char* needed : {"door.kvc", "guide.kvc", "door.ksf", "globe.ksf", "english.info"}) {
    const std::string file = sample(examples, needed);
    if (!isReadable(file)) return fail(file + ": the demo needs this sample file.");
  }
  return kExitOk;
}

// Checks every file of a kind the tool knows in the sample folder; returns how many are bad.
int checkSamples(const fs::path& dir) {
  heading(1, "Checking the sample content");
  std::error_code ec;
  std::vector<std::string> files;
  for (const auto& entry : fs::directory_iterator(dir, ec)) {
    if (entry.is_regular_file() && detectKind(entry.path().string()) != FileKind::Unknown) {
      files.push_back(entry.path().string());
    }
  }
  std::sort(files.begin(), files.end());
  int bad = 0;
  for (const std::string& f : files) bad += checkFile(f) != kExitOk ? 1 : 0;
  std::cout << files.size() - static_cast<std::size_t>(bad) << " of " << files.size() << " files are good\n";
  return bad;
}

int runSampleBehaviours(const fs::path& dir) {
  heading(2, "Running door.kvc: open at tick 1, select at tick 7, collide at tick 8");
  RunOptions door;
  door.file = sample(dir, "door.kvc");
  door.ticks = 9;
  door.inputs = {{1, KAR_EVENT_OPEN, ""}, {7, KAR_EVENT_SELECT, ""}, {8, KAR_EVENT_COLLIDE, ""}};
  if (runBehaviour(door) != kExitOk) return kExitFailed;

  heading(3, "Running guide.kvc: a ping at tick 1 plays walk.rec back");
  RunOptions guide;
  guide.file = sample(dir, "guide.kvc");
  guide.ticks = 8;
  guide.inputs = {{1, KAR_EVENT_PING, ""}};
  return runBehaviour(guide) != kExitOk ? kExitFailed : kExitOk;
}

int exportSampleShapes(const fs::path& dir, const std::string& out) {
  heading(4, "Exporting shapes to OBJ" + std::string(pngAvailable() ? " and PNG" : ""));
  for (const char* shape : {"door", "globe"}) {
    ShapeOptions options;
    options.file = sample(dir, (std::string(shape) + ".ksf").c_str());
    options.obj = (fs::path(out) / (std::string(shape) + ".obj")).string();
    if (pngAvailable()) options.png = (fs::path(out) / (std::string(shape) + ".png")).string();
    if (exportShape(options) != kExitOk) return kExitFailed;
  }
  if (!pngAvailable()) std::cout << pngUnavailableSentence() << '\n';
  return kExitOk;
}

int runDemo(const std::string& examples, std::string out) {
  const int prepared = prepareFolders(examples, &out);
  if (prepared != kExitOk) return prepared;
  const fs::path dir(examples);
  std::cout << "KUtil " << KUTIL_VERSION_STRING << " demonstration over " << examples << "/\n\n";
  const int bad = checkSamples(dir);
  if (runSampleBehaviours(dir) != kExitOk) return kExitFailed;
  if (exportSampleShapes(dir, out) != kExitOk) return kExitFailed;
  heading(5, "Looking up message 112 in english.info");
  if (printMessage(112, sample(dir, "english.info")) != kExitOk) return kExitFailed;
  std::cout << "\nDone. The exported files are in " << out << "\n";
  return bad ? kExitFailed : kExitOk;
}

}  // namespace

void addDemoCommand(CLI::App& app, int* result) {
  auto examples = std::make_shared<std::string>("examples");
  auto out = std::make_shared<std::string>();
  CLI::App* sub = app.add_subcommand(
      "demo", "Check the sample content, run two behaviours, export shapes and look up a message.");
  sub->add_option("examples", *examples, "Folder of the sample content (default: examples)");
  sub->add_option("--out", *out,
                  "Folder for the exported files (default: build/demo, or a temporary folder)");
  sub->callback([examples, out, result] { *result = runDemo(*examples, *out); });
}

}  // namespace kutool
