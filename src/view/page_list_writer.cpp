#include "view/page_list_writer.h"

#include <string>

#include "view/page_ids.h"

namespace kitbay::view {

using base::ComponentKind;
using catalog::Category;
using catalog::ComponentRow;

void PageListWriter::AddImageTab(Category category) {
  if (category == Category::kInstalled) {
    rows_.AddImageTab(kInstalledBarHolder, kInstalledBarMarkup);
  } else {
    rows_.AddImageTab(kUpdatesBarHolder, kUpdatesBarMarkup);
  }
}

void PageListWriter::ShowTab(ComponentKind kind, bool shown) {
  rows_.ShowTab(kUpdatesBar, kTabs[kind], shown);
}

void PageListWriter::FillDivHeader(Category category, ComponentKind kind) {
  if (category == Category::kInstalled) {
    rows_.FillDivHeader(kInstalledContainers[kind], kInstalledBar, kListTexts[kind].installed);
  } else {
    rows_.FillDivHeader(kUpdatedContainers[kind], kUpdatesBar, kListTexts[kind].offered);
  }
}

void PageListWriter::FillEmptyDivHeader(ComponentKind kind) {
  rows_.FillEmptyDivHeader(kUpdatedContainers[kind], kListTexts[kind].nothing_offered);
}

void PageListWriter::FillDivStatus(ComponentKind kind, bool is_local) {
  const ListTexts& texts = kListTexts[kind];
  rows_.FillDivStatus(kInstalledContainers[kind],
                      is_local ? texts.nothing_local : texts.nothing_installed);
}

void PageListWriter::fillDiv(ComponentKind kind, const ComponentRow& row, bool is_core) {
  rows_.fillDiv(kInstalledContainers[kind], std::string(row.name), std::string(row.version),
                std::string(row.description), row.number, is_core);
}

void PageListWriter::fillDivWithUpdates(ComponentKind kind, const ComponentRow& row, bool is_core) {
  rows_.fillDivWithUpdates(kInstalledContainers[kind], std::string(row.name),
                           std::string(row.version), std::string(row.description), row.number,
                           is_core, false);
}

void PageListWriter::showUpdates(ComponentKind kind, const ComponentRow& row) {
  rows_.showUpdates(kUpdatedContainers[kind], std::string(row.name), std::string(row.version),
                    std::string(row.description), row.number);
}

}  // namespace kitbay::view
