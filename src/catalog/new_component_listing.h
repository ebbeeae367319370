#pragma once

#include <string>

#include "base/component_kind.h"
#include "base/error_log.h"
#include "catalog/catalog_files.h"
#include "catalog/new_components.h"
#include "catalog/row_number.h"
#include "catalog/row_writer.h"
#include "catalog/update_source_list.h"

namespace kitbay::catalog {

/// Lists what the update sources offer beyond what is installed. Ids are compared in lower case.
/// Two sources that offer the same component each get a row.
class NewComponentListing {
 public:
  NewComponentListing(base::ErrorLog& log, CatalogFiles& files, const UpdateSourceList& sources,
                      NewComponents& found, RowWriter& rows)
      : log_(log), files_(files), sources_(sources), found_(found), rows_(rows) {}

  /// Each fills its kind's list of new components. A manifest that does not load is skipped; an
  /// entry without one of its texts is logged and ends that manifest's rows.
  void funcShowUpdates();
  void funcShowTransports();
  void funcShowChannels();

 private:
  void ListNew(base::ComponentKind kind, const char* source_procedure);
  void ListOffers(base::ComponentKind kind, const std::string& manifest, RowNumber& row);

  base::ErrorLog& log_;
  CatalogFiles& files_;
  const UpdateSourceList& sources_;
  NewComponents& found_;
  RowWriter& rows_;
};

}  // namespace kitbay::catalog
