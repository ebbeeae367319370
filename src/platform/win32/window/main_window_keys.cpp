#include <algorithm>
#include <array>

#include "platform/win32/system/key_state.h"
#include "platform/win32/window/win32_main_window.h"

// The main window's keyboard: which keys it handles itself, which it offers to the page, and how
// the focus moves from the page to the buttons and back.
namespace kitbay::platform::win32 {
namespace {

bool IsTab(const MSG& message) {
  return message.message == WM_KEYDOWN && message.wParam == VK_TAB && !IsDown(VK_CONTROL);
}

bool IsKeyWithAlt(const MSG& message) {
  return message.message >= WM_SYSKEYDOWN && message.message <= WM_SYSDEADCHAR;
}

}  // namespace

bool Win32MainWindow::HandleKey(MSG& message) {
  if (window_ == nullptr || events_ == nullptr) {
    return false;
  }
  if (message.hwnd != window_ && !IsChild(window_, message.hwnd)) {
    return false;
  }
  try {
    return HandleOwnKey(message);
  } catch (...) {
    // The page refused the key, which is then handled as usual.
    return false;
  }
}

// With Control held down, the wheel would zoom the page away from the window's own resolution.
bool Win32MainWindow::HandleWheel(const MSG& message) {
  return (GET_KEYSTATE_WPARAM(message.wParam) & MK_CONTROL) != 0 && browser_ != nullptr &&
         browser_->Contains(message.hwnd);
}

bool Win32MainWindow::HandleOwnKey(MSG& message) {
  const bool is_key_down = message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN;
  if (is_key_down) {
    events_->Form_KeyDown(static_cast<int>(message.wParam));
    if (window_ == nullptr) {
      return true;
    }
  }
  if (is_key_down && message.wParam == VK_F1) {
    if (!help_file_.empty()) {
      events_->lblHelp_Click();
    }
    return true;
  }
  if (message.message == WM_SYSCHAR) {
    const HWND button = controls_->ButtonOfMnemonic(static_cast<wchar_t>(message.wParam));
    if (button == nullptr) {
      return false;
    }
    FocusControl(button);
    SendMessageW(button, BM_CLICK, 0, 0);
    return true;
  }
  if (browser_ != nullptr && browser_->HasFocus() && !IsKeyWithAlt(message) &&
      browser_->TranslateKey(message)) {
    return true;
  }
  if (IsTab(message)) {
    MoveFocus(message);
    return true;
  }
  const HWND focus = GetFocus();
  const bool is_on_button = focus == controls_->directories() || focus == controls_->close();
  if (message.message == WM_KEYDOWN && message.wParam == VK_RETURN && is_on_button) {
    SendMessageW(focus, BM_CLICK, 0, 0);
    return true;
  }
  return false;
}

void Win32MainWindow::MoveFocus(MSG& tab) {
  const bool backwards = IsDown(VK_SHIFT);
  if (browser_ != nullptr && browser_->HasFocus()) {
    FocusLeftPage(backwards);
    return;
  }
  const bool is_on_directories = GetFocus() == controls_->directories();
  if (is_on_directories != backwards) {
    FocusControl(backwards ? controls_->directories() : controls_->close());
  } else if (browser_ != nullptr) {
    browser_->TakeFocus(&tab);
  }
}

void Win32MainWindow::FocusLeftPage(bool backwards) {
  if (controls_) {
    FocusControl(backwards ? controls_->close() : controls_->directories());
  }
}

void Win32MainWindow::FocusControl(HWND control) {
  SetFocus(control);
  // The user is using the keyboard: shows the focus and the underlined letters.
  SendMessageW(window_, WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS | UISF_HIDEACCEL),
               0);
}

}  // namespace kitbay::platform::win32
