#pragma once

#include <string>
#include <vector>

#include "base/component_kind.h"

namespace kitbay::catalog {

/// One component that an update source offers and that is not installed.
struct NewComponent {
  std::string id;
  std::string name;
  std::string version;
  std::string description;
  std::string url;
};

/// What the last listing of new components found, by kind, in row order.
using NewComponents = base::PerKind<std::vector<NewComponent>>;

}  // namespace kitbay::catalog
