#pragma once

#include <string>

#include "platform/suite_objects.h"

namespace kitbay::contract {

/// Records its events.
class RecordingReceiver : public platform::OvTransportEvents {
 public:
  void Message(const std::string& file_path, const std::string& field_name,
               const std::string& field_value) override {
    events += "Message(" + file_path + "," + field_name + "," + field_value + ")";
  }
  void Exception(const std::string& file_path, const std::string& message) override {
    events += "Exception(" + file_path + "," + message + ")";
  }

  std::string events;
};

}  // namespace kitbay::contract
