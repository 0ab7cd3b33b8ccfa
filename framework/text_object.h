// Text records: CUTextObject reads a text block "XTOS" and the text "lbxt" it
// shows; CExpressionText reads and writes expression texts "pxxt" directly
// by text number.
#pragma once

#include <cantel/cantel.h>

#include <cstddef>
#include <cstdint>
#include <memory>

#include "records.h"

namespace rw {

// Font information as the host's caret-command parser fills it: font
// number, size, effects.
inline constexpr std::size_t kFontInfoWords = 3;

class CUTextObject : public CEData {
 public:
  CUTextObject();
  ~CUTextObject() override;

  // Steps to the next text block and loads its text.
  std::uint16_t Next() override;
  // Creates a text record of the object's text kind from the text; answers
  // the number the host assigned, or 0.
  std::uint16_t Create() override;
  // Loads the text block `number`, then the text it shows; answers the text
  // load's result (0 when the block or its text is missing).
  std::uint16_t Load(std::uint16_t number, std::uint32_t version) override;
  // The font of the index-th font tag (from 0) into fontInfo[3]; 1 when found.
  virtual std::uint16_t GetFontInfo(std::uint16_t* fontInfo, int index);

  // The loaded text, or null.
  const char16_t* Text() const { return text_.get(); }
  std::uint32_t TextKind() const { return textKind_; }
  std::uint16_t TextNumber() const { return textNumber_; }
  // Replaces the text with a copy of `text` (null clears it).
  void SetText(const char16_t* text);

  static constexpr char16_t kIntroducer = u'^';
  static constexpr char16_t kOpener = u'(';
  static constexpr char16_t kCloser = u')';

 protected:
  // Reads text `textNumber_` of the text kind: a size query, then the text.
  std::uint16_t LoadText(std::uint32_t version);
  void FreeText() { text_.reset(); }

  std::unique_ptr<char16_t[]> text_;
  std::uint32_t textKind_ = CX_TAG_BLOCK_TEXT;
  std::uint16_t textNumber_ = 0;
};

class CExpressionText : public CUTextObject {
 public:
  CExpressionText();

  // Steps to the next expression text and loads it.
  std::uint16_t Next() override;
  // Loads expression text `number`; no text block is involved.
  std::uint16_t Load(std::uint16_t number, std::uint32_t version) override;
  // Falls back to the document's default expression font ("fdfp" 15) for
  // the first font tag of a text that has none.
  std::uint16_t GetFontInfo(std::uint16_t* fontInfo, int index) override;
};

// The free form the callers use.
void SetText(CUTextObject& object, const char16_t* text);

// A new text "lbxt" holding `text` and a new text block "XTOS" showing it,
// both numbered by the host, as a staff's names are kept. Answers the
// block's number, or 0 when the host refused either.
std::uint16_t CreateTextBlock(const char16_t* text);

}  // namespace rw
