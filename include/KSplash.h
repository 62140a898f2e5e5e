// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KSplash.h
/// CKSplash: the splash screen painter.
#pragma once
#include "KUtilBase.h"

/// Paints the start-up screen: a text line, a comment line and a progress bar, or one extra line.
/// On POSIX the window handle given to SPSetHwnd is the window's cairo_surface_t*.
class KUTIL_API CKSplash {
 public:
  /// Leaves the splash disabled with nothing to paint; call SPInitialise before use.
  CKSplash();

  /// Resets every field: disabled, no window, mode 0, empty texts, progress -1, max 100; 1.
  int SPInitialise();
  /// Sets enabled; returns 0 always.
  int SPEnable(int on);
  /// Sets the window painted into; 1.
  int SPSetHwnd(HWND window);
  /// Sets the display mode (0 whole window, 1 text/bar/comment panel, other: one extra line); 1.
  int SPSetDisplayMode(int mode);
  /// Sets the main line (at most 260 characters kept); 1.
  int SPSetText(const char* text);
  /// Sets the comment line (at most 260 characters kept); 1.
  int SPSetComment(const char* text);
  /// Sets the extra line of display mode 2 (at most 260 characters kept); 1.
  int SPSetExtra(const char* text);
  /// Sets the progress (-1 hides the bar); 1.
  int SPSetProgress(int progress);
  /// Adds 1 to the progress, wrapping to 0 past max; 1.
  int SPIncrementProgress();
  /// Sets the progress that fills the bar; 1.
  int SPSetMax(int max);
  /// When enabled paints into the window's own context; 0 when no context can be had, else 1.
  int SPPaint();
  /// When enabled paints into dc; 0 when the window rectangle of display mode 0 can't be had, else 1.
  int SPPaint(KUPaintDC dc);

 private:
  friend struct kutil::detail::Internals<CKSplash>;

  void drawLine(KUPaintDC dc, int x, int y, const char* text);
  void drawProgress(KUPaintDC dc);

  int m_enabled;          ///< nothing is painted while 0
  HWND m_window;          ///< the window painted into
  int m_displayMode;      ///< 0, 1 or 2
  char m_text[261];       ///< main line
  char m_comment[261];    ///< second line
  char m_extra[261];      ///< the only line of display mode 2
  int m_progress;         ///< bar position, -1 hides the bar
  int m_max;              ///< bar position that fills the bar
  COLORREF m_background;  ///< taken at each paint
  COLORREF m_textColour;  ///< taken at each paint
};
