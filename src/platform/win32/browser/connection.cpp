#include "platform/win32/browser/connection.h"

#include <utility>

#include "platform/win32/com/com_failure.h"

namespace kitbay::platform::win32 {

using Microsoft::WRL::ComPtr;

Connection::Connection(IUnknown& source, REFIID events, IUnknown& sink) {
  ComPtr<IConnectionPointContainer> container;
  Check(source.QueryInterface(IID_PPV_ARGS(&container)));
  Check(container->FindConnectionPoint(events, &point_));
  Check(point_->Advise(&sink, &cookie_));
}

Connection::Connection(Connection&& other) noexcept
    : point_(std::move(other.point_)), cookie_(std::exchange(other.cookie_, 0)) {}

Connection& Connection::operator=(Connection&& other) noexcept {
  Cut();
  point_ = std::move(other.point_);
  cookie_ = std::exchange(other.cookie_, 0);
  return *this;
}

void Connection::Cut() noexcept {
  if (point_ == nullptr) {
    return;
  }
  // The source may be gone already, and its connections with it.
  point_->Unadvise(cookie_);
  point_.Reset();
}

}  // namespace kitbay::platform::win32
