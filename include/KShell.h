// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KShell.h
/// Shell and system helpers: special folders, running programs, the product's web pages,
/// system version, write-permission probes and screen savers.
#pragma once
#include "KUtilBase.h"

#if defined(_WIN32)
#include <shlobj.h>
#endif

/// Copies the common start-menu folder to out (264 bytes, always terminated; untouched on failure);
/// found once, then cached for the process. 1 when found.
KUTIL_API int KUGetCommonStartMenuDir(HWND owner, char* out);
/// Copies the user's startup folder to out (264 bytes, always terminated; untouched on failure); cached; 1
/// when found.
KUTIL_API int KUGetUserStartupMenuDir(HWND owner, char* out);
/// Copies the user's desktop folder to out (264 bytes, always terminated; untouched on failure); cached; 1
/// when found.
KUTIL_API int KUGetWinUserDesktopDir(HWND owner, char* out);
/// Copies the user's recent-documents folder to out (264 bytes, always terminated; untouched on failure);
/// cached; 1 when found.
KUTIL_API int KUGetWinUserRecentDir(HWND owner, char* out);
/// Copies the user's send-to folder to out (264 bytes, always terminated; untouched on failure); cached; 1
/// when found.
KUTIL_API int KUGetWinUserSendToDir(HWND owner, char* out);
/// Parses path into a shell item list in *list (free it with KUFreeItemList); 1 when parsed.
KUTIL_API int KUPath2ItemList(const char* path, ITEMIDLIST** list);
/// Frees an item list (null allowed); 1, or 0 when the shell allocator can't be had.
KUTIL_API int KUFreeItemList(ITEMIDLIST* list);
/// Runs verb on file through the shell; 1 on success (last error 5), else 0 with the failure's
/// info-message id as the last error.
KUTIL_API int KURawRunSysCmd(HWND owner, const char* verb, const char* file, const char* parameters,
                             const char* directory);
/// Opens the product's web site; as KURawRunSysCmd.
KUTIL_API int KULaunchKALDOWebSite(HWND owner);
/// Opens the product web site's page on the latest release; as KURawRunSysCmd.
KUTIL_API int KULaunchKALDOWebSiteLatest(HWND owner);
/// Opens the caller's address; as KURawRunSysCmd.
KUTIL_API int KULaunchKALDOTargetURL(HWND owner, const char* address);
/// Starts a mail to the product's support mailbox; as KURawRunSysCmd.
KUTIL_API int KUEmailKALDOSupport(HWND owner);
/// Reports the system version: NT family flag, major, minor, build and the service-pack text
/// (servicePack holds 128 bytes, always terminated); 0 (outputs untouched) when it can't be read.
KUTIL_API int KUCheckForNT(int* isNT, int* major, int* minor, int* build, char* servicePack);
/// 1 when the machine-wide registry branch can be written (probed with a key deleted at once).
KUTIL_API int KUHasRegistryWritePerms();
/// 1 when a file can be created in the common start menu (probed with a file deleted at once).
KUTIL_API int KUHasStartMenuWritePerms(HWND owner);
/// Copies the screen-saver folder to out (261 bytes, always terminated; untouched on failure); 1 when found.
KUTIL_API int KUGetScreenSaverDirectory(char* out);
/// Copies a screen saver into the screen-saver folder under its own file name, replacing an older copy; 1
/// when copied.
KUTIL_API int KUSetScreenSaver(const char* screenSaverFile);
/// 1 when a readable file of that screen saver's name is in the screen-saver folder.
KUTIL_API int KUIsScreenSaver(const char* screenSaverFile);
/// Deletes that screen saver from the screen-saver folder; 1 when deleted.
KUTIL_API int KUDeleteScreenSaver(const char* screenSaverFile);
