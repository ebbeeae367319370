#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "contract/page/windows/page_files.h"
#include "platform/main_window.h"
#include "platform/win32/win32_platform.h"

namespace kitbay::contract {

/// The real main window on the real message loop, with a record of what it told.
class LoadedWindow : public platform::MainWindowEvents {
 public:
  LoadedWindow();
  ~LoadedWindow() override;
  LoadedWindow(const LoadedWindow&) = delete;
  LoadedWindow& operator=(const LoadedWindow&) = delete;

  platform::MainWindow& window() { return *window_; }
  HWND handle() const { return reinterpret_cast<HWND>(window_->Handle().value); }
  PageFiles& files() { return files_; }

  /// What the window told, as the names of the handlers with their arguments.
  std::vector<std::string> told;

  /// Called after each entry.
  std::function<void(const std::string&)> on_told = [](const std::string&) {};

  /// Handles messages until `is_done`; fails the test and gives false after the time limit.
  bool RunUntil(const std::function<bool()>& is_done);

  /// Handles the messages that are waiting by now.
  void RunWaiting();

  /// Shows the page at `path` and waits until it is complete.
  bool ShowPage(const std::string& path);
  bool ShowMarkup(const std::string& markup) { return ShowPage(files_.Write(markup)); }

  /// The control of that window class and caption, or of that class alone.
  HWND Control(const wchar_t* control_class, const wchar_t* caption = nullptr) const;

  /// The browser control's window.
  HWND Browser() const;

  void PressKey(WPARAM key);

  void Form_Unload() override { Tell("Form_Unload"); }
  void CmdClose_Click() override { Tell("CmdClose_Click"); }
  void cmdPreference_Click() override { Tell("cmdPreference_Click"); }
  void Form_KeyDown(int key_code) override { Tell("Form_KeyDown " + std::to_string(key_code)); }
  void lblHelp_Click() override { Tell("lblHelp_Click"); }
  void lblHelp_MouseMove() override { Tell("lblHelp_MouseMove"); }
  void WebBrowser1_DocumentComplete() override { Tell("WebBrowser1_DocumentComplete"); }

 private:
  void Tell(const std::string& what);

  platform::win32::ComApartment apartment_;
  PageFiles files_;
  std::unique_ptr<platform::MessageLoop> loop_;
  std::unique_ptr<platform::MainWindow> window_;
};

/// One window for the tests that leave it as it is: each start of the control takes a while. It is
/// loaded when first asked for and unloaded after the last test.
LoadedWindow& SharedWindow();

}  // namespace kitbay::contract
