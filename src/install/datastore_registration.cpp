#include "install/datastore_registration.h"

#include <cstddef>
#include <exception>
#include <utility>

#include "base/failure.h"
#include "base/guarded.h"
#include "base/text.h"
#include "catalog/package_digest.h"
#include "catalog/registry_files.h"
#include "install/component_record.h"
#include "install/refusal.h"
#include "install/registry_entry.h"
#include "view/page_ids.h"
#include "view/row_markup.h"

namespace kitbay::install {
namespace {

using base::ComponentKind;
using base::guarded;

// What the user sees of an entered component.
struct ShownTable {
  std::size_t name_slot;
  const char* kind_words;    // what follows the name in a message
  std::size_t version_slot;  // of the version in the row of a component that was installed before
};

// Deliberate: an addon's row gets its offline value in place of a version.
constexpr base::PerKind<ShownTable> kShownTables = {
    .addon = {.name_slot = addon_slot::kName,
              .kind_words = " addon",
              .version_slot = addon_slot::kOffline},
    .transport = {.name_slot = transport_slot::kName,
                  .kind_words = " messaging service",
                  .version_slot = transport_slot::kVersion},
    .channel = {.name_slot = channel_slot::kName,
                .kind_words = " Channel",
                .version_slot = channel_slot::kVersion}};

constexpr const char* kNewCustomRegistry =
    "<root><transports></transports><addons></addons><channels></channels></root> ";

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
  const ComponentRecord& record = parts_.session.record;
  if (record[kIdSlot].empty()) {
    throw base::Failure(base::RuntimeError::kInvalidProcedureCall, "there is no component's id");
  }
  const EntryOutcome outcome = EnterRecord(parts_.files, path, kind, record);
  parts_.buttons.DisableStatus();
  if (outcome.failure) {
    TellUnentered(kind, path, outcome.was_present, *outcome.failure);
    return false;
  }
  if (outcome.was_present) {
    ShowUpdated(kind);
  } else {
    ShowInstalled(kind);
  }
  return true;
}

// The failure of a component that has no entry yet belongs to the procedure that enters it.
void DatastoreRegistration::TellUnentered(ComponentKind kind, const std::string& path,
                                          bool was_present, const base::Failure& failure) {
  TellRefusal(parts_.desktop, NameOf(kind) + " could not be entered into", path, failure);
  if (!was_present) {
    throw base::Failure(failure);
  }
  base::LogFailure(parts_.log, "Kitbay::CheckNode", std::make_exception_ptr(failure));
}

void DatastoreRegistration::ShowInstalled(ComponentKind kind) {
  parts_.desktop.ShowMessage(NameOf(kind) + " has been successfully installed. Please restart " +
                                 parts_.settings.MainAppName + " to view the new feature.",
                             platform::kMessageTitle, platform::kOkOnly);
  parts_.rows.FollowCurrentRow(view::kUpdatedContainers[kind]);
  parts_.rows.RemoveDiv(view::kUpdatedContainers[kind]);
}

void DatastoreRegistration::ShowUpdated(ComponentKind kind) {
  parts_.rows.FollowCurrentRow(view::kInstalledContainers[kind]);
  parts_.rows.ModifyDiv(view::kInstalledContainers[kind],
                        parts_.session.record[kShownTables[kind].version_slot],
                        view::kRemoveButton);
}

std::string DatastoreRegistration::NameOf(ComponentKind kind) const {
  return parts_.session.record[kShownTables[kind].name_slot] + kShownTables[kind].kind_words;
}

void DatastoreRegistration::CreateCustomRegistry() {
  const std::string path = catalog::CustomRegistryPath(parts_.settings);
  if (!parts_.files.Exists(path)) {
    parts_.files.Replace(path, kNewCustomRegistry);
  }
}

}  // namespace kitbay::install
