#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/component_kind.h"
#include "catalog/package_digest.h"

namespace kitbay::catalog {

/// What an installation needs to know about a component that an update source offers and that is
/// not installed.
struct NewComponent {
  std::string id;
  std::string name;
  std::string url;
  std::optional<PackageDigest> digest = {};  ///< of the package, if its source signs
};

/// What the last listing of new components found, by kind, in row order.
using NewComponents = base::PerKind<std::vector<NewComponent>>;

}  // namespace kitbay::catalog
