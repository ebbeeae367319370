#pragma once

#include <functional>
#include <optional>
#include <string>
#include <thread>

#include "json.h"
#include "socket.h"

namespace kitbay::web_browser {

/**
 * The two connections to the helper: calls, for the thread that owns the link, and notices, which a
 * separate thread reads. The helper ends with the link.
 */
class HelperLink {
 public:
  /** Starts the helper. `on_notice` runs on the reading thread; it gets {t: "lost"} at the end. */
  explicit HelperLink(std::function<void(Json)> on_notice);
  ~HelperLink();
  HelperLink(const HelperLink&) = delete;
  HelperLink& operator=(const HelperLink&) = delete;

  /**
   * Waits for the answer to a request, without handling messages: the page never waits for its
   * host. Throws LinkLost.
   */
  Json Call(Json request);

  /** Whether the helper has connected; the first call waits for that. */
  bool IsConnected() const { return connected_; }

  /** Sends a message that has no answer; it is lost if the helper is gone. */
  void Tell(Json message) noexcept;

 private:
  void Connect();
  Socket AcceptAs(const char* role);
  void ReadNotices();

  std::function<void(Json)> on_notice_;
  Winsock winsock_;
  std::string token_;
  Socket listener_;
  Socket calls_;
  Socket notices_;
  std::thread reader_;
  bool connected_ = false;
  bool lost_ = false;
  int last_call_ = 0;
};

}  // namespace kitbay::web_browser
