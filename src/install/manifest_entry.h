#pragma once

#include <string>
#include <vector>

#include "base/component_kind.h"
#include "catalog/catalog_files.h"
#include "catalog/update_source_list.h"
#include "install/component_record.h"

namespace kitbay::install {

/// The first entry of `id`, ignoring case, in the update sources' manifests, in the order of the
/// sources; or in the manifest with the file name `only_manifest`, unless that is empty. The entry
/// lives as long as the refresh of `files` in which it was requested. A manifest that does not load
/// is skipped. Throws `base::Failure` (91) if no manifest has the entry.
pugi::xml_node FindManifestEntry(catalog::CatalogFiles& files,
                                 const catalog::UpdateSourceList& sources, base::ComponentKind kind,
                                 const std::string& id, const std::string& only_manifest = "");

/// What the entry says, slot by slot. Throws `base::Failure` (91) if one of its texts is missing;
/// only `useapplicationlogin` may be.
ComponentRecord ReadRecord(base::ComponentKind kind, const pugi::xml_node& entry);

/// The entry's libraries; an empty text is an empty list. Fails as `ReadRecord` does.
std::vector<std::string> ReadLibraryList(base::ComponentKind kind, const pugi::xml_node& entry);

}  // namespace kitbay::install
