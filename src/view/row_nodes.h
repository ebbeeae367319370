#pragma once

#include <string>

#include "platform/html_document.h"

namespace kitbay::view {

/// The parts of a component's row, in the order in which they stand on the page:
///
///     row            its id is the row's number
///       name line    the name and the version
///       panel        hidden until the row is opened
///         span       the description and the cell of the buttons
///
/// Each gives an empty handle where the element, or the empty handle, that it is given has no such
/// part.
platform::HtmlNodeRef NameLineOf(const platform::HtmlNodeRef& row);
platform::HtmlNodeRef NameOf(const platform::HtmlNodeRef& row);
platform::HtmlNodeRef VersionOf(const platform::HtmlNodeRef& row);
platform::HtmlNodeRef PanelOf(const platform::HtmlNodeRef& row);
platform::HtmlNodeRef ButtonCellOf(const platform::HtmlNodeRef& row);

/// The panel, and the row, that a button stands in; empty when it is not deep enough in the page
/// for one.
platform::HtmlNodeRef PanelOfButton(const platform::HtmlNodeRef& button);
platform::HtmlNodeRef RowOfButton(const platform::HtmlNodeRef& button);

/// Whether that child of a list is a row. The heading of a list is an element too, but it has a
/// single child element.
bool IsRow(const platform::HtmlNodeRef& element);

/// The component's name as the user reads it in the row: what stands in its name line before
/// "Version". Fails with 5 when that does not stand there, with 91 without a name line.
std::string ShownName(const platform::HtmlNodeRef& row);

/// The name as it stands in the row, as markup: the same whether the row is shown or hidden. Empty
/// when the row has no name.
std::string NameMarkup(const platform::HtmlNodeRef& row);

}  // namespace kitbay::view
