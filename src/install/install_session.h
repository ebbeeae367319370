#pragma once

#include <optional>
#include <string>
#include <vector>

#include "catalog/package_digest.h"
#include "install/component_record.h"
#include "platform/file_system_object.h"

namespace kitbay::install {

/// What the steps of an installation, an update or a removal share.
struct InstallSession {
  /// The name in the row that was last clicked to be updated or removed.
  std::string component_name;

  /// The id of the component whose package is being installed. It names the package, and the folder
  /// of an addon or a channel.
  std::string package_name;

  /// What the signed manifest that offered the package says about it; empty if any source may say
  /// what it is.
  std::optional<catalog::PackageDigest> package_digest;

  /// What the manifest says of the component being installed.
  ComponentRecord record;

  /// The component's libraries: file names without a folder.
  std::vector<std::string> libraries;

  /// Whether the main client is to be started again after the package has been installed.
  bool restart = false;

  /// The suite's file-system object; null if there is none.
  platform::FileSystemObject* file_system = nullptr;
};

}  // namespace kitbay::install
