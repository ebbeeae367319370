#include "platform/win32/browser/host_ui.h"

#include <docobj.h>

#include "platform/win32/system/key_state.h"

namespace kitbay::platform::win32 {
namespace {

using Microsoft::WRL::ComPtr;

/// Whether the key only moves within the page, presses its buttons, or copies from it.
bool IsKeyOfPage(WPARAM key) {
  if (IsDown(VK_MENU)) {
    return false;
  }
  if (IsDown(VK_CONTROL)) {
    return key == 'C' || key == 'A' || key == VK_INSERT;
  }
  switch (key) {
    case VK_BACK:  // goes back to an earlier page
      return false;
    default:
      return key < VK_F1 || key > VK_F24;
  }
}

void ShowCopyMenu(HWND window, const POINT& place, IOleCommandTarget& commands) {
  constexpr UINT_PTR kCopy = 1;
  const HMENU menu = CreatePopupMenu();
  if (menu == nullptr) {
    return;
  }
  AppendMenuW(menu, MF_STRING, kCopy, L"&Copy");
  const BOOL chosen =
      TrackPopupMenu(menu, TPM_RETURNCMD | TPM_RIGHTBUTTON, place.x, place.y, 0, window, nullptr);
  DestroyMenu(menu);
  if (chosen == static_cast<BOOL>(kCopy)) {
    commands.Exec(nullptr, OLECMDID_COPY, OLECMDEXECOPT_DONTPROMPTUSER, nullptr, nullptr);
  }
}

/// A drop target that accepts nothing.
class RefusedDropsPart : public IDropTarget {
 public:
  using Interface = IDropTarget;

  STDMETHODIMP DragEnter(IDataObject*, DWORD, POINTL, DWORD* effect) override {
    return Refuse(effect);
  }
  STDMETHODIMP DragOver(DWORD, POINTL, DWORD* effect) override { return Refuse(effect); }
  STDMETHODIMP DragLeave() override { return S_OK; }
  STDMETHODIMP Drop(IDataObject*, DWORD, POINTL, DWORD* effect) override { return Refuse(effect); }

 private:
  static HRESULT Refuse(DWORD* effect) {
    if (effect == nullptr) {
      return E_POINTER;
    }
    *effect = DROPEFFECT_NONE;
    return S_OK;
  }
};

class RefusedDrops final : public ObjectOfParts<RefusedDropsPart> {};

}  // namespace

STDMETHODIMP HostUiPart::ShowContextMenu(DWORD menu, POINT* place, IUnknown* commands, IDispatch*) {
  // S_OK keeps the control from showing a menu of its own.
  if (menu != CONTEXT_MENU_TEXTSELECT || place == nullptr || commands == nullptr) {
    return S_OK;
  }
  ComPtr<IOleCommandTarget> target;
  if (state_->window != nullptr && SUCCEEDED(commands->QueryInterface(IID_PPV_ARGS(&target)))) {
    ShowCopyMenu(state_->window, *place, *target.Get());
  }
  return S_OK;
}

STDMETHODIMP HostUiPart::GetHostInfo(DOCHOSTUIINFO* info) {
  if (info == nullptr) {
    return E_POINTER;
  }
  info->dwFlags = DOCHOSTUIFLAG_NO3DBORDER | DOCHOSTUIFLAG_NO3DOUTERBORDER | DOCHOSTUIFLAG_THEME |
                  DOCHOSTUIFLAG_DISABLE_HELP_MENU | DOCHOSTUIFLAG_DISABLE_SCRIPT_INACTIVE |
                  DOCHOSTUIFLAG_LOCAL_MACHINE_ACCESS_CHECK |
                  DOCHOSTUIFLAG_DISABLE_UNTRUSTEDPROTOCOL | DOCHOSTUIFLAG_DPI_AWARE;
  info->dwDoubleClick = DOCHOSTUIDBLCLK_DEFAULT;
  return S_OK;
}

STDMETHODIMP HostUiPart::TranslateAccelerator(LPMSG message, const GUID*, DWORD) {
  if (message == nullptr) {
    return S_FALSE;
  }
  const bool is_key_down = message->message == WM_KEYDOWN || message->message == WM_SYSKEYDOWN;
  return is_key_down && !IsKeyOfPage(message->wParam) ? S_OK : S_FALSE;
}

STDMETHODIMP HostUiPart::GetOptionKeyPath(LPOLESTR* key, DWORD) {
  if (key != nullptr) {
    *key = nullptr;
  }
  return S_FALSE;
}

STDMETHODIMP HostUiPart::GetDropTarget(IDropTarget*, IDropTarget** used) {
  if (used == nullptr) {
    return E_POINTER;
  }
  *used = nullptr;
  try {
    *used = MakeComObject<RefusedDrops>().Detach();
  } catch (...) {
    return E_OUTOFMEMORY;
  }
  return S_OK;
}

STDMETHODIMP HostUiPart::GetExternal(IDispatch** external) {
  if (external != nullptr) {
    *external = nullptr;
  }
  return S_FALSE;
}

STDMETHODIMP HostUiPart::TranslateUrl(DWORD, LPWSTR, LPWSTR* translated) {
  if (translated != nullptr) {
    *translated = nullptr;
  }
  return S_FALSE;
}

STDMETHODIMP HostUiPart::FilterDataObject(IDataObject*, IDataObject** filtered) {
  if (filtered != nullptr) {
    *filtered = nullptr;
  }
  return S_FALSE;
}

}  // namespace kitbay::platform::win32
