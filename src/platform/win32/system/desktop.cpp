#include "platform/desktop.h"

#include <windows.h>

#include <memory>

#include "base/failure.h"
#include "platform/win32/system/desktop_user.h"
#include "platform/win32/system/handles.h"
#include "platform/win32/system/held_windows.h"
#include "platform/win32/system/help_viewer.h"
#include "platform/win32/system/system_path.h"
#include "platform/win32/system/utf.h"
#include "platform/win32/win32_platform.h"

namespace kitbay::platform::win32 {
namespace {

using base::Failure;
using base::RuntimeError;

HWND ToSystem(WindowHandle window) { return reinterpret_cast<HWND>(window.value); }

Failure StartFailure(DWORD error) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
      return Failure(RuntimeError::kFileNotFound);
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
      return Failure(RuntimeError::kPermissionDenied);
    default:
      return Failure(RuntimeError::kInvalidProcedureCall);
  }
}

/// The process that owns a window of another program.
UniqueKernelObject OtherProcessOf(HWND window) {
  DWORD id = 0;
  GetWindowThreadProcessId(window, &id);
  return UniqueKernelObject(
      id != 0 && id != GetCurrentProcessId() ? OpenProcess(SYNCHRONIZE, FALSE, id) : nullptr);
}

/// Waits up to `kEndPatienceMs` for a process to end. Meanwhile answers what it sends to windows of
/// this thread, because it may be waiting for that; handles no other messages.
void AwaitEnd(HANDLE process) {
  const ULONGLONG limit = GetTickCount64() + kEndPatienceMs;
  for (ULONGLONG now = GetTickCount64(); now < limit; now = GetTickCount64()) {
    const auto left = static_cast<DWORD>(limit - now);
    if (MsgWaitForMultipleObjects(1, &process, FALSE, left, QS_SENDMESSAGE) != WAIT_OBJECT_0 + 1) {
      return;
    }
    MSG message{};
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
  }
}

class Win32Desktop : public Desktop {
 public:
  int PlatformId() const override {
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof(version);
    return GetVersionExW(&version) ? static_cast<int>(version.dwPlatformId) : 0;
  }

  int ShowMessage(const std::string& text, const std::string& title, int style) override {
    const HWND owner = GetActiveWindow();
    const HeldWindows others(owner);
    const UINT flags = owner != nullptr ? 0 : MB_SETFOREGROUND;
    const int answer = MessageBoxW(owner, ToUtf16(text).c_str(), ToUtf16(title).c_str(),
                                   static_cast<UINT>(style) | flags);
    if (answer == 0) {
      throw Failure(RuntimeError::kOutOfMemory);
    }
    return answer;
  }

  void DisplayHelpTopic(const std::string& topic) override { help_.DisplayTopic(topic); }
  void CloseAllHelp() override { help_.CloseAll(); }

  void PassForegroundRight() override { AllowSetForegroundWindow(ASFW_ANY); }

  void SetWindowPos(WindowHandle window, std::intptr_t insert_after, unsigned flags) override {
    ::SetWindowPos(ToSystem(window), reinterpret_cast<HWND>(insert_after), 0, 0, 0, 0, flags);
  }
  void ShowWindow(WindowHandle window, int command) override {
    ::ShowWindow(ToSystem(window), command);
  }
  void SetActiveWindow(WindowHandle window) override { ::SetActiveWindow(ToSystem(window)); }

  WindowHandle FindTopWindow(const std::string& window_class, const std::string& caption) override {
    return {reinterpret_cast<std::uintptr_t>(
        FindWindowW(ToUtf16(window_class).c_str(), ToUtf16(caption).c_str()))};
  }

  void SendClose(WindowHandle window) override {
    // The window may read the value long after this call has given up.
    static std::int32_t zero;
    zero = 0;
    DWORD_PTR ignored = 0;
    const UniqueKernelObject process = OtherProcessOf(ToSystem(window));
    SendMessageTimeoutW(ToSystem(window), WM_CLOSE, 0, reinterpret_cast<LPARAM>(&zero),
                        SMTO_ABORTIFHUNG, kClosePatienceMs, &ignored);
    if (process && !IsWindowVisible(ToSystem(window))) {
      AwaitEnd(process.get());
    }
  }

  std::optional<int> ProgramBits(const std::string& path) const override {
    DWORD type = 0;
    if (path.empty() || !GetBinaryTypeW(ToSystemPath(path).c_str(), &type)) {
      return std::nullopt;
    }
    switch (type) {
      case SCS_32BIT_BINARY:
        return 32;
      case SCS_64BIT_BINARY:
        return 64;
      default:
        return std::nullopt;
    }
  }

  void StartProgram(const std::string& path) override {
    const std::wstring program = ToSystemPath(path);
    std::wstring command_line = L"\"" + program + L"\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_SHOWNORMAL;
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(program.c_str(), command_line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                        nullptr, &startup, &started)) {
      throw StartFailure(GetLastError());
    }
    const UniqueKernelObject process(started.hProcess);
    const UniqueKernelObject thread(started.hThread);
  }

  void StartProgramAsUser(const std::string& path) override { StartAsDesktopUser(path); }

 private:
  HelpViewer help_;
};

}  // namespace

std::unique_ptr<Desktop> MakeDesktop() { return std::make_unique<Win32Desktop>(); }

}  // namespace kitbay::platform::win32
