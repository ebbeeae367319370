#pragma once

#include <exception>
#include <string>
#include <utility>

namespace ovalink {

/// Ends a transfer; `text()` (UTF-8) is the reason for the user.
class TransferFailure : public std::exception {
 public:
  explicit TransferFailure(std::string text) : text_(std::move(text)) {}

  const std::string& text() const { return text_; }
  const char* what() const noexcept override { return text_.c_str(); }

 private:
  std::string text_;
};

/// The connection ended before the answer did, as far as the system can tell.
class ConnectionLost : public TransferFailure {
 public:
  ConnectionLost() : TransferFailure("The server gave no whole answer") {}
};

/// The system must send the request again, with what it has learned.
class SendAgain : public TransferFailure {
 public:
  SendAgain() : TransferFailure("The server's answer was not understood") {}
};

}  // namespace ovalink
