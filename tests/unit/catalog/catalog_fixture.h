#pragma once

#include <gmock/gmock.h>

#include <string>

#include "base/settings.h"
#include "catalog/catalog_files.h"
#include "fakes/fake_clock.h"
#include "fakes/memory_files.h"
#include "fakes/recording_error_log.h"

namespace kitbay::catalog {

using fakes::Entry;
using fakes::kNotSet;

inline constexpr std::int32_t kInvalidData = -2147024883;

/// A suite in memory, installed in C:\Suite, with the user's folder C:\User\CustomData.
class CatalogTest : public testing::Test {
 protected:
  static constexpr const char* kDatastore = "C:\\Suite\\Datastore\\olregistry.xml";
  static constexpr const char* kCustomRegistry = "C:\\User\\CustomData\\customregistry.xml";

  CatalogTest() {
    settings_.InstallFolder = "C:\\Suite";
    settings_.CustomDataFolder = "C:\\User\\CustomData";
  }

  void SetDatastore(const std::string& text) { files_.AddFile(kDatastore, text); }
  void SetCustomRegistry(const std::string& text) { files_.AddFile(kCustomRegistry, text); }

  fakes::RecordingErrorLog log_;
  fakes::MemoryFiles files_;
  base::Settings settings_;
  fakes::FakeClock clock_;
  UpdateSourceList sources_;
  ManifestTrust trust_{log_, clock_, sources_};
  CatalogFiles catalog_files_{files_, settings_, trust_};
};

/// Entries with everything that the listings read.
inline std::string Addon(const std::string& id, const std::string& name,
                         const std::string& filename, const std::string& core = "0") {
  return "<addon id=\"" + id + "\" name=\"" + name + "\"><filename>" + filename +
         "</filename><description>About " + name + "</description><core>" + core +
         "</core></addon>";
}

inline std::string Transport(const std::string& id, const std::string& name,
                             const std::string& filename, const std::string& core = "0") {
  return "<transport id=\"" + id + "\" name=\"" + name + "\"><filename>" + filename +
         "</filename><description>About " + name + "</description><core>" + core +
         "</core></transport>";
}

inline std::string Channel(const std::string& id, const std::string& name,
                           const std::string& version, const std::string& core = "0") {
  return "<channel id=\"" + id + "\" name=\"" + name + "\" version=\"" + version +
         "\"><filename></filename><description>About " + name + "</description><core>" + core +
         "</core></channel>";
}

/// A registry file whose three containers contain these entries.
inline std::string RegistryText(const std::string& addons, const std::string& transports,
                                const std::string& channels) {
  return "<root><addons>" + addons + "</addons><transports>" + transports +
         "</transports><channels>" + channels + "</channels></root>";
}

}  // namespace kitbay::catalog
