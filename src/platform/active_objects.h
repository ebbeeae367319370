#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/services.h"

namespace kitbay::platform {

/// A class identifier: the sixteen bytes of its GUID in memory order.
using ClassId = std::array<std::uint8_t, 16>;

/// The system's tables of classes and running objects.
class ActiveObjects {
 public:
  virtual ~ActiveObjects() = default;

  /// The class identifier that a ProgID names; empty if the conversion fails.
  virtual std::optional<ClassId> ClassIdFromProgId(const std::string& prog_id) = 0;

  /// Registers `object` weakly in the running-object table under `class_id` and returns the cookie;
  /// empty if the table refuses it.
  virtual std::optional<std::uint32_t> RegisterActiveObject(ManagerService& object,
                                                            const ClassId& class_id) = 0;

  /// Withdraws an entry and returns the resulting HRESULT: 0, or an error if the cookie names no
  /// entry.
  virtual std::int32_t RevokeActiveObject(std::uint32_t cookie) = 0;

  /// Disconnects every outside client that still holds `object`.
  virtual void DisconnectObject(ManagerService& object) = 0;

  /// The running object of class `prog_id`, in any process. Throws `base::Failure` (429) if there
  /// is none.
  virtual std::unique_ptr<ManagerService> GetActive(const std::string& prog_id) = 0;
};

}  // namespace kitbay::platform
