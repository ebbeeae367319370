#pragma once

#include <string>

#include "platform/html_document.h"

namespace kitbay::view {

/// The parts of a component's row, in their order on the page:
///
///     row            its id is the row's number
///       name line    the name and the version
///       panel        hidden until the row is opened
///         span       the description and the cell of the buttons
///
/// Each returns an empty handle if the given element has no such part, or if the given handle is
/// empty.
platform::HtmlNodeRef NameLineOf(const platform::HtmlNodeRef& row);
platform::HtmlNodeRef NameOf(const platform::HtmlNodeRef& row);
platform::HtmlNodeRef VersionOf(const platform::HtmlNodeRef& row);
platform::HtmlNodeRef PanelOf(const platform::HtmlNodeRef& row);
platform::HtmlNodeRef ButtonCellOf(const platform::HtmlNodeRef& row);

/// The panel, and the row, of a button; empty if the button is not deep enough in the page.
platform::HtmlNodeRef PanelOfButton(const platform::HtmlNodeRef& button);
platform::HtmlNodeRef RowOfButton(const platform::HtmlNodeRef& button);

/// Whether that child of a list is a row. The heading of a list is also an element, but has only
/// one child element.
bool IsRow(const platform::HtmlNodeRef& element);

/// The name as it is in the row, as markup: the same whether the row is shown or hidden. Empty if
/// the row has no name.
std::string NameMarkup(const platform::HtmlNodeRef& row);

}  // namespace kitbay::view
