// Each file is read once per refresh of the lists.
#include "catalog/catalog_files.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "catalog_fixture.h"
#include "fakes/fake_version_resource.h"
#include "manifest_fixture.h"

namespace kitbay::catalog {
namespace {

using testing::ElementsAre;

constexpr const char* kReadDatastore = "Read C:\\Suite\\Datastore\\olregistry.xml";

class CatalogFilesTest : public ManifestTest {
 protected:
  /// Counts how often the version of a library is requested.
  class CountedVersions : public fakes::FakeVersionResource {
   public:
    std::optional<platform::FileVersion> Read(const std::string& path) const override {
      ++reads;
      return FakeVersionResource::Read(path);
    }
    mutable int reads = 0;
  };
};

TEST_F(CatalogFilesTest, WithinARefreshAFileIsReadOnce) {
  SetDatastore(RegistryText("", "", ""));
  const CatalogFiles::Refresh refresh(catalog_files_);
  Registry* const first = catalog_files_.TryDatastore();
  EXPECT_NE(first, nullptr);
  EXPECT_EQ(&catalog_files_.Datastore(), first);
  EXPECT_THAT(files_.operations(), ElementsAre(kReadDatastore));
}

TEST_F(CatalogFilesTest, RefreshesNestAndTheOutermostForgets) {
  SetDatastore(RegistryText("", "", ""));
  {
    const CatalogFiles::Refresh outer(catalog_files_);
    {
      const CatalogFiles::Refresh inner(catalog_files_);
      catalog_files_.TryDatastore();
    }
    catalog_files_.TryDatastore();
    EXPECT_THAT(files_.operations(), ElementsAre(kReadDatastore));
  }
  const CatalogFiles::Refresh next(catalog_files_);
  catalog_files_.TryDatastore();
  EXPECT_THAT(files_.operations(), ElementsAre(kReadDatastore, kReadDatastore));
}

TEST_F(CatalogFilesTest, AFileThatDoesNotLoadFailsEveryListingThatNeedsIt) {
  SetDatastore("<root>");
  const CatalogFiles::Refresh refresh(catalog_files_);
  for (int listing = 0; listing < 2; ++listing) {
    try {
      catalog_files_.Datastore();
      ADD_FAILURE() << "a datastore that is cut off was loaded";
    } catch (const base::Failure& failure) {
      EXPECT_EQ(failure.number(), kInvalidData);
    }
  }
  EXPECT_EQ(catalog_files_.TryDatastore(), nullptr);
  EXPECT_THAT(files_.operations(), ElementsAre(kReadDatastore));
}

TEST_F(CatalogFilesTest, TheCustomRegistryIsOneFileInWhateverCaseItIsWritten) {
  SetCustomRegistry(RegistryText("", "", ""));
  const CatalogFiles::Refresh refresh(catalog_files_);
  EXPECT_NE(catalog_files_.TryFile("C:\\User\\CustomData\\CustomRegistry.xml"), nullptr);
  EXPECT_NE(catalog_files_.TryCustomRegistry(), nullptr);
  EXPECT_THAT(files_.operations(), ElementsAre("Read C:\\User\\CustomData\\CustomRegistry.xml"));
}

TEST_F(CatalogFilesTest, AnInvalidManifestNameIsNotRead) {
  files_.AddFile("C:\\Suite\\Kitbay\\DirectoryPreference.xml", ManifestText("", "", ""));
  const CatalogFiles::Refresh refresh(catalog_files_);
  EXPECT_EQ(catalog_files_.TryManifest("DirectoryPreference.xml"), nullptr);
  EXPECT_EQ(catalog_files_.TryOffers("DirectoryPreference.xml"), nullptr);
  EXPECT_THAT(files_.operations(), ElementsAre());
}

TEST_F(CatalogFilesTest, AManifestIsReadOnceForTheListsOfAllKinds) {
  SetManifest("m.xml", ManifestText(Offer("addon", "a", "A", "1"), "", ""));
  const CatalogFiles::Refresh refresh(catalog_files_);
  const Offers* const offers = catalog_files_.TryOffers("m.xml");
  ASSERT_NE(offers, nullptr);
  EXPECT_EQ((*offers)[base::ComponentKind::kAddon].new_offers().size(), 1U);
  EXPECT_EQ(catalog_files_.TryOffers("M.xml"), offers);
  EXPECT_EQ(std::ranges::count(files_.operations(), "Read C:\\Suite\\Kitbay\\m.xml"), 1);
}

TEST_F(CatalogFilesTest, AVersionIsReadOnceInARefreshOfManySourcesAndAgainInTheNext) {
  SetDatastore(RegistryText("", Transport("line", "Line", "line.dll"), ""));
  SetManifest("a.xml", ManifestText("", "", ""));
  SetManifest("b.xml", ManifestText("", "", ""));
  sources_.UpdateSources = {"one.example/a.xml", "two.example/b.xml"};
  CountedVersions resources;
  resources.Add("C:\\Suite\\line.dll", 1, 2, 3, 4);
  const FileVersions versions(log_, settings_, resources);
  AvailableUpdates available(log_, catalog_files_, versions, shown_, rows_);
  InstalledWithUpdates installed(log_, catalog_files_, settings_, sources_, available, shown_,
                                 rows_);
  {
    const CatalogFiles::Refresh refresh(catalog_files_);
    installed.InstalledTransports();
    installed.InstalledTransports();
    EXPECT_EQ(resources.reads, 1);
  }
  installed.InstalledTransports();
  EXPECT_EQ(resources.reads, 2);
}

}  // namespace
}  // namespace kitbay::catalog
