#include "platform/win32/window/preference_controls.h"

#include <commctrl.h>

#include <utility>

#include "platform/win32/system/utf.h"
#include "platform/win32/window/screen.h"
#include "platform/win32/window/window_creation.h"
#include "platform/win32/window/window_layout.h"

namespace kitbay::platform::win32 {
namespace {

// The space between the lines of text of two rows of the list.
constexpr int kRowGap = 5;

}  // namespace

// The label is created directly before the text box, so that screen readers take it for the box's
// name.
PreferenceControls::PreferenceControls(HWND dialog)
    : dialog_(dialog),
      label_(CreateChildWindow(
          dialog, {.window_class = WC_STATICW, .caption = L"Add a new Tessel Directory "})),
      url_box_(CreateChildWindow(dialog, {.window_class = WC_EDITW,
                                          .style = WS_VISIBLE | WS_TABSTOP | ES_AUTOHSCROLL,
                                          .extended_style = WS_EX_CLIENTEDGE,
                                          .id = kUrlBoxId})),
      add_(CreateButton(dialog, kAddId, L"&Add")),
      list_(dialog, kSourceListId),
      remove_(CreateButton(dialog, kRemoveId, L"&Remove")),
      close_(CreateButton(dialog, kPreferenceCloseId, L"&Close")),
      status_bar_(CreateChildWindow(dialog, {.window_class = STATUSCLASSNAMEW,
                                             .style = WS_VISIBLE | SBARS_SIZEGRIP,
                                             .id = kPreferenceStatusId})) {
  EnableWindow(remove_, FALSE);
  SendMessageW(dialog, DM_SETDEFID, kAddId, 0);
}

std::string PreferenceControls::UrlText() const {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(url_box_)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(
      GetWindowTextW(url_box_, text.data(), static_cast<int>(text.size()))));
  return ToUtf8(text);
}

void PreferenceControls::SetUrlText(const std::string& text) {
  SetWindowTextW(url_box_, ToUtf16(text).c_str());
}

void PreferenceControls::SetStatusText(const std::string& text) {
  SetWindowTextW(status_bar_, ToUtf16(text).c_str());
}

void PreferenceControls::SetResolution(int dpi) {
  dpi_ = dpi;
  UniqueFont font = MakeProgramFont(dpi, false);
  for (const HWND control : {label_, url_box_, add_, remove_, close_, status_bar_}) {
    SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), TRUE);
  }
  // The list uses the earlier font until then.
  const UniqueFont earlier = std::exchange(font_, std::move(font));
  list_.SetFont(font_.get(), LineHeight() + ScaleToDpi(kRowGap, dpi));
}

void PreferenceControls::LayOut() {
  SendMessageW(status_bar_, WM_SIZE, 0, 0);
  // The size grip at its earlier place must not stay visible.
  InvalidateRect(status_bar_, nullptr, TRUE);
  RECT client{};
  GetClientRect(dialog_, &client);
  RECT status{};
  GetWindowRect(status_bar_, &status);
  const PreferenceLayout layout =
      LayOutPreferences({static_cast<int>(client.right), static_cast<int>(client.bottom)},
                        static_cast<int>(status.bottom - status.top), LineHeight(), dpi_);
  PlaceChildWindow(label_, layout.label);
  PlaceChildWindow(url_box_, layout.url_box);
  PlaceChildWindow(add_, layout.add);
  list_.Place(layout.list);
  PlaceChildWindow(remove_, layout.remove);
  PlaceChildWindow(close_, layout.close);
}

int PreferenceControls::LineHeight() const {
  const HDC device = GetDC(dialog_);
  if (device == nullptr) {
    return 0;
  }
  const HGDIOBJ earlier = SelectObject(device, font_.get());
  TEXTMETRICW metrics{};
  GetTextMetricsW(device, &metrics);
  SelectObject(device, earlier);
  ReleaseDC(dialog_, device);
  return static_cast<int>(metrics.tmHeight);
}

}  // namespace kitbay::platform::win32
