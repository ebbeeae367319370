#include "install/update_flows.h"

#include <pugixml.hpp>
#include <vector>

#include "base/failure.h"
#include "base/file_name.h"
#include "base/guarded.h"
#include "base/text.h"
#include "catalog/kind_tables.h"
#include "catalog/xml_file.h"
#include "update/source_address.h"
#include "view/row_focus.h"

namespace kitbay::install {
namespace {

using base::ComponentKind;
using base::Failure;
using base::guarded;
using base::RuntimeError;

// What distinguishes the update flows of the kinds.
struct FlowTexts {
  const char* procedure;
  const char* kind_word;      // in the question to the user
  const char* status_ending;  // after the name in the status bar
};
constexpr base::PerKind<FlowTexts> kFlowTexts = {
    .addon = {.procedure = "Kitbay::UpdateInstalledAddon",
              .kind_word = "Addon",
              .status_ending = " addon."},
    .transport = {.procedure = "Kitbay::UpdateInstalledTransport",
                  .kind_word = "",
                  .status_ending = ""},
    .channel = {.procedure = "Kitbay::UpdateInstalledChannel",
                .kind_word = "Channel",
                .status_ending = " Channel."}};

std::vector<std::string> SplitAtSlashes(const std::string& text) {
  std::vector<std::string> parts;
  std::size_t start = 0;
  for (std::size_t slash = text.find('/'); slash != std::string::npos;
       slash = text.find('/', start)) {
    parts.push_back(text.substr(start, slash - start));
    start = slash + 1;
  }
  parts.push_back(text.substr(start));
  return parts;
}

// The parts of a package's URL: the server is third, after the scheme and an empty part, or first
// if there is no scheme. The path has no "/" at its start.
update::Address SplitUrl(const std::string& url) {
  const std::vector<std::string> parts = SplitAtSlashes(url);
  const bool has_scheme = parts.size() > 1 && parts[0].ends_with(':') && parts[1].empty();
  const std::size_t server = has_scheme ? 2 : 0;
  if (parts.size() < server + 2) {
    throw Failure(RuntimeError::kSubscriptOutOfRange);
  }
  update::Address address{.server = parts[server], .file_path = parts[server + 1]};
  for (std::size_t i = server + 2; i < parts.size(); ++i) {
    address.file_path += "/" + parts[i];
  }
  return address;
}

// An entry that lacks one of its texts is not an offer.
void DemandTexts(const pugi::xml_node& entry, ComponentKind kind) {
  std::vector<const char*> names = {"name", "version", "description"};
  if (kind == ComponentKind::kTransport) {
    names.push_back("filename");
  }
  for (const char* name : names) {
    if (!entry.child(name)) {
      throw Failure(RuntimeError::kObjectVariableNotSet);
    }
  }
}

}  // namespace

// What the manifest says about the component, as far as the update needs it.
struct UpdateFlows::Offer {
  std::string id;
  std::string url;
  std::optional<catalog::PackageDigest> digest;
};

void UpdateFlows::UpdateInstalled(const view::Click& click) {
  guarded(parts_.log, kFlowTexts[click.kind].procedure, [&] {
    if (!MayUpdate(click)) {
      return;
    }
    // Otherwise a disabled button would lose the focus to nobody.
    view::RowFocus(parts_.page, parts_.state.lists).TakeFromButton();
    click.button->SetDisabled(true);
    const std::optional<Offer> offer = FindOffer(click.kind);
    if (offer && !RequestPackage(click, *offer)) {
      parts_.buttons.EnableOtherUpdatedDownload();
      parts_.buttons.EnableOtherDownload();
    }
  });
}

bool UpdateFlows::MayUpdate(const view::Click& click) {
  parts_.session.component_name = click.Name();
  parts_.state.current_row_id = click.row_id;
  parts_.state.current_row_name = click.row_name;
  if (!parts_.main_client.CheckExeForUpdate(parts_.session.component_name,
                                            kFlowTexts[click.kind].kind_word)) {
    return false;
  }
  parts_.session.restart = true;
  parts_.state.update_in_progress = true;
  return true;
}

std::optional<UpdateFlows::Offer> UpdateFlows::FindOffer(ComponentKind kind) {
  if (parts_.sources.UpdateSources.empty()) {
    throw Failure(RuntimeError::kSubscriptOutOfRange);
  }
  return kind == ComponentKind::kChannel ? GetChannelInfo() : ReadOffer(kind);
}

std::optional<UpdateFlows::Offer> UpdateFlows::GetChannelInfo() {
  std::optional<Offer> offer;
  guarded(parts_.log, "Kitbay::GetChannelInfo",
          [&] { offer = ReadOffer(ComponentKind::kChannel); });
  return offer;
}

// The row shows the name, but it is compared with the id.
std::optional<UpdateFlows::Offer> UpdateFlows::ReadOffer(ComponentKind kind) {
  const std::string manifest_name = base::AfterLastSlash(parts_.sources.UpdateSources.front());
  const catalog::CatalogFiles::Refresh refresh(parts_.manifests);
  const catalog::XmlDocument* manifest = parts_.manifests.TryManifest(manifest_name);
  if (manifest == nullptr) {
    return std::nullopt;
  }
  const std::string name = base::ToLower(parts_.session.component_name);
  for (const pugi::xpath_node& selected :
       catalog::SelectNodes(*manifest, catalog::kKindTables[kind].offers)) {
    const pugi::xml_node entry = selected.node();
    const std::string id = catalog::AttributeText(entry, "id");
    if (!id.empty() && base::ToLower(id) == name) {
      DemandTexts(entry, kind);
      return Offer{.id = id,
                   .url = catalog::ChildText(entry, "url"),
                   .digest = parts_.manifests.SignedDigest(manifest_name, entry)};
    }
  }
  return std::nullopt;
}

bool UpdateFlows::RequestPackage(const view::Click& click, const Offer& offer) {
  if (!base::IsPlainLongName(offer.id)) {
    throw Failure(RuntimeError::kPathFileAccessError, offer.id);
  }
  const update::Address address = SplitUrl(offer.url);
  const FlowTexts& texts = kFlowTexts[click.kind];
  parts_.buttons.DisableOtherUpdatedDownload();
  parts_.buttons.DisableOtherDownload();
  // Recorded before the request, because the answer may arrive while the request is handed over.
  parts_.pending_packages[click.kind] = {.file_path = address.file_path,
                                         .name = offer.id,
                                         .row_id = click.row_id,
                                         .row_name = click.row_name,
                                         .digest = offer.digest};
  bool is_sent = false;
  guarded(parts_.log, texts.procedure, [&] {
    parts_.window.status_bar().SetPanelText(
        platform::kStatusPanel,
        "Downloading " + parts_.session.component_name + texts.status_ending);
    is_sent = parts_.requests.Updates(address.server, address.file_path,
                                      update::PackagePath(parts_.settings, offer.id), offer.digest);
  });
  if (!is_sent) {
    parts_.pending_packages[click.kind] = {};
  }
  return is_sent;
}

}  // namespace kitbay::install
