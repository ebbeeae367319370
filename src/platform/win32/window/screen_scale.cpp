#include "platform/win32/window/screen_scale.h"

#include <cstring>

namespace kitbay::platform::win32 {
namespace {

int DpiOfScreen(HWND window) {
  const HDC device = GetDC(window);
  if (device == nullptr) return USER_DEFAULT_SCREEN_DPI;
  const int dpi = GetDeviceCaps(device, LOGPIXELSY);
  ReleaseDC(window, device);
  return dpi;
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

}  // namespace kitbay::platform::win32
