#include "contract/system/win32/test_window.h"

#include <future>

#include "platform/win32/system/utf.h"

namespace kitbay::contract {
namespace {

constexpr const wchar_t* kClassName = L"Kitbay.Tests.\u00C4";

}  // namespace

TestWindow::TestWindow(const std::string& caption, bool stays) : stays_(stays) {
  std::promise<void> shown;
  thread_ = std::thread([&, wide_caption = platform::win32::ToUtf16(caption)] {
    WNDCLASSW window_class{};
    window_class.lpfnWndProc = &TestWindow::Handle;
    window_class.hInstance = GetModuleHandleW(nullptr);
    window_class.lpszClassName = kClassName;
    RegisterClassW(&window_class);  // there already when another test window was made
    handle_ = CreateWindowExW(0, kClassName, wide_caption.c_str(), WS_OVERLAPPEDWINDOW, 100, 100,
                              300, 200, nullptr, nullptr, window_class.hInstance, this);
    ShowWindow(handle_, SW_SHOWNOACTIVATE);
    thread_id_ = GetCurrentThreadId();
    shown.set_value();
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
      DispatchMessageW(&message);
    }
    if (IsWindow(handle_)) {
      DestroyWindow(handle_);
    }
  });
  shown.get_future().wait();
}

TestWindow::~TestWindow() {
  PostThreadMessageW(thread_id_, WM_QUIT, 0, 0);
  thread_.join();
}

LRESULT CALLBACK TestWindow::Handle(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_NCCREATE) {
    const auto* create = reinterpret_cast<const CREATESTRUCTW*>(lparam);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(create->lpCreateParams));
  }
  auto* self = reinterpret_cast<TestWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (message == WM_CLOSE && self != nullptr) {
    self->close_value_ = *reinterpret_cast<const std::int32_t*>(lparam);
    if (self->stays_) {
      return 0;
    }
  }
  return DefWindowProcW(window, message, wparam, lparam);
}

}  // namespace kitbay::contract
