// An owned, null-terminated UTF-16 string.
#pragma once

#include <cstddef>
#include <memory>

namespace rw {

class eu16string {
 public:
  eu16string();
  eu16string(const char16_t* text);  // null reads as empty
  eu16string(const eu16string& other);
  eu16string& operator=(const eu16string& other);
  eu16string& operator=(const char16_t* text);
  eu16string(eu16string&&) noexcept = default;
  eu16string& operator=(eu16string&&) noexcept = default;
  ~eu16string() = default;

  const char16_t* c_str() const { return text_.get(); }
  std::size_t length() const { return length_; }
  bool empty() const { return length_ == 0; }

  friend bool operator==(const eu16string& a, const eu16string& b);

 private:
  void Assign(const char16_t* text);

  std::unique_ptr<char16_t[]> text_;
  std::size_t length_ = 0;
};

}  // namespace rw
