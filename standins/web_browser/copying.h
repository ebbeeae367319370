#pragma once

#include <docobj.h>

#include <functional>
#include <string>

#include "com_object.h"

namespace kitbay::web_browser {

/** Puts a text on the clipboard for a window. Returns whether the system took it. */
bool CopyText(HWND window, const std::wstring& text);

/** What a host can do with the page that it gets a menu for: copy what is selected there. */
class MenuCommands final : public ComObject<IOleCommandTarget> {
 public:
  explicit MenuCommands(std::function<HRESULT()> copy) : copy_(std::move(copy)) {}

  STDMETHODIMP QueryStatus(const GUID*, ULONG, OLECMD[], OLECMDTEXT*) override { return E_NOTIMPL; }
  STDMETHODIMP Exec(const GUID* group, DWORD command, DWORD, VARIANT*, VARIANT*) override {
    if (group != nullptr) {
      return OLECMDERR_E_UNKNOWNGROUP;
    }
    return command == OLECMDID_COPY ? copy_() : OLECMDERR_E_NOTSUPPORTED;
  }

 private:
  std::function<HRESULT()> copy_;
};

}  // namespace kitbay::web_browser
