// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// `kutil check`: loads each file with the library and reports what is wrong, or one summary line.
#include <CLI/CLI.hpp>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <set>
#include <sstream>

#include "Common.h"
#include "KUtil.h"

namespace kutool {
namespace {

// Line-number search reloads growing prefixes of a file; beyond this many lines it is skipped.
constexpr std::size_t kMaxLinesToLocate = 4000;

// "path line n: ", the start of a sentence about one line of a file.
std::string atLine(const std::string& path, std::size_t line) {
  return path + " line " + std::to_string(line) + ": ";
}

std::string inQuotes(const std::string& text) { return "\"" + text + "\""; }

std::string plural(std::size_t n, const char* one, const char* many) {
  return std::to_string(n) + " " + (n == 1 ? one : many);
}

const char* describeLoadError(unsigned int id) {
  switch (id) {
    case KDE_ERROR_ROW_TYPE:
      return "a trigger with an unknown row type";
    case KDE_ERROR_TRIGGER_TOKEN:
      return "ON, IN or AT without its word at the end of the line";
    case KDE_ERROR_UNKNOWN_WORD:
      return "a word that is neither a trigger (ON, IN, AT) nor an action";
    case KDE_ERROR_ACTION:
      return "an action that cannot be applied (is there a trigger before it?)";
    case KDE_ERROR_ACTION_TOKEN:
      return "an action without its argument at the end of the line";
    case KDE_ERROR_MOTION:
      return "MOVE with a word that is no motion";
    default:
      break;
  }
  return "an unknown error";
}

// A scratch file name in the system's temporary folder, unique within this run.
std::string scratchName(const char* ending) {
  static int counter = 0;
  const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
  std::filesystem::path p = std::filesystem::temp_directory_path();
  p /= "kutil-" + std::to_string(now % 1000000007) + "-" + std::to_string(++counter) + ending;
  return p.string();
}

struct PrefixLoad {
  int result = 0;
  unsigned int errorId = KDE_ERROR_NONE;
  std::string comment;
};

// Loads the first `count` lines of a behaviour file into a fresh table.
PrefixLoad loadPrefix(const std::vector<std::string>& lines, std::size_t count, const std::string& scratch) {
  PrefixLoad out;
  {
    std::ofstream f(scratch, std::ios::binary | std::ios::trunc);
    for (std::size_t i = 0; i < count; ++i) f << lines[i] << '\n';
  }
  CKDecide table;
  table.DEInitialise();
  out.result = table.DELoadFromFile(scratch.c_str());
  unsigned int id = KDE_ERROR_NONE;
  if (table.DEGetErrorID(&id)) out.errorId = id;
  char comment[KDE_COMMENT_LEN + 1] = {0};
  table.DEGetComment(comment);
  out.comment = comment;
  return out;
}

// One problem of a behaviour file: the line, the error id (5 when none) and the clause.
struct BehaviourProblem {
  std::size_t line = 0;
  unsigned int errorId = KDE_ERROR_NONE;
  std::string clause;
  bool fatal = false;
};

// The loader does not count lines, so each problem is located by loading growing prefixes:
// a failure shows at the first prefix that fails, a recorded error where the error id changes.
std::vector<BehaviourProblem> locateProblems(const std::vector<std::string>& lines) {
  std::vector<BehaviourProblem> problems;
  if (lines.size() > kMaxLinesToLocate) return problems;
  const std::string scratch = scratchName(".kvc");
  unsigned int previousId = KDE_ERROR_NONE;
  for (std::size_t k = 1; k <= lines.size(); ++k) {
    const PrefixLoad load = loadPrefix(lines, k, scratch);
    if (load.result == 0) {
      BehaviourProblem p;
      p.line = k;
      p.errorId = load.errorId != previousId ? load.errorId : KDE_ERROR_NONE;
      p.clause = load.comment;
      p.fatal = true;
      problems.push_back(p);
      break;
    }
    if (load.errorId != previousId) {
      BehaviourProblem p;
      p.line = k;
      p.errorId = load.errorId;
      p.clause = load.comment;
      problems.push_back(p);
      previousId = load.errorId;
    }
  }
  std::error_code ignored;
  std::filesystem::remove(scratch, ignored);
  return problems;
}

std::string problemSentence(const std::string& path, const BehaviourProblem& p) {
  std::ostringstream s;
  s << path;
  if (p.line > 0) s << " line " << p.line;
  s << ": ";
  if (p.errorId != KDE_ERROR_NONE) {
    s << "error " << p.errorId << ", " << describeLoadError(p.errorId);
  } else {
    s << "a clause that cannot be read (FOR needs a whole number, BY a number)";
  }
  if (!p.clause.empty()) s << ", at " << inQuotes(p.clause);
  s << ".";
  return s.str();
}

std::string rowText(CKDecide& table, CKActionRow* row, int number) {
  char text[KDE_ROW_TEXT_SIZE] = {0};
  table.DEWriteRow(text, row, number);
  std::string out = text;
  while (!out.empty() && out.back() == ' ') out.pop_back();
  return out;
}

// Reports a behaviour that failed to load (one sentence, an exit status) or warns of each clause the
// loader skipped.
int reportLoadProblems(const std::string& path, const std::string& content, CKDecide& table, bool loaded,
                       unsigned int id) {
  const std::vector<BehaviourProblem> problems = locateProblems(splitLines(content));
  if (!loaded) {
    BehaviourProblem last;
    if (!problems.empty() && problems.back().fatal) {
      last = problems.back();
    } else {
      char comment[KDE_COMMENT_LEN + 1] = {0};
      table.DEGetComment(comment);
      last.errorId = id;
      last.clause = comment;
    }
    return fail(problemSentence(path, last));
  }
  for (const BehaviourProblem& p : problems) warn(problemSentence(path, p) + " The clause was skipped.");
  return kExitOk;
}

// What a walk over a behaviour's rows found.
struct RowSurvey {
  std::map<int, int> byType;
  std::set<std::string> groups;
  std::vector<std::string> calls;
  int rows = 0;
  bool seenIn = false;
};

// Warns of a row the clock never runs: an ON row it cannot or does not reach, a row without action.
void warnIdleRow(const std::string& path, CKDecide& table, CKActionRow* row, int number, int type, int action,
                 bool seenIn) {
  if (type == KAR_ROW_ON) {
    int event = 0;
    if (!row->ARGetEvent(&event)) {
      warn(path + ": row " + std::to_string(number) +
           " is an ON row with an unknown event; it never fires and "
           "cannot be stored.");
    } else if (seenIn) {
      warn(path + ": row " + std::to_string(number) + " (" + rowText(table, row, number) +
           ") stands after an IN row, so the clock never hands it events.");
    }
  }
  if (action == -1) {
    warn(path + ": row " + std::to_string(number) + " (" + rowText(table, row, number) + ") has no action.");
  }
}

// Counts the rows by type and gathers the IN groups and CALL targets, warning of rows that never run.
RowSurvey surveyRows(const std::string& path, CKDecide& table) {
  RowSurvey survey;
  CKActionRow* row = nullptr;
  table.DEEnableRowNumbering();
  for (int ok = table.DESelectFirstActionRow(&row); ok; ok = table.DESelectNextActionRow(&row)) {
    ++survey.rows;
    int type = -1, action = -1;
    row->ARGetRowType(&type);
    row->ARGetAction(&action);
    ++survey.byType[type];
    char grouping[KAR_GROUPING_LEN + 1] = {0};
    row->ARGetGrouping(grouping);
    if (type == KAR_ROW_IN) {
      survey.groups.insert(grouping);
      survey.seenIn = true;
    }
    warnIdleRow(path, table, row, survey.rows, type, action, survey.seenIn);
    if (action == KAR_ACTION_CALL) {
      char target[KAR_TEXTDATA_LEN + 1] = {0};
      row->ARGetTextData(target);
      survey.calls.push_back(target);
    }
  }
  return survey;
}

void printBehaviourSummary(const std::string& path, const RowSurvey& survey) {
  std::ostringstream s;
  s << path << ": behaviour, " << plural(static_cast<std::size_t>(survey.rows), "row", "rows");
  if (survey.rows > 0) {
    const auto count = [&survey](int type) {
      const auto found = survey.byType.find(type);
      return found == survey.byType.end() ? 0 : found->second;
    };
    s << " (" << count(KAR_ROW_ON) << " ON, " << count(KAR_ROW_IN) << " IN, " << count(KAR_ROW_AT) << " AT)";
  }
  if (!survey.groups.empty()) s << ", " << plural(survey.groups.size(), "group", "groups");
  std::cout << s.str() << '\n';
}

int checkBehaviour(const std::string& path) {
  std::string content;
  if (!readFile(path, &content)) return fail(path + ": the behaviour file cannot be read.");
  CKDecide table;
  table.DEInitialise();
  const int loaded = table.DELoadFromFile(path.c_str());
  unsigned int id = KDE_ERROR_NONE;
  const bool recorded = table.DEGetErrorID(&id) != 0;
  if ((!loaded || recorded) && reportLoadProblems(path, content, table, loaded != 0, id) != kExitOk) {
    return kExitFailed;
  }
  // What loads may still not behave: rows the clock never reaches, calls to missing groups.
  const RowSurvey survey = surveyRows(path, table);
  for (const std::string& c : survey.calls) {
    if (!survey.groups.count(c)) warn(path + ": CALL " + c + " names no IN group of this file.");
  }
  printBehaviourSummary(path, survey);
  return kExitOk;
}

// The shape reader skips what it does not know but rejects a tag out of place inside a block;
// this finds the first such line so that the report can name it.
std::string misplacedShapeTag(const std::vector<std::string>& lines) {
  static const std::set<std::string> seedTags = {"[SEX]", "[SEY]", "[SEZ]", "[DES]"};
  static const std::set<std::string> instructionTags = {"[CMD]", "[IVX]", "[IVY]", "[IVZ]", "[IMG]", "[SNI]"};
  static const std::vector<std::string> known = {"[NRM]", "[DTA]", "[DRO]", "[FPT]", "[FTI]", "[BPT]",
                                                 "[BTI]", "[FST]", "[STI]", "[FIC]", "[BIC]", "[WIC]",
                                                 "[SEX]", "[SEY]", "[SEZ]", "[CMD]", "[IVX]", "[IVY]",
                                                 "[IVZ]", "[IMG]", "[SED]", "[DES]", "[INS]", "[SNI]"};
  enum { Outside, Seed, Instruction, Dead } state = Outside;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    std::string tag;
    for (const std::string& k : known) {
      if (lines[i].rfind(k, 0) == 0) {
        tag = k;
        break;
      }
    }
    if (tag.empty() || state == Dead) continue;
    const std::string where = "line " + std::to_string(i + 1) + ": ";
    if (state == Outside) {
      if (tag == "[SED]")
        state = Seed;
      else if (tag == "[INS]")
        state = Instruction;
      else if (tag == "[DES]" || tag == "[SNI]")
        state = Dead;
    } else if (state == Seed) {
      if (tag == "[DES]")
        state = Outside;
      else if (!seedTags.count(tag))
        return where + "the tag " + tag + " stands inside a seed vertex block";
    } else if (state == Instruction) {
      if (tag == "[SNI]")
        state = Outside;
      else if (!instructionTags.count(tag))
        return where + "the tag " + tag + " stands inside an instruction block";
    }
  }
  return std::string();
}

int checkShape(const std::string& path) {
  std::string content;
  if (!readFile(path, &content)) return fail(path + ": the shape file cannot be read.");
  CKVGen gen;
  gen.KVInitialise();
  const int restored = gen.KVRestore(path.c_str());
  int vertices = 0, instructions = 0;
  gen.KVGetNumVertices(&vertices);
  gen.KVGetNumInstructs(&instructions);
  if (!restored) {
    const std::string misplaced = misplacedShapeTag(splitLines(content));
    if (!misplaced.empty()) return fail(path + " " + misplaced + ", so the shape does not load.");
    if (vertices == 0)
      return fail(path + ": the shape holds no complete seed vertex block ([SED] ... [DES]).");
    return fail(path + ": the shape loads but its outlines cannot be built.");
  }
  std::ostringstream s;
  s << path << ": shape, " << plural(static_cast<std::size_t>(vertices), "seed vertex", "seed vertices")
    << ", " << plural(static_cast<std::size_t>(instructions), "instruction", "instructions");
  if (gen.KVTesselateSeedPlane()) {
    int a = 0, b = 0, c = 0, triangles = 0;
    for (int ok = gen.KVGetFirstTesselatedTriangle(&a, &b, &c); ok;
         ok = gen.KVGetNextTesselatedTriangle(&a, &b, &c)) {
      ++triangles;
    }
    s << ", seed in " << plural(static_cast<std::size_t>(triangles), "triangle", "triangles");
  } else {
    s << ", seed does not tessellate (side faces only)";
  }
  if (!gen.KVGenerate()) return fail(path + ": the instructions of the shape do not generate a solid.");
  std::cout << s.str() << '\n';
  return kExitOk;
}

int checkSceneList(const std::string& path) {
  std::string content;
  if (!readFile(path, &content)) return fail(path + ": the scene list cannot be read.");
  const std::vector<std::string> lines = splitLines(content);
  std::size_t names = 0, missing = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::string& line = lines[i];
    if (line.empty() || line[0] == '#') continue;
    ++names;
    const std::string where = atLine(path, i + 1);
    if (line.size() > 259) {
      return fail(where + "the name is longer than 259 characters and would be read as two lines.");
    }
    char resolved[264] = {0};
    KUSafeStrncpy(resolved, line.c_str(), 263);
    KUDeRelativiseFileName(path.c_str(), resolved);
    if (KUIsVariablised(resolved)) {
      continue;  // a program-directory variable: resolved by the host on its own machine
    }
    if (!KUIsFileReadable(resolved)) {
      ++missing;
      warn(where + inQuotes(line) + " names a file that cannot be read.");
    }
  }
  std::ostringstream s;
  s << path << ": scene list, " << plural(lines.size(), "line", "lines") << ", "
    << plural(names, "name", "names");
  if (missing) s << " (" << missing << " missing)";
  std::cout << s.str() << '\n';
  return kExitOk;
}

bool fieldOf(const char* tag, const std::string& line, std::string* value) {
  char out[KMARKER_NAME_SIZE + 2] = {0};
  if (!KUExtractField(tag, line.c_str(), out, KMARKER_NAME_SIZE)) return false;
  *value = out;
  return true;
}

// The marker's whole-number field a tag names, or nullptr.
int* intField(tagMarkerItem& item, const std::string& tag) {
  const std::pair<const char*, int*> fields[] = {
      {"[MKI]", &item.indexNumber}, {"[MKS]", &item.sector}, {"[MKV]", &item.valueV}};
  for (const auto& f : fields) {
    if (tag == f.first) return f.second;
  }
  return nullptr;
}

// The marker's number field a tag names, or nullptr.
float* floatField(tagMarkerItem& item, const std::string& tag) {
  const std::pair<const char*, float*> fields[] = {
      {"[MKX]", &item.position.x},  {"[MKY]", &item.position.y},  {"[MKZ]", &item.position.z},
      {"[MKP]", &item.direction.x}, {"[MKQ]", &item.direction.y}, {"[MKR]", &item.direction.z},
      {"[MKA]", &item.up.x},        {"[MKB]", &item.up.y},        {"[MKC]", &item.up.z},
      {"[MKO]", &item.valueO},      {"[MKF]", &item.valueF}};
  for (const auto& f : fields) {
    if (tag == f.first) return f.second;
  }
  return nullptr;
}

// Stores one field of a marker; an exit status, the failure named.
int setMarkerField(tagMarkerItem& item, const std::string& tag, const std::string& value,
                   const std::string& where) {
  if (tag == "[MKN]") {
    KUSafeStrncpy(item.name, value.c_str(), KMARKER_NAME_SIZE - 1);
    return kExitOk;
  }
  if (int* field = intField(item, tag)) {
    long long n = 0;
    if (!parseInt(value, &n))
      return fail(where + "the field " + tag + " holds " + inQuotes(value) + ", not a whole number.");
    *field = static_cast<int>(n);
    return kExitOk;
  }
  if (float* field = floatField(item, tag)) {
    double v = 0.0;
    if (!parseFloat(value, &v))
      return fail(where + "the field " + tag + " holds " + inQuotes(value) + ", not a number.");
    *field = static_cast<float>(v);
    return kExitOk;
  }
  return fail(where + "the tag " + tag + " is not a marker field.");
}

// A marker list as it is read: the marker being filled ([MKJ] ... [MKE]) and the names seen.
struct MarkerReading {
  CKMarkerList list;
  tagMarkerItem item;
  bool inRecord = false;
  std::size_t recordLine = 0;
  std::set<std::string> names;
};

// Reads one non-empty line of a marker list; an exit status, the failure named.
int readMarkerLine(MarkerReading& r, const std::string& line, std::size_t number, const std::string& where) {
  if (line.size() < 5 || line[0] != '[' || line[4] != ']')
    return fail(where + "the line is not a tagged segment.");
  const std::string tag = line.substr(0, 5);
  std::string value;
  if (!fieldOf(tag.c_str(), line, &value)) return fail(where + "the segment " + tag + " is malformed.");
  if (tag == "[MKJ]") {
    if (r.inRecord)
      return fail(where + "a new marker begins before the marker of line " + std::to_string(r.recordLine) +
                  " ended with [MKE].");
    r.inRecord = true;
    r.recordLine = number;
    r.list.MLInitMarker(&r.item);
    return kExitOk;
  }
  if (!r.inRecord) return fail(where + "the field " + tag + " stands outside a marker ([MKJ] ... [MKE]).");
  if (tag == "[MKE]") {
    if (!r.names.insert(r.item.name).second)
      warn(where + "the marker name " + inQuotes(r.item.name) + " is used twice.");
    r.list.MLAddMarker(&r.item);
    r.inRecord = false;
    return kExitOk;
  }
  return setMarkerField(r.item, tag, value, where);
}

int checkMarkers(const std::string& path) {
  std::string content;
  if (!readFile(path, &content)) return fail(path + ": the marker file cannot be read.");
  const std::vector<std::string> lines = splitLines(content);
  MarkerReading r;
  r.list.MLInitialise();
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (lines[i].empty()) continue;
    const int status = readMarkerLine(r, lines[i], i + 1, atLine(path, i + 1));
    if (status != kExitOk) return status;
  }
  if (r.inRecord) return fail(atLine(path, r.recordLine) + "the marker that begins here has no [MKE].");
  std::size_t count = 0;
  tagMarkerItem* m = nullptr;
  for (int ok = r.list.MLSelectFirstMarker(&m); ok; ok = r.list.MLSelectNextMarker(&m)) ++count;
  int next = 0;
  std::ostringstream s;
  s << path << ": marker list, " << plural(count, "marker", "markers");
  if (r.list.MLGetNextIndexNumber(&next)) s << ", next index " << next;
  std::cout << s.str() << '\n';
  return kExitOk;
}

int checkRecording(const std::string& path) {
  std::string content;
  if (!readFile(path, &content)) return fail(path + ": the recording cannot be read.");
  const std::vector<std::string> lines = splitLines(content);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::string where = atLine(path, i + 1);
    if (lines[i].size() > static_cast<std::size_t>(KIR_LINE_LEN - 2)) {
      return fail(where + "the line is longer than the recorder reads at once.");
    }
    for (const char* tag : {"[CM]", "[MG]", "[RP]"}) {
      char value[KIR_TEXT_LEN + 1] = {0};
      long long n = 0;
      if (!KUExtractField(tag, lines[i].c_str(), value, KIR_TEXT_LEN) || !parseInt(value, &n)) {
        if (std::string(tag) == "[CM]" && !lines[i].empty()) {
          return fail(where + "the line has no command ([CM]), so playback would stop here.");
        }
        if (lines[i].empty()) return fail(where + "an empty line ends playback early.");
        return fail(where + "the segment " + tag + " is missing or not a whole number.");
      }
    }
  }
  CKInputRecord player;
  player.IRInitialise();
  player.IRSetFileName(path.c_str(), KIR_MODE_PLAY);
  int code = 0, flags = 0;
  char text[KIR_TEXT_LEN + 1] = {0};
  std::size_t commands = 0;
  while (player.IRGetCommand(&code, &flags, text)) ++commands;
  player.IRTerminate();
  std::cout << path << ": input recording, " << plural(lines.size(), "line", "lines") << ", "
            << plural(commands, "command", "commands") << " on playback\n";
  return kExitOk;
}

int checkInfoSheet(const std::string& path) {
  std::string content;
  if (!readFile(path, &content)) return fail(path + ": the info sheet cannot be read.");
  const std::vector<std::string> lines = splitLines(content);
  std::map<long long, std::size_t> ids;
  std::size_t messages = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::string& line = lines[i];
    if (line.empty()) continue;
    const std::string where = atLine(path, i + 1);
    char id[17] = {0};
    char text[129] = {0};
    if (!KUExtractField("[iid]", line.c_str(), id, 16) || !KUExtractField("[itx]", line.c_str(), text, 128)) {
      warn(where + "the line lacks an [iid] or [itx] segment and is skipped.");
      continue;
    }
    long long n = 0;
    if (!parseInt(id, &n) || n < 0) {
      warn(where + "the id " + inQuotes(id) + " is not a whole number.");
      continue;
    }
    if (ids.count(n)) {
      warn(where + "the id " + std::to_string(n) + " was given on line " + std::to_string(ids[n]) +
           ", which wins.");
    } else {
      ids[n] = i + 1;
    }
    ++messages;
  }
  CKaldoInfo info;
  if (!info.KILoadInfoSheets(path.c_str())) return fail(path + ": the info sheet holds no message.");
  std::ostringstream s;
  s << path << ": info sheet, " << plural(messages, "message", "messages");
  if (!ids.empty()) s << " (ids " << ids.begin()->first << " to " << ids.rbegin()->first << ")";
  std::cout << s.str() << '\n';
  return kExitOk;
}

}  // namespace

int checkFile(const std::string& path) {
  if (!isReadable(path)) return fail(path + ": the file cannot be read.");
  switch (detectKind(path)) {
    case FileKind::Behaviour:
      return checkBehaviour(path);
    case FileKind::Shape:
      return checkShape(path);
    case FileKind::SceneList:
      return checkSceneList(path);
    case FileKind::Markers:
      return checkMarkers(path);
    case FileKind::Recording:
      return checkRecording(path);
    case FileKind::InfoSheet:
      return checkInfoSheet(path);
    case FileKind::Unknown:
      break;
  }
  return fail(path +
              ": not a file kutil knows (behaviour .kvc, shape .ksf, scene list .ksl, or a marker, "
              "recording or info-sheet file by its first tag).");
}

void addCheckCommand(CLI::App& app, int* result) {
  auto files = std::make_shared<std::vector<std::string>>();
  CLI::App* sub = app.add_subcommand(
      "check",
      "Load behaviour (.kvc), shape (.ksf), scene-list (.ksl), marker, recording and info-sheet files; "
      "report what is wrong or one summary line per good file.");
  sub->add_option("files", *files, "Files to check")->required();
  sub->callback([files, result] { *result = forEachFile(*files, checkFile); });
}

}  // namespace kutool
