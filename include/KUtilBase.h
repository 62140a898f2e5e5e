// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KUtilBase.h
/// Export macro, the shared platform records every family header uses, and what the library
/// keeps per process.
///
/// @section threads Threads and process-wide state
/// KUtil starts no threads and locks nothing. The host drives it from one thread; no function is
/// reentrant, and two threads must never call into the library at the same time. These live for
/// the whole process, each with a defined starting value and no other initialisation:
/// - the last error code (5, "no error") and the comment text (a notice line): KUSetError,
///   KUSetComment;
/// - the path-variable table (the default directories): KUSetNormalisationVariables;
/// - the special-folder caches, filled on the first successful lookup of each folder;
/// - the message sink (none: messages go to the platform's own) and the string table loaded by
///   KULoadStringInitialise;
/// - on POSIX, the table of open settings-store handles and the launched child processes the
///   shell helpers reap, and the sound backend's context, made on the first sound played.
/// Objects hold no pointers to one another beyond what the host attaches (FIFOs to a CKDecide).
/// Tests replace the few sources a test cannot observe or control (the clock, the sound device,
/// the system colours) and reset the tables above through internal hooks that hosts never see.
#pragma once

#if defined(KUTIL_STATIC)
#define KUTIL_API
#elif defined(_WIN32)
#if defined(KUTIL_BUILDING)
#define KUTIL_API __declspec(dllexport)
#else
#define KUTIL_API __declspec(dllimport)
#endif
#else
#define KUTIL_API __attribute__((visibility("default")))
#endif

#if defined(_WIN32)
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <d3drmdef.h>
#include <d3dtypes.h>
#include <windows.h>
#else
/// A Direct3D vector: three floats; y is up, headings lie in the x-z plane.
typedef struct _D3DVECTOR {
  float x;  ///< x component
  float y;  ///< y component (up)
  float z;  ///< z component
} D3DVECTOR;
/// A Direct3D retained-mode homogeneous vector.
typedef struct _D3DRMVECTOR4D {
  float x;  ///< x component
  float y;  ///< y component
  float z;  ///< z component
  float w;  ///< homogeneous weight
} D3DRMVECTOR4D;
/// A Direct3D retained-mode axis-aligned box.
typedef struct _D3DRMBOX {
  _D3DVECTOR min;  ///< smallest corner
  _D3DVECTOR max;  ///< largest corner
} D3DRMBOX;
/// The Win32 rectangle.
typedef struct tagRECT {
  long left;    ///< left edge
  long top;     ///< top edge
  long right;   ///< right edge (exclusive)
  long bottom;  ///< bottom edge (exclusive)
} RECT;
/// Opaque registry key handle.
typedef struct HKEY__* HKEY;
/// Opaque window handle.
typedef struct HWND__* HWND;
#endif

#if defined(_WIN32)
/// The context the splash screen paints into: a GDI device context.
typedef HDC KUPaintDC;
#else
/// A colour as 0x00BBGGRR.
typedef unsigned int COLORREF;
/// The context the splash screen paints into: a Cairo drawing context (cairo_t*), on any Cairo surface.
typedef struct _cairo* KUPaintDC;
#endif
/// A shell item list (opaque; the shell's own on Windows).
typedef struct _ITEMIDLIST ITEMIDLIST;

/// Date and time as nine 32-bit integers.
typedef struct tagKDATETIME {
  int year;      ///< full year, e.g. 2001
  int month;     ///< zero-based month (0 = January)
  int reserved;  ///< never written by KUGetDateTime
  int day;       ///< day of the month, 1-31
  int weekDay;   ///< 0 = Sunday ... 6 = Saturday
  int hour;      ///< 0-23
  int minute;    ///< 0-59
  int second;    ///< 0-60
  int extra;     ///< set to -1 by KUGetDateTime
} tagKDATETIME;

namespace kutil::detail {
/// The one way the library's own sources and its tests reach a class's private members: every
/// exported class befriends Internals<itself>, and the specialisation, defined in a private
/// header beside the class's sources (for example DecideInternals.h), offers just the fields and
/// steps other files need. Hosts never see a specialisation.
template <class Class>
struct Internals;
}  // namespace kutil::detail
