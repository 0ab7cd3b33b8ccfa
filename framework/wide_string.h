// Utilities over null-terminated UTF-16 strings, and printf-style formatting
// of "%d" and "%s" into fixed UTF-16 buffers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>

namespace rw {

std::size_t WideLength(const char16_t* s);
// First occurrence of `c`, or null. Finding 0 gives the terminator.
const char16_t* WideFindChar(const char16_t* s, char16_t c);
char16_t* WideFindChar(char16_t* s, char16_t c);
// -1, 0 or 1 by the first differing unit, compared unsigned.
int WideCompare(const char16_t* a, const char16_t* b);
// As WideCompare over at most n units.
int WideCompareN(const char16_t* a, const char16_t* b, std::size_t n);
// Copies `source` with its terminator; answers `destination`.
char16_t* WideCopy(char16_t* destination, const char16_t* source);

// One argument of WideFormat: a number for "%d", a UTF-16 or 8-bit string
// for "%s".
class FormatArg {
 public:
  FormatArg(std::int64_t number) : number_(number) {}
  FormatArg(int number) : number_(number) {}
  FormatArg(unsigned number) : number_(number) {}
  FormatArg(const char16_t* text) : wide_(text) {}

 private:
  friend std::size_t WideFormat(char16_t*, std::size_t, const char16_t*,
                                std::initializer_list<FormatArg>);
  std::int64_t number_ = 0;
  const char16_t* wide_ = nullptr;
};

// Formats into `buffer` of `capacity` units, always terminated (nothing is
// written when capacity is 0); "%%" gives "%". Answers the units written
// without the terminator. A missing argument formats as nothing.
std::size_t WideFormat(char16_t* buffer, std::size_t capacity, const char16_t* format,
                       std::initializer_list<FormatArg> args);

}  // namespace rw
