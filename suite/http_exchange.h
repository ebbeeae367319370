#pragma once

#include <windows.h>

#include <winhttp.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "http_session.h"
#include "transfer_address.h"

namespace ovalink {

/// Thrown when the client has cancelled the transfer; nobody is told of it any more.
class TransferCancelled {};

/// One HTTP request and its answer, without cookies, sign-on or redirection. The system's proxy is
/// used except for loopback. Every step that lasts ends with `TransferCancelled` as soon as the
/// event `cancel` is set, with `TransferFailure` for "connection timed out" when there is no
/// connection, or nothing comes, for `timeout_ms`, and with `TransferFailure` for what else goes
/// wrong.
class HttpExchange {
 public:
  /// Sends the request and waits for the answer's heading.
  HttpExchange(const TransferAddress& address, DWORD timeout_ms, HANDLE cancel);
  ~HttpExchange();
  HttpExchange(const HttpExchange&) = delete;
  HttpExchange& operator=(const HttpExchange&) = delete;

  std::uint32_t status() const { return status_; }

  /// A field of the heading; nothing when it is not there.
  std::optional<std::string> Field(DWORD query) const;

  /// The next bytes of the body, valid until the next call; none at its end.
  std::span<const char> Read();

 private:
  class Progress;
  void Open(const TransferAddress& address, DWORD timeout_ms);
  void Listen();
  void Send();
  DWORD Await(BOOL started, DWORD error, DWORD limit_ms);

  DWORD timeout_ms_;
  HANDLE cancel_;
  UniqueInternet session_;
  UniqueInternet connection_;
  std::shared_ptr<Progress> progress_;
  UniqueInternet request_;
  std::uint32_t status_ = 0;
  DWORD read_size_ = 0;
};

}  // namespace ovalink
