#pragma once

#include <string>
#include <vector>

#include "base/component_kind.h"

namespace kitbay::catalog {

/// What an installation needs to know of a component that an update source offers and that is not
/// installed.
struct NewComponent {
  std::string id;
  std::string name;
  std::string url;
};

/// What the last listing of new components found, by kind, in row order.
using NewComponents = base::PerKind<std::vector<NewComponent>>;

}  // namespace kitbay::catalog
