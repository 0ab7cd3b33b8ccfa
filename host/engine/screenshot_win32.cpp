#include "screenshot_win32.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "png_writer.h"

namespace cantel_engine {

bool Picture::blank() const {
  return std::all_of(rgb.begin(), rgb.end(), [](std::uint8_t v) { return v == 0; });
}

std::optional<Picture> capture_window(HWND window) {
  // The client area: without a window manager nobody draws the frame.
  RECT client{};
  POINT origin{0, 0};
  if (!GetClientRect(window, &client) || !ClientToScreen(window, &origin)) return std::nullopt;
  const int width = client.right - client.left;
  const int height = client.bottom - client.top;
  if (width <= 0 || height <= 0) return std::nullopt;

  // From the screen: Wine reads a window's own DC back as black.
  HDC screen = GetDC(nullptr);
  HDC memory = CreateCompatibleDC(screen);
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;  // top row first
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  void* bits = nullptr;
  HBITMAP bitmap = CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  std::optional<Picture> picture;
  if (bitmap != nullptr) {
    HGDIOBJ previous = SelectObject(memory, bitmap);
    if (BitBlt(memory, 0, 0, width, height, screen, origin.x, origin.y, SRCCOPY)) {
      GdiFlush();
      picture = Picture{static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height), {}};
      const auto* bgra = static_cast<const std::uint8_t*>(bits);
      const std::size_t pixels = std::size_t{picture->width} * picture->height;
      picture->rgb.resize(pixels * 3);
      for (std::size_t i = 0; i < pixels; ++i) {
        picture->rgb[3 * i] = bgra[4 * i + 2];
        picture->rgb[3 * i + 1] = bgra[4 * i + 1];
        picture->rgb[3 * i + 2] = bgra[4 * i];
      }
    }
    SelectObject(memory, previous);
    DeleteObject(bitmap);
  }
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
  return picture;
}

bool save_png(const Picture& picture, const std::string& file) {
  const auto png = encode_png(picture.width, picture.height, picture.rgb);
  std::ofstream out(std::filesystem::u8path(file), std::ios::binary);
  out.write(reinterpret_cast<const char*>(png.data()), static_cast<std::streamsize>(png.size()));
  return static_cast<bool>(out);
}

}  // namespace cantel_engine
