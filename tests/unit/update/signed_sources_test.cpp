// The keys of sources that sign their manifests, in the user's file and in the installation's.
#include "source_file_fixture.h"

namespace kitbay::update {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SignedSources : public SourceFileTest {
 protected:
  void Read(const std::string& sources) {
    files_.AddFile(kPath, FileOf(sources));
    sources_file_.GetPreferences();
  }

  /// What happens to the user's sources, given the installation's.
  std::string SeededFrom(const std::string& sources, const std::string& seed) {
    files_.AddFile(kSeed, FileOf(seed));
    Seeded(FileOf(sources));
    EXPECT_THAT(log_.entries, IsEmpty());
    return Sources();
  }

  std::string Sources() const {
    const std::string bytes = File();
    const std::size_t start = bytes.find("<preferences>") + 13;
    return bytes.substr(start, bytes.find("</preferences>") - start);
  }

  /// "key serial" of the manifest; "none" if it needs no signature.
  std::string KeyOf(const std::string& manifest) const {
    const catalog::SourceKey* const key = sources_.KeyOf(manifest);
    return key == nullptr ? "none" : key->key + " " + std::to_string(key->serial);
  }
};

TEST_F(SignedSources, AreThoseWithAKeyInTheFile) {
  Read(
      "<preference url='h/a.xml' key='aa'/><preference url='h/b.xml'/>"
      "<preference url='h/C.XML' key='cc' serial='12'/>");
  EXPECT_THAT(sources_.UpdateSources, ElementsAre("h/a.xml", "h/b.xml", "h/C.XML"));
  EXPECT_EQ(KeyOf("a.xml"), "aa 0");
  EXPECT_EQ(KeyOf("b.xml"), "none");
  EXPECT_EQ(KeyOf("c.xml"), "cc 12");
}

TEST_F(SignedSources, ShareTheFirstKeyWhereTheirManifestsHaveOneName) {
  Read(
      "<preference url='x/a.xml'/><preference url='y/a.xml' key='aa'/>"
      "<preference url='z/A.xml' key='bb'/>");
  EXPECT_EQ(KeyOf("a.xml"), "aa 0");
}

TEST_F(SignedSources, WithAnEmptyKeyStillDemandASignature) {
  Read("<preference url='h/a.xml' key=''/>");
  EXPECT_EQ(KeyOf("a.xml"), " 0");
}

TEST_F(SignedSources, AreForgottenWhenTheFileNoLongerHasThem) {
  Read("<preference url='h/a.xml' key='aa'/>");
  Read("<preference url='h/b.xml' key='bb'/>");
  EXPECT_EQ(KeyOf("a.xml"), "none");
}

TEST_F(SignedSources, KeepTheirKeysWhileTheFileCannotBeRead) {
  Read("<preference url='h/a.xml' key='aa'/>");
  files_.AddFile(kPath, "<root>");
  sources_file_.GetPreferences();
  EXPECT_THAT(sources_.UpdateSources, IsEmpty());
  EXPECT_EQ(KeyOf("a.xml"), "aa 0");
}

TEST_F(SignedSources, NoteTheHighestNumberSeen) {
  Read(
      "<preference url='x/a.xml' key='aa' serial='3'/><preference url='h/b.xml'/>"
      "<preference url='y/A.xml' key='aa'/>");
  sources_file_.NoteSerial("a.xml", 7);
  const std::string noted =
      "<preference url=\"x/a.xml\" key=\"aa\" serial=\"7\"/><preference url=\"h/b.xml\"/>"
      "<preference url=\"y/A.xml\" key=\"aa\" serial=\"7\"/>";
  EXPECT_EQ(Sources(), noted);
  EXPECT_EQ(KeyOf("a.xml"), "aa 7");
  sources_file_.NoteSerial("a.xml", 6);
  sources_file_.NoteSerial("b.xml", 9);
  EXPECT_EQ(Sources(), noted);
  EXPECT_EQ(KeyOf("a.xml"), "aa 7");
}

TEST_F(SignedSources, NoteTheNumberForThisRunEvenWhereTheFileCannotBeWritten) {
  Read("<preference url='x/a.xml' key='aa'/>");
  files_.FailWritesTo(kPath, base::RuntimeError::kDiskFull);
  EXPECT_THROW(sources_file_.NoteSerial("a.xml", 7), base::Failure);
  EXPECT_EQ(KeyOf("a.xml"), "aa 7");
}

TEST_F(SignedSources, GetTheKeyOfTheInstallationsFile) {
  EXPECT_EQ(SeededFrom("<preference url=''/>", "<preference url='h/a.xml' key='aa'/>"),
            "<preference url=\"h/a.xml\" key=\"aa\"/>");
}

TEST_F(SignedSources, KeepTheKeyThatTheInstallationsFileNoLongerBrings) {
  EXPECT_EQ(
      SeededFrom("<preference url='h/a.xml' key='aa' serial='4'/>", "<preference url='H/a.xml'/>"),
      "<preference url=\"H/a.xml\" key=\"aa\" serial=\"4\"/>");
}

TEST_F(SignedSources, KeepTheNumberWhileTheKeyStays) {
  EXPECT_EQ(SeededFrom("<preference url='h/a.xml' key='aa' serial='4'/>",
                       "<preference url='h/a.xml' key='AA'/>"),
            "<preference url=\"h/a.xml\" key=\"aa\" serial=\"4\"/>");
}

TEST_F(SignedSources, BeginToCountAgainWithAnotherKeyOfTheInstallation) {
  EXPECT_EQ(SeededFrom("<preference url='h/a.xml' key='aa' serial='4'/>",
                       "<preference url='h/a.xml' key='bb'/>"),
            "<preference url=\"h/a.xml\" key=\"bb\"/>");
}

TEST_F(SignedSources, GiveWayToAnotherSourceOfTheInstallationWithoutAKey) {
  EXPECT_EQ(SeededFrom("<preference url='h/a.xml' key='aa' serial='4'/><preference url='m/m.xml'/>",
                       "<preference url='h/b.xml'/>"),
            "<preference url=\"h/b.xml\"/><preference url=\"m/m.xml\"/>");
}

}  // namespace
}  // namespace kitbay::update
