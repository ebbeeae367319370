#pragma once

#include <functional>
#include <string>

namespace ovalink {

/// One event of a transfer, in the words that its receiver gets (UTF-8).
struct TransferEvent {
  enum class Kind { kProgress, kCompleted, kFailed };

  Kind kind;
  std::string file_path;
  std::string field_name;   ///< "Total-Length", "Received" or "Completed"
  std::string field_value;  ///< or the description of the failure
};

/// Receives the events of a transfer, on the transfer's thread.
using SendEvent = std::function<void(TransferEvent)>;

}  // namespace ovalink
