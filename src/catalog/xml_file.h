#pragma once

#include <pugixml.hpp>
#include <string>

#include "catalog/xml_document.h"
#include "platform/files.h"

namespace kitbay::catalog {

/// Loads the XML file at `path` into `document` for reading: elements, attributes and texts only.
/// An element's first text is its own value; `ElementText` gives the whole text. Throws
/// `base::Failure` when the file cannot be read (53, 70, 75, 76), or with the system's "invalid
/// data" HRESULT when it is not one well-formed document or carries a document type declaration;
/// `document` is then empty.
///
/// A file is UTF-8, or UTF-16, UTF-32 or Latin-1 if it says so. Of one in another encoding the
/// letters A to Z and their like can be read; its other bytes are no characters.
void LoadXml(const platform::Files& files, const std::string& path, XmlDocument& document);

/// As `LoadXml`, of the file's `bytes`.
void ParseXml(std::string bytes, const std::string& path, XmlDocument& document);

/// As `LoadXml`, but to be changed and saved: comments, instructions, the declaration and white
/// space are kept, and every text is a node of its own. A file with other bytes than UTF-8 that
/// declares an encoding which cannot be read is refused as invalid data.
void LoadXmlToChange(const platform::Files& files, const std::string& path, XmlDocument& document);

/// As `LoadXmlToChange`, of the file's `bytes`.
void ParseXmlToChange(std::string bytes, const std::string& path, XmlDocument& document);

/// As `LoadXml`, but returns false where that throws.
bool TryLoadXml(const platform::Files& files, const std::string& path, XmlDocument& document);

/// The bytes of the file that `document` is saved as.
std::string XmlBytes(const XmlDocument& document);

/// Puts `document` in the place of the file at `path`, whole or not at all. Throws `base::Failure`
/// when it cannot be written.
void SaveXml(platform::Files& files, const std::string& path, const XmlDocument& document);

/// The first element below `parent`, and the element that follows `node` beside it; none where
/// there is none.
pugi::xml_node FirstElement(const pugi::xml_node& parent);
pugi::xml_node NextElement(const pugi::xml_node& node);

/// All text below `node` without white space at either end. Throws 91 when there is no node.
std::string ElementText(const pugi::xml_node& node);

/// The text of the child element `name` of `entry`. Throws 91 when it has none.
std::string ChildText(const pugi::xml_node& entry, const char* name);

/// The value of the attribute `name` of `entry`. Throws 91 when it has none.
std::string AttributeText(const pugi::xml_node& entry, const char* name);

/// The value of the first attribute of `entry`. Throws 91 when it has none.
std::string FirstAttributeText(const pugi::xml_node& entry);

/// The nodes that `path` selects from `document`, in document order.
pugi::xpath_node_set SelectNodes(const pugi::xml_document& document, const char* path);

}  // namespace kitbay::catalog
