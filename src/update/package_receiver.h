#pragma once

#include <string>

#include "update/pending_packages.h"

namespace kitbay::update {

/// Receives a component package that has been downloaded.
class PackageReceiver {
 public:
  virtual ~PackageReceiver() = default;

  /// Each installs a component of its kind from `package`, whose file is at `path`.
  virtual void Unpack(const PendingPackage& package, const std::string& path) = 0;
  virtual void UnpackTransport(const PendingPackage& package, const std::string& path) = 0;
  virtual void UnpackChannel(const PendingPackage& package, const std::string& path) = 0;

  /// Ends the installation: enables the page's buttons again.
  virtual void InstallProcess() = 0;
};

}  // namespace kitbay::update
