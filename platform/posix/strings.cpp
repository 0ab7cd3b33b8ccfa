#include <cstdlib>
#include <cstring>
#include <initializer_list>

#include "platform.h"
#include "string_table.h"

namespace rw::platform {
namespace {

// The language a POSIX program would use for its messages.
resources::Language CurrentLanguage() {
  for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* value = std::getenv(variable);
    if (value != nullptr && *value != '\0') return resources::LanguageOfLocale(value);
  }
  return resources::Language::English;
}

template <typename Char>
int CopyTruncated(const Char* text, Char* buffer, int capacity) {
  int n = 0;
  while (n < capacity - 1 && text[n] != Char{}) {
    buffer[n] = text[n];
    ++n;
  }
  buffer[n] = Char{};
  return n;
}

}  // namespace

int LoadStringW(ModuleHandle, std::uint32_t id, char16_t* buffer, int capacity) {
  if (buffer == nullptr || capacity <= 0) return 0;
  const resources::StringEntry* entry = resources::FindString(CurrentLanguage(), id);
  return CopyTruncated<char16_t>(entry != nullptr ? entry->wide : u"", buffer, capacity);
}

int LoadStringA(ModuleHandle, std::uint32_t id, char* buffer, int capacity) {
  if (buffer == nullptr || capacity <= 0) return 0;
  const resources::StringEntry* entry = resources::FindString(CurrentLanguage(), id);
  return CopyTruncated<char>(entry != nullptr ? entry->utf8 : "", buffer, capacity);
}

}  // namespace rw::platform
