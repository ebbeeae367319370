#include "install/removal.h"

#include <optional>
#include <pugixml.hpp>

#include "base/failure.h"
#include "base/guarded.h"
#include "base/text.h"
#include "catalog/installed_tables.h"
#include "catalog/registry_files.h"
#include "catalog/xml_change.h"
#include "catalog/xml_file.h"
#include "install/clicked_row.h"
#include "install/refusal.h"
#include "view/page_ids.h"

namespace kitbay::install {
namespace {

using base::ComponentKind;
using base::guarded;
using base::ToLower;

constexpr base::PerKind<const char*> kActions = {
    .addon = "uninstall", .transport = "uninstalltransport", .channel = "uninstallchannel"};

// Empty for an action word that is not one of the three.
std::optional<ComponentKind> KindOf(const std::string& action) {
  for (const ComponentKind kind : base::kComponentKinds) {
    if (ToLower(action) == kActions[kind]) {
      return kind;
    }
  }
  return std::nullopt;
}

bool IsCustomRegistry(const std::string& path) {
  return ToLower(path.substr(path.rfind('\\') + 1)) == "customregistry.xml";
}

// The first entry of `kind` with that name, in lower case; empty if there is none.
pugi::xml_node FindEntry(const pugi::xml_document& document, ComponentKind kind,
                         const std::string& lower_name) {
  const std::string children = std::string(catalog::kInstalledTables[kind].registry_list) + "/*";
  for (const pugi::xpath_node& selected : catalog::SelectNodes(document, children.c_str())) {
    if (ToLower(catalog::AttributeText(selected.node(), "name")) == lower_name) {
      return selected.node();
    }
  }
  return {};
}

}  // namespace

void Removal::RemoveAddon(const std::string& action, const std::string& kind) {
  guarded(parts_.log, "Kitbay::RemoveAddon", [&] {
    const ClickedRow row = TakeClickedRow(parts_.page);
    parts_.session.component_name = row.name;
    parts_.state.current_row_id = row.row_id;
    parts_.state.current_row_name = row.row_name;
    bool is_removed = false;
    checkExe(action, row.name, kind, is_removed);
  });
}

// An installation may have ended while the user was asked, and left its own row as the current one.
void Removal::checkExe(const std::string& action, const std::string& name, const std::string& kind,
                       bool& result) {
  guarded(parts_.log, "Kitbay::checkExe", [&] {
    const std::string row_id = parts_.state.current_row_id;
    const std::string row_name = parts_.state.current_row_name;
    const RemovalAnswer answer = parts_.main_client.AskBeforeRemoval(name, kind);
    result = answer != RemovalAnswer::kCancelled;
    parts_.state.current_row_id = row_id;
    parts_.state.current_row_name = row_name;
    if (answer == RemovalAnswer::kClientClosed) {
      Delnode(action);
      UninstallFromBoth(action);
    } else if (answer == RemovalAnswer::kClientNotRunning) {
      DelnodeWithoutTessel(action);
    }
  });
}

void Removal::Delnode(const std::string& action) {
  guarded(parts_.log, "Kitbay::Delnode ", [&] { TakeRowAway(action); });
}

void Removal::DelnodeWithoutTessel(const std::string& action) {
  guarded(parts_.log, "Kitbay::DelnodeWithoutTessel ", [&] {
    UninstallFromBoth(action);
    TakeRowAway(action);
  });
}

void Removal::TakeRowAway(const std::string& action) {
  if (const auto kind = KindOf(action)) {
    parts_.rows.FollowCurrentRow(view::kInstalledContainers[*kind]);
    parts_.rows.RemoveNode(view::kInstalledContainers[*kind]);
  }
}

// A row without an entry in either file comes back with the next listing; the log says why.
void Removal::UninstallFromBoth(const std::string& action) {
  if (const auto kind = KindOf(action)) {
    bool is_missing_in_datastore = false;
    bool is_missing_in_custom_registry = false;
    uninstall(catalog::DatastorePath(parts_.settings), *kind, is_missing_in_datastore);
    uninstall(catalog::CustomRegistryPath(parts_.settings), *kind, is_missing_in_custom_registry);
    if (is_missing_in_datastore && is_missing_in_custom_registry) {
      guarded(parts_.log, "Kitbay::uninstall", [&] {
        throw base::Failure(
            base::RuntimeError::kObjectVariableNotSet,
            "no registry file has an entry of \"" + parts_.session.component_name + "\"");
      });
    }
  }
}

// Users without components of their own have no custom registry.
void Removal::uninstall(const std::string& path, ComponentKind kind, bool& is_missing) {
  guarded(parts_.log, "Kitbay::uninstall", [&] {
    if (IsCustomRegistry(path) && !parts_.files.Exists(path)) {
      is_missing = true;
      return;
    }
    try {
      catalog::ChangeXml(parts_.files, path, [&](catalog::XmlDocument& document) {
        pugi::xml_node entry = FindEntry(document, kind, ToLower(parts_.session.component_name));
        is_missing = !entry;
        return entry && entry.parent().remove_child(entry);
      });
    } catch (const base::Failure& failure) {
      TellRefusal(parts_.desktop, parts_.session.component_name + " could not be removed from",
                  path, failure);
      throw;
    }
  });
}

}  // namespace kitbay::install
