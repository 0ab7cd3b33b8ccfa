// A fixed-width font for a control whose text stands in columns. It follows
// the dialog's own font in height and character set, so that it matches the
// dialog in every language's template and at every display scaling.
#include <windows.h>

#include <cstdint>
#include <cwchar>
#include <iterator>

#include "platform.h"

namespace rw::platform {
namespace {

// The character set a dialog font of DEFAULT_CHARSET stands for: that of the
// ANSI code page of the thread's locale, which also chose the dialog's
// language. (Wine makes every template's font DEFAULT_CHARSET.)
BYTE ResolvedCharset(BYTE charset) {
  if (charset != DEFAULT_CHARSET) return charset;
  wchar_t codePage[8] = {};
  if (::GetLocaleInfoW(::GetThreadLocale(), LOCALE_IDEFAULTANSICODEPAGE, codePage,
                       static_cast<int>(std::size(codePage))) == 0) {
    return charset;
  }
  const auto page = static_cast<std::uintptr_t>(std::wcstoul(codePage, nullptr, 10));
  CHARSETINFO info{};
  if (!::TranslateCharsetInfo(reinterpret_cast<DWORD*>(page), &info, TCI_SRCCODEPAGE)) {
    return charset;
  }
  return static_cast<BYTE>(info.ciCharset);
}

}  // namespace

FontHandle CreateFixedWidthFont(void* dialog) {
  HWND window = static_cast<HWND>(dialog);
  if (window == nullptr || !::IsWindow(window)) return nullptr;
  // A dialog without a font of its own draws in the system font.
  HGDIOBJ own = reinterpret_cast<HGDIOBJ>(::SendMessageW(window, WM_GETFONT, 0, 0));
  if (own == nullptr) own = ::GetStockObject(SYSTEM_FONT);
  LOGFONTW dialogFont{};
  if (own == nullptr || ::GetObjectW(own, sizeof dialogFont, &dialogFont) != sizeof dialogFont) {
    return nullptr;
  }
  LOGFONTW fixed{};
  fixed.lfHeight = dialogFont.lfHeight;
  fixed.lfWeight = dialogFont.lfWeight;
  fixed.lfCharSet = ResolvedCharset(dialogFont.lfCharSet);
  fixed.lfOutPrecision = OUT_DEFAULT_PRECIS;
  fixed.lfClipPrecision = CLIP_DEFAULT_PRECIS;
  fixed.lfQuality = dialogFont.lfQuality;
  // The pitch is asked for too, so that a system without the face still
  // gives a font whose columns line up.
  fixed.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
  // Courier New has no Japanese glyphs; MS Gothic is the Japanese system's
  // fixed-width face.
  const wchar_t* face = fixed.lfCharSet == SHIFTJIS_CHARSET ? L"MS Gothic" : L"Courier New";
  std::wcsncpy(fixed.lfFaceName, face, std::size(fixed.lfFaceName) - 1);
  return ::CreateFontIndirectW(&fixed);
}

void DeleteFont(FontHandle font) {
  if (font != nullptr) ::DeleteObject(static_cast<HGDIOBJ>(font));
}

}  // namespace rw::platform
