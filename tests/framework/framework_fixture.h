// A fresh reference-host document per test, and small builders of records.
#ifndef TESTS_FRAMEWORK_FRAMEWORK_FIXTURE_H
#define TESTS_FRAMEWORK_FRAMEWORK_FIXTURE_H

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "cantel/cantel.h"
#include "cantel_engine/document.h"

class FrameworkTest : public ::testing::Test {
 protected:
  void SetUp() override { doc.reset(); }
  cantel_engine::Document& doc = cantel_engine::document();
};

// Little-endian 16-bit words, as records hold them.
inline cantel_engine::Bytes Words(std::initializer_list<std::uint16_t> words,
                                  std::size_t size = 0) {
  cantel_engine::Bytes bytes(std::max(size, 2 * words.size()), 0);
  std::size_t i = 0;
  for (std::uint16_t w : words) cx_put_u16(bytes.data(), 2 * i++, w);
  return bytes;
}

inline std::uint16_t WordAt(const cantel_engine::Bytes& bytes, std::size_t word) {
  return cx_get_u16(bytes.data(), 2 * word);
}

inline std::u16string Wide(const char16_t* s) { return s == nullptr ? u"" : std::u16string(s); }

#endif
