#include "copying.h"

#include <cstring>

namespace kitbay::web_browser {

bool CopyText(HWND window, const std::wstring& text) {
  if (!OpenClipboard(window)) {
    return false;
  }
  EmptyClipboard();
  const std::size_t size = (text.size() + 1) * sizeof(wchar_t);
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
  bool is_taken = false;
  if (memory) {
    std::memcpy(GlobalLock(memory), text.c_str(), size);
    GlobalUnlock(memory);
    is_taken = SetClipboardData(CF_UNICODETEXT, memory) != nullptr;
    if (!is_taken) {
      GlobalFree(memory);
    }
  }
  CloseClipboard();
  return is_taken;
}

}  // namespace kitbay::web_browser
