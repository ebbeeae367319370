#include "platform/win32/window/window_class.h"

#include "base/failure.h"
#include "platform/win32/com/com_failure.h"

namespace kitbay::platform::win32 {

void RegisterWindowClass(const wchar_t* name, WNDPROC procedure, int extra_bytes) {
  WNDCLASSEXW description{};
  description.cbSize = sizeof(description);
  description.lpfnWndProc = procedure;
  description.cbWndExtra = extra_bytes;
  description.hInstance = GetModuleHandleW(nullptr);
  description.hIcon = LoadIconW(description.hInstance, MAKEINTRESOURCEW(1));
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_BTNFACE + 1));
  description.lpszClassName = name;
  const ATOM atom = RegisterClassExW(&description);
  const DWORD error = GetLastError();
  if (atom == 0 && error != ERROR_CLASS_ALREADY_EXISTS) throw FailureOf(HRESULT_FROM_WIN32(error));
}

}  // namespace kitbay::platform::win32
