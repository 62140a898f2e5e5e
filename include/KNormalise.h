// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KNormalise.h
/// Gathering referenced files into a package, and making scene-list and animation files
/// machine-independent.
#pragma once
#include "KUtilBase.h"

/// Copies a referenced file into targetDir (ending in a separator) without overwriting, new name to out (264
/// bytes, always terminated); 1 when the file is there afterwards or needs no copy.
KUTIL_API int KUCopyToTarget(const char* source, const char* targetDir, char* out);
/// Copies the other five faces of sourceFace's sky box next to newName (same base, suffixes "_fw" "_rh" "_bk"
/// "_lf" "_up" "_dn", same extension), skipping absent faces and never overwriting; 0 when either name lacks
/// a sky-box ending, else 1.
KUTIL_API int KUCopySkyBoxFaces(const char* sourceFace, const char* newName);

// ---- Scene-list files (".ksl") ----

/// 1 when a name line of the scene list holds a path variable; 0 otherwise, for an empty path or an
/// unreadable file.
KUTIL_API int KUIsKSLFileNormalised(const char* path);
/// Puts every name line of the scene list into path-variable form through "<path>.TMP" (appended to); sets
/// the comment to the path; 1 when both files opened (also for an empty list), 0 otherwise or when the list
/// could not be put back.
KUTIL_API int KUConvertKSLToRelative(const char* path);
/// Replaces the leading path variable of every variablised name line (variable by value for a variable
/// outside the table); the list is rewritten only when something changed; 0 for an empty or unreadable list.
KUTIL_API int KUDeRelativiseKSL(const char* path, const char* variable, const char* value);
/// Copies every file the scene list names into targetDir (ending in a separator) and rewrites the lines to
/// the new names; sets the comment to the path; 1 for an empty or variablised path and when both files
/// opened.
KUTIL_API int KUCopyKSLFileParts(const char* path, const char* targetDir);

// ---- Animation files (".anb"): one frame file name per line, as a scene list ----

/// Puts the frame names of an animation file into path-variable form in place; 1 for a name that is not an
/// animation file or is variablised, 0 when it cannot be read or rewritten.
KUTIL_API int KUConvertANBToRelative(const char* path);
/// Copies the frames an animation file names into target (ending in a separator) and rewrites their names; 1
/// for a name that is not an animation file, 0 when it cannot be rewritten or a frame cannot be gathered
/// (that line keeps its name).
KUTIL_API int KUCopyANBFileParts(const char* path, const char* target);
/// Replaces the path variables of the frame names in the animation file texture (variable by directory for
/// one outside the table); 1 for a name that is not an animation file or a file needing no change, 0 when it
/// cannot be read or rewritten.
KUTIL_API int KUDeRelativiseANB(const char* texture, const char* variable, const char* directory);
