// A manifest and a datastore: the lists of installed and of new components.
#include "catalog/available_updates.h"
#include "catalog/new_component_listing.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_version_resource.h"
#include "fakes/memory_files.h"
#include "fuzz_support.h"

namespace kitbay::fuzz {
namespace {

/// Demands that the rows of a container are numbered from 1, continuously over all sources.
class NumberedRows : public catalog::RowWriter {
 public:
  void AddImageTab(catalog::Category /*category*/) override {}
  void ShowTab(base::ComponentKind /*kind*/, bool shown) override {
    Demand(shown == (last_ > 0), "a tab is shown exactly when there is an offer");
  }
  void FillDivHeader(catalog::Category /*category*/, base::ComponentKind /*kind*/) override {}
  void FillEmptyDivHeader(base::ComponentKind /*kind*/) override {
    Demand(last_ == 0, "a list with rows is not empty");
  }
  void FillDivStatus(base::ComponentKind /*kind*/, bool /*is_local*/) override {}
  void fillDiv(base::ComponentKind /*kind*/, const catalog::ComponentRow& row,
               bool /*is_core*/) override {
    Next(row.number);
  }
  void fillDivWithUpdates(base::ComponentKind /*kind*/, const catalog::ComponentRow& row,
                          bool /*is_core*/) override {
    Next(row.number);
  }
  void showUpdates(base::ComponentKind /*kind*/, const catalog::ComponentRow& row) override {
    Next(row.number);
  }

  void Restart() { last_ = 0; }
  int last() const { return last_; }

 private:
  void Next(int row) {
    Demand(row == last_ + 1, "rows are numbered without a gap");
    last_ = row;
  }

  int last_ = 0;
};

void List(const std::string& manifest, const std::string& registry) {
  // Overflow, a missing version part, a missing text.
  ExpectingLog log({6, 9, 91});
  fakes::MemoryFiles files;
  files.AddFile("C:\\S\\Kitbay\\m.xml", manifest);
  files.AddFile("C:\\S\\Datastore\\olregistry.xml", registry);
  files.AddFile("C:\\U\\customregistry.xml", registry);
  fakes::FakeVersionResource resources;
  resources.Add("C:\\S\\a.dll", 1, 2, 3, 4);
  base::Settings settings;
  settings.InstallFolder = "C:\\S";
  settings.CustomDataFolder = "C:\\U";
  const catalog::UpdateSourceList sources = {.UpdateSources = {"h/m.xml", "h/none.xml", "h/m.xml"},
                                             .PendingSources = {}};
  const fakes::FakeClock clock;
  const catalog::ManifestTrust trust(log, clock, sources);
  catalog::CatalogFiles catalog_files(files, settings, trust);
  const catalog::FileVersions versions(log, settings, resources);
  catalog::InstalledRows shown;
  catalog::NewComponents found;
  NumberedRows rows;
  catalog::AvailableUpdates available(log, catalog_files, versions, shown, rows);
  catalog::InstalledWithUpdates installed(log, catalog_files, settings, sources, available, shown,
                                          rows);
  catalog::NewComponentListing news(log, catalog_files, sources, found, rows);
  for (const auto list : {&catalog::InstalledWithUpdates::InstalledAddons,
                          &catalog::InstalledWithUpdates::InstalledTransports,
                          &catalog::InstalledWithUpdates::InstalledChannels}) {
    rows.Restart();
    (installed.*list)();
  }
  for (const auto list : {&catalog::NewComponentListing::funcShowUpdates,
                          &catalog::NewComponentListing::funcShowTransports,
                          &catalog::NewComponentListing::funcShowChannels}) {
    rows.Restart();
    (news.*list)();
  }
  Demand(static_cast<std::size_t>(rows.last()) == found.channel.size(),
         "each row of the last list is in the list of new channels");
}

}  // namespace
}  // namespace kitbay::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto [manifest, registry] = kitbay::fuzz::TwoFiles(data, size);
  kitbay::fuzz::List(manifest, registry);
  return 0;
}
