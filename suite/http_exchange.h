#pragma once

#include <windows.h>

#include <winhttp.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "http_session.h"
#include "transfer_address.h"

namespace ovalink {

/// Thrown when the client has cancelled the transfer; nobody is notified of it any more.
class TransferCancelled {};

/// One HTTP request and its answer, without cookies or redirection, and without sign-on except to a
/// proxy. The system's proxy is used except for loopback. Every step that takes time ends with
/// `TransferCancelled` as soon as the event `cancel` is set. It ends with `TransferFailure`
/// "connection timed out" if there is no connection or no data for `timeout_ms`, and with another
/// `TransferFailure` for any other error.
class HttpExchange {
 public:
  /// What a request contains besides its address.
  struct Terms {
    std::string fields;              ///< header fields, each ended by CR LF
    DWORD timeout_ms = 0;            ///< as above
    DWORD proxy_sign_on_scheme = 0;  ///< how the user signs on to the proxy; 0 for not at all
  };

  /// Sends the request and waits for the answer's header.
  HttpExchange(const TransferAddress& address, Terms terms, HANDLE cancel);
  ~HttpExchange();
  HttpExchange(const HttpExchange&) = delete;
  HttpExchange& operator=(const HttpExchange&) = delete;

  std::uint32_t status() const { return status_; }

  /// How the proxy, having answered 407, lets a user sign on with the logon credentials; 0 if it
  /// requires a password, or if the answer may come from a server. Only an answer from before the
  /// server showed its certificate certainly does not.
  DWORD ProxySignOnScheme() const;

  /// A header field; nothing if it is missing.
  std::optional<std::string> Field(DWORD query) const;

  /// The next bytes of the body, valid until the next call; empty at its end. While they arrive
  /// fast, those that follow are received during the caller's work on these.
  std::span<const char> Read();

 private:
  class Progress;
  void Open(const TransferAddress& address);
  void AllowSignOn();
  bool HasCertificate() const;
  void Listen();
  void Send();
  void StartReading(DWORD wanted);
  DWORD Await(BOOL started, DWORD error, DWORD limit_ms);

  Terms terms_;
  bool is_secure_;
  HANDLE cancel_;
  UniqueInternet session_;
  UniqueInternet connection_;
  std::shared_ptr<Progress> progress_;
  UniqueInternet request_;
  std::uint32_t status_ = 0;
  DWORD read_size_ = 0;        // how much to request ahead; 0 for nothing
  std::size_t piece_ = 0;      // the buffer that was read into last
  bool is_reading_ = false;    // whether a read has been started whose end is not awaited yet
  BOOL read_started_ = FALSE;  // what starting it returned, and the error that it left
  DWORD read_error_ = ERROR_SUCCESS;
};

}  // namespace ovalink
