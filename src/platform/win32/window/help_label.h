#pragma once

#include <windows.h>

#include <string>

#include "platform/main_window.h"
#include "platform/win32/system/handles.h"
#include "platform/win32/window/window_layout.h"

namespace kitbay::platform::win32 {

/// The label "Help" in the looks of a link, with a cursor of its own. Its clicks come to the parent
/// window as STN_CLICKED.
class HelpLabel {
 public:
  HelpLabel(HWND parent, int id, MainWindowEvents& events);
  HelpLabel(const HelpLabel&) = delete;
  HelpLabel& operator=(const HelpLabel&) = delete;

  HWND window() const { return window_; }

  /// Loads the cursor file at `path`. Fails with 53 when there is no such file, with 481 when it is
  /// no cursor; the cursor stays as it was then.
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
