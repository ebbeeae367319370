#include "update/update_requests.h"

#include "base/failure.h"
#include "base/file_name.h"
#include "base/guarded.h"
#include "base/text.h"
#include "catalog/manifest_file.h"
#include "update/source_address.h"

namespace kitbay::update {
namespace {

using base::Failure;
using base::guarded;
using base::RuntimeError;

// Follows the display text while a package is downloaded.
constexpr base::PerKind<const char*> kLabels = {
    .addon = "Addon", .transport = "", .channel = "Channel"};

// Names come from outside and become part of a path.
void Demand(bool is_usable, const std::string& name) {
  if (!is_usable) {
    throw Failure(RuntimeError::kPathFileAccessError, name);
  }
}

}  // namespace

void UpdateRequests::SetDownloadObject(platform::TransportObject* object) {
  download_object_ = object;
  unanswered_.Clear();
}

bool UpdateRequests::Updates(const std::string& server, const std::string& file_path,
                             const std::string& destination,
                             const std::optional<catalog::PackageDigest>& digest) {
  const bool is_sent = guarded(log_, "Kitbay::Updates", [&] {
    unanswered_.Add(file_path);
    if (download_object_ == nullptr) {
      throw Failure(RuntimeError::kObjectVariableNotSet);
    }
    window_.progress_bar().SetValue(0);
    if (const auto size = digest ? catalog::SizeIn(*digest) : std::nullopt) {
      download_object_->LimitNext(*size);
    }
    download_object_->Request("<server>" + server + "</server><filetodownload>" + file_path +
                              "</filetodownload><destpath>" + destination +
                              "</destpath><progressevents>true</progressevents>");
  });
  if (!is_sent) {
    unanswered_.TakeBack(file_path);
  }
  return is_sent;
}

bool UpdateRequests::CheckPreferences() {
  bool is_nothing_left = false;
  guarded(log_, "Kitbay::CheckPreferences", [&] {
    DropUnusableSources();
    is_nothing_left = sources_.PendingSources.empty();
    if (!is_nothing_left && !IsManifestAwaited()) {
      AskNextSource();
    }
  });
  return is_nothing_left;
}

void UpdateRequests::AskNextSource() {
  const std::string source = sources_.PendingSources.front();
  // Even without a copy of the old manifest, the new one is worth having.
  guarded(log_, "Kitbay::CheckPreferences", [&] { manifests_.PutAside(source); });
  const Address address = SplitSource(source);
  SetStatus("Getting information from server " + address.server + ".");
  asked_manifest_ = address.file_path;
  Updates(address.server, address.file_path,
          catalog::ManifestPath(settings_, base::AfterLastSlash(source)));
}

bool UpdateRequests::IsManifestAwaited() const {
  return asked_manifest_ && unanswered_.Contains(*asked_manifest_);
}

// A source whose manifest cannot be stored under its name is skipped, so that the next ones are
// asked.
void UpdateRequests::DropUnusableSources() {
  std::vector<std::string>& pending = sources_.PendingSources;
  while (!pending.empty()) {
    const std::string manifest = base::AfterLastSlash(pending.front());
    if (guarded(log_, "Kitbay::CheckPreferences",
                [&] { Demand(catalog::IsManifestName(manifest), manifest); })) {
      return;
    }
    pending.erase(pending.begin());
  }
}

bool UpdateRequests::InstallNewAddons(const view::Click& click) {
  bool is_sent = false;
  guarded(log_, "Kitbay::InstallNewAddons",
          [&] { is_sent = DownloadFirst(click, base::ToLower(click.Name())); });
  return is_sent;
}

// The package is recorded before it is requested: the answer may arrive during the request and fill
// the lists again.
bool UpdateRequests::DownloadFirst(const view::Click& click, const std::string& lower_name) {
  for (const catalog::NewComponent& listed : new_components_[click.kind]) {
    if (base::ToLower(listed.name) == lower_name) {
      // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the list may be filled again
      const catalog::NewComponent component = listed;
      pending_[click.kind] = {.file_path = SplitSource(component.url).file_path,
                              .name = component.id,
                              .row_id = click.row_id,
                              .row_name = click.row_name,
                              .digest = component.digest};
      const bool is_sent = DownloadAddon(component, kLabels[click.kind]);
      if (!is_sent) {
        pending_[click.kind] = {};
      }
      return is_sent;
    }
  }
  return false;
}

bool UpdateRequests::DownloadAddon(const catalog::NewComponent& component,
                                   const std::string& label) {
  bool is_sent = false;
  guarded(log_, "Kitbay::DownloadAddon", [&] {
    Demand(base::IsPlainLongName(component.id), component.id);
    const Address address = SplitSource(component.url);
    SetStatus("Downloading " + component.name + (label.empty() ? "" : " " + label) + ".");
    is_sent = Updates(address.server, address.file_path, PackagePath(settings_, component.id),
                      component.digest);
  });
  return is_sent;
}

void UpdateRequests::SetStatus(const std::string& text) {
  window_.status_bar().SetPanelText(platform::kStatusPanel, text);
}

}  // namespace kitbay::update
