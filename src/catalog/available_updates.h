#pragma once

#include <string>

#include "base/component_kind.h"
#include "base/error_log.h"
#include "catalog/catalog_files.h"
#include "catalog/file_version.h"
#include "catalog/installed_entries.h"
#include "catalog/installed_rows.h"
#include "catalog/installed_with_updates.h"
#include "catalog/offers.h"
#include "catalog/row_number.h"
#include "catalog/row_writer.h"

namespace kitbay::catalog {

/// Writes the rows of installed components, with an Update button if a manifest offers a newer
/// version. Ids must be equal, including their case; a manifest's first entry of an id counts.
///
/// A manifest that does not load is skipped. An offered version with fewer parts than the installed
/// one, or an entry without one of its texts, is logged and ends that manifest's rows.
class AvailableUpdates : public UpdateCheck {
 public:
  AvailableUpdates(base::ErrorLog& log, CatalogFiles& files, const FileVersions& versions,
                   InstalledRows& shown, RowWriter& rows)
      : log_(log), files_(files), versions_(versions), shown_(shown), rows_(rows) {}

  void AddAddonInfo(Installed installed, const std::string& manifest, RowNumber& row) override;
  void AddTransportInfo(Installed installed, const std::string& manifest, RowNumber& row) override;
  void AddInfo(Installed installed, const std::string& manifest, RowNumber& row) override;
  void AddCustomInfo(Installed installed, const std::string& manifest, RowNumber& row) override;

 private:
  void CheckEntries(base::ComponentKind kind, Installed installed, const std::string& manifest,
                    RowNumber& row);
  void AddRow(base::ComponentKind kind, InstalledEntry& entry, const OfferList& offers,
              RowNumber& row);

  base::ErrorLog& log_;
  CatalogFiles& files_;
  const FileVersions& versions_;
  InstalledRows& shown_;
  RowWriter& rows_;
};

}  // namespace kitbay::catalog
