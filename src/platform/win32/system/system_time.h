#pragma once

#include <windows.h>

#include "platform/clock.h"

namespace kitbay::platform::win32 {

/// The parts of `time` as the system represents them, without the day of the week.
inline SYSTEMTIME ToSystemTime(const LocalTime& time) {
  SYSTEMTIME parts{};
  parts.wYear = static_cast<WORD>(time.year);
  parts.wMonth = static_cast<WORD>(time.month);
  parts.wDay = static_cast<WORD>(time.day);
  parts.wHour = static_cast<WORD>(time.hour);
  parts.wMinute = static_cast<WORD>(time.minute);
  parts.wSecond = static_cast<WORD>(time.second);
  return parts;
}

}  // namespace kitbay::platform::win32
