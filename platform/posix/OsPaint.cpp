// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The splash screen's drawing operations on Cairo. A "window" is the Cairo
// surface the host shows (an X11 or Wayland window surface, or an image to
// be saved as PNG); system colours are the classic desktop scheme.
#include "OsPaint.h"

#include <cairo/cairo.h>

namespace kutil::platform {
namespace {

void setColour(cairo_t* cr, COLORREF colour) {
  cairo_set_source_rgb(cr, (colour & 0xFF) / 255.0, ((colour >> 8) & 0xFF) / 255.0,
                       ((colour >> 16) & 0xFF) / 255.0);
}

constexpr COLORREF rgbColour(unsigned r, unsigned g, unsigned b) { return r | (g << 8) | (b << 16); }

// One-pixel ring just inside the rectangle.
void ring(cairo_t* cr, int left, int top, int right, int bottom, COLORREF colour) {
  const int width = right - left;
  const int height = bottom - top;
  if (width <= 0 || height <= 0) return;
  setColour(cr, colour);
  cairo_rectangle(cr, left, top, width, 1);
  cairo_rectangle(cr, left, bottom - 1, width, 1);
  cairo_rectangle(cr, left, top, 1, height);
  cairo_rectangle(cr, right - 1, top, 1, height);
  cairo_fill(cr);
}

}  // namespace

COLORREF systemColour(int index) {
  switch (index) {
    case 1:
      return rgbColour(0, 128, 128);  // desktop
    case 5:
      return rgbColour(255, 255, 255);  // window
    case 6:
      return rgbColour(0, 0, 0);  // window frame
    case 13:
      return rgbColour(0, 0, 128);  // highlight
    case 14:
      return rgbColour(255, 255, 255);  // highlight text
    default:
      return rgbColour(192, 192, 192);  // the face of things
  }
}

bool windowRect(HWND window, RECT* out) {
  if (!window || !out) return false;
  cairo_surface_t* surface = reinterpret_cast<cairo_surface_t*>(window);
  if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS) return false;
  cairo_t* cr = cairo_create(surface);
  double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
  cairo_clip_extents(cr, &x1, &y1, &x2, &y2);
  const bool ok = cairo_status(cr) == CAIRO_STATUS_SUCCESS;
  cairo_destroy(cr);
  if (!ok) return false;
  out->left = static_cast<long>(x1);
  out->top = static_cast<long>(y1);
  out->right = static_cast<long>(x2);
  out->bottom = static_cast<long>(y2);
  return true;
}

bool withWindowContext(HWND window, int (*paint)(KUPaintDC dc, void* data), void* data, int* result) {
  if (!window || !paint) return false;
  cairo_surface_t* surface = reinterpret_cast<cairo_surface_t*>(window);
  if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS) return false;
  cairo_t* cr = cairo_create(surface);
  if (cairo_status(cr) != CAIRO_STATUS_SUCCESS) {
    cairo_destroy(cr);
    return false;
  }
  const int painted = paint(cr, data);
  if (result) *result = painted;
  cairo_destroy(cr);
  cairo_surface_flush(surface);
  return true;
}

void fillRect(KUPaintDC dc, int x, int y, int width, int height, COLORREF colour) {
  if (!dc || width <= 0 || height <= 0) return;
  cairo_save(dc);
  setColour(dc, colour);
  cairo_rectangle(dc, x, y, width, height);
  cairo_fill(dc);
  cairo_restore(dc);
}

void sunkenFrame(KUPaintDC dc, int left, int top, int right, int bottom) {
  if (!dc) return;
  // A mono sunken edge: window-frame colour outside, window colour inside.
  cairo_save(dc);
  ring(dc, left, top, right, bottom, systemColour(6));
  ring(dc, left + 1, top + 1, right - 1, bottom - 1, systemColour(5));
  cairo_restore(dc);
}

void drawText(KUPaintDC dc, int x, int y, const char* text, COLORREF colour) {
  if (!dc || !text || !*text) return;
  cairo_save(dc);
  // The desktop's bold sans face stands in for the system font; only the
  // glyphs are drawn, so the background shows through.
  cairo_select_font_face(dc, "sans-serif", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_BOLD);
  cairo_set_font_size(dc, 13.0);
  cairo_font_extents_t extents;
  cairo_font_extents(dc, &extents);
  setColour(dc, colour);
  cairo_move_to(dc, x, y + extents.ascent);
  cairo_show_text(dc, text);
  cairo_restore(dc);
}

}  // namespace kutil::platform
