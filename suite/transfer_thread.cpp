#include "transfer_thread.h"

#include <utility>

#include "module.h"
#include "platform/win32/com/com_failure.h"
#include "transfer.h"

namespace ovalink {

TransferThread::TransferThread(DownloadRequest request, SendEvent send)
    : cancel_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
  const DWORD error = GetLastError();
  if (!cancel_) {
    throw kitbay::platform::win32::FailureOf(HRESULT_FROM_WIN32(error));
  }
  // The system may report a closed request long after the thread has ended.
  ModuleLock::Pin();
  thread_ = std::thread([request = std::move(request), cancel = cancel_.get(),
                         send = std::move(send), &has_ended = has_ended_] {
    try {
      Transfer(request, cancel, send);
    } catch (...) {
      // Not even its failure could be sent. Whoever waits for it sees that the thread has ended.
    }
    has_ended = true;
  });
}

TransferThread::~TransferThread() {
  SetEvent(cancel_.get());
  thread_.join();
}

}  // namespace ovalink
