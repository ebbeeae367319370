#include "install/component_record.h"

#include <array>
#include <cstddef>
#include <span>

#include "base/failure.h"
#include "base/text.h"
#include "catalog/xml_file.h"

namespace kitbay::install {
namespace {

using base::ComponentKind;

// A slot and the child element that fills it.
struct SlotElement {
  std::size_t slot;
  const char* element;
};

// The slots that are filled in the common way.
constexpr std::array kAddonElements = {
    SlotElement{addon_slot::kProgid, "progid"},
    SlotElement{addon_slot::kName, "name"},
    SlotElement{addon_slot::kDescription, "description"},
    SlotElement{addon_slot::kFilename, "filename"},
    SlotElement{addon_slot::kCategory, "category"},
    SlotElement{addon_slot::kAutoaccept, "autoaccept"},
    SlotElement{addon_slot::kOffline, "offline"},
};
constexpr std::array kTransportElements = {
    SlotElement{transport_slot::kProgid, "progid"},
    SlotElement{transport_slot::kFilename, "filename"},
    SlotElement{transport_slot::kName, "name"},
    SlotElement{transport_slot::kCategory, "category"},
    SlotElement{transport_slot::kVersion, "version"},
    SlotElement{transport_slot::kDisplayname, "displayname"},
    SlotElement{transport_slot::kInstructions, "instructions"},
};
constexpr std::array kChannelElements = {
    SlotElement{channel_slot::kProgid, "progid"},
    SlotElement{channel_slot::kXmlFilename, "xmlfilename"},
    SlotElement{channel_slot::kVersion, "version"},
    SlotElement{channel_slot::kDescription, "description"},
    SlotElement{channel_slot::kCategory, "category"},
    SlotElement{channel_slot::kName, "name"},
    SlotElement{channel_slot::kFilename, "filename"},
};

// Where the entries of a kind are, and what is read from them.
struct EntryTable {
  const char* entries;
  std::span<const SlotElement> elements;
  const char* libraries;
};

constexpr base::PerKind<EntryTable> kEntryTables = {
    .addon = {.entries = "components/addons//addon",
              .elements = kAddonElements,
              .libraries = "dependencies"},
    .transport = {.entries = "components/transports/transport",
                  .elements = kTransportElements,
                  .libraries = "filename"},
    .channel = {.entries = "components/channels//channel",
                .elements = kChannelElements,
                .libraries = "dependencies"},
};

// Without a text of their own, both parameters are empty.
void ReadParameters(const pugi::xml_node& entry, ComponentRecord& record) {
  const pugi::xml_node parameters = entry.child("params");
  if (catalog::ElementText(parameters).empty()) {
    return;
  }
  const pugi::xml_node first = catalog::FirstElement(parameters);
  record[addon_slot::kRulesEngine] = catalog::ElementText(first);
  record[addon_slot::kOcxEngine] = catalog::ElementText(catalog::NextElement(first));
}

std::string LoginOf(const pugi::xml_node& entry) {
  const pugi::xml_node login = entry.child("useapplicationlogin");
  return login ? catalog::ElementText(login) : "0";
}

}  // namespace

pugi::xml_node FindManifestEntry(catalog::CatalogFiles& files,
                                 const catalog::UpdateSourceList& sources, ComponentKind kind,
                                 const std::string& id, const std::string& only_manifest) {
  const std::string wanted = base::ToLower(id);
  for (const std::string& source : sources.UpdateSources) {
    const std::string name = base::AfterLastSlash(source);
    if (!only_manifest.empty() && base::ToLower(name) != base::ToLower(only_manifest)) {
      continue;
    }
    const catalog::XmlDocument* manifest = files.TryManifest(name);
    if (manifest == nullptr) {
      continue;
    }
    for (const auto& entry : catalog::SelectNodes(*manifest, kEntryTables[kind].entries)) {
      const pugi::xml_attribute entry_id = entry.node().attribute("id");
      if (entry_id && base::ToLower(entry_id.value()) == wanted) {
        return entry.node();
      }
    }
  }
  throw base::Failure(base::RuntimeError::kObjectVariableNotSet,
                      "no manifest has an entry of \"" + id + "\"");
}

ComponentRecord ReadRecord(ComponentKind kind, const pugi::xml_node& entry) {
  ComponentRecord record;
  record[kIdSlot] = catalog::AttributeText(entry, "id");
  for (const auto& [slot, element] : kEntryTables[kind].elements) {
    record[slot] = catalog::ChildText(entry, element);
  }
  if (kind == ComponentKind::kAddon) {
    ReadParameters(entry, record);
    record[addon_slot::kType] = catalog::AttributeText(entry, "type");
  }
  if (kind == ComponentKind::kTransport) {
    record[transport_slot::kUseApplicationLogin] = LoginOf(entry);
  }
  return record;
}

std::vector<std::string> ReadLibraryList(ComponentKind kind, const pugi::xml_node& entry) {
  const std::string list = catalog::ChildText(entry, kEntryTables[kind].libraries);
  std::vector<std::string> libraries;
  if (list.empty()) {
    return libraries;
  }
  std::size_t begin = 0;
  for (std::size_t comma = list.find(','); comma != std::string::npos;
       comma = list.find(',', begin)) {
    libraries.push_back(list.substr(begin, comma - begin));
    begin = comma + 1;
  }
  libraries.push_back(list.substr(begin));
  return libraries;
}

}  // namespace kitbay::install
