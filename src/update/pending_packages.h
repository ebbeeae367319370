#pragma once

#include <string>

#include "base/component_kind.h"

namespace kitbay::update {

/// A component package whose download was asked for and has not been answered; all texts are empty
/// where there is none.
struct PendingPackage {
  std::string file_path;      ///< the file path of the request
  std::string name;           ///< the package's name, without ".zip"
  std::string row_id = {};    ///< the number of the row that was clicked for it
  std::string row_name = {};  ///< what that row shows as its name
};
using PendingPackages = base::PerKind<PendingPackage>;

}  // namespace kitbay::update
