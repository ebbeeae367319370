#pragma once

#include <functional>
#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "base/component_kind.h"
#include "base/error_log.h"
#include "catalog/catalog_files.h"
#include "catalog/file_version.h"
#include "catalog/installed_rows.h"
#include "catalog/installed_with_updates.h"
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

  void AddAddonInfo(const Entries& installed, const std::string& manifest, RowNumber& row) override;
  void AddTransportInfo(const Entries& installed, const std::string& manifest,
                        RowNumber& row) override;
  void AddInfo(const Entries& installed, const std::string& manifest, RowNumber& row) override;
  void AddCustomInfo(const Entries& installed, const std::string& manifest,
                     RowNumber& row) override;

 private:
  // The version of the installed entry with that id.
  using VersionOf = std::function<std::string(const pugi::xml_node& entry, const std::string& id)>;

  void CheckEntries(base::ComponentKind kind, const Entries& installed, const std::string& manifest,
                    const VersionOf& version_of, RowNumber& row);
  void AddRow(base::ComponentKind kind, const pugi::xml_node& entry, const std::string& id,
              const std::string& version, bool has_update, RowNumber& row);

  base::ErrorLog& log_;
  CatalogFiles& files_;
  const FileVersions& versions_;
  InstalledRows& shown_;
  RowWriter& rows_;
};

}  // namespace kitbay::catalog
