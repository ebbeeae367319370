#include <benchmark/benchmark.h>

#include <pugixml.hpp>

#include "catalog/available_updates.h"
#include "catalog/new_component_listing.h"
#include "sample_suite.h"

namespace kitbay::bench {
namespace {

using base::ComponentKind;

/// A disk with a datastore and one manifest.
class TwoFilesDisk : public DatastoreDisk {
 public:
  TwoFilesDisk(std::string datastore, std::string manifest)
      : DatastoreDisk(std::move(datastore)), manifest_(std::move(manifest)) {}

  std::string Read(const std::string& path) const override {
    return path.ends_with("manifest.xml") ? manifest_ : DatastoreDisk::Read(path);
  }

 private:
  std::string manifest_;
};

/// The lists of the update exchange over a suite with `entries` installed components and as many
/// offers.
class ExchangeSuite {
 public:
  ExchangeSuite(ComponentKind kind, std::size_t entries, const std::string& offered)
      : kind_(kind), disk_(DatastoreOf(kind, entries), ManifestOf(kind, entries, offered)) {
    settings_.InstallFolder = "C:\\Program Files\\Ovalink";
    settings_.CustomDataFolder = "C:\\Users\\Ada\\AppData\\Roaming\\Ovalink\\CustomData";
    sources_.UpdateSources = {"updates.example/manifest.xml"};
  }

  const PlainRows& rows() const { return rows_; }

  void CheckUpdates() {
    switch (kind_) {
      case ComponentKind::kAddon:
        installed_.InstalledAddons();
        return;
      case ComponentKind::kTransport:
        installed_.InstalledTransports();
        return;
      case ComponentKind::kChannel:
        installed_.InstalledChannels();
        return;
    }
  }

  void ListNew() {
    switch (kind_) {
      case ComponentKind::kAddon:
        return listing_.funcShowUpdates();
      case ComponentKind::kTransport:
        return listing_.funcShowTransports();
      case ComponentKind::kChannel:
        return listing_.funcShowChannels();
    }
  }

 private:
  ComponentKind kind_;
  TwoFilesDisk disk_;
  base::Settings settings_;
  StrictLog log_;
  OneVersion version_resource_;
  PlainRows rows_;
  catalog::UpdateSourceList sources_;
  catalog::InstalledRows shown_;
  catalog::NewComponents found_;
  fakes::FakeClock clock_;
  catalog::ManifestTrust trust_{log_, clock_, sources_};
  catalog::CatalogFiles catalog_files_{disk_, settings_, trust_};
  catalog::FileVersions versions_{log_, settings_, version_resource_};
  catalog::AvailableUpdates available_{log_, catalog_files_, versions_, shown_, rows_};
  catalog::InstalledWithUpdates installed_{log_,       catalog_files_, settings_, sources_,
                                           available_, shown_,         rows_};
  catalog::NewComponentListing listing_{log_, catalog_files_, sources_, found_, rows_};
};

// The baseline: both files are read and parsed by the XML library, and nothing else happens.
void ParseBoth(benchmark::State& state, ComponentKind kind, const char* offered) {
  const auto entries = static_cast<std::size_t>(state.range(0));
  const TwoFilesDisk disk(DatastoreOf(kind, entries), ManifestOf(kind, entries, offered));
  for (auto _ : state) {
    const std::string datastore = disk.Read("olregistry.xml");
    const std::string manifest = disk.Read("manifest.xml");
    pugi::xml_document one;
    pugi::xml_document other;
    if (!one.load_buffer(datastore.data(), datastore.size()) ||
        !other.load_buffer(manifest.data(), manifest.size())) {
      state.SkipWithError("a file does not parse");
    }
    benchmark::DoNotOptimize(one);
    benchmark::DoNotOptimize(other);
  }
}

template <void (ExchangeSuite::*kList)()>
void RunList(benchmark::State& state, ComponentKind kind, const char* offered) {
  ExchangeSuite suite(kind, static_cast<std::size_t>(state.range(0)), offered);
  for (auto _ : state) {
    (suite.*kList)();
  }
  if (suite.rows().count() != static_cast<std::size_t>(state.iterations() * state.range(0))) {
    state.SkipWithError("not every entry became a row");
  }
}

void Check(benchmark::State& state, ComponentKind kind, const char* offered) {
  RunList<&ExchangeSuite::CheckUpdates>(state, kind, offered);
}

void ListNew(benchmark::State& state, ComponentKind kind, const char* offered) {
  RunList<&ExchangeSuite::ListNew>(state, kind, offered);
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);
}

// In the first pair every offer is for an installed component, in the second every offer is new.
#define KITBAY_BENCHMARKS_OF(kind, name)                                                           \
  BENCHMARK_CAPTURE(ParseBoth, name##_check, kind, "component")                                    \
      ->Name(#name "/check_parse")                                                                 \
      ->Apply(Sizes);                                                                              \
  BENCHMARK_CAPTURE(Check, name##_check, kind, "component")->Name(#name "/check")->Apply(Sizes);   \
  BENCHMARK_CAPTURE(ParseBoth, name##_new, kind, "offer")->Name(#name "/new_parse")->Apply(Sizes); \
  BENCHMARK_CAPTURE(ListNew, name##_new, kind, "offer")->Name(#name "/new")->Apply(Sizes)

KITBAY_BENCHMARKS_OF(ComponentKind::kAddon, addons);
KITBAY_BENCHMARKS_OF(ComponentKind::kTransport, transports);
KITBAY_BENCHMARKS_OF(ComponentKind::kChannel, channels);

}  // namespace
}  // namespace kitbay::bench
