#pragma once

#include <wrl/client.h>

#include "module.h"
#include "platform/win32/com/dispatch_object.h"
#include "suite.h"

namespace ovalink {

/// XMLRPCTRANSPORT.xTransport: who is notified of transfers.
class Transport : public kitbay::platform::win32::DispatchObject<::IOvTransport> {
 public:
  STDMETHODIMP SetUp(IDispatch* receiver, IDispatch* session, IDispatch* user, IDispatch* settings,
                     IDispatch* parent) override;
  STDMETHODIMP ShutDown() override;

 private:
  ModuleLock lock_;
  Microsoft::WRL::ComPtr<IDispatch> receiver_;
};

}  // namespace ovalink
