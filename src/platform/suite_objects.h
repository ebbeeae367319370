#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/file_system_object.h"

namespace kitbay::platform {

/// Receives the events of the suite's transport and download objects, on the user-interface thread.
class OvTransportEvents {
 public:
  virtual ~OvTransportEvents() = default;

  /// Progress or completion of the transfer of `file_path`.
  virtual void Message(const std::string& file_path, const std::string& field_name,
                       const std::string& field_value) = 0;

  /// The transfer of `file_path` failed.
  virtual void Exception(const std::string& file_path, const std::string& message) = 0;
};

/// The suite's transport or download object.
class TransportObject {
 public:
  virtual ~TransportObject() = default;

  /// Names the receiver of the object's events and hands over four empty object references.
  /// Throws `base::Failure` with the HRESULT on failure.
  virtual void SetUp(OvTransportEvents& receiver) = 0;

  /// Hands over a request document. The answer arrives as events. This tree's objects answer after
  /// this call; those of a suite may also answer within it. Throws `base::Failure` with the HRESULT
  /// if the object does not accept the request.
  virtual void Request(const std::string& document) = 0;

  /// Limits the file of the next request to this many bytes: the transfer of a larger one fails as
  /// soon as that is known. An object from before this method existed accepts every size.
  virtual void LimitNext(std::uint64_t bytes) = 0;

  /// Ends every transfer and releases the receiver.
  virtual void ShutDown() = 0;
};

/// Creates the suite's objects by ProgID. Every call throws `base::Failure` (429) if the object
/// cannot be created.
class SuiteObjects {
 public:
  virtual ~SuiteObjects() = default;
  virtual std::unique_ptr<FileSystemObject> CreateFileSystemObject(const std::string& prog_id) = 0;
  virtual std::unique_ptr<TransportObject> CreateTransportObject(const std::string& prog_id) = 0;
};

}  // namespace kitbay::platform
