#include "transfer.h"

#include <cstdint>
#include <exception>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "answer_rules.h"
#include "base/failure.h"
#include "base/text.h"
#include "http_exchange.h"
#include "platform/patience.h"
#include "platform/win32/system/replacement_file.h"
#include "platform/win32/system/system_path.h"
#include "platform/win32/win32_platform.h"
#include "transfer_address.h"
#include "transfer_failure.h"
#include "transfer_settings.h"
#include "transfer_store.h"

namespace ovalink {
namespace {

namespace win32 = kitbay::platform::win32;

constexpr int kMostRedirections = 10;
constexpr std::uint32_t kPartialContent = 206;
constexpr std::uint32_t kNotModified = 304;
constexpr std::uint32_t kProxySignOn = 407;
constexpr std::uint32_t kRangeNotSatisfiable = 416;
constexpr DWORD kContentEncoding = WINHTTP_QUERY_CONTENT_ENCODING;
constexpr ULONGLONG kProgressIntervalMs = 100;

/// Runs a step on the destination. Failures of the step name the destination.
template <typename Step>
auto OnFile(Step step) {
  try {
    return step();
  } catch (const kitbay::base::Failure& failure) {
    throw TransferFailure("The file could not be written: " + failure.description());
  }
}

std::uint64_t FreeBytesAt(const std::wstring& file) {
  ULARGE_INTEGER free{};
  const std::wstring folder = file.substr(0, file.rfind(L'\\') + 1);
  return GetDiskFreeSpaceExW(folder.c_str(), &free, nullptr, nullptr)
             ? free.QuadPart
             : std::numeric_limits<std::uint64_t>::max();
}

class TransferRun {
 public:
  TransferRun(const DownloadRequest& request, HANDLE cancel, const SendEvent& send)
      : request_(request),
        cancel_(cancel),
        send_(send),
        destination_(Destination()),
        store_(request, destination_),
        limit_(LimitAt(request.destination, request.most_bytes)) {}

  void Run() {
    const auto answer = Ask();
    if (answer->status() == kNotModified) {
      OnFile([&] { store_.Refresh(); });
      return;
    }
    const TransferRecord record = Expect(*answer);
    if (count_->announced()) {
      Send("Total-Length", std::to_string(*count_->announced()));
    }
    const auto file =
        OnFile([&] { return std::make_unique<win32::ReplacementFile>(destination_); });
    const bool is_kept = IsKept(*answer, record);
    Receive(*answer, [&](std::string_view bytes) {
      OnFile([&] { is_kept ? store_.Append(bytes) : file->Append(bytes); });
    });
    OnFile([&] {
      if (is_kept) {
        store_.CopyTo(*file);
      }
      kitbay::platform::WithPatience(*files_, [&] { file->PutInPlace(); });
    });
    // A package is deleted before anybody could ask whether it has changed.
    if (IsListAt(request_.destination)) {
      store_.Settle(record);
    } else {
      store_.Discard();
    }
  }

 private:
  std::wstring Destination() const {
    if (!IsFullLocalPath(request_.destination)) {
      throw TransferFailure("The file could not be written: \"" + request_.destination +
                            "\" is not the full path of a local file");
    }
    return OnFile([&] { return win32::ToSystemPath(request_.destination); });
  }

  /// The answer that contains the file or the missing part of it, or says that it has not changed.
  std::unique_ptr<HttpExchange> Ask() {
    // The kept part of a file that has become too large is useless.
    if (store_.record().length > limit_.bytes) {
      store_.Discard();
    }
    auto answer = AskFor(store_.Fields());
    if (!IsUsable(*answer)) {
      store_.Discard();
      answer = AskFor({});
    }
    return answer;
  }

  bool IsUsable(const HttpExchange& answer) const {
    if (answer.status() == kRangeNotSatisfiable) {
      return false;
    }
    if (answer.status() != kPartialContent) {
      return true;
    }
    const auto range = ReadContentRange(answer.Field(WINHTTP_QUERY_CONTENT_RANGE).value_or(""));
    return range && store_.IsRest(*range);
  }

  /// Whether an answer other than the whole file is one that was requested.
  bool IsAskedFor(std::uint32_t status, const std::string& fields) const {
    if (status == kNotModified) {
      return !fields.empty() && store_.asks_whether_changed();
    }
    return (status == kPartialContent || status == kRangeNotSatisfiable) && !fields.empty() &&
           store_.first() > 0;
  }

  /// The answer from wherever the server redirects the request.
  std::unique_ptr<HttpExchange> AskFor(const std::string& fields) const {
    const TransferSettings settings = ReadTransferSettings();
    TransferAddress address = AddressOf(request_, settings.plain_http_servers);
    HttpExchange::Terms terms{"Accept-Encoding: identity\r\n" + fields, settings.timeout_ms, 0};
    for (int redirections = 0; redirections <= kMostRedirections; ++redirections) {
      auto answer = AskAt(address, terms);
      if (answer->status() == HTTP_STATUS_OK || IsAskedFor(answer->status(), fields)) {
        return answer;
      }
      const auto location = answer->Field(WINHTTP_QUERY_LOCATION);
      if (!IsRedirection(answer->status()) || !location) {
        throw TransferFailure(StatusText(answer->status()));
      }
      address = RedirectedAddress(address, *location);
    }
    throw TransferFailure("The server sent the request on too often");
  }

  /// The answer of one server. If a proxy requires it, the user signs on first.
  std::unique_ptr<HttpExchange> AskAt(const TransferAddress& address,
                                      HttpExchange::Terms& terms) const {
    auto answer = std::make_unique<HttpExchange>(address, terms, cancel_);
    if (answer->status() == kProxySignOn && terms.proxy_sign_on_scheme == 0) {
      terms.proxy_sign_on_scheme = answer->ProxySignOnScheme();
      if (terms.proxy_sign_on_scheme != 0) {
        answer = std::make_unique<HttpExchange>(address, terms, cancel_);
      }
    }
    return answer;
  }

  /// What the answer says about the file, after checking that there is room for it.
  TransferRecord Expect(const HttpExchange& answer) {
    const std::string encoding = answer.Field(kContentEncoding).value_or("identity");
    if (kitbay::base::ToLower(encoding) != "identity") {
      throw TransferFailure("The server's answer is compressed, which was not asked for");
    }
    const bool is_rest = answer.status() == kPartialContent;
    count_.emplace(limit_, is_rest ? store_.first() : 0);
    TransferRecord record;
    if (is_rest) {
      record = store_.record();
      count_->Announce(record.length);
    } else if (const auto length = Length(answer)) {
      record.etag = UsableField(answer.Field(WINHTTP_QUERY_ETAG).value_or(""));
      record.last_modified = UsableField(answer.Field(WINHTTP_QUERY_LAST_MODIFIED).value_or(""));
      record.length = *length;
      count_->Announce(*length);
    }
    if (count_->announced()) {
      DemandRoom(*count_->announced(), FreeBytesAt(destination_));
    }
    return record;
  }

  /// A chunked answer ends with its last chunk, whatever length it announces besides.
  static std::optional<std::uint64_t> Length(const HttpExchange& answer) {
    const auto length = answer.Field(WINHTTP_QUERY_CONTENT_LENGTH);
    if (!length || answer.Field(WINHTTP_QUERY_TRANSFER_ENCODING)) {
      return std::nullopt;
    }
    return WholeNumber(*length);
  }

  /// Whether the bytes are kept apart until they are complete, so that the transfer can be resumed.
  bool IsKept(const HttpExchange& answer, const TransferRecord& record) {
    if (answer.status() == kPartialContent) {
      if (store_.KeepRest()) {
        return true;
      }
      throw TransferFailure("The part of the file that is there could not be opened");
    }
    store_.Discard();
    return IsStrong(record.etag) && store_.KeepBytes(record);
  }

  void Receive(HttpExchange& answer, const std::function<void(std::string_view)>& take) {
    ULONGLONG told_at = GetTickCount64();
    for (;;) {
      const auto bytes = ReadFrom(answer);
      if (bytes.empty()) {
        break;
      }
      count_->Add(bytes.size());
      take({bytes.data(), bytes.size()});
      const ULONGLONG now = GetTickCount64();
      if (count_->announced() && count_->received() < *count_->announced() &&
          now - told_at >= kProgressIntervalMs) {
        Send("Received", std::to_string(count_->received()));
        told_at = now;
      }
    }
    count_->End();
  }

  std::span<const char> ReadFrom(HttpExchange& answer) const {
    try {
      return answer.Read();
    } catch (const ConnectionLost&) {
      throw count_->CutShort();
    }
  }

  void Send(const std::string& field_name, const std::string& field_value) const {
    send_({TransferEvent::Kind::kProgress, request_.file_path, field_name, field_value});
  }

  const DownloadRequest& request_;
  HANDLE cancel_;
  const SendEvent& send_;
  std::wstring destination_;
  TransferStore store_;
  SizeLimit limit_;
  std::optional<ByteCount> count_;
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
