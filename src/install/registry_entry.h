#pragma once

#include <optional>
#include <string>

#include "base/component_kind.h"
#include "base/failure.h"
#include "install/component_record.h"
#include "platform/files.h"

namespace kitbay::install {

/// What became of a component's entry in a registry file.
struct EntryOutcome {
  bool was_present = false;              ///< the file already had an entry with the component's id
  std::optional<base::Failure> failure;  ///< why the file is as it was
};

/// Enters the record's component into the registry file at `path`: appends an entry with the id as
/// its first attribute to the kind's list, or gives the record's version to a channel that has an
/// entry already. Other entries that are there stay as they are. Besides what changing a file can
/// fail with, the outcome is 91 if the file has no such list, and 5 if a slot contains what XML
/// cannot contain.
EntryOutcome EnterRecord(platform::Files& files, const std::string& path, base::ComponentKind kind,
                         const ComponentRecord& record);

}  // namespace kitbay::install
