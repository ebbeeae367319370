#include "platform/win32/window/form_controls.h"

#include <commctrl.h>

#include <string>
#include <utility>

#include "platform/win32/com/com_failure.h"
#include "platform/win32/window/screen_scale.h"

namespace kitbay::platform::win32 {
namespace {

HWND CreateButton(HWND form, int id, const wchar_t* caption) {
  const HWND window = CreateWindowExW(
      0, WC_BUTTONW, caption, WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_PUSHBUTTON, 0, 0, 0, 0, form,
      reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr), nullptr);
  const DWORD error = GetLastError();
  if (window == nullptr) throw FailureOf(HRESULT_FROM_WIN32(error));
  return window;
}

void Place(HWND window, const Rectangle& place) {
  SetWindowPos(window, nullptr, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
}

bool HasMnemonic(HWND button, wchar_t letter) {
  constexpr int kLongestCaption = 64;
  std::wstring caption(kLongestCaption, L'\0');
  caption.resize(static_cast<std::size_t>(GetWindowTextW(button, caption.data(), kLongestCaption)));
  const std::size_t mark = caption.find(L'&');
  return mark != std::wstring::npos && mark + 1 < caption.size() &&
         towlower(caption[mark + 1]) == towlower(letter);
}

}  // namespace

FormControls::FormControls(HWND form, MainWindowEvents& events)
    : form_(form),
      directories_(CreateButton(form, kDirectoriesId, L"&Directories")),
      close_(CreateButton(form, kCloseId, L"&Close")),
      help_(form, kHelpId, events),
      status_bar_(form, kStatusBarId),
      progress_bar_(form, kProgressBarId, status_bar_) {}

void FormControls::SetResolution(int dpi) {
  dpi_ = dpi;
  UniqueFont font = MakeProgramFont(dpi, false);
  for (const HWND button : {directories_, close_}) {
    SendMessageW(button, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), TRUE);
  }
  status_bar_.SetResolution(dpi, font.get());
  help_.SetResolution(dpi);
  font_ = std::move(font);
  progress_bar_.FollowStatusBar();
}

Rectangle FormControls::LayOut() {
  status_bar_.FitToParent();
  RECT client{};
  GetClientRect(form_, &client);
  const WindowLayout layout =
      LayOutWindow({static_cast<int>(client.right), static_cast<int>(client.bottom)},
                   status_bar_.Height(), help_.TextExtent(), dpi_);
  Place(help_.window(), layout.help);
  Place(directories_, layout.directories);
  Place(close_, layout.close);
  return layout.browser;
}

HWND FormControls::ButtonOfMnemonic(wchar_t letter) const {
  for (const HWND button : {directories_, close_}) {
    if (HasMnemonic(button, letter)) return button;
  }
  return nullptr;
}

}  // namespace kitbay::platform::win32
