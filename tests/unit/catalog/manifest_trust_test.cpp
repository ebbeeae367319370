#include "catalog/manifest_trust.h"

#include "base/failure.h"
#include "fakes/signing_maker.h"
#include "manifest_fixture.h"

namespace kitbay::catalog {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t kBadSignature = -2146893818;  // NTE_BAD_SIGNATURE
constexpr std::chrono::sys_days kToday = 2026y / 11 / 21;

// The source of m.xml signs; number 5 has already been seen. The clock shows 2026-11-21.
class SignedManifests : public ManifestTest {
 protected:
  SignedManifests() { sources_.keys["m.xml"] = {.key = maker_.key(), .serial = 5}; }

  std::string Refusal(const std::string& bytes, const std::string& name = "m.xml") const {
    try {
      trust_.CheckSignature(name, bytes);
      return "";
    } catch (const base::Failure& failure) {
      EXPECT_EQ(failure.number(), kBadSignature);
      return failure.description();
    }
  }

  std::string Signed(std::uint64_t serial = 5, std::chrono::sys_days until = kToday) const {
    return maker_.Sign(manifest_, serial, until);
  }

  fakes::SigningMaker maker_{1, "m.xml"};
  std::string manifest_ = ManifestText(Offer("addon", "chess", "Chess", "1"), "", "");
};

TEST_F(SignedManifests, CountWithTheKeyOfTheirSourceAndANumberNotBelowTheLast) {
  EXPECT_EQ(trust_.CheckSignature("m.xml", Signed(5)), 5U);
  EXPECT_EQ(trust_.CheckSignature("M.XML", Signed(6)), 6U);
}

TEST_F(SignedManifests, WithoutASignatureAreRefused) {
  EXPECT_EQ(Refusal(manifest_), "m.xml is not signed");
  EXPECT_EQ(Refusal(""), "m.xml is not signed");
  EXPECT_EQ(Refusal(manifest_ + "<!--<signature key=\"x\"/>-->"),
            "m.xml has a signature that cannot be read");
}

TEST_F(SignedManifests, OfAnotherKeyAreRefused) {
  EXPECT_EQ(Refusal(fakes::SigningMaker(2, "m.xml").Sign(manifest_, 6, kToday)),
            "m.xml is signed with another key");
}

TEST_F(SignedManifests, ThatNameTheKeyAndAreSignedWithAnotherAreRefused) {
  std::string forged = fakes::SigningMaker(2, "m.xml").Sign(manifest_, 6, kToday);
  const std::string id = fakes::SigningMaker(2, "m.xml").key().substr(0, 16);
  forged.replace(forged.find(id), id.size(), maker_.key().substr(0, 16));
  EXPECT_EQ(Refusal(forged), "m.xml was changed after it was signed");
}

TEST_F(SignedManifests, OfAnotherSourceOfTheirMakerAreRefused) {
  EXPECT_EQ(Refusal(fakes::SigningMaker(1, "other.xml").Sign(manifest_, 900, kToday)),
            "m.xml is signed as other.xml");
  EXPECT_EQ(Refusal(fakes::SigningMaker(1, "M.XML").Sign(manifest_, 6, kToday)), "");
}

TEST_F(SignedManifests, OlderThanOneSeenBeforeAreRefused) {
  EXPECT_EQ(Refusal(Signed(4)), "m.xml is number 4 of its source, older than number 5 seen before");
}

TEST_F(SignedManifests, HoldThroughTheirLastDay) {
  clock_.SetNow({2026, 11, 21, 23, 59, 59});
  EXPECT_EQ(Refusal(Signed()), "");
  clock_.SetNow({2026, 11, 22});
  EXPECT_EQ(Refusal(Signed()), "m.xml held until 2026-11-21 only");
}

TEST_F(SignedManifests, OfASourceWithAnInvalidKeyAreRefused) {
  sources_.keys["m.xml"].key = "";
  EXPECT_EQ(Refusal(Signed()), "m.xml cannot be checked: the key of its source is not a key");
}

TEST_F(SignedManifests, OfOtherSourcesNeedNoSignature) {
  EXPECT_EQ(Refusal(manifest_, "n.xml"), "");
  EXPECT_EQ(
      Refusal(fakes::SigningMaker(2, "m.xml").Sign(manifest_, 1, kToday - std::chrono::days(100)),
              "n.xml"),
      "");
}

TEST_F(SignedManifests, OnDiskAreJudgedWheneverTheyAreRead) {
  SetManifest("m.xml", Signed());
  {
    const CatalogFiles::Refresh refresh(catalog_files_);
    EXPECT_NE(catalog_files_.TryManifest("m.xml"), nullptr);
  }
  EXPECT_THAT(log_.entries, IsEmpty());
  SetManifest("m.xml", manifest_);
  const CatalogFiles::Refresh refresh(catalog_files_);
  EXPECT_EQ(catalog_files_.TryManifest("m.xml"), nullptr);
  EXPECT_EQ(catalog_files_.TryManifest("M.xml"), nullptr);
  EXPECT_THAT(log_.entries, ElementsAre(fakes::Entry("Kitbay::CheckSignature", kBadSignature,
                                                     "m.xml is not signed")));
}

TEST_F(SignedManifests, AreStillReadAsXml) {
  SetManifest("m.xml", maker_.Sign("<components>", 5, kToday));
  const CatalogFiles::Refresh refresh(catalog_files_);
  EXPECT_EQ(catalog_files_.TryManifest("m.xml"), nullptr);
}

// The older reader has no concept of keys: to it the signature is a comment.
TEST_F(SignedManifests, AreReadAsBeforeByWhoHasNoKey) {
  sources_.keys.clear();
  SetManifest("m.xml", Signed());
  const CatalogFiles::Refresh refresh(catalog_files_);
  const XmlDocument* manifest = catalog_files_.TryManifest("m.xml");
  ASSERT_NE(manifest, nullptr);
  EXPECT_EQ(manifest->first_child().child("addons").child("addon").child_value("name"),
            std::string("Chess"));
}

}  // namespace
}  // namespace kitbay::catalog
