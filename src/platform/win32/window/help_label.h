#pragma once

#include <windows.h>

#include <string>

#include "platform/main_window.h"
#include "platform/win32/system/handles.h"
#include "platform/win32/window/window_layout.h"

namespace kitbay::platform::win32 {

/// The label "Help", which looks like a link and has its own cursor. Clicks reach the parent window
/// as STN_CLICKED.
class HelpLabel {
 public:
  HelpLabel(HWND parent, int id, MainWindowEvents& events);
  HelpLabel(const HelpLabel&) = delete;
  HelpLabel& operator=(const HelpLabel&) = delete;

  HWND window() const { return window_; }

  /// Loads the cursor file at `path`. Fails with 53 if there is no such file, with 481 if it is not
  /// a cursor; the previous cursor then stays.
  void SetCursorFile(const std::string& path);

  void SetResolution(int dpi);
  Extent TextExtent() const;

  /// Sets the colours in which the label is about to be drawn, and returns its background.
  HBRUSH PrepareColours(HDC device) const;

 private:
  static LRESULT CALLBACK Subclass(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                   UINT_PTR, DWORD_PTR label);
  void ShowCursor() const;

  HWND window_;
  MainWindowEvents& events_;
  UniqueFont font_;
  UniqueCursor cursor_;
};

}  // namespace kitbay::platform::win32
