// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KRegistry.h
/// Registry-held user settings.
#pragma once
#include "KUtilBase.h"

#if !defined(_WIN32)
/// The predefined registry roots, with their Win32 values.
#define HKEY_CLASSES_ROOT ((HKEY)(unsigned long)0x80000000UL)
#define HKEY_CURRENT_USER ((HKEY)(unsigned long)0x80000001UL)
#define HKEY_LOCAL_MACHINE ((HKEY)(unsigned long)0x80000002UL)
#define HKEY_USERS ((HKEY)(unsigned long)0x80000003UL)
#define HKEY_PERFORMANCE_DATA ((HKEY)(unsigned long)0x80000004UL)
#define HKEY_CURRENT_CONFIG ((HKEY)(unsigned long)0x80000005UL)
#define HKEY_DYN_DATA ((HKEY)(unsigned long)0x80000006UL)
#endif

/// Reads the REG_SZ value valueName of keyPath under root into out (261 characters, always
/// terminated when 1 is returned; untouched on failure). 1 only for a text value that was read.
KUTIL_API int KUGetRegText(HKEY root, const char* keyPath, const char* valueName, char* out);
/// Creates or opens keyPath under root and writes text as a REG_SZ value, flushed; 1 on success.
KUTIL_API int KUSetRegText(HKEY root, const char* keyPath, const char* valueName, const char* text);
/// 1 when keyPath opens for reading under root, else 0.
KUTIL_API int KUIsRegKeyReadable(HKEY root, const char* keyPath);
/// Deletes the first sub-key of keyPath (relative to the key handle after it was closed); 1 when deleted.
KUTIL_API int KURegDeleteFirstSubSubKey(HKEY root, const char* keyPath);
/// Deletes a key given with its root name ("HKEY_CURRENT_USER\Software\..."), clearing one
/// level of sub-keys first; 1 when the key itself was deleted.
KUTIL_API int KURegDeleteKey(const char* fullKeyPath);

/// Reads "HintNumber"; 1 and *value set when present and numeric, else 0 (untouched).
KUTIL_API int KUGetRegHintNumber(unsigned int* value);
/// Writes "HintNumber" as decimal text; 1 on success.
KUTIL_API int KUSetRegHintNumber(unsigned int value);
/// Reads "MainTimer"; 1 and *value set when present and numeric, else 0 (untouched).
KUTIL_API int KUGetRegMainTimer(unsigned int* value);
/// Writes "MainTimer" as decimal text; 1 on success.
KUTIL_API int KUSetRegMainTimer(unsigned int value);
/// Reads "JoystickActive"; 1 and *value set when present and numeric, else 0 (untouched).
KUTIL_API int KUGetRegJoystickActive(unsigned int* value);
/// Writes "JoystickActive" as decimal text; 1 on success.
KUTIL_API int KUSetRegJoystickActive(unsigned int value);
/// Reads "TitleTips"; 1 and *value set when present and numeric, else 0 (untouched).
KUTIL_API int KUGetRegTitleTips(unsigned int* value);
/// Writes "TitleTips" as decimal text; 1 on success.
KUTIL_API int KUSetRegTitleTips(unsigned int value);
/// Reads "TryHardware"; 1 and *value set when present and numeric, else 0 (untouched).
KUTIL_API int KUGetRegUseHardware(unsigned int* value);
/// Writes "TryHardware" as decimal text; 1 on success.
KUTIL_API int KUSetRegUseHardware(unsigned int value);
/// Reads "Autosave"; 1 and *value set when present and numeric, else 0 (untouched).
KUTIL_API int KUGetRegAutosave(unsigned int* value);
/// Writes "Autosave" as decimal text; 1 on success.
KUTIL_API int KUSetRegAutosave(unsigned int value);
/// Reads "AutoWallPaper"; 1 and *value set when present and numeric, else 0 (untouched).
KUTIL_API int KUGetRegAutoWallPaper(unsigned int* value);
/// Writes "AutoWallPaper" as decimal text; 1 on success.
KUTIL_API int KUSetRegAutoWallPaper(unsigned int value);
/// Reads "Background"; 1 and *value set when present and numeric, else 0 (untouched).
KUTIL_API int KUGetRegBackgroundRunning(unsigned int* value);
/// Writes "Background" as decimal text; 1 on success.
KUTIL_API int KUSetRegBackgroundRunning(unsigned int value);
/// Reads "DisableDisplayChange"; 1 and *value set when present and numeric, else 0 (untouched).
KUTIL_API int KUGetRegDisableDisplayChange(unsigned int* value);
/// Writes "DisableDisplayChange" as decimal text; 1 on success.
KUTIL_API int KUSetRegDisableDisplayChange(unsigned int value);
/// Reads "AnimationDelay"; 1 and *value set when present and numeric, else 0 (untouched).
KUTIL_API int KUGetRegAnimationClickDelay(unsigned int* value);
/// Writes "AnimationDelay" as decimal text; 1 on success.
KUTIL_API int KUSetRegAnimationClickDelay(unsigned int value);
/// Reads "Resolution"; 1 and *value set when present and numeric, else 0 (untouched).
KUTIL_API int KUGetRegResolution(int* value);
/// Writes "Resolution" as decimal text; 1 on success.
KUTIL_API int KUSetRegResolution(int value);
/// Reads "SkyResolution"; 1 and *value set when present and numeric, else 0 (untouched).
KUTIL_API int KUGetRegSkyResolution(int* value);
/// Writes "SkyResolution" as decimal text; 1 on success.
KUTIL_API int KUSetRegSkyResolution(int value);
/// Reads "Shimmer"; 1 and *value set when present and numeric, else 0 (untouched).
KUTIL_API int KUGetRegShimmer(int* value);
/// Writes "Shimmer" as decimal text; 1 on success.
KUTIL_API int KUSetRegShimmer(int value);
/// Reads "RenderHeight"; 1 and *value set when present and numeric, else 0 (untouched).
KUTIL_API int KUGetRegRenderHeight(int* value);
/// Writes "RenderHeight" as decimal text; 1 on success.
KUTIL_API int KUSetRegRenderHeight(int value);
/// Reads "RenderWidth"; 1 and *value set when present and numeric, else 0 (untouched).
KUTIL_API int KUGetRegRenderWidth(int* value);
/// Writes "RenderWidth" as decimal text; 1 on success.
KUTIL_API int KUSetRegRenderWidth(int value);
/// Reads "GLibrary" into out (261 characters, terminated on success, untouched on failure); 1 on success.
KUTIL_API int KUGetRegGraphics(char* out);
/// Writes "GLibrary"; 1 on success.
KUTIL_API int KUSetRegGraphics(const char* text);
/// Reads "SharedMemory" into out (at most 260 characters plus terminator; untouched on failure); 1 on
/// success.
KUTIL_API int KUGetRegSharedMemory(char* out);
/// Writes "SharedMemory"; 1 on success.
KUTIL_API int KUSetRegSharedMemory(const char* text);
/// Reads "BuildNumber" under the machine-wide installation key; 1 and *value set when present and numeric.
KUTIL_API int KUGetRegBuildNumber(unsigned int* value);
/// Writes "BuildNumber" under the machine-wide installation key (needs the rights to); 1 on success.
KUTIL_API int KUSetRegBuildNumber(int value);
