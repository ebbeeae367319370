#pragma once

#include <string>
#include <string_view>

#include "base/component_kind.h"
#include "base/error_log.h"
#include "base/settings.h"
#include "catalog/installed_entries.h"
#include "platform/version_resource.h"

namespace kitbay::catalog {

/// Shown in place of a version that cannot be read.
inline constexpr const char* kNoVersion = "N/A";

/// Reads the versions of installed components from their libraries.
class FileVersions {
 public:
  FileVersions(base::ErrorLog& log, const base::Settings& settings,
               const platform::VersionResource& resources)
      : log_(log), settings_(settings), resources_(resources) {}

  /// The file version of the library at `path`: four numbers joined by ".", each written as a
  /// signed 16-bit number; `kNoVersion` if it has none.
  std::string GetVersionInfo(const std::string& path) const;

  /// The version of an addon: that of the library in the addon's own folder or else in the
  /// installation folder.
  std::string OfAddon(std::string_view id, std::string_view filename) const;

  /// The version of a transport, whose library is in the installation folder.
  std::string OfTransport(std::string_view filename) const;

  /// The version of an installed component: a channel's entry says it, others have a library, which
  /// is read once for an entry. Throws 91 if the entry lacks what says or names it.
  std::string_view Of(base::ComponentKind kind, InstalledEntry& entry) const;

 private:
  base::ErrorLog& log_;
  const base::Settings& settings_;
  const platform::VersionResource& resources_;
};

}  // namespace kitbay::catalog
