// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "KSplash.h"
#include "OsPaint.h"
#include "TestHooks.h"

#if !defined(_WIN32)
#include <cairo/cairo.h>

// Fontconfig, under Cairo's text drawing, keeps its font cache for the life of
// the process; the leak checker would report it at exit.
extern "C" __attribute__((visibility("default"), used)) const char* __lsan_default_suppressions() {
  return "leak:libfontconfig\n";
}
#endif

namespace {

constexpr COLORREF kDesktop = 0x00204080;    // index 1
constexpr COLORREF kHighlight = 0x0000FFFF;  // index 14
constexpr COLORREF kMarker = 0x00FF00FF;     // what the canvas held before painting
constexpr int kWidth = 640, kHeight = 480;
const COLORREF kFrame = kutil::platform::systemColour(6);  // the outer ring of a sunken frame

COLORREF g_highlight = kHighlight;
COLORREF testColours(int index) {
  return index == 1 ? kDesktop : index == 14 ? g_highlight : kutil::platform::systemColour(index);
}

struct Probe {
  int x, y;
  COLORREF colour;
};
struct Box {  // whether any pixel of the box has the text colour
  int x0, y0, x1, y1;
  bool text;
};

// An off-screen 640 x 480 picture pre-filled with the marker colour; both
// platforms keep its pixels as 32-bit 0x00RRGGBB words, top row first.
struct Canvas {
  Canvas() {
#if defined(_WIN32)
    BITMAPINFO info = {};
    info.bmiHeader =
        BITMAPINFOHEADER{sizeof(BITMAPINFOHEADER), kWidth, -kHeight, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    dc = CreateCompatibleDC(nullptr);
    bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, reinterpret_cast<void**>(&bits), nullptr, 0);
    old = SelectObject(dc, bitmap);
#else
    surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, kWidth, kHeight);
    dc = cairo_create(surface);
    bits = reinterpret_cast<uint32_t*>(cairo_image_surface_get_data(surface));
#endif
    kutil::platform::fillRect(dc, 0, 0, kWidth, kHeight, kMarker);
  }
  ~Canvas() {
#if defined(_WIN32)
    SelectObject(dc, old);
    DeleteObject(bitmap);
    DeleteDC(dc);
#else
    cairo_destroy(dc);
    cairo_surface_destroy(surface);
#endif
  }
  COLORREF pixel(int x, int y) {
#if defined(_WIN32)
    GdiFlush();
#else
    cairo_surface_flush(surface);
#endif
    const uint32_t p = bits[y * kWidth + x];
    return ((p >> 16) & 0xFF) | (p & 0xFF00) | ((p & 0xFF) << 16);
  }
  void expect(const std::vector<Probe>& probes, const std::vector<Box>& boxes = {}) {
    for (const Probe& p : probes) EXPECT_EQ(p.colour, pixel(p.x, p.y)) << p.x << "," << p.y;
    for (const Box& b : boxes) {
      bool text = false;
      for (int i = 0; i < (b.x1 - b.x0) * (b.y1 - b.y0) && !text; ++i)
        text = pixel(b.x0 + i % (b.x1 - b.x0), b.y0 + i / (b.x1 - b.x0)) == g_highlight;
      EXPECT_EQ(b.text, text) << "box at " << b.x0 << "," << b.y0;
    }
  }

  KUPaintDC dc;
  uint32_t* bits = nullptr;
#if defined(_WIN32)
  HBITMAP bitmap;
  HGDIOBJ old;
#else
  cairo_surface_t* surface;
#endif
};

class Splash : public ::testing::Test {
 protected:
  void SetUp() override {
    g_highlight = kHighlight;
    kutil::detail::setSysColourProvider(testColours);
    EXPECT_EQ(1, m_splash.SPInitialise());
    EXPECT_EQ(0, m_splash.SPEnable(1));  // deliberately 0
  }
  void TearDown() override { kutil::detail::setSysColourProvider(nullptr); }
  CKSplash m_splash;
};

TEST_F(Splash, ModesPaintFramesFillsBarAndLinesAtTheirPlaces) {
  // Panel (mode 1): frame (188, 96)-(416, 174) with nothing between it and the 220 x 70 fill at
  // (192, 100); bar frame (196, 121)-(404, 149) and a bar of progress / max x 200 pixels from
  // (200, 125), 20 high; the text at (200, 100), the comment at (200, 150). Extra (mode 2): frame
  // (188, 196)-(416, 224), fill 220 x 20 at (192, 200), the extra line alone.
  const std::vector<Probe> panel = {
      {188, 120, kFrame},   {415, 120, kFrame},   {300, 96, kFrame},      {300, 173, kFrame},
      {187, 120, kMarker},  {416, 120, kMarker},  {300, 95, kMarker},     {300, 174, kMarker},
      {191, 120, kMarker},  {412, 169, kMarker},  {300, 170, kMarker},    {192, 100, kDesktop},
      {411, 169, kDesktop}, {196, 135, kFrame},   {403, 135, kFrame},     {300, 121, kFrame},
      {300, 148, kFrame},   {199, 135, kDesktop}, {200, 125, kHighlight}, {299, 144, kHighlight},
      {300, 135, kDesktop}, {250, 145, kDesktop}};
  const std::vector<Probe> extra = {{188, 210, kFrame},   {415, 210, kFrame},  {300, 196, kFrame},
                                    {300, 223, kFrame},   {300, 220, kMarker}, {192, 200, kDesktop},
                                    {411, 219, kDesktop}, {196, 135, kMarker}, {300, 135, kMarker}};
  const std::vector<Box> panelText = {{200, 100, 300, 121, true},
                                      {192, 100, 200, 121, false},
                                      {200, 150, 230, 170, true},
                                      {192, 196, 412, 224, false}};
  const std::vector<Box> extraText = {{200, 200, 300, 220, true}, {180, 90, 420, 180, false}};
  const struct {
    int mode, max, progress, increments;
    bool texts, sameColours;  // highlight text in the desktop's colour: drawn in its complement
    std::vector<Probe> probes;
    std::vector<Box> boxes;
  } rows[] = {
      {1, 100, 50, 0, true, false, panel, panelText},
      {2, 100, 50, 0, true, false, extra, extraText},
      {1, 100, 99, 1, false, false, {{399, 135, kHighlight}, {400, 135, kDesktop}}, {}},  // at max: full
      {1, 100, 100, 1, false, false, {{196, 135, kFrame}, {200, 135, kDesktop}}, {}},     // past max: 0
      {1, 100, -1, 1, false, false, {{196, 135, kFrame}, {200, 135, kDesktop}}, {}},      // from -1: 0
      {1, 100, -1, 0, false, false, {{196, 135, kDesktop}, {300, 121, kDesktop}}, {}},    // hidden
      {1, 3, 1, 0, false, false, {{265, 135, kHighlight}, {266, 135, kDesktop}}, {}},     // 66.67: 66
      {1, 100, 10, 0, false, true, {{205, 135, ~kDesktop & 0xFFFFFFu}}, {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << "mode " << row.mode << ", " << row.progress << "+" << row.increments
                                    << " of " << row.max);
    g_highlight = row.sameColours ? kDesktop : kHighlight;
    const std::string text = row.texts ? "Loading scene" : "",
                      longText = row.texts ? std::string(1000, 'x') : "";
    EXPECT_EQ((std::vector<int>{1, 1, 1, 1, 1, 1, 1}),
              (std::vector<int>{m_splash.SPSetDisplayMode(row.mode), m_splash.SPSetText(text.c_str()),
                                m_splash.SPSetComment(text.substr(0, 1).c_str()),
                                m_splash.SPSetExtra(longText.c_str()),  // kept within its field
                                m_splash.SPSetMax(row.max), m_splash.SPSetProgress(row.progress),
                                row.increments ? m_splash.SPIncrementProgress() : 1}));
    Canvas canvas;
    ASSERT_EQ(1, m_splash.SPPaint(canvas.dc));
    canvas.expect(row.probes, row.boxes);
  }
  Canvas off;
  m_splash.SPEnable(0);
  EXPECT_EQ((std::vector<int>{1, 1}), (std::vector<int>{m_splash.SPPaint(off.dc), m_splash.SPPaint()}));
  EXPECT_EQ(kMarker, off.pixel(300, 210));
}

TEST_F(Splash, WindowModeFillsTheWindowsRectangleOrFailsWithoutOne) {
  Canvas canvas;
  m_splash.SPSetDisplayMode(0);
  m_splash.SPSetProgress(25);
  EXPECT_EQ(1, m_splash.SPSetHwnd(nullptr));
  EXPECT_EQ(0, m_splash.SPPaint(canvas.dc));
  EXPECT_EQ(kMarker, canvas.pixel(0, 0));
#if !defined(_WIN32)
  EXPECT_EQ(0, m_splash.SPPaint());  // no window, no context (on Windows the screen's would do)
  m_splash.SPSetHwnd(reinterpret_cast<HWND>(canvas.surface));  // here a window is the surface it shows
  ASSERT_EQ(1, m_splash.SPPaint());
  canvas.expect({{0, 0, kDesktop}, {639, 479, kDesktop}, {249, 135, kHighlight}, {250, 135, kDesktop}});
#endif
}

#if !defined(_WIN32)
// With no desktop to ask, the colours are the classic scheme's: teal desktop, navy highlight, grey face.
TEST(SystemColours, AreTheClassicScheme) {
  using kutil::platform::systemColour;
  EXPECT_EQ((std::vector<COLORREF>{0x808000, 0xFFFFFF, 0, 0x800000, 0xFFFFFF, 0xC0C0C0}),
            (std::vector<COLORREF>{systemColour(1), systemColour(5), systemColour(6), systemColour(13),
                                   systemColour(14), systemColour(15)}));
}
#endif

}  // namespace
