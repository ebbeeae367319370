#pragma once

#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "source_tool/disk.h"

namespace kitbay::source_tool {

/// The user whose lists are shown.
struct RehearsedUser {
  std::string registry;                ///< the path of an olregistry.xml
  std::string custom_registry = {};    ///< the path of a customregistry.xml; empty if there is none
  std::vector<std::string> manifests;  ///< paths, in the order of the user's sources

  /// The versions of installed libraries, by the component's id; "N/A" if none is given.
  std::map<std::string, std::string> versions = {};
};

/// Uses Kitbay's own procedures to write the lists that Kitbay would show this user, and what it
/// would write to its log. Returns whether that log is empty. Throws `base::Failure` if a file
/// cannot be read.
bool Rehearse(const RehearsedUser& user, bool as_json, std::ostream& out);

}  // namespace kitbay::source_tool
