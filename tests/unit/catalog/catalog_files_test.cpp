// Each file is read once per refresh of the lists.
#include "catalog/catalog_files.h"

#include <gmock/gmock.h>

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
  const XmlDocument* first = catalog_files_.TryDatastore();
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
  EXPECT_EQ(catalog_files_.TryCustomRegistry(),
            catalog_files_.TryFile("C:\\User\\CustomData\\CustomRegistry.xml"));
}

TEST_F(CatalogFilesTest, AnInvalidManifestNameIsNotRead) {
  files_.AddFile("C:\\Suite\\Kitbay\\DirectoryPreference.xml", ManifestText("", "", ""));
  const CatalogFiles::Refresh refresh(catalog_files_);
  EXPECT_EQ(catalog_files_.TryManifest("DirectoryPreference.xml"), nullptr);
  EXPECT_THAT(files_.operations(), ElementsAre());
}

TEST_F(CatalogFilesTest, AVersionIsReadOnceInARefreshAndAgainInTheNext) {
  CountedVersions resources;
  resources.Add("C:\\Suite\\line.dll", 1, 2, 3, 4);
  const FileVersions versions(log_, settings_, resources, catalog_files_);
  {
    const CatalogFiles::Refresh refresh(catalog_files_);
    EXPECT_EQ(versions.OfTransport("line.dll"), "1.2.3.4");
    EXPECT_EQ(versions.OfTransport("line.dll"), "1.2.3.4");
    EXPECT_EQ(resources.reads, 1);
  }
  EXPECT_EQ(versions.OfTransport("line.dll"), "1.2.3.4");
  EXPECT_EQ(resources.reads, 2);
}

}  // namespace
}  // namespace kitbay::catalog
