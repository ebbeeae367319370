// Packages of a source that signs its manifests.
#include "fakes/signing_maker.h"
#include "installation_fixture.h"

namespace kitbay::install {
namespace {

using namespace std::chrono_literals;
using base::ComponentKind;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr std::int32_t kBadHash = -2146893822;  // NTE_BAD_HASH
constexpr const char* kPackage = "C:\\Ovalink\\Temp\\notes.zip";
constexpr const char* kPlace = "<category/>";
constexpr const char* kManifest = "C:\\Ovalink\\Kitbay\\list.xml";

class SignedPackages : public InstallationTest,
                       public ::testing::WithParamInterface<ComponentKind> {
 protected:
  SignedPackages() {
    sources_.keys["list.xml"] = {.key = maker_.key()};
    Announce(HonestDigest());
    AddLibrary("C:\\Ovalink\\addons\\notes\\own.dll");
    AddLibrary("C:\\Ovalink\\addons\\notes\\notes.dll");
    AddLibrary("C:\\Ovalink\\own.dll");
    AddLibrary("C:\\Ovalink\\notes\\notes.dll");
    AddLibrary("C:\\Ovalink\\notes.dll");
    AddLibrary("C:\\Ana\\CustomData\\channels\\notes\\own.dll");
    AddLibrary("C:\\Ana\\CustomData\\channels\\notes\\notes.dll");
  }

  std::string Signed(const std::string& manifest) const {
    return maker_.Sign(manifest, 1, std::chrono::sys_days(2027y / 1 / 1));
  }

  /// Makes every entry of the manifest announce that package.
  void Announce(const catalog::PackageDigest& digest) {
    std::string manifest = unsigned_;
    const std::string added =
        "<size>" + digest.size + "</size><sha256>" + digest.sha256 + "</sha256>";
    for (std::size_t place = manifest.find(kPlace); place != std::string::npos;
         place = manifest.find(kPlace, place + added.size() + 1)) {
      manifest.insert(place, added);
    }
    files_.AddFile(kManifest, Signed(manifest));
  }

  catalog::PackageDigest HonestDigest() const {
    const auto package = files_.Open(kPackage);
    return {.manifest = "list.xml",
            .size = std::to_string(package->Size()),
            .sha256 = catalog::Sha256Of(*package)};
  }

  void InstallAs(const catalog::PackageDigest& digest) {
    update::PendingPackage package = {
        .file_path = "notes.zip", .name = "notes", .row_id = "3", .row_name = "Notes"};
    package.digest = digest;
    switch (GetParam()) {
      case ComponentKind::kAddon:
        return installation_.Unpack(package, kPackage);
      case ComponentKind::kTransport:
        return installation_.UnpackTransport(package, kPackage);
      case ComponentKind::kChannel:
        return installation_.UnpackChannel(package, kPackage);
    }
  }

  void ExpectRefused(const std::string& why) {
    ASSERT_EQ(log_.entries.size(), 2U);
    EXPECT_EQ(log_.entries[0], Entry("Kitbay::CheckSignature", kBadHash, why));
    ExpectNothingIsOpened();
  }

  void ExpectNothingIsOpened() {
    EXPECT_THAT(Messages(), ElementsAre(kCorrupt[GetParam()]));
    EXPECT_EQ(log_.entries.back().description, "There was an error creating the archive.");
    EXPECT_TRUE(StatusIsClear());
    EXPECT_THAT(Operations({"Create", "fso.Create", "Replace"}), IsEmpty());
    EXPECT_THAT(Loaded(), IsEmpty());
    EXPECT_EQ(File(kDatastore), kEmptyRegistry);
  }

  /// The text of the first message of a package that is not opened.
  static constexpr base::PerKind<const char*> kCorrupt = {
      .addon = "Download of notes.zip is corrupt . Try again",
      .transport = "Download of notes.zip is corrupt . Try again",
      .channel = "Download of notes.zip is corrupt .Try again"};

  fakes::SigningMaker maker_{1};
  std::string unsigned_ = File(kManifest);
};

INSTANTIATE_TEST_SUITE_P(Kinds, SignedPackages, ::testing::ValuesIn(base::kComponentKinds));

TEST_P(SignedPackages, ThatAreWhatWasAnnouncedAreInstalled) {
  InstallAs(HonestDigest());
  ASSERT_EQ(Messages().size(), 1U);
  EXPECT_THAT(Messages()[0], HasSubstr("has been successfully installed"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_P(SignedPackages, OfAnotherContentAreNotOpened) {
  catalog::PackageDigest digest = HonestDigest();
  digest.sha256[0] = digest.sha256[0] == '0' ? '1' : '0';
  InstallAs(digest);
  ExpectRefused("list.xml announces a package of another SHA-256");
}

TEST_P(SignedPackages, OfAnotherSizeAreNotOpened) {
  catalog::PackageDigest digest = HonestDigest();
  const std::string size = digest.size;
  digest.size = "1";
  InstallAs(digest);
  ExpectRefused("list.xml announces 1 bytes, and the package has " + size);
}

TEST_P(SignedPackages, OfWhichNothingWasAnnouncedAreNotOpened) {
  InstallAs({.manifest = "list.xml", .size = "", .sha256 = ""});
  ExpectRefused("list.xml does not say the size and the SHA-256 of the package");
}

TEST_P(SignedPackages, WhoseManifestWasChangedMeanwhileAreNotOpened) {
  files_.AddFile(kManifest, unsigned_);
  InstallAs(HonestDigest());
  EXPECT_EQ(log_.entries[0].procedure, "Kitbay::CheckSignature");
  EXPECT_EQ(log_.entries[0].description, "list.xml is not signed");
  ExpectNothingIsOpened();
}

TEST_P(SignedPackages, WhoseManifestNowAnnouncesAnotherAreNotOpened) {
  const catalog::PackageDigest digest = HonestDigest();
  Announce({.manifest = "list.xml", .size = digest.size, .sha256 = std::string(64, 'a')});
  InstallAs(digest);
  ASSERT_EQ(log_.entries.size(), 2U);
  EXPECT_THAT(log_.entries[0].description, HasSubstr("list.xml announces another package by now"));
  ExpectNothingIsOpened();
}

// Another source that offers the id must not decide what the signed package is.
TEST_P(SignedPackages, AreEnteredAsTheirOwnManifestSays) {
  const std::string signed_manifest = File(kManifest);
  Offer("notes", "evil.dll", "evil.dll");
  files_.AddFile("C:\\Ovalink\\Kitbay\\other.xml", File(kManifest));
  files_.AddFile(kManifest, signed_manifest);
  sources_.UpdateSources = {"other.example/other.xml", "updates.example/LIST.xml"};
  InstallAs(HonestDigest());
  EXPECT_THAT(log_.entries, IsEmpty());
  EXPECT_THAT(session_.libraries, ElementsAre("notes.dll"));
}

}  // namespace
}  // namespace kitbay::install
