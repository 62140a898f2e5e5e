// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Making behaviour files machine-independent: the file names in the rows'
// text data become path variables, the files they name can be gathered next
// to the behaviour file, and on arrival the names are turned back into paths.
//
// Every file is rewritten through "<file>.TMP", which replaces the file only
// once it was written completely, so a row the writer refuses or a full disk
// never costs the original.
#include <cstring>
#include <map>
#include <string>

#include "Boundary.h"
#include "KActionRow.h"
#include "KDecide.h"
#include "KFile.h"
#include "KNormalise.h"
#include "KPathVars.h"
#include "KText.h"
#include "KVGen.h"
#include "LineFile.h"
#include "OsFileSystem.h"
#include "TextDetail.h"

namespace {

using kutil::detail::guarded;
using kutil::detail::isEmpty;

// Text data plus room for a variable that is longer than what it replaces.
constexpr int kNameCapacity = kutil::detail::kScratch;

// The actions whose text names a file. CALL and PING name rows and objects.
bool namesFile(int action) {
  switch (action) {
    case KAR_ACTION_REPLACE:
    case KAR_ACTION_PLAY:
    case KAR_ACTION_LOAD:
    case KAR_ACTION_RUN:
    case KAR_ACTION_GOTO:
    case KAR_ACTION_PLAYBACK:
    case KAR_ACTION_USERGOTO:
      return true;
    default:
      return false;
  }
}

// Calls visit for every row of table in order; the table's cursor ends on the last row.
template <typename Visit>
void forEachRow(CKDecide* table, Visit visit) {
  CKActionRow* row = nullptr;
  if (!table->DESelectFirstActionRow(&row)) return;
  do {
    visit(row);
  } while (table->DESelectNextActionRow(&row));
}

bool hasRows(CKDecide* table) {
  CKActionRow* row = nullptr;
  return table != nullptr && table->DESelectFirstActionRow(&row) == 1;
}

// Text data of row into out (kNameCapacity bytes); false when it is empty.
bool textOf(CKActionRow* row, char* out) {
  out[0] = '\0';
  return row->ARGetTextData(out) == 1 && out[0] != '\0';
}

// Stores table to path through a temporary file; 1 when path holds the new content.
int storeSafely(CKDecide* table, const char* path) {
  return kutil::detail::writeThroughTemporary(
      path, [table](const char* temp) { return table->DEStoreToFile(temp); });
}

// Copies from over to, overwriting, through a fresh copy so that a failed
// copy never costs the old target. A file is never copied onto itself: that
// fails as a plain copy does, and leaves the file (and any link to it) alone.
bool copyOverwriting(const char* from, const char* to) {
  if (kutil::platform::sameFile(from, to)) return false;
  const std::string temp = kutil::detail::temporaryName(to);
  if (!kutil::platform::copyFile(from, temp.c_str(), false)) {
    kutil::platform::deleteFile(temp.c_str());
    return false;
  }
  return kutil::detail::replaceByRename(to, temp);
}

// Files this conversion has already visited, with their results. A file
// counts as normalised only once a name in it is a variable; files that name
// each other only through rows that never become one (CALL, or names without
// a directory) would otherwise be converted in a loop.
using InProgress = std::map<std::string, int>;
constexpr int kUnfinished = -1;

int convertKCVFile(const char* path, InProgress* inProgress);

int convertNested(CKDecide* original, InProgress* inProgress) {
  int result = 1;
  forEachRow(original, [&](CKActionRow* row) {
    char name[kNameCapacity];
    if (!textOf(row, name) || !KUFileHasEnding(name, ".kvc")) return;
    if (KUIsKCVFileNormalised(name)) return;
    const auto seen = inProgress->find(name);
    if (seen != inProgress->end()) {
      // Converting a finished file again would name it in the comment and
      // give its earlier result; a file still being converted further up (a
      // cycle) changes nothing.
      if (seen->second != kUnfinished) {
        KUSetComment(name);
        result = seen->second;
      }
      return;
    }
    result = convertKCVFile(name, inProgress);
  });
  return result;
}

int convertOnce(const char* path, InProgress* inProgress) {
  CKDecide working;
  working.DEInitialise();
  if (working.DELoadFromFile(path) != 1) return 0;
  // The copy keeps the absolute names, still needed to open the nested files.
  CKDecide original;
  original.DEInitialise();
  if (original.DECopyFrom(&working) != 1) return 0;
  if (KURelativiseKCV(&working) != 1 || storeSafely(&working, path) != 1) return 0;
  // The result is that of the last nested conversion.
  return convertNested(&original, inProgress);
}

int convertKCVFile(const char* path, InProgress* inProgress) {
  if (isEmpty(path) || KUIsVariablised(path)) return 1;
  KUSetComment(path);
  (*inProgress)[path] = kUnfinished;
  const int result = convertOnce(path, inProgress);
  (*inProgress)[path] = result;
  return result;
}

int relativiseRows(CKDecide* table) {
  if (!hasRows(table)) return 0;
  forEachRow(table, [](CKActionRow* row) {
    char name[kNameCapacity];
    int action = -1;
    row->ARGetAction(&action);
    if (!textOf(row, name) || KUIsVariablised(name) || !namesFile(action)) return;
    char last[kNameCapacity];
    if (!KUGetLastPathElement(last, name)) return;
    // The shape file still opens under its absolute name: normalise it first.
    if (KUFileHasEnding(last, ".ksf")) KUConvertKSFToRelative(name);
    KUConvertToRelative(name);
    // A variable longer than the directory it replaces may not fit the row.
    if (std::strlen(name) <= static_cast<std::size_t>(KAR_TEXTDATA_LEN)) row->ARSetTextData(name);
  });
  return 1;
}

int isNormalisedFile(const char* path) {
  if (isEmpty(path)) return 0;
  CKDecide table;
  table.DEInitialise();
  if (table.DELoadFromFile(path) != 1 || !hasRows(&table)) return 0;
  int result = 0;
  forEachRow(&table, [&](CKActionRow* row) {
    char name[kNameCapacity];
    if (textOf(row, name) && KUIsVariablised(name)) result = 1;
  });
  return result;
}

int deRelativiseRows(const char* directory, CKDecide* table) {
  // Without a directory "?KALDOKWQDIR?" would resolve to bare names.
  if (directory == nullptr || !hasRows(table)) return 0;
  bool changed = false;
  forEachRow(table, [&](CKActionRow* row) {
    char name[kNameCapacity];
    if (!textOf(row, name)) return;
    char resolved[kNameCapacity];
    std::memcpy(resolved, name, std::strlen(name) + 1);
    // A path too long for the row would be cut: keep the portable form then.
    if (KUDeRelativiseFileName(directory, resolved) &&
        std::strlen(resolved) <= static_cast<std::size_t>(KAR_TEXTDATA_LEN)) {
      std::memcpy(name, resolved, std::strlen(resolved) + 1);
      changed = true;
    }
    if (KUFileHasEnding(name, ".ksf") && KUDeRelativiseKSF(directory, name)) changed = true;
    row->ARSetTextData(name);
  });
  return changed ? 1 : 0;
}

int deRelativiseFile(const char* path) {
  if (isEmpty(path)) return 0;
  CKDecide table;
  table.DEInitialise();
  if (table.DELoadFromFile(path) != 1) return 0;
  char directory[kNameCapacity];
  KUGetPathFromFile(directory, path);
  if (KUDeRelativiseKCV(directory, &table) != 1) return 1;  // nothing to change: file untouched
  return storeSafely(&table, path);
}

// Copies one row's file into targetDir and points the row at the copy.
void gatherRow(const char* targetDir, CKActionRow* row) {
  char name[kNameCapacity];
  char last[kNameCapacity];
  if (!textOf(row, name) || !KUIsFileReadable(name) || !KUGetLastPathElement(last, name)) return;
  const std::size_t dirLength = std::strlen(targetDir), lastLength = std::strlen(last);
  if (dirLength + lastLength > static_cast<std::size_t>(KAR_TEXTDATA_LEN)) return;
  char copy[KAR_TEXTDATA_LEN + 1];
  std::memcpy(copy, targetDir, dirLength);
  std::memcpy(copy + dirLength, last, lastLength + 1);
  if (KUFileHasEnding(copy, ".kvc")) {
    // A behaviour file already in the package is neither copied nor gathered
    // again, which ends cycles between behaviour files.
    // A failed copy is ignored: gathering then fails to load the file.
    if (!KUIsFileReadable(copy)) {
      copyOverwriting(name, copy);
      KUCopyKCVFileParts(copy);
    }
  } else {
    copyOverwriting(name, copy);
  }
  if (KUFileHasEnding(copy, ".ksf")) KUCopyKSFFileParts(copy, targetDir);
  row->ARSetTextData(copy);
}

int gatherRows(const char* targetDir, CKDecide* table) {
  // An empty target is the working directory: a behaviour file named without
  // a directory gathers its parts next to itself.
  if (targetDir == nullptr || !hasRows(table)) return 0;
  forEachRow(table, [targetDir](CKActionRow* row) { gatherRow(targetDir, row); });
  return 1;
}

int gatherFileParts(const char* path) {
  if (isEmpty(path)) return 1;
  KUSetComment(path);
  CKDecide table;
  table.DEInitialise();
  if (table.DELoadFromFile(path) != 1) return 0;
  char directory[kNameCapacity];
  KUGetPathFromFile(directory, path);
  if (KUCopyKCVForNormalise(directory, &table) != 1) return 0;
  return storeSafely(&table, path);
}

}  // namespace

// Each call runs through guarded: the temporary names and the set of visited
// files are standard-library objects, and out of memory is a failure like any
// other.

int KURelativiseKCV(CKDecide* table) {
  return guarded([&] { return relativiseRows(table); });
}

int KUConvertKCVToRelative(const char* path) {
  return guarded([&] {
    InProgress inProgress;
    return convertKCVFile(path, &inProgress);
  });
}

int KUIsKCVFileNormalised(const char* path) {
  return guarded([&] { return isNormalisedFile(path); });
}

int KUDeRelativiseKCV(const char* directory, CKDecide* table) {
  return guarded([&] { return deRelativiseRows(directory, table); });
}

int KUDeRelativiseKCV(const char* path) {
  return guarded([&] { return deRelativiseFile(path); });
}

int KUCopyKCVForNormalise(const char* targetDir, CKDecide* table) {
  return guarded([&] { return gatherRows(targetDir, table); });
}

int KUCopyKCVFileParts(const char* path) {
  return guarded([&] { return gatherFileParts(path); });
}
