#pragma once

#include <windows.h>

#include <string>

#include "platform/main_window.h"

namespace kitbay::platform::win32 {

/// A list view of one column that fills its width, with at most one selected item. Items count from
/// 1; positions beyond the end fail with 9.
class SourceListView {
 public:
  SourceListView(HWND parent, int id);

  HWND window() const { return window_; }

  int Count() const;
  std::string Text(int position) const;
  void Add(const std::string& text);

  /// If the item was selected, the item that takes its place is selected next, or the last one.
  void Remove(int position);

  /// 0 if none is selected.
  int Selected() const;

  /// Rows are `row_height` pixels high, or higher if the font needs it.
  void SetFont(HFONT font, int row_height);
  void Place(const Rectangle& place);

 private:
  WPARAM IndexOf(int position) const;
  void FitColumn();
  void SetColumnWidth(int text_width);

  HWND window_;
};

}  // namespace kitbay::platform::win32
