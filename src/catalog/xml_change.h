#pragma once

#include <functional>
#include <string>

#include "catalog/xml_document.h"
#include "platform/files.h"

namespace kitbay::catalog {

/// Changes a document that was loaded. Returns whether there is anything to save. It may be called
/// more than once, each time with the document as it was last loaded.
using XmlChange = std::function<bool(XmlDocument&)>;

/// Changes the XML file at `path`, which other programs may change as well: loads it for changes,
/// applies `change`, and replaces the file, whole or not at all. If another program has changed the
/// file meanwhile, it is loaded and changed again, up to three times in total, so that neither
/// change is lost. A file that another program holds is retried for about a second.
///
/// Throws `base::Failure`: the failure of loading, `change` or writing, or 70 if the file was
/// changed by others every time.
void ChangeXml(platform::Files& files, const std::string& path, const XmlChange& change);

/// As `ChangeXml`, but returns false if the file cannot be loaded.
bool TryChangeXml(platform::Files& files, const std::string& path, const XmlChange& change);

}  // namespace kitbay::catalog
