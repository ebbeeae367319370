#include "install/registry_entry.h"

#include <string>

#include "base/failure.h"
#include "catalog/xml_characters.h"

namespace kitbay::install {
namespace {

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

}  // namespace

void AppendRegistryEntry(base::ComponentKind kind, const ComponentRecord& record,
                         pugi::xml_node list) {
  for (const std::string& value : record) {
    if (!catalog::IsXmlText(value)) {
      throw base::Failure(base::RuntimeError::kInvalidProcedureCall,
                          "the manifest's entry of \"" + record[kIdSlot] +
                              "\" holds characters that no XML file may hold");
    }
  }
  switch (kind) {
    case base::ComponentKind::kAddon:
      AddAddon(record, list);
      break;
    case base::ComponentKind::kTransport:
      AddTransport(record, list);
      break;
    case base::ComponentKind::kChannel:
      AddChannel(record, list);
      break;
  }
}

}  // namespace kitbay::install
