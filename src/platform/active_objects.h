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

  /// The class identifier that a ProgID names; none when the conversion fails.
  virtual std::optional<ClassId> ClassIdFromProgId(const std::string& prog_id) = 0;

  /// Enters `object` into the running-object table under `class_id`, weakly, and returns the
  /// cookie; none when the table refuses it.
  virtual std::optional<std::uint32_t> RegisterActiveObject(ManagerService& object,
                                                            const ClassId& class_id) = 0;

  /// Withdraws an entry and returns the HRESULT of that: 0, or an error when the cookie names none.
  virtual std::int32_t RevokeActiveObject(std::uint32_t cookie) = 0;

  /// Cuts off every client outside that still holds `object`.
  virtual void DisconnectObject(ManagerService& object) = 0;

  /// The running object of class `prog_id`, in whatever process. Throws `base::Failure` (429) when
  /// there is none.
  virtual std::unique_ptr<ManagerService> GetActive(const std::string& prog_id) = 0;
};

}  // namespace kitbay::platform
