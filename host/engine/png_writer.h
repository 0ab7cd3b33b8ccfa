// A PNG file from 8-bit RGB pixels, for pictures of the dialog. Rows are
// stored unfiltered in deflate's stored blocks: plain and exact, and small
// enough for a dialog-sized picture.
#ifndef CANTEL_ENGINE_PNG_WRITER_H
#define CANTEL_ENGINE_PNG_WRITER_H

#include <cstdint>
#include <vector>

namespace cantel_engine {

// `rgb` holds height rows of width pixels, three bytes each, top row first.
std::vector<std::uint8_t> encode_png(std::uint32_t width, std::uint32_t height,
                                     const std::vector<std::uint8_t>& rgb);

}  // namespace cantel_engine

#endif
