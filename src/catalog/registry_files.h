#pragma once

#include <string>

#include "base/settings.h"
#include "catalog/xml_document.h"
#include "platform/files.h"

namespace kitbay::catalog {

/// The suite's two registry files: the datastore, shared with the main client, and the user's
/// custom registry.
class RegistryFiles {
 public:
  RegistryFiles(const platform::Files& files, const base::Settings& settings)
      : files_(files), settings_(settings) {}

  /// Loads the datastore; throws `base::Failure` when it does not load.
  void LoadDatastore(XmlDocument& document) const;
  bool TryLoadDatastore(XmlDocument& document) const;
  bool TryLoadCustomRegistry(XmlDocument& document) const;

 private:
  const platform::Files& files_;
  const base::Settings& settings_;
};

/// Where the registry files are written.
std::string DatastorePath(const base::Settings& settings);
std::string CustomRegistryPath(const base::Settings& settings);

/// Whether an entry's `core` text marks a component that the user may not remove: "1" and every
/// text that sorts after it.
bool IsCore(const std::string& core);

}  // namespace kitbay::catalog
