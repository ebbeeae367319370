#include "platform/win32/window/help_label.h"

#include <commctrl.h>

#include <utility>

#include "base/failure.h"
#include "platform/win32/system/utf.h"
#include "platform/win32/window/screen.h"
#include "platform/win32/window/window_creation.h"

namespace kitbay::platform::win32 {
namespace {

constexpr const wchar_t* kHelpCaption = L"Help";
constexpr int kInvalidPicture = 481;
constexpr COLORREF kLinkColour = RGB(0, 80, 176);

/// The scheme's own link colour is meant for window backgrounds, which may differ from the strip's.
COLORREF LinkColour() {
  HIGHCONTRASTW contrast{};
  contrast.cbSize = sizeof(contrast);
  const bool is_high_contrast =
      SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof(contrast), &contrast, 0) &&
      (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
  return is_high_contrast || AreColoursDark() ? GetSysColor(COLOR_BTNTEXT) : kLinkColour;
}

}  // namespace

HelpLabel::HelpLabel(HWND parent, int id, MainWindowEvents& events)
    : window_(CreateChildWindow(parent, {.window_class = WC_STATICW,
                                         .caption = kHelpCaption,
                                         .style = WS_VISIBLE | SS_NOTIFY | SS_NOPREFIX,
                                         .id = id})),
      events_(events) {
  SetWindowSubclass(window_, Subclass, 0, reinterpret_cast<DWORD_PTR>(this));
}

void HelpLabel::SetCursorFile(const std::string& path) {
  const std::wstring file = ToUtf16(path);
  const DWORD attributes = GetFileAttributesW(file.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    throw base::Failure(base::RuntimeError::kFileNotFound);
  }
  UniqueCursor loaded(static_cast<HCURSOR>(
      LoadImageW(nullptr, file.c_str(), IMAGE_CURSOR, 0, 0, LR_LOADFROMFILE | LR_DEFAULTSIZE)));
  if (!loaded) {
    throw base::Failure(kInvalidPicture, "Invalid picture");
  }
  // The earlier cursor may be on the screen, so it is destroyed only after the new one is set.
  const UniqueCursor earlier = std::exchange(cursor_, std::move(loaded));
  POINT mouse{};
  if (GetCursorPos(&mouse) && WindowFromPoint(mouse) == window_) {
    ShowCursor();
  }
}

void HelpLabel::SetResolution(int dpi) {
  UniqueFont font = MakeProgramFont(dpi, true);
  SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), TRUE);
  font_ = std::move(font);
}

Extent HelpLabel::TextExtent() const {
  const HDC device = GetDC(window_);
  if (device == nullptr) {
    return {};
  }
  const HGDIOBJ earlier = SelectObject(device, font_.get());
  SIZE size{};
  GetTextExtentPoint32W(device, kHelpCaption, lstrlenW(kHelpCaption), &size);
  SelectObject(device, earlier);
  ReleaseDC(window_, device);
  return {size.cx, size.cy};
}

HBRUSH HelpLabel::PrepareColours(HDC device) const {
  SetTextColor(device, LinkColour());
  SetBkMode(device, TRANSPARENT);
  return GetSysColorBrush(COLOR_BTNFACE);
}

void HelpLabel::ShowCursor() const {
  SetCursor(cursor_ ? cursor_.get() : LoadCursorW(nullptr, IDC_HAND));
}

LRESULT CALLBACK HelpLabel::Subclass(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                     UINT_PTR, DWORD_PTR label) {
  auto* self = reinterpret_cast<HelpLabel*>(label);
  try {
    switch (message) {
      case WM_MOUSEMOVE:
        self->events_.lblHelp_MouseMove();
        break;
      case WM_SETCURSOR:
        self->ShowCursor();
        return TRUE;
      case WM_NCDESTROY:
        RemoveWindowSubclass(window, Subclass, 0);
        break;
      default:
        break;
    }
  } catch (...) {
    // No exception may pass into the system; the message is handled as usual.
  }
  return DefSubclassProc(window, message, wparam, lparam);
}

}  // namespace kitbay::platform::win32
