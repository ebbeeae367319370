#include <benchmark/benchmark.h>

#include <map>
#include <pugixml.hpp>

#include "catalog/available_updates.h"
#include "catalog/new_component_listing.h"
#include "sample_suite.h"

namespace kitbay::bench {
namespace {

using base::ComponentKind;

const std::string kInstallFolder = "C:\\Program Files\\Ovalink";
const std::string kCustomDataFolder = "C:\\Users\\Ada\\AppData\\Roaming\\Ovalink\\CustomData";

/// A disk with the datastore, an empty custom registry and the manifests of some sources.
class RefreshDisk : public DatastoreDisk {
 public:
  RefreshDisk(std::size_t sources, std::size_t entries)
      : DatastoreDisk(DatastoreOfAllKinds(entries)) {
    for (std::size_t i = 1; i <= sources; ++i) {
      // Half of a source's offers are installed in an older version; the other half are new.
      manifests_["source" + std::to_string(i) + ".xml"] =
          ManifestOfAllKinds(entries, "offer" + std::to_string(i) + "-");
    }
  }

  const std::map<std::string, std::string>& manifests() const { return manifests_; }

  std::string Read(const std::string& path) const override {
    const auto manifest = manifests_.find(path.substr(path.rfind('\\') + 1));
    return manifest != manifests_.end() ? manifest->second : DatastoreDisk::Read(path);
  }

 private:
  std::map<std::string, std::string> manifests_;
};

/// The six lists that are filled once the sources have answered.
class RefreshSuite {
 public:
  RefreshSuite(std::size_t sources, std::size_t entries) : disk_(sources, entries) {
    settings_.InstallFolder = kInstallFolder;
    settings_.CustomDataFolder = kCustomDataFolder;
    for (const auto& [name, text] : disk_.manifests()) {
      sources_.UpdateSources.push_back("updates.example/" + name);
    }
  }

  const PlainRows& rows() const { return rows_; }

  void Refresh() {
    const catalog::CatalogFiles::Refresh refresh(files_);
    installed_.InstalledChannels();
    installed_.InstalledTransports();
    installed_.InstalledAddons();
    new_components_.funcShowUpdates();
    new_components_.funcShowChannels();
    new_components_.funcShowTransports();
  }

 private:
  RefreshDisk disk_;
  base::Settings settings_;
  StrictLog log_;
  OneVersion version_resource_;
  PlainRows rows_;
  catalog::UpdateSourceList sources_;
  catalog::InstalledRows shown_;
  catalog::NewComponents found_;
  fakes::FakeClock clock_;
  catalog::ManifestTrust trust_{log_, clock_, sources_};
  catalog::CatalogFiles files_{disk_, settings_, trust_};
  catalog::FileVersions versions_{log_, settings_, version_resource_};
  catalog::AvailableUpdates available_{log_, files_, versions_, shown_, rows_};
  catalog::InstalledWithUpdates installed_{log_,       files_, settings_, sources_,
                                           available_, shown_, rows_};
  catalog::NewComponentListing new_components_{log_, files_, sources_, found_, rows_};
};

// The baseline: each file is read, and parsed in place by the XML library.
void ParseEach(benchmark::State& state) {
  const RefreshDisk disk(static_cast<std::size_t>(state.range(0)),
                         static_cast<std::size_t>(state.range(1)));
  const auto parse = [&](const std::string& path) {
    std::string bytes = disk.Read(path);
    pugi::xml_document document;
    if (!document.load_buffer_inplace(bytes.data(), bytes.size())) {
      state.SkipWithError("a file does not parse");
    }
    benchmark::DoNotOptimize(document);
  };
  for (auto _ : state) {
    parse("olregistry.xml");
    for (const auto& [name, text] : disk.manifests()) {
      parse(name);
    }
  }
}

void Refresh(benchmark::State& state) {
  const auto sources = static_cast<std::size_t>(state.range(0));
  const auto entries = static_cast<std::size_t>(state.range(1));
  RefreshSuite suite(sources, entries);
  for (auto _ : state) {
    suite.Refresh();
  }
  const std::size_t rows = sources * (entries + entries / 2);
  if (suite.rows().count() != static_cast<std::size_t>(state.iterations()) * rows) {
    state.SkipWithError("not every entry became a row");
  }
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->ArgsProduct({{1, 3, 10}, {980, 9800}})->Unit(benchmark::kMicrosecond);
}

BENCHMARK(ParseEach)->Name("refresh/parse")->Apply(Sizes);
BENCHMARK(Refresh)->Name("refresh/lists")->Apply(Sizes);

}  // namespace
}  // namespace kitbay::bench
