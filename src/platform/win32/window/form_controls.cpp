#include "platform/win32/window/form_controls.h"

#include <string>
#include <utility>

#include "platform/win32/window/screen.h"
#include "platform/win32/window/window_creation.h"

namespace kitbay::platform::win32 {
namespace {

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
  PlaceChildWindow(help_.window(), layout.help);
  PlaceChildWindow(directories_, layout.directories);
  PlaceChildWindow(close_, layout.close);
  return layout.browser;
}

HWND FormControls::ButtonOfMnemonic(wchar_t letter) const {
  for (const HWND button : {directories_, close_}) {
    if (HasMnemonic(button, letter)) {
      return button;
    }
  }
  return nullptr;
}

}  // namespace kitbay::platform::win32
