#include "source_file_fixture.h"

namespace kitbay::update {
namespace {

using fakes::Entry;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kInitial = "<root><preferences><preference url=''/></preferences></root>";

class UpdateSources : public SourceFileTest {
 protected:
  void SetSeed(const std::string& url) {
    files_.AddFile(kSeed, FileOf("<preference url='" + url + "'/>"));
  }
};

TEST_F(UpdateSources, FreshUserWithoutASeedGetsExactlyTheInitialBytes) {
  sources_file_.MakeDirectoryPreferenceFile(&file_system_);
  EXPECT_EQ(File(), kInitial);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(UpdateSources, FreshUserGetsTheSeedsFirstSource) {
  SetSeed("updates.example/components.xml");
  sources_file_.MakeDirectoryPreferenceFile(&file_system_);
  EXPECT_EQ(File(),
            "<root><preferences><preference url=\"updates.example/components.xml\"/></preferences>"
            "</root>");
  sources_file_.GetPreferences();
  EXPECT_THAT(sources_.UpdateSources, ElementsAre("updates.example/components.xml"));
}

TEST_F(UpdateSources, FreshUserWithAnEmptySeedGetsOneEmptySource) {
  SetSeed("");
  sources_file_.MakeDirectoryPreferenceFile(&file_system_);
  sources_file_.GetPreferences();
  EXPECT_EQ(File(), "<root><preferences><preference url=\"\"/></preferences></root>");
  EXPECT_THAT(sources_.UpdateSources, ElementsAre(""));
}

TEST_F(UpdateSources, FirstSourceFollowsTheSeedOnEachLoadAndTheOthersStay) {
  SetSeed("one.example/a.xml");
  EXPECT_EQ(Seeded("<root><preferences><preference url='x'/><preference url='mine.example/b.xml'/>"
                   "</preferences></root>"),
            "<root><preferences><preference url=\"one.example/a.xml\"/><preference "
            "url=\"mine.example/b.xml\"/></preferences></root>");
  SetSeed("two.example/&amp;c.xml");
  EXPECT_EQ(Seeded(File()),
            "<root><preferences><preference url=\"two.example/&amp;c.xml\"/><preference "
            "url=\"mine.example/b.xml\"/></preferences></root>");
}

TEST_F(UpdateSources, FileLiesInTheParentOfTheUsersFolder) {
  settings_.CustomDataFolder = "C:\\User\\Elsewhere\\Data";
  files_.AddFolder("C:\\User\\Elsewhere");
  sources_file_.MakeDirectoryPreferenceFile(&file_system_);
  EXPECT_EQ(files_.Bytes("C:\\User\\Elsewhere\\updatepreference.xml"), kInitial);
}

TEST_F(UpdateSources, FirstAttributeIsSetWhateverItsName) {
  SetSeed("one.example/a.xml");
  EXPECT_EQ(Seeded("<root><preferences><preference href='x' url='y'/></preferences></root>"),
            "<root><preferences><preference href=\"one.example/a.xml\" url=\"y\"/></preferences>"
            "</root>");
}

TEST_F(UpdateSources, MissingSeedLeavesTheFileAsItIs) {
  const std::string bytes =
      "<root> <preferences><preference url='mine'/></preferences>\r\n</root>\r\n";
  EXPECT_EQ(Seeded(bytes), bytes);
  EXPECT_THAT(log_.entries, IsEmpty());
}

class UselessSeed : public UpdateSources, public testing::WithParamInterface<const char*> {};

TEST_P(UselessSeed, LeavesTheFileAsItIs) {
  files_.AddFile(kSeed, GetParam());
  EXPECT_EQ(Seeded(kInitial), kInitial);
  EXPECT_THAT(log_.entries, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Kinds, UselessSeed,
                         testing::Values("", "<root><preferences>", "<root/>",
                                         "<preferences><preference url='a'/></preferences>"));

TEST_F(UpdateSources, SeedWithoutASourceIsLoggedAndLeavesTheFileAsItIs) {
  files_.AddFile(kSeed, "<root><preferences/></root>");
  EXPECT_EQ(Seeded(kInitial), kInitial);
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::MakeDirectoryPreferenceFile", 91,
                                              "Object variable or With block variable not set")));
}

TEST_F(UpdateSources, FileWithoutASourceIsLoggedAndStaysAsItIs) {
  SetSeed("one.example/a.xml");
  EXPECT_EQ(Seeded("<root><preferences/></root>"), "<root><preferences/></root>");
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::MakeDirectoryPreferenceFile", 91,
                                              "Object variable or With block variable not set")));
}

TEST_F(UpdateSources, MalformedFileStaysAsItIs) {
  SetSeed("one.example/a.xml");
  EXPECT_EQ(Seeded("<root><preferences>"), "<root><preferences>");
  EXPECT_EQ(Seeded("<root/>"), "<root/>");
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(UpdateSources, StepsAreInOrder) {
  SetSeed("one.example/a.xml");
  sources_file_.MakeDirectoryPreferenceFile(&file_system_);
  std::vector<std::string> paths;
  for (const std::string& operation : files_.operations()) {
    if (!operation.starts_with("fso.Write") && !operation.starts_with("fso.Close")) {
      paths.push_back(operation);
    }
  }
  EXPECT_THAT(paths,
              ElementsAre(std::string("fso.FileExists ") + kPath,
                          std::string("fso.CreateTextFile ") + kPath, std::string("Read ") + kPath,
                          std::string("Read ") + kSeed, std::string("Replace ") + kPath));
}

TEST_F(UpdateSources, UnwritableFileKeepsItsOldBytesAndIsLogged) {
  SetSeed("one.example/a.xml");
  files_.AddFile(kPath, kInitial);
  files_.SetReadOnly(kPath);
  sources_file_.MakeDirectoryPreferenceFile(&file_system_);
  EXPECT_EQ(File(), kInitial);
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::MakeDirectoryPreferenceFile", 70, "Permission denied")));
}

TEST_F(UpdateSources, MissingUserFolderIsLogged) {
  settings_.CustomDataFolder = "C:\\None\\Ovalink\\CustomData";
  sources_file_.MakeDirectoryPreferenceFile(&file_system_);
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::MakeDirectoryPreferenceFile", 76, "Path not found")));
}

TEST_F(UpdateSources, MissingFileSystemObjectIsError91) {
  sources_file_.MakeDirectoryPreferenceFile(nullptr);
  EXPECT_EQ(File(), "(no file)");
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::MakeDirectoryPreferenceFile", 91,
                                              "Object variable or With block variable not set")));
}

TEST_F(UpdateSources, ReadingKeepsFileOrderAndDuplicates) {
  files_.AddFile(kPath,
                 "<root><preferences><preference url='b/b.xml'/><preference url='a/a.xml'/>"
                 "<preference url='b/b.xml'/><preference url=''/></preferences></root>");
  sources_file_.GetPreferences();
  EXPECT_THAT(sources_.UpdateSources, ElementsAre("b/b.xml", "a/a.xml", "b/b.xml", ""));
  EXPECT_THAT(sources_.PendingSources, ElementsAre("b/b.xml", "a/a.xml", "b/b.xml", ""));
  EXPECT_FALSE(sources_.UsedCachedManifest);
}

TEST_F(UpdateSources, ReadingAgainAppendsToThePendingSourcesWithoutEmptyingThem) {
  files_.AddFile(kPath,
                 "<root><preferences><preference url='a'/><preference url='b'/></preferences>"
                 "</root>");
  sources_file_.GetPreferences();
  sources_file_.GetPreferences();
  EXPECT_THAT(sources_.UpdateSources, ElementsAre("a", "b"));
  EXPECT_THAT(sources_.PendingSources, ElementsAre("a", "b", "a", "b"));
}

TEST_F(UpdateSources, SourceIsReadByPositionNotByName) {
  files_.AddFile(kPath,
                 "<root><preferences><preference name='first' url='second'/></preferences></root>");
  sources_file_.GetPreferences();
  EXPECT_THAT(sources_.UpdateSources, ElementsAre("first"));
}

TEST_F(UpdateSources, OnlyDirectChildrenOfThePreferencesAreSources) {
  files_.AddFile(kPath,
                 "<root><preferences><group><preference url='deep'/></group><preference url='a'/>"
                 "</preferences><preference url='beside'/></root>");
  sources_file_.GetPreferences();
  EXPECT_THAT(sources_.UpdateSources, ElementsAre("a"));
}

TEST_F(UpdateSources, MissingFileLeavesNoSourcesAndThePendingOnesAsTheyWere) {
  sources_.UpdateSources = {"old"};
  sources_.PendingSources = {"pending"};
  sources_file_.GetPreferences();
  EXPECT_THAT(sources_.UpdateSources, IsEmpty());
  EXPECT_THAT(sources_.PendingSources, ElementsAre("pending"));
  EXPECT_THAT(files_.operations(), ElementsAre(std::string("Exists ") + kPath));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(UpdateSources, TwoOfOneFileNameAreLoggedAndStay) {
  files_.AddFile(
      kPath,
      "<root><preferences><preference url='a/list.xml'/><preference url='b/c.xml'/>"
      "<preference url='b/x/List.xml'/><preference url='A/LIST.xml'/><preference url=''/>"
      "<preference url='c/'/></preferences></root>");
  sources_file_.GetPreferences();
  EXPECT_THAT(sources_.UpdateSources, testing::SizeIs(6));
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry(
                  "Kitbay::GetPreferences", 58,
                  "File already exists: a/list.xml and b/x/List.xml have the same file name")));
}

TEST_F(UpdateSources, MalformedFileLeavesNoSources) {
  sources_.UpdateSources = {"old"};
  files_.AddFile(kPath, "<root><preferences><preference url='a'/>");
  sources_file_.GetPreferences();
  EXPECT_THAT(sources_.UpdateSources, IsEmpty());
  EXPECT_THAT(sources_.PendingSources, IsEmpty());
}

TEST_F(UpdateSources, SourceWithoutAnAttributeIsLoggedAndThoseBeforeItStay) {
  files_.AddFile(kPath,
                 "<root><preferences><preference url='a'/><preference/><preference url='c'/>"
                 "</preferences></root>");
  sources_file_.GetPreferences();
  EXPECT_THAT(sources_.UpdateSources, ElementsAre("a"));
  EXPECT_THAT(sources_.PendingSources, ElementsAre("a"));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::GetPreferences", 91,
                                              "Object variable or With block variable not set")));
}

}  // namespace
}  // namespace kitbay::update
