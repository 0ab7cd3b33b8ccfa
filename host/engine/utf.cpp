#include "utf.h"

#include <cstdint>

namespace cantel_engine {

std::u16string utf8_to_utf16(const std::string& text) {
  std::u16string out;
  std::size_t i = 0;
  while (i < text.size()) {
    const auto lead = static_cast<std::uint8_t>(text[i]);
    std::uint32_t code = 0xFFFD;
    std::size_t length = 1;
    if (lead < 0x80) {
      code = lead;
    } else if ((lead & 0xE0) == 0xC0) {
      length = 2;
      code = lead & 0x1Fu;
    } else if ((lead & 0xF0) == 0xE0) {
      length = 3;
      code = lead & 0x0Fu;
    } else if ((lead & 0xF8) == 0xF0) {
      length = 4;
      code = lead & 0x07u;
    } else {
      length = 0;
    }
    if (length == 0 || i + length > text.size()) {
      out.push_back(u'\uFFFD');
      ++i;
      continue;
    }
    for (std::size_t k = 1; k < length; ++k) {
      code = (code << 6) | (static_cast<std::uint8_t>(text[i + k]) & 0x3Fu);
    }
    i += length;
    if (code >= 0x10000) {
      code -= 0x10000;
      out.push_back(static_cast<char16_t>(0xD800 + (code >> 10)));
      out.push_back(static_cast<char16_t>(0xDC00 + (code & 0x3FF)));
    } else {
      out.push_back(static_cast<char16_t>(code));
    }
  }
  return out;
}

std::string utf16_to_utf8(const std::u16string& text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    std::uint32_t code = text[i];
    if (code >= 0xD800 && code < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 &&
        text[i + 1] < 0xE000) {
      code = 0x10000 + ((code - 0xD800) << 10) + (text[i + 1] - 0xDC00u);
      ++i;
    }
    if (code < 0x80) {
      out.push_back(static_cast<char>(code));
    } else if (code < 0x800) {
      out.push_back(static_cast<char>(0xC0 | (code >> 6)));
      out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
    } else if (code < 0x10000) {
      out.push_back(static_cast<char>(0xE0 | (code >> 12)));
      out.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
      out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
    } else {
      out.push_back(static_cast<char>(0xF0 | (code >> 18)));
      out.push_back(static_cast<char>(0x80 | ((code >> 12) & 0x3F)));
      out.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
      out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
    }
  }
  return out;
}

std::u16string read_utf16(const char16_t* text, std::size_t limit) {
  std::u16string out;
  if (text == nullptr) return out;
  for (std::size_t i = 0; i < limit && text[i] != 0; ++i) out.push_back(text[i]);
  return out;
}

}  // namespace cantel_engine
