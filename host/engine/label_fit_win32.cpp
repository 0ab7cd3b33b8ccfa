#include "label_fit_win32.h"

#include <algorithm>
#include <cmath>
#include <sstream>
#include <vector>

#include "utf.h"

namespace cantel_engine {
namespace {

// Room the system draws beside a label: the box of a radio button or check
// box with its gap, a push button's frame, a group box's corners, a
// drop-down's button and edit margins.
constexpr int kCheckGap = 6;
constexpr int kButtonFrame = 8;
constexpr int kGroupCorners = 16;
constexpr int kDropDownEdges = 8;

struct Measured {
  int needed = 0;
  int offered = 0;
};

std::u16string text_of(HWND control) {
  std::u16string text(static_cast<std::size_t>(GetWindowTextLengthW(control)) + 1, u'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(
      control, reinterpret_cast<LPWSTR>(text.data()), static_cast<int>(text.size()))));
  return text;
}

std::u16string class_of(HWND control) {
  wchar_t name[64] = {};
  GetClassNameW(control, name, 64);
  return std::u16string(reinterpret_cast<const char16_t*>(name));
}

// The text's extent in the control's font, wrapped to `width` when given.
SIZE extent(HDC dc, const std::u16string& text, UINT format, int width) {
  RECT r{0, 0, width > 0 ? width : 0x7FFF, 0};
  DrawTextW(dc, reinterpret_cast<LPCWSTR>(text.c_str()), static_cast<int>(text.size()), &r,
            format | DT_CALCRECT);
  return {r.right - r.left, r.bottom - r.top};
}

void report(std::ostringstream& out, HWND control, const Measured& m, double margin,
            const std::u16string& text, const char* what) {
  const bool fits = std::lround(m.needed * (1.0 + margin)) <= m.offered;
  std::string shown = utf16_to_utf8(text);
  for (std::size_t at = shown.find('\n'); at != std::string::npos; at = shown.find('\n', at)) {
    shown.replace(at, 1, " / ");  // one line per control
  }
  out << (fits ? "fits" : "CUT") << " " << GetDlgCtrlID(control) << " " << what << " needs "
      << m.needed << " of " << m.offered << ": " << shown << "\n";
}

void check(std::ostringstream& out, HWND control, HDC dc, double margin) {
  const std::u16string kind = class_of(control);
  const LONG style = GetWindowLongW(control, GWL_STYLE);
  RECT client{};
  GetClientRect(control, &client);
  const int width = client.right;
  const int height = client.bottom;
  HGDIOBJ font = reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0));
  HGDIOBJ previous = SelectObject(dc, font);

  if (kind == u"Static") {
    const std::u16string text = text_of(control);
    if (!text.empty()) {
      UINT format = DT_WORDBREAK | DT_EXPANDTABS;
      if (style & SS_NOPREFIX) format |= DT_NOPREFIX;
      if (style & SS_EDITCONTROL) format |= DT_EDITCONTROL;
      // Wrapped a little narrower than the control, its lines must fit both ways.
      const auto narrower = static_cast<int>(width / (1.0 + margin));
      const SIZE wrapped = extent(dc, text, format, narrower);
      report(out, control, {static_cast<int>(wrapped.cx), narrower}, 0.0, text, "wide");
      report(out, control, {static_cast<int>(wrapped.cy), height}, 0.0, text, "high");
    }
  } else if (kind == u"Button") {
    const std::u16string text = text_of(control);
    const LONG type = style & BS_TYPEMASK;
    const SIZE line = extent(dc, text, DT_SINGLELINE, 0);
    int frame = kButtonFrame;
    if (type == BS_GROUPBOX) frame = kGroupCorners;
    if (type == BS_CHECKBOX || type == BS_AUTOCHECKBOX || type == BS_RADIOBUTTON ||
        type == BS_AUTORADIOBUTTON) {
      frame = GetSystemMetrics(SM_CXMENUCHECK) + kCheckGap;
    }
    if (!text.empty())
      report(out, control, {static_cast<int>(line.cx) + frame, width}, margin, text, "wide");
  } else if (kind == u"ComboBox") {
    const int room = width - GetSystemMetrics(SM_CXVSCROLL) - kDropDownEdges;
    const auto rows = SendMessageW(control, CB_GETCOUNT, 0, 0);
    for (LRESULT i = 0; i < rows; ++i) {
      const auto length = SendMessageW(control, CB_GETLBTEXTLEN, static_cast<WPARAM>(i), 0);
      std::u16string row(static_cast<std::size_t>(std::max<LRESULT>(length, 0)) + 1, u'\0');
      SendMessageW(control, CB_GETLBTEXT, static_cast<WPARAM>(i),
                   reinterpret_cast<LPARAM>(row.data()));
      row.resize(static_cast<std::size_t>(std::max<LRESULT>(length, 0)));
      report(out, control,
             {static_cast<int>(extent(dc, row, DT_SINGLELINE | DT_NOPREFIX, 0).cx), room}, margin,
             row, "row");
    }
  }
  SelectObject(dc, previous);
}

}  // namespace

std::string label_fit_report(HWND dialog, double margin, const std::set<int>& names_of_the_user) {
  std::ostringstream out;
  HDC dc = GetDC(dialog);
  for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr;
       child = GetWindow(child, GW_HWNDNEXT)) {
    if (names_of_the_user.count(GetDlgCtrlID(child)) == 0) check(out, child, dc, margin);
  }
  ReleaseDC(dialog, dc);
  return out.str();
}

}  // namespace cantel_engine
