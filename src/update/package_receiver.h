#pragma once

#include <string>

#include "base/component_kind.h"

namespace kitbay::update {

/// Takes over a component package that has been downloaded.
class PackageReceiver {
 public:
  virtual ~PackageReceiver() = default;

  /// Installs the component from the package file at `path`.
  virtual void Unpack(base::ComponentKind kind, const std::string& path) = 0;

  /// Ends the installation: the page's buttons are given back.
  virtual void InstallProcess() = 0;
};

}  // namespace kitbay::update
