#include "platform/win32/browser/browser_host.h"

#include <exdisp.h>

#include "platform/win32/browser/automation_document.h"
#include "platform/win32/browser/browser_events.h"
#include "platform/win32/browser/browser_site.h"
#include "platform/win32/browser/document_events.h"
#include "platform/win32/com/automation.h"
#include "platform/win32/com/com_failure.h"

namespace kitbay::platform::win32 {
namespace {

using Microsoft::WRL::ComPtr;

RECT ToRect(const Rectangle& place) { return {place.left, place.top, place.right, place.bottom}; }

/// A new control must be told that it starts without stored settings.
void InitializeNew(IUnknown& control) {
  ComPtr<IPersistStreamInit> storage;
  if (SUCCEEDED(control.QueryInterface(IID_PPV_ARGS(&storage)))) {
    storage->InitNew();
  }
}

}  // namespace

BrowserHost::BrowserHost(HWND window, const Rectangle& place, BrowserOwner& owner)
    : state_(std::make_shared<BrowserSiteState>()) {
  state_->window = window;
  state_->owner = &owner;
  state_->place = ToRect(place);
  site_ = MakeComObject<BrowserSite>(state_);
  events_ = MakeComObject<BrowserEvents>(state_);
  Check(CoCreateInstance(__uuidof(WebBrowser), nullptr, CLSCTX_INPROC_SERVER,
                         IID_PPV_ARGS(&control_)));
  Check(control_.As(&browser_));
  Check(control_->SetClientSite(site_.Get()));
  try {
    InitializeNew(*control_.Get());
    control_->SetHostNames(L"Kitbay", nullptr);
    Check(OleSetContainedObject(control_.Get(), TRUE));
    Check(control_->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, site_.Get(), 0, window,
                           &state_->place));
    Check(control_.As(&state_->in_place_object));
    connection_ = Connection(*browser_.Get(), __uuidof(DWebBrowserEvents2), *events_.Get());
  } catch (...) {
    Close();
    throw;
  }
}

BrowserHost::~BrowserHost() {
  state_->owner = nullptr;
  document_events_.reset();
  connection_ = Connection();
  events_->ExpectNothing();
  state_->in_place_object->InPlaceDeactivate();
  Close();
  state_->window = nullptr;
}

// The control and its site reference each other.
void BrowserHost::Close() {
  control_->Close(OLECLOSE_NOSAVE);
  control_->SetClientSite(nullptr);
  state_->in_place_object.Reset();
  state_->active_object.Reset();
}

void BrowserHost::Move(const Rectangle& place) {
  state_->place = ToRect(place);
  Check(state_->in_place_object->SetObjectRects(&state_->place, &state_->place));
}

void BrowserHost::Navigate(const std::string& path) {
  document_events_.reset();
  events_->ExpectPage(browser_.Get(), path);
  CallMethod(*browser_.Get(), "Navigate", {path});
}

void BrowserHost::Zoom(int percent) {
  ComPtr<IWebBrowser2> browser;
  Check(browser_.As(&browser));
  Variant zoom(percent);
  VARIANT input = zoom.get();
  browser->ExecWB(OLECMDID_OPTICAL_ZOOM, OLECMDEXECOPT_DONTPROMPTUSER, &input, nullptr);
}

std::shared_ptr<HtmlDocument> BrowserHost::ConnectDocument(HtmlDocumentEvents& events) {
  const ComPtr<IDispatch> document = GetProperty(*browser_.Get(), "Document").ToObject();
  if (document == nullptr) {
    throw base::Failure(base::RuntimeError::kObjectVariableNotSet);
  }
  document_events_ = std::make_unique<DocumentEvents>(*document.Get(), events);
  return std::make_shared<AutomationDocument>(document);
}

void BrowserHost::DisconnectDocument() { document_events_.reset(); }

HWND BrowserHost::Window() const {
  HWND window = nullptr;
  state_->in_place_object->GetWindow(&window);
  return window;
}

bool BrowserHost::HasFocus() const { return Contains(GetFocus()); }

bool BrowserHost::Contains(HWND window) const {
  const HWND control = Window();
  return control != nullptr && window != nullptr && (window == control || IsChild(control, window));
}

void BrowserHost::TakeFocus(MSG* tab) {
  // A page that is still active would keep its focus where it was.
  if (tab != nullptr) {
    state_->in_place_object->UIDeactivate();
  }
  Check(control_->DoVerb(OLEIVERB_UIACTIVATE, tab, site_.Get(), 0, state_->window, &state_->place));
  if (!HasFocus()) {
    SetFocus(Window());
  }
}

bool BrowserHost::TranslateKey(MSG& message) {
  // Keeps a reference: handling the key may deactivate the page.
  const ComPtr<IOleInPlaceActiveObject> active = state_->active_object;
  return active != nullptr && active->TranslateAccelerator(&message) == S_OK;
}

void BrowserHost::OnWindowActivate(bool active) {
  if (state_->active_object != nullptr) {
    state_->active_object->OnFrameWindowActivate(active);
  }
}

}  // namespace kitbay::platform::win32
