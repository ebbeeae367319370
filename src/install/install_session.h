#pragma once

#include <string>
#include <vector>

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

  /// The file name of the signed manifest that offered the package; empty where any source may
  /// tell what it is.
  std::string package_manifest;

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
