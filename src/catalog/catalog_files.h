#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>

#include "base/failure.h"
#include "base/settings.h"
#include "catalog/manifest_trust.h"
#include "catalog/package_digest.h"
#include "catalog/xml_document.h"
#include "platform/files.h"

namespace kitbay::catalog {

/// The files from which the lists are made: the suite's two registry files and the manifests of the
/// update sources. During a `Refresh` each is read once. A failure to read one is kept too, so that
/// every listing that needs the file reports it. Documents live until the refresh ends; all calls
/// must be made within one.
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
  const XmlDocument& Datastore();

  /// Each is null if the file does not load.
  const XmlDocument* TryDatastore();
  const XmlDocument* TryCustomRegistry();
  const XmlDocument* TryFile(const std::string& path);

  /// The manifest with that file name. Null if no manifest may have the name, and also if its
  /// source signs its manifests and this one is not acceptable, which is logged.
  const XmlDocument* TryManifest(const std::string& name);

  /// What the entry says about its package, if the source of the manifest with that file name
  /// signs.
  std::optional<PackageDigest> SignedDigest(const std::string& manifest,
                                            const pugi::xml_node& entry) const {
    return trust_.IsDemandedOf(manifest) ? std::optional(ReadDigest(manifest, entry))
                                         : std::nullopt;
  }

  /// The versions of libraries that the refresh has read so far, by path.
  std::unordered_map<std::string, std::string>& versions() { return snapshot_.versions; }

 private:
  struct File {
    XmlDocument document;
    std::optional<base::Failure> failure;
  };

  struct Snapshot {
    std::map<std::string, File> files;  // by path in lower case
    std::unordered_map<std::string, std::string> versions;
  };

  const File& Load(const std::string& path);
  const File& LoadWith(const std::string& path,
                       const std::function<void(XmlDocument& document)>& load);
  void DemandTrust(const std::string& manifest, const std::string& bytes) const;

  const platform::Files& files_;
  const base::Settings& settings_;
  const ManifestTrust& trust_;
  int refreshes_ = 0;
  Snapshot snapshot_;
};

}  // namespace kitbay::catalog
