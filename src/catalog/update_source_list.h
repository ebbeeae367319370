#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace kitbay::catalog {

/// What is known about the maker of a source's manifests.
struct SourceKey {
  std::string key;           ///< the public key in hexadecimal digits, as in the user's file
  std::uint64_t serial = 0;  ///< the highest serial number of a manifest seen so far
};

/// The update sources of this run: URLs without a scheme, host followed by path.
struct UpdateSourceList {
  std::vector<std::string> UpdateSources;   ///< all sources, in the order of the user's list
  std::vector<std::string> PendingSources;  ///< those still to be asked
  bool UsedCachedManifest = false;          ///< whether a stored manifest is used for some source

  /// The keys of the sources that have one, by the file name of their manifest in lower case.
  std::map<std::string, SourceKey> keys = {};

  /// The key with which the manifest with that file name must be signed; null if it need not be.
  const SourceKey* KeyOf(const std::string& manifest) const;
};

}  // namespace kitbay::catalog
