#include "contract/page/windows/loaded_window.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace kitbay::contract {
namespace {

constexpr ULONGLONG kTimeLimitMs = 120'000;
constexpr DWORD kTurnMs = 20;

void CALLBACK LeaveLoop(HWND, UINT, UINT_PTR, DWORD) { PostQuitMessage(0); }

class WindowOfTests : public ::testing::Environment {
 public:
  void TearDown() override { window_.reset(); }

  LoadedWindow& Get() {
    if (window_ == nullptr) {
      window_ = std::make_unique<LoadedWindow>();
      window_->window().Show();
    }
    return *window_;
  }

 private:
  std::unique_ptr<LoadedWindow> window_;
};

// From now on owned by the test framework.
WindowOfTests* const window_of_tests = static_cast<WindowOfTests*>(
    ::testing::AddGlobalTestEnvironment(std::make_unique<WindowOfTests>().release()));

}  // namespace

LoadedWindow::LoadedWindow()
    : loop_(platform::win32::MakeMessageLoop()), window_(platform::win32::MakeMainWindow(*loop_)) {
  window_->Load(*this);
}

LoadedWindow::~LoadedWindow() {
  on_told = [](const std::string&) {};
  window_->Unload();
}

bool LoadedWindow::RunUntil(const std::function<bool()>& is_done) {
  const ULONGLONG start = GetTickCount64();
  // The real loop does the work; a timer interrupts it to check the condition.
  const UINT_PTR timer = SetTimer(nullptr, 0, kTurnMs, LeaveLoop);
  while (!is_done() && GetTickCount64() - start < kTimeLimitMs) {
    loop_->Run();
  }
  KillTimer(nullptr, timer);
  if (is_done()) {
    return true;
  }
  ADD_FAILURE() << "waited in vain";
  return false;
}

void LoadedWindow::RunWaiting() {
  loop_->Quit();
  loop_->Run();
}

bool LoadedWindow::ShowPage(const std::string& path) {
  const auto completed = [this] {
    return std::count(told.begin(), told.end(), "WebBrowser1_DocumentComplete");
  };
  const auto before = completed();
  window_->Navigate(path);
  return RunUntil([&] { return completed() > before; });
}

HWND LoadedWindow::Control(const wchar_t* control_class, const wchar_t* caption) const {
  return FindWindowExW(handle(), nullptr, control_class, caption);
}

HWND LoadedWindow::Browser() const {
  // The child at the top left corner, whatever the control's window class is called.
  return ChildWindowFromPointEx(handle(), {1, 1}, CWP_SKIPINVISIBLE);
}

void LoadedWindow::PressKey(WPARAM key) {
  PostMessageW(GetFocus(), WM_KEYDOWN, key, 1);
  PostMessageW(GetFocus(), WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
  RunWaiting();
}

RECT PlaceIn(HWND parent, HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&place), 2);
  return place;
}

LoadedWindow& SharedWindow() { return window_of_tests->Get(); }

}  // namespace kitbay::contract
