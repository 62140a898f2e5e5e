// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KFile.h
/// File utilities: file-type numbers, appending, counting and clipping text files.
#pragma once
#include "KUtilBase.h"

// File-type numbers of KUGetFileType. Not in the order the endings are tested:
// ".scr" (22) and ".txt" (23) were added later.
constexpr int KFT_OTHER = 1;          ///< no known ending
constexpr int KFT_ICON = 2;           ///< ".ico" that is not a bitmap
constexpr int KFT_BITMAP = 3;         ///< ".bmp", or ".ico" holding a bitmap
constexpr int KFT_ANIMATION = 4;      ///< ".anb"
constexpr int KFT_PPM = 5;            ///< ".ppm"
constexpr int KFT_LIBRARY = 6;        ///< ".dll"
constexpr int KFT_PROGRAM = 7;        ///< ".exe"
constexpr int KFT_SHORTCUT = 8;       ///< ".lnk"
constexpr int KFT_SCENE = 9;          ///< ".kwq"
constexpr int KFT_SHAPE = 10;         ///< ".ksf"
constexpr int KFT_BEHAVIOUR = 11;     ///< ".kvc"
constexpr int KFT_SOUND = 12;         ///< ".wav"
constexpr int KFT_SCENE_LIST = 13;    ///< ".ksl"
constexpr int KFT_CONTROL = 14;       ///< ".cpl"
constexpr int KFT_KIQ = 15;           ///< ".kiq"
constexpr int KFT_KFT = 16;           ///< ".kft"
constexpr int KFT_KSS = 17;           ///< ".kss"
constexpr int KFT_NSS = 18;           ///< ".nss"
constexpr int KFT_KKP = 19;           ///< ".kkp"
constexpr int KFT_KDR = 20;           ///< ".kdr"
constexpr int KFT_KUD = 21;           ///< ".kud"
constexpr int KFT_SCREEN_SAVER = 22;  ///< ".scr"
constexpr int KFT_TEXT = 23;          ///< ".txt"

/// 1 when name ends with ending (letters compared case-insensitively), else 0.
KUTIL_API int KUFileHasEnding(const char* name, const char* ending);
/// The file-type number (KFT_*) of name's ending; KFT_OTHER for an unknown one.
KUTIL_API int KUGetFileType(const char* name);
/// 1 when the file's first 8 bytes can be read and begin with "BM", else 0.
KUTIL_API int KUIsBitmap(const char* path);
/// 1 when name ends with one of the twelve sky-box face endings ("_fw.bmp" ... "_dn.anb"), else 0.
KUTIL_API int KUFileHasSkyEnding(const char* name);
/// 1 when the file can be opened for reading, else 0.
KUTIL_API int KUIsFileReadable(const char* path);
/// Creates the file when absent, leaving any content; 0 when it can't be opened.
KUTIL_API int KUTouch(const char* path);
/// 1 exactly when name is a letter followed by ':' and nothing more, else 0.
KUTIL_API int KUIsADriveName(const char* name);
/// Appends text as it is (no line end added); 0 when the file can't be opened or written.
KUTIL_API int KUAppendLine(const char* path, const char* text);
/// *count = number of 266-byte line reads of the file (long lines count more than once); 0 when it can't be
/// opened.
KUTIL_API int KUCountLinesInFile(const char* path, long* count);
/// Rewrites the file through a ".TMP" companion; a successful clip leaves an empty file (1); 0 when no line
/// lies in [first, last].
KUTIL_API int KUClipFile(const char* path, int first, int last);
/// Writes the drive and directory of file, with its trailing separator, to out (261 bytes, always
/// terminated); 1.
KUTIL_API int KUGetPathFromFile(char* out, const char* file);
/// Splits "name|index[|extra]" into name (261 bytes), *index and extra (261 bytes, written only when
/// present); 0 when name or index is missing.
KUTIL_API int KUGetImageComponents(const char* imageText, char* name, int* index, char* extra);
