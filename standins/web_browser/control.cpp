#include "control.h"

#include <exdispid.h>
#include <mshtmhst.h>
#include <olectl.h>

#include "copying.h"

namespace kitbay::web_browser {

using Microsoft::WRL::ComPtr;

Control::Control()
    : queue_([this](const Json& notice) { HandleNotice(notice); }),
      link_([this](Json notice) { queue_.Push(std::move(notice)); }),
      session_(std::make_shared<DomSession>(link_)),
      events_(this, static_cast<IWebBrowser2*>(this)) {}

Control::~Control() { session_->Detach(); }

void Control::HandleNotice(const Json& notice) {
  // The host may release the control while it handles an event.
  const ComPtr<IConnectionPointContainer> alive = this;
  const Json& kind = notice.at("t");
  if (kind == "frame") {
    ShowPicture(notice);
  } else if (kind == "event") {
    HandlePageEvent(notice);
  } else if (kind == "whereabouts") {
    TellWhereabouts();
  } else if (kind == "beforeNavigate") {
    HandleNavigation(notice);
  } else if (kind == "frameNavigated") {
    events_.NavigateComplete(TextOf(notice, "url"), true);
  } else if (kind == "frameComplete") {
    events_.DocumentComplete(TextOf(notice, "url"), true);
  } else if (kind == "navigated") {
    location_ = TextOf(notice, "url");
    ready_state_ = READYSTATE_INTERACTIVE;
    events_.NavigateComplete(location_, false);
  } else if (kind == "complete") {
    ready_state_ = READYSTATE_COMPLETE;
    events_.DocumentComplete(TextOf(notice, "url"), false);
  } else if (kind == "failed") {
    ready_state_ = READYSTATE_COMPLETE;
    if (!events_.NavigateError(TextOf(notice, "url"), notice.at("status"))) {
      link_.Tell({{"op", "errorPage"}, {"url", notice.at("url")}});
    }
  }
}

void Control::HandleNavigation(const Json& notice) {
  const bool is_frame = notice.at("frame");
  if (!is_frame) {
    ready_state_ = READYSTATE_LOADING;
  }
  const bool is_document = notice.at("document");
  // Each answer counts, even if the other one has already cancelled.
  const bool is_left = events_.BeforeNavigate(TextOf(notice, "url"), is_frame);
  const bool is_cancelled = is_left || events_.FileDownload(is_document) || !is_document;
  link_.Tell({{"op", "decide"}, {"n", notice.at("n")}, {"cancel", is_cancelled}});
  if (is_cancelled && !is_frame) {
    ready_state_ = READYSTATE_COMPLETE;
  }
}

void Control::HandlePageEvent(const Json& notice) {
  const bool is_cancelled =
      session_->FireEvent(notice.at("g"), notice.at("n"), TextOf(notice, "type"));
  if (is_cancelled) {
    return;
  }
  if (notice.contains("menu")) {
    ShowMenu(notice["menu"]);
  }
  if (notice.contains("follow")) {
    Follow(TextOf(notice["follow"], "url"), TextOf(notice["follow"], "target"));
  }
  if (notice.contains("key")) {
    link_.Tell({{"op", "scroll"}, {"g", notice.at("g")}, {"key", notice["key"]}});
  }
}

void Control::ShowMenu(const Json& menu) {
  if (!window_) {
    return;
  }
  POINT place = {MulDiv(menu.at("x"), zoom_, kUnzoomed), MulDiv(menu.at("y"), zoom_, kUnzoomed)};
  ClientToScreen(window_->handle(), &place);
  const ComPtr<IWebBrowser2> self = this;  // As long as the host keeps the commands.
  ComPtr<IUnknown> commands;
  commands.Attach(new MenuCommands([this, self] { return Copy(); }));
  if (site_.ReplacesMenu(menu.at("kind"), place, commands.Get())) {
    return;
  }
  constexpr UINT_PTR kRefresh = 1;
  const HMENU own = CreatePopupMenu();
  AppendMenuW(own, MF_STRING, kRefresh, L"&Refresh");
  const BOOL chosen =
      TrackPopupMenu(own, TPM_RETURNCMD, place.x, place.y, 0, window_->handle(), nullptr);
  DestroyMenu(own);
  if (chosen == static_cast<BOOL>(kRefresh)) {
    NavigateTo(location_);
  }
}

HRESULT Control::Copy() {
  return Guarded([&] {
    const Json answer = link_.Call({{"op", "selection"}});
    return window_ && CopyText(window_->handle(), TextOf(answer, "v")) ? S_OK : E_FAIL;
  });
}

void Control::Follow(const std::wstring& url, const std::wstring& target) {
  const bool is_here =
      target.empty() || target == L"_self" || target == L"_top" || target == L"_parent";
  if (is_here) {
    NavigateTo(url);
  } else {
    if (site_.AllowsWindow(url, location_)) {
      events_.NewWindow(url, location_);
    }
  }
}

void Control::ShowPicture(const Json& notice) {
  // Without data it is the previous one once more.
  if (notice.contains("data")) {
    picture_.Decode(notice.at("data").get_ref<const std::string&>());
  }
  if (window_) {
    window_->Show(picture_, notice.at("n"));
  }
}

void Control::TellWhereabouts() {
  RECT place = {};
  if (window_) {
    GetClientRect(window_->handle(), &place);
    MapWindowPoints(window_->handle(), nullptr, reinterpret_cast<POINT*>(&place), 2);
  }
  link_.Tell({{"op", "whereabouts"},
              {"x", static_cast<int>(place.left)},
              {"y", static_cast<int>(place.top)},
              {"w", static_cast<int>(place.right - place.left)},
              {"h", static_cast<int>(place.bottom - place.top)}});
}

void Control::TellSize() {
  if (size_.cx == 0 || size_.cy == 0) {
    return;
  }
  link_.Tell({{"op", "size"},
              {"w", static_cast<int>(size_.cx)},
              {"h", static_cast<int>(size_.cy)},
              {"zoom", static_cast<double>(zoom_) / kUnzoomed}});
}

void Control::TellColors() {
  // The colours' names in style sheets, in lower case.
  static constexpr std::pair<const char*, int> kColors[] = {
      {"activeborder", COLOR_ACTIVEBORDER},
      {"activecaption", COLOR_ACTIVECAPTION},
      {"appworkspace", COLOR_APPWORKSPACE},
      {"background", COLOR_BACKGROUND},
      {"buttonface", COLOR_BTNFACE},
      {"buttonhighlight", COLOR_BTNHIGHLIGHT},
      {"buttonshadow", COLOR_BTNSHADOW},
      {"buttontext", COLOR_BTNTEXT},
      {"captiontext", COLOR_CAPTIONTEXT},
      {"graytext", COLOR_GRAYTEXT},
      {"highlight", COLOR_HIGHLIGHT},
      {"highlighttext", COLOR_HIGHLIGHTTEXT},
      {"inactiveborder", COLOR_INACTIVEBORDER},
      {"inactivecaption", COLOR_INACTIVECAPTION},
      {"inactivecaptiontext", COLOR_INACTIVECAPTIONTEXT},
      {"infobackground", COLOR_INFOBK},
      {"infotext", COLOR_INFOTEXT},
      {"menu", COLOR_MENU},
      {"menutext", COLOR_MENUTEXT},
      {"scrollbar", COLOR_SCROLLBAR},
      {"threeddarkshadow", COLOR_3DDKSHADOW},
      {"threedface", COLOR_3DFACE},
      {"threedhighlight", COLOR_3DHIGHLIGHT},
      {"threedlightshadow", COLOR_3DLIGHT},
      {"threedshadow", COLOR_3DSHADOW},
      {"window", COLOR_WINDOW},
      {"windowframe", COLOR_WINDOWFRAME},
      {"windowtext", COLOR_WINDOWTEXT},
  };
  Json colors;
  for (const auto& [name, index] : kColors) {
    const DWORD color = GetSysColor(index);
    const int rgb = GetRValue(color) << 16 | GetGValue(color) << 8 | GetBValue(color);
    colors[name] = rgb;
  }
  link_.Tell({{"op", "colors"}, {"colors", std::move(colors)}});
}

void Control::OnColorsChanged() {
  if (link_.IsConnected()) {
    TellColors();
  }
}

HRESULT Control::NavigateTo(const std::wstring& url) {
  try {
    const bool is_first = !link_.IsConnected();
    const std::optional<int> flags = site_.DownloadControl();
    // The helper asks for the host's consent by a notice, which arrives as a message.
    link_.Call({{"op", "navigate"},
                {"url", ToUtf8(url)},
                {"flags", flags ? Json(*flags) : Json(nullptr)},
                {"host", site_.Flags()}});
    ready_state_ = READYSTATE_LOADING;
    if (is_first) {
      TellSize();
    }
    if (is_first) {
      TellColors();
    }
    return S_OK;
  } catch (const LinkLost&) {
    return RPC_E_DISCONNECTED;
  }
}

void Control::OnInput(Json message) {
  if (is_in_use_ && link_.IsConnected()) {
    link_.Tell(std::move(message));
  }
}

void Control::OnResized(int width, int height) {
  size_ = {width, height};
  if (link_.IsConnected()) {
    TellSize();
  }
}

HRESULT Control::SetZoom(int percent) {
  constexpr int kLeast = 10;
  constexpr int kMost = 1000;
  if (percent < kLeast || percent > kMost) {
    return E_INVALIDARG;
  }
  zoom_ = percent;
  if (link_.IsConnected()) {
    TellSize();
  }
  return S_OK;
}

void Control::OnZoomWheel(int steps) {
  constexpr int kPercentPerStep = 5;
  SetZoom(zoom_ + steps * kPercentPerStep);
}

void Control::OnPainted(int number) { link_.Tell({{"op", "painted"}, {"n", number}}); }

void Control::OnFocus(bool has_focus) { site_.FocusChanged(has_focus); }

void Control::OnPressed() {
  SetFocus(window_->handle());
  in_place_.UiActivate(this);
}

HRESULT Control::GetFlag(bool flag, VARIANT_BOOL* value) {
  if (!value) {
    return E_POINTER;
  }
  *value = flag ? VARIANT_TRUE : VARIANT_FALSE;
  return S_OK;
}

HRESULT Control::PutFlag(VARIANT_BOOL value, bool& flag) {
  flag = value != VARIANT_FALSE;
  return S_OK;
}

STDMETHODIMP Control::FindConnectionPoint(REFIID id, IConnectionPoint** point) {
  if (!point) {
    return E_POINTER;
  }
  *point = id == DIID_DWebBrowserEvents2 ? &events_.point() : nullptr;
  if (!*point) {
    return CONNECT_E_NOCONNECTION;
  }
  (*point)->AddRef();
  return S_OK;
}

}  // namespace kitbay::web_browser
