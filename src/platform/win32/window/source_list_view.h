#pragma once

#include <windows.h>

#include <string>

#include "platform/main_window.h"

namespace kitbay::platform::win32 {

/// A list view of one column that fills its width, and of one selected item at most. Items count
/// from 1; positions beyond fail with 9.
class SourceListView {
 public:
  SourceListView(HWND parent, int id);

  HWND window() const { return window_; }

  int Count() const;
  std::string Text(int position) const;
  void Add(const std::string& text);

  /// When the item was selected, the one that takes its place is, or the last one.
  void Remove(int position);

  /// 0 when there is none.
  int Selected() const;

  /// Rows are `row_height` pixels high, or higher where the font needs it.
  void SetFont(HFONT font, int row_height);
  void Place(const Rectangle& place);

 private:
  WPARAM IndexOf(int position) const;
  void FitColumn();
  void SetColumnWidth(int text_width);

  HWND window_;
};

}  // namespace kitbay::platform::win32
