#include "text_expression.h"

#include <cantel/cantel.h>

#include <algorithm>
#include <array>
#include <vector>

#include "records.h"
#include "text_object.h"
#include "wide_string.h"

namespace rw {
namespace {

constexpr std::size_t kPrefixedTextUnits = 2000;
constexpr char16_t kFontPrefix[] = u"^font(%s,%d)^size(%d)^nfx(%d)";

// The category record's five placement words lead it.
constexpr std::size_t kCategoryPlacement = 0;
constexpr std::uint16_t kCategoryNumberMask = 0x3FFF;
constexpr std::array<std::uint16_t, 5> kDefaultPlacement = {3, 0, 2, 0, 0};

// Definition words, as the 38 bytes lay them out.
constexpr std::size_t kDefTextBlockWord = 0;
constexpr std::size_t kDefBlockSizeWord = 2;
constexpr std::size_t kDefCategoryWord = 5;
constexpr std::size_t kDefPlacementWords1[] = {6, 7};
constexpr std::size_t kDefPlacementWord3 = 12;
constexpr std::size_t kDefPlaybackWord = 13;
constexpr std::size_t kDefPlacementWords2[] = {15, 16};

void PutWord(std::uint8_t* record, std::size_t word, std::uint16_t value) {
  cx_put_u16(record, 2 * word, value);
}

// Line feeds go, carriage returns become spaces.
std::vector<char16_t> SingleLine(const char16_t* text) {
  std::vector<char16_t> line;
  for (const char16_t* p = text; p != nullptr && *p != 0; ++p) {
    if (*p == u'\n') continue;
    line.push_back(*p == u'\r' ? u' ' : *p);
  }
  line.push_back(0);
  return line;
}

// "^font(Name,parameter)^size(n)^nfx(n)" followed by the text.
std::vector<char16_t> PrefixedText(const char16_t* text, std::uint16_t fontWord,
                                   std::uint16_t effects) {
  std::array<std::uint8_t, CX_FONT_NAME_SIZE> fontRecord{};
  LoadRecord(CX_TAG_FONT_NAME, static_cast<std::uint16_t>(fontWord & 0xFF), 0, fontRecord.data(),
             CX_FONT_NAME_SIZE);
  std::array<char16_t, (CX_FONT_NAME_SIZE - CX_FONT_NAME_TEXT) / 2 + 1> name{};
  for (std::size_t i = 0; i + 1 < name.size(); ++i) {
    name[i] = cx_get_u16(fontRecord.data(), CX_FONT_NAME_TEXT + 2 * i);
    if (name[i] == 0) break;
  }
  const std::uint16_t parameter = cx_get_u16(fontRecord.data(), CX_FONT_NAME_PARAMETER);

  std::vector<char16_t> prefixed(kPrefixedTextUnits, 0);
  std::size_t length = WideFormat(prefixed.data(), prefixed.size(), kFontPrefix,
                                  {name.data(), parameter, fontWord >> 8, effects});
  for (const char16_t* p = text; *p != 0 && length + 1 < prefixed.size(); ++p) {
    prefixed[length++] = *p;
  }
  prefixed[length] = 0;
  prefixed.resize(length + 1);
  return prefixed;
}

// The number of the definition showing `text` with `category`, or 0.
std::uint16_t FindDefinition(const char16_t* text, std::uint16_t category) {
  std::uint16_t number = 0;
  std::uint16_t sub = 0;
  std::array<std::uint8_t, CX_EXPRESSION_DEF_SIZE> definition{};
  for (;;) {
    const std::uint16_t previousNumber = number;
    const std::uint16_t previousSub = sub;
    definition.fill(0);
    if (!NextRecord(CX_TAG_EXPRESSION_DEF, number, sub, definition.data(),
                    CX_EXPRESSION_DEF_SIZE)) {
      return 0;
    }
    // A host that does not move forward would keep the walk here for ever.
    if (number < previousNumber || (number == previousNumber && sub <= previousSub)) return 0;
    if (cx_get_u16(definition.data(), CX_EXPRESSION_DEF_CATEGORY) != category) continue;

    std::array<std::uint8_t, CX_TEXT_BLOCK_SIZE> block{};
    const std::uint16_t blockNumber = cx_get_u16(definition.data(), CX_EXPRESSION_DEF_TEXT_BLOCK);
    if (!LoadRecord(CX_TAG_TEXT_BLOCK, blockNumber, 0, block.data(), CX_TEXT_BLOCK_SIZE)) continue;
    CExpressionText expression;
    if (expression.Load(cx_get_u16(block.data(), CX_TEXT_BLOCK_TEXT), CX_INTERFACE_VERSION) == 0)
      continue;
    if (expression.Text() != nullptr && WideCompare(expression.Text(), text) == 0) return number;
  }
}

std::array<std::uint16_t, 5> Placement(bool playbackFlag, std::uint16_t playbackValue) {
  std::array<std::uint16_t, 5> placement = kDefaultPlacement;
  if (!playbackFlag) return placement;
  std::array<std::uint8_t, CX_EXPRESSION_CATEGORY_SIZE> category{};
  const auto number = static_cast<std::uint16_t>(playbackValue & kCategoryNumberMask);
  if (!LoadRecord(CX_TAG_EXPRESSION_CATEGORY, number, 0, category.data(),
                  CX_EXPRESSION_CATEGORY_SIZE)) {
    return placement;
  }
  for (std::size_t i = 0; i < placement.size(); ++i) {
    placement[i] = cx_get_u16(category.data(), kCategoryPlacement + 2 * i);
  }
  return placement;
}

// A creation that leaves the number the host was asked to choose created
// nothing, whatever the host answered.
bool Created(bool answered, std::uint16_t number) {
  return answered && number != CX_NUMBER_ANY && number != 0;
}

}  // namespace

std::uint16_t CreateTextExpression(const char16_t* text, std::uint16_t fontWord,
                                   std::uint16_t effects, std::uint16_t category,
                                   std::uint16_t /*searchFlag1*/, std::uint16_t /*searchFlag2*/,
                                   bool playbackFlag, std::uint16_t playbackValue) {
  // The search flags narrow nothing: a definition matches by its prefixed
  // text and its category alone.
  const std::vector<char16_t> line = SingleLine(text);
  const std::vector<char16_t> prefixed = PrefixedText(line.data(), fontWord, effects);
  if (const std::uint16_t existing = FindDefinition(prefixed.data(), category)) return existing;

  CExpressionText expression;
  expression.SetText(prefixed.data());
  const std::uint16_t textNumber = expression.Create();
  if (textNumber == 0) return 0;

  std::array<std::uint8_t, CX_TEXT_BLOCK_SIZE> block{};
  cx_put_u16(block.data(), CX_TEXT_BLOCK_TEXT, textNumber);
  std::uint16_t blockNumber = CX_NUMBER_ANY;
  std::uint16_t blockSub = 0;
  const bool blockAnswered =
      CreateRecord(CX_TAG_TEXT_BLOCK, blockNumber, blockSub, block.data(), CX_TEXT_BLOCK_SIZE);
  if (!Created(blockAnswered, blockNumber)) return 0;

  const std::array<std::uint16_t, 5> placement = Placement(playbackFlag, playbackValue);
  std::array<std::uint8_t, CX_EXPRESSION_DEF_CREATE_SIZE> definition{};
  PutWord(definition.data(), kDefTextBlockWord, blockNumber);
  PutWord(definition.data(), kDefBlockSizeWord, CX_TEXT_BLOCK_SIZE);
  PutWord(definition.data(), kDefCategoryWord, category);
  PutWord(definition.data(), kDefPlacementWords1[0], placement[0]);
  PutWord(definition.data(), kDefPlacementWords1[1], placement[1]);
  PutWord(definition.data(), kDefPlacementWord3, placement[2]);
  PutWord(definition.data(), kDefPlaybackWord, playbackFlag ? playbackValue : 0);
  PutWord(definition.data(), kDefPlacementWords2[0], placement[3]);
  PutWord(definition.data(), kDefPlacementWords2[1], placement[4]);

  std::uint16_t definitionNumber = CX_NUMBER_ANY;
  std::uint16_t definitionSub = 0;
  const bool definitionAnswered =
      CreateRecord(CX_TAG_EXPRESSION_DEF, definitionNumber, definitionSub, definition.data(),
                   CX_EXPRESSION_DEF_CREATE_SIZE);
  return Created(definitionAnswered, definitionNumber) ? definitionNumber : 0;
}

}  // namespace rw
