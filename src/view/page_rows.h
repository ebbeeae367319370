#pragma once

#include <cstdint>
#include <string>

#include "base/error_log.h"
#include "view/page_document.h"
#include "view/page_lists.h"
#include "view/view_state.h"

namespace kitbay::view {

/// Writes, changes and removes the rows of the page's containers. Every procedure logs its failure
/// and leaves the page in the state it had reached.
class PageRows {
 public:
  PageRows(base::ErrorLog& log, const PageDocument& page, ViewState& state)
      : log_(log), page_(page), state_(state) {}

  /// Writes a tab bar into its holder, unless the holder already has content.
  void AddImageTab(const std::string& holder, const std::string& markup);

  /// Shows or hides the image of `tab` in a tab bar.
  void ShowTab(const std::string& tab_bar, const std::string& tab, bool shown);

  /// Fits the container under the tab bar, empties it and writes `title`.
  void FillDivHeader(const std::string& container, const std::string& tab_bar,
                     const std::string& title);

  /// Replaces the container's content with `markup`.
  void FillEmptyDivHeader(const std::string& container, const std::string& markup);

  /// Replaces the container's content with a status line.
  void FillDivStatus(const std::string& container, const std::string& message);

  /// Adds the row of an installed component, with a Remove button unless it is a core component.
  void fillDiv(const std::string& container, const std::string& name, const std::string& version,
               const std::string& description, std::int16_t row, bool is_core);

  /// Adds a row with an Install button if `not_installed`, with an Update button if `is_core`, and
  /// with a Remove and an Update button otherwise.
  void fillDivWithUpdates(const std::string& container, const std::string& name,
                          const std::string& version, const std::string& description,
                          std::int16_t row, bool is_core, bool not_installed);

  /// Adds the row of a component that can be installed.
  void showUpdates(const std::string& container, const std::string& name,
                   const std::string& version, const std::string& description, std::int16_t row);

  /// Makes the row of the click the current row again after `container` may have been filled again
  /// and its rows have other numbers: the row with the number if it still shows the name, otherwise
  /// the first row with the name. If no row has the name, there is no current row.
  void FollowCurrentRow(const std::string& container);

  /// Gives the current row of `container` another version and other buttons; changes nothing unless
  /// a component is being updated.
  void ModifyDiv(const std::string& container, const std::string& version,
                 const std::string& buttons);

  /// Each removes the current row of `container` from the page: one whose component is now
  /// installed, and one whose component was removed.
  void RemoveDiv(const std::string& container);
  void RemoveNode(const std::string& container);

 private:
  std::string MakeAddonNameStr(const std::string& name, std::int16_t row,
                               const std::string& version);
  std::string MakeAddonDescStr(const std::string& description, std::int16_t row);

  platform::HtmlNodeRef NewRow(const std::string& start_tag, const std::string& name_line);
  void FinishRow(const ListedRow& row, const std::string& container, const std::string& panel,
                 const std::string& attributes);
  void RemoveCurrentRow(const std::string& container);
  platform::HtmlNodeRef FindCurrentRow(const std::string& container) const;
  platform::HtmlNodeRef FindByName(const std::string& container) const;

  base::ErrorLog& log_;
  const PageDocument& page_;
  ViewState& state_;
};

}  // namespace kitbay::view
