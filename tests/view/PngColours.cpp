// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Describes a PNG picture for the screenshot test: its size, its number of distinct colours, and how
// many strongly coloured pixels fall in each hue band.
//   kutil_view_png_colours shot.png
#include <cairo/cairo.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <unordered_set>

namespace {

struct Band {
  const char* name;
  float from, to;  // hue in degrees
};
constexpr Band kBands[] = {{"red", 345, 360},  {"red", 0, 15},       {"orange", 15, 42},
                           {"yellow", 42, 70}, {"green", 70, 170},   {"cyan", 170, 200},
                           {"blue", 200, 255}, {"violet", 255, 300}, {"magenta", 300, 345}};
constexpr int kBandCount = sizeof(kBands) / sizeof(kBands[0]);

// The hue (degrees) of a colour saturated and bright enough to have one, else -1.
float hueOf(float r, float g, float b) {
  const float hi = std::max({r, g, b}), lo = std::min({r, g, b}), span = hi - lo;
  if (hi < 0.25f || span / hi < 0.3f) return -1.0f;
  const float h = 60.0f * (hi == r   ? (g - b) / span
                           : hi == g ? (b - r) / span + 2.0f
                                     : (r - g) / span + 4.0f);
  return h < 0.0f ? h + 360.0f : h;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return std::fprintf(stderr, "usage: kutil_view_png_colours PICTURE.png\n"), 2;
  cairo_surface_t* image = cairo_image_surface_create_from_png(argv[1]);
  if (cairo_surface_status(image) != CAIRO_STATUS_SUCCESS)
    return std::fprintf(stderr, "%s: not a readable PNG picture\n", argv[1]), cairo_surface_destroy(image), 1;
  const int width = cairo_image_surface_get_width(image), height = cairo_image_surface_get_height(image);
  const int stride = cairo_image_surface_get_stride(image);
  const unsigned char* data = cairo_image_surface_get_data(image);
  std::unordered_set<std::uint32_t> colours;
  long counts[kBandCount] = {0};
  for (int y = 0; y < height; ++y) {
    const auto* row = reinterpret_cast<const std::uint32_t*>(data + static_cast<long>(y) * stride);
    for (int x = 0; x < width; ++x) {
      const std::uint32_t p = row[x] & 0xFFFFFF;
      colours.insert(p);
      const float h = hueOf(((p >> 16) & 255) / 255.0f, ((p >> 8) & 255) / 255.0f, (p & 255) / 255.0f);
      for (int i = 0; i < kBandCount && h >= 0.0f; ++i) {
        if (h >= kBands[i].from && h < kBands[i].to) ++counts[i];
      }
    }
  }
  std::printf("size %d %d\ncolours %zu\n", width, height, colours.size());
  // Both red bands are reported under one name.
  std::printf("red %ld\n", counts[0] + counts[1]);
  for (int i = 2; i < kBandCount; ++i) std::printf("%s %ld\n", kBands[i].name, counts[i]);
  cairo_surface_destroy(image);
  return 0;
}
