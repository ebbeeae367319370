#pragma once

#include <windows.h>

#include <atomic>
#include <thread>

#include "platform/win32/system/handles.h"
#include "request_document.h"
#include "transfer_event.h"

namespace ovalink {

/// A transfer on a thread of its own, which ends with this object.
class TransferThread {
 public:
  /// Starts it; `send` is called on that thread.
  TransferThread(DownloadRequest request, SendEvent send);

  /// Cancels the transfer if it still runs.
  ~TransferThread();

  /// Whether the transfer has come to its end, and `send` is called no more.
  bool HasEnded() const { return has_ended_; }
  TransferThread(const TransferThread&) = delete;
  TransferThread& operator=(const TransferThread&) = delete;

 private:
  kitbay::platform::win32::UniqueKernelObject cancel_;
  std::atomic<bool> has_ended_ = false;
  std::thread thread_;
};

}  // namespace ovalink
