// What the platform's Windows calls answer where they run, under Wine in the
// scripts:
//   platform_probe user-folder   prints the user's groove folder (exit 0), or
//                                "none" (exit 1)
//   platform_probe fixed-font    makes the fixed-width font for a dialog in
//                                Western and in Japanese type, prints what
//                                it got, and exits 1 when a font is wrong
#include <windows.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "platform.h"

namespace {

std::string Utf8(const wchar_t* text) {
  const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
  std::string out(static_cast<std::size_t>(size > 0 ? size : 1), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text, -1, out.data(), size, nullptr, nullptr);
  out.resize(std::strlen(out.c_str()));
  return out;
}

int UserFolder() {
  char16_t path[rw::platform::kMaxPath] = {};
  if (!rw::platform::UserGrooveFolder(path, rw::platform::kMaxPath)) {
    std::puts("none");
    return 1;
  }
  std::printf("%s\n", Utf8(reinterpret_cast<const wchar_t*>(path)).c_str());
  return 0;
}

INT_PTR CALLBACK Quiet(HWND, UINT, WPARAM, LPARAM) { return FALSE; }

// An empty dialog in the font a template names, as the resource compiler
// lays out DLGTEMPLATEEX.
HWND DialogIn(const wchar_t* face, WORD points, BYTE charset) {
  std::vector<WORD> words;
  auto dword = [&](DWORD value) {
    words.push_back(LOWORD(value));
    words.push_back(HIWORD(value));
  };
  words.push_back(1);       // version
  words.push_back(0xFFFF);  // extended template
  dword(0);                 // help id
  dword(0);                 // extended style
  dword(DS_SETFONT | WS_POPUP | WS_CAPTION);
  words.push_back(0);  // no controls
  for (int i = 0; i < 4; ++i) words.push_back(i < 2 ? 0 : 100);
  words.push_back(0);  // no menu
  words.push_back(0);  // the dialog class
  words.push_back(0);  // no title
  words.push_back(points);
  words.push_back(FW_NORMAL);
  words.push_back(static_cast<WORD>(charset << 8));  // not italic, then the charset
  for (const wchar_t* c = face; *c != 0; ++c) words.push_back(static_cast<WORD>(*c));
  words.push_back(0);
  return CreateDialogIndirectParamW(GetModuleHandleW(nullptr),
                                    reinterpret_cast<LPCDLGTEMPLATEW>(words.data()), nullptr, Quiet,
                                    0);
}

// One dialog's fixed-width font against what it must be; true when right.
bool CheckFont(const char* what, LANGID language, const wchar_t* dialogFace, WORD points,
               BYTE charset, const wchar_t* expectedFace, BYTE expectedCharset) {
  // The thread's locale, as the host's runner sets it for the language.
  SetThreadLocale(MAKELCID(language, SORT_DEFAULT));
  HWND dialog = DialogIn(dialogFace, points, charset);
  if (dialog == nullptr) {
    std::printf("%s: no dialog (error %lu)\n", what, GetLastError());
    return false;
  }
  LOGFONTW own{};
  GetObjectW(reinterpret_cast<HGDIOBJ>(SendMessageW(dialog, WM_GETFONT, 0, 0)), sizeof own, &own);
  rw::platform::FontHandle font = rw::platform::CreateFixedWidthFont(dialog);
  LOGFONTW asked{};
  const bool made = font != nullptr && GetObjectW(font, sizeof asked, &asked) == sizeof asked;
  wchar_t drawn[LF_FACESIZE] = {};
  bool fixed = false;
  if (made) {
    HDC dc = GetDC(dialog);
    HGDIOBJ before = SelectObject(dc, font);
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc, &metrics);
    // The bit set means a variable pitch, as the system has always named it.
    fixed = (metrics.tmPitchAndFamily & TMPF_FIXED_PITCH) == 0;
    GetTextFaceW(dc, LF_FACESIZE, drawn);
    SelectObject(dc, before);
    ReleaseDC(dialog, dc);
  }
  rw::platform::DeleteFont(font);
  LOGFONTW gone{};
  const bool deleted = font == nullptr || GetObjectW(font, sizeof gone, &gone) == 0;
  DestroyWindow(dialog);
  const bool right = made && asked.lfHeight == own.lfHeight && own.lfHeight != 0 &&
                     asked.lfCharSet == expectedCharset &&
                     std::wcscmp(asked.lfFaceName, expectedFace) == 0 && fixed && deleted;
  std::printf(
      "%s: %s height %ld (dialog %ld), charset %d (dialog %d), face \"%s\" drawn as \"%s\", %s, "
      "%s\n",
      what, right ? "ok" : "WRONG", asked.lfHeight, own.lfHeight, asked.lfCharSet, own.lfCharSet,
      Utf8(asked.lfFaceName).c_str(), Utf8(drawn).c_str(), fixed ? "fixed pitch" : "VARIABLE pitch",
      deleted ? "deleted" : "NOT deleted");
  return right;
}

int FixedFont() {
  // The templates' fonts (resources/layout): a dialog font of DEFAULT_CHARSET
  // takes the character set of the thread locale's code page.
  const LANGID english = MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);
  const LANGID japanese = MAKELANGID(LANG_JAPANESE, SUBLANG_DEFAULT);
  bool right = CheckFont("western", english, L"MS Shell Dlg", 8, DEFAULT_CHARSET, L"Courier New",
                         ANSI_CHARSET);
  right = CheckFont("japanese", japanese, L"MS UI Gothic", 9, SHIFTJIS_CHARSET, L"MS Gothic",
                    SHIFTJIS_CHARSET) &&
          right;
  right = CheckFont("japanese, default charset", japanese, L"MS Shell Dlg", 8, DEFAULT_CHARSET,
                    L"MS Gothic", SHIFTJIS_CHARSET) &&
          right;
  return right ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string what = argc == 2 ? argv[1] : "";
  if (what == "user-folder") return UserFolder();
  if (what == "fixed-font") return FixedFont();
  std::fputs("usage: platform_probe user-folder | fixed-font\n", stderr);
  return 2;
}
