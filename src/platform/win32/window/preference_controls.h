#pragma once

#include <windows.h>

#include <string>

#include "platform/win32/system/handles.h"
#include "platform/win32/window/source_list_view.h"
#include "platform/win32/window/window_layout.h"

namespace kitbay::platform::win32 {

/// The numbers under which the controls report to the dialog.
inline constexpr int kUrlBoxId = 201;
inline constexpr int kAddId = 202;
inline constexpr int kSourceListId = 203;
inline constexpr int kRemoveId = 204;
inline constexpr int kPreferenceCloseId = 205;
inline constexpr int kPreferenceStatusId = 206;

/// The dialog's controls, in Tab order. They are destroyed with their window.
class PreferenceControls {
 public:
  /// Throws `base::Failure` with the HRESULT if a control cannot be created.
  explicit PreferenceControls(HWND dialog);

  HWND url_box() const { return url_box_; }
  HWND add() const { return add_; }
  HWND remove() const { return remove_; }
  SourceListView& list() { return list_; }
  const SourceListView& list() const { return list_; }

  std::string UrlText() const;
  void SetUrlText(const std::string& text);
  void SetStatusText(const std::string& text);

  void SetResolution(int dpi);
  void LayOut();

 private:
  int LineHeight() const;

  HWND dialog_;
  int dpi_ = kLogicalDpi;
  UniqueFont font_;
  HWND label_;
  HWND url_box_;
  HWND add_;
  SourceListView list_;
  HWND remove_;
  HWND close_;
  HWND status_bar_;
};

}  // namespace kitbay::platform::win32
