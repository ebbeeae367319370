#include "transport.h"

#include "base/failure.h"
#include "platform/win32/com/com_failure.h"

namespace ovalink {

STDMETHODIMP Transport::SetUp(IDispatch* receiver, IDispatch*, IDispatch*, IDispatch*, IDispatch*) {
  try {
    if (receiver == nullptr) {
      throw kitbay::base::Failure(kitbay::base::RuntimeError::kInvalidProcedureCall);
    }
    receiver_ = receiver;
    return S_OK;
  } catch (...) {
    return kitbay::platform::win32::ReportCurrentException();
  }
}

STDMETHODIMP Transport::ShutDown() {
  receiver_.Reset();
  return S_OK;
}

}  // namespace ovalink
