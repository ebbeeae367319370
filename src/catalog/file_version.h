#pragma once

#include <string>

#include "base/error_log.h"
#include "base/settings.h"
#include "catalog/catalog_files.h"
#include "platform/version_resource.h"

namespace kitbay::catalog {

/// Shown in place of a version that cannot be read.
inline constexpr const char* kNoVersion = "N/A";

/// Reads the versions of installed components from their libraries, each library once per refresh
/// of the lists.
class FileVersions {
 public:
  FileVersions(base::ErrorLog& log, const base::Settings& settings,
               const platform::VersionResource& resources, CatalogFiles& files)
      : log_(log), settings_(settings), resources_(resources), files_(files) {}

  /// The file version of the library at `path`: four numbers joined by ".", each written as a
  /// signed 16-bit number; `kNoVersion` if it has none.
  std::string GetVersionInfo(const std::string& path) const;

  /// The version of an addon: that of the library in the addon's own folder or else in the
  /// installation folder.
  std::string OfAddon(const std::string& id, const std::string& filename) const;

  /// The version of a transport, whose library is in the installation folder.
  std::string OfTransport(const std::string& filename) const;

 private:
  std::string VersionInThisRefresh(const std::string& path) const;

  base::ErrorLog& log_;
  const base::Settings& settings_;
  const platform::VersionResource& resources_;
  CatalogFiles& files_;
};

}  // namespace kitbay::catalog
