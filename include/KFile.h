// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KFile.h
/// File utilities: file-type numbers, appending, counting and clipping text files, copying referenced files.
#pragma once
#include "KUtilBase.h"

/// 1 when name ends with ending (letters compared case-insensitively), else 0.
KUTIL_API int KUFileHasEnding(const char* name, const char* ending);
/// The file-type number of name's ending (1 unknown, 2 icon, 3 bitmap, 4 ".anb", ... 22 ".scr", 23 ".txt").
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
/// *count = number of 266-byte line reads of the file (long lines count more than once); 0 when it can't be opened.
KUTIL_API int KUCountLinesInFile(const char* path, long* count);
/// Rewrites the file through a ".TMP" companion; a successful clip leaves an empty file (1); 0 when no line lies in [first, last].
KUTIL_API int KUClipFile(const char* path, int first, int last);
/// Writes the drive and directory of file, with its trailing separator, to out (261 bytes, always terminated); 1.
KUTIL_API int KUGetPathFromFile(char* out, const char* file);
/// Splits "name|index[|extra]" into name (261 bytes), *index and extra (261 bytes, written only when present); 0 when name or index is missing.
KUTIL_API int KUGetImageComponents(const char* imageText, char* name, int* index, char* extra);
/// Copies a referenced file into targetDir (ending in a separator) without overwriting, new name to out (264 bytes, always terminated); 1 when the file is there afterwards or needs no copy.
KUTIL_API int KUCopyToTarget(const char* source, const char* targetDir, char* out);
