#include "install/package_installation.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/failure.h"
#include "base/guarded.h"
#include "base/text.h"

namespace kitbay::install {
namespace {

using base::ComponentKind;
using base::guarded;

// What distinguishes the unpack operations of the kinds. The odd log texts and blanks are
// deliberate.
struct UnpackTable {
  const char* procedure;
  const char* missing_procedure;
  const char* corrupt_procedure;
  const char* corrupt_ending;
  std::size_t own_library_slot;  // of the component's own library in its record
  bool (DatastoreRegistration::*enter)();
  bool (DatastoreRegistration::*update)();
};
constexpr base::PerKind<UnpackTable> kUnpackTables = {
    .addon = {.procedure = "Kitbay::Unpack",
              .missing_procedure = "Kitbay::Unpack",
              .corrupt_procedure = "Kitbay::UnPack",
              .corrupt_ending = ".zip is corrupt . Try again",
              .own_library_slot = addon_slot::kFilename,
              .enter = &DatastoreRegistration::enterAddon,
              .update = &DatastoreRegistration::updateRegistry},
    .transport = {.procedure = "Kitbay::UnpackTransport",
                  .missing_procedure = "Kitbay::Unpack",
                  .corrupt_procedure = "Kitbay::UnPackTransport",
                  .corrupt_ending = ".zip is corrupt . Try again",
                  .own_library_slot = transport_slot::kFilename,
                  .enter = &DatastoreRegistration::enterTransport,
                  .update = &DatastoreRegistration::updateRegistryForTransport},
    .channel = {.procedure = "Kitbay::UnpackChannel",
                .missing_procedure = "Kitbay::UnpackChannel",
                .corrupt_procedure = "Kitbay::UnPackChannel",
                .corrupt_ending = ".zip is corrupt .Try again",
                .own_library_slot = channel_slot::kFilename,
                .enter = &DatastoreRegistration::enterChannel,
                .update = &DatastoreRegistration::updateRegistryForChannel}};

}  // namespace

void PackageInstallation::Unpack(const update::PendingPackage& package, const std::string& path) {
  Install(ComponentKind::kAddon, package, path);
}

void PackageInstallation::UnpackTransport(const update::PendingPackage& package,
                                          const std::string& path) {
  Install(ComponentKind::kTransport, package, path);
}

void PackageInstallation::UnpackChannel(const update::PendingPackage& package,
                                        const std::string& path) {
  Install(ComponentKind::kChannel, package, path);
}

void PackageInstallation::InstallProcess() {
  guarded(parts_.log, "Kitbay::InstallProcess", [&] {
    parts_.buttons.EnableOtherDownload();
    parts_.buttons.EnableOtherUpdatedDownload();
  });
}

void PackageInstallation::Install(ComponentKind kind, const update::PendingPackage& package,
                                  const std::string& path) {
  waiting_.push_back({.kind = kind, .package = package, .path = path});
  if (is_installing_) {
    return;
  }
  is_installing_ = true;
  while (!waiting_.empty()) {
    const Arrival next = waiting_.front();
    waiting_.pop_front();
    InstallNow(next);
  }
  is_installing_ = false;
}

void PackageInstallation::InstallNow(const Arrival& arrival) {
  parts_.session.package_name = arrival.package.name;
  parts_.session.package_digest = arrival.package.digest;
  parts_.state.current_row_id = arrival.package.row_id;
  parts_.state.current_row_name = arrival.package.row_name;
  if (!guarded(parts_.log, kUnpackTables[arrival.kind].procedure, [&] { UnpackFrom(arrival); })) {
    parts_.buttons.DisableStatus();
  }
  parts_.state.update_in_progress = false;
}

// What happens after a package has arrived.
void PackageInstallation::UnpackFrom(const Arrival& arrival) {
  if (!parts_.files.Exists(arrival.path)) {
    return TellMissing(arrival.kind);
  }
  const std::unique_ptr<platform::FileReader> held = HoldIfSigned(arrival);
  if ((held && !IsWhatWasSigned(arrival, *held)) || !Expand(arrival)) {
    return TellCorrupt(arrival.kind);
  }
  TellUnwritten();
  if (!EnterComponent(arrival.kind)) {
    parts_.buttons.DisableStatus();
  }
  RestartMainClient();
}

// While it is held, nobody can write the package between the look at it and its expansion.
std::unique_ptr<platform::FileReader> PackageInstallation::HoldIfSigned(
    const Arrival& arrival) const {
  return arrival.package.digest ? parts_.files.Open(arrival.path) : nullptr;
}

// The manifest may have been replaced meanwhile, or no longer be acceptable. What it says is read
// before anything is written, and not again.
bool PackageInstallation::IsWhatWasSigned(const Arrival& arrival,
                                          const platform::FileReader& package) {
  return guarded(parts_.log, "Kitbay::CheckSignature",
                 [&] { catalog::CheckDigest(package, *arrival.package.digest); }) &&
         ReadEntry(arrival.kind);
}

// A transport has no folder of its own: its files go into the installation folder, whose setting
// ends in "\" afterwards.
bool PackageInstallation::Expand(const Arrival& arrival) {
  if (arrival.kind == ComponentKind::kTransport) {
    folder_ = parts_.settings.InstallFolder;
  } else {
    folder_ = arrival.kind == ComponentKind::kAddon ? AddonFolder() : ChannelFolder();
  }
  const bool is_read = parts_.expansion.ExpandZipFile(folder_, arrival.path);
  if (arrival.kind == ComponentKind::kTransport) {
    parts_.settings.InstallFolder = folder_;
  }
  return is_read;
}

// The rest of the package has been written and is entered: the missing files may be unchanged.
void PackageInstallation::TellUnwritten() {
  const std::vector<std::string>& names = parts_.expansion.unwritten();
  if (names.empty()) {
    return;
  }
  constexpr std::size_t kMostNames = 10;
  std::string list;
  for (std::size_t i = 0; i < names.size() && i < kMostNames; ++i) {
    list += "\r\n" + names[i];
  }
  if (names.size() > kMostNames) {
    list += "\r\nand " + std::to_string(names.size() - kMostNames) + " more";
  }
  parts_.desktop.ShowMessage(
      "These files of " + parts_.session.package_name +
          " could not be written, because they are in use or must not be changed:\r\n" + list +
          "\r\n\r\nClose the programs that use them and try again.",
      platform::kMessageTitle, platform::kOkOnly);
}

void PackageInstallation::TellMissing(ComponentKind kind) {
  parts_.log.LogError(parts_.log.TimeText(), kUnpackTables[kind].missing_procedure, 0,
                      "Archive folder not found");
  parts_.buttons.DisableStatus();
  parts_.desktop.ShowMessage(
      "The Archive Folder " + parts_.session.package_name + ".zip Not Found. Try again",
      platform::kMessageTitle, platform::kOkOnly);
}

void PackageInstallation::TellCorrupt(ComponentKind kind) {
  const UnpackTable& table = kUnpackTables[kind];
  parts_.log.LogError(parts_.log.TimeText(), table.corrupt_procedure, 0,
                      "There was an error creating the archive.");
  parts_.desktop.ShowMessage("Download of " + parts_.session.package_name + table.corrupt_ending,
                             platform::kMessageTitle, platform::kOkOnly);
  parts_.buttons.DisableStatus();
}

std::string PackageInstallation::AddonFolder() {
  std::string folder = parts_.settings.InstallFolder + "\\addons\\" + parts_.session.package_name;
  if (!parts_.files.Exists(folder)) {
    parts_.files.CreateFolder(folder);
  }
  return folder;
}

// The user's folder is created whenever it has no folder of channels, so if the user's folder
// already exists, the installation ends.
std::string PackageInstallation::ChannelFolder() {
  if (parts_.session.file_system == nullptr) {
    throw base::Failure(base::RuntimeError::kObjectVariableNotSet);
  }
  platform::FileSystemObject& file_system = *parts_.session.file_system;
  const std::string& name = parts_.session.package_name;
  const bool is_of_suite = base::ToLower(name) == "presence";
  const std::string& root =
      is_of_suite ? parts_.settings.InstallFolder : parts_.settings.CustomDataFolder;
  const std::string channels = root + "\\channels";
  if (!file_system.FolderExists(channels)) {
    if (!is_of_suite) {
      file_system.CreateFolder(root);
    }
    file_system.CreateFolder(channels);
  }
  std::string folder = channels + "\\" + name;
  if (!file_system.FolderExists(folder)) {
    file_system.CreateFolder(folder);
  }
  return folder;
}

bool PackageInstallation::ReadEntry(ComponentKind kind) {
  return std::invoke(kUnpackTables[kind].enter, parts_.datastore);
}

bool PackageInstallation::EnterComponent(ComponentKind kind) {
  const bool has_entry = parts_.session.package_digest || ReadEntry(kind);
  return has_entry && RegisterLibraries(kind) &&
         std::invoke(kUnpackTables[kind].update, parts_.datastore);
}

// Exactly one further library means that the component's own library is registered, and only that;
// its result does not matter. A transport's list is looked for in the folder of its name.
bool PackageInstallation::RegisterLibraries(ComponentKind kind) {
  if (parts_.session.libraries.size() != 1) {
    return parts_.self_registration.funcRegisterDll(kind == ComponentKind::kTransport
                                                        ? folder_ + parts_.session.package_name
                                                        : folder_.substr(0, folder_.size() - 1));
  }
  const std::string& library = parts_.session.record[kUnpackTables[kind].own_library_slot];
  if (kind != ComponentKind::kChannel || !library.empty()) {
    parts_.self_registration.DLLRegisterService(folder_ + library, true);
  }
  return true;
}

void PackageInstallation::RestartMainClient() {
  if (parts_.session.restart) {
    parts_.main_client.LaunchMainApplication();
    parts_.session.restart = false;
  }
}

}  // namespace kitbay::install
