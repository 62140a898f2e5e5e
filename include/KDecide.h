// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KDecide.h
/// CKDecide: the behaviour table, its file and its clock.
#pragma once
#include <cstdio>

#include "KActionRow.h"
#include "KFIFO.h"
#include "KUtilBase.h"

/// Longest delimiting file tag and end tag (characters, without the terminator).
constexpr int KDE_TAG_LEN = 15;
/// Longest comment kept by the reader (characters, without the terminator).
constexpr int KDE_COMMENT_LEN = 63;
/// Capacity a buffer handed to the text form of DEWriteRow must have; the text is cut to fit it.
constexpr int KDE_ROW_TEXT_SIZE = 512;
/// Error id meaning "no load error".
constexpr unsigned int KDE_ERROR_NONE = 5;
/// Load error: a trigger with a row type other than ON, IN or AT.
constexpr unsigned int KDE_ERROR_ROW_TYPE = 6001;
/// Load error (recorded only): a trigger keyword without a token at the end of a line.
constexpr unsigned int KDE_ERROR_TRIGGER_TOKEN = 6002;
/// Load error: a word that is neither a trigger nor an action keyword.
constexpr unsigned int KDE_ERROR_UNKNOWN_WORD = 6003;
/// Load error: an action that cannot be applied (also an action before any trigger).
constexpr unsigned int KDE_ERROR_ACTION = 6004;
/// Load error (recorded only): an action without its token at the end of a line.
constexpr unsigned int KDE_ERROR_ACTION_TOKEN = 6005;
/// Load error: a MOVE token that is no motion keyword.
constexpr unsigned int KDE_ERROR_MOTION = 6007;

/// One object's behaviour: an ordered table of action rows with a cursor, the input and output
/// command FIFOs that connect it to the host, and the state its clock keeps between ticks.
class KUTIL_API CKDecide {
 public:
  /// Leaves the table empty with no FIFOs, no trace stream and an item scale factor of 1.0.
  CKDecide();
  /// Destroys every row (with its playback recorder) and closes the trace stream.
  ~CKDecide();
  CKDecide(const CKDecide&) = delete;
  CKDecide& operator=(const CKDecide&) = delete;

  // ---- Table and cursor ----

  /// Resets tags ("[RVA]" / "]AVR["), comment, error id, FIFOs, clock and cursor, closes the trace
  /// stream and re-reads the time zone; rows are not freed (use on a fresh or emptied table); 1.
  int DEInitialise();
  /// Links row (created with new; the table owns it from now on) at the end; the cursor stays; 0 for null.
  int DEAddActionRow(CKActionRow* row);
  /// Links row before the selected row and selects it; 0 when nothing is selected or the selected row
  /// is not in the table (the row is then not taken).
  int DEInsertActionRow(CKActionRow* row);
  /// Links row after the selected row and selects it; 0 when nothing is selected (row not taken).
  int DEAppendActionRow(CKActionRow* row);
  /// Unlinks and destroys the selected row and clears the cursor; 0 when nothing is selected, or (the
  /// cursor cleared, nothing destroyed) when the selected row is not in the table.
  int DEDeleteSelectedActionRow();
  /// Destroys every row and clears the cursor; 1.
  int DEDeleteAllActionRows();
  /// Selects the first row and writes it to *row; 0 (nothing changed) for an empty table or a null row.
  int DESelectFirstActionRow(CKActionRow** row);
  /// Moves the cursor to the next row and writes it to *row; 0 with the cursor kept when nothing is
  /// selected or the selected row is the last.
  int DESelectNextActionRow(CKActionRow** row);
  /// Writes the selected row to *row; 0 (untouched) when nothing is selected.
  int DEGetSelectedActionRow(CKActionRow** row);
  /// Sets the cursor to row without checking that it is in the table (null clears it); 1.
  int DESetSelectedActionRow(CKActionRow* row);
  /// Attaches the FIFO the host pushes commands into (not owned; null detaches); 1.
  int DEAttachInputFIFO(CKFIFO* fifo);
  /// Attaches the FIFO the clock pushes commands into (not owned; null detaches); 1.
  int DEAttachOutputFIFO(CKFIFO* fifo);
  /// Copies at most 15 characters of tag as the delimiting file tag and its full character-by-character
  /// reverse as the end tag; 0 (unchanged) for a null tag.
  int DESetDelimitingFileTag(const char* tag);
  /// Sets the object's scale, the speed of PLAYBACK magnitudes; 1.
  int DESetItemScaleFactor(float factor);
  /// Copies the comment (where the last load began its last clause) to out (capacity 64, always
  /// terminated); 1 (0 for a null out).
  int DEGetComment(char* out);
  /// Writes the last load error id to *id; 0 (untouched) while it is 5 (no error).
  int DEGetErrorID(unsigned int* id);
  /// Makes the text form of DEWriteRow begin with the row number; 1.
  int DEEnableRowNumbering();
  /// Stops the text form of DEWriteRow numbering rows; 1.
  int DEDisableRowNumbering();

  // ---- Trace ----

  /// Opens (append != 0: appends to, else replaces) the file name as the trace stream, closing any
  /// trace open before; 0 for an empty name or a file that cannot be opened (tracing is then off).
  int DEOpenTrace(const char* fileName, int append);
  /// Closes the trace stream; 1, or 0 when none was open.
  int DECloseTrace();

  // ---- Copy and files ----

  /// Replaces this table by copies of source's rows (leaving source's cursor on its last row) and
  /// takes its item scale factor; 0 for a null, own or empty source or when a row cannot be made.
  int DECopyFrom(CKDecide* source);
  /// Adds the rows of a behaviour file; 0 for an empty path, an unreadable file or a failing line.
  int DELoadFromFile(const char* path);
  /// Adds the rows read from stream up to its end or the end tag; 0 at the first failing clause
  /// (rows read before it stay, the error id and comment tell where).
  int DELoadFromFile(std::FILE* stream);
  /// Writes every row to a new file; 0 for an empty path, a file that cannot be created, an empty table
  /// (the file is then left empty) or a row that cannot be written.
  int DEStoreToFile(const char* path);
  /// Writes every row to stream (the cursor ends on the last row); 0 for an empty table or at the first
  /// row that cannot be written.
  int DEStoreToFile(std::FILE* stream);
  /// Writes one row as "\n" and its words, each followed by a blank; 0 when the row has neither event
  /// nor grouping (only the row-type keyword is then written).
  int DEWriteRow(std::FILE* stream, CKActionRow* row);
  /// Builds the same row text in text (capacity KDE_ROW_TEXT_SIZE, always terminated), without the line
  /// break and begun with rowNumber as "%03d: " when numbering is on; 0 when the row has neither event
  /// nor grouping (text then holds the number and row-type keyword only), 0 and untouched on null input.
  int DEWriteRow(char* text, CKActionRow* row, int rowNumber);
  /// Matches an action keyword (as a prefix, after blanks) at line[*position]; on success advances
  /// *position past it and writes the action code; 0 with both untouched otherwise.
  int DEMatchAction(const char* line, int* position, int* action);
  /// Writes the motion code of an exact motion keyword; 0 (untouched) for any other text.
  int DEGetMoveType(int* motion, const char* text);

  // ---- Clock ----

  /// One tick: fires AT rows, continues flagged rows, dispatches every input command to the ON rows
  /// or passes it through, then promotes rows asked to run next; 1 if a row ran or a command was passed
  /// through, else 0 (also when a FIFO is missing, nothing then changing).
  int DEClock();
  /// Sets every row idle with an empty call stack and its repeat count reloaded, and traces the reset;
  /// 1, or 0 for an empty table.
  int DEReset();

 private:
  friend struct kutil::detail::Internals<CKDecide>;

  /// Keeps at most 63 characters of text as the comment.
  int DESetComment(const char* text);

  char m_delimitingFileTag[KDE_TAG_LEN + 1];  ///< names the behaviour section in a larger file
  char m_endTag[KDE_TAG_LEN + 1];             ///< a line beginning with it ends loading
  std::FILE* m_traceStream;                   ///< optional trace output, owned
  char m_comment[KDE_COMMENT_LEN + 1];        ///< where the reader last began a clause
  unsigned int m_errorID;                     ///< last load error; 5 none
  float m_itemScaleFactor;                    ///< the object's scale, speed of PLAYBACK steps
  CKFIFO* m_inputFIFO;                        ///< commands from the host, not owned
  CKFIFO* m_outputFIFO;                       ///< commands to the host, not owned
  tagKDATETIME m_clockDateTime;               ///< time of the current tick
  int m_tickInSecond;                         ///< number of the tick within its second; -1 before the first
  int m_lastSecond;                           ///< second of the previous tick; -1 before the first
  int m_clockRan;                             ///< 1 once a tick has run since DEInitialise
  CKActionRow* m_selectedRow;                 ///< the cursor
  int m_rowNumbering;                         ///< 1: the text form of DEWriteRow numbers rows
  CKActionRow* m_firstRow;                    ///< head of the owned row list
};

// ---- Behaviour-file normalisation (".kvc") ----

/// Puts the file names of the table's REPLACE, PLAY, LOAD, RUN, GOTO, PLAYBACK and USERGOTO rows into
/// path-variable form (relativising a named shape file first); 0 for a null or empty table, else 1.
KUTIL_API int KURelativiseKCV(CKDecide* table);
/// Relativises a behaviour file in place and, recursively, the behaviour files it names that are not yet
/// normalised; sets the comment to the file being processed; 1 for an empty or variablised path, 0 when a
/// file does not load or store.
KUTIL_API int KUConvertKCVToRelative(const char* path);
/// 1 when the behaviour file loads, has rows and at least one row's text data holds a path variable, else 0.
KUTIL_API int KUIsKCVFileNormalised(const char* path);
/// Turns the table's variablised names back into paths, "?KALDOKWQDIR?" being directory (with its trailing
/// separator), and de-relativises named shape files; 1 when anything changed, else 0 (also for a null
/// directory or an empty table).
KUTIL_API int KUDeRelativiseKCV(const char* directory, CKDecide* table);
/// De-relativises a behaviour file in place against its own directory, storing it only when something
/// changed; 0 when it does not load or store, else 1.
KUTIL_API int KUDeRelativiseKCV(const char* path);
/// Copies every readable file the table's rows name into targetDir (ending in a separator), gathering the
/// parts of behaviour and shape files, and points the rows at the copies; 0 for a null targetDir or a null or
/// empty table, else 1 (failed copies are ignored).
KUTIL_API int KUCopyKCVForNormalise(const char* targetDir, CKDecide* table);
/// Gathers the files a behaviour file names into the file's own directory and stores it with the new names;
/// sets the comment to the path; 1 for an empty path, 0 when it does not load or store.
KUTIL_API int KUCopyKCVFileParts(const char* path);
