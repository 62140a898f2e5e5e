// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "KSplash.h"
#include "OsPaint.h"
#include "TestHooks.h"
#include "TestSupport.h"

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
constexpr COLORREF kHighlight = 0x0000FFFF;  // index 14 (yellow)
constexpr COLORREF kMarker = 0x00FF00FF;     // what the canvas held before painting
constexpr int kWidth = 640;
constexpr int kHeight = 480;

COLORREF g_desktop = kDesktop;
COLORREF g_highlight = kHighlight;
COLORREF testColours(int index) {
  if (index == 1) return g_desktop;
  if (index == 14) return g_highlight;
  return kutil::platform::systemColour(index);
}

COLORREF fromRgb(uint32_t pixel) {  // 0x00RRGGBB to 0x00BBGGRR
  return ((pixel >> 16) & 0xFF) | (pixel & 0xFF00) | ((pixel & 0xFF) << 16);
}

#if !defined(_WIN32)
COLORREF pixelOf(cairo_surface_t* surface, int x, int y) {
  cairo_surface_flush(surface);
  const unsigned char* row =
      cairo_image_surface_get_data(surface) + y * cairo_image_surface_get_stride(surface);
  return fromRgb(reinterpret_cast<const uint32_t*>(row)[x] & 0xFFFFFF);
}
#endif

// An off-screen 640 x 480 picture pre-filled with the marker colour.
class Canvas {
 public:
#if defined(_WIN32)
  Canvas() {
    m_dc = CreateCompatibleDC(nullptr);
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = kWidth;
    info.bmiHeader.biHeight = -kHeight;  // top-down rows
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    m_bitmap = CreateDIBSection(m_dc, &info, DIB_RGB_COLORS, reinterpret_cast<void**>(&m_bits), nullptr, 0);
    m_old = SelectObject(m_dc, m_bitmap);
    kutil::platform::fillRect(m_dc, 0, 0, kWidth, kHeight, kMarker);
  }
  ~Canvas() {
    SelectObject(m_dc, m_old);
    DeleteObject(m_bitmap);
    DeleteDC(m_dc);
  }
  KUPaintDC dc() { return m_dc; }
  COLORREF pixel(int x, int y) {
    GdiFlush();
    return fromRgb(m_bits[y * kWidth + x] & 0xFFFFFF);
  }

 private:
  HDC m_dc;
  HBITMAP m_bitmap;
  HGDIOBJ m_old;
  uint32_t* m_bits = nullptr;
#else
  Canvas() {
    m_surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, kWidth, kHeight);
    m_cr = cairo_create(m_surface);
    kutil::platform::fillRect(m_cr, 0, 0, kWidth, kHeight, kMarker);
  }
  ~Canvas() {
    cairo_destroy(m_cr);
    cairo_surface_destroy(m_surface);
  }
  KUPaintDC dc() { return m_cr; }
  HWND window() { return reinterpret_cast<HWND>(m_surface); }
  cairo_surface_t* surface() { return m_surface; }
  COLORREF pixel(int x, int y) { return pixelOf(m_surface, x, y); }

 private:
  cairo_surface_t* m_surface;
  cairo_t* m_cr;
#endif
};

class Splash : public ::testing::Test {
 protected:
  void SetUp() override {
    g_desktop = kDesktop;
    g_highlight = kHighlight;
    kutil::detail::setSysColourProvider(testColours);
    m_splash.SPInitialise();
    EXPECT_EQ(0, m_splash.SPEnable(1));
  }
  void TearDown() override { kutil::detail::setSysColourProvider(nullptr); }
  bool anyPixel(Canvas& canvas, int x0, int y0, int x1, int y1, COLORREF colour) {
    for (int y = y0; y < y1; ++y) {
      for (int x = x0; x < x1; ++x) {
        if (canvas.pixel(x, y) == colour) return true;
      }
    }
    return false;
  }
  CKSplash m_splash;
  const COLORREF m_frameOuter = kutil::platform::systemColour(6);
};

TEST_F(Splash, PanelModePaintsFrameFillTextBarAndComment) {
  Canvas canvas;
  m_splash.SPSetDisplayMode(1);
  m_splash.SPSetText("Loading scene");
  m_splash.SPSetComment("c");
  m_splash.SPSetProgress(50);
  ASSERT_EQ(1, m_splash.SPPaint(canvas.dc()));
  // Frame from (188, 96) to (416, 174) exclusive, nothing between it and the
  // 220 x 70 fill at (192, 100); the bar frame around x 196..403, rows 121..148;
  // progress 50 of 100: 100 pixels from x 200, rows 125 to 144.
  const struct {
    int x, y;
    COLORREF colour;
  } rows[] = {{188, 120, m_frameOuter}, {415, 120, m_frameOuter}, {300, 96, m_frameOuter},
              {300, 173, m_frameOuter}, {187, 120, kMarker},      {416, 120, kMarker},
              {191, 120, kMarker},      {412, 169, kMarker},      {300, 170, kMarker},
              {192, 168, kDesktop},     {411, 169, kDesktop},     {200, 125, kHighlight},
              {299, 144, kHighlight},   {300, 135, kDesktop},     {250, 145, kDesktop},
              {196, 135, m_frameOuter}, {403, 135, m_frameOuter}, {300, 121, m_frameOuter}};
  for (const auto& row : rows) EXPECT_EQ(row.colour, canvas.pixel(row.x, row.y)) << row.x << "," << row.y;
  // The two lines are drawn in the text colour at their places.
  EXPECT_TRUE(anyPixel(canvas, 200, 100, 300, 121, kHighlight));
  EXPECT_TRUE(anyPixel(canvas, 200, 150, 230, 170, kHighlight));
  EXPECT_FALSE(anyPixel(canvas, 192, 100, 200, 121, kHighlight));
}

TEST_F(Splash, BarWidthFollowsProgressOverMaxAndWraps) {
  m_splash.SPSetDisplayMode(1);
  m_splash.SPSetProgress(99);
  m_splash.SPIncrementProgress();  // 100 = max: a full 200 pixels
  Canvas full;
  m_splash.SPPaint(full.dc());
  EXPECT_EQ(kHighlight, full.pixel(399, 135));
  EXPECT_EQ(kDesktop, full.pixel(400, 135));
  m_splash.SPIncrementProgress();  // past max: back to 0, frame without bar
  Canvas wrapped;
  m_splash.SPPaint(wrapped.dc());
  EXPECT_EQ(kDesktop, wrapped.pixel(200, 135));
  EXPECT_EQ(m_frameOuter, wrapped.pixel(196, 135));
  Canvas third;
  m_splash.SPSetMax(3);
  m_splash.SPSetProgress(1);  // 66.67 pixels, truncated to 66
  m_splash.SPPaint(third.dc());
  EXPECT_EQ(kHighlight, third.pixel(265, 135));
  EXPECT_EQ(kDesktop, third.pixel(266, 135));
  Canvas hidden;
  m_splash.SPSetProgress(-1);
  m_splash.SPPaint(hidden.dc());
  EXPECT_EQ(kDesktop, hidden.pixel(196, 135));  // no frame either
  // Text in the fill's colour would vanish: it is drawn in the complement.
  g_highlight = kDesktop;
  m_splash.SPSetProgress(10);
  Canvas equal;
  m_splash.SPPaint(equal.dc());
  EXPECT_EQ(~kDesktop & 0xFFFFFFu, equal.pixel(205, 135));
}

TEST_F(Splash, ExtraModeDrawsOnlyTheExtraLineAndDisabledNothing) {
  Canvas canvas;
  m_splash.SPSetDisplayMode(2);
  m_splash.SPSetText("Text");
  m_splash.SPSetProgress(50);
  m_splash.SPSetExtra(std::string(1000, 'x').c_str());  // kept within its field
  ASSERT_EQ(1, m_splash.SPPaint(canvas.dc()));
  EXPECT_EQ(m_frameOuter, canvas.pixel(188, 210));
  EXPECT_EQ(m_frameOuter, canvas.pixel(300, 223));
  EXPECT_EQ(kDesktop, canvas.pixel(192, 200));
  EXPECT_EQ(kDesktop, canvas.pixel(411, 219));
  EXPECT_EQ(kMarker, canvas.pixel(300, 220));
  EXPECT_TRUE(anyPixel(canvas, 200, 200, 300, 220, kHighlight));
  EXPECT_FALSE(anyPixel(canvas, 180, 90, 420, 180, kHighlight));
  EXPECT_FALSE(anyPixel(canvas, 180, 90, 420, 180, kDesktop));

  Canvas off;
  m_splash.SPEnable(0);
  m_splash.SPSetDisplayMode(1);
  EXPECT_EQ(1, m_splash.SPPaint(off.dc()));
  EXPECT_FALSE(anyPixel(off, 180, 90, 420, 180, kDesktop));
}

#if !defined(_WIN32)
TEST_F(Splash, WindowModeFillsTheWholeWindowAndSurvivesAPngRoundTrip) {
  Canvas canvas;
  m_splash.SPSetHwnd(canvas.window());
  m_splash.SPSetDisplayMode(0);
  m_splash.SPSetProgress(25);
  ASSERT_EQ(1, m_splash.SPPaint());
  kutil::test::TempDir dir;
  const std::string png = dir.file("splash.png");
  ASSERT_EQ(CAIRO_STATUS_SUCCESS, cairo_surface_write_to_png(canvas.surface(), png.c_str()));
  cairo_surface_t* image = cairo_image_surface_create_from_png(png.c_str());
  ASSERT_EQ(CAIRO_STATUS_SUCCESS, cairo_surface_status(image));
  auto at = [image](int x, int y) { return pixelOf(image, x, y); };
  EXPECT_EQ(kDesktop, at(0, 0));
  EXPECT_EQ(kDesktop, at(639, 479));
  EXPECT_EQ(kHighlight, at(249, 135));
  EXPECT_EQ(kDesktop, at(250, 135));
  EXPECT_EQ(m_frameOuter, at(196, 135));
  cairo_surface_destroy(image);

  m_splash.SPSetHwnd(nullptr);
  EXPECT_EQ(0, m_splash.SPPaint());
  EXPECT_EQ(0, m_splash.SPPaint(canvas.dc()));  // mode 0 needs the window's rectangle
}
#else
TEST_F(Splash, WindowModeNeedsTheWindowRectangle) {
  Canvas canvas;
  m_splash.SPSetDisplayMode(0);
  m_splash.SPSetHwnd(nullptr);
  EXPECT_EQ(0, m_splash.SPPaint(canvas.dc()));
  EXPECT_EQ(kMarker, canvas.pixel(0, 0));
  HWND window =
      CreateWindowA("STATIC", "splash", WS_POPUP, 0, 0, 300, 200, nullptr, nullptr, nullptr, nullptr);
  if (!window) GTEST_SKIP() << "no window can be created without a display";
  m_splash.SPSetHwnd(window);
  RECT r;
  GetWindowRect(window, &r);
  EXPECT_EQ(1, m_splash.SPPaint(canvas.dc()));
  EXPECT_EQ(kDesktop, canvas.pixel(static_cast<int>(r.left) + 1, static_cast<int>(r.top) + 1));
  DestroyWindow(window);
}
#endif

}  // namespace
