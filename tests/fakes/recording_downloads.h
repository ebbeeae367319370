#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "base/failure.h"
#include "platform/suite_objects.h"

namespace kitbay::fakes {

/// A download object that keeps the request documents that it accepts.
class RecordingDownloads : public platform::TransportObject {
 public:
  void SetUp(platform::OvTransportEvents& /*receiver*/) override {}
  void Request(const std::string& document) override {
    if (failure) {
      throw base::Failure(*failure);
    }
    documents.push_back(document);
    if (while_asked) {
      while_asked();
    }
  }
  void LimitNext(std::uint64_t bytes) override { limits[documents.size()] = bytes; }
  void ShutDown() override {}

  std::vector<std::string> documents;
  std::map<std::size_t, std::uint64_t> limits;  ///< by the request's place in `documents`
  std::function<void()> while_asked;            ///< what happens within every request
  std::optional<base::Failure> failure;         ///< of every request
};

}  // namespace kitbay::fakes
