#include "string_table.h"

#include <cstring>
#include <iterator>
#include <span>

namespace rw::resources {
namespace {

// Each language header defines RW_LANG_STRINGS; every row becomes a wide and
// a UTF-8 copy of the same text.
#define RW_TABLE_ROW(id, text) StringEntry{id, u"" text, text},

#include "lang/en.h"
constexpr StringEntry kEnglish[] = {RW_LANG_STRINGS(RW_TABLE_ROW)};
#include "lang/undef.h"

#include "lang/ja.h"
constexpr StringEntry kJapanese[] = {RW_LANG_STRINGS(RW_TABLE_ROW)};
#include "lang/undef.h"

#include "lang/pl.h"
constexpr StringEntry kPolish[] = {RW_LANG_STRINGS(RW_TABLE_ROW)};
#include "lang/undef.h"

#include "lang/sv.h"
constexpr StringEntry kSwedish[] = {RW_LANG_STRINGS(RW_TABLE_ROW)};
#include "lang/undef.h"

#undef RW_TABLE_ROW

std::span<const StringEntry> TableOf(Language language) {
  switch (language) {
    case Language::Japanese: return kJapanese;
    case Language::Polish: return kPolish;
    case Language::Swedish: return kSwedish;
    case Language::English: break;
  }
  return kEnglish;
}

}  // namespace

Language LanguageOfLocale(const char* locale) {
  if (locale == nullptr) return Language::English;
  if (std::strncmp(locale, "ja", 2) == 0) return Language::Japanese;
  if (std::strncmp(locale, "pl", 2) == 0) return Language::Polish;
  if (std::strncmp(locale, "sv", 2) == 0) return Language::Swedish;
  return Language::English;
}

const StringEntry* FindString(Language language, std::uint32_t id) {
  for (const StringEntry& entry : TableOf(language)) {
    if (entry.id == id) return &entry;
  }
  return nullptr;
}

}  // namespace rw::resources
