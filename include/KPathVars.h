// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KPathVars.h
/// Path variables and the relativisation of file names.
///
/// Variables: "?WINDOWSDIR?", "?WINDOWSSYSDIR?", "?WINDOWSPROGDIR?",
/// "?KALDOHOMEDIR?" (held in a process-wide table with long and short forms)
/// and "?KALDOKWQDIR?" (the directory of a reference file, given per call).
/// All in-place texts are caller buffers of at least 264 bytes.
#pragma once
#include "KUtilBase.h"

/// Stores the four directories (long forms, at most 263 characters each) and their platform short forms;
/// always 1.
KUTIL_API int KUSetNormalisationVariables(const char* windowsDir, const char* systemDir,
                                          const char* programsDir, const char* homeDir);
/// 1 when fileName begins with one of the five variables (case-sensitive), else 0.
KUTIL_API int KUIsVariablised(const char* fileName);
/// Replaces a leading known directory of fileName (264 bytes, always terminated) by its variable; 0 and
/// unchanged when none matched.
KUTIL_API int KUSubstitute4Directory(char* fileName);
/// Replaces a leading table variable by its long directory, else variable by value, in fileName (264 bytes,
/// always terminated); 1 replaced, 0 not.
KUTIL_API int KUSubstitute4Variable(char* fileName, const char* variable, const char* value);
/// Normalises fileName (264 bytes, always terminated) in place: programs get directory variables, content
/// gets "?KALDOKWQDIR?"; always 1.
KUTIL_API int KUConvertToRelative(char* fileName);
/// Turns a normalised fileName (264 bytes, always terminated) back into an absolute one, "?KALDOKWQDIR?"
/// being referenceFile's directory; 1 when substituted.
KUTIL_API int KUDeRelativiseFileName(const char* referenceFile, char* fileName);
