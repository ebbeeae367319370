#include "platform/win32/window/screen_place.h"

#include <algorithm>

namespace kitbay::platform::win32 {
namespace {

RECT PlaceOf(HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  return place;
}

}  // namespace

void KeepOnScreen(HWND window) {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof(monitor);
  if (!GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor)) return;
  const RECT place = PlaceOf(window);
  const RECT& work = monitor.rcWork;
  const LONG width = std::min(place.right - place.left, work.right - work.left);
  const LONG height = std::min(place.bottom - place.top, work.bottom - work.top);
  const LONG left = std::max(std::min(place.left, work.right - width), work.left);
  const LONG top = std::max(std::min(place.top, work.bottom - height), work.top);
  SetWindowPos(window, nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

void CentreOver(HWND window, HWND other) {
  const RECT around = PlaceOf(other);
  const RECT place = PlaceOf(window);
  const LONG left = (around.left + around.right - (place.right - place.left)) / 2;
  const LONG top = (around.top + around.bottom - (place.bottom - place.top)) / 2;
  SetWindowPos(window, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  KeepOnScreen(window);
}

}  // namespace kitbay::platform::win32
