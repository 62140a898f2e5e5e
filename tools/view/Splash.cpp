// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include "Splash.h"

#include <cairo/cairo.h>
#include <epoxy/gl.h>

#include "Renderer.h"

namespace kview {
namespace {

// The painter puts its text at x 200 and its bar from 196 to 404, down to y 174.
constexpr int kWidth = 600, kHeight = 220;

}  // namespace

Splash::~Splash() {
  if (m_texture) glDeleteTextures(1, &m_texture);
  if (m_surface) cairo_surface_destroy(m_surface);
}

bool Splash::init() {
  m_surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, kWidth, kHeight);
  if (cairo_surface_status(m_surface) != CAIRO_STATUS_SUCCESS) return false;
  m_splash.SPInitialise();
  m_splash.SPEnable(1);  // returns 0 by design
  // On POSIX the painter's window is the Cairo surface it fills (display mode 0: the whole of it).
  m_splash.SPSetHwnd(reinterpret_cast<HWND>(m_surface));
  m_splash.SPSetDisplayMode(0);
  glGenTextures(1, &m_texture);
  glBindTexture(GL_TEXTURE_2D, m_texture);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
  return true;
}

void Splash::show(Renderer& renderer, const std::string& text, const std::string& comment, int progress,
                  int max, int width, int height) {
  if (!m_surface || !m_texture) return;
  m_splash.SPSetText(text.c_str());
  m_splash.SPSetComment(comment.c_str());
  m_splash.SPSetMax(max > 0 ? max : 100);
  m_splash.SPSetProgress(progress);
  cairo_t* cr = cairo_create(m_surface);
  m_splash.SPPaint(cr);
  cairo_destroy(cr);
  cairo_surface_flush(m_surface);
  // Cairo's RGB24 is one 32-bit word per pixel, blue in the low byte: OpenGL's BGRA on little-endian
  // machines.
  glBindTexture(GL_TEXTURE_2D, m_texture);
  glPixelStorei(GL_UNPACK_ROW_LENGTH, cairo_image_surface_get_stride(m_surface) / 4);
  glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, kWidth, kHeight, 0, GL_BGRA, GL_UNSIGNED_BYTE,
               cairo_image_surface_get_data(m_surface));
  glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
  glClearColor(0.11f, 0.13f, 0.17f, 1.0f);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  renderer.drawImage(m_texture, (width - kWidth) / 2, (height - kHeight) / 2, kWidth, kHeight, width, height);
}

}  // namespace kview
