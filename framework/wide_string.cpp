#include "wide_string.h"

#include <string>

namespace rw {

std::size_t WideLength(const char16_t* s) {
  std::size_t n = 0;
  while (s[n] != 0) ++n;
  return n;
}

const char16_t* WideFindChar(const char16_t* s, char16_t c) {
  for (;; ++s) {
    if (*s == c) return s;
    if (*s == 0) return nullptr;
  }
}

char16_t* WideFindChar(char16_t* s, char16_t c) {
  return const_cast<char16_t*>(WideFindChar(static_cast<const char16_t*>(s), c));
}

int WideCompareN(const char16_t* a, const char16_t* b, std::size_t n) {
  for (std::size_t i = 0; i < n; ++i) {
    // char16_t is unsigned, so units above 0x7FFF sort after ASCII.
    if (a[i] != b[i]) return a[i] < b[i] ? -1 : 1;
    if (a[i] == 0) return 0;
  }
  return 0;
}

int WideCompare(const char16_t* a, const char16_t* b) {
  return WideCompareN(a, b, static_cast<std::size_t>(-1));
}

char16_t* WideCopy(char16_t* destination, const char16_t* source) {
  std::size_t i = 0;
  do {
    destination[i] = source[i];
  } while (source[i++] != 0);
  return destination;
}

std::size_t WideFormat(char16_t* buffer, std::size_t capacity, const char16_t* format,
                       std::initializer_list<FormatArg> args) {
  if (buffer == nullptr || capacity == 0) return 0;
  std::size_t written = 0;
  auto put = [&](char16_t c) {
    if (written + 1 < capacity) buffer[written++] = c;
  };
  const FormatArg* next = args.begin();
  for (const char16_t* p = format; *p != 0; ++p) {
    if (*p != u'%' || p[1] == 0) {
      put(*p);
      continue;
    }
    const char16_t directive = *++p;
    if (directive == u'%') {
      put(u'%');
    } else if (directive == u'd' || directive == u's') {
      if (next == args.end()) continue;
      const FormatArg& arg = *next++;
      if (directive == u's') {
        for (const char16_t* t = arg.wide_; t != nullptr && *t != 0; ++t) put(*t);
      } else {
        for (char c : std::to_string(arg.number_)) put(static_cast<char16_t>(c));
      }
    } else {
      put(u'%');
      put(directive);
    }
  }
  buffer[written] = 0;
  return written;
}

}  // namespace rw
