#include "platform/win32/com/service_objects.h"

#include "platform/win32/com/bstr.h"
#include "platform/win32/com/com_failure.h"

namespace kitbay::platform::win32 {

template <typename Service>
Service& ServiceLink<Service>::Get() const {
  if (service_ == nullptr) {
    throw FailureOf(RPC_E_DISCONNECTED);
  }
  return *service_;
}

template class ServiceLink<ManagerService>;
template class ServiceLink<RegistryService>;

STDMETHODIMP ManagerObject::BringToFront() {
  try {
    link_->Get().BringToFront();
    return S_OK;
  } catch (...) {
    return ReportCurrentException();
  }
}

STDMETHODIMP RegistryObject::RegisterUrlHandler() {
  try {
    link_->Get().RegisterUrlHandler();
    return S_OK;
  } catch (...) {
    return ReportCurrentException();
  }
}

STDMETHODIMP RegistryObject::GetAppDataPath(BSTR* path) {
  if (path == nullptr) {
    return E_POINTER;
  }
  *path = nullptr;
  try {
    *path = Bstr(link_->Get().GetAppDataPath()).release();
    return S_OK;
  } catch (...) {
    return ReportCurrentException();
  }
}

STDMETHODIMP RegistryObject::get_ROOT_REGISTRY_KEY(long* key) {
  if (key == nullptr) {
    return E_POINTER;
  }
  *key = 0;
  try {
    *key = link_->Get().ROOT_REGISTRY_KEY();
    return S_OK;
  } catch (...) {
    return ReportCurrentException();
  }
}

}  // namespace kitbay::platform::win32
