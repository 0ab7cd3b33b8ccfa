// The plug-in's string table compiled in, for builds without Windows
// resources. The texts come from the same language headers as the resource
// script.
#pragma once

#include <cstdint>

namespace rw::resources {

enum class Language { English, Japanese, Polish, Swedish };

struct StringEntry {
  std::uint32_t id;
  const char16_t* wide;
  const char* utf8;
};

// Language of a locale name such as "ja_JP.UTF-8"; English for anything
// that is not Japanese, Polish or Swedish (and for null).
Language LanguageOfLocale(const char* locale);

// String `id` in `language`, or null when there is none.
const StringEntry* FindString(Language language, std::uint32_t id);

}  // namespace rw::resources
