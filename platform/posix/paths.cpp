#include "paths.h"

namespace rw::platform {

std::string NativePath(const char16_t* path) {
  std::string out;
  if (path == nullptr) return out;
  for (std::size_t i = 0; path[i] != 0; ++i) {
    char32_t c = path[i];
    if (c >= 0xD800 && c < 0xDC00 && path[i + 1] >= 0xDC00 && path[i + 1] < 0xE000) {
      c = 0x10000 + ((c - 0xD800) << 10) + (path[i + 1] - 0xDC00);
      ++i;
    }
    if (c == u'\\') c = u'/';
    if (c < 0x80) {
      out += static_cast<char>(c);
    } else if (c < 0x800) {
      out += static_cast<char>(0xC0 | (c >> 6));
      out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
      out += static_cast<char>(0xE0 | (c >> 12));
      out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
      out += static_cast<char>(0xF0 | (c >> 18));
      out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
      out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (c & 0x3F));
    }
  }
  return out;
}

std::u16string Utf8ToUtf16(const std::string& text) {
  std::u16string out;
  for (std::size_t i = 0; i < text.size();) {
    const auto b = static_cast<unsigned char>(text[i]);
    char32_t c = b;
    std::size_t extra = 0;
    if (b >= 0xF0) {
      c = b & 0x07u;
      extra = 3;
    } else if (b >= 0xE0) {
      c = b & 0x0Fu;
      extra = 2;
    } else if (b >= 0xC0) {
      c = b & 0x1Fu;
      extra = 1;
    }
    ++i;
    for (std::size_t k = 0; k < extra && i < text.size(); ++k, ++i) {
      c = (c << 6) | (static_cast<unsigned char>(text[i]) & 0x3Fu);
    }
    if (c >= 0x10000) {
      c -= 0x10000;
      out += static_cast<char16_t>(0xD800 + (c >> 10));
      out += static_cast<char16_t>(0xDC00 + (c & 0x3FF));
    } else {
      out += static_cast<char16_t>(c);
    }
  }
  return out;
}

bool IsValidUtf8(const std::string& text) {
  for (std::size_t i = 0; i < text.size();) {
    const auto lead = static_cast<unsigned char>(text[i]);
    std::size_t extra = 0;
    char32_t c = lead;
    char32_t lowest = 0;
    if (lead < 0x80) {
      extra = 0;
    } else if (lead >= 0xC2 && lead <= 0xDF) {
      extra = 1, c = lead & 0x1Fu, lowest = 0x80;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
      extra = 2, c = lead & 0x0Fu, lowest = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
      extra = 3, c = lead & 0x07u, lowest = 0x10000;
    } else {
      return false;
    }
    if (extra >= text.size() - i) return false;
    for (std::size_t k = 1; k <= extra; ++k) {
      const auto next = static_cast<unsigned char>(text[i + k]);
      if ((next & 0xC0) != 0x80) return false;
      c = (c << 6) | (next & 0x3Fu);
    }
    if (c < lowest || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) return false;
    i += extra + 1;
  }
  return true;
}

}  // namespace rw::platform
