#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "contract/dialog/preference_window_world.h"
#include "platform/win32/win32_platform.h"

namespace kitbay::contract {

/// The real dialog with an owner of the tests, on the real message loop. Keys and the mouse arrive
/// as the system's messages.
class Win32PreferenceWindowWorld : public PreferenceWindowWorld {
 public:
  Win32PreferenceWindowWorld();
  ~Win32PreferenceWindowWorld() override;
  Win32PreferenceWindowWorld(const Win32PreferenceWindowWorld&) = delete;
  Win32PreferenceWindowWorld& operator=(const Win32PreferenceWindowWorld&) = delete;

  platform::PreferenceWindow& window() override { return *window_; }
  platform::WindowHandle owner() const override;
  void EndOwner() override { DestroyWindow(owner_); }
  bool IsShown() const override { return IsWindowVisible(dialog()) != FALSE; }
  bool IsRemoveEnabled() const override { return IsWindowEnabled(Control("Command1")) != FALSE; }
  std::string StatusText() const override { return TextOf(Control("frmPrefStatus")); }
  std::string Focus() const override;
  void FocusRemoveButton() override { SetFocus(Control("Command1")); }
  void Type(const std::string& text) override;
  void Select(int position) override;
  void Click(int position) override { ClickAt(PlaceOfItem(position)); }

  HWND owner_window() const { return owner_; }
  HWND dialog() const;

  /// The control of that name; null if there is none.
  HWND Control(const std::string& name) const;
  static std::string TextOf(HWND window);

  /// The middle of an item within the list.
  POINT PlaceOfItem(int position) const;

  /// Presses and releases the left button at that point of the list.
  void ClickAt(POINT place);

  /// Presses and releases the key in the focused control.
  void PressKey(WPARAM key);

  /// Sends the character as a key pressed with Alt does.
  void PressWithAlt(wchar_t letter);

  /// Handles the messages that are waiting now.
  void RunWaiting();

 private:
  HWND owner_;
  std::unique_ptr<platform::MessageLoop> loop_;
  std::unique_ptr<platform::PreferenceWindow> window_;
};

}  // namespace kitbay::contract
