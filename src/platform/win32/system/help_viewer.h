#pragma once

#include <windows.h>

#include <string>

namespace kitbay::platform::win32 {

/// The system's viewer of HTML help, loaded when the first topic is shown.
class HelpViewer {
 public:
  /// Shows a topic ("file.chm::/page.html") with the desktop as owner. Throws `base::Failure`: 53
  /// if the help file or the viewer is missing, 75 if the viewer does not show the topic.
  void DisplayTopic(const std::string& topic);

  /// Closes every help window of this program.
  void CloseAll();

 private:
  using HtmlHelpFunction = HWND(WINAPI*)(HWND, LPCWSTR, UINT, DWORD_PTR);

  HtmlHelpFunction html_help_ = nullptr;
};

}  // namespace kitbay::platform::win32
