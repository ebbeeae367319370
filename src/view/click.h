#pragma once

#include <optional>
#include <string>

#include "base/component_kind.h"
#include "platform/html_document.h"

namespace kitbay::view {

/// What a button of a row does.
enum class ClickAction { kUpdate, kRemove, kInstall };

/// A click on a button in the row of a component. It is read once, before anything is done: the
/// lists may be filled again while the user is asked.
struct Click {
  base::ComponentKind kind;
  ClickAction action;
  platform::HtmlNodeRef button;
  std::string row_id;     ///< the row's number
  std::string row_name;   ///< the name as markup, by which the row is found again
  std::string name_line;  ///< the text of the row's first line: the name and the version

  /// The component's name as the user reads it: the name line up to "Version". Throws 5 if the line
  /// does not contain that word.
  std::string Name() const;
};

/// Reads a click on `element`; empty if that is not a button in a row of one of the six lists.
/// Throws if the row's panel has no number.
std::optional<Click> ReadClick(const platform::HtmlNodeRef& element);

}  // namespace kitbay::view
