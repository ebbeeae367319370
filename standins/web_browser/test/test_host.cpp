#include "test_host.h"

#include <exdispid.h>
#include <mshtmdid.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <stdexcept>

#include "control.h"
#include "page_calls.h"

namespace kitbay::web_browser {

using Microsoft::WRL::ComPtr;

namespace {

constexpr ULONGLONG kLimitMs = 300'000;

void Check(HRESULT result, const char* what) {
  if (FAILED(result)) {
    throw std::runtime_error(what);
  }
}

ComPtr<IWebBrowser2> CreateFromLibrary() {
  wchar_t path[MAX_PATH];
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  const std::wstring program = path;
  const std::string name = STANDIN_LIBRARY;
  const std::wstring folder = program.substr(0, program.find_last_of(L'\\'));
  const std::wstring library = folder + L"\\..\\" + std::wstring(name.begin(), name.end());
  HMODULE module = LoadLibraryW(library.c_str());
  if (!module) {
    throw std::runtime_error("The library does not load");
  }
  using GetClass = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
  const auto get_class = reinterpret_cast<GetClass>(
      reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
  ComPtr<IClassFactory> factory;
  Check(get_class(kControlClass, IID_PPV_ARGS(factory.GetAddressOf())), "DllGetClassObject");
  ComPtr<IWebBrowser2> browser;
  Check(factory->CreateInstance(nullptr, IID_PPV_ARGS(browser.GetAddressOf())), "CreateInstance");
  return browser;
}

std::wstring NewFolder() {
  wchar_t temporary[MAX_PATH];
  GetTempPathW(MAX_PATH, temporary);
  const std::wstring name =
      std::wstring(temporary) + L"standin test " + std::to_wstring(GetCurrentProcessId());
  int number = 0;
  std::wstring folder;
  do {
    folder = name + L" " + std::to_wstring(++number) + L"\\";
  } while (!CreateDirectoryW(folder.c_str(), nullptr));
  return folder;
}

}  // namespace

bool EventSink::HasHeard(DISPID id) const {
  for (const Heard& event : heard_) {
    if (event.id == id) {
      return true;
    }
  }
  return false;
}

STDMETHODIMP EventSink::GetTypeInfoCount(UINT* count) {
  *count = 0;
  return S_OK;
}

STDMETHODIMP EventSink::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters,
                               VARIANT* result, EXCEPINFO*, UINT*) {
  Heard event = {id, {}, nullptr};
  const bool has_url = id == DISPID_BEFORENAVIGATE2 || id == DISPID_NAVIGATECOMPLETE2 ||
                       id == DISPID_DOCUMENTCOMPLETE || id == DISPID_NAVIGATEERROR;
  if (has_url) {
    event.url = parameters->rgvarg[parameters->cArgs - 2].pvarVal->bstrVal;
    event.browser = parameters->rgvarg[parameters->cArgs - 1].pdispVal;
  }
  heard_.push_back(event);
  thread_ = GetCurrentThreadId();
  const bool answer = answer_ ? answer_(id, parameters) : true;
  if (result) {
    result->vt = VT_BOOL;
    result->boolVal = answer ? VARIANT_TRUE : VARIANT_FALSE;
  }
  return S_OK;
}

/** The host's side of the embedding. */
class TestHost::Site final : public ComObject<IOleClientSite, IOleInPlaceSite, IOleInPlaceFrame,
                                              IDispatch, IDocHostUIHandler> {
 public:
  Site(HWND window, const HostAnswers& answers) : window_(window), answers_(answers) {}

  STDMETHODIMP SaveObject() override { return S_OK; }
  STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
  STDMETHODIMP GetContainer(IOleContainer**) override { return E_NOINTERFACE; }
  STDMETHODIMP ShowObject() override { return S_OK; }
  STDMETHODIMP OnShowWindow(BOOL) override { return S_OK; }
  STDMETHODIMP RequestNewObjectLayout() override { return E_NOTIMPL; }

  STDMETHODIMP GetWindow(HWND* window) override {
    *window = window_;
    return S_OK;
  }
  STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP CanInPlaceActivate() override { return S_OK; }
  STDMETHODIMP OnInPlaceActivate() override { return S_OK; }
  STDMETHODIMP OnUIActivate() override { return S_OK; }
  STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                LPRECT place, LPRECT clip, LPOLEINPLACEFRAMEINFO info) override {
    *frame = this;
    AddRef();
    *document = nullptr;
    *place = *clip = {0, 0, kWidth, kHeight};
    info->hwndFrame = window_;
    return S_OK;
  }
  STDMETHODIMP Scroll(SIZE) override { return E_NOTIMPL; }
  STDMETHODIMP OnUIDeactivate(BOOL) override { return S_OK; }
  STDMETHODIMP OnInPlaceDeactivate() override { return S_OK; }
  STDMETHODIMP DiscardUndoState() override { return S_OK; }
  STDMETHODIMP DeactivateAndUndo() override { return S_OK; }
  STDMETHODIMP OnPosRectChange(LPCRECT) override { return S_OK; }

  STDMETHODIMP GetBorder(LPRECT) override { return E_NOTIMPL; }
  STDMETHODIMP RequestBorderSpace(LPCBORDERWIDTHS) override { return E_NOTIMPL; }
  STDMETHODIMP SetBorderSpace(LPCBORDERWIDTHS) override { return S_OK; }
  STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject*, LPCOLESTR) override { return S_OK; }
  STDMETHODIMP InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return S_OK; }
  STDMETHODIMP SetMenu(HMENU, HOLEMENU, HWND) override { return S_OK; }
  STDMETHODIMP RemoveMenus(HMENU) override { return S_OK; }
  STDMETHODIMP SetStatusText(LPCOLESTR) override { return S_OK; }
  STDMETHODIMP EnableModeless(BOOL) override { return S_OK; }
  STDMETHODIMP TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }

  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                      UINT*) override {
    if (id == DISPID_AMBIENT_USERMODE) {
      result->vt = VT_BOOL;
      result->boolVal = answers_.is_in_use ? VARIANT_TRUE : VARIANT_FALSE;
      return S_OK;
    }
    if (id != DISPID_AMBIENT_DLCONTROL) {
      return DISP_E_MEMBERNOTFOUND;
    }
    result->vt = VT_I4;
    result->lVal = answers_.download_control;
    return S_OK;
  }

  STDMETHODIMP ShowContextMenu(DWORD, POINT*, IUnknown*, IDispatch*) override {
    return answers_.shows_menu ? S_OK : S_FALSE;
  }
  STDMETHODIMP GetHostInfo(DOCHOSTUIINFO* info) override {
    info->dwFlags = answers_.flags;
    return S_OK;
  }
  STDMETHODIMP ShowUI(DWORD, IOleInPlaceActiveObject*, IOleCommandTarget*, IOleInPlaceFrame*,
                      IOleInPlaceUIWindow*) override {
    return S_FALSE;
  }
  STDMETHODIMP HideUI() override { return S_OK; }
  STDMETHODIMP UpdateUI() override { return S_OK; }
  STDMETHODIMP OnDocWindowActivate(BOOL) override { return S_OK; }
  STDMETHODIMP OnFrameWindowActivate(BOOL) override { return S_OK; }
  STDMETHODIMP ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) override { return S_OK; }
  STDMETHODIMP TranslateAccelerator(LPMSG, const GUID*, DWORD) override { return S_FALSE; }
  STDMETHODIMP GetOptionKeyPath(LPOLESTR*, DWORD) override { return S_FALSE; }
  STDMETHODIMP GetDropTarget(IDropTarget*, IDropTarget** used) override {
    *used = answers_.drop_target;
    if (!*used) {
      return S_FALSE;
    }
    (*used)->AddRef();
    return S_OK;
  }
  STDMETHODIMP GetExternal(IDispatch**) override { return S_FALSE; }
  STDMETHODIMP TranslateUrl(DWORD, LPWSTR, LPWSTR*) override { return S_FALSE; }
  STDMETHODIMP FilterDataObject(IDataObject*, IDataObject**) override { return S_FALSE; }

 private:
  HWND window_;
  HostAnswers answers_;
};

TestHost::TestHost(const HostAnswers& answers) : folder_(NewFolder()) {
  window_ = CreateWindowExW(0, L"STATIC", L"Host of the stand-in", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                            0, 0, kWidth + 20, kHeight + 40, nullptr, nullptr, nullptr, nullptr);
  site_.Attach(new Site(window_, answers));
  browser_ = CreateFromLibrary();
  ComPtr<IOleObject> object;
  Check(browser_.As(&object), "IOleObject");
  Check(object->SetClientSite(site_.Get()), "SetClientSite");
  const RECT place = {0, 0, kWidth, kHeight};
  Check(object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, site_.Get(), 0, window_, &place),
        "DoVerb");
}

TestHost::~TestHost() {
  ComPtr<IOleObject> object;
  if (SUCCEEDED(browser_.As(&object))) {
    object->Close(OLECLOSE_NOSAVE);
    object->SetClientSite(nullptr);
  }
  DestroyWindow(window_);
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

HWND TestHost::control_window() const {
  ComPtr<IOleWindow> window;
  Check(browser_.As(&window), "IOleWindow");
  HWND handle = nullptr;
  Check(window->GetWindow(&handle), "GetWindow");
  return handle;
}

ComPtr<IDispatch> TestHost::Document() const {
  ComPtr<IDispatch> document;
  Check(browser_->get_Document(document.GetAddressOf()), "get_Document");
  return document;
}

Listening::Listening(IUnknown* source, REFIID events, EventSink::Answer answer) {
  ComPtr<IConnectionPointContainer> container;
  Check(source->QueryInterface(IID_PPV_ARGS(container.GetAddressOf())),
        "IConnectionPointContainer");
  Check(container->FindConnectionPoint(events, point_.GetAddressOf()), "FindConnectionPoint");
  sink_.Attach(new EventSink(std::move(answer)));
  Check(point_->Advise(static_cast<IDispatch*>(sink_.Get()), &cookie_), "Advise");
}

Listening::~Listening() { point_->Unadvise(cookie_); }

void TestHost::Until(const std::function<bool()>& holds) {
  const ULONGLONG limit = GetTickCount64() + kLimitMs;
  while (!holds()) {
    const ULONGLONG now = GetTickCount64();
    if (now >= limit) {
      throw std::runtime_error("Not in time");
    }
    MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(limit - now), QS_ALLINPUT);
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
  }
}

void TestHost::Load(const std::string& markup) {
  const std::wstring path = Write(L"page.html", markup);
  const Listening sink(browser_.Get(), DIID_DWebBrowserEvents2);
  Check(browser_->Navigate(Value(path.c_str()).get().bstrVal, nullptr, nullptr, nullptr, nullptr),
        "Navigate");
  // A frame in the page completes before it.
  Until([&] {
    return std::ranges::any_of(sink->heard(), [&](const EventSink::Heard& event) {
      return event.id == DISPID_DOCUMENTCOMPLETE &&
             event.browser == static_cast<IDispatch*>(browser_.Get());
    });
  });
}

std::wstring TestHost::Write(const wchar_t* name, const std::string& content) const {
  const std::wstring path = folder_ + name;
  FILE* file = _wfopen(path.c_str(), L"wb");
  if (!file) {
    throw std::runtime_error("The page cannot be written");
  }
  std::fwrite(content.data(), 1, content.size(), file);
  std::fclose(file);
  return path;
}

POINT TestHost::Middle(IDispatch* element) {
  const ComPtr<IDispatch> place = Call(element, L"getBoundingClientRect").Object();
  const auto whole = [&](const wchar_t* name) {
    Value value = Get(place.Get(), name);
    Check(VariantChangeType(value.Receive(), value.Receive(), 0, VT_I4), "VariantChangeType");
    return value.Number();
  };
  return {whole(L"left") + whole(L"width") / 2, whole(L"top") + whole(L"height") / 2};
}

void TestHost::Click(IDispatch* element) const {
  const POINT point = Middle(element);
  Mouse(WM_LBUTTONDOWN, point);
  Mouse(WM_LBUTTONUP, point);
}

void TestHost::Mouse(UINT message, POINT point) const {
  const WPARAM keys = message == WM_LBUTTONUP ? 0 : MK_LBUTTON;
  PostMessageW(control_window(), message, keys, MAKELPARAM(point.x, point.y));
}

}  // namespace kitbay::web_browser
