#include "plain_text.h"

#include <algorithm>
#include <memory>

#include "wide_string.h"

namespace rw {
namespace {

constexpr char16_t kFlatTag[] = u"^flat()";
constexpr std::size_t kFlatTagLength = 7;

}  // namespace

eu16string MakePlainText(const char16_t* text) {
  if (text == nullptr) return eu16string();
  std::size_t length = WideLength(text);
  auto buffer = std::make_unique<char16_t[]>(length + 1);
  std::copy(text, text + length + 1, buffer.get());
  char16_t* s = buffer.get();

  std::size_t from = 0;
  for (;;) {
    char16_t* introducer = WideFindChar(s + from, CUTextObject::kIntroducer);
    if (introducer == nullptr) break;
    char16_t* opener = WideFindChar(introducer + 1, CUTextObject::kOpener);
    char16_t* closer =
        opener == nullptr ? nullptr : WideFindChar(opener + 1, CUTextObject::kCloser);
    const std::size_t before = length;
    const auto at = static_cast<std::size_t>(introducer - s);
    if (closer != nullptr) {
      if (WideCompareN(introducer, kFlatTag, kFlatTagLength) == 0) {
        *introducer = u'b';
        std::copy(introducer + kFlatTagLength, s + length + 1, introducer + 1);
        length -= kFlatTagLength - 1;
        from = at + 1;
      } else {
        const auto tagLength = static_cast<std::size_t>(closer - introducer) + 1;
        std::copy(closer + 1, s + length + 1, introducer);
        length -= tagLength;
        from = at;
      }
    }
    // An incomplete tag changes nothing, and nothing after it can change.
    if (length == before) break;
  }
  return eu16string(s);
}

eu16string MakePlainText(const CUTextObject& object) { return MakePlainText(object.Text()); }

}  // namespace rw
