#include "platform/win32/window/source_list_view.h"

#include <commctrl.h>

#include <algorithm>

#include "base/failure.h"
#include "platform/win32/system/utf.h"
#include "platform/win32/window/window_creation.h"

namespace kitbay::platform::win32 {
namespace {

constexpr DWORD kStyle =
    WS_VISIBLE | WS_TABSTOP | LVS_REPORT | LVS_NOCOLUMNHEADER | LVS_SINGLESEL | LVS_SHOWSELALWAYS;
constexpr DWORD kListStyle = LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP | LVS_EX_DOUBLEBUFFER;

}  // namespace

SourceListView::SourceListView(HWND parent, int id)
    : window_(CreateChildWindow(parent, {.window_class = WC_LISTVIEWW,
                                         .style = kStyle,
                                         .extended_style = WS_EX_CLIENTEDGE,
                                         .id = id})) {
  SendMessageW(window_, LVM_SETEXTENDEDLISTVIEWSTYLE, kListStyle, kListStyle);
  LVCOLUMNW column{};
  SendMessageW(window_, LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
}

int SourceListView::Count() const {
  return static_cast<int>(SendMessageW(window_, LVM_GETITEMCOUNT, 0, 0));
}

WPARAM SourceListView::IndexOf(int position) const {
  if (position < 1 || position > Count()) {
    throw base::Failure(base::RuntimeError::kSubscriptOutOfRange);
  }
  return static_cast<WPARAM>(position - 1);
}

std::string SourceListView::Text(int position) const {
  const WPARAM index = IndexOf(position);
  // The list does not report how long a text is; a buffer that it fills was too small.
  std::wstring text(256, L'\0');
  for (;;) {
    LVITEMW item{};
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    const auto length = static_cast<std::size_t>(
        SendMessageW(window_, LVM_GETITEMTEXTW, index, reinterpret_cast<LPARAM>(&item)));
    if (length + 1 < text.size()) {
      text.resize(length);
      return ToUtf8(text);
    }
    text.resize(text.size() * 2);
  }
}

void SourceListView::Add(const std::string& text) {
  std::wstring wide = ToUtf16(text);
  LVITEMW item{};
  item.mask = LVIF_TEXT;
  item.iItem = Count();
  item.pszText = wide.data();
  if (SendMessageW(window_, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)) < 0) {
    throw base::Failure(base::RuntimeError::kOutOfMemory);
  }
  // Only the new text is measured: measuring all texts each time would be slow for a long list.
  const auto column = static_cast<int>(SendMessageW(window_, LVM_GETCOLUMNWIDTH, 0, 0));
  const auto width = static_cast<int>(
      SendMessageW(window_, LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(wide.c_str())));
  constexpr int kPadding = 16;
  SetColumnWidth(std::max(column, width + kPadding));
  if (IsWindowVisible(window_)) {
    SendMessageW(window_, LVM_ENSUREVISIBLE, static_cast<WPARAM>(item.iItem), FALSE);
  }
}

void SourceListView::Remove(int position) {
  const bool is_selected = Selected() == position;
  SendMessageW(window_, LVM_DELETEITEM, IndexOf(position), 0);
  FitColumn();
  if (!is_selected || Count() == 0) {
    return;
  }
  LVITEMW item{};
  item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
  const WPARAM index = IndexOf(std::min(position, Count()));
  SendMessageW(window_, LVM_SETITEMSTATE, index, reinterpret_cast<LPARAM>(&item));
  SendMessageW(window_, LVM_ENSUREVISIBLE, index, FALSE);
}

int SourceListView::Selected() const {
  return static_cast<int>(
             SendMessageW(window_, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED)) +
         1;
}

// A list view has no setting for its row height. An image list of that height, even an empty one,
// sets it. The list destroys its image list with itself.
void SourceListView::SetFont(HFONT font, int row_height) {
  SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
  const HIMAGELIST pictures = ImageList_Create(1, row_height, ILC_COLOR, 0, 1);
  const LRESULT earlier =
      SendMessageW(window_, LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(pictures));
  ImageList_Destroy(reinterpret_cast<HIMAGELIST>(earlier));
  FitColumn();
}

void SourceListView::Place(const Rectangle& place) {
  PlaceChildWindow(window_, place);
  FitColumn();
}

void SourceListView::FitColumn() {
  // An empty list would be measured as having no width at all.
  SendMessageW(window_, LVM_SETCOLUMNWIDTH, 0, LVSCW_AUTOSIZE);
  SetColumnWidth(static_cast<int>(SendMessageW(window_, LVM_GETCOLUMNWIDTH, 0, 0)));
}

void SourceListView::SetColumnWidth(int text_width) {
  RECT client{};
  GetClientRect(window_, &client);
  SendMessageW(window_, LVM_SETCOLUMNWIDTH, 0,
               MAKELPARAM(std::max(text_width, static_cast<int>(client.right)), 0));
}

}  // namespace kitbay::platform::win32
