#include "url_download.h"

#include <exception>
#include <string>
#include <utility>
#include <vector>

#include "answer_rules.h"
#include "base/failure.h"
#include "platform/win32/com/automation.h"
#include "platform/win32/com/bstr.h"
#include "platform/win32/com/com_failure.h"

namespace ovalink {

namespace win32 = kitbay::platform::win32;
using kitbay::base::Failure;
using kitbay::base::RuntimeError;
using Microsoft::WRL::ComPtr;

namespace {

// The members of OvTransportEvents.
constexpr DISPID kMessage = 1;
constexpr DISPID kException = 2;

void Tell(IDispatch& receiver, const TransferEvent& event) {
  if (event.kind == TransferEvent::Kind::kFailed) {
    const std::vector<win32::Variant> texts = {"", "", event.file_path, event.field_value};
    win32::Invoke(receiver, kException, DISPATCH_METHOD, texts);
  } else {
    const std::vector<win32::Variant> texts = {"", event.file_path, event.field_name,
                                               event.field_value};
    win32::Invoke(receiver, kMessage, DISPATCH_METHOD, texts);
  }
}

}  // namespace

STDMETHODIMP UrlDownload::SetUp(IDispatch* receiver, IDispatch*, IDispatch*, IDispatch*,
                                IDispatch*) {
  try {
    if (receiver == nullptr) {
      throw Failure(RuntimeError::kInvalidProcedureCall);
    }
    receiver_ = receiver;
    return S_OK;
  } catch (...) {
    return win32::ReportCurrentException();
  }
}

STDMETHODIMP UrlDownload::ShutDown() {
  try {
    waiting_.clear();
    running_.reset();
    window_.reset();
    receiver_.Reset();
    return S_OK;
  } catch (...) {
    return win32::ReportCurrentException();
  }
}

STDMETHODIMP UrlDownload::Request(BSTR, BSTR, BSTR, BSTR, BSTR, BSTR document, VARIANT,
                                  VARIANT* result) {
  if (result != nullptr) {
    VariantInit(result);
  }
  try {
    const auto limit = std::exchange(next_limit_, std::nullopt);
    auto request = ReadRequestDocument(win32::TextOf(document));
    if (!request) {
      throw win32::FailureOf(E_INVALIDARG);
    }
    request->most_bytes = limit;
    if (!receiver_) {
      throw Failure(RuntimeError::kObjectVariableNotSet);
    }
    if (!window_) {
      window_ = std::make_unique<EventWindow>(
          [this](const TransferEvent& event) {
            const ComPtr<IUnknown> alive(static_cast<::IURLDownload*>(this));
            Deliver(event);
          },
          [this] { Look(); });
    }
    waiting_.push_back(*std::move(request));
    StartNext();
    return S_OK;
  } catch (...) {
    return win32::ReportCurrentException();
  }
}

STDMETHODIMP UrlDownload::LimitNext(BSTR bytes) {
  try {
    next_limit_ = WholeNumber(win32::TextOf(bytes));
    if (!next_limit_) {
      throw win32::FailureOf(E_INVALIDARG);
    }
    return S_OK;
  } catch (...) {
    return win32::ReportCurrentException();
  }
}

void UrlDownload::StartNext() {
  if (running_ || waiting_.empty()) {
    return;
  }
  DownloadRequest next = std::move(waiting_.front());
  waiting_.pop_front();
  running_path_ = next.file_path;
  window_->Watch(true);
  try {
    running_ = std::make_unique<TransferThread>(
        std::move(next),
        [window = window_.get()](TransferEvent event) { window->Post(std::move(event)); });
  } catch (const std::exception& failure) {
    window_->Post({TransferEvent::Kind::kFailed, running_path_, {}, failure.what()});
  }
}

// The message for an event may have been lost, or the event itself.
void UrlDownload::Look() {
  const ComPtr<IUnknown> alive(static_cast<::IURLDownload*>(this));
  const bool has_ended = running_ && running_->HasEnded();
  if (!window_->DeliverNext() && has_ended) {
    Deliver({TransferEvent::Kind::kFailed, running_path_, {}, "The transfer has been lost"});
  }
}

void UrlDownload::Deliver(const TransferEvent& event) {
  if (event.kind != TransferEvent::Kind::kProgress) {
    running_.reset();
  }
  // The receiver may do anything: request more, shut this object down, or release it.
  const ComPtr<IDispatch> receiver = receiver_;
  try {
    if (receiver) {
      Tell(*receiver.Get(), event);
    }
  } catch (const std::exception&) {
    // A receiver that fails has handled its own failure; there is nobody else to report it to.
  }
  StartNext();
  if (window_ && !running_ && waiting_.empty()) {
    window_->Watch(false);
  }
}

}  // namespace ovalink
