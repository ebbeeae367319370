#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "platform/preference_window.h"
#include "platform/win32/window/message_loop.h"
#include "platform/win32/window/preference_controls.h"

namespace kitbay::platform::win32 {

/// A real dialog, so that the system moves the focus and handles underlined letters.
class Win32PreferenceWindow final : public PreferenceWindow, private KeyFilter {
 public:
  explicit Win32PreferenceWindow(Win32MessageLoop& loop);
  ~Win32PreferenceWindow() override;

  bool IsLoaded() const override { return window_ != nullptr; }
  void Load(PreferenceWindowEvents& events, WindowHandle owner) override;
  void Unload() override;
  void Show() override;
  std::string UrlText() const override;
  void SetUrlText(const std::string& text) override;
  void FocusUrlBox() override;
  void FocusAddButton() override;
  void EnableRemoveButton(bool enabled) override;
  int ItemCount() const override;
  std::string ItemText(int position) const override;
  void AddItem(const std::string& text) override;
  void RemoveItem(int position) override;
  int SelectedItem() const override;
  void SetStatusText(const std::string& text) override;

 private:
  static INT_PTR CALLBACK DialogProcedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  bool HandleMessage(UINT message, WPARAM wparam, LPARAM lparam);
  void OnCommand(WPARAM wparam);
  void OnNotify(const NMHDR& notification);
  void OnDpiChanged(int dpi, const RECT& suggested);
  void OnMinMaxInfo(MINMAXINFO& info) const;
  void OnDestroy();

  bool HandleKey(MSG& message) override;
  bool HandleOwnKey(MSG& message);

  void CreateDialogWindow(HWND owner);
  void Focus(HWND control);
  PreferenceControls& Loaded();
  const PreferenceControls& Loaded() const;

  Win32MessageLoop& loop_;
  PreferenceWindowEvents* events_ = nullptr;
  HWND window_ = nullptr;
  bool is_unloading_ = false;
  std::optional<PreferenceControls> controls_;
};

}  // namespace kitbay::platform::win32
