#pragma once

#include <map>
#include <string>

#include "base/component_kind.h"
#include "platform/files.h"
#include "source_tool/package_rules.h"

namespace kitbay::source_tool {

/// The bytes of a manifest without entries.
std::string EmptyManifest();

/// A package to be added to a manifest.
struct Addition {
  std::string package;  ///< the path of its file
  base::ComponentKind kind = base::ComponentKind::kAddon;
  std::string url_folder;  ///< where packages lie; empty to keep that of the entry's previous URL

  /// Texts of the entry that are given rather than read, by element, such as "name" or "progid".
  std::map<std::string, std::string> texts = {};
};

/// What was added.
struct Entered {
  std::string id;
  std::string version;
  bool is_new = false;
};

/// The package's id: its file name without ".zip".
std::string IdOf(const std::string& package);

/// Enters the package into the manifest's bytes: its id, size and digest, and its version and
/// libraries as read from the package. An existing entry of that id and kind keeps all other texts.
/// Throws `base::Failure` if the package or the manifest cannot be read, or a text is missing.
Entered AddPackage(const platform::Files& files, const Addition& addition, std::string& manifest);

}  // namespace kitbay::source_tool
