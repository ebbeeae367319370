#pragma once

#include <optional>
#include <string>

#include "base/component_kind.h"
#include "base/error_log.h"
#include "base/settings.h"
#include "catalog/new_components.h"
#include "catalog/update_source_list.h"
#include "platform/main_window.h"
#include "platform/suite_objects.h"
#include "update/manifest_cache.h"
#include "update/package_receiver.h"
#include "update/unanswered_requests.h"
#include "view/click.h"

namespace kitbay::update {

/// Requests manifests and packages from the suite's download object, one at a time. The answers
/// arrive as transport events. Every procedure logs its failure; then no answer arrives.
class UpdateRequests {
 public:
  UpdateRequests(base::ErrorLog& log, const base::Settings& settings, platform::MainWindow& window,
                 catalog::UpdateSourceList& sources, const catalog::NewComponents& new_components,
                 ManifestCache& manifests, PendingPackages& pending)
      : log_(log),
        settings_(settings),
        window_(window),
        sources_(sources),
        new_components_(new_components),
        manifests_(manifests),
        pending_(pending),
        unanswered_(window) {}

  /// The object that transfers; null if there is none, and every request then fails with 91.
  /// Requests to another object are forgotten.
  void SetDownloadObject(platform::TransportObject* object);

  /// Requests `file_path` from `server`, to be stored as the file `destination`. A package whose
  /// `digest` is known may be no larger than that says. Returns whether the object accepted the
  /// request.
  bool Updates(const std::string& server, const std::string& file_path,
               const std::string& destination,
               const std::optional<catalog::PackageDigest>& digest = std::nullopt);

  /// Requests the manifest of the next pending update source, unless an answer is still awaited.
  /// True when none is left to ask. A source whose manifest has no usable file name is logged and
  /// dropped.
  bool CheckPreferences();

  /// Downloads the package of the new component with the clicked name. Returns whether the request
  /// was handed over; its answer may already have arrived.
  bool InstallNewAddons(const view::Click& click);

  UnansweredRequests& unanswered() { return unanswered_; }

 private:
  bool DownloadFirst(const view::Click& click, const std::string& lower_name);
  bool DownloadAddon(const catalog::NewComponent& component, const std::string& label);
  void AskNextSource();
  void DropUnusableSources();
  bool IsManifestAwaited() const;
  void SetStatus(const std::string& text);

  base::ErrorLog& log_;
  const base::Settings& settings_;
  platform::MainWindow& window_;
  catalog::UpdateSourceList& sources_;
  const catalog::NewComponents& new_components_;
  ManifestCache& manifests_;
  PendingPackages& pending_;
  platform::TransportObject* download_object_ = nullptr;
  UnansweredRequests unanswered_;
  std::optional<std::string> asked_manifest_;  // the file path of the latest request for one
};

}  // namespace kitbay::update
