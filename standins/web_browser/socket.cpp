#include "socket.h"

#include <utility>

namespace kitbay::web_browser {
namespace {

constexpr int kReadSize = 64 * 1024;

sockaddr_in Loopback() {
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

}  // namespace

Winsock::Winsock() {
  WSADATA data;
  if (WSAStartup(MAKEWORD(2, 2), &data) != 0) {
    throw LinkLost("Winsock does not start");
  }
}

Winsock::~Winsock() { WSACleanup(); }

Socket::Socket(Socket&& other) noexcept
    : socket_(std::exchange(other.socket_, INVALID_SOCKET)), unread_(std::move(other.unread_)) {}

Socket& Socket::operator=(Socket&& other) noexcept {
  std::swap(socket_, other.socket_);
  std::swap(unread_, other.unread_);
  return *this;
}

Socket::~Socket() {
  if (socket_ != INVALID_SOCKET) {
    closesocket(socket_);
  }
}

Socket Socket::Listen() {
  Socket listener(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
  const sockaddr_in address = Loopback();
  if (bind(listener.socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      listen(listener.socket_, 2) != 0) {
    throw LinkLost("No port to listen on");
  }
  return listener;
}

int Socket::Port() const {
  sockaddr_in address = {};
  int size = sizeof address;
  if (getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
    throw LinkLost("The socket has no port");
  }
  return ntohs(address.sin_port);
}

Socket Socket::Accept(int limit_ms) const {
  fd_set readable = {1, {socket_}};
  timeval limit = {limit_ms / 1000, limit_ms % 1000 * 1000};
  if (select(0, &readable, nullptr, nullptr, &limit) != 1) {
    throw LinkLost("No connection in time");
  }
  Socket connection(accept(socket_, nullptr, nullptr));
  if (connection.socket_ == INVALID_SOCKET) {
    throw LinkLost("The connection failed");
  }
  const BOOL at_once = TRUE;
  setsockopt(connection.socket_, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&at_once),
             sizeof at_once);
  return connection;
}

void Socket::SendLine(std::string line) {
  line += '\n';
  for (std::string_view rest = line; !rest.empty();) {
    const int sent = send(socket_, rest.data(), static_cast<int>(rest.size()), 0);
    if (sent <= 0) {
      throw LinkLost("The helper is gone");
    }
    rest.remove_prefix(static_cast<std::size_t>(sent));
  }
}

std::string Socket::ReadLine() {
  std::size_t searched = 0;
  for (;;) {
    const std::size_t end = unread_.find('\n', searched);
    if (end != std::string::npos) {
      std::string line = unread_.substr(0, end);
      unread_.erase(0, end + 1);
      return line;
    }
    searched = unread_.size();
    unread_.resize(searched + kReadSize);
    const int received = recv(socket_, unread_.data() + searched, kReadSize, 0);
    unread_.resize(searched + static_cast<std::size_t>(received > 0 ? received : 0));
    if (received <= 0) {
      throw LinkLost("The helper is gone");
    }
  }
}

void Socket::Shutdown() { shutdown(socket_, SD_BOTH); }

}  // namespace kitbay::web_browser
