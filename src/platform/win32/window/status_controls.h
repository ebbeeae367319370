#pragma once

#include <windows.h>

#include <string>

#include "platform/main_window.h"

namespace kitbay::platform::win32 {

/// The status bar with two panels: one for the progress bar, one for the status text.
class CommonStatusBar final : public StatusBar {
 public:
  CommonStatusBar(HWND parent, int id);

  HWND window() const { return window_; }
  int Height() const;

  /// Fits the bar to its parent's width.
  void FitToParent();
  void SetResolution(int dpi, HFONT font);

  std::string PanelText(int panel) const override;
  void SetPanelText(int panel, const std::string& text) override;
  void Announce(int panel) override;
  Rectangle PanelRectangle(int panel) const override;

 private:
  HWND window_;
};

class CommonProgressBar final : public ProgressBar {
 public:
  /// Starts as a hidden child of `form`.
  CommonProgressBar(HWND form, int id, const CommonStatusBar& status_bar);

  /// Moves the bar to the status bar's first panel, if it lies in the status bar.
  void FollowStatusBar();

  /// Applies the user's current colours.
  void FollowColours();

  void SetParent(bool status_bar) override;
  void Move(const Rectangle& place) override;
  void SetVisible(bool visible) override;
  void SetValue(int percent) override;

 private:
  HWND form_;
  const CommonStatusBar& status_bar_;
  HWND window_;
};

}  // namespace kitbay::platform::win32
