#include "view/row_nodes.h"

#include "view/page_document.h"

namespace kitbay::view {
namespace {

using platform::HtmlNodeRef;

HtmlNodeRef ChildOf(const HtmlNodeRef& node, int index) {
  return node ? node->Child(index) : nullptr;
}

}  // namespace

HtmlNodeRef NameLineOf(const HtmlNodeRef& row) { return ChildOf(row, 0); }
HtmlNodeRef NameOf(const HtmlNodeRef& row) { return ChildOf(NameLineOf(row), 0); }
HtmlNodeRef VersionOf(const HtmlNodeRef& row) { return ChildOf(NameLineOf(row), 1); }
HtmlNodeRef PanelOf(const HtmlNodeRef& row) { return ChildOf(row, 1); }
HtmlNodeRef ButtonCellOf(const HtmlNodeRef& row) { return ChildOf(ChildOf(PanelOf(row), 0), 1); }

HtmlNodeRef PanelOfButton(const HtmlNodeRef& button) {
  const HtmlNodeRef cell = ParentOf(button);
  return ParentOf(ParentOf(cell));
}

HtmlNodeRef RowOfButton(const HtmlNodeRef& button) { return ParentOf(PanelOfButton(button)); }

bool IsRow(const HtmlNodeRef& element) { return element->ChildCount() > 1; }

std::string NameMarkup(const HtmlNodeRef& row) {
  const HtmlNodeRef name = NameOf(row);
  return name ? name->InnerHtml() : "";
}

}  // namespace kitbay::view
