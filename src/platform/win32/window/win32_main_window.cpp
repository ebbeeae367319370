#include "platform/win32/window/win32_main_window.h"

#include <commctrl.h>

#include "base/failure.h"
#include "platform/win32/com/com_failure.h"
#include "platform/win32/win32_platform.h"
#include "platform/win32/window/screen.h"
#include "platform/win32/window/window_creation.h"
#include "platform/win32/window/window_layout.h"

namespace kitbay::platform::win32 {
namespace {

constexpr const wchar_t* kWindowClass = L"KitbayMainWindow";
constexpr const wchar_t* kCaption = L"Kitbay";

/// Sends a child window the message in `news`, a MSG.
BOOL CALLBACK HandOn(HWND child, LPARAM news) {
  const auto& message = *reinterpret_cast<const MSG*>(news);
  SendMessageW(child, message.message, message.wParam, message.lParam);
  return TRUE;
}

}  // namespace

OleSession::OleSession() { Check(OleInitialize(nullptr)); }
OleSession::~OleSession() { OleUninitialize(); }

Win32MainWindow::Win32MainWindow(Win32MessageLoop& loop) : loop_(loop) {
  loop_.AddKeyFilter(*this);
}

Win32MainWindow::~Win32MainWindow() {
  loop_.RemoveKeyFilter(*this);
  Destroy();
}

WindowHandle Win32MainWindow::Handle() const { return {reinterpret_cast<std::uintptr_t>(window_)}; }

void Win32MainWindow::Load(MainWindowEvents& events) {
  if (window_ != nullptr) {
    return;
  }
  INITCOMMONCONTROLSEX classes{sizeof(classes), ICC_BAR_CLASSES | ICC_PROGRESS_CLASS};
  InitCommonControlsEx(&classes);
  events_ = &events;
  CreateFormWindow();
  try {
    controls_.emplace(window_, events);
    const int dpi = DpiOfWindow(window_);
    dots_per_inch_ = dpi;
    controls_->SetResolution(dpi);
    const Extent extent = InitialWindowExtent(dpi);
    SetWindowPos(window_, nullptr, 0, 0, extent.width, extent.height,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    KeepOnScreen(window_);
    browser_ = std::make_unique<BrowserHost>(window_, controls_->LayOut(),
                                             static_cast<BrowserOwner&>(*this));
  } catch (...) {
    Destroy();
    throw;
  }
}

void Win32MainWindow::CreateFormWindow() {
  RegisterWindowClass(kWindowClass, WindowProcedure);
  CreateWindowExW(0, kWindowClass, kCaption, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT,
                  CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr,
                  GetModuleHandleW(nullptr), this);
  const DWORD error = GetLastError();
  if (window_ == nullptr) {
    throw FailureOf(HRESULT_FROM_WIN32(error));
  }
}

void Win32MainWindow::Unload() {
  if (window_ == nullptr || is_unloading_) {
    return;
  }
  struct DestroyAtEnd {
    Win32MainWindow& window;
    ~DestroyAtEnd() { window.Destroy(); }
  } destroy_at_end{*this};
  is_unloading_ = true;
  events_->Form_Unload();
}

void Win32MainWindow::Destroy() {
  browser_.reset();
  if (window_ != nullptr) {
    DestroyWindow(window_);
  }
  controls_.reset();
  window_ = nullptr;
  last_focus_ = nullptr;
  events_ = nullptr;
  is_unloading_ = false;
}

FormControls& Win32MainWindow::LoadedControls() {
  if (!controls_) {
    throw base::Failure(base::RuntimeError::kObjectVariableNotSet);
  }
  return *controls_;
}

BrowserHost& Win32MainWindow::LoadedBrowser() {
  if (browser_ == nullptr) {
    throw base::Failure(base::RuntimeError::kObjectVariableNotSet);
  }
  return *browser_;
}

void Win32MainWindow::Show() {
  if (window_ == nullptr) {
    throw base::Failure(base::RuntimeError::kObjectVariableNotSet);
  }
  ShowWindow(window_, SW_SHOWNORMAL);
  UpdateWindow(window_);
}

void Win32MainWindow::Navigate(const std::string& path) { LoadedBrowser().Navigate(path); }

// A minimised window has no size to fit to; the page keeps the size that it will have again.
void Win32MainWindow::FitBrowser() {
  BrowserHost& browser = LoadedBrowser();
  if (!IsIconic(window_)) {
    browser.Move(LoadedControls().LayOut());
  }
}

std::shared_ptr<HtmlDocument> Win32MainWindow::ConnectDocument(HtmlDocumentEvents& events) {
  return LoadedBrowser().ConnectDocument(events);
}

void Win32MainWindow::DisconnectDocument() {
  if (browser_ != nullptr) {
    browser_->DisconnectDocument();
  }
}

void Win32MainWindow::SetHelpCursor(const std::string& path) {
  LoadedControls().help().SetCursorFile(path);
}

Looks Win32MainWindow::CurrentLooks() const {
  return {.has_dark_colours = AreColoursDark(), .dots_per_inch = dots_per_inch_};
}

void Win32MainWindow::SetHelpFile(const std::string& topic) { help_file_ = topic; }

StatusBar& Win32MainWindow::status_bar() { return LoadedControls().status_bar(); }

ProgressBar& Win32MainWindow::progress_bar() { return LoadedControls().progress_bar(); }

// A page that cannot be zoomed is shown unchanged.
void Win32MainWindow::ZoomPage(int dpi) {
  constexpr int kWhole = 100;
  if (browser_ != nullptr) {
    browser_->Zoom(MulDiv(kWhole, dpi, kLogicalDpi));
  }
}

void Win32MainWindow::PageComplete() {
  ZoomPage(dots_per_inch_);
  events_->WebBrowser1_DocumentComplete();
}

void Win32MainWindow::PageFailed() { events_->WebBrowser1_NavigateError(); }

LRESULT CALLBACK Win32MainWindow::WindowProcedure(HWND window, UINT message, WPARAM wparam,
                                                  LPARAM lparam) {
  if (message == WM_NCCREATE) {
    const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lparam);
    auto* self = static_cast<Win32MainWindow*>(creation->lpCreateParams);
    self->window_ = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
  }
  auto* self = reinterpret_cast<Win32MainWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (self == nullptr) {
    return DefWindowProcW(window, message, wparam, lparam);
  }
  try {
    return self->HandleMessage(message, wparam, lparam);
  } catch (...) {
    // No exception may pass into the system; the handlers log their own failures.
    return 0;
  }
}

LRESULT Win32MainWindow::HandleMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  const HWND window = window_;
  switch (message) {
    case WM_SIZE:
      if (browser_ != nullptr) {
        FitBrowser();
      }
      return 0;
    case WM_GETMINMAXINFO:
      OnMinMaxInfo(*reinterpret_cast<MINMAXINFO*>(lparam));
      return 0;
    case WM_COMMAND:
      OnCommand(wparam);
      return 0;
    case WM_CTLCOLORSTATIC:
      if (controls_ && reinterpret_cast<HWND>(lparam) == controls_->help().window()) {
        return reinterpret_cast<LRESULT>(
            controls_->help().PrepareColours(reinterpret_cast<HDC>(wparam)));
      }
      break;
    case WM_ACTIVATE:
      OnActivate(LOWORD(wparam) != WA_INACTIVE);
      break;
    case WM_SETFOCUS:
      OnFocus();
      return 0;
    case WM_SYSCOLORCHANGE:
    case WM_SETTINGCHANGE:
      OnColoursChanged(message, wparam, lparam);
      break;
    case kDpiChanged:
      OnDpiChanged(HIWORD(wparam), *reinterpret_cast<const RECT*>(lparam));
      return 0;
    case WM_CLOSE:
      Unload();
      return 0;
    case WM_ENDSESSION:
      if (wparam != FALSE) {
        Unload();
      }
      return 0;
    case WM_NCDESTROY:
      SetWindowLongPtrW(window, GWLP_USERDATA, 0);
      window_ = nullptr;
      break;
    default:
      break;
  }
  return DefWindowProcW(window, message, wparam, lparam);
}

void Win32MainWindow::OnCommand(WPARAM wparam) {
  if (events_ == nullptr || HIWORD(wparam) != BN_CLICKED) {
    return;
  }
  // A label's STN_CLICKED has the same value as a button's BN_CLICKED.
  switch (LOWORD(wparam)) {
    case kDirectoriesId:
      events_->cmdPreference_Click();
      break;
    case kCloseId:
      events_->CmdClose_Click();
      break;
    case kHelpId:
      events_->lblHelp_Click();
      break;
    default:
      break;
  }
}

void Win32MainWindow::OnActivate(bool active) {
  if (!active) {
    const HWND focus = GetFocus();
    last_focus_ = IsChild(window_, focus) ? focus : nullptr;
  }
  if (browser_ != nullptr) {
    browser_->OnWindowActivate(active);
  }
}

void Win32MainWindow::OnFocus() {
  if (last_focus_ != nullptr && IsWindow(last_focus_)) {
    SetFocus(last_focus_);
  } else if (browser_ != nullptr) {
    browser_->TakeFocus(nullptr);
  }
}

void Win32MainWindow::OnDpiChanged(int dpi, const RECT& suggested) {
  if (!controls_) {
    return;
  }
  dots_per_inch_ = dpi;
  controls_->SetResolution(dpi);
  SetWindowPos(window_, nullptr, suggested.left, suggested.top, suggested.right - suggested.left,
               suggested.bottom - suggested.top, SWP_NOZORDER | SWP_NOACTIVATE);
  // A window that keeps its size gets no message about it.
  if (browser_ != nullptr) {
    FitBrowser();
  }
  ZoomPage(dpi);
  events_->LooksChanged();
}

// The system notifies only top-level windows.
void Win32MainWindow::OnColoursChanged(UINT message, WPARAM wparam, LPARAM lparam) {
  MSG news{};
  news.message = message;
  news.wParam = wparam;
  news.lParam = lparam;
  EnumChildWindows(window_, HandOn, reinterpret_cast<LPARAM>(&news));
  if (controls_) {
    controls_->progress_bar().FollowColours();
  }
  if (events_ != nullptr) {
    events_->LooksChanged();
  }
}

void Win32MainWindow::OnMinMaxInfo(MINMAXINFO& info) const {
  const Extent extent = SmallestWindowExtent(DpiOfWindow(window_));
  info.ptMinTrackSize = {extent.width, extent.height};
}

std::unique_ptr<MainWindow> MakeMainWindow(MessageLoop& loop) {
  return std::make_unique<Win32MainWindow>(dynamic_cast<Win32MessageLoop&>(loop));
}

}  // namespace kitbay::platform::win32
