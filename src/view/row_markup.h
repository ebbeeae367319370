#pragma once

#include <cstdint>
#include <string>

namespace kitbay::view {

/// Markup of component rows. Nothing is escaped: markup in a name, version or description goes into
/// the page as markup. The odd blanks and slips are part of the markup.

/// The name line of row `row`.
std::string NameLine(const std::string& name, std::int16_t row, const std::string& version);

/// The start of the description panel of row `row`; the span and the panel stay open.
std::string DescriptionOpening(const std::string& description, std::int16_t row);

/// The start tag of a row element as `fillDiv` and `showUpdates` write it, and as
/// `fillDivWithUpdates` does.
std::string RowStartTag(std::int16_t row);
std::string RowWithUpdatesStartTag(std::int16_t row);

/// The start tag of an element whose attributes are copied to a finished row: what a screen reader
/// says about it while it is closed, its place in the Tab order, and the mark of an update.
std::string RowAttributes(const std::string& name, const std::string& version, bool has_update);

/// The same for a row whose version has changed: what is said about it, open or closed.
std::string RowLabel(const std::string& name, const std::string& version);

/// The id of a row's action button; a second button has another.
inline constexpr const char* kActionButton = "btninstalled";

/// The button that removes an installed component.
inline constexpr const char* kRemoveButton =
    "<input type='button' id='btninstalled' value='Remove' style='width:70; height:22; "
    "font-family:verdana; font-size:11;'>";

/// The whole description panel of an installed row, beginning with `opening`.
std::string InstalledPanel(const std::string& opening, bool is_core);

/// The whole description panel of a row with update status: one Install button if `not_installed`,
/// one Update button if `is_core`, otherwise Remove and Update.
std::string PanelWithUpdates(const std::string& description, std::int16_t row, bool is_core,
                             bool not_installed, bool download_in_progress);

/// The whole description panel of a component that can be installed.
std::string NewComponentPanel(const std::string& description, std::int16_t row,
                              bool download_in_progress);

}  // namespace kitbay::view
