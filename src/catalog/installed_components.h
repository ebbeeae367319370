#pragma once

#include <string>
#include <unordered_set>

#include "base/error_log.h"
#include "catalog/catalog_files.h"
#include "catalog/file_version.h"
#include "catalog/installed_entries.h"
#include "catalog/row_number.h"
#include "catalog/row_writer.h"

namespace kitbay::catalog {

/// Lists what is installed, only from the local files.
class InstalledComponents {
 public:
  InstalledComponents(base::ErrorLog& log, CatalogFiles& files, const FileVersions& versions,
                      RowWriter& rows)
      : log_(log), files_(files), versions_(versions), rows_(rows) {}

  /// Each fills its kind's installed list. A datastore that does not load is logged and leaves the
  /// page unchanged; an entry without one of its texts is logged and ends the list there.
  void InitialInstalledAddons();
  void InitialInstalledTransports();

  /// The datastore's channels, then those of the user's custom registry; each id once, ignoring
  /// case.
  void InitialInstalledChannels();

 private:
  void ListLocalEntries(base::ComponentKind kind);

  void AddChannelList(InstalledEntries& channels, std::unordered_set<std::string>& shown,
                      RowNumber& row);
  void AddChannelListDirect(InstalledEntries& channels, std::unordered_set<std::string>& shown,
                            RowNumber& row);
  void AddNewChannel(InstalledEntry& channel, std::unordered_set<std::string>& shown,
                     RowNumber& row);
  void AddRow(base::ComponentKind kind, InstalledEntry& entry, RowNumber& row);

  base::ErrorLog& log_;
  CatalogFiles& files_;
  const FileVersions& versions_;
  RowWriter& rows_;
};

}  // namespace kitbay::catalog
