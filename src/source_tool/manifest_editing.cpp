#include "source_tool/manifest_editing.h"

#include <algorithm>
#include <iterator>
#include <pugixml.hpp>
#include <vector>

#include "base/failure.h"
#include "base/text.h"
#include "catalog/package_digest.h"
#include "catalog/xml_document.h"
#include "catalog/xml_file.h"
#include "source_tool/disk.h"

namespace kitbay::source_tool {
namespace {

using base::ComponentKind;
using base::Failure;
using base::RuntimeError;

struct KindTable {
  const char* list;
  const char* entry;
  std::vector<const char*> elements;  // in the order of a new entry
};

const KindTable& TableOf(ComponentKind kind) {
  static const base::PerKind<KindTable> kTables = {
      .addon = {"addons",
                "addon",
                {"name", "version", "description", "url", "size", "sha256", "progid", "filename",
                 "category", "autoaccept", "params", "offline", "dependencies"}},
      .transport = {"transports",
                    "transport",
                    {"name", "version", "description", "url", "size", "sha256", "progid",
                     "filename", "category", "displayname", "instructions", "useapplicationlogin"}},
      .channel = {"channels",
                  "channel",
                  {"name", "version", "description", "url", "size", "sha256", "progid",
                   "xmlfilename", "filename", "category", "dependencies"}}};
  return kTables[kind];
}

pugi::xml_node FindEntry(pugi::xml_node list, const char* element, const std::string& id) {
  for (const pugi::xml_node& entry : list.children(element)) {
    if (id == entry.attribute("id").value()) {
      return entry;
    }
  }
  return {};
}

void Indent(pugi::xml_node parent, const pugi::xml_node& before, const char* blanks) {
  parent.insert_child_before(pugi::node_pcdata, before).set_value(blanks);
}

// Adds every element that the kind has, empty, one per line.
pugi::xml_node AppendEntry(pugi::xml_node list, const KindTable& table, const std::string& id,
                           bool is_addon) {
  pugi::xml_node last = list.last_child();
  pugi::xml_node entry = list.append_child(table.entry);
  if (last && last.type() == pugi::node_pcdata) {
    last.set_value("\n    ");
  } else {
    Indent(list, entry, "\n    ");
  }
  list.append_child(pugi::node_pcdata).set_value("\n  ");
  entry.append_attribute("id") = id.c_str();
  if (is_addon) {
    entry.append_attribute("type") = "tool";
  }
  for (const char* element : table.elements) {
    entry.append_child(pugi::node_pcdata).set_value("\n      ");
    entry.append_child(element);
  }
  entry.append_child(pugi::node_pcdata).set_value("\n    ");
  return entry;
}

void SetText(pugi::xml_node entry, const std::string& element, const std::string& text) {
  pugi::xml_node child = entry.child(element.c_str());
  if (!child) {
    const pugi::xml_node last = entry.last_child();
    child = last && last.type() == pugi::node_pcdata
                ? entry.insert_child_before(element.c_str(), last)
                : entry.append_child(element.c_str());
    Indent(entry, child, "\n      ");
  }
  child.text().set(text.c_str());
}

std::string TextOf(const pugi::xml_node& entry, const char* element) {
  return entry.child(element).text().get();
}

// The libraries at the top level of the package, which are those that can register themselves.
std::vector<PackageLibrary> TopLibraries(const PackageContents& contents) {
  std::vector<PackageLibrary> top;
  std::ranges::copy_if(contents.libraries, std::back_inserter(top), [](const auto& library) {
    return library.name.find('\\') == std::string::npos;
  });
  return top;
}

std::string Joined(const std::vector<PackageLibrary>& libraries) {
  std::string text;
  for (const PackageLibrary& library : libraries) {
    text += (text.empty() ? "" : ",") + library.name;
  }
  return text;
}

void FillFromPackage(pugi::xml_node entry, const platform::Files& files, const Addition& addition,
                     bool is_new) {
  const auto package = files.Open(addition.package);
  SetText(entry, "size", std::to_string(package->Size()));
  SetText(entry, "sha256", catalog::Sha256Of(*package));
  const std::vector<PackageLibrary> libraries = TopLibraries(ReadPackage(files, addition.package));
  if (!libraries.empty() && !libraries.front().version.empty()) {
    SetText(entry, "version", libraries.front().version);
  }
  if (is_new && !libraries.empty()) {
    const bool is_transport = addition.kind == ComponentKind::kTransport;
    SetText(entry, "filename", is_transport ? Joined(libraries) : libraries.front().name);
    if (!is_transport) {
      SetText(entry, "dependencies", Joined(libraries));
    }
  }
}

void FillNew(pugi::xml_node entry, const std::string& id, ComponentKind kind) {
  // An update looks for an id that equals the name in the row.
  SetText(entry, "name", id);
  if (kind == ComponentKind::kAddon) {
    SetText(entry, "autoaccept", "0");
    SetText(entry, "offline", "0");
  } else if (kind == ComponentKind::kTransport) {
    SetText(entry, "displayname", id);
    SetText(entry, "useapplicationlogin", "0");
  }
}

}  // namespace

std::string EmptyManifest() {
  return "<components>\n  <addons>\n  </addons>\n  <transports>\n  </transports>\n  <channels>\n"
         "  </channels>\n</components>\n";
}

std::string IdOf(const std::string& package) {
  const std::string name = FileNameOf(package);
  return base::ToLower(name).ends_with(".zip") ? name.substr(0, name.size() - 4) : name;
}

Entered AddPackage(const platform::Files& files, const Addition& addition, std::string& manifest) {
  catalog::XmlDocument document;
  catalog::ParseXmlToChange(manifest, "the manifest", document);
  const KindTable& table = TableOf(addition.kind);
  pugi::xml_node list = document.child("components").child(table.list);
  if (!list) {
    throw Failure(RuntimeError::kObjectVariableNotSet,
                  "the manifest has no components/" + std::string(table.list));
  }
  const std::string id = IdOf(addition.package);
  pugi::xml_node entry = FindEntry(list, table.entry, id);
  const bool is_new = !entry;
  if (is_new) {
    entry = AppendEntry(list, table, id, addition.kind == ComponentKind::kAddon);
    FillNew(entry, id, addition.kind);
  }
  FillFromPackage(entry, files, addition, is_new);
  if (!addition.url_folder.empty()) {
    SetText(entry, "url", addition.url_folder + "/" + FileNameOf(addition.package));
  }
  for (const auto& [element, text] : addition.texts) {
    SetText(entry, element, text);
  }
  for (const char* needed : {"url", "version"}) {
    if (TextOf(entry, needed).empty()) {
      throw Failure(RuntimeError::kObjectVariableNotSet,
                    id + " has no " + needed + "; use --" + needed);
    }
  }
  manifest = catalog::XmlBytes(document);
  return {.id = id, .version = TextOf(entry, "version"), .is_new = is_new};
}

}  // namespace kitbay::source_tool
