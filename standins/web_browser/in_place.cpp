#include "in_place.h"

#include <utility>

namespace kitbay::web_browser {

using Microsoft::WRL::ComPtr;

HRESULT InPlaceSession::Activate(IOleClientSite* client_site) {
  if (site_) {
    return S_OK;
  }
  if (!client_site) {
    return E_UNEXPECTED;
  }
  ComPtr<IOleInPlaceSite> site;
  HRESULT result = client_site->QueryInterface(IID_IOleInPlaceSite,
                                               reinterpret_cast<void**>(site.GetAddressOf()));
  if (FAILED(result)) {
    return result;
  }
  if (site->CanInPlaceActivate() != S_OK) {
    return E_FAIL;
  }
  result = site->OnInPlaceActivate();
  if (FAILED(result)) {
    return result;
  }
  result = site->GetWindow(&parent_);
  if (FAILED(result)) {
    return result;
  }
  RECT clip = {};
  OLEINPLACEFRAMEINFO info = {};
  info.cb = sizeof info;
  result = site->GetWindowContext(frame_.ReleaseAndGetAddressOf(),
                                  document_.ReleaseAndGetAddressOf(), &place_, &clip, &info);
  if (FAILED(result)) {
    return result;
  }
  if (info.haccel) {
    DestroyAcceleratorTable(info.haccel);
  }
  site_ = site;
  return S_OK;
}

void InPlaceSession::UiActivate(IOleInPlaceActiveObject* active) {
  if (!site_ || std::exchange(is_ui_active_, true)) {
    return;
  }
  site_->OnUIActivate();
  if (frame_) {
    frame_->SetActiveObject(active, nullptr);
  }
  if (document_) {
    document_->SetActiveObject(active, nullptr);
  }
  if (frame_) {
    frame_->SetBorderSpace(nullptr);
  }
}

void InPlaceSession::UiDeactivate() {
  if (!site_ || !std::exchange(is_ui_active_, false)) {
    return;
  }
  if (frame_) {
    frame_->SetActiveObject(nullptr, nullptr);
  }
  if (document_) {
    document_->SetActiveObject(nullptr, nullptr);
  }
  site_->OnUIDeactivate(FALSE);
}

void InPlaceSession::Deactivate() {
  UiDeactivate();
  frame_.Reset();
  document_.Reset();
  // The site may release the control, and so this session, in this call.
  const ComPtr<IOleInPlaceSite> site = std::exchange(site_, nullptr);
  if (site) {
    site->OnInPlaceDeactivate();
  }
}

}  // namespace kitbay::web_browser
