#pragma once

#include <map>
#include <string>

#include "base/component_kind.h"
#include "platform/files.h"
#include "source_tool/package_rules.h"

namespace kitbay::source_tool {

/// The bytes of a manifest without entries.
std::string EmptyManifest();

/// A package to be entered into a manifest.
struct Addition {
  std::string package;  ///< the path of its file
  base::ComponentKind kind = base::ComponentKind::kAddon;
  std::string url_folder;  ///< where packages lie; empty for that of the entry's URL of before

  /// Texts of the entry that are given rather than read, by element: "name", "progid".
  std::map<std::string, std::string> texts = {};
};

/// What was entered.
struct Entered {
  std::string id;
  std::string version;
  bool is_new = false;
};

/// The package's id: its file name without ".zip".
std::string IdOf(const std::string& package);

/// Enters the package into the manifest's bytes: its id, size and digest, and what its libraries
/// say of the version and of themselves. An entry of that id and kind keeps all other texts. Throws
/// `base::Failure` where the package or the manifest cannot be read, or a text is lacking.
Entered AddPackage(const platform::Files& files, const Addition& addition, std::string& manifest);

}  // namespace kitbay::source_tool
