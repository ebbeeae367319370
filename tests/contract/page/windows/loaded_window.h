#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <string>

#include "contract/page/main_window_events.h"
#include "contract/page/windows/page_files.h"
#include "platform/main_window.h"
#include "platform/win32/win32_platform.h"

namespace kitbay::contract {

/// The real main window on the real message loop, with a record of its events.
class LoadedWindow : public RecordingMainWindowEvents {
 public:
  LoadedWindow();
  ~LoadedWindow() override;
  LoadedWindow(const LoadedWindow&) = delete;
  LoadedWindow& operator=(const LoadedWindow&) = delete;

  platform::MainWindow& window() { return *window_; }
  HWND handle() const { return reinterpret_cast<HWND>(window_->Handle().value); }
  PageFiles& files() { return files_; }

  /// Handles messages until `is_done`; fails the test and returns false after the time limit.
  bool RunUntil(const std::function<bool()>& is_done);

  /// Handles the messages that are waiting now.
  void RunWaiting();

  /// Shows the page at `path` and waits until it is complete.
  bool ShowPage(const std::string& path);
  bool ShowMarkup(const std::string& markup) { return ShowPage(files_.Write(markup)); }

  /// The control of that window class and caption, or only of that class.
  HWND Control(const wchar_t* control_class, const wchar_t* caption = nullptr) const;

  /// The browser control's window.
  HWND Browser() const;

  void PressKey(WPARAM key);

 private:
  platform::win32::ComApartment apartment_;
  PageFiles files_;
  std::unique_ptr<platform::MessageLoop> loop_;
  std::unique_ptr<platform::MainWindow> window_;
};

/// The place of `window` within `parent`.
RECT PlaceIn(HWND parent, HWND window);

/// One window for all tests that leave it unchanged, because each start of the control takes a
/// while. It is loaded on first use and unloaded after the last test.
LoadedWindow& SharedWindow();

}  // namespace kitbay::contract
