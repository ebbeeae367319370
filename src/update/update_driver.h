#pragma once

#include "base/error_log.h"
#include "catalog/update_source_list.h"
#include "update/update_source_file.h"
#include "view/page_tabs.h"

namespace kitbay::update {

/// Decides what the page shows once it has loaded.
class UpdateDriver {
 public:
  UpdateDriver(base::ErrorLog& log, UpdateSourceFile& source_file,
               const catalog::UpdateSourceList& sources, view::PageTabs& tabs)
      : log_(log), source_file_(source_file), sources_(sources), tabs_(tabs) {}

  /// Reads the update sources and shows what is installed. A list without a first source is logged
  /// and leaves the page as it is.
  void GetDirectoryPreferenceFile();

 private:
  base::ErrorLog& log_;
  UpdateSourceFile& source_file_;
  const catalog::UpdateSourceList& sources_;
  view::PageTabs& tabs_;
};

}  // namespace kitbay::update
