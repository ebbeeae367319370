#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "catalog/xml_document.h"
#include "platform/files.h"

namespace kitbay::catalog {

/// Loads the XML file at `path` into `document` for reading: only elements, attributes and texts.
/// An element's first text is its own value; `ElementText` returns the whole text. Throws
/// `base::Failure` if the file cannot be read (53, 70, 75, 76), or with the system's "invalid data"
/// HRESULT if it is not a single well-formed document or contains a document type declaration;
/// `document` is then empty.
///
/// A file is UTF-8, or UTF-16, UTF-32 or Latin-1 if it says so. In a file with another encoding, A
/// to Z and other ASCII characters can be read; its other bytes are not characters.
void LoadXml(const platform::Files& files, const std::string& path, XmlDocument& document);

/// As `LoadXml`, for the file's `bytes`.
void ParseXml(std::string bytes, const std::string& path, XmlDocument& document);

/// As `LoadXml`, but for changing and saving: comments, instructions, the declaration and white
/// space are kept, and every text is a separate node. A file that contains bytes other than UTF-8
/// and declares an encoding that cannot be read is refused as invalid data.
void LoadXmlToChange(const platform::Files& files, const std::string& path, XmlDocument& document);

/// As `LoadXmlToChange`, for the file's `bytes`.
void ParseXmlToChange(std::string bytes, const std::string& path, XmlDocument& document);

/// As `LoadXml`, but returns false where that throws.
bool TryLoadXml(const platform::Files& files, const std::string& path, XmlDocument& document);

/// The bytes of the file as which `document` is saved.
std::string XmlBytes(const XmlDocument& document);

/// Replaces the file at `path` by `document`, whole or not at all. Throws `base::Failure` if it
/// cannot be written.
void SaveXml(platform::Files& files, const std::string& path, const XmlDocument& document);

/// The first element below `parent`, and the next sibling element of `node`; empty if there is
/// none.
pugi::xml_node FirstElement(const pugi::xml_node& parent);
pugi::xml_node NextElement(const pugi::xml_node& node);

/// `text` without white space at either end, but not inside.
std::string_view Trimmed(std::string_view text);

/// All text below `node` without white space at either end. Throws 91 if there is no node.
std::string ElementText(const pugi::xml_node& node);

/// The text of the child element `name` of `entry`. Throws 91 if it has none.
std::string ChildText(const pugi::xml_node& entry, const char* name);

/// The value of the attribute `name` of `entry`. Throws 91 if it has none.
std::string AttributeText(const pugi::xml_node& entry, const char* name);

/// The value of the first attribute of `entry`. Throws 91 if it has none.
std::string FirstAttributeText(const pugi::xml_node& entry);

/// The nodes that `path` selects from `document`, in document order.
pugi::xpath_node_set SelectNodes(const pugi::xml_document& document, const char* path);

}  // namespace kitbay::catalog
