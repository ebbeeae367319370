#pragma once

#include <deque>
#include <memory>
#include <string>

#include "base/component_kind.h"
#include "base/error_log.h"
#include "base/settings.h"
#include "install/datastore_registration.h"
#include "install/install_session.h"
#include "install/main_client.h"
#include "install/package_expansion.h"
#include "install/self_registration.h"
#include "platform/desktop.h"
#include "platform/files.h"
#include "update/package_receiver.h"
#include "view/page_buttons.h"
#include "view/view_state.h"

namespace kitbay::install {

/// What an installation works with.
struct InstallationParts {
  base::ErrorLog& log;
  base::Settings& settings;
  platform::Files& files;
  platform::Desktop& desktop;
  view::ViewState& state;
  view::PageButtons& buttons;
  PackageExpansion& expansion;
  SelfRegistration& self_registration;
  DatastoreRegistration& datastore;
  MainClient& main_client;
  InstallSession& session;
};

/// Installs downloaded packages: expands them, makes their libraries register themselves, enters
/// the component into the registry files, and starts the main client again if it was closed for an
/// update. Every procedure logs its failure; the component is then not entered, and an update is
/// over. Files that were written by then stay.
///
/// A package of a source that signs its manifests is opened only if it is the one that the manifest
/// announced and still announces; otherwise it is reported as a corrupt one.
///
/// A package that arrives while the user reads the outcome of another one waits for its turn.
class PackageInstallation : public update::PackageReceiver {
 public:
  explicit PackageInstallation(const InstallationParts& parts) : parts_(parts) {}

  void Unpack(const update::PendingPackage& package, const std::string& path) override;

  /// Expands into the installation folder itself, whose setting ends in "\" afterwards.
  void UnpackTransport(const update::PendingPackage& package, const std::string& path) override;

  void UnpackChannel(const update::PendingPackage& package, const std::string& path) override;

  void InstallProcess() override;

 private:
  struct Arrival {
    base::ComponentKind kind;
    update::PendingPackage package;
    std::string path;
  };

  void Install(base::ComponentKind kind, const update::PendingPackage& package,
               const std::string& path);
  void InstallNow(const Arrival& arrival);
  void UnpackFrom(const Arrival& arrival);
  std::unique_ptr<platform::FileReader> HoldIfSigned(const Arrival& arrival) const;
  bool IsWhatWasSigned(const Arrival& arrival, const platform::FileReader& package);
  bool Expand(const Arrival& arrival);
  std::string AddonFolder();
  std::string ChannelFolder();
  bool EnterComponent(base::ComponentKind kind);
  bool ReadEntry(base::ComponentKind kind);
  bool RegisterLibraries(base::ComponentKind kind);
  void RestartMainClient();

  void TellMissing(base::ComponentKind kind);
  void TellCorrupt(base::ComponentKind kind);
  void TellUnwritten();

  InstallationParts parts_;
  std::deque<Arrival> waiting_;
  bool is_installing_ = false;
  std::string folder_;  // of the component being installed; ends in "\" once it is expanded
};

}  // namespace kitbay::install
