#include "transfer.h"

#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "answer_rules.h"
#include "base/failure.h"
#include "http_exchange.h"
#include "platform/patience.h"
#include "platform/win32/system/replacement_file.h"
#include "platform/win32/system/system_path.h"
#include "platform/win32/win32_platform.h"
#include "transfer_address.h"
#include "transfer_failure.h"
#include "transfer_settings.h"

namespace ovalink {
namespace {

namespace win32 = kitbay::platform::win32;

constexpr int kMostRedirections = 10;
constexpr ULONGLONG kProgressIntervalMs = 100;

/// Runs a step on the destination, whose failures name it.
template <typename Step>
auto OnFile(Step step) {
  try {
    return step();
  } catch (const kitbay::base::Failure& failure) {
    throw TransferFailure("The file could not be written: " + failure.description());
  }
}

class TransferRun {
 public:
  TransferRun(const DownloadRequest& request, HANDLE cancel, const SendEvent& send)
      : request_(request), cancel_(cancel), send_(send) {}

  void Run() {
    const std::wstring destination = Destination();
    const auto answer = Ask();
    const auto length = answer->Field(WINHTTP_QUERY_CONTENT_LENGTH);
    // An answer in chunks ends where its chunks end, whatever length it announces beside.
    if (length && !answer->Field(WINHTTP_QUERY_TRANSFER_ENCODING)) {
      announced_ = AnnouncedLength(*length);
    }
    if (announced_) Send("Total-Length", std::to_string(*announced_));
    const auto file = OnFile([&] { return std::make_unique<win32::ReplacementFile>(destination); });
    Receive(*answer, *file);
    OnFile([&] { kitbay::platform::WithPatience(*files_, [&] { file->PutInPlace(); }); });
  }

 private:
  std::wstring Destination() const {
    if (!IsFullLocalPath(request_.destination)) {
      throw TransferFailure("The file could not be written: \"" + request_.destination +
                            "\" is not the full path of a local file");
    }
    return OnFile([&] { return win32::ToSystemPath(request_.destination); });
  }

  /// The answer that holds the file, from wherever the server sends the request on to.
  std::unique_ptr<HttpExchange> Ask() const {
    const TransferSettings settings = ReadTransferSettings();
    TransferAddress address = AddressOf(request_, settings.plain_http_servers);
    for (int redirections = 0; redirections <= kMostRedirections; ++redirections) {
      auto answer = std::make_unique<HttpExchange>(address, settings.timeout_ms, cancel_);
      if (answer->status() == HTTP_STATUS_OK) return answer;
      const auto location = answer->Field(WINHTTP_QUERY_LOCATION);
      if (!IsRedirection(answer->status()) || !location) {
        throw TransferFailure(StatusText(answer->status()));
      }
      address = RedirectedAddress(address, *location);
    }
    throw TransferFailure("The server sent the request on too often");
  }

  void Receive(HttpExchange& answer, win32::ReplacementFile& file) {
    ULONGLONG told_at = GetTickCount64();
    for (;;) {
      const auto bytes = ReadFrom(answer);
      if (bytes.empty()) break;
      received_ += bytes.size();
      if (announced_ && received_ > *announced_) {
        throw TransferFailure("The server sent more than the " + std::to_string(*announced_) +
                              " bytes it announced");
      }
      OnFile([&] { file.Append({bytes.data(), bytes.size()}); });
      const ULONGLONG now = GetTickCount64();
      if (announced_ && received_ < *announced_ && now - told_at >= kProgressIntervalMs) {
        Send("Received", std::to_string(received_));
        told_at = now;
      }
    }
    if (announced_ && received_ < *announced_) throw CutShort();
  }

  std::span<const char> ReadFrom(HttpExchange& answer) {
    try {
      return answer.Read();
    } catch (const ConnectionLost&) {
      throw CutShort();
    }
  }

  TransferFailure CutShort() const {
    return TransferFailure("The answer was cut short: " + std::to_string(received_) +
                           (announced_ ? " of " + std::to_string(*announced_) : "") + " bytes");
  }

  void Send(const std::string& field_name, const std::string& field_value) const {
    send_({TransferEvent::Kind::kProgress, request_.file_path, field_name, field_value});
  }

  const DownloadRequest& request_;
  HANDLE cancel_;
  const SendEvent& send_;
  std::optional<std::uint64_t> announced_;
  std::uint64_t received_ = 0;
  std::unique_ptr<kitbay::platform::Files> files_ = win32::MakeFiles();
};

}  // namespace

void Transfer(const DownloadRequest& request, HANDLE cancel, const SendEvent& send) {
  const auto fail = [&](const std::string& text) {
    send({TransferEvent::Kind::kFailed, request.file_path, {}, text});
  };
  try {
    TransferRun(request, cancel, send).Run();
    send({TransferEvent::Kind::kCompleted, request.file_path, "Completed", "true"});
  } catch (const TransferCancelled&) {
    return;
  } catch (const TransferFailure& failure) {
    fail(failure.text());
  } catch (const std::exception& failure) {
    fail(failure.what());
  }
}

}  // namespace ovalink
