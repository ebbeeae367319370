#pragma once

#include <windows.h>

#include <atomic>
#include <thread>

#include "platform/win32/system/handles.h"
#include "request_document.h"
#include "transfer_event.h"

namespace ovalink {

/// A transfer on its own thread, which ends with this object.
class TransferThread {
 public:
  /// Starts it and calls `send` on that thread.
  TransferThread(DownloadRequest request, SendEvent send);

  /// Cancels the transfer if it is still running.
  ~TransferThread();

  /// Whether the transfer has ended, so that `send` is no longer called.
  bool HasEnded() const { return has_ended_; }
  TransferThread(const TransferThread&) = delete;
  TransferThread& operator=(const TransferThread&) = delete;

 private:
  kitbay::platform::win32::UniqueKernelObject cancel_;
  std::atomic<bool> has_ended_ = false;
  std::thread thread_;
};

}  // namespace ovalink
