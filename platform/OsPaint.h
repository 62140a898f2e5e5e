// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The few drawing operations the splash screen needs.
#pragma once
#include "KUtilBase.h"

namespace kutil::platform {

/// The system colour of a GetSysColor index (1 desktop, 5 window, 6 window frame, 14 highlight text).
COLORREF systemColour(int index);

/// The window's rectangle as GetWindowRect reports it; false when it can't be had.
bool windowRect(HWND window, RECT* out);

/// Gets the window's own context, calls paint with it and releases it; false
/// (paint not called) when no context can be had.
bool withWindowContext(HWND window, int (*paint)(KUPaintDC dc, void* data), void* data, int* result);

/// Fills a rectangle (right and bottom exclusive) with a solid colour.
void fillRect(KUPaintDC dc, int x, int y, int width, int height, COLORREF colour);

/// Draws a one-colour sunken frame round the rectangle from (left, top) to (right, bottom), exclusive,
/// as DrawEdge with EDGE_SUNKEN and BF_RECT | BF_MONO does; the inside is left alone.
void sunkenFrame(KUPaintDC dc, int left, int top, int right, int bottom);

/// Draws text with its top-left corner at (x, y) in the system font and colour, on a transparent background.
void drawText(KUPaintDC dc, int x, int y, const char* text, COLORREF colour);

}  // namespace kutil::platform
