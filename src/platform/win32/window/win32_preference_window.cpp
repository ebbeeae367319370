#include "platform/win32/window/win32_preference_window.h"

#include <commctrl.h>

#include <algorithm>
#include <iterator>

#include "base/failure.h"
#include "platform/win32/com/com_failure.h"
#include "platform/win32/win32_platform.h"
#include "platform/win32/window/screen.h"
#include "platform/win32/window/window_creation.h"
#include "platform/win32/window/window_layout.h"

namespace kitbay::platform::win32 {
namespace {

constexpr wchar_t kDialogClass[] = L"KitbayPreferenceWindow";
constexpr const wchar_t* kDialogCaption = L"Tessel Directories";

/// A dialog without controls, as the system reads it from memory.
struct alignas(DWORD) DialogTemplate {
  DLGTEMPLATE head{};
  WORD menu = 0;
  wchar_t window_class[std::size(kDialogClass)]{};
  wchar_t caption = L'\0';
};

}  // namespace

Win32PreferenceWindow::Win32PreferenceWindow(Win32MessageLoop& loop) : loop_(loop) {
  loop_.AddKeyFilter(*this);
}

Win32PreferenceWindow::~Win32PreferenceWindow() {
  loop_.RemoveKeyFilter(*this);
  events_ = nullptr;
  if (window_ != nullptr) {
    DestroyWindow(window_);
  }
}

void Win32PreferenceWindow::Load(PreferenceWindowEvents& events, WindowHandle owner) {
  if (window_ != nullptr) {
    return;
  }
  INITCOMMONCONTROLSEX classes{sizeof(classes), ICC_BAR_CLASSES | ICC_LISTVIEW_CLASSES};
  InitCommonControlsEx(&classes);
  const auto owner_window = reinterpret_cast<HWND>(owner.value);
  CreateDialogWindow(owner_window);
  try {
    controls_.emplace(window_);
    const int dpi = DpiOfWindow(window_);
    controls_->SetResolution(dpi);
    const Extent extent = InitialPreferenceExtent(dpi);
    SetWindowPos(window_, nullptr, 0, 0, extent.width, extent.height,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    CentreOver(window_, owner_window);
    controls_->LayOut();
  } catch (...) {
    DestroyWindow(window_);
    throw;
  }
  events_ = &events;
}

void Win32PreferenceWindow::CreateDialogWindow(HWND owner) {
  // A separate class, by which other programs can distinguish the dialog from message boxes.
  RegisterWindowClass(kDialogClass, DefDlgProcW, DLGWINDOWEXTRA);
  DialogTemplate dialog;
  dialog.head.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_CLIPCHILDREN;
  dialog.head.dwExtendedStyle = WS_EX_DLGMODALFRAME;
  std::copy(std::begin(kDialogClass), std::end(kDialogClass), dialog.window_class);
  CreateDialogIndirectParamW(GetModuleHandleW(nullptr), &dialog.head, owner, DialogProcedure,
                             reinterpret_cast<LPARAM>(this));
  const DWORD error = GetLastError();
  if (window_ == nullptr) {
    throw FailureOf(HRESULT_FROM_WIN32(error));
  }
  SetWindowTextW(window_, kDialogCaption);
}

void Win32PreferenceWindow::Unload() {
  if (window_ != nullptr && !is_unloading_) {
    DestroyWindow(window_);
  }
}

PreferenceControls& Win32PreferenceWindow::Loaded() {
  if (!controls_) {
    throw base::Failure(base::RuntimeError::kObjectVariableNotSet);
  }
  return *controls_;
}

const PreferenceControls& Win32PreferenceWindow::Loaded() const {
  if (!controls_) {
    throw base::Failure(base::RuntimeError::kObjectVariableNotSet);
  }
  return *controls_;
}

void Win32PreferenceWindow::Show() {
  Loaded();
  ShowWindow(window_, SW_SHOW);
  SetForegroundWindow(window_);
}

std::string Win32PreferenceWindow::UrlText() const { return Loaded().UrlText(); }
void Win32PreferenceWindow::SetUrlText(const std::string& text) { Loaded().SetUrlText(text); }
void Win32PreferenceWindow::FocusUrlBox() { Focus(Loaded().url_box()); }
void Win32PreferenceWindow::FocusAddButton() { Focus(Loaded().add()); }

void Win32PreferenceWindow::EnableRemoveButton(bool enabled) {
  const HWND button = Loaded().remove();
  if (!enabled && GetFocus() == button) {
    Focus(controls_->list().window());
  }
  EnableWindow(button, enabled);
}

int Win32PreferenceWindow::ItemCount() const { return Loaded().list().Count(); }

std::string Win32PreferenceWindow::ItemText(int position) const {
  return Loaded().list().Text(position);
}

void Win32PreferenceWindow::AddItem(const std::string& text) { Loaded().list().Add(text); }

void Win32PreferenceWindow::RemoveItem(int position) {
  SourceListView& list = Loaded().list();
  list.Remove(position);
  // The list itself only reports items that exist.
  if (list.Count() == 0) {
    events_->lstPrefURL_SelectionChange();
  }
}

int Win32PreferenceWindow::SelectedItem() const { return Loaded().list().Selected(); }

void Win32PreferenceWindow::SetStatusText(const std::string& text) { Loaded().SetStatusText(text); }

// The dialog's own way to set the focus: it also moves the frame of the default button.
void Win32PreferenceWindow::Focus(HWND control) {
  SendMessageW(window_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
}

INT_PTR CALLBACK Win32PreferenceWindow::DialogProcedure(HWND window, UINT message, WPARAM wparam,
                                                        LPARAM lparam) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(window, DWLP_USER, lparam);
    reinterpret_cast<Win32PreferenceWindow*>(lparam)->window_ = window;
    return FALSE;
  }
  auto* self = reinterpret_cast<Win32PreferenceWindow*>(GetWindowLongPtrW(window, DWLP_USER));
  if (self == nullptr) {
    return FALSE;
  }
  try {
    return self->HandleMessage(message, wparam, lparam) ? TRUE : FALSE;
  } catch (...) {
    // No exception may pass into the system; the handlers log their own failures.
    return TRUE;
  }
}

bool Win32PreferenceWindow::HandleMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_SIZE:
      if (controls_ && wparam != SIZE_MINIMIZED) {
        controls_->LayOut();
      }
      return true;
    case WM_GETMINMAXINFO:
      OnMinMaxInfo(*reinterpret_cast<MINMAXINFO*>(lparam));
      return true;
    case WM_COMMAND:
      OnCommand(wparam);
      return true;
    case WM_NOTIFY:
      OnNotify(*reinterpret_cast<const NMHDR*>(lparam));
      return false;
    case kDpiChanged:
      OnDpiChanged(HIWORD(wparam), *reinterpret_cast<const RECT*>(lparam));
      return true;
    case WM_CLOSE:
      Unload();
      return true;
    case WM_ENDSESSION:
      if (wparam != FALSE) {
        Unload();
      }
      return true;
    case WM_DESTROY:
      OnDestroy();
      return true;
    case WM_NCDESTROY:
      SetWindowLongPtrW(window_, DWLP_USER, 0);
      window_ = nullptr;
      controls_.reset();
      is_unloading_ = false;
      return false;
    default:
      return false;
  }
}

// The window may be destroyed with its owner as well as by `Unload`. Its controls still exist.
void Win32PreferenceWindow::OnDestroy() {
  is_unloading_ = true;
  if (events_ != nullptr) {
    events_->Form_Unload();
  }
  events_ = nullptr;
}

void Win32PreferenceWindow::OnCommand(WPARAM wparam) {
  if (events_ == nullptr || HIWORD(wparam) != BN_CLICKED) {
    return;
  }
  switch (LOWORD(wparam)) {
    case kAddId:
      events_->cmdPrefOk_Click();
      break;
    case kRemoveId:
      events_->Command1_Click();
      break;
    case kPreferenceCloseId:
      events_->cmdPrefClose_Click();
      break;
    default:
      break;
  }
}

void Win32PreferenceWindow::OnNotify(const NMHDR& notification) {
  if (events_ == nullptr || notification.idFrom != kSourceListId) {
    return;
  }
  switch (notification.code) {
    case LVN_KEYDOWN:
      events_->lstPrefURL_KeyDown(reinterpret_cast<const NMLVKEYDOWN&>(notification).wVKey);
      break;
    case NM_CLICK:
    case NM_RCLICK:
      events_->lstPrefURL_MouseUp();
      break;
    case LVN_ITEMCHANGED: {
      const auto& change = reinterpret_cast<const NMLISTVIEW&>(notification);
      if (((change.uNewState ^ change.uOldState) & LVIS_SELECTED) != 0) {
        events_->lstPrefURL_SelectionChange();
      }
      break;
    }
    default:
      break;
  }
}

void Win32PreferenceWindow::OnDpiChanged(int dpi, const RECT& suggested) {
  if (!controls_) {
    return;
  }
  controls_->SetResolution(dpi);
  SetWindowPos(window_, nullptr, suggested.left, suggested.top, suggested.right - suggested.left,
               suggested.bottom - suggested.top, SWP_NOZORDER | SWP_NOACTIVATE);
  // A window that keeps its size gets no message about it.
  controls_->LayOut();
}

void Win32PreferenceWindow::OnMinMaxInfo(MINMAXINFO& info) const {
  const Extent extent = SmallestPreferenceExtent(DpiOfWindow(window_));
  info.ptMinTrackSize = {extent.width, extent.height};
}

bool Win32PreferenceWindow::HandleKey(MSG& message) {
  if (window_ == nullptr || events_ == nullptr) {
    return false;
  }
  if (message.hwnd != window_ && !IsChild(window_, message.hwnd)) {
    return false;
  }
  try {
    return HandleOwnKey(message);
  } catch (...) {
    // The handlers log their own failures; the key goes no further.
    return true;
  }
}

// Enter goes to the text box or presses the focused button, but never also presses the default
// button.
bool Win32PreferenceWindow::HandleOwnKey(MSG& message) {
  const bool is_key_down = message.message == WM_KEYDOWN;
  if (is_key_down && message.hwnd == controls_->url_box()) {
    events_->txtPrefUrl_KeyDown(static_cast<int>(message.wParam));
  }
  if (is_key_down && message.wParam == VK_RETURN) {
    if ((SendMessageW(message.hwnd, WM_GETDLGCODE, 0, 0) & DLGC_BUTTON) != 0) {
      SendMessageW(message.hwnd, BM_CLICK, 0, 0);
    }
    return true;
  }
  return window_ == nullptr || IsDialogMessageW(window_, &message) != FALSE;
}

std::unique_ptr<PreferenceWindow> MakePreferenceWindow(MessageLoop& loop) {
  return std::make_unique<Win32PreferenceWindow>(dynamic_cast<Win32MessageLoop&>(loop));
}

}  // namespace kitbay::platform::win32
