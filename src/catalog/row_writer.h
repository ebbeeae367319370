#pragma once

#include <cstdint>
#include <string>

namespace kitbay::catalog {

/// Writes component rows, headings and status lines into the containers of the page. Nothing
/// throws: a failure is logged and the row or line stays incomplete.
class RowWriter {
 public:
  virtual ~RowWriter() = default;

  /// Writes a tab bar into its holder, unless the holder already has content.
  virtual void AddImageTab(const std::string& holder, const std::string& markup) = 0;

  /// Shows the image of `tab` in a tab bar, or hides it.
  virtual void ShowTab(const std::string& tab_bar, const std::string& tab, bool shown) = 0;

  /// Fits the container under the tab bar, empties it and writes `title`.
  virtual void FillDivHeader(const std::string& container, const std::string& tab_bar,
                             const std::string& title) = 0;

  /// Replaces the container's content with `markup`.
  virtual void FillEmptyDivHeader(const std::string& container, const std::string& markup) = 0;

  /// Replaces the container's content with a status line.
  virtual void FillDivStatus(const std::string& container, const std::string& message) = 0;

  /// Adds the row of an installed component, with a Remove button unless it is a core component.
  virtual void fillDiv(const std::string& container, const std::string& name,
                       const std::string& version, const std::string& description, std::int16_t row,
                       bool is_core) = 0;

  /// Adds a row with an Install button if `not_installed`, with an Update button if `is_core`, and
  /// with a Remove and an Update button otherwise.
  virtual void fillDivWithUpdates(const std::string& container, const std::string& name,
                                  const std::string& version, const std::string& description,
                                  std::int16_t row, bool is_core, bool not_installed) = 0;

  /// Adds the row of a component that can be installed.
  virtual void showUpdates(const std::string& container, const std::string& name,
                           const std::string& version, const std::string& description,
                           std::int16_t row) = 0;
};

}  // namespace kitbay::catalog
