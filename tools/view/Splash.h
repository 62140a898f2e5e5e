// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The loading screen: the library's splash painter draws into a Cairo image, shown as a texture.
#pragma once
#include <string>

#include "KUtil.h"

typedef struct _cairo_surface cairo_surface_t;

namespace kview {

class Renderer;

/// Shows CKSplash's text, comment and progress bar in the middle of the window while loading.
class Splash {
 public:
  Splash() = default;
  ~Splash();
  Splash(const Splash&) = delete;
  Splash& operator=(const Splash&) = delete;

  /// Makes the image and the texture; false when Cairo cannot make the image.
  bool init();
  /// Paints the splash with this text, comment and progress (0 to max, -1 hides the bar) and
  /// draws it over a view of width x height pixels.
  void show(Renderer& renderer, const std::string& text, const std::string& comment, int progress, int max,
            int width, int height);

 private:
  CKSplash m_splash;
  cairo_surface_t* m_surface = nullptr;
  unsigned int m_texture = 0;
};

}  // namespace kview
