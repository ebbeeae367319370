#include "window_class.h"

#include <stdexcept>

namespace kitbay::web_browser {
namespace {

HINSTANCE ThisLibrary() {
  HMODULE module = nullptr;
  GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      reinterpret_cast<const wchar_t*>(&ThisLibrary), &module);
  return module;
}

}  // namespace

HWND CreateOwnedWindow(const wchar_t* class_name, UINT class_style, WNDPROC procedure, HWND parent,
                       DWORD style, const RECT& place, void* owner) {
  WNDCLASSEXW window_class = {};
  window_class.cbSize = sizeof window_class;
  window_class.style = class_style;
  window_class.lpfnWndProc = procedure;
  window_class.hInstance = ThisLibrary();
  window_class.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));  // IDC_ARROW
  window_class.lpszClassName = class_name;
  RegisterClassExW(&window_class);  // Fails from the second window on, which uses the same class.
  const HWND window =
      CreateWindowExW(0, class_name, L"", style, place.left, place.top, place.right - place.left,
                      place.bottom - place.top, parent, nullptr, window_class.hInstance, owner);
  if (!window) {
    throw std::runtime_error("No window");
  }
  return window;
}

}  // namespace kitbay::web_browser
