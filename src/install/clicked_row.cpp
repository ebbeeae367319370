#include "install/clicked_row.h"

#include "base/failure.h"

namespace kitbay::install {
namespace {

using platform::HtmlNodeRef;
using view::Needed;

// A button stands in its cell, the cell in the panel's span, the span in the panel, the panel in
// the row.
HtmlNodeRef RowOf(const HtmlNodeRef& button) {
  constexpr int kParents = 4;
  HtmlNodeRef node = Needed(button);
  for (int i = 0; i < kParents; ++i) {
    node = Needed(node->ParentElement());
  }
  return node;
}

}  // namespace

ClickedRow TakeClickedRow(const view::PageDocument& page) {
  HtmlNodeRef button = page.document().EventSource();
  const HtmlNodeRef row = RowOf(button);
  const std::string line = Needed(row->Child(0))->InnerText();
  const std::size_t version = line.find("Version");
  if (version == std::string::npos) {
    throw base::Failure(base::RuntimeError::kInvalidProcedureCall);
  }
  return {.button = std::move(button), .row_id = row->Id(), .name = line.substr(0, version)};
}

}  // namespace kitbay::install
