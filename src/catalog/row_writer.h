#pragma once

#include <cstdint>
#include <string_view>

#include "base/component_kind.h"

namespace kitbay::catalog {

/// What is installed, and what can be installed; each has one list per kind.
enum class Category { kInstalled, kNew };

/// A component as its row shows it. The texts live as long as the call that gets them.
struct ComponentRow {
  std::string_view name;
  std::string_view version;
  std::string_view description;
  std::int16_t number;  ///< counts the rows of a list, from 1
};

/// Shows lists of components. Nothing throws: a failure is logged, and the row or line stays
/// incomplete.
class RowWriter {
 public:
  virtual ~RowWriter() = default;

  /// Adds the category's tabs, unless they already exist.
  virtual void AddImageTab(Category category) = 0;

  /// Shows or hides the tab of the kind's new components.
  virtual void ShowTab(base::ComponentKind kind, bool shown) = 0;

  /// Empties the list and writes its heading.
  virtual void FillDivHeader(Category category, base::ComponentKind kind) = 0;

  /// Shows, in place of the new components, that there are none.
  virtual void FillEmptyDivHeader(base::ComponentKind kind) = 0;

  /// Shows, in place of the installed components, that there are none: for the list of the local
  /// files (`is_local`), or for the list with update status.
  virtual void FillDivStatus(base::ComponentKind kind, bool is_local) = 0;

  /// Adds an installed component, with a Remove button unless it is a core component.
  virtual void fillDiv(base::ComponentKind kind, const ComponentRow& row, bool is_core) = 0;

  /// Adds an installed component that has an update, with an Update button, and also with a Remove
  /// button unless it is a core component.
  virtual void fillDivWithUpdates(base::ComponentKind kind, const ComponentRow& row,
                                  bool is_core) = 0;

  /// Adds a component that can be installed.
  virtual void showUpdates(base::ComponentKind kind, const ComponentRow& row) = 0;
};

}  // namespace kitbay::catalog
