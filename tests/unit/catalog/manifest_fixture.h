#pragma once

#include <string>

#include "catalog/available_updates.h"
#include "catalog_fixture.h"
#include "fakes/fake_version_resource.h"
#include "recording_row_writer.h"

namespace kitbay::catalog {

/// An entry of a manifest with everything that the lists read.
inline std::string Offer(const std::string& element, const std::string& id, const std::string& name,
                         const std::string& version) {
  return "<" + element + " id=\"" + id + "\"><name>" + name + "</name><version>" + version +
         "</version><description>New " + name + "</description><url>packages.example/" + id +
         ".zip</url></" + element + ">";
}

/// A manifest whose three containers contain these entries.
inline std::string ManifestText(const std::string& addons, const std::string& transports,
                                const std::string& channels) {
  return "<components><addons>" + addons + "</addons><transports>" + transports +
         "</transports><channels>" + channels + "</channels></components>";
}

/// A suite in memory with manifests from its update sources.
class ManifestTest : public CatalogTest {
 protected:
  void SetManifest(const std::string& name, const std::string& text) {
    files_.AddFile("C:\\Suite\\Kitbay\\" + name, text);
  }

  static constexpr const char* kSubscript = "Subscript out of range";

  fakes::FakeVersionResource resources_;
  FileVersions versions_{log_, settings_, resources_, catalog_files_};
  RecordingRowWriter rows_;
  InstalledRows shown_;
};

}  // namespace kitbay::catalog
