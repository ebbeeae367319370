#include "control_window.h"

#include <windowsx.h>

#include <exception>
#include <utility>

#include "window_class.h"

namespace kitbay::web_browser {
namespace {

constexpr wchar_t kClassName[] = L"WebBrowserStandin";
constexpr int kPixelsPerWheelStep = 100;

struct MouseMessage {
  UINT message;
  const char* type;
  const char* button;
  int clicks;
};

constexpr MouseMessage kMouseMessages[] = {
    {WM_MOUSEMOVE, "mouseMoved", "none", 0},       {WM_LBUTTONDOWN, "mousePressed", "left", 1},
    {WM_LBUTTONDBLCLK, "mousePressed", "left", 2}, {WM_LBUTTONUP, "mouseReleased", "left", 1},
    {WM_RBUTTONDOWN, "mousePressed", "right", 1},  {WM_RBUTTONUP, "mouseReleased", "right", 1},
    {WM_MBUTTONDOWN, "mousePressed", "middle", 1}, {WM_MBUTTONUP, "mouseReleased", "middle", 1},
};

bool IsDown(int key) { return (GetKeyState(key) & 0x8000) != 0; }

/** Alt 1, Control 2, Shift 8. */
int Modifiers() {
  return (IsDown(VK_MENU) ? 1 : 0) | (IsDown(VK_CONTROL) ? 2 : 0) | (IsDown(VK_SHIFT) ? 8 : 0);
}

/** Left 1, right 2, middle 4, from the key state of a mouse message. */
int Buttons(WPARAM keys) {
  return ((keys & MK_LBUTTON) ? 1 : 0) | ((keys & MK_RBUTTON) ? 2 : 0) |
         ((keys & MK_MBUTTON) ? 4 : 0);
}

SIZE SizeOf(const RECT& place) { return {place.right - place.left, place.bottom - place.top}; }

}  // namespace

ControlWindow::ControlWindow(HWND parent, const RECT& place, ControlWindowEvents& events)
    : events_(events) {
  window_ = CreateOwnedWindow(kClassName, CS_DBLCLKS, Procedure, parent,
                              WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS, place, this);
  events_.OnResized(SizeOf(place).cx, SizeOf(place).cy);
}

ControlWindow::~ControlWindow() { DestroyWindow(window_); }

void ControlWindow::Place(const RECT& place) {
  SetWindowPos(window_, nullptr, place.left, place.top, SizeOf(place).cx, SizeOf(place).cy,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

void ControlWindow::Show(const Picture& picture, int number) {
  picture_ = &picture;
  picture_number_ = number;
  InvalidateRect(window_, nullptr, FALSE);
}

LRESULT CALLBACK ControlWindow::Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  auto* control = OwnerOf<ControlWindow>(window, message, lparam);
  // While the window is being created or destroyed, its owner does not have it.
  if (!control || control->window_ != window) {
    return DefWindowProcW(window, message, wparam, lparam);
  }
  try {
    return control->Handle(message, wparam, lparam);
  } catch (const std::exception& error) {
    OutputDebugStringA(error.what());
    return 0;
  }
}

LRESULT ControlWindow::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_PAINT:
      Paint();
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_SIZE:
      events_.OnResized(LOWORD(lparam), HIWORD(lparam));
      return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      events_.OnFocus(message == WM_SETFOCUS);
      return 0;
    case WM_GETDLGCODE:
      return DLGC_WANTARROWS | DLGC_WANTCHARS;
    case WM_KEYDOWN:
    case WM_KEYUP:
    case WM_CHAR:
      Key(message, wparam);
      return 0;
    case WM_MOUSEWHEEL:
      Wheel(wparam, lparam);
      return 0;
    case WM_SYSCOLORCHANGE:
      events_.OnColorsChanged();
      return 0;
    case WM_CAPTURECHANGED:
      return 0;
    default:
      if (message < WM_MOUSEFIRST || message > WM_MOUSELAST) {
        break;
      }
      Mouse(message, wparam, lparam);
      return 0;
  }
  return DefWindowProcW(window_, message, wparam, lparam);
}

void ControlWindow::Paint() {
  PAINTSTRUCT paint;
  const HDC target = BeginPaint(window_, &paint);
  RECT place;
  GetClientRect(window_, &place);
  if (picture_) {
    picture_->Paint(target, place);
  } else {
    FillRect(target, &place, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
  }
  EndPaint(window_, &paint);
  GdiFlush();
  if (picture_) {
    events_.OnPainted(picture_number_);
  }
}

void ControlWindow::Mouse(UINT message, WPARAM wparam, LPARAM lparam) {
  for (const MouseMessage& known : kMouseMessages) {
    if (known.message != message) {
      continue;
    }
    const bool is_press = known.type == std::string_view("mousePressed");
    if (is_press) {
      events_.OnPressed();
      SetCapture(window_);
    } else if (message != WM_MOUSEMOVE && Buttons(wparam) == 0) {
      ReleaseCapture();
    }
    events_.OnInput({{"op", "mouse"},
                     {"type", known.type},
                     {"x", GET_X_LPARAM(lparam)},
                     {"y", GET_Y_LPARAM(lparam)},
                     {"button", known.button},
                     {"buttons", Buttons(wparam)},
                     {"count", known.clicks},
                     {"mods", Modifiers()}});
  }
}

void ControlWindow::Wheel(WPARAM wparam, LPARAM lparam) {
  POINT point = {GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)};
  ScreenToClient(window_, &point);
  const int steps = GET_WHEEL_DELTA_WPARAM(wparam);
  if ((GET_KEYSTATE_WPARAM(wparam) & MK_CONTROL) != 0) {
    events_.OnZoomWheel(steps / WHEEL_DELTA);
    return;
  }
  events_.OnInput({{"op", "mouse"},
                   {"type", "mouseWheel"},
                   {"x", static_cast<int>(point.x)},
                   {"y", static_cast<int>(point.y)},
                   {"button", "none"},
                   {"buttons", 0},
                   {"count", 0},
                   {"mods", Modifiers()},
                   {"dx", 0},
                   {"dy", -steps * kPixelsPerWheelStep / WHEEL_DELTA}});
}

void ControlWindow::Key(UINT message, WPARAM wparam) {
  const bool is_character = message == WM_CHAR;
  // Control characters have had their effect as keys, except Enter.
  if (is_character && wparam < 0x20 && wparam != L'\r') {
    return;
  }
  const auto character = static_cast<wchar_t>(wparam);
  const char* type = message == WM_KEYDOWN ? "rawKeyDown" : message == WM_KEYUP ? "keyUp" : "char";
  events_.OnInput({{"op", "key"},
                   {"type", type},
                   {"vk", is_character ? 0 : static_cast<int>(wparam)},
                   {"text", is_character ? ToUtf8({&character, 1}) : ""},
                   {"mods", Modifiers()}});
}

}  // namespace kitbay::web_browser
