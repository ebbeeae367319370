#pragma once

#include <pugixml.hpp>

#include "base/component_kind.h"
#include "install/component_record.h"

namespace kitbay::install {

/// Adds the component's entry as the last child of `list`, with `id` as its first attribute. Throws
/// `base::Failure` (5), and adds nothing, if a slot contains what XML cannot contain.
void AppendRegistryEntry(base::ComponentKind kind, const ComponentRecord& record,
                         pugi::xml_node list);

}  // namespace kitbay::install
