#pragma once

#include <wrl/client.h>

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>

#include "event_window.h"
#include "module.h"
#include "platform/win32/com/dispatch_object.h"
#include "request_document.h"
#include "suite.h"
#include "transfer_thread.h"

namespace ovalink {

/// URLDownloadLib.URLDownload: fetches files one at a time.
class UrlDownload : public kitbay::platform::win32::DispatchObject<::IURLDownload> {
 public:
  STDMETHODIMP SetUp(IDispatch* receiver, IDispatch* session, IDispatch* user, IDispatch* settings,
                     IDispatch* parent) override;
  STDMETHODIMP ShutDown() override;
  STDMETHODIMP Request(BSTR session, BSTR user, BSTR name, BSTR word, BSTR type, BSTR document,
                       VARIANT list, VARIANT* result) override;
  STDMETHODIMP LimitNext(BSTR bytes) override;

 private:
  void StartNext();
  void Deliver(const TransferEvent& event);
  void Look();

  ModuleLock lock_;
  Microsoft::WRL::ComPtr<IDispatch> receiver_;
  std::optional<std::uint64_t> next_limit_;
  std::deque<DownloadRequest> waiting_;
  std::unique_ptr<EventWindow> window_;
  std::string running_path_;
  std::unique_ptr<TransferThread> running_;  // posts to the window
};

}  // namespace ovalink
