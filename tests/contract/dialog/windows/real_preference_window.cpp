#include "contract/dialog/windows/real_preference_window.h"

#include <commctrl.h>

#include <array>

#include "contract/dialog/preference_window_contract.h"
#include "platform/win32/system/utf.h"

namespace kitbay::contract {
namespace {

struct NamedControl {
  const char* name;
  const wchar_t* window_class;
  const wchar_t* caption;  ///< null if there is only one control of the class
};
constexpr std::array<NamedControl, 7> kControls{{{"lblPrefText", WC_STATICW, nullptr},
                                                 {"txtPrefUrl", WC_EDITW, nullptr},
                                                 {"cmdPrefOk", WC_BUTTONW, L"&Add"},
                                                 {"Command1", WC_BUTTONW, L"&Remove"},
                                                 {"lstPrefURL", WC_LISTVIEWW, nullptr},
                                                 {"cmdPrefClose", WC_BUTTONW, L"&Close"},
                                                 {"frmPrefStatus", STATUSCLASSNAMEW, nullptr}}};

std::unique_ptr<PreferenceWindowWorld> Make() {
  return std::make_unique<Win32PreferenceWindowWorld>();
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Win32, PreferenceWindowContract, testing::Values(&Make));

Win32PreferenceWindowWorld::Win32PreferenceWindowWorld()
    : owner_(CreateWindowExW(0, WC_STATICW, L"Owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 200, 150,
                             760, 520, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr)),
      loop_(platform::win32::MakeMessageLoop()),
      window_(platform::win32::MakePreferenceWindow(*loop_)) {
  EXPECT_NE(owner_, nullptr);
}

Win32PreferenceWindowWorld::~Win32PreferenceWindowWorld() {
  window_.reset();
  if (IsWindow(owner_)) {
    DestroyWindow(owner_);
  }
}

platform::WindowHandle Win32PreferenceWindowWorld::owner() const {
  return {reinterpret_cast<std::uintptr_t>(owner_)};
}

HWND Win32PreferenceWindowWorld::dialog() const {
  return FindWindowW(L"KitbayPreferenceWindow", L"Tessel Directories");
}

HWND Win32PreferenceWindowWorld::Control(const std::string& name) const {
  for (const NamedControl& control : kControls) {
    if (control.name == name) {
      return FindWindowExW(dialog(), nullptr, control.window_class, control.caption);
    }
  }
  return nullptr;
}

std::string Win32PreferenceWindowWorld::TextOf(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(
      static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return platform::win32::ToUtf8(text);
}

std::string Win32PreferenceWindowWorld::Focus() const {
  for (const NamedControl& control : kControls) {
    if (GetFocus() != nullptr && Control(control.name) == GetFocus()) {
      return control.name;
    }
  }
  return "";
}

void Win32PreferenceWindowWorld::Type(const std::string& text) {
  const HWND box = Control("txtPrefUrl");
  for (const wchar_t letter : platform::win32::ToUtf16(text)) {
    SendMessageW(box, WM_CHAR, letter, 1);
  }
}

// Starts from the item that has the list's own focus, initially none, and uses the keys for it.
void Win32PreferenceWindowWorld::Select(int position) {
  SetFocus(Control("lstPrefURL"));
  PressKey(VK_END);
  PressKey(VK_HOME);
  for (int at = 1; at < position; ++at) {
    PressKey(VK_DOWN);
  }
}

POINT Win32PreferenceWindowWorld::PlaceOfItem(int position) const {
  RECT place{};
  place.left = LVIR_LABEL;
  SendMessageW(Control("lstPrefURL"), LVM_GETITEMRECT, static_cast<WPARAM>(position - 1),
               reinterpret_cast<LPARAM>(&place));
  return {place.left + 20, (place.top + place.bottom) / 2};
}

void Win32PreferenceWindowWorld::ClickAt(POINT place) {
  const HWND list = Control("lstPrefURL");
  const LPARAM where = MAKELPARAM(place.x, place.y);
  PostMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, where);
  PostMessageW(list, WM_LBUTTONUP, 0, where);
  RunWaiting();
}

void Win32PreferenceWindowWorld::PressKey(WPARAM key) {
  PostMessageW(GetFocus(), WM_KEYDOWN, key, 1);
  PostMessageW(GetFocus(), WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
  RunWaiting();
}

void Win32PreferenceWindowWorld::PressWithAlt(wchar_t letter) {
  PostMessageW(GetFocus(), WM_SYSCHAR, letter, 1 << 29);
  RunWaiting();
}

void Win32PreferenceWindowWorld::RunWaiting() {
  loop_->Quit();
  loop_->Run();
}

}  // namespace kitbay::contract
