#include "png_writer.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace cantel_engine {
namespace {

using Bytes = std::vector<std::uint8_t>;

std::uint32_t crc32(const std::uint8_t* data, std::size_t size) {
  static const auto table = [] {
    std::array<std::uint32_t, 256> t{};
    for (std::uint32_t n = 0; n < 256; ++n) {
      std::uint32_t c = n;
      for (int k = 0; k < 8; ++k) c = (c & 1) != 0 ? 0xEDB88320u ^ (c >> 1) : c >> 1;
      t[n] = c;
    }
    return t;
  }();
  std::uint32_t c = 0xFFFFFFFFu;
  for (std::size_t i = 0; i < size; ++i) c = table[(c ^ data[i]) & 0xFF] ^ (c >> 8);
  return c ^ 0xFFFFFFFFu;
}

void put_be32(Bytes& out, std::uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8)
    out.push_back(static_cast<std::uint8_t>(value >> shift));
}

void chunk(Bytes& out, std::string_view type, const Bytes& data) {
  put_be32(out, static_cast<std::uint32_t>(data.size()));
  const std::size_t start = out.size();
  out.insert(out.end(), type.begin(), type.end());
  out.insert(out.end(), data.begin(), data.end());
  put_be32(out, crc32(out.data() + start, out.size() - start));
}

// A zlib stream of stored deflate blocks.
Bytes zlib_stored(const Bytes& raw) {
  Bytes out = {0x78, 0x01};
  std::size_t at = 0;
  do {
    const std::size_t length = std::min<std::size_t>(raw.size() - at, 0xFFFF);
    const bool last = at + length == raw.size();
    out.push_back(last ? 1 : 0);
    out.push_back(static_cast<std::uint8_t>(length & 0xFF));
    out.push_back(static_cast<std::uint8_t>(length >> 8));
    out.push_back(static_cast<std::uint8_t>(~length & 0xFF));
    out.push_back(static_cast<std::uint8_t>((~length >> 8) & 0xFF));
    out.insert(out.end(), raw.begin() + static_cast<std::ptrdiff_t>(at),
               raw.begin() + static_cast<std::ptrdiff_t>(at + length));
    at += length;
  } while (at < raw.size());
  std::uint32_t a = 1;
  std::uint32_t b = 0;
  for (std::uint8_t byte : raw) {
    a = (a + byte) % 65521;
    b = (b + a) % 65521;
  }
  put_be32(out, (b << 16) | a);
  return out;
}

}  // namespace

Bytes encode_png(std::uint32_t width, std::uint32_t height, const Bytes& rgb) {
  Bytes header;
  put_be32(header, width);
  put_be32(header, height);
  header.insert(header.end(), {8, 2, 0, 0, 0});  // 8-bit RGB, no interlace

  const std::size_t row = std::size_t{width} * 3;
  Bytes raw;
  raw.reserve((row + 1) * height);
  for (std::uint32_t y = 0; y < height; ++y) {
    raw.push_back(0);  // filter: none
    const auto first = rgb.begin() + static_cast<std::ptrdiff_t>(y * row);
    raw.insert(raw.end(), first, first + static_cast<std::ptrdiff_t>(row));
  }

  Bytes out = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  chunk(out, "IHDR", header);
  chunk(out, "IDAT", zlib_stored(raw));
  chunk(out, "IEND", {});
  return out;
}

}  // namespace cantel_engine
