#include "platform/win32/window/status_controls.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "base/failure.h"
#include "platform/win32/system/utf.h"
#include "platform/win32/window/window_creation.h"
#include "platform/win32/window/window_layout.h"

namespace kitbay::platform::win32 {
namespace {

constexpr int kPanelCount = 2;

WPARAM IndexOfPanel(int panel) {
  if (panel < 1 || panel > kPanelCount) {
    throw base::Failure(base::RuntimeError::kSubscriptOutOfRange);
  }
  return static_cast<WPARAM>(panel - 1);
}

constexpr std::wstring_view kStatusBarName = L"Status";

// Answers the message by which a screen reader asks for a window's name. A window text would be
// drawn in the first panel, under the progress bar.
LRESULT CALLBACK AnswerName(HWND bar, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR,
                            DWORD_PTR) {
  if (message == WM_GETTEXTLENGTH) {
    return static_cast<LRESULT>(kStatusBarName.size());
  }
  if (message != WM_GETTEXT || wparam == 0) {
    return DefSubclassProc(bar, message, wparam, lparam);
  }
  auto* text = reinterpret_cast<wchar_t*>(lparam);
  const std::size_t length = kStatusBarName.copy(text, wparam - 1);
  text[length] = L'\0';
  return static_cast<LRESULT>(length);
}

}  // namespace

CommonStatusBar::CommonStatusBar(HWND parent, int id)
    : window_(CreateChildWindow(
          parent,
          {.window_class = STATUSCLASSNAMEW, .style = WS_VISIBLE | SBARS_SIZEGRIP, .id = id})) {
  SetWindowSubclass(window_, AnswerName, 1, 0);
}

int CommonStatusBar::Height() const {
  RECT place{};
  GetWindowRect(window_, &place);
  return place.bottom - place.top;
}

void CommonStatusBar::FitToParent() {
  SendMessageW(window_, WM_SIZE, 0, 0);
  // The size grip at its earlier place must not stay visible.
  InvalidateRect(window_, nullptr, TRUE);
}

void CommonStatusBar::SetResolution(int dpi, HFONT font) {
  SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
  const std::array<int, kPanelCount> right_edges{ProgressPanelWidth(dpi), -1};
  SendMessageW(window_, SB_SETPARTS, kPanelCount, reinterpret_cast<LPARAM>(right_edges.data()));
}

std::string CommonStatusBar::PanelText(int panel) const {
  const WPARAM index = IndexOfPanel(panel);
  const auto length =
      static_cast<std::size_t>(LOWORD(SendMessageW(window_, SB_GETTEXTLENGTHW, index, 0)));
  std::wstring text(length + 1, L'\0');
  SendMessageW(window_, SB_GETTEXTW, index, reinterpret_cast<LPARAM>(text.data()));
  text.resize(length);
  return ToUtf8(text);
}

void CommonStatusBar::SetPanelText(int panel, const std::string& text) {
  const WPARAM index = IndexOfPanel(panel);
  const std::wstring wide = ToUtf16(text);
  SendMessageW(window_, SB_SETTEXTW, index, reinterpret_cast<LPARAM>(wide.c_str()));
}

void CommonStatusBar::Announce(int panel) {
  const auto child = static_cast<LONG>(IndexOfPanel(panel)) + 1;
  for (const DWORD event : {EVENT_OBJECT_NAMECHANGE, EVENT_SYSTEM_ALERT}) {
    NotifyWinEvent(event, window_, OBJID_CLIENT, child);
  }
}

Rectangle CommonStatusBar::PanelRectangle(int panel) const {
  RECT place{};
  SendMessageW(window_, SB_GETRECT, IndexOfPanel(panel), reinterpret_cast<LPARAM>(&place));
  return {static_cast<int>(place.left), static_cast<int>(place.top), static_cast<int>(place.right),
          static_cast<int>(place.bottom)};
}

CommonProgressBar::CommonProgressBar(HWND form, int id, const CommonStatusBar& status_bar)
    : form_(form),
      status_bar_(status_bar),
      window_(CreateChildWindow(form, {.window_class = PROGRESS_CLASSW,
                                       .caption = L"Progress",  // its name for screen readers
                                       .style = PBS_SMOOTH,
                                       .id = id})) {
  constexpr int kWhole = 100;
  SendMessageW(window_, PBM_SETRANGE32, 0, kWhole);
  FollowColours();
}

// At rest it looks like a groove and not like an empty box.
void CommonProgressBar::FollowColours() {
  SendMessageW(window_, PBM_SETBKCOLOR, 0, static_cast<LPARAM>(GetSysColor(COLOR_SCROLLBAR)));
}

void CommonProgressBar::FollowStatusBar() {
  if (GetParent(window_) != status_bar_.window()) {
    return;
  }
  Move(ProgressBarPlace(status_bar_.PanelRectangle(kProgressPanel)));
}

void CommonProgressBar::SetParent(bool status_bar) {
  ::SetParent(window_, status_bar ? status_bar_.window() : form_);
}

void CommonProgressBar::Move(const Rectangle& place) {
  MoveWindow(window_, place.left, place.top, place.right - place.left, place.bottom - place.top,
             TRUE);
}

void CommonProgressBar::SetVisible(bool visible) {
  ShowWindow(window_, visible ? SW_SHOWNA : SW_HIDE);
}

void CommonProgressBar::SetValue(int percent) {
  SendMessageW(window_, PBM_SETPOS, static_cast<WPARAM>(std::clamp(percent, 0, 100)), 0);
}

}  // namespace kitbay::platform::win32
