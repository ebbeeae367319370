// Answers of a source that signs its manifests, and the manifests in the cache.
#include "exchange_fixture.h"
#include "fakes/signing_maker.h"

namespace kitbay::update {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::int32_t kBadSignature = -2146893818;  // NTE_BAD_SIGNATURE
constexpr const char* kCached = "C:\\Suite\\Kitbay\\a.xml";
constexpr std::chrono::sys_days kLastDay = 2026y / 12 / 31;

// The source of a.xml signs; its number 5 was fetched yesterday.
class SignedAnswers : public ExchangeTest {
 protected:
  SignedAnswers() {
    SetSources("<preference url='one.example/a.xml' key='" + maker_.key() +
               "' serial='5'/><preference url='two.example/b.xml'/>");
    AddManifest("a.xml");
    unsigned_ = *files_.Bytes(kCached);
    SetCached(Signed(5), {2026, 11, 20});
  }

  void SetCached(const std::string& bytes, const platform::LocalTime& time) {
    files_.AddFile(kCached, bytes);
    files_.SetLastModified(kCached, time);
  }

  std::string Signed(std::uint64_t serial, std::chrono::sys_days until = kLastDay) const {
    return maker_.Sign(unsigned_, serial, until);
  }

  /// Starts the exchange, and makes the source answer.
  void Answer(const std::string& bytes) {
    driver_.GetDirectoryPreferenceFile();
    downloads_.documents.clear();
    files_.AddFile(kCached, bytes);
    events_.Message("/a.xml", "Completed", "true");
  }

  std::string Preferences() const {
    return *files_.Bytes("C:\\User\\Ovalink\\updatepreference.xml");
  }

  /// Demands that the source counts as failed, and that everything else is unchanged.
  void ExpectRefused(const std::string& why) {
    EXPECT_EQ(files_.Bytes(kCached), Signed(5));
    EXPECT_THAT(Preferences(), HasSubstr("serial='5'"));
    EXPECT_THAT(desktop_.calls(), ElementsAre("ShowMessage [/a.xml      " + why + "] [Kitbay] 64"));
    EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::CheckSignature", kBadSignature, why),
                                          Entry("Kitbay::OvTransportEvents_Exception", 0, why)));
    EXPECT_THAT(downloads_.documents, ElementsAre(ManifestRequest("two.example", "/b.xml")));
  }

  fakes::SigningMaker maker_{1, "a.xml"};
  std::string unsigned_;
};

TEST_F(SignedAnswers, ThatAreGoodAreKeptAndTheirNumberIsNoted) {
  Answer(Signed(6));
  EXPECT_EQ(files_.Bytes(kCached), Signed(6));
  EXPECT_THAT(Preferences(), HasSubstr("serial=\"6\""));
  EXPECT_EQ(sources_.KeyOf("a.xml")->serial, 6U);
  EXPECT_THAT(desktop_.calls(), IsEmpty());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(SignedAnswers, OfTheNumberOfBeforeAreTaken) {
  Answer(Signed(5));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(SignedAnswers, AreKeptEvenWhereTheirNumberCannotBe) {
  driver_.GetDirectoryPreferenceFile();
  files_.FailWritesTo("C:\\User\\Ovalink\\updatepreference.xml", base::RuntimeError::kDiskFull);
  files_.AddFile(kCached, Signed(6));
  events_.Message("/a.xml", "Completed", "true");
  EXPECT_EQ(files_.Bytes(kCached), Signed(6));
  EXPECT_EQ(sources_.KeyOf("a.xml")->serial, 6U);
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::CheckSignature", 61, "Disk full")));
}

TEST_F(SignedAnswers, WithoutASignatureAreAFailedSource) {
  Answer(unsigned_);
  ExpectRefused("a.xml is not signed");
}

TEST_F(SignedAnswers, OfAnotherKeyAreAFailedSource) {
  Answer(fakes::SigningMaker(2, "a.xml").Sign(unsigned_, 6, kLastDay));
  ExpectRefused("a.xml is signed with another key");
}

TEST_F(SignedAnswers, OlderThanBeforeAreAFailedSource) {
  Answer(Signed(4));
  ExpectRefused("a.xml is number 4 of its source, older than number 5 seen before");
}

TEST_F(SignedAnswers, PastTheirLastDayAreAFailedSource) {
  Answer(Signed(6, 2026y / 11 / 20));
  ExpectRefused("a.xml held until 2026-11-20 only");
}

TEST_F(SignedAnswers, AreLookedAtEvenWhereTheKeyCameWhileTheyWereOnTheirWay) {
  SetSources("<preference url='one.example/a.xml'/>");
  driver_.GetDirectoryPreferenceFile();
  SetSources("<preference url='one.example/a.xml' key='" + maker_.key() + "'/>");
  source_file_.GetPreferences();
  files_.AddFile(kCached, unsigned_);
  events_.Message("/a.xml", "Completed", "true");
  EXPECT_THAT(log_.entries,
              Contains(Entry("Kitbay::CheckSignature", kBadSignature, "a.xml is not signed")));
}

TEST_F(SignedAnswers, ThatLieInTheCacheAreReadAgainOnTheirDay) {
  SetCached(Signed(5), {2026, 11, 21});
  driver_.GetDirectoryPreferenceFile();
  EXPECT_THAT(downloads_.documents, ElementsAre(ManifestRequest("two.example", "/b.xml")));
  EXPECT_THAT(desktop_.calls(), IsEmpty());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(SignedAnswers, ThatWereChangedInTheCacheAreReportedAndRequestedAgain) {
  SetCached(unsigned_, {2026, 11, 21});
  driver_.GetDirectoryPreferenceFile();
  EXPECT_THAT(downloads_.documents, ElementsAre(ManifestRequest("one.example", "/a.xml")));
  EXPECT_THAT(
      desktop_.calls(),
      ElementsAre("ShowMessage [Kitbay does not use the saved manifest of an update source:\r\n\r\n"
                  "a.xml is not signed] [Kitbay] 64"));
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::CheckSignature", kBadSignature, "a.xml is not signed")));
  EXPECT_TRUE(LocalDataIsShown());
}

TEST_F(SignedAnswers, ThatWereChangedInTheCacheAreNotListedWhereTheSourceFailsToo) {
  AddManifest("b.xml");
  SetCached(unsigned_, {2026, 11, 21});
  driver_.GetDirectoryPreferenceFile();
  events_.Exception("/a.xml", "connection timed out");
  events_.Message("/b.xml", "Completed", "true");
  EXPECT_TRUE(DetailsAreShown());
  EXPECT_THAT(Text("updatedaddons"), HasSubstr("Offer of b.xml"));
  EXPECT_THAT(Text("updatedaddons"), testing::Not(HasSubstr("Offer of a.xml")));
}

}  // namespace
}  // namespace kitbay::update
