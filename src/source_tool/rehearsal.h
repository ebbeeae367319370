#pragma once

#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "source_tool/disk.h"

namespace kitbay::source_tool {

/// Whose lists are to be shown.
struct RehearsedUser {
  std::string registry;                ///< the path of an olregistry.xml
  std::string custom_registry = {};    ///< the path of a customregistry.xml; empty for none
  std::vector<std::string> manifests;  ///< paths, in the order of the user's sources

  /// The versions of installed libraries, by the component's id; "N/A" where none is given.
  std::map<std::string, std::string> versions = {};
};

/// Writes the lists that Kitbay would show this user, by Kitbay's own procedures, and what it would
/// write to its log. Returns whether that is nothing. Throws `base::Failure` where a file cannot be
/// read.
bool Rehearse(const RehearsedUser& user, bool as_json, std::ostream& out);

}  // namespace kitbay::source_tool
