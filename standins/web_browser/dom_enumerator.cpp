#include "dom_enumerator.h"

#include <utility>

#include "dom_session.h"

namespace kitbay::web_browser {

using Microsoft::WRL::ComPtr;

DomEnumerator::DomEnumerator(std::shared_ptr<DomSession> session, ComPtr<DomObject> collection)
    : session_(std::move(session)), collection_(std::move(collection)) {}

STDMETHODIMP DomEnumerator::Next(ULONG count, VARIANT* members, ULONG* fetched) {
  if (!members || (!fetched && count != 1)) {
    return E_POINTER;
  }
  return Guarded([&] {
    ULONG got = 0;
    const HRESULT result =
        session_->Members(collection_->reference(), position_, count, members, got);
    position_ += got;
    if (fetched) {
      *fetched = got;
    }
    if (FAILED(result)) {
      return result;
    }
    return got == count ? S_OK : S_FALSE;
  });
}

STDMETHODIMP DomEnumerator::Skip(ULONG count) {
  position_ += count;
  return S_OK;
}

STDMETHODIMP DomEnumerator::Reset() {
  position_ = 0;
  return S_OK;
}

STDMETHODIMP DomEnumerator::Clone(IEnumVARIANT** copy) {
  if (!copy) {
    return E_POINTER;
  }
  return Guarded([&] {
    auto* enumerator = new DomEnumerator(session_, collection_);
    enumerator->position_ = position_;
    *copy = enumerator;
    return S_OK;
  });
}

}  // namespace kitbay::web_browser
