#pragma once

#include "catalog/row_writer.h"
#include "view/page_rows.h"

namespace kitbay::view {

/// Shows the catalog's lists in the containers of the page.
class PageListWriter : public catalog::RowWriter {
 public:
  explicit PageListWriter(PageRows& rows) : rows_(rows) {}

  void AddImageTab(catalog::Category category) override;
  void ShowTab(base::ComponentKind kind, bool shown) override;
  void FillDivHeader(catalog::Category category, base::ComponentKind kind) override;
  void FillEmptyDivHeader(base::ComponentKind kind) override;
  void FillDivStatus(base::ComponentKind kind, bool is_local) override;
  void fillDiv(base::ComponentKind kind, const catalog::ComponentRow& row, bool is_core) override;
  void fillDivWithUpdates(base::ComponentKind kind, const catalog::ComponentRow& row,
                          bool is_core) override;
  void showUpdates(base::ComponentKind kind, const catalog::ComponentRow& row) override;

 private:
  PageRows& rows_;
};

}  // namespace kitbay::view
