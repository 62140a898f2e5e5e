// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The splash screen's drawing operations on GDI, as the MFC device-context
// wrappers perform them.
#include "OsPaint.h"

#include <windows.h>

#include <cstring>

namespace kutil::platform {

COLORREF systemColour(int index) { return GetSysColor(index); }

bool windowRect(HWND window, RECT* out) { return out && GetWindowRect(window, out) != FALSE; }

bool withWindowContext(HWND window, int (*paint)(KUPaintDC dc, void* data), void* data, int* result) {
  if (!paint) return false;
  HDC dc = GetDC(window);
  if (!dc) return false;
  const int painted = paint(dc, data);
  if (result) *result = painted;
  ReleaseDC(window, dc);
  return true;
}

void fillRect(KUPaintDC dc, int x, int y, int width, int height, COLORREF colour) {
  if (!dc) return;
  // CDC::FillSolidRect: an opaque, empty text output in the background colour.
  RECT r;
  SetRect(&r, x, y, x + width, y + height);
  SetBkColor(dc, colour);
  ExtTextOutA(dc, 0, 0, ETO_OPAQUE, &r, nullptr, 0, nullptr);
}

void sunkenFrame(KUPaintDC dc, int left, int top, int right, int bottom) {
  if (!dc) return;
  RECT r;
  SetRect(&r, left, top, right, bottom);
  DrawEdge(dc, &r, EDGE_SUNKEN, BF_RECT | BF_MONO);
}

void drawText(KUPaintDC dc, int x, int y, const char* text, COLORREF colour) {
  if (!dc || !text || !*text) return;
  HGDIOBJ font = GetStockObject(SYSTEM_FONT);
  HGDIOBJ previous = SelectObject(dc, font);
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, colour);
  TextOutA(dc, x, y, text, static_cast<int>(std::strlen(text)));
  if (previous) SelectObject(dc, previous);
}

}  // namespace kutil::platform
