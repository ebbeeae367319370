#pragma once

#include <string>

#include "base/component_kind.h"
#include "base/error_log.h"
#include "base/failure.h"
#include "base/settings.h"
#include "catalog/catalog_files.h"
#include "catalog/update_source_list.h"
#include "install/install_session.h"
#include "platform/desktop.h"
#include "platform/files.h"
#include "view/page_buttons.h"
#include "view/page_rows.h"

namespace kitbay::install {

/// What the registration of components works with.
struct RegistrationParts {
  base::ErrorLog& log;
  platform::Files& files;
  catalog::CatalogFiles& manifests;
  const base::Settings& settings;
  platform::Desktop& desktop;
  view::PageRows& rows;
  view::PageButtons& buttons;
  const catalog::UpdateSourceList& sources;
  InstallSession& session;
};

/// Enters a component into the suite's registry files once its package has been expanded. Every
/// procedure logs its failure.
///
/// The enter procedures read the manifest entry of the session's package into the record and the
/// library list. They return whether the entry was found and read whole, and still announces the
/// session's package; otherwise record and list are empty, and nothing may be entered.
///
/// The update procedures write the record into its registry file, change the page and tell the
/// user, and return whether they got that far. A failure while writing leaves the file as it was,
/// and the page too, and clears the status bar; the user is told when the system refused it.
class DatastoreRegistration {
 public:
  explicit DatastoreRegistration(const RegistrationParts& parts) : parts_(parts) {}

  bool enterAddon();
  bool enterTransport();
  bool enterChannel();

  bool updateRegistry();
  bool updateRegistryForTransport();
  bool updateRegistryForChannel();

 private:
  void Enter(base::ComponentKind kind);
  bool Update(base::ComponentKind kind, const std::string& path);
  void TellUnentered(base::ComponentKind kind, const std::string& path, bool was_present,
                     const base::Failure& failure);
  void ShowInstalled(base::ComponentKind kind);
  void ShowUpdated(base::ComponentKind kind);
  std::string NameOf(base::ComponentKind kind) const;
  void CreateCustomRegistry();

  RegistrationParts parts_;
};

}  // namespace kitbay::install
