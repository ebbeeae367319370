#include "install/clicked_row.h"

#include <utility>

#include "view/row_nodes.h"

namespace kitbay::install {

ClickedRow TakeClickedRow(const view::PageDocument& page) {
  platform::HtmlNodeRef button = page.document().EventSource();
  const platform::HtmlNodeRef row = view::Needed(view::RowOfButton(button));
  return {.button = std::move(button),
          .row_id = row->Id(),
          .row_name = view::NameMarkup(row),
          .name = view::ShownName(row)};
}

}  // namespace kitbay::install
