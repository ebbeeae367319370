#pragma once

#include <exception>
#include <map>
#include <optional>
#include <string>

#include "base/component_kind.h"
#include "base/failure.h"
#include "base/settings.h"
#include "catalog/installed_entries.h"
#include "catalog/manifest_trust.h"
#include "catalog/offers.h"
#include "catalog/package_digest.h"
#include "catalog/xml_document.h"
#include "platform/files.h"

namespace kitbay::catalog {

/// The files from which the lists are made: the suite's two registry files and the manifests of the
/// update sources. During a `Refresh` each is read once, and only what the lists need is kept of
/// it. A failure to read one is kept too, so that every listing that needs the file reports it. All
/// calls must be made within a refresh, and what they return lives until it ends.
class CatalogFiles {
 public:
  CatalogFiles(const platform::Files& files, const base::Settings& settings,
               const ManifestTrust& trust)
      : files_(files), settings_(settings), trust_(trust) {}

  /// One reading of the files. Refreshes nest; the outermost forgets what was read.
  class Refresh {
   public:
    explicit Refresh(CatalogFiles& files) : files_(files) { ++files_.refreshes_; }
    ~Refresh();
    Refresh(const Refresh&) = delete;
    Refresh& operator=(const Refresh&) = delete;

   private:
    CatalogFiles& files_;
  };

  /// The datastore. Throws the `base::Failure` with which it did not load.
  Registry& Datastore();

  /// Each is null if the file does not load.
  Registry* TryDatastore();
  Registry* TryCustomRegistry();

  /// The ids of the kind in both registry files, as far as they load.
  const InstalledIds& Installed(base::ComponentKind kind);

  /// What the manifest with that file name offers. Null if it does not load, if no manifest may
  /// have the name, and also if its source signs its manifests and this one is not acceptable,
  /// which is logged.
  const Offers* TryOffers(const std::string& manifest);

  /// Whole documents: a file, null if it does not load; and a manifest, null as for `TryOffers`.
  /// For use by those who need more than the lists; a manifest is read again if it was already
  /// read for them.
  const XmlDocument* TryFile(const std::string& path);
  const XmlDocument* TryManifest(const std::string& name);

  /// What the entry says about its package, if the source of the manifest with that file name
  /// signs.
  std::optional<PackageDigest> SignedDigest(const std::string& manifest,
                                            const pugi::xml_node& entry) const {
    return trust_.IsDemandedOf(manifest) ? std::optional(ReadDigest(manifest, entry))
                                         : std::nullopt;
  }

 private:
  /// What was read, or why it could not be read.
  template <typename Content>
  struct Reading {
    std::optional<Content> content;
    std::exception_ptr failure;
  };

  template <typename Content>
  using Readings = std::map<std::string, Reading<Content>>;  // by path in lower case

  struct Snapshot {
    Readings<XmlDocument> documents;
    base::PerKind<InstalledIds> installed;
    Readings<Registry> registries;
    Readings<Offers> offers;
  };

  template <typename Content, typename Read>
  Reading<Content>& ReadOnce(Readings<Content>& readings, const std::string& path, Read read);
  Reading<Registry>& ReadDatastore();
  void LoadManifest(const std::string& name, XmlDocument& document) const;

  const platform::Files& files_;
  const base::Settings& settings_;
  const ManifestTrust& trust_;
  int refreshes_ = 0;
  Snapshot snapshot_;
};

}  // namespace kitbay::catalog
