// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Helpers shared by the kutil subcommands: reporting, files, names of codes, JSON text.
#pragma once
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace kutool {

/// Exit statuses of the tool.
constexpr int kExitOk = 0;
constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;

/// Prints "kutil: <sentence>" on standard error and returns kExitFailed.
int fail(const std::string& sentence);
/// Prints "kutil: <sentence>" on standard error and returns kExitUsage.
int usage(const std::string& sentence);
/// Prints "kutil: warning: <sentence>" on standard error.
void warn(const std::string& sentence);

/// The kinds of file the tool understands.
enum class FileKind { Unknown, Behaviour, Shape, SceneList, Markers, Recording, InfoSheet };
/// Decides a file's kind by its ending (".kvc", ".ksf", ".ksl") or else by its first tagged line.
FileKind detectKind(const std::string& path);

/// Reads a whole file in binary; false when it cannot be opened.
bool readFile(const std::string& path, std::string* out);
/// Splits text into lines at '\n', dropping a trailing '\r' from each; a final empty piece is dropped.
std::vector<std::string> splitLines(const std::string& text);
/// True when the file can be opened for reading.
bool isReadable(const std::string& path);
/// The directory part of path with its trailing separator, or "" when there is none.
std::string directoryOf(const std::string& path);
/// The last element of path.
std::string baseName(const std::string& path);
/// A directory name with one trailing separator.
std::string withSeparator(const std::string& dir);
/// True when a and b are the same, letters compared without regard to case.
bool equalsNoCase(const std::string& a, const std::string& b);
/// True when text ends with ending, letters compared without regard to case.
bool endsWithNoCase(const std::string& text, const std::string& ending);

/// The readable name of a command code: a motion or event keyword, a request's action keyword, or "".
std::string commandName(int code);
/// Reads a command code given as a number, a motion keyword, an event keyword or a request keyword.
bool parseCommandCode(const std::string& text, int* code);
/// Parses a whole decimal integer; false on anything else.
bool parseInt(const std::string& text, long long* value);
/// Parses a whole floating-point number; false on anything else.
bool parseFloat(const std::string& text, double* value);

/// The text as a JSON string literal, quotes included.
std::string jsonString(const std::string& text);
/// A float as a JSON number ("null" when it is not finite).
std::string jsonNumber(double value);
/// A float in its shortest readable form ("%g").
std::string shortNumber(double value);

/// True when standard error is a terminal (progress is shown only then).
bool stderrIsTerminal();

/// Registers each family of subcommands; each sets *result when its subcommand runs.
void addCheckCommand(CLI::App& app, int* result);
void addRunCommands(CLI::App& app, int* result);
void addShapeCommands(CLI::App& app, int* result);
void addNormaliseCommands(CLI::App& app, int* result);
void addServiceCommands(CLI::App& app, int* result);
void addDemoCommand(CLI::App& app, int* result);

/// Runs each on every file in turn, all of them even after a failure; kExitFailed when any failed.
int forEachFile(const std::vector<std::string>& files, int (*each)(const std::string&));

/// Checks one file and prints its summary line; returns an exit status.
int checkFile(const std::string& path);

/// One scripted input of a behaviour run.
struct RunInput {
  int tick = 1;      ///< tick at which the command is pushed
  int code = 0;      ///< command code
  std::string text;  ///< the command's text
};
/// Options of a behaviour run.
struct RunOptions {
  std::string file;
  std::vector<RunInput> inputs;
  int ticks = 0;  ///< 0: as many as the inputs need, at least ten
  std::string trace;
  bool json = false;
};
/// Runs a behaviour as `kutil run` does; returns an exit status.
int runBehaviour(const RunOptions& options);
/// Plays a recording as `kutil play` does; returns an exit status.
int playRecording(const std::string& file, bool json);

/// Options of a shape export.
struct ShapeOptions {
  std::string file;
  std::string obj;
  std::string png;
  double size = 0.0;  ///< 0: keep the stored size
  bool quiet = false;
};
/// Exports a shape as `kutil shape` does; returns an exit status.
int exportShape(const ShapeOptions& options);
/// True when this build can write PNG pictures.
bool pngAvailable();
/// The sentence reported when PNG export is asked of a build without it.
const char* pngUnavailableSentence();

/// Releases the drawing libraries' process-wide caches once nothing is painted any more.
void releasePaintCaches();

/// Looks a message up in an info sheet and prints it; returns an exit status.
int printMessage(unsigned int id, const std::string& sheets);

}  // namespace kutool
