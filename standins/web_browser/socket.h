#pragma once

#include <winsock2.h>

#include <stdexcept>
#include <string>
#include <string_view>

namespace kitbay::web_browser {

/** The connection to the helper is closed, or it did not answer in time. */
class LinkLost : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/** Keeps Winsock started for as long as the object lives. */
class Winsock {
 public:
  Winsock();
  ~Winsock();
  Winsock(const Winsock&) = delete;
  Winsock& operator=(const Winsock&) = delete;
};

/** A TCP socket on loopback that carries lines of text. Failures throw LinkLost. */
class Socket {
 public:
  Socket() = default;
  explicit Socket(SOCKET socket) : socket_(socket) {}
  Socket(Socket&& other) noexcept;
  Socket& operator=(Socket&& other) noexcept;
  ~Socket();

  /** A socket that listens on a port chosen by the system. */
  static Socket Listen();
  int Port() const;
  /** Waits up to `limit_ms` for the next connection. */
  Socket Accept(int limit_ms) const;

  void SendLine(std::string line);
  /** Waits for the next line. */
  std::string ReadLine();
  /** Ends all waiting on the socket; may be called from any thread. */
  void Shutdown();

 private:
  SOCKET socket_ = INVALID_SOCKET;
  std::string unread_;
};

}  // namespace kitbay::web_browser
