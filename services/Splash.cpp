// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The splash screen: texts and a progress bar at fixed pixel positions, in
// the desktop's own colours.
#include "KSplash.h"
#include "OsPaint.h"
#include "TestHooks.h"
#include "TextDetail.h"

using kutil::detail::copyBounded;

namespace {

namespace pf = kutil::platform;

constexpr int kColourBackground = 1;      // COLOR_BACKGROUND, the desktop
constexpr int kColourHighlightText = 14;  // COLOR_HIGHLIGHTTEXT
constexpr int kTextLimit = 260;

kutil::detail::SysColourProvider g_colours = pf::systemColour;

// Only the low 24 bits are a colour; the complement rule sets the top byte too.
COLORREF rgb(COLORREF colour) { return colour & 0x00FFFFFFu; }

int paintThunk(KUPaintDC dc, void* splash) { return static_cast<CKSplash*>(splash)->SPPaint(dc); }

}  // namespace

namespace kutil::detail {

void setSysColourProvider(SysColourProvider provider) { g_colours = provider ? provider : pf::systemColour; }

}  // namespace kutil::detail

CKSplash::CKSplash()
    : m_enabled(0),
      m_window(nullptr),
      m_displayMode(0),
      m_text{},
      m_comment{},
      m_extra{},
      m_progress(-1),
      m_max(100),
      m_background(0),
      m_textColour(0) {}

int CKSplash::SPInitialise() {
  m_enabled = 0;
  m_window = nullptr;
  m_displayMode = 0;
  m_text[0] = '\0';
  m_comment[0] = '\0';
  m_extra[0] = '\0';
  m_progress = -1;
  m_max = 100;
  m_background = 0;
  m_textColour = 0;
  return 1;
}

int CKSplash::SPEnable(int on) {
  m_enabled = on;
  return 0;  // callers ignore it
}

int CKSplash::SPSetHwnd(HWND window) {
  m_window = window;
  return 1;
}

int CKSplash::SPSetDisplayMode(int mode) {
  m_displayMode = mode;
  return 1;
}

int CKSplash::SPSetText(const char* text) {
  copyBounded(m_text, text, kTextLimit);
  return 1;
}

int CKSplash::SPSetComment(const char* text) {
  copyBounded(m_comment, text, kTextLimit);
  return 1;
}

int CKSplash::SPSetExtra(const char* text) {
  copyBounded(m_extra, text, kTextLimit);
  return 1;
}

int CKSplash::SPSetProgress(int progress) {
  m_progress = progress;
  return 1;
}

int CKSplash::SPIncrementProgress() {
  ++m_progress;
  if (m_progress > m_max) m_progress = 0;  // the bar cycles
  return 1;
}

int CKSplash::SPSetMax(int max) {
  m_max = max;
  return 1;
}

int CKSplash::SPPaint() {
  if (!m_enabled) return 1;
  int result = 1;
  if (!pf::withWindowContext(m_window, paintThunk, this, &result)) return 0;
  return 1;
}

void CKSplash::drawLine(KUPaintDC dc, int x, int y, const char* text) {
  if (text[0] == '\0') return;
  pf::drawText(dc, x, y, text, rgb(m_textColour));
}

void CKSplash::drawProgress(KUPaintDC dc) {
  if (m_progress == -1) return;
  pf::sunkenFrame(dc, 196, 121, 404, 149);
  // A max of 0 would divide by zero; such a bar is drawn empty.
  const double fraction = m_max != 0 ? static_cast<double>(m_progress) / m_max : 0.0;
  const int width = static_cast<int>(fraction * 200.0);  // beyond max it outgrows the frame, as it always did
  pf::fillRect(dc, 200, 125, width, 20, rgb(m_textColour));
}

int CKSplash::SPPaint(KUPaintDC dc) {
  if (!m_enabled) return 1;
  if (!dc) return 0;
  m_textColour = g_colours(kColourHighlightText);
  m_background = g_colours(kColourBackground);
  if (m_textColour == m_background) m_textColour = ~m_background;  // keeps the text readable

  if (m_displayMode == 0) {
    RECT window;
    if (!pf::windowRect(m_window, &window)) return 0;
    pf::fillRect(dc, static_cast<int>(window.left), static_cast<int>(window.top),
                 static_cast<int>(window.right - window.left), static_cast<int>(window.bottom - window.top),
                 rgb(m_background));
  } else if (m_displayMode == 1) {
    pf::sunkenFrame(dc, 188, 96, 416, 174);
    pf::fillRect(dc, 192, 100, 220, 70, rgb(m_background));
  } else {
    pf::sunkenFrame(dc, 188, 196, 416, 224);
    pf::fillRect(dc, 192, 200, 220, 20, rgb(m_background));
  }

  if (m_displayMode == 2) {
    drawLine(dc, 200, 200, m_extra);
  } else {
    drawLine(dc, 200, 100, m_text);
    drawProgress(dc);
    drawLine(dc, 200, 150, m_comment);
  }
  return 1;
}
