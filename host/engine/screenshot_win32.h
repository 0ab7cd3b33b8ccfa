// A picture of a window's client area as the screen shows it, saved as PNG.
#ifndef CANTEL_ENGINE_SCREENSHOT_WIN32_H
#define CANTEL_ENGINE_SCREENSHOT_WIN32_H

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace cantel_engine {

struct Picture {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  std::vector<std::uint8_t> rgb;  // top row first
  // All black: the window has not reached the screen yet.
  bool blank() const;
};

// What the screen shows where the window's client area is; nothing when it
// cannot be read.
std::optional<Picture> capture_window(HWND window);
// `file` is UTF-8; false when it could not be written.
bool save_png(const Picture& picture, const std::string& file);

}  // namespace cantel_engine

#endif
