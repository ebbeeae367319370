#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "base/failure.h"
#include "platform/suite_objects.h"

namespace kitbay::fakes {

/// Creates the suite's objects: the file-system object as the test specifies, and transport objects
/// that the test controls through `Find`.
class FakeSuiteObjects : public platform::SuiteObjects {
 public:
  using MakeFileSystemObject = std::function<std::unique_ptr<platform::FileSystemObject>()>;

  /// The state of one transport object. It outlives the object.
  struct Transport {
    std::string prog_id;
    platform::OvTransportEvents* receiver = nullptr;  ///< null before set-up, after shut-down
    std::optional<base::Failure> set_up_failure;
    std::vector<std::string> requests;             ///< the documents that the object took
    std::function<void()> while_asked;             ///< what happens within every request
    std::optional<base::Failure> request_failure;  ///< of the next request only
    bool is_released = false;
  };

  /// Without `make_file_system_object`, that object cannot be created.
  explicit FakeSuiteObjects(MakeFileSystemObject make_file_system_object = nullptr);

  std::unique_ptr<platform::FileSystemObject> CreateFileSystemObject(
      const std::string& prog_id) override;
  std::unique_ptr<platform::TransportObject> CreateTransportObject(
      const std::string& prog_id) override;

  /// The last transport object created under `prog_id`; null if there was none.
  Transport* Find(const std::string& prog_id);

  /// The ProgIDs whose objects cannot be created.
  std::set<std::string> missing;

  /// Makes the set-up of objects created from now on fail, by ProgID.
  std::map<std::string, base::Failure> set_up_failures;

  /// Called while a transport object is shut down.
  std::function<void()> on_shut_down;

  /// For example "Create URLDownloadLib.URLDownload", "SetUp URLDownloadLib.URLDownload",
  /// "Request URLDownloadLib.URLDownload".
  std::vector<std::string> calls;

 private:
  class Object;
  void CheckCreatable(const std::string& prog_id);

  MakeFileSystemObject make_file_system_object_;
  std::vector<std::shared_ptr<Transport>> transports_;
};

}  // namespace kitbay::fakes
