#pragma once

namespace kitbay::platform {

/// The outcome of asking for an administrator's rights.
enum class ElevationAnswer {
  kStarted,      ///< the program is starting again, with the rights
  kDeclined,     ///< the user refused, or has no such rights to give
  kUnavailable,  ///< the system cannot ask, or has been asked already
};

/// The rights that this process has, and the system's own question for more.
class Elevation {
 public:
  virtual ~Elevation() = default;

  /// Whether the process is elevated.
  virtual bool HasAdministratorRights() const = 0;

  /// Has the system ask the user whether this program may start again with an administrator's
  /// rights, and waits for the answer. The process that is started never asks: if it turns out to
  /// have no more rights than this one, it gets `kUnavailable`.
  virtual ElevationAnswer StartWithAdministratorRights() = 0;
};

}  // namespace kitbay::platform
