#include "helper_link.h"

#include <random>

#include "helper_process.h"

namespace kitbay::web_browser {
namespace {

// A helper that fails to start does not report it, hence the limit. One that has started is waited
// for however busy it is: when it ends, so do its connections.
constexpr int kStartLimitMs = 120000;

std::string RandomToken() {
  constexpr char kDigits[] = "0123456789abcdef";
  std::random_device random;
  std::string token;
  while (token.size() < 32) {
    token += kDigits[random() & 0xf];
  }
  return token;
}

}  // namespace

HelperLink::HelperLink(std::function<void(Json)> on_notice)
    : on_notice_(std::move(on_notice)), token_(RandomToken()), listener_(Socket::Listen()) {
  StartHelper(listener_.Port(), token_);
}

HelperLink::~HelperLink() {
  if (!reader_.joinable()) {
    return;
  }
  notices_.Shutdown();
  reader_.join();
}

Json HelperLink::Call(Json request) {
  Connect();
  request["i"] = ++last_call_;
  try {
    calls_.SendLine(request.dump());
    Json answer = Json::parse(calls_.ReadLine());
    if (answer.at("i") != last_call_) {
      throw LinkLost("An answer to another call");
    }
    return answer;
  } catch (const std::exception&) {
    // Whatever arrives now would be taken for the answer to the next call.
    lost_ = true;
    throw;
  }
}

void HelperLink::Tell(Json message) noexcept {
  try {
    Connect();
    calls_.SendLine(message.dump());
  } catch (const std::exception&) {
    lost_ = true;
  }
}

void HelperLink::Connect() {
  if (lost_) {
    throw LinkLost("The helper is gone");
  }
  if (connected_) {
    return;
  }
  lost_ = true;  // Unless all of the following succeeds.
  calls_ = AcceptAs("calls");
  notices_ = AcceptAs("notices");
  listener_ = Socket();
  reader_ = std::thread([this] { ReadNotices(); });
  connected_ = true;
  lost_ = false;
}

Socket HelperLink::AcceptAs(const char* role) {
  Socket connection = listener_.Accept(kStartLimitMs);
  const Json greeting = Json::parse(connection.ReadLine());
  if (greeting != Json{{"role", role}, {"token", token_}}) {
    throw LinkLost("A stranger dialled");
  }
  return connection;
}

void HelperLink::ReadNotices() {
  try {
    for (;;) {
      on_notice_(Json::parse(notices_.ReadLine()));
    }
  } catch (const std::exception&) {
    on_notice_(Json{{"t", "lost"}});
  }
}

}  // namespace kitbay::web_browser
