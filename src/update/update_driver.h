#pragma once

#include <map>
#include <string>

#include "base/error_log.h"
#include "base/settings.h"
#include "catalog/manifest_trust.h"
#include "catalog/row_writer.h"
#include "catalog/update_source_list.h"
#include "platform/clock.h"
#include "platform/desktop.h"
#include "platform/files.h"
#include "update/manifest_cache.h"
#include "update/update_requests.h"
#include "update/update_source_file.h"
#include "view/page_categories.h"
#include "view/page_tabs.h"

namespace kitbay::update {

/// What `UpdateDriver` works with.
struct DriverParts {
  base::ErrorLog& log;
  const base::Settings& settings;
  const platform::Files& files;
  const platform::Clock& clock;
  catalog::RowWriter& rows;
  view::PageTabs& tabs;
  view::PageCategories& categories;
  UpdateSourceFile& source_file;
  catalog::UpdateSourceList& sources;
  const ManifestCache& manifests;
  UpdateRequests& requests;
  const catalog::ManifestTrust& trust;
  platform::Desktop& desktop;
};

/// Decides, once the page has loaded, whether to show only what is installed or to ask the update
/// sources.
class UpdateDriver {
 public:
  explicit UpdateDriver(const DriverParts& parts) : parts_(parts) {}

  /// Reads the update sources, shows what is known, and asks the sources whose manifest was not
  /// fetched today; asks none if the suite may not be changed. An empty list is logged, and what is
  /// installed is shown. A stored manifest counts as missing if its source signs its manifests and
  /// this one is not acceptable; that is logged and reported.
  void GetDirectoryPreferenceFile();

 private:
  void ShowLocalDataAndAsk();
  void ShowWithCachedManifests();
  void DropFreshSources();
  bool IsCached(const std::string& manifest) const;
  bool IsFetchedToday(const std::string& manifest) const;
  void FindRefused();
  void TellRefused();

  DriverParts parts_;
  std::map<std::string, std::string> refused_;  // why, by the manifest's name in lower case
};

}  // namespace kitbay::update
