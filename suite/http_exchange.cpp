#include "http_exchange.h"

#include <wincrypt.h>

#include <algorithm>
#include <array>
#include <mutex>
#include <utility>
#include <vector>

#include "http_failure.h"
#include "module.h"
#include "platform/win32/system/utf.h"

namespace ovalink {

namespace win32 = kitbay::platform::win32;

namespace {

// Each piece costs a change of threads.
constexpr DWORD kMostAtOnce = 1024 * 1024;
// Reads grow while at least this much arrives within the first of these times, and become small
// again after the second.
constexpr DWORD kWorthMore = 4096;
constexpr ULONGLONG kQuickMs = 20;
constexpr ULONGLONG kSlowMs = 100;

/// The host in the form that the name service accepts.
std::wstring AsciiHost(const std::string& host) {
  const std::wstring name = win32::ToUtf16(host);
  std::array<wchar_t, 256> ascii{};
  const int length = IdnToAscii(0, name.c_str(), static_cast<int>(name.size()), ascii.data(),
                                static_cast<int>(ascii.size()));
  return length > 0 && !host.starts_with('[')
             ? std::wstring(ascii.data(), static_cast<std::size_t>(length))
             : name;
}

}  // namespace

/// How far the current step has come. The system reports to it from its own threads, for the last
/// time after the request's handle is closed. Until then it keeps itself, and this library, alive.
class HttpExchange::Progress {
 public:
  /// One is read while the other is used.
  std::array<std::vector<char>, 2> buffers = {std::vector<char>(kMostAtOnce),
                                              std::vector<char>(kMostAtOnce)};

  HANDLE step_ended() const { return step_ended_.get(); }

  void KeepUntilClosed(std::shared_ptr<Progress> self) { self_ = std::move(self); }

  /// Starts a new step.
  void Begin() {
    const std::lock_guard lock(mutex_);
    error_ = ERROR_SUCCESS;
    result_ = 0;
    ResetEvent(step_ended_.get());
  }

  /// The outcome of the step that ended: the bytes available, or read. Throws `TransferFailure`.
  DWORD Result() {
    const std::lock_guard lock(mutex_);
    if (error_ != ERROR_SUCCESS) {
      ThrowHttpFailure(error_, certificate_flags_);
    }
    return result_;
  }

  static void CALLBACK OnStatus(HINTERNET, DWORD_PTR context, DWORD status, void* information,
                                DWORD size) {
    auto* const progress = reinterpret_cast<Progress*>(context);
    if (progress != nullptr) {
      progress->Receive(status, information, size);
    }
  }

 private:
  void Receive(DWORD status, void* information, DWORD size) {
    switch (status) {
      case WINHTTP_CALLBACK_STATUS_SENDREQUEST_COMPLETE:
      case WINHTTP_CALLBACK_STATUS_HEADERS_AVAILABLE:
        return End(ERROR_SUCCESS, 0);
      case WINHTTP_CALLBACK_STATUS_DATA_AVAILABLE:
        return End(ERROR_SUCCESS, *static_cast<DWORD*>(information));
      case WINHTTP_CALLBACK_STATUS_READ_COMPLETE:
        return End(ERROR_SUCCESS, size);
      case WINHTTP_CALLBACK_STATUS_REQUEST_ERROR:
        return End(static_cast<WINHTTP_ASYNC_RESULT*>(information)->dwError, 0);
      case WINHTTP_CALLBACK_STATUS_SECURE_FAILURE: {
        const std::lock_guard lock(mutex_);
        certificate_flags_ |= *static_cast<DWORD*>(information);
        return;
      }
      case WINHTTP_CALLBACK_STATUS_HANDLE_CLOSING: {
        const std::shared_ptr<Progress> last = std::move(self_);
        return;
      }
      default:
        return;
    }
  }

  void End(DWORD error, DWORD result) {
    const std::lock_guard lock(mutex_);
    error_ = error;
    result_ = result;
    SetEvent(step_ended_.get());
  }

  ModuleLock lock_;
  win32::UniqueKernelObject step_ended_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  std::mutex mutex_;
  DWORD error_ = ERROR_SUCCESS;
  DWORD result_ = 0;
  DWORD certificate_flags_ = 0;
  std::shared_ptr<Progress> self_;
};

HttpExchange::HttpExchange(const TransferAddress& address, Terms terms, HANDLE cancel)
    : terms_(std::move(terms)),
      is_secure_(address.is_secure),
      cancel_(cancel),
      progress_(std::make_shared<Progress>()) {
  Open(address);
  constexpr int kMostTimes = 3;
  for (int times = 1;; ++times) {
    try {
      Send();
      return;
    } catch (const SendAgain&) {
      if (times == kMostTimes) {
        throw;
      }
    }
  }
}

HttpExchange::~HttpExchange() = default;

std::optional<std::string> HttpExchange::Field(DWORD query) const {
  DWORD bytes = 0;
  WinHttpQueryHeaders(request_.get(), query, WINHTTP_HEADER_NAME_BY_INDEX, nullptr, &bytes,
                      WINHTTP_NO_HEADER_INDEX);
  if (GetLastError() != ERROR_INSUFFICIENT_BUFFER) {
    return std::nullopt;
  }
  std::wstring text(bytes / sizeof(wchar_t) + 1, L'\0');
  if (!WinHttpQueryHeaders(request_.get(), query, WINHTTP_HEADER_NAME_BY_INDEX, text.data(), &bytes,
                           WINHTTP_NO_HEADER_INDEX)) {
    return std::nullopt;
  }
  text.resize(bytes / sizeof(wchar_t));
  return win32::ToUtf8(text);
}

bool HttpExchange::HasCertificate() const {
  PCCERT_CONTEXT certificate = nullptr;
  DWORD size = sizeof(PCCERT_CONTEXT);
  if (!WinHttpQueryOption(request_.get(), WINHTTP_OPTION_SERVER_CERT_CONTEXT, &certificate,
                          &size)) {
    return false;
  }
  CertFreeCertificateContext(certificate);
  return true;
}

DWORD HttpExchange::ProxySignOnScheme() const {
  DWORD supported = 0;
  DWORD first = 0;
  DWORD target = 0;
  if (!is_secure_ || HasCertificate() ||
      !WinHttpQueryAuthSchemes(request_.get(), &supported, &first, &target) ||
      target != WINHTTP_AUTH_TARGET_PROXY) {
    return 0;
  }
  for (const DWORD scheme : {WINHTTP_AUTH_SCHEME_NEGOTIATE, WINHTTP_AUTH_SCHEME_NTLM}) {
    if ((supported & scheme) != 0) {
      return scheme;
    }
  }
  return 0;
}

std::span<const char> HttpExchange::Read() {
  const ULONGLONG start = GetTickCount64();
  if (!is_reading_) {
    progress_->Begin();
    const BOOL asked = WinHttpQueryDataAvailable(request_.get(), nullptr);
    const DWORD available = Await(asked, GetLastError(), INFINITE);
    if (available == 0) {
      return {};
    }
    StartReading(std::min(available, kMostAtOnce));
  }
  is_reading_ = false;
  const DWORD received = Await(read_started_, read_error_, INFINITE);
  const std::span<const char> piece(progress_->buffers[piece_].data(), received);
  // A read may wait until everything requested has arrived, so only what arrives fast is requested
  // in large pieces, and while the piece before it is stored.
  const ULONGLONG waited = GetTickCount64() - start;
  if (waited > kSlowMs) {
    read_size_ = 0;
  } else if (waited <= kQuickMs && received >= kWorthMore) {
    read_size_ = std::min(std::max(read_size_, received) * 2, kMostAtOnce);
  }
  if (read_size_ > 0 && received > 0) {
    StartReading(read_size_);
  }
  return piece;
}

void HttpExchange::StartReading(DWORD wanted) {
  progress_->Begin();
  piece_ = 1 - piece_;
  read_started_ =
      WinHttpReadData(request_.get(), progress_->buffers[piece_].data(), wanted, nullptr);
  read_error_ = GetLastError();
  is_reading_ = true;
}

void HttpExchange::Open(const TransferAddress& address) {
  session_ = OpenSession(IsLoopback(address.host));
  const int timeout = static_cast<int>(terms_.timeout_ms);
  if (!WinHttpSetTimeouts(session_.get(), timeout, timeout, timeout, timeout)) {
    ThrowHttpFailure(GetLastError());
  }
  connection_.reset(
      WinHttpConnect(session_.get(), AsciiHost(address.host).c_str(), address.port, 0));
  if (!connection_) {
    ThrowHttpFailure(GetLastError());
  }
  request_.reset(WinHttpOpenRequest(
      connection_.get(), L"GET", win32::ToUtf16(address.path).c_str(), nullptr, WINHTTP_NO_REFERER,
      WINHTTP_DEFAULT_ACCEPT_TYPES,
      WINHTTP_FLAG_ESCAPE_DISABLE | (address.is_secure ? WINHTTP_FLAG_SECURE : 0)));
  if (!request_) {
    ThrowHttpFailure(GetLastError());
  }

  SetNumber(request_.get(), WINHTTP_OPTION_DISABLE_FEATURE,
            WINHTTP_DISABLE_COOKIES | WINHTTP_DISABLE_REDIRECTS |
                (terms_.proxy_sign_on_scheme == 0 ? WINHTTP_DISABLE_AUTHENTICATION : 0));
  SetNumber(request_.get(), WINHTTP_OPTION_RECEIVE_RESPONSE_TIMEOUT, terms_.timeout_ms);
  if (terms_.proxy_sign_on_scheme != 0) {
    AllowSignOn();
  }
  Listen();
}

// A system that cannot withhold the sign-on from servers never gets here.
void HttpExchange::AllowSignOn() {
  DWORD policy = 3;  // WINHTTP_AUTOLOGON_SECURITY_LEVEL_PROXY_ONLY
  if (!WinHttpSetOption(request_.get(), WINHTTP_OPTION_AUTOLOGON_POLICY, &policy, sizeof policy) ||
      !WinHttpSetCredentials(request_.get(), WINHTTP_AUTH_TARGET_PROXY, terms_.proxy_sign_on_scheme,
                             nullptr, nullptr, nullptr)) {
    throw TransferFailure("The proxy wants a sign-on, which this system cannot keep from servers");
  }
}

void HttpExchange::Listen() {
  auto context = reinterpret_cast<DWORD_PTR>(progress_.get());
  if (!WinHttpSetOption(request_.get(), WINHTTP_OPTION_CONTEXT_VALUE, &context, sizeof context)) {
    ThrowHttpFailure(GetLastError());
  }
  constexpr DWORD kNews = WINHTTP_CALLBACK_FLAG_ALL_COMPLETIONS |
                          WINHTTP_CALLBACK_FLAG_SECURE_FAILURE | WINHTTP_CALLBACK_FLAG_HANDLES;
  if (WinHttpSetStatusCallback(request_.get(), &Progress::OnStatus, kNews, 0) ==
      WINHTTP_INVALID_STATUS_CALLBACK) {
    ThrowHttpFailure(GetLastError());
  }
  progress_->KeepUntilClosed(progress_);
}

void HttpExchange::Send() {
  progress_->Begin();
  const std::wstring fields = win32::ToUtf16(terms_.fields);
  BOOL started = WinHttpSendRequest(request_.get(), fields.c_str(), static_cast<DWORD>(-1),
                                    WINHTTP_NO_REQUEST_DATA, 0, 0,
                                    reinterpret_cast<DWORD_PTR>(progress_.get()));
  Await(started, GetLastError(), terms_.timeout_ms);
  progress_->Begin();
  started = WinHttpReceiveResponse(request_.get(), nullptr);
  Await(started, GetLastError(), terms_.timeout_ms);
  DWORD size = sizeof status_;
  DWORD status = 0;
  if (!WinHttpQueryHeaders(request_.get(), WINHTTP_QUERY_STATUS_CODE | WINHTTP_QUERY_FLAG_NUMBER,
                           WINHTTP_HEADER_NAME_BY_INDEX, &status, &size, WINHTTP_NO_HEADER_INDEX)) {
    ThrowHttpFailure(GetLastError());
  }
  status_ = status;
}

/// Waits for the end of a step, which a call has either `started` or failed to start, with `error`.
/// Reading the body needs no limit here: it may last as long as bytes keep coming, and the system
/// ends it if none arrive for the configured time.
DWORD HttpExchange::Await(BOOL started, DWORD error, DWORD limit_ms) {
  if (!started) {
    ThrowHttpFailure(error);
  }
  const std::array<HANDLE, 2> events = {cancel_, progress_->step_ended()};
  switch (
      WaitForMultipleObjects(static_cast<DWORD>(events.size()), events.data(), FALSE, limit_ms)) {
    case WAIT_OBJECT_0:
      throw TransferCancelled();
    case WAIT_OBJECT_0 + 1:
      return progress_->Result();
    default:
      throw TimedOut();
  }
}

}  // namespace ovalink
