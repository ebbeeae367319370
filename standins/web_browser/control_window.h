#pragma once

#include <windows.h>

#include <functional>

#include "json.h"
#include "picture.h"

namespace kitbay::web_browser {

/** What a window of the control reports to it. */
class ControlWindowEvents {
 public:
  virtual ~ControlWindowEvents() = default;
  /** Input for the helper, a message {op: "mouse" or "key", ...}. */
  virtual void OnInput(Json message) = 0;
  virtual void OnResized(int width, int height) = 0;
  /** The window shows the picture of that number. */
  virtual void OnPainted(int number) = 0;
  virtual void OnFocus(bool has_focus) = 0;
  virtual void OnPressed() = 0;
  /** The system's colours have changed. */
  virtual void OnColorsChanged() = 0;
  /** The wheel was turned while Control was held down; forward is positive. */
  virtual void OnZoomWheel(int steps) = 0;
};

/** The child window that shows the page's pictures and takes the user's input. */
class ControlWindow {
 public:
  ControlWindow(HWND parent, const RECT& place, ControlWindowEvents& events);
  ~ControlWindow();
  ControlWindow(const ControlWindow&) = delete;
  ControlWindow& operator=(const ControlWindow&) = delete;

  HWND handle() const { return window_; }
  void Place(const RECT& place);
  /** Shows a picture soon; the picture must live as long as the window. */
  void Show(const Picture& picture, int number);

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam);
  void Paint();
  void Mouse(UINT message, WPARAM wparam, LPARAM lparam);
  void Wheel(WPARAM wparam, LPARAM lparam);
  void Key(UINT message, WPARAM wparam);

  ControlWindowEvents& events_;
  HWND window_ = nullptr;
  const Picture* picture_ = nullptr;
  int picture_number_ = 0;
};

}  // namespace kitbay::web_browser
