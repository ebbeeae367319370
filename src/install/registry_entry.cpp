#include "install/registry_entry.h"

#include <pugixml.hpp>

#include "catalog/xml_change.h"
#include "catalog/xml_characters.h"

namespace kitbay::install {
namespace {

using base::ComponentKind;
using base::Failure;
using base::RuntimeError;

// Every reader turns a carriage return in a text into a line feed, so it is written as one.
std::string WithLineFeeds(const std::string& text) {
  std::string lines;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\r') {
      lines += text[i];
    } else if (i + 1 == text.size() || text[i + 1] != '\n') {
      lines += '\n';
    }
  }
  return lines;
}

void AddAttribute(pugi::xml_node element, const char* name, const std::string& value) {
  element.append_attribute(name).set_value(value.c_str());
}

// An empty element is written in the form that it will have after the next change of the file.
void AddChild(pugi::xml_node element, const char* name, const std::string& text) {
  pugi::xml_node child = element.append_child(name);
  if (!text.empty()) {
    child.text().set(WithLineFeeds(text).c_str());
  }
}

void AddAddonParameters(const ComponentRecord& record, pugi::xml_node entry) {
  using namespace addon_slot;
  if (record[kRulesEngine].empty()) {
    AddChild(entry, "params", " ");
    return;
  }
  const pugi::xml_node parameters = entry.append_child("params");
  AddChild(parameters, "rulesengine", record[kRulesEngine]);
  AddChild(parameters, "ocxengine", record[kOcxEngine]);
}

// The category decides three values at once.
void AddAddon(const ComponentRecord& record, pugi::xml_node list) {
  using namespace addon_slot;
  const bool has_category = !record[kCategory].empty();
  const char* const flag = has_category ? "1" : "0";
  const pugi::xml_node entry = list.append_child("addon");
  AddAttribute(entry, "id", record[kIdSlot]);
  AddAttribute(entry, "name", record[kName]);
  AddAttribute(entry, "visibility", "show");
  AddAttribute(entry, "type", record[kType]);
  AddChild(entry, "progid", record[kProgid]);
  AddChild(entry, "namespace", record[kIdSlot]);
  AddChild(entry, "displayname", (has_category ? "" : "Play ") + record[kName]);
  AddChild(entry, "filename", record[kFilename]);
  AddChild(entry, "compatiblewithallclients", flag);
  AddChild(entry, "autoaccept", record[kAutoaccept]);
  AddChild(entry, "description", record[kDescription]);
  AddChild(entry, "core", flag);
  AddAddonParameters(record, entry);
  if (record[kOffline] != "0") {
    AddChild(entry, "offline", record[kOffline]);
  }
}

// The description is the name, because the record of a transport has no description.
void AddTransport(const ComponentRecord& record, pugi::xml_node list) {
  using namespace transport_slot;
  const pugi::xml_node entry = list.append_child("transport");
  AddAttribute(entry, "id", record[kIdSlot]);
  AddAttribute(entry, "name", record[kName]);
  AddAttribute(entry, "type", "messaging service");
  AddChild(entry, "displayname", record[kDisplayname]);
  AddChild(entry, "instructions", record[kInstructions]);
  AddChild(entry, "progid", record[kProgid]);
  AddChild(entry, "filename", record[kFilename]);
  AddChild(entry, "description", record[kName]);
  AddChild(entry, "core", record[kCategory].empty() ? "0" : "1");
  AddChild(entry, "useapplicationlogin", record[kUseApplicationLogin]);
}

void AddChannel(const ComponentRecord& record, pugi::xml_node list) {
  using namespace channel_slot;
  const pugi::xml_node entry = list.append_child("channel");
  AddAttribute(entry, "id", record[kIdSlot]);
  AddAttribute(entry, "name", record[kName]);
  AddAttribute(entry, "version", record[kVersion]);
  AddChild(entry, "progid", record[kProgid]);
  AddChild(entry, "path", record[kXmlFilename]);
  AddChild(entry, "filename", "");
  AddChild(entry, "description", record[kDescription]);
  AddChild(entry, "core", record[kCategory].empty() ? "0" : "1");
}

// How a registry file lists the components of a kind.
struct RegistryList {
  const char* list;  // the element that has the entries
  void (*append)(const ComponentRecord& record, pugi::xml_node list);
};
constexpr base::PerKind<RegistryList> kRegistryLists = {
    .addon = {.list = "root//addons", .append = AddAddon},
    .transport = {.list = "root//transports", .append = AddTransport},
    .channel = {.list = "/root//channels", .append = AddChannel}};

pugi::xml_node ListIn(const catalog::XmlDocument& document, ComponentKind kind,
                      const std::string& path) {
  const char* const list_path = kRegistryLists[kind].list;
  const pugi::xml_node list = document.select_node(list_path).node();
  if (!list) {
    throw Failure(RuntimeError::kObjectVariableNotSet, path + " has no " + list_path);
  }
  return list;
}

// The child of `list` whose first attribute is `id`. Nodes without an attribute, such as comments,
// are skipped.
pugi::xml_node FindEntry(const pugi::xml_node& list, const std::string& id) {
  for (const pugi::xml_node& child : list.children()) {
    if (child.first_attribute() && id == child.first_attribute().value()) {
      return child;
    }
  }
  return {};
}

void Append(ComponentKind kind, const ComponentRecord& record, pugi::xml_node list) {
  for (const std::string& value : record) {
    if (!catalog::IsXmlText(value)) {
      throw Failure(RuntimeError::kInvalidProcedureCall,
                    "the manifest's entry of \"" + record[kIdSlot] +
                        "\" holds characters that no XML file may hold");
    }
  }
  kRegistryLists[kind].append(record, list);
}

// A channel has no library to read its version from: what its entry says is listed and compared
// with the next offer.
void CheckNode(const ComponentRecord& record, pugi::xml_node channel) {
  const std::string& version = record[channel_slot::kVersion];
  if (!catalog::IsXmlText(version)) {
    throw Failure(RuntimeError::kInvalidProcedureCall, "the version is no text");
  }
  pugi::xml_attribute attribute = channel.attribute("version");
  if (!attribute) {
    attribute = channel.append_attribute("version");
  }
  attribute.set_value(version.c_str());
}

}  // namespace

EntryOutcome EnterRecord(platform::Files& files, const std::string& path, ComponentKind kind,
                         const ComponentRecord& record) {
  EntryOutcome outcome;
  try {
    catalog::ChangeXml(files, path, [&](catalog::XmlDocument& document) {
      const pugi::xml_node list = ListIn(document, kind, path);
      const pugi::xml_node present = FindEntry(list, record[kIdSlot]);
      outcome.was_present = static_cast<bool>(present);
      if (!present) {
        Append(kind, record, list);
      } else if (kind == ComponentKind::kChannel) {
        CheckNode(record, present);
      }
      return !present || kind == ComponentKind::kChannel;
    });
  } catch (const Failure& failure) {
    outcome.failure = failure;
  }
  return outcome;
}

}  // namespace kitbay::install
