#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <unordered_set>

#include "base/error_log.h"
#include "base/settings.h"
#include "catalog/catalog_files.h"
#include "catalog/installed_entries.h"
#include "catalog/installed_rows.h"
#include "catalog/row_number.h"
#include "catalog/row_writer.h"
#include "catalog/update_source_list.h"

namespace kitbay::catalog {

/// Looks up installed entries in an update manifest and writes their rows.
class UpdateCheck {
 public:
  using Installed = std::span<InstalledEntry>;

  virtual ~UpdateCheck() = default;

  /// Each takes the installed entries, the manifest's file name and the number of the last row that
  /// the listing has written so far.
  virtual void AddAddonInfo(Installed installed, const std::string& manifest, RowNumber& row) = 0;
  virtual void AddTransportInfo(Installed installed, const std::string& manifest,
                                RowNumber& row) = 0;
  virtual void AddInfo(Installed installed, const std::string& manifest, RowNumber& row) = 0;
  virtual void AddCustomInfo(Installed installed, const std::string& manifest, RowNumber& row) = 0;
};

/// Lists what is installed, together with what the update sources offer for it.
class InstalledWithUpdates {
 public:
  InstalledWithUpdates(base::ErrorLog& log, CatalogFiles& files, const base::Settings& settings,
                       const UpdateSourceList& sources, UpdateCheck& check, InstalledRows& shown,
                       RowWriter& rows)
      : log_(log),
        files_(files),
        settings_(settings),
        sources_(sources),
        check_(check),
        shown_(shown),
        rows_(rows) {}

  /// Each fills its kind's installed list, source by source. A datastore that does not load changes
  /// nothing. Returns false if something is installed but no source had a manifest in which to look
  /// it up: the list then lacks its rows.
  bool InstalledAddons();
  bool InstalledTransports();
  bool InstalledChannels();

  /// How many nodes `selection` selects in the XML file at `path`; 0 if it does not load. More than
  /// 32767 are an overflow, which is logged and returned as 0.
  std::int16_t GetCustomAddonLength(const std::string& path, const std::string& selection);

 private:
  using Installed = UpdateCheck::Installed;
  using CheckOfOneSource = void (UpdateCheck::*)(Installed, const std::string&, RowNumber&);

  bool ListEntries(base::ComponentKind kind, CheckOfOneSource check);
  bool ListChannels();
  void ListDatastoreChannels(InstalledEntries& channels, RowNumber& row);
  void ListCustomRegistry(RowNumber& row);
  std::unordered_set<std::string> ShownIds() const;
  void ListCustomChannels(Installed channels, RowNumber& row);
  void CheckAllSources(CheckOfOneSource check, Installed installed, RowNumber& row);
  int CountCustomEntries(base::ComponentKind kind);

  base::ErrorLog& log_;
  CatalogFiles& files_;
  const base::Settings& settings_;
  const UpdateSourceList& sources_;
  UpdateCheck& check_;
  InstalledRows& shown_;
  RowWriter& rows_;
};

}  // namespace kitbay::catalog
