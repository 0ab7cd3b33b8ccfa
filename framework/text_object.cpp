#include "text_object.h"

#include <algorithm>

#include "host_api.h"
#include "wide_string.h"

namespace rw {
namespace {

using host::kVersion;

constexpr std::uint16_t kDefaultExpressionFont = 15;
// Asked for before the text's real size is known.
constexpr std::uint32_t kTextSizeQuery = 256;

}  // namespace

CUTextObject::CUTextObject() { Allocate(CX_TAG_TEXT_BLOCK, CX_TEXT_BLOCK_SIZE); }

CUTextObject::~CUTextObject() = default;

std::uint16_t CUTextObject::Next() {
  const std::uint16_t found = CEData::Next();
  FreeText();
  if (found != 0) {
    textNumber_ = cx_get_u16(Data(), CX_TEXT_BLOCK_TEXT);
    LoadText(kVersion);
  }
  return found;
}

std::uint16_t CUTextObject::Create() {
  std::uint16_t number = CX_NUMBER_ANY;
  std::uint16_t sub = 0;
  const char16_t* text = text_ ? text_.get() : u"";
  // The size counts UTF-16 units, not bytes: the host expects it so.
  const auto units = static_cast<std::uint32_t>(WideLength(text));
  if (!CreateRecord(textKind_, number, sub, text, units)) return 0;
  return number == CX_NUMBER_ANY ? 0 : number;
}

std::uint16_t CUTextObject::Load(std::uint16_t number, std::uint32_t version) {
  const std::uint16_t blockRead = CEData::Load(number, version);
  FreeText();
  if (blockRead == 0) return 0;
  textNumber_ = cx_get_u16(Data(), CX_TEXT_BLOCK_TEXT);
  return LoadText(version);
}

std::uint16_t CUTextObject::LoadText(std::uint32_t version) {
  FreeText();
  std::uint16_t block[2] = {textNumber_, 0};
  std::uint32_t size = kTextSizeQuery;
  if (host::CX_LoadEData(textKind_, block, nullptr, &size, version) == 0) return 0;
  // One more unit than the host's bytes fill, zeroed: always terminated,
  // even when the host reports an odd byte count.
  auto text = std::make_unique<char16_t[]>((std::size_t{size} + 1) / 2 + 1);
  std::uint32_t bytes = size;
  const std::uint16_t loaded = host::CX_LoadEData(textKind_, block, text.get(), &bytes, version);
  if (loaded != 0) text_ = std::move(text);
  return loaded;
}

void CUTextObject::SetText(const char16_t* text) {
  FreeText();
  if (text == nullptr) return;
  const std::size_t length = WideLength(text);
  text_ = std::make_unique<char16_t[]>(length + 1);
  std::copy(text, text + length, text_.get());
}

std::uint16_t CUTextObject::GetFontInfo(std::uint16_t* fontInfo, int index) {
  if (!text_ || fontInfo == nullptr || index < 0) return 0;
  const char16_t* text = text_.get();
  const std::size_t length = WideLength(text);
  // Font tags start "^f"; the last character cannot start one.
  const char16_t* tag = nullptr;
  int seen = 0;
  for (std::size_t i = 0; i + 1 < length; ++i) {
    if (text[i] == kIntroducer && text[i + 1] == u'f' && seen++ == index) {
      tag = text + i;
      break;
    }
  }
  if (tag == nullptr) return 0;

  std::uint16_t info[kFontInfoWords] = {0, 0, 0};
  const char16_t* position = tag;
  while (*position == kIntroducer) {
    const char16_t* end = nullptr;
    const char16_t* after =
        host::CX_ParseCaretCommand_UTF16(position, &end, CX_TAG_BLOCK_TEXT, info, kVersion);
    // A parser that fails or stands still would keep us here for ever.
    if (after == nullptr || after <= position) break;
    position = after;
  }
  std::copy(info, info + kFontInfoWords, fontInfo);
  return 1;
}

CExpressionText::CExpressionText() {
  Allocate(CX_TAG_EXPRESSION_TEXT, CX_TEXT_BLOCK_SIZE);
  textKind_ = CX_TAG_EXPRESSION_TEXT;
}

std::uint16_t CExpressionText::Next() {
  if (host::CX_NextEData(textKind_, numberBlock_, nullptr, 0, kVersion) == 0) return 0;
  return Load(numberBlock_[0], kVersion);
}

std::uint16_t CExpressionText::Load(std::uint16_t number, std::uint32_t version) {
  textNumber_ = number;
  return LoadText(version);
}

std::uint16_t CExpressionText::GetFontInfo(std::uint16_t* fontInfo, int index) {
  if (CUTextObject::GetFontInfo(fontInfo, index) != 0) return 1;
  if (index != 0 || fontInfo == nullptr) return 0;
  LoadRecord(CX_TAG_FONT_PREFS, kDefaultExpressionFont, 0, fontInfo, CX_FONT_PREFS_SIZE);
  return 1;
}

void SetText(CUTextObject& object, const char16_t* text) { object.SetText(text); }

std::uint16_t CreateTextBlock(const char16_t* text) {
  CUTextObject object;
  object.SetText(text);
  const std::uint16_t textNumber = object.Create();
  if (textNumber == 0) return 0;
  std::uint8_t block[CX_TEXT_BLOCK_SIZE] = {};
  cx_put_u16(block, CX_TEXT_BLOCK_TEXT, textNumber);
  std::uint16_t number = CX_NUMBER_ANY;
  std::uint16_t sub = 0;
  if (!CreateRecord(CX_TAG_TEXT_BLOCK, number, sub, block, CX_TEXT_BLOCK_SIZE)) return 0;
  return number == CX_NUMBER_ANY ? 0 : number;
}

}  // namespace rw
