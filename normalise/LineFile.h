// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Line-by-line rewriting of list files (scene lists, animations) through a
// temporary companion file, and replacing a file by its rewritten copy.
#pragma once
#include <functional>
#include <string>

namespace kutil::detail {

/// Size of the buffer list lines are read with, terminator included: a longer
/// line arrives in pieces and each piece is handled as a line of its own.
constexpr int kListLineBuffer = 260;

/// Capacity of the working copy of one line handed to a rewrite (room for a
/// name that grows when its directory is replaced by a variable or back).
constexpr int kListLineCapacity = 264;

/// What a rewrite did to one name line.
enum class LineEdit { kept, changed, failed };

/// Rewrites one name line in place (kListLineCapacity bytes, always terminated).
using LineRewrite = std::function<LineEdit(char* line)>;

/// True for a name line: neither empty nor beginning with '#'.
bool isNameLine(const char* line);

/// The companion name of a file being rewritten: its path with ".TMP" appended.
std::string temporaryName(const char* path);

/// What copying the lines of a list through a rewrite came to.
struct RewriteOutcome {
  bool sourceOpened = false;  ///< the list opened for reading
  bool tempOpened = false;    ///< the temporary file opened
  bool anyLine = false;       ///< at least one line was read
  bool changed = false;       ///< some rewrite reported a change
  bool failed = false;        ///< some rewrite reported a failure
  bool writeFailed = false;   ///< writing or closing the temporary file failed
};

/// Reads path ("r") and writes each line, name lines passed through rewrite,
/// followed by one line feed to temp opened with tempMode ("a+" or "w").
/// The temporary file is not opened when the list cannot be.
RewriteOutcome copyLinesThrough(const char* path, const std::string& temp, const char* tempMode,
                                const LineRewrite& rewrite);

/// Replaces path by the content of temp: deletes path, then copies temp to it
/// without overwriting. True on success. *listLost is set when path is gone
/// afterwards, so that the caller keeps temp, the only copy left.
bool replaceByCopy(const char* path, const std::string& temp, bool* listLost);

/// Replaces path by temp (delete, then rename). True on success; on failure
/// either path is untouched and temp removed, or path is gone and temp holds
/// the content under its own name.
bool replaceByRename(const char* path, const std::string& temp);

/// Writes a file through "<path>.TMP": write(temporary name) makes the whole new content, which then
/// replaces path by rename, so a refused write or a full disk never costs the old file. 1 when path
/// holds the new content; 0 otherwise (a failed write leaves no temporary file behind).
int writeThroughTemporary(const char* path, const std::function<int(const char* temp)>& write);

}  // namespace kutil::detail
