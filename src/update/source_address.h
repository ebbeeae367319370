#pragma once

#include <string>

namespace kitbay::update {

/// Where a file is on the network.
struct Address {
  std::string server;
  std::string file_path;  ///< begins with "/"
};

/// An update source or the URL of a package, split at its first "/"; without one, both parts are
/// the whole text.
Address SplitSource(const std::string& source);

}  // namespace kitbay::update
