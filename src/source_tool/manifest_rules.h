#pragma once

#include <pugixml.hpp>
#include <string>
#include <vector>

#include "base/component_kind.h"
#include "catalog/manifest_signature.h"
#include "catalog/xml_document.h"
#include "source_tool/finding.h"

namespace kitbay::source_tool {

/// A manifest as its maker wrote it: the file's bytes, and the tree that Kitbay reads from them.
struct ManifestText {
  std::string file;
  std::string bytes;
  catalog::XmlDocument document;

  /// The place of an element in the file.
  TextPlace PlaceOf(const pugi::xml_node& node) const;
};

/// An entry of a manifest.
struct ManifestEntry {
  base::ComponentKind kind;
  pugi::xml_node node;

  std::string id() const { return node.attribute("id").value(); }

  /// The text of a child, trimmed of white space; empty if there is none.
  std::string Text(const char* name) const;
};

/// Parses the manifest's bytes. Returns what keeps Kitbay from reading it, or nothing if it can.
std::vector<Finding> Parse(ManifestText& manifest);

/// Its entries, in the order in which Kitbay reads them.
std::vector<ManifestEntry> EntriesOf(const ManifestText& manifest);

/// What is wrong with the manifest alone.
std::vector<Finding> CheckEntries(const ManifestText& manifest);

/// Versions that end in 0 and so never count as newer, except those that look like a first release.
/// Used if there is no previous manifest.
std::vector<Finding> CheckLastParts(const ManifestText& manifest);

/// What is wrong with its offers for users who have installed what the manifest `previous` offered.
std::vector<Finding> CheckVersionsSince(const ManifestText& manifest, const ManifestText& previous);

/// What keeps users with that key from accepting the manifest on `today`.
std::vector<Finding> CheckSignature(const ManifestText& manifest, const catalog::PublicKey& key,
                                    std::chrono::sys_days today);

}  // namespace kitbay::source_tool
