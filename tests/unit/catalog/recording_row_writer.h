#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "catalog/row_writer.h"
#include "view/page_ids.h"

namespace kitbay::catalog {

/// Records every call, in order, as the page gets it: the procedure, a blank, and its arguments
/// joined by "|". Flags appear by their names, or as "-" when they are off.
class RecordingRowWriter : public RowWriter {
 public:
  void AddImageTab(Category category) override {
    calls.push_back(category == Category::kInstalled
                        ? std::string("AddImageTab ") + view::kInstalledBarHolder + "|" +
                              view::kInstalledBarMarkup
                        : std::string("AddImageTab ") + view::kUpdatesBarHolder + "|" +
                              view::kUpdatesBarMarkup);
  }

  void ShowTab(base::ComponentKind kind, bool shown) override {
    calls.push_back(std::string("ShowTab ") + view::kUpdatesBar + "|" + view::kTabs[kind] + "|" +
                    (shown ? "shown" : "-"));
  }

  void FillDivHeader(Category category, base::ComponentKind kind) override {
    calls.push_back(category == Category::kInstalled
                        ? std::string("FillDivHeader ") + view::kInstalledContainers[kind] + "|" +
                              view::kInstalledBar + "|" + view::kListTexts[kind].installed
                        : std::string("FillDivHeader ") + view::kUpdatedContainers[kind] + "|" +
                              view::kUpdatesBar + "|" + view::kListTexts[kind].offered);
  }

  void FillEmptyDivHeader(base::ComponentKind kind) override {
    calls.push_back(std::string("FillEmptyDivHeader ") + view::kUpdatedContainers[kind] + "|" +
                    view::kListTexts[kind].nothing_offered);
  }

  void FillDivStatus(base::ComponentKind kind, bool is_local) override {
    const view::ListTexts& texts = view::kListTexts[kind];
    calls.push_back(std::string("FillDivStatus ") + view::kInstalledContainers[kind] + "|" +
                    (is_local ? texts.nothing_local : texts.nothing_installed));
  }

  void fillDiv(base::ComponentKind kind, const ComponentRow& row, bool is_core) override {
    calls.push_back("fillDiv " + Text(view::kInstalledContainers[kind], row) + "|" +
                    (is_core ? "core" : "-"));
  }

  void fillDivWithUpdates(base::ComponentKind kind, const ComponentRow& row,
                          bool is_core) override {
    calls.push_back("fillDivWithUpdates " + Text(view::kInstalledContainers[kind], row) + "|" +
                    (is_core ? "core" : "-"));
  }

  void showUpdates(base::ComponentKind kind, const ComponentRow& row) override {
    calls.push_back("showUpdates " + Text(view::kUpdatedContainers[kind], row));
  }

  std::vector<std::string> calls;

 private:
  static std::string Text(const std::string& container, const ComponentRow& row) {
    std::string text = container;
    for (const std::string_view part : {row.name, row.version, row.description}) {
      text.append("|").append(part);
    }
    return text + "|" + std::to_string(row.number);
  }
};

}  // namespace kitbay::catalog
