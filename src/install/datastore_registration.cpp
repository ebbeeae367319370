#include "install/datastore_registration.h"

#include <cstddef>
#include <exception>
#include <utility>

#include "base/failure.h"
#include "base/guarded.h"
#include "base/text.h"
#include "catalog/package_digest.h"
#include "catalog/registry_files.h"
#include "catalog/xml_change.h"
#include "catalog/xml_characters.h"
#include "install/manifest_entry.h"
#include "install/refusal.h"
#include "install/registry_entry.h"
#include "view/page_ids.h"
#include "view/row_markup.h"

namespace kitbay::install {
namespace {

using base::ComponentKind;
using base::guarded;

// What distinguishes the update procedures of the kinds.
struct EntryUpdate {
  const char* list;         // the element that gets the entries
  std::size_t name_slot;    // how the message names the component
  std::size_t update_slot;  // the version in the row of an existing component
  const char* message;      // what follows the name in the message
};

// Deliberate: an addon's row gets its offline value in place of a version.
constexpr base::PerKind<EntryUpdate> kEntryUpdates = {
    .addon = {.list = "root//addons",
              .name_slot = addon_slot::kName,
              .update_slot = addon_slot::kOffline,
              .message = " addon"},
    .transport = {.list = "root//transports",
                  .name_slot = transport_slot::kName,
                  .update_slot = transport_slot::kVersion,
                  .message = " messaging service"},
    .channel = {.list = "/root//channels",
                .name_slot = channel_slot::kName,
                .update_slot = channel_slot::kVersion,
                .message = " Channel"},
};

constexpr const char* kNewCustomRegistry =
    "<root><transports></transports><addons></addons><channels></channels></root> ";

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

pugi::xml_node ListIn(const catalog::XmlDocument& document, ComponentKind kind,
                      const std::string& path) {
  const char* const list_path = kEntryUpdates[kind].list;
  const pugi::xml_node list = document.select_node(list_path).node();
  if (!list) {
    throw base::Failure(base::RuntimeError::kObjectVariableNotSet, path + " has no " + list_path);
  }
  return list;
}

}  // namespace

bool DatastoreRegistration::enterAddon() {
  return guarded(parts_.log, "Kitbay::enterAddon", [&] { Enter(ComponentKind::kAddon); });
}

bool DatastoreRegistration::enterTransport() {
  return guarded(parts_.log, "Kitbay::enterTransport", [&] { Enter(ComponentKind::kTransport); });
}

bool DatastoreRegistration::enterChannel() {
  return guarded(parts_.log, "Kitbay::enterChannel", [&] { Enter(ComponentKind::kChannel); });
}

bool DatastoreRegistration::updateRegistry() {
  bool is_done = false;
  guarded(parts_.log, "Kitbay::updateRegistry ", [&] {
    is_done = Update(ComponentKind::kAddon, catalog::DatastorePath(parts_.settings));
  });
  return is_done;
}

bool DatastoreRegistration::updateRegistryForTransport() {
  bool is_done = false;
  guarded(parts_.log, " Kitbay::updateRegistryForTransport", [&] {
    is_done = Update(ComponentKind::kTransport, catalog::DatastorePath(parts_.settings));
  });
  return is_done;
}

bool DatastoreRegistration::updateRegistryForChannel() {
  bool is_done = false;
  guarded(parts_.log, "Kitbay::updateRegistryForChannel", [&] {
    if (base::ToLower(parts_.session.record[kIdSlot]) == "presence") {
      is_done = Update(ComponentKind::kChannel, catalog::DatastorePath(parts_.settings));
      return;
    }
    CreateCustomRegistry();
    is_done = Update(ComponentKind::kChannel, catalog::CustomRegistryPath(parts_.settings));
  });
  return is_done;
}

void DatastoreRegistration::Enter(ComponentKind kind) {
  InstallSession& session = parts_.session;
  session.record = {};
  session.libraries.clear();
  const catalog::CatalogFiles::Refresh refresh(parts_.manifests);
  const auto& digest = session.package_digest;
  const pugi::xml_node entry = FindManifestEntry(
      parts_.manifests, parts_.sources, kind, session.package_name, digest ? digest->manifest : "");
  if (digest && catalog::ReadDigest(digest->manifest, entry) != *digest) {
    throw base::Failure(base::RuntimeError::kInvalidProcedureCall,
                        digest->manifest + " announces another package by now");
  }
  ComponentRecord record = ReadRecord(kind, entry);
  session.libraries = ReadLibraryList(kind, entry);
  session.record = std::move(record);
}

bool DatastoreRegistration::Update(ComponentKind kind, const std::string& path) {
  const EntryUpdate& table = kEntryUpdates[kind];
  const ComponentRecord& record = parts_.session.record;
  if (record[kIdSlot].empty()) {
    throw base::Failure(base::RuntimeError::kInvalidProcedureCall, "there is no component's id");
  }
  bool is_present = false;
  try {
    catalog::ChangeXml(parts_.files, path, [&](catalog::XmlDocument& document) {
      const pugi::xml_node list = ListIn(document, kind, path);
      const pugi::xml_node present = FindEntry(list, record[kIdSlot]);
      is_present = static_cast<bool>(present);
      if (is_present) {
        return ChangePresent(kind, present);
      }
      AppendRegistryEntry(kind, record, list);
      return true;
    });
  } catch (const base::Failure& failure) {
    parts_.buttons.DisableStatus();
    TellRefusal(parts_.desktop,
                record[table.name_slot] + table.message + " could not be entered into", path,
                failure);
    if (!is_present) {
      throw;
    }
    base::LogFailure(parts_.log, "Kitbay::CheckNode", std::current_exception());
    return false;
  }
  if (is_present) {
    ShowUpdated(kind);
    return true;
  }
  parts_.buttons.DisableStatus();
  parts_.desktop.ShowMessage(record[table.name_slot] + table.message +
                                 " has been successfully installed. Please restart " +
                                 parts_.settings.MainAppName + " to view the new feature.",
                             platform::kMessageTitle, platform::kOkOnly);
  parts_.rows.FollowCurrentRow(view::kUpdatedContainers[kind]);
  parts_.rows.RemoveDiv(view::kUpdatedContainers[kind]);
  return true;
}

void DatastoreRegistration::ShowUpdated(ComponentKind kind) {
  parts_.buttons.DisableStatus();
  parts_.rows.FollowCurrentRow(view::kInstalledContainers[kind]);
  parts_.rows.ModifyDiv(view::kInstalledContainers[kind],
                        parts_.session.record[kEntryUpdates[kind].update_slot],
                        view::kRemoveButton);
}

// Returns whether there is anything to save.
bool DatastoreRegistration::ChangePresent(ComponentKind kind, pugi::xml_node present) const {
  if (kind != ComponentKind::kChannel) {
    return false;
  }
  CheckNode(present);
  return true;
}

// A channel has no library to read its version from: what its entry says is listed and compared
// with the next offer.
void DatastoreRegistration::CheckNode(pugi::xml_node present) const {
  const std::string& version = parts_.session.record[channel_slot::kVersion];
  if (!catalog::IsXmlText(version)) {
    throw base::Failure(base::RuntimeError::kInvalidProcedureCall, "the version is no text");
  }
  pugi::xml_attribute attribute = present.attribute("version");
  if (!attribute) {
    attribute = present.append_attribute("version");
  }
  attribute.set_value(version.c_str());
}

void DatastoreRegistration::CreateCustomRegistry() {
  const std::string path = catalog::CustomRegistryPath(parts_.settings);
  if (!parts_.files.Exists(path)) {
    parts_.files.Replace(path, kNewCustomRegistry);
  }
}

}  // namespace kitbay::install
