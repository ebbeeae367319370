#pragma once

#include <optional>
#include <string>

#include "base/component_kind.h"
#include "base/settings.h"
#include "catalog/package_digest.h"

namespace kitbay::update {

/// A package whose download was requested and has not ended; all texts are empty if there is none.
struct PendingPackage {
  std::string file_path;      ///< the file path of the request
  std::string name;           ///< the package's name, without ".zip"
  std::string row_id = {};    ///< the number of the row that was clicked for it
  std::string row_name = {};  ///< the name that the row shows

  /// What the package must be, if its source signs its manifests.
  std::optional<catalog::PackageDigest> digest = {};
};
using PendingPackages = base::PerKind<PendingPackage>;

/// The file to which the package `name` is downloaded, as a Windows path.
inline std::string PackagePath(const base::Settings& settings, const std::string& name) {
  return settings.InstallFolder + "\\Temp\\" + name + ".zip";
}

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
