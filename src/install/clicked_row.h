#pragma once

#include <string>

#include "platform/html_document.h"
#include "view/page_document.h"

namespace kitbay::install {

/// The row whose button is being clicked.
struct ClickedRow {
  platform::HtmlNodeRef button;
  std::string row_id;
  std::string row_name;  ///< the name as markup, by which the row is found again
  std::string name;      ///< the component's name as the row shows it
};

/// Reads the row of the current click. Throws 5 if its name line shows no version, 91 if the click
/// is not on a button of a row.
ClickedRow TakeClickedRow(const view::PageDocument& page);

}  // namespace kitbay::install
