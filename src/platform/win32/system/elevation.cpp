#include "platform/elevation.h"

#include <windows.h>
// After windows.h, which it needs.
#include <shellapi.h>

#include <memory>
#include <string>

#include "platform/win32/system/handles.h"
#include "platform/win32/system/system_path.h"
#include "platform/win32/win32_platform.h"

namespace kitbay::platform::win32 {
namespace {

// Set while the question is asked, so that a process that was started without the rights inherits
// it (the question can be switched off for a whole machine). A process with the rights does not
// need it.
constexpr const wchar_t* kAskedVariable = L"KITBAY_ASKED_FOR_RIGHTS";

bool TakeAskedMark() {
  const bool is_asked = GetEnvironmentVariableW(kAskedVariable, nullptr, 0) != 0;
  SetEnvironmentVariableW(kAskedVariable, nullptr);
  return is_asked;
}

std::wstring OwnExecutable() {
  const ProgramPlace place = FindProgramPlace();
  return ToSystemPath(place.folder + "\\" + place.name + ".exe");
}

class Win32Elevation : public Elevation {
 public:
  bool HasAdministratorRights() const override {
    UniqueKernelObject token;
    TOKEN_ELEVATION elevation{};
    DWORD size = 0;
    return OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, token.put()) &&
           GetTokenInformation(token.get(), TokenElevation, &elevation, sizeof elevation, &size) &&
           elevation.TokenIsElevated != 0;
  }

  ElevationAnswer StartWithAdministratorRights() override {
    if (is_asked_) {
      return ElevationAnswer::kUnavailable;
    }
    is_asked_ = true;
    const std::wstring program = OwnExecutable();
    SHELLEXECUTEINFOW start{};
    start.cbSize = sizeof start;
    start.fMask = SEE_MASK_NOASYNC | SEE_MASK_FLAG_NO_UI;
    start.lpVerb = L"runas";
    start.lpFile = program.c_str();
    start.nShow = SW_SHOWNORMAL;
    SetEnvironmentVariableW(kAskedVariable, L"1");
    const bool is_started = ShellExecuteExW(&start) != FALSE;
    const DWORD error = GetLastError();
    SetEnvironmentVariableW(kAskedVariable, nullptr);
    if (is_started) {
      return ElevationAnswer::kStarted;
    }
    return error == ERROR_CANCELLED ? ElevationAnswer::kDeclined : ElevationAnswer::kUnavailable;
  }

 private:
  bool is_asked_ = TakeAskedMark();
};

}  // namespace

std::unique_ptr<Elevation> MakeElevation() { return std::make_unique<Win32Elevation>(); }

}  // namespace kitbay::platform::win32
