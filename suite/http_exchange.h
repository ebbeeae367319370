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

/// One HTTP request and its answer, without cookies or redirection, and without sign-on but to a
/// proxy. The system's proxy is
/// used except for loopback. Every step that lasts ends with `TransferCancelled` as soon as the
/// event `cancel` is set, with `TransferFailure` for "connection timed out" when there is no
/// connection, or nothing comes, for `timeout_ms`, and with `TransferFailure` for what else goes
/// wrong.
class HttpExchange {
 public:
  /// What a request says beside its address.
  struct Terms {
    std::string fields;              ///< of the heading, each ended by CR LF
    DWORD timeout_ms = 0;            ///< as above
    DWORD proxy_sign_on_scheme = 0;  ///< by which the user signs on to the proxy; 0 for not at all
  };

  /// Sends the request and waits for the answer's heading.
  HttpExchange(const TransferAddress& address, Terms terms, HANDLE cancel);
  ~HttpExchange();
  HttpExchange(const HttpExchange&) = delete;
  HttpExchange& operator=(const HttpExchange&) = delete;

  std::uint32_t status() const { return status_; }

  /// How the proxy, having answered 407, lets a user sign on with what the system knows of him; 0
  /// where it wants a password, and where the answer may be a server's: only one that came before
  /// the server showed its certificate is certainly not.
  DWORD ProxySignOnScheme() const;

  /// A field of the heading; nothing when it is not there.
  std::optional<std::string> Field(DWORD query) const;

  /// The next bytes of the body, valid until the next call; none at its end.
  std::span<const char> Read();

 private:
  class Progress;
  void Open(const TransferAddress& address);
  void AllowSignOn();
  bool HasCertificate() const;
  void Listen();
  void Send();
  DWORD Await(BOOL started, DWORD error, DWORD limit_ms);

  Terms terms_;
  bool is_secure_;
  HANDLE cancel_;
  UniqueInternet session_;
  UniqueInternet connection_;
  std::shared_ptr<Progress> progress_;
  UniqueInternet request_;
  std::uint32_t status_ = 0;
  DWORD read_size_ = 0;
};

}  // namespace ovalink
