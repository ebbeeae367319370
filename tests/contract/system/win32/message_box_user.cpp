#include "contract/system/win32/message_box_user.h"

#include "contract/windows/patience.h"
#include "platform/win32/system/utf.h"

namespace kitbay::contract {
namespace {

constexpr const wchar_t* kDialogClass = L"#32770";

// A hook has no argument of its own.
thread_local HANDLE shown_event = nullptr;

LRESULT CALLBACK TellWhenShown(int code, WPARAM wparam, LPARAM lparam) {
  if (code == HCBT_ACTIVATE) {
    wchar_t name[16] = L"";
    GetClassNameW(reinterpret_cast<HWND>(wparam), name, 16);
    if (std::wstring(name) == kDialogClass) {
      SetEvent(shown_event);
    }
  }
  return CallNextHookEx(nullptr, code, wparam, lparam);
}

/// Whether a label of the dialog has the text.
bool HasText(HWND dialog, const std::wstring& text) {
  for (HWND label = FindWindowExW(dialog, nullptr, L"Static", nullptr); label != nullptr;
       label = FindWindowExW(dialog, label, L"Static", nullptr)) {
    std::wstring shown(text.size() + 2, L'\0');
    shown.resize(static_cast<std::size_t>(
        SendMessageW(label, WM_GETTEXT, shown.size(), reinterpret_cast<LPARAM>(shown.data()))));
    if (shown == text) {
      return true;
    }
  }
  return false;
}

bool AnswerBox(HANDLE shown, const std::wstring& title, const std::wstring& text, int answer) {
  if (WaitForSingleObject(shown, kPatienceMs) != WAIT_OBJECT_0) {
    return false;
  }
  const HWND dialog = FindWindowW(kDialogClass, title.c_str());
  const bool saw_them = dialog != nullptr && HasText(dialog, text);
  // The only button of a message box without choice may have either number.
  HWND button = GetDlgItem(dialog, answer);
  if (button == nullptr) {
    button = FindWindowExW(dialog, nullptr, L"Button", nullptr);
  }
  PostMessageW(button, BM_CLICK, 0, 0);
  return saw_them;
}

}  // namespace

MessageBoxUser::MessageBoxUser(const std::string& title, const std::string& text, int answer)
    : shown_(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {
  shown_event = shown_.get();
  hook_ = SetWindowsHookExW(WH_CBT, &TellWhenShown, nullptr, GetCurrentThreadId());
  saw_them_ = std::async(std::launch::async, &AnswerBox, shown_.get(),
                         platform::win32::ToUtf16(title), platform::win32::ToUtf16(text), answer);
}

MessageBoxUser::~MessageBoxUser() {
  UnhookWindowsHookEx(hook_);
  SetEvent(shown_.get());  // ends the wait if no message box appeared
}

}  // namespace kitbay::contract
