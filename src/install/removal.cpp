#include "install/removal.h"

#include <pugixml.hpp>

#include "base/failure.h"
#include "base/guarded.h"
#include "base/text.h"
#include "catalog/kind_tables.h"
#include "catalog/registry_files.h"
#include "catalog/xml_change.h"
#include "catalog/xml_file.h"
#include "install/refusal.h"
#include "view/page_ids.h"

namespace kitbay::install {
namespace {

using base::ComponentKind;
using base::guarded;
using base::ToLower;

// The kinds' names in the questions to the user.
constexpr base::PerKind<const char*> kKindWords = {
    .addon = "Addon", .transport = "", .channel = "Channel"};

bool IsCustomRegistry(const std::string& path) {
  return ToLower(path.substr(path.rfind('\\') + 1)) == "customregistry.xml";
}

// The first entry of `kind` with that name, in lower case; empty if there is none.
pugi::xml_node FindEntry(const pugi::xml_document& document, ComponentKind kind,
                         const std::string& lower_name) {
  const std::string children = std::string(catalog::kKindTables[kind].registry_list) + "/*";
  for (const pugi::xpath_node& selected : catalog::SelectNodes(document, children.c_str())) {
    if (ToLower(catalog::AttributeText(selected.node(), "name")) == lower_name) {
      return selected.node();
    }
  }
  return {};
}

}  // namespace

void Removal::RemoveAddon(const view::Click& click) {
  guarded(parts_.log, "Kitbay::RemoveAddon", [&] {
    parts_.session.component_name = click.Name();
    parts_.state.current_row_id = click.row_id;
    parts_.state.current_row_name = click.row_name;
    checkExe(click.kind, parts_.session.component_name);
  });
}

// An installation may have ended while the user was asked, and left its own row as the current one.
bool Removal::checkExe(ComponentKind kind, const std::string& name) {
  RemovalAnswer answer = RemovalAnswer::kCancelled;
  guarded(parts_.log, "Kitbay::checkExe", [&] {
    const std::string row_id = parts_.state.current_row_id;
    const std::string row_name = parts_.state.current_row_name;
    answer = parts_.main_client.AskBeforeRemoval(name, kKindWords[kind]);
    parts_.state.current_row_id = row_id;
    parts_.state.current_row_name = row_name;
    if (answer == RemovalAnswer::kClientClosed) {
      Delnode(kind);
      UninstallFromBoth(kind);
    } else if (answer == RemovalAnswer::kClientNotRunning) {
      DelnodeWithoutTessel(kind);
    }
  });
  return answer != RemovalAnswer::kCancelled;
}

void Removal::Delnode(ComponentKind kind) {
  guarded(parts_.log, "Kitbay::Delnode ", [&] { TakeRowAway(kind); });
}

void Removal::DelnodeWithoutTessel(ComponentKind kind) {
  guarded(parts_.log, "Kitbay::DelnodeWithoutTessel ", [&] {
    UninstallFromBoth(kind);
    TakeRowAway(kind);
  });
}

void Removal::TakeRowAway(ComponentKind kind) {
  parts_.rows.FollowCurrentRow(view::kInstalledContainers[kind]);
  parts_.rows.RemoveNode(view::kInstalledContainers[kind]);
}

// A row without an entry in either file comes back with the next listing; the log says why.
void Removal::UninstallFromBoth(ComponentKind kind) {
  const bool is_missing_in_datastore = uninstall(catalog::DatastorePath(parts_.settings), kind);
  const bool is_missing_in_custom = uninstall(catalog::CustomRegistryPath(parts_.settings), kind);
  if (is_missing_in_datastore && is_missing_in_custom) {
    guarded(parts_.log, "Kitbay::uninstall", [&] {
      throw base::Failure(
          base::RuntimeError::kObjectVariableNotSet,
          "no registry file has an entry of \"" + parts_.session.component_name + "\"");
    });
  }
}

// Returns whether the file has no entry of the component. Users without components of their own
// have no custom registry.
bool Removal::uninstall(const std::string& path, ComponentKind kind) {
  bool is_missing = false;
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
  return is_missing;
}

}  // namespace kitbay::install
