#include "platform/win32/window/screen.h"

#include <windows.h>

#include <algorithm>
#include <cstring>

namespace kitbay::platform::win32 {
namespace {

int DpiOfScreen(HWND window) {
  const HDC device = GetDC(window);
  if (device == nullptr) {
    return USER_DEFAULT_SCREEN_DPI;
  }
  const int dpi = GetDeviceCaps(device, LOGPIXELSY);
  ReleaseDC(window, device);
  return dpi;
}

RECT PlaceOf(HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  return place;
}

/// The approximate brightness of a colour; green counts most.
int BrightnessOf(DWORD colour) {
  return 2 * GetRValue(colour) + 5 * GetGValue(colour) + GetBValue(colour);
}

}  // namespace

int ScaleToDpi(int logical, int dpi) { return (logical * dpi + kLogicalDpi / 2) / kLogicalDpi; }

Extent ScaleToDpi(Extent logical, int dpi) {
  return {ScaleToDpi(logical.width, dpi), ScaleToDpi(logical.height, dpi)};
}

int DpiOfWindow(HWND window) {
  // Looked up, because systems before Windows 10 have one resolution for all windows.
  using GetDpi = UINT(WINAPI*)(HWND);
  const FARPROC address = GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetDpiForWindow");
  GetDpi get_dpi = nullptr;
  static_assert(sizeof(get_dpi) == sizeof(address));
  std::memcpy(&get_dpi, &address, sizeof(get_dpi));
  const UINT dpi = get_dpi == nullptr ? 0 : get_dpi(window);
  return dpi == 0 ? DpiOfScreen(window) : static_cast<int>(dpi);
}

UniqueFont MakeProgramFont(int dpi, bool underlined) {
  constexpr int kPoints = 8;
  constexpr int kPointsPerInch = 72;
  return UniqueFont(CreateFontW(-MulDiv(kPoints, dpi, kPointsPerInch), 0, 0, 0, FW_NORMAL, FALSE,
                                underlined, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                                CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH | FF_SWISS,
                                L"Verdana"));
}

void KeepOnScreen(HWND window) {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof(monitor);
  if (!GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor)) {
    return;
  }
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

bool AreColoursDark() {
  return BrightnessOf(GetSysColor(COLOR_BTNFACE)) < BrightnessOf(GetSysColor(COLOR_BTNTEXT));
}

}  // namespace kitbay::platform::win32
