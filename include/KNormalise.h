// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KNormalise.h
/// Making behaviour, scene-list and animation files machine-independent.
#pragma once
#include "KUtilBase.h"

/// Copies the other five faces of sourceFace's sky box next to newName (same base, suffixes "_fw" "_rh" "_bk" "_lf" "_up" "_dn", same extension), skipping absent faces and never overwriting; 0 when either name lacks a sky-box ending, else 1.
KUTIL_API int KUCopySkyBoxFaces(const char* sourceFace, const char* newName);

class CKDecide;

// ---- Behaviour files (".kvc") ----

/// Puts the file names of the table's REPLACE, PLAY, LOAD, RUN, GOTO, PLAYBACK and USERGOTO rows into path-variable form (relativising a named shape file first); 0 for a null or empty table, else 1.
KUTIL_API int KURelativiseKCV(CKDecide* table);
/// Relativises a behaviour file in place and, recursively, the behaviour files it names that are not yet normalised; sets the comment to the file being processed; 1 for an empty or variablised path, 0 when a file does not load or store.
KUTIL_API int KUConvertKCVToRelative(const char* path);
/// 1 when the behaviour file loads, has rows and at least one row's text data holds a path variable, else 0.
KUTIL_API int KUIsKCVFileNormalised(const char* path);
/// Turns the table's variablised names back into paths, "?KALDOKWQDIR?" being directory (with its trailing separator), and de-relativises named shape files; 1 when anything changed, else 0 (also for a null directory or an empty table).
KUTIL_API int KUDeRelativiseKCV(const char* directory, CKDecide* table);
/// De-relativises a behaviour file in place against its own directory, storing it only when something changed; 0 when it does not load or store, else 1.
KUTIL_API int KUDeRelativiseKCV(const char* path);
/// Replaces "?KALDOKWQDIR?" in the shape file's textures by directory (and inside named animation files) and saves it; 1 only when something changed and the save succeeded (0 for a null directory).
KUTIL_API int KUDeRelativiseKSF(const char* directory, const char* shapeFile);
/// Copies every readable file the table's rows name into targetDir (ending in a separator), gathering the parts of behaviour and shape files, and points the rows at the copies; 0 for a null targetDir or a null or empty table, else 1 (failed copies are ignored).
KUTIL_API int KUCopyKCVForNormalise(const char* targetDir, CKDecide* table);
/// Gathers the files a behaviour file names into the file's own directory and stores it with the new names; sets the comment to the path; 1 for an empty path, 0 when it does not load or store.
KUTIL_API int KUCopyKCVFileParts(const char* path);

// ---- Scene-list files (".ksl") ----

/// 1 when a name line of the scene list holds a path variable; 0 otherwise, for an empty path or an unreadable file.
KUTIL_API int KUIsKSLFileNormalised(const char* path);
/// Puts every name line of the scene list into path-variable form through "<path>.TMP" (appended to); sets the comment to the path; 1 when both files opened (also for an empty list), 0 otherwise or when the list could not be put back.
KUTIL_API int KUConvertKSLToRelative(const char* path);
/// Replaces the leading path variable of every variablised name line (variable by value for a variable outside the table); the list is rewritten only when something changed; 0 for an empty or unreadable list.
KUTIL_API int KUDeRelativiseKSL(const char* path, const char* variable, const char* value);
/// Copies every file the scene list names into targetDir (ending in a separator) and rewrites the lines to the new names; sets the comment to the path; 1 for an empty or variablised path and when both files opened.
KUTIL_API int KUCopyKSLFileParts(const char* path, const char* targetDir);

// ---- Animation files (".anb"): one frame file name per line, as a scene list ----

/// Puts the frame names of an animation file into path-variable form in place; 1 for a name that is not an animation file or is variablised, 0 when it cannot be read or rewritten.
KUTIL_API int KUConvertANBToRelative(const char* path);
/// Copies the frames an animation file names into target (ending in a separator) and rewrites their names; 1 for a name that is not an animation file, 0 when it cannot be rewritten or a frame cannot be gathered (that line keeps its name).
KUTIL_API int KUCopyANBFileParts(const char* path, const char* target);
/// Replaces the path variables of the frame names in the animation file texture (variable by directory for one outside the table); 1 for a name that is not an animation file or a file needing no change, 0 when it cannot be read or rewritten.
KUTIL_API int KUDeRelativiseANB(const char* texture, const char* variable, const char* directory);
