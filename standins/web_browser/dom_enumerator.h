#pragma once

#include <wrl/client.h>

#include <memory>

#include "com_object.h"
#include "dom_object.h"

namespace kitbay::web_browser {

class DomSession;

/** The members of a collection of the page, one after another; each batch is one request. */
class DomEnumerator final : public ComObject<IEnumVARIANT> {
 public:
  /** Keeps a reference to the collection. */
  DomEnumerator(std::shared_ptr<DomSession> session, Microsoft::WRL::ComPtr<DomObject> collection);

  STDMETHODIMP Next(ULONG count, VARIANT* members, ULONG* fetched) override;
  STDMETHODIMP Skip(ULONG count) override;
  STDMETHODIMP Reset() override;
  STDMETHODIMP Clone(IEnumVARIANT** copy) override;

 private:
  ~DomEnumerator() override = default;

  std::shared_ptr<DomSession> session_;
  Microsoft::WRL::ComPtr<DomObject> collection_;
  ULONG position_ = 0;
};

}  // namespace kitbay::web_browser
