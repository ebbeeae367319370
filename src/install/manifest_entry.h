#pragma once

#include <string>
#include <vector>

#include "base/component_kind.h"
#include "base/settings.h"
#include "catalog/update_source_list.h"
#include "catalog/xml_document.h"
#include "install/component_record.h"
#include "platform/files.h"

namespace kitbay::install {

/// The first entry of `id`, letter case aside, in the update sources' manifests, in the order of
/// the sources. It lives in `manifest`, which is loaded with the manifest that has it. A manifest
/// that does not load is passed over. Throws `base::Failure` (91) when no manifest has the entry.
pugi::xml_node FindManifestEntry(const platform::Files& files, const base::Settings& settings,
                                 const catalog::UpdateSourceList& sources, base::ComponentKind kind,
                                 const std::string& id, catalog::XmlDocument& manifest);

/// What the entry says, slot by slot. Throws `base::Failure` (91) when one of its texts is missing;
/// only `useapplicationlogin` may be.
ComponentRecord ReadRecord(base::ComponentKind kind, const pugi::xml_node& entry);

/// The entry's libraries; an empty text is an empty list. Fails as `ReadRecord` does.
std::vector<std::string> ReadLibraryList(base::ComponentKind kind, const pugi::xml_node& entry);

}  // namespace kitbay::install
