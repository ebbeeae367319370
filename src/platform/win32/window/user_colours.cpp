#include "platform/win32/window/user_colours.h"

#include <windows.h>

namespace kitbay::platform::win32 {
namespace {

/// The approximate brightness of a colour; green counts most.
int BrightnessOf(DWORD colour) {
  return 2 * GetRValue(colour) + 5 * GetGValue(colour) + GetBValue(colour);
}

}  // namespace

bool AreColoursDark() {
  return BrightnessOf(GetSysColor(COLOR_BTNFACE)) < BrightnessOf(GetSysColor(COLOR_BTNTEXT));
}

}  // namespace kitbay::platform::win32
