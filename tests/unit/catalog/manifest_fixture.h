#pragma once

#include <algorithm>
#include <string>

#include "catalog/available_updates.h"
#include "catalog_fixture.h"
#include "fakes/fake_version_resource.h"
#include "fakes/manifest_text.h"
#include "recording_row_writer.h"

namespace kitbay::catalog {

using fakes::ManifestText;

/// An entry of a manifest with everything that the lists read. `element` is that of a kind.
inline std::string Offer(const std::string& element, const std::string& id, const std::string& name,
                         const std::string& version) {
  const auto* const kind = std::ranges::find(base::kComponentKinds, element, [](auto candidate) {
    return std::string(fakes::kManifestElements[candidate]);
  });
  return fakes::OfferText(
      *kind, {.id = id, .name = name, .version = version, .description = "New " + name});
}

/// A suite in memory with manifests from its update sources.
class ManifestTest : public CatalogTest {
 protected:
  void SetManifest(const std::string& name, const std::string& text) {
    files_.AddFile("C:\\Suite\\Kitbay\\" + name, text);
  }

  static constexpr const char* kSubscript = "Subscript out of range";

  fakes::FakeVersionResource resources_;
  FileVersions versions_{log_, settings_, resources_};
  RecordingRowWriter rows_;
  InstalledRows shown_;
};

}  // namespace kitbay::catalog
