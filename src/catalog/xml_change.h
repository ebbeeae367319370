#pragma once

#include <functional>
#include <string>

#include "catalog/xml_document.h"
#include "platform/files.h"

namespace kitbay::catalog {

/// Changes a document that was loaded. Returns whether there is anything to save. It may be called
/// more than once, each time with the document as it was loaded last.
using XmlChange = std::function<bool(XmlDocument&)>;

/// Changes the XML file at `path`, which other programs may change as well: loads it to be changed,
/// and puts what `change` makes of it in its place, whole or not at all. A file that has become
/// another in the meantime is loaded and changed again, up to three times in all, so that neither
/// change is lost; one that another program holds is tried again for about a second.
///
/// Throws `base::Failure`: what loading, `change` or writing failed with, 70 when the file became
/// another every time.
void ChangeXml(platform::Files& files, const std::string& path, const XmlChange& change);

/// As `ChangeXml`, but returns false where the file cannot be loaded.
bool TryChangeXml(platform::Files& files, const std::string& path, const XmlChange& change);

}  // namespace kitbay::catalog
