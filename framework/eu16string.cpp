#include "eu16string.h"

#include <algorithm>

#include "wide_string.h"

namespace rw {

eu16string::eu16string() { Assign(nullptr); }
eu16string::eu16string(const char16_t* text) { Assign(text); }
eu16string::eu16string(const eu16string& other) { Assign(other.c_str()); }

eu16string& eu16string::operator=(const eu16string& other) {
  if (this != &other) Assign(other.c_str());
  return *this;
}

eu16string& eu16string::operator=(const char16_t* text) {
  // The source may live inside this string's own buffer.
  eu16string copy(text);
  *this = std::move(copy);
  return *this;
}

void eu16string::Assign(const char16_t* text) {
  length_ = text == nullptr ? 0 : WideLength(text);
  text_ = std::make_unique<char16_t[]>(length_ + 1);
  if (text != nullptr) std::copy(text, text + length_, text_.get());
}

bool operator==(const eu16string& a, const eu16string& b) {
  return WideCompare(a.c_str(), b.c_str()) == 0;
}

}  // namespace rw
