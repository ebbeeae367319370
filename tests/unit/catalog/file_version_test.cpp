#include "catalog/file_version.h"

#include <stdexcept>

#include "catalog_fixture.h"
#include "fakes/fake_version_resource.h"

namespace kitbay::catalog {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FileVersion : public CatalogTest {
 protected:
  std::string Version(std::uint16_t major, std::uint16_t minor, std::uint16_t build,
                      std::uint16_t revision) {
    resources_.Add("C:\\Suite\\a.dll", major, minor, build, revision);
    return versions_.GetVersionInfo("C:\\Suite\\a.dll");
  }

  fakes::FakeVersionResource resources_;
  FileVersions versions_{log_, settings_, resources_};
};

TEST_F(FileVersion, FourPartsStandInOrder) { EXPECT_EQ(Version(1, 2, 3, 4), "1.2.3.4"); }

TEST_F(FileVersion, ZeroesAreWritten) { EXPECT_EQ(Version(0, 0, 0, 0), "0.0.0.0"); }

TEST_F(FileVersion, PartFrom32768IsShownAsANegativeNumber) {
  EXPECT_EQ(Version(1, 2, 40000, 0), "1.2.-25536.0");
}

TEST_F(FileVersion, EveryPartIsASigned16BitNumber) {
  EXPECT_EQ(Version(32767, 32768, 65535, 32769), "32767.-32768.-1.-32767");
}

TEST_F(FileVersion, LibraryWithoutAVersionShowsNA) {
  EXPECT_EQ(versions_.GetVersionInfo("C:\\Suite\\none.dll"), "N/A");
  EXPECT_THAT(log_.entries, IsEmpty());
}

class BrokenVersionResource : public platform::VersionResource {
 public:
  std::optional<platform::FileVersion> Read(const std::string& /*path*/) const override {
    throw base::Failure(base::RuntimeError::kPermissionDenied);
  }
};

TEST_F(FileVersion, FailureToReadIsLoggedAndShowsNA) {
  const BrokenVersionResource broken;
  const FileVersions versions(log_, settings_, broken);
  EXPECT_EQ(versions.GetVersionInfo("C:\\Suite\\a.dll"), "N/A");
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::GetVersionInfo", 70, "Permission denied")));
}

TEST_F(FileVersion, OfAnAddonIsThatOfTheLibraryInItsOwnFolder) {
  resources_.Add("C:\\Suite\\addons\\chat\\chat.dll", 1, 0, 0, 1);
  resources_.Add("C:\\Suite\\chat.dll", 2, 0, 0, 2);
  EXPECT_EQ(versions_.OfAddon("chat", "chat.dll"), "1.0.0.1");
}

TEST_F(FileVersion, OfAnAddonIsElseThatOfTheLibraryInTheInstallationFolder) {
  resources_.Add("C:\\Suite\\chat.dll", 2, 0, 0, 2);
  EXPECT_EQ(versions_.OfAddon("chat", "chat.dll"), "2.0.0.2");
}

TEST_F(FileVersion, OfAnAddonWithoutAnyLibraryIsNA) {
  EXPECT_EQ(versions_.OfAddon("chat", "chat.dll"), "N/A");
}

TEST_F(FileVersion, OfATransportIsThatOfTheLibraryInTheInstallationFolderOnly) {
  resources_.Add("C:\\Suite\\addons\\mail\\mail.dll", 1, 0, 0, 1);
  EXPECT_EQ(versions_.OfTransport("mail.dll"), "N/A");
  resources_.Add("C:\\Suite\\mail.dll", 3, 1, 4, 1);
  EXPECT_EQ(versions_.OfTransport("mail.dll"), "3.1.4.1");
}

}  // namespace
}  // namespace kitbay::catalog
