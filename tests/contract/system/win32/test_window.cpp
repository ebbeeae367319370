#include "contract/system/win32/test_window.h"

#include <future>

#include "contract/windows/patience.h"
#include "platform/win32/system/utf.h"

namespace kitbay::contract {
namespace {

constexpr const wchar_t* kClassName = L"Kitbay.Tests.\u00C4";

}  // namespace

TestWindow::TestWindow(const std::string& caption, OnClose on_close)
    : on_close_(on_close),
      may_answer_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      has_looked_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
  std::promise<void> shown;
  thread_ = std::thread([&, wide_caption = platform::win32::ToUtf16(caption)] {
    WNDCLASSW window_class{};
    window_class.lpfnWndProc = &TestWindow::Handle;
    window_class.hInstance = GetModuleHandleW(nullptr);
    window_class.lpszClassName = kClassName;
    RegisterClassW(&window_class);  // fails harmlessly if another test window was created before
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
  LetAnswer();
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
    self->HoldAnswer();
    self->close_value_ = *reinterpret_cast<const std::int32_t*>(lparam);
    SetEvent(self->has_looked_.get());
    if (self->on_close_ == OnClose::kStays) {
      return 0;
    }
  }
  return DefWindowProcW(window, message, wparam, lparam);
}

void TestWindow::HoldAnswer() const {
  if (on_close_ == OnClose::kHangs) {
    WaitForSingleObject(may_answer_.get(), INFINITE);
  }
  if (on_close_ == OnClose::kAsks) {
    const HANDLE may_answer = may_answer_.get();
    while (MsgWaitForMultipleObjects(1, &may_answer, FALSE, INFINITE, QS_ALLINPUT) !=
           WAIT_OBJECT_0) {
      MSG message{};
      while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        DispatchMessageW(&message);
      }
    }
  }
}

void TestWindow::LetAnswer() const { SetEvent(may_answer_.get()); }

std::int32_t TestWindow::AwaitCloseValue() const {
  WaitForSingleObject(has_looked_.get(), kPatienceMs);
  return close_value_;
}

}  // namespace kitbay::contract
