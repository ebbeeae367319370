#include "view/page_rows.h"

#include <limits>
#include <memory>

#include "base/failure.h"
#include "base/guarded.h"
#include "view/page_lists.h"
#include "view/row_focus.h"
#include "view/row_markup.h"
#include "view/row_nodes.h"
#include "view/tab_description.h"

namespace kitbay::view {

using base::guarded;
using platform::HtmlNodeRef;

void PageRows::AddImageTab(const std::string& holder, const std::string& markup) {
  guarded(log_, "Kitbay::AddImageTab", [&] {
    const HtmlNodeRef element = page_.Element(holder);
    if (element->InnerHtml().empty()) {
      element->SetInnerHtml(markup);
      DescribeTabs(Needed(element->Child(0)));
      if (!state_.tab_folder.empty()) {
        ShowTabImages(page_, state_.tab_folder);
      }
    }
  });
}

void PageRows::ShowTab(const std::string& tab_bar, const std::string& tab, bool shown) {
  guarded(log_, "Kitbay::ShowTab", [&] {
    const HtmlNodeRef bar = page_.Element(tab_bar);
    const int count = bar->ChildCount();
    for (int i = 0; i < count; ++i) {
      const HtmlNodeRef image = Needed(bar->Child(i));
      if (image->Id() == tab) {
        image->SetStyle("display", shown ? "" : "none");
      }
    }
  });
}

void PageRows::FillDivHeader(const std::string& container, const std::string& tab_bar,
                             const std::string& title) {
  guarded(log_, "Kitbay::FillDivHeader", [&] {
    const HtmlNodeRef list = state_.lists.Begin(page_, container);
    const HtmlNodeRef bar = page_.Element(tab_bar);
    list->SetStyle("top", bar->Style("height"));
    FitUnderBar(page_, list, bar);
    state_.lists.Of(page_, container).tab_bar = tab_bar;
    list->SetInnerHtml("<font style='font-size:11; font-family:verdana; '>" + title +
                       "<hr style='height:1pt;'></font>");
  });
}

void PageRows::FillEmptyDivHeader(const std::string& container, const std::string& markup) {
  guarded(log_, "Kitbay::FillEmptyDivHeader",
          [&] { state_.lists.Begin(page_, container)->SetInnerHtml(markup); });
}

void PageRows::FillDivStatus(const std::string& container, const std::string& message) {
  guarded(log_, "Kitbay::FillDivStatus", [&] {
    state_.lists.Begin(page_, container)->SetInnerHtml(message + "<hr style='height:1pt; '>");
  });
}

std::string PageRows::MakeAddonNameStr(const std::string& name, std::int16_t row,
                                       const std::string& version) {
  std::string markup;
  guarded(log_, "Kitbay::MakeAddonNameStr", [&] { markup = NameLine(name, row, version); });
  return markup;
}

std::string PageRows::MakeAddonDescStr(const std::string& description, std::int16_t row) {
  std::string markup;
  guarded(log_, "Kitbay::MakeAddonDescStr", [&] { markup = DescriptionOpening(description, row); });
  return markup;
}

void PageRows::fillDiv(const std::string& container, const std::string& name,
                       const std::string& version, const std::string& description, std::int16_t row,
                       bool is_core) {
  guarded(log_, "Kitbay::fillDiv", [&] {
    const HtmlNodeRef element = NewRow(RowStartTag(row), MakeAddonNameStr(name, row, version));
    FinishRow({std::to_string(row), name, element}, container,
              InstalledPanel(MakeAddonDescStr(description, row), is_core),
              RowAttributes(name, version, false));
  });
}

void PageRows::fillDivWithUpdates(const std::string& container, const std::string& name,
                                  const std::string& version, const std::string& description,
                                  std::int16_t row, bool is_core, bool not_installed) {
  guarded(log_, "Kitbay::fillDivWithUpdates", [&] {
    const HtmlNodeRef element =
        NewRow(RowWithUpdatesStartTag(row), MakeAddonNameStr(name, row, version));
    FinishRow(
        {std::to_string(row), name, element}, container,
        PanelWithUpdates(description, row, is_core, not_installed, state_.download_in_progress),
        RowAttributes(name, version, !not_installed));
  });
}

void PageRows::showUpdates(const std::string& container, const std::string& name,
                           const std::string& version, const std::string& description,
                           std::int16_t row) {
  guarded(log_, "Kitbay::showUpdates", [&] {
    const HtmlNodeRef element = NewRow(RowStartTag(row), MakeAddonNameStr(name, row, version));
    FinishRow({std::to_string(row), name, element}, container,
              NewComponentPanel(description, row, state_.download_in_progress),
              RowAttributes(name, version, false));
  });
}

HtmlNodeRef PageRows::NewRow(const std::string& start_tag, const std::string& name_line) {
  HtmlNodeRef row = Needed(page_.document().CreateElement(start_tag));
  row->InsertAdjacentHtml("afterBegin", name_line);
  return row;
}

// Makes few calls into the document: a list may have thousands of rows, and each call is
// noticeable.
void PageRows::FinishRow(const ListedRow& row, const std::string& container,
                         const std::string& panel, const std::string& attributes) {
  row.node->InsertAdjacentHtml("beforeEnd", panel);
  PageList& list = state_.lists.Of(page_, container);
  if (!list.element) {
    list.element = page_.Element(container);
  }
  list.element->AppendChild(row.node);
  list.rows.push_back(row);
  list.is_coloured = false;
  row.node->MergeAttributes(Needed(page_.document().CreateElement(attributes)));
  if (list.rows.size() == 1) {
    RowFocus(page_, state_.lists).MakeTabStop({container, 0});
  }
}

void PageRows::FollowCurrentRow(const std::string& container) {
  HtmlNodeRef row = FindCurrentRow(container);
  if (row && NameMarkup(row) == state_.current_row_name) {
    return;
  }
  row = FindByName(container);
  state_.current_row_id = row ? row->Id() : "";
}

void PageRows::ModifyDiv(const std::string& container, const std::string& version,
                         const std::string& buttons) {
  guarded(log_, "Kitbay::ModifyDiv", [&] {
    const HtmlNodeRef row = state_.update_in_progress ? FindCurrentRow(container) : nullptr;
    if (!row) {
      return;
    }
    const HtmlNodeRef version_cell = Needed(VersionOf(row));
    version_cell->SetInnerText("");
    version_cell->SetInnerText("Version " + version);
    const HtmlNodeRef button_cell = Needed(ButtonCellOf(row));
    button_cell->SetInnerHtml("");
    button_cell->SetInnerHtml(buttons);
    row->SetProperty("className", "");
    row->MergeAttributes(
        Needed(page_.document().CreateElement(RowLabel(NameMarkup(row), version))));
  });
}

void PageRows::RemoveDiv(const std::string& container) {
  guarded(log_, "Kitbay::RemoveDiv", [&] { RemoveCurrentRow(container); });
}

void PageRows::RemoveNode(const std::string& container) {
  guarded(log_, "Kitbay::RemoveNode ", [&] { RemoveCurrentRow(container); });
}

void PageRows::RemoveCurrentRow(const std::string& container) {
  const HtmlNodeRef row = FindCurrentRow(container);
  if (!row) {
    return;
  }
  const auto index = state_.lists.Of(page_, container).IndexOf(state_.current_row_id);
  if (index) {
    RowFocus(page_, state_.lists).RemoveRow({container, *index});
  } else {
    row->RemoveNode(true);
  }
}

// The row element and its name line both have the number; the row is the one directly in the
// container. The last of the elements found is never examined.
HtmlNodeRef PageRows::FindCurrentRow(const std::string& container) const {
  if (state_.current_row_id.empty()) {
    return nullptr;
  }
  const auto bearers = page_.document().GetElementsByName(state_.current_row_id);
  const int bound = bearers->Length() - 2;
  if (bound > std::numeric_limits<std::int16_t>::max()) {
    throw base::Failure(base::RuntimeError::kOverflow);
  }
  for (int i = 0; i <= bound; ++i) {
    HtmlNodeRef bearer = Needed(bearers->Item(i));
    const HtmlNodeRef parent = bearer->ParentElement();
    if (parent && parent->Id() == container) {
      return bearer;
    }
  }
  return nullptr;
}

HtmlNodeRef PageRows::FindByName(const std::string& container) const {
  const HtmlNodeRef list = page_.document().AllItem(container);
  if (!list) {
    return nullptr;
  }
  for (const HtmlNodeRef& row : list->Children()) {
    if (IsRow(row) && NameMarkup(row) == state_.current_row_name) {
      return row;
    }
  }
  return nullptr;
}

}  // namespace kitbay::view
