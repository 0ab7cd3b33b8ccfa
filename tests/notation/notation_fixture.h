// A fresh engine document per test, English texts, and small builders for
// the records the notation writer reads.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <initializer_list>
#include <utility>

#include "cantel/cantel.h"
#include "cantel_engine/document.h"

namespace notation_test {

using cantel_engine::Bytes;

// A record of `size` zero bytes with some 16-bit words set: {offset, value}.
inline Bytes Words(std::size_t size,
                   std::initializer_list<std::pair<std::size_t, std::uint16_t>> words) {
  Bytes bytes(size, 0);
  for (const auto& [offset, value] : words) cx_put_u16(bytes.data(), offset, value);
  return bytes;
}

// Whole measures `first` to `last` of slots `firstSlot` to `lastSlot`.
inline ERegion WholeMeasures(std::uint16_t firstSlot, std::uint16_t lastSlot, std::uint16_t first,
                             std::uint16_t last) {
  ERegion region{};
  region.startSlot = firstSlot;
  region.startMeasure = first;
  region.startPosition = 0;
  region.endSlot = lastSlot;
  region.endMeasure = last;
  region.endPosition = CX_END_OF_MEASURE;
  return region;
}

class NotationTest : public ::testing::Test {
 protected:
  void SetUp() override {
    setenv("LC_ALL", "C", 1);
    doc.reset();
  }

  cantel_engine::Document& doc = cantel_engine::document();
};

// Font numbers of the engine's default fonts after a reset.
inline constexpr std::uint16_t kTimesNewRoman = 1;
inline constexpr std::uint16_t kSonetta = 3;
inline constexpr std::uint16_t kSonettaPercussion = 4;

}  // namespace notation_test
