// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// `kutil run`, `kutil record` and `kutil play`: the behaviour clock and the input recorder.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <iostream>
#include <sstream>

#include "Common.h"
#include "KUtil.h"

namespace kutool {
namespace {

// Ticks run after the last scripted input when --ticks is not given, and the least run at all.
constexpr int kTrailingTicks = 5;
constexpr int kDefaultTicks = 10;

void printCommandHeader(const char* first, const char* amount) {
  std::printf("%5s  %4s  %-10s  %-9s  text\n", first, "code", "command", amount);
}

// One aligned line of the readable form, without trailing blanks.
void printRow(int counter, int code, const std::string& name, const std::string& amount,
              const std::string& text) {
  char line[64];
  std::snprintf(line, sizeof line, "%5d  %4d  %-10s  %-9s  ", counter, code,
                name.empty() ? "?" : name.c_str(), amount.c_str());
  std::string out = std::string(line) + text;
  while (!out.empty() && out.back() == ' ') out.pop_back();
  std::printf("%s\n", out.c_str());
}

// A command's keyword as JSON: null when the code has none.
std::string jsonCommandName(const std::string& name) { return name.empty() ? "null" : jsonString(name); }

void printCommand(bool json, const char* counterName, int counter, int code, double magnitude, int flags,
                  const std::string& text) {
  const std::string name = commandName(code);
  if (json) {
    std::printf("{\"%s\":%d,\"code\":%d,\"command\":%s,\"magnitude\":%s,\"flags\":%d,\"text\":%s}\n",
                counterName, counter, code, jsonCommandName(name).c_str(), jsonNumber(magnitude).c_str(),
                flags, jsonString(text).c_str());
  } else {
    printRow(counter, code, name, shortNumber(magnitude), text);
  }
}

// "NAME@TICK": the part after the last '@' is the tick.
bool splitAtTick(const std::string& argument, std::string* name, int* tick) {
  const std::size_t at = argument.rfind('@');
  long long t = 0;
  if (at == std::string::npos || at == 0 || !parseInt(argument.substr(at + 1), &t) || t < 1 || t > 1000000)
    return false;
  *name = argument.substr(0, at);
  *tick = static_cast<int>(t);
  return true;
}

// Names the clock opens itself (PLAYBACK recordings) are resolved against the behaviour file's
// folder; the names it hands to the host stay as written, for the host to resolve.
void resolvePlaybackNames(CKDecide& table, const std::string& file) {
  CKActionRow* row = nullptr;
  for (int ok = table.DESelectFirstActionRow(&row); ok; ok = table.DESelectNextActionRow(&row)) {
    int action = -1;
    row->ARGetAction(&action);
    char text[264] = {0};
    if (action != KAR_ACTION_PLAYBACK || !row->ARGetTextData(text)) continue;
    if (KUDeRelativiseFileName(file.c_str(), text)) row->ARSetTextData(text);
  }
}

// The ticks to run: as given, else the scripted inputs and a few more, at least kDefaultTicks.
int tickCount(const RunOptions& options) {
  if (options.ticks > 0) return options.ticks;
  int lastTick = 0;
  for (const RunInput& in : options.inputs) lastTick = std::max(lastTick, in.tick);
  return std::max(kDefaultTicks, lastTick + kTrailingTicks);
}

// Pushes the inputs scripted for this tick; false when they do not fit the input queue.
bool pushTickInputs(CKFIFO& input, const std::vector<RunInput>& inputs, int tick) {
  for (const RunInput& in : inputs) {
    if (in.tick != tick) continue;
    float magnitude = 1.0f;
    // Motions carry their standard step, as the host would push them.
    float step = 0.0f;
    if (KUGetMagnitudeForFIFOInput(&step, 0, 1.0f, in.code) && step >= 0.0f) magnitude = step;
    if (!input.FIPushFIFOCommand(in.code, magnitude, nullptr, in.text.c_str(), 0)) return false;
  }
  return true;
}

// Prints the commands the clock put out in this tick; returns how many there were.
int printTickOutputs(CKFIFO& output, bool json, int tick) {
  int commands = 0;
  int code = 0, flags = 0;
  float magnitude = 0.0f;
  _D3DVECTOR vector = {0.0f, 0.0f, 0.0f};
  char text[KFI_TEXT_LEN + 1] = {0};
  while (output.FIPopFIFOCommand(&code, &magnitude, &vector, text, &flags)) {
    printCommand(json, "tick", tick, code, magnitude, flags, text);
    ++commands;
  }
  return commands;
}

// "--event NAME@TICK": an event keyword or a code.
bool parseEvent(const std::string& argument, RunInput* in) {
  std::string name;
  if (!splitAtTick(argument, &name, &in->tick)) return false;
  if (CKActionRow::ARGetEventTypeFromText(&in->code, name.c_str())) return true;
  long long number = 0;
  if (!parseInt(name, &number)) return false;
  in->code = static_cast<int>(number);
  return true;
}

// "--command CODE@TICK": a code or keyword.
bool parseCommand(const std::string& argument, RunInput* in) {
  std::string name;
  return splitAtTick(argument, &name, &in->tick) && parseCommandCode(name, &in->code);
}

// The scripted inputs of `kutil run`, events first; an exit status.
int addScriptedInputs(const std::vector<std::string>& events, const std::vector<std::string>& commands,
                      RunOptions* options) {
  for (const std::string& e : events) {
    RunInput in;
    if (!parseEvent(e, &in)) {
      return usage("--event " + e +
                   " is not NAME@TICK with an event keyword (select, deselect, property, "
                   "open, collide, impact, delete, cut, copy, ping) or code and a tick from 1.");
    }
    options->inputs.push_back(in);
  }
  for (const std::string& c : commands) {
    RunInput in;
    if (!parseCommand(c, &in)) {
      return usage("--command " + c + " is not CODE@TICK with a command code or keyword and a tick from 1.");
    }
    options->inputs.push_back(in);
  }
  return kExitOk;
}

// One command of `kutil record`.
struct RecordEntry {
  int code = 0;
  int flags = 0;
  std::string text;
};

// "CODE[:FLAGS[:TEXT]]"; an exit status.
int parseRecordEntry(const std::string& argument, RecordEntry* e) {
  const std::size_t first = argument.find(':');
  const std::string codeText = argument.substr(0, first);
  long long flags = 0;
  if (!parseCommandCode(codeText, &e->code)) {
    return usage("--command " + argument + " does not begin with a command code or keyword.");
  }
  if (first != std::string::npos) {
    const std::size_t second = argument.find(':', first + 1);
    const std::string flagText =
        argument.substr(first + 1, second == std::string::npos ? std::string::npos : second - first - 1);
    if (!parseInt(flagText, &flags))
      return usage("--command " + argument + " has flags that are not a whole number.");
    if (second != std::string::npos) e->text = argument.substr(second + 1);
  }
  e->flags = static_cast<int>(flags);
  if (e->text.size() > static_cast<std::size_t>(KIR_TEXT_LEN)) {
    return usage("--command " + argument + " has a text longer than " + std::to_string(KIR_TEXT_LEN) +
                 " characters.");
  }
  return kExitOk;
}

// Stores the entries as the recorder does, then says what the file holds; an exit status.
int storeRecording(const std::string& file, const std::vector<RecordEntry>& entries) {
  CKInputRecord recorder;
  recorder.IRInitialise();
  recorder.IRSetFileName(file.c_str(), KIR_MODE_STORE);
  int stored = 0, dropped = 0;
  bool cancelArmed = false;
  for (const RecordEntry& e : entries) {
    if (e.flags & KIR_FLAG_CANCEL) cancelArmed = true;
    const bool dropsNull = e.code == 0 && cancelArmed;
    if (dropsNull) cancelArmed = false;
    if (recorder.IRStoreCommand(e.code, e.flags, e.text.c_str(), 0)) {
      ++stored;
    } else if (dropsNull) {
      ++dropped;  // the NULL after a cancelling command is dropped by design
    } else {
      recorder.IRTerminate();
      return fail(file + ": the recording cannot be written.");
    }
  }
  recorder.IRTerminate();
  std::string written;
  readFile(file, &written);
  std::printf("%s: stored %d commands in %zu lines", file.c_str(), stored, splitLines(written).size());
  if (dropped) std::printf(" (%d NULL dropped after a cancelling command)", dropped);
  std::printf("\n");
  return kExitOk;
}

// `kutil record`: every command is checked before anything is written.
int recordCommands(const std::string& file, const std::vector<std::string>& commands) {
  std::vector<RecordEntry> entries;
  for (const std::string& c : commands) {
    RecordEntry e;
    const int status = parseRecordEntry(c, &e);
    if (status != kExitOk) return status;
    entries.push_back(e);
  }
  return storeRecording(file, entries);
}

void addRunCommand(CLI::App& app, int* result) {
  auto run = std::make_shared<RunOptions>();
  auto events = std::make_shared<std::vector<std::string>>();
  auto commands = std::make_shared<std::vector<std::string>>();
  CLI::App* sub = app.add_subcommand(
      "run",
      "Drive a behaviour's clock tick by tick with scripted input and print the commands of every tick.");
  sub->add_option("file", run->file, "Behaviour file (.kvc)")->required();
  sub->add_option("--event", *events, "Event pushed at a tick, as NAME@TICK (select@1, open@3)");
  sub->add_option("--command", *commands,
                  "Command pushed at a tick, as CODE@TICK (a number or keyword, 1@2)");
  sub->add_option("--ticks", run->ticks,
                  "Ticks to run (default: the last input tick + " + std::to_string(kTrailingTicks) +
                      ", at least " + std::to_string(kDefaultTicks) + ")")
      ->check(CLI::Range(1, 1000000));
  sub->add_option("--trace", run->trace, "Write the clock's trace to this file");
  sub->add_flag("--json", run->json, "One JSON object per command and line");
  sub->callback([run, events, commands, result] {
    RunOptions options = *run;
    *result = addScriptedInputs(*events, *commands, &options);
    if (*result == kExitOk) *result = runBehaviour(options);
  });
}

void addRecordCommand(CLI::App& app, int* result) {
  auto file = std::make_shared<std::string>();
  auto commands = std::make_shared<std::vector<std::string>>();
  CLI::App* rec = app.add_subcommand("record", "Write an input recording of the given commands.");
  rec->add_option("file", *file, "Recording to write")->required();
  rec->add_option("--command", *commands, "Command as CODE[:FLAGS[:TEXT]] (a number or keyword)")->required();
  rec->callback([file, commands, result] { *result = recordCommands(*file, *commands); });
}

void addPlayCommand(CLI::App& app, int* result) {
  auto file = std::make_shared<std::string>();
  auto json = std::make_shared<bool>(false);
  CLI::App* play = app.add_subcommand("play", "Play an input recording back and print its commands.");
  play->add_option("file", *file, "Recording to play")->required();
  play->add_flag("--json", *json, "One JSON object per command and line");
  play->callback([file, json, result] { *result = playRecording(*file, *json); });
}

}  // namespace

int runBehaviour(const RunOptions& options) {
  if (!isReadable(options.file)) return fail(options.file + ": the behaviour file cannot be read.");
  CKDecide table;
  table.DEInitialise();
  if (!table.DELoadFromFile(options.file.c_str())) {
    // The check names the line and the clause.
    checkFile(options.file);
    return kExitFailed;
  }
  resolvePlaybackNames(table, options.file);
  table.DESetItemScaleFactor(1.0f);
  if (!options.trace.empty() && !table.DEOpenTrace(options.trace.c_str(), 0)) {
    return fail(options.trace + ": the trace file cannot be written.");
  }
  CKFIFO input, output;
  input.FIInitialise();
  output.FIInitialise();
  table.DEAttachInputFIFO(&input);
  table.DEAttachOutputFIFO(&output);

  const int ticks = tickCount(options);
  if (!options.json) printCommandHeader("tick", "magnitude");
  int commands = 0;
  for (int tick = 1; tick <= ticks; ++tick) {
    if (!pushTickInputs(input, options.inputs, tick)) {
      table.DECloseTrace();
      return fail("tick " + std::to_string(tick) + ": more than " + std::to_string(KFI_SLOT_COUNT) +
                  " inputs in one tick do not fit the input queue.");
    }
    table.DEClock();
    commands += printTickOutputs(output, options.json, tick);
  }
  table.DECloseTrace();
  if (!options.json) std::printf("%d ticks, %d commands\n", ticks, commands);
  return kExitOk;
}

int playRecording(const std::string& file, bool json) {
  if (!isReadable(file)) return fail(file + ": the recording cannot be read.");
  CKInputRecord player;
  player.IRInitialise();
  player.IRSetFileName(file.c_str(), KIR_MODE_PLAY);
  int code = 0, flags = 0, count = 0;
  char text[KIR_TEXT_LEN + 1] = {0};
  if (!json) printCommandHeader("#", "flags");
  while (player.IRGetCommand(&code, &flags, text)) {
    ++count;
    if (json) {
      const std::string name = commandName(code);
      std::printf("{\"index\":%d,\"code\":%d,\"command\":%s,\"flags\":%d,\"text\":%s}\n", count, code,
                  jsonCommandName(name).c_str(), flags, jsonString(text).c_str());
    } else {
      printRow(count, code, commandName(code), std::to_string(flags), text);
    }
  }
  player.IRTerminate();
  if (!json) std::printf("%d commands\n", count);
  return kExitOk;
}

void addRunCommands(CLI::App& app, int* result) {
  addRunCommand(app, result);
  addRecordCommand(app, result);
  addPlayCommand(app, result);
}

}  // namespace kutool
