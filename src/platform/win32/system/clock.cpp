#include "platform/clock.h"

#include <windows.h>
// After windows.h, which it needs.
#include <oleauto.h>

#include <memory>
#include <string_view>

#include "base/failure.h"
#include "platform/win32/system/handles.h"
#include "platform/win32/system/system_time.h"
#include "platform/win32/system/utf.h"
#include "platform/win32/win32_platform.h"

namespace kitbay::platform::win32 {
namespace {

struct BstrTraits {
  using Type = BSTR;
  static Type Invalid() { return nullptr; }
  static void Close(Type text) { SysFreeString(text); }
};
using UniqueBstr = UniqueHandle<BstrTraits>;

class Win32Clock : public Clock {
 public:
  LocalTime Now() const override {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond};
  }

  std::string GeneralDate(const LocalTime& time) const override {
    SYSTEMTIME parts = ToSystemTime(time);
    DATE date = 0;
    UniqueBstr text;
    if (!SystemTimeToVariantTime(&parts, &date) ||
        FAILED(VarBstrFromDate(date, LOCALE_USER_DEFAULT, 0, text.put()))) {
      throw base::Failure(base::RuntimeError::kInvalidProcedureCall);
    }
    return ToUtf8(std::wstring_view(text.get(), SysStringLen(text.get())));
  }
};

}  // namespace

std::unique_ptr<Clock> MakeClock() { return std::make_unique<Win32Clock>(); }

}  // namespace kitbay::platform::win32
