#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "contract/failure_number.h"
#include "platform/files.h"

namespace kitbay::contract {

/// How another program holds a file: it reads it and shares reading, it writes it and shares
/// reading and writing, or it has loaded it as a library.
enum class Held { kReading, kWriting, kLoaded };

/// A file system to test, and what else happens in it.
class FilesWorld {
 public:
  virtual ~FilesWorld() = default;
  virtual platform::Files& files() = 0;

  /// An empty folder for the test, on drive C:, without a separator at its end.
  virtual std::string folder() const = 0;

  /// A folder that this user may not change.
  virtual std::string OthersFolder() = 0;
  virtual void SetReadOnly(const std::string& path) = 0;
  virtual void SetLastModified(const std::string& path, const platform::LocalTime& time) = 0;

  /// Has another program open the file without sharing, until the end of the test.
  virtual void HoldOpen(const std::string& path) = 0;

  /// Has another program hold the file until `LetGo`.
  virtual void Hold(const std::string& path, Held how) = 0;
  virtual void LetGo() = 0;

  /// Adds a library at `path`.
  virtual void AddLibrary(const std::string& path) = 0;

  /// Makes `path` a link to the folder `target`. Returns whether this system can.
  virtual bool MakeLink(const std::string& path, const std::string& target) = 0;
  virtual std::vector<std::string> Names(const std::string& folder) const = 0;
};

class FilesContract : public testing::TestWithParam<std::unique_ptr<FilesWorld> (*)()> {
 protected:
  std::string In(const std::string& name) const { return world_->folder() + "\\" + name; }
  platform::Files& files() { return world_->files(); }
  int ReadFailure(const std::string& path) {
    return FailureNumber([&] { files().Read(path); });
  }
  int CreateFailure(const std::string& path) {
    return FailureNumber([&] { files().Create(path, "new"); });
  }
  int OpenFailure(const std::string& path) {
    return FailureNumber([&] { files().Open(path); });
  }
  int ReplaceFailure(const std::string& path) {
    return FailureNumber([&] { files().Replace(path, "new"); });
  }

  template <typename Operation>
  static bool FindsItInUse(Operation operation) {
    try {
      operation();
    } catch (const platform::FileInUse& failure) {
      return failure.number() == 70;
    } catch (const base::Failure&) {
      return false;
    }
    return false;
  }

  std::unique_ptr<FilesWorld> world_ = GetParam()();
};

inline std::string EveryByte() {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) {
    bytes.push_back(static_cast<char>(byte));
  }
  return bytes + "\r\n\n\r\x1A";
}

TEST_P(FilesContract, ReadGivesTheBytesThatWereWritten) {
  files().Create(In("bytes.bin"), EveryByte());
  EXPECT_EQ(files().Read(In("bytes.bin")), EveryByte());
  files().Create(In("empty.bin"), "");
  EXPECT_EQ(files().Read(In("empty.bin")), "");
}

TEST_P(FilesContract, LetterCaseOfNamesDoesNotMatter) {
  files().CreateFolder(In("Größe"));
  files().Create(In("Größe\\Übersicht.XML"), "1");
  EXPECT_EQ(files().Read(In("GRÖßE\\übersicht.xml")), "1");
  EXPECT_TRUE(files().Exists(In("größe\\ÜBERSICHT.Xml")));
  files().Create(In("größe\\übersicht.xml"), "2");
  EXPECT_EQ(world_->Names(In("Größe")), std::vector<std::string>{"Übersicht.XML"});
}

TEST_P(FilesContract, NamesOfOtherScriptsAreKept) {
  files().Create(In("設定 данные.xml"), "x");
  EXPECT_EQ(files().Read(In("設定 данные.xml")), "x");
  EXPECT_EQ(world_->Names(world_->folder()), std::vector<std::string>{"設定 данные.xml"});
}

TEST_P(FilesContract, BothSeparatorsAndDotPartsNameTheSameFile) {
  files().CreateFolder(world_->folder() + "/sub");
  files().Create(In("sub\\a.txt"), "1");
  EXPECT_EQ(files().Read(world_->folder() + "/sub/a.txt"), "1");
  EXPECT_EQ(files().Read(In(".\\sub\\.\\a.txt")), "1");
  EXPECT_EQ(files().Read(In("sub\\..\\sub\\\\a.txt")), "1");
}

TEST_P(FilesContract, ALeadingSeparatorStartsAtTheRootOfTheCurrentDrive) {
  files().Create(In("a.txt"), "1");
  EXPECT_EQ(files().Read(In("a.txt").substr(2)), "1");
}

TEST_P(FilesContract, ExistsFindsFilesFoldersAndRoots) {
  files().CreateFolder(In("sub"));
  files().Create(In("a.txt"), "");
  EXPECT_TRUE(files().Exists(In("a.txt")));
  EXPECT_TRUE(files().Exists(In("sub")));
  EXPECT_TRUE(files().Exists(In("sub\\")));
  EXPECT_TRUE(files().Exists("C:\\"));
  EXPECT_TRUE(files().Exists("\\"));
}

TEST_P(FilesContract, ExistsFindsNothingElse) {
  files().Create(In("a.txt"), "");
  EXPECT_FALSE(files().Exists(""));
  EXPECT_FALSE(files().Exists(In("b.txt")));
  EXPECT_FALSE(files().Exists(In("missing\\a.txt")));
  EXPECT_FALSE(files().Exists(In("a.txt\\b.txt")));
  EXPECT_FALSE(files().Exists("Q:\\"));
  EXPECT_FALSE(files().Exists("Q:\\a.txt"));
}

TEST_P(FilesContract, ExistsLooksForAPatternAsAListingDoes) {
  files().Create(In("update-7.xml"), "");
  EXPECT_TRUE(files().Exists(In("update-?.xml")));
  EXPECT_TRUE(files().Exists(In("*.XML")));
  EXPECT_FALSE(files().Exists(In("*.zip")));
}

TEST_P(FilesContract, ReadReportsWhatIsMissing) {
  files().Create(In("a.txt"), "");
  EXPECT_EQ(ReadFailure(In("missing.txt")), 53);
  EXPECT_EQ(ReadFailure(In("missing\\a.txt")), 76);
  EXPECT_EQ(ReadFailure(In("a.txt\\b.txt")), 76);
  EXPECT_EQ(ReadFailure(""), 76);
}

TEST_P(FilesContract, AFolderInPlaceOfAFileIsDenied) {
  files().CreateFolder(In("sub"));
  EXPECT_EQ(ReadFailure(In("sub")), 70);
  EXPECT_EQ(OpenFailure(In("sub")), 70);
  EXPECT_EQ(CreateFailure(In("sub")), 70);
  EXPECT_EQ(ReplaceFailure(In("sub")), 70);
  EXPECT_EQ(world_->Names(world_->folder()), std::vector<std::string>{"sub"});
}

TEST_P(FilesContract, AReadOnlyFileIsReadButNotWritten) {
  files().Create(In("a.txt"), "old");
  world_->SetReadOnly(In("a.txt"));
  EXPECT_EQ(CreateFailure(In("a.txt")), 70);
  EXPECT_EQ(ReplaceFailure(In("a.txt")), 70);
  EXPECT_EQ(files().Read(In("a.txt")), "old");
  EXPECT_EQ(world_->Names(world_->folder()), std::vector<std::string>{"a.txt"});
}

TEST_P(FilesContract, AFileThatAnotherProgramHoldsIsDenied) {
  files().Create(In("a.txt"), "old");
  world_->HoldOpen(In("a.txt"));
  EXPECT_EQ(ReadFailure(In("a.txt")), 70);
  EXPECT_EQ(OpenFailure(In("a.txt")), 70);
  EXPECT_EQ(CreateFailure(In("a.txt")), 70);
  EXPECT_EQ(ReplaceFailure(In("a.txt")), 70);
  EXPECT_EQ(world_->Names(world_->folder()), std::vector<std::string>{"a.txt"});
}

TEST_P(FilesContract, AFileThatAnotherProgramHoldsIsInUseUntilItLetsGo) {
  for (const Held how : {Held::kReading, Held::kWriting, Held::kLoaded}) {
    const std::string path = In(std::to_string(static_cast<int>(how)) + ".dll");
    world_->AddLibrary(path);
    const std::string bytes = files().Read(path);
    world_->Hold(path, how);
    EXPECT_EQ(files().Read(path), bytes);
    EXPECT_EQ(files().Open(path)->Size(), bytes.size());
    EXPECT_TRUE(FindsItInUse([&] { files().Create(path, "new"); })) << path;
    EXPECT_TRUE(FindsItInUse([&] { files().Replace(path, "new"); })) << path;
    EXPECT_TRUE(FindsItInUse([&] { files().ReplaceUnchanged(path, bytes, "new"); })) << path;
    EXPECT_EQ(files().Read(path), bytes);
    world_->LetGo();
    files().Replace(path, "new");
    EXPECT_EQ(files().Read(path), "new");
  }
  EXPECT_EQ(world_->Names(world_->folder()).size(), 3U);
}

TEST_P(FilesContract, WhatMustNotBeWrittenIsNotInUse) {
  files().Create(In("a.txt"), "old");
  world_->SetReadOnly(In("a.txt"));
  files().CreateFolder(In("sub"));
  for (const char* name : {"a.txt", "sub"}) {
    EXPECT_FALSE(FindsItInUse([&] { files().Create(In(name), "new"); })) << name;
    EXPECT_FALSE(FindsItInUse([&] { files().Replace(In(name), "new"); })) << name;
  }
}

TEST_P(FilesContract, ALoadedLibraryIsSetAsideForItsUsers) {
  const std::string path = In("a.dll");
  world_->AddLibrary(path);
  const std::string bytes = files().Read(path);
  world_->Hold(path, Held::kLoaded);
  files().ReplaceInUse(path, "new");
  EXPECT_EQ(files().Read(path), "new");
  files().SweepReplacements(world_->folder());
  const std::vector<std::string> names = world_->Names(world_->folder());
  ASSERT_EQ(names.size(), 2U);
  const std::string aside = names[0] == "a.dll" ? names[1] : names[0];
  EXPECT_EQ(files().Read(In(aside)), bytes);
  world_->LetGo();
  files().SweepReplacements(world_->folder());
  EXPECT_EQ(world_->Names(world_->folder()), std::vector<std::string>{"a.dll"});
}

TEST_P(FilesContract, AFileThatCannotBeSetAsideStays) {
  for (const Held how : {Held::kReading, Held::kWriting}) {
    files().Create(In("a.txt"), "old");
    world_->Hold(In("a.txt"), how);
    EXPECT_TRUE(FindsItInUse([&] { files().ReplaceInUse(In("a.txt"), "new"); }));
    EXPECT_EQ(files().Read(In("a.txt")), "old");
    EXPECT_EQ(world_->Names(world_->folder()), std::vector<std::string>{"a.txt"});
    world_->LetGo();
  }
}

TEST_P(FilesContract, AnUnchangedFileIsReplaced) {
  files().Create(In("a.xml"), EveryByte());
  EXPECT_TRUE(files().ReplaceUnchanged(In("A.xml"), EveryByte(), "new"));
  EXPECT_EQ(files().Read(In("a.xml")), "new");
  EXPECT_EQ(world_->Names(world_->folder()).size(), 1U);
}

TEST_P(FilesContract, AFileThatChangedIsNotReplaced) {
  files().Create(In("a.xml"), "theirs");
  EXPECT_FALSE(files().ReplaceUnchanged(In("a.xml"), "old", "new"));
  EXPECT_FALSE(files().ReplaceUnchanged(In("a.xml"), "", "new"));
  EXPECT_EQ(files().Read(In("a.xml")), "theirs");
  EXPECT_EQ(FailureNumber([&] { files().ReplaceUnchanged(In("missing.xml"), "", "new"); }), 53);
  EXPECT_EQ(world_->Names(world_->folder()), std::vector<std::string>{"a.xml"});
}

TEST_P(FilesContract, WritingReportsThatTheFolderIsMissing) {
  files().Create(In("a.txt"), "");
  EXPECT_EQ(CreateFailure(In("missing\\a.txt")), 76);
  EXPECT_EQ(CreateFailure(In("a.txt\\b.txt")), 76);
  EXPECT_EQ(CreateFailure(""), 76);
  EXPECT_EQ(ReplaceFailure(In("missing\\a.txt")), 76);
  EXPECT_EQ(ReplaceFailure(In("a.txt\\b.txt")), 76);
  EXPECT_EQ(ReplaceFailure(""), 76);
}

TEST_P(FilesContract, ANameThatNoFileCanHaveIsRefused) {
  using namespace std::string_literals;
  for (const std::string& name : {"a?.xml"s, "a*.xml"s, "a|b"s, "a<b>"s, "a\"b"s, "a\0b"s}) {
    EXPECT_EQ(CreateFailure(In(name)), 75) << name;
    EXPECT_EQ(ReplaceFailure(In(name)), 75) << name;
    EXPECT_EQ(ReadFailure(In(name)), 75) << name;
  }
  EXPECT_EQ(world_->Names(world_->folder()), std::vector<std::string>{});
}

TEST_P(FilesContract, AnOpenFileIsReadAtAnyPlace) {
  files().Create(In("bytes.bin"), EveryByte());
  const auto reader = files().Open(In("BYTES.bin"));
  EXPECT_EQ(reader->Size(), EveryByte().size());
  std::string bytes(5, '.');
  EXPECT_EQ(reader->ReadAt(250, bytes.data(), 5), 5U);
  EXPECT_EQ(bytes, EveryByte().substr(250, 5));
  EXPECT_EQ(reader->ReadAt(1, bytes.data(), 2), 2U);
  EXPECT_EQ(bytes, EveryByte().substr(1, 2) + EveryByte().substr(252, 3));
}

TEST_P(FilesContract, ReadingEndsWithTheFile) {
  files().Create(In("a.txt"), "12345");
  const auto reader = files().Open(In("a.txt"));
  std::string bytes(5, '.');
  EXPECT_EQ(reader->ReadAt(3, bytes.data(), 5), 2U);
  EXPECT_EQ(bytes, "45...");
  EXPECT_EQ(reader->ReadAt(5, bytes.data(), 5), 0U);
  EXPECT_EQ(reader->ReadAt(0x1'0000'0000, bytes.data(), 5), 0U);
  EXPECT_EQ(bytes, "45...");
}

TEST_P(FilesContract, OpenReportsWhatIsMissing) {
  files().Create(In("a.txt"), "");
  EXPECT_EQ(OpenFailure(In("missing.txt")), 53);
  EXPECT_EQ(OpenFailure(In("missing\\a.txt")), 76);
  EXPECT_EQ(OpenFailure(In("a.txt\\b.txt")), 76);
  EXPECT_EQ(OpenFailure(""), 76);
}

TEST_P(FilesContract, AFileThatIsOpenIsReadByOthersButNotWritten) {
  files().Create(In("a.txt"), "old");
  auto reader = files().Open(In("a.txt"));
  EXPECT_EQ(files().Read(In("a.txt")), "old");
  EXPECT_EQ(OpenFailure(In("a.txt")), 0);
  EXPECT_EQ(CreateFailure(In("a.txt")), 70);
  EXPECT_EQ(ReplaceFailure(In("a.txt")), 70);
  reader.reset();
  EXPECT_EQ(CreateFailure(In("a.txt")), 0);
  EXPECT_EQ(files().Read(In("a.txt")), "new");
}

TEST_P(FilesContract, CreateLeavesNothingOfALongerFile) {
  files().Create(In("Ä.txt"), std::string(100'000, 'x'));
  files().Create(In("ä.txt"), EveryByte());
  EXPECT_EQ(files().Read(In("Ä.txt")), EveryByte());
  EXPECT_EQ(world_->Names(world_->folder()), std::vector<std::string>{"Ä.txt"});
}

TEST_P(FilesContract, WhatIsNoLinkIsDistinguished) {
  files().CreateFolder(In("sub"));
  files().Create(In("a.txt"), "");
  EXPECT_FALSE(files().IsLink(In("sub")));
  EXPECT_FALSE(files().IsLink(In("a.txt")));
  EXPECT_FALSE(files().IsLink(In("missing")));
  EXPECT_FALSE(files().IsLink(In("missing\\a.txt")));
  EXPECT_FALSE(files().IsLink(In("*.txt")));
}

TEST_P(FilesContract, ALinkToAFolderIsALink) {
  files().CreateFolder(In("target"));
  if (!world_->MakeLink(In("link"), In("target"))) {
    GTEST_SKIP() << "this system makes no links";
  }
  EXPECT_TRUE(files().IsLink(In("link")));
  EXPECT_TRUE(files().IsLink(In("LINK\\")));
  EXPECT_FALSE(files().IsLink(In("target")));
}

TEST_P(FilesContract, ReplacePutsTheNewBytesInPlace) {
  files().Create(In("a.xml"), std::string(100'000, 'x'));
  files().Replace(In("A.xml"), EveryByte());
  EXPECT_EQ(files().Read(In("a.xml")), EveryByte());
  EXPECT_EQ(world_->Names(world_->folder()).size(), 1U);
}

TEST_P(FilesContract, ReplaceCreatesAMissingFile) {
  files().Replace(In("ä.xml"), "new");
  EXPECT_EQ(files().Read(In("ä.xml")), "new");
  EXPECT_EQ(world_->Names(world_->folder()), std::vector<std::string>{"ä.xml"});
}

TEST_P(FilesContract, SweepDeletesWhatReplacementsHaveLeft) {
  for (const char* name : {"~kb1-1.tmp", "~kb4294967295-1000.tmp", "a.xml"}) {
    files().Create(In(name), "x");
  }
  files().SweepReplacements(world_->folder());
  EXPECT_EQ(world_->Names(world_->folder()), std::vector<std::string>{"a.xml"});
}

TEST_P(FilesContract, SweepTouchesNoOtherFileAndNoFolder) {
  const std::vector<std::string> names = {
      "~kb-1.tmp",  "~kb1-.tmp",    "~kb1.tmp",  "~kb1-1.tmp.x", "~kb1-1.tmpx", "~kb1-1a.tmp",
      "~kba-1.tmp", "~kb1-1-1.tmp", "kb1-1.tmp", "x~kb1-1.tmp",  "~kb 1-1.tmp"};
  for (const std::string& name : names) {
    files().Create(In(name), "x");
  }
  files().CreateFolder(In("~kb2-2.tmp"));
  files().SweepReplacements(world_->folder());
  for (const std::string& name : names) {
    EXPECT_TRUE(files().Exists(In(name))) << name;
  }
  EXPECT_TRUE(files().Exists(In("~kb2-2.tmp")));
}

TEST_P(FilesContract, SweepGoesThroughTheFoldersBelow) {
  files().CreateFolder(In("sub"));
  files().CreateFolder(In("sub\\deep"));
  for (const char* name : {"sub\\~kb1-1.tmp", "sub\\deep\\~kb1-1.tmp", "sub\\deep\\a.dll"}) {
    files().Create(In(name), "x");
  }
  files().SweepReplacements(world_->folder());
  EXPECT_EQ(world_->Names(In("sub")), std::vector<std::string>{"deep"});
  EXPECT_EQ(world_->Names(In("sub\\deep")), std::vector<std::string>{"a.dll"});
}

TEST_P(FilesContract, SweepFollowsNoLink) {
  files().CreateFolder(In("target"));
  files().CreateFolder(In("swept"));
  if (!world_->MakeLink(In("swept\\link"), In("target"))) {
    GTEST_SKIP() << "this system makes no links";
  }
  files().Create(In("swept\\link\\~kb1-1.tmp"), "x");
  files().SweepReplacements(In("swept"));
  EXPECT_TRUE(files().Exists(In("swept\\link\\~kb1-1.tmp")));
}

TEST_P(FilesContract, SweepPassesOverWhatIsInUseAndFoldersThatAreNotThere) {
  files().Create(In("~kb1-1.tmp"), "x");
  files().Create(In("~kb1-2.tmp"), "x");
  world_->HoldOpen(In("~kb1-1.tmp"));
  files().SweepReplacements(world_->folder());
  EXPECT_EQ(world_->Names(world_->folder()), std::vector<std::string>{"~kb1-1.tmp"});
  for (const std::string& folder :
       {In("missing"), In("~kb1-1.tmp"), std::string(), std::string("Q:\\none"), In("a?b")}) {
    files().SweepReplacements(folder);
  }
}

TEST_P(FilesContract, CreateFolderMakesOneFolder) {
  files().CreateFolder(In("Ordner ä"));
  files().Create(In("Ordner ä\\a.txt"), "1");
  EXPECT_EQ(files().Read(In("Ordner ä\\a.txt")), "1");
}

TEST_P(FilesContract, CreateFolderReportsWhyItFails) {
  files().CreateFolder(In("sub"));
  files().Create(In("a.txt"), "");
  const auto failure = [&](const std::string& path) {
    return FailureNumber([&] { files().CreateFolder(path); });
  };
  EXPECT_EQ(failure(In("SUB")), 75);
  EXPECT_EQ(failure(In("a.txt")), 75);
  EXPECT_EQ(failure(In("missing\\sub")), 76);
  EXPECT_EQ(failure(""), 76);
}

TEST_P(FilesContract, ADeletedFileIsGone) {
  files().Create(In("a.txt"), "1");
  files().Create(In("b.txt"), "2");
  files().Delete(In("A.TXT"));
  EXPECT_EQ(world_->Names(world_->folder()), std::vector<std::string>{"b.txt"});
}

TEST_P(FilesContract, DeletingReportsWhatIsWrong) {
  const auto failure = [&](const std::string& path) {
    return FailureNumber([&] { files().Delete(path); });
  };
  files().CreateFolder(In("folder"));
  files().Create(In("read-only.txt"), "1");
  world_->SetReadOnly(In("read-only.txt"));
  EXPECT_EQ(failure(In("missing.txt")), 53);
  EXPECT_EQ(failure(In("missing\\a.txt")), 76);
  EXPECT_EQ(failure(In("folder")), 70);
  EXPECT_EQ(failure(In("read-only.txt")), 70);
  files().Create(In("held.txt"), "1");
  world_->HoldOpen(In("held.txt"));
  EXPECT_TRUE(FindsItInUse([&] { files().Delete(In("held.txt")); }));
}

TEST_P(FilesContract, LastModifiedIsLocalTimeInWinterAndSummer) {
  files().Create(In("a.txt"), "");
  for (const platform::LocalTime& time :
       {platform::LocalTime{2026, 1, 15, 23, 59, 58}, platform::LocalTime{2026, 7, 15, 0, 0, 0},
        platform::LocalTime{1999, 12, 31, 12, 30, 1}}) {
    world_->SetLastModified(In("a.txt"), time);
    EXPECT_EQ(files().LastModified(In("A.TXT")), time);
  }
}

TEST_P(FilesContract, AFileCanBeGivenTheTimeOfAnother) {
  files().Create(In("a.txt"), "1");
  for (const platform::LocalTime& time : {platform::LocalTime{2026, 1, 15, 23, 59, 58},
                                          platform::LocalTime{1999, 7, 31, 12, 30, 1}}) {
    files().Redate(In("A.TXT"), time);
    EXPECT_EQ(files().LastModified(In("a.txt")), time);
  }
  EXPECT_EQ(files().Read(In("a.txt")), "1");
  EXPECT_EQ(FailureNumber([&] { files().Redate(In("b.txt"), {2026, 1, 15}); }), 53);
}

TEST_P(FilesContract, LastModifiedReportsWhatIsMissing) {
  const auto failure = [&](const std::string& path) {
    return FailureNumber([&] { files().LastModified(path); });
  };
  EXPECT_EQ(failure(In("missing.txt")), 53);
  EXPECT_EQ(failure(In("missing\\a.txt")), 76);
  EXPECT_EQ(failure(""), 76);
}

TEST_P(FilesContract, PathsOfThreeHundredCharactersWork) {
  std::string folder = world_->folder();
  while (folder.size() < 300) {
    folder += "\\a folder with quite a long name";
    files().CreateFolder(folder);
  }
  const std::string path = folder + "/a.txt";
  files().Create(path, "1");
  files().Replace(path, "2");
  EXPECT_EQ(files().Read(path), "2");
  EXPECT_TRUE(files().Exists(path));
  EXPECT_TRUE(files().Exists(folder));
  EXPECT_FALSE(files().Exists(folder + "\\b.txt"));
  EXPECT_EQ(ReadFailure(folder + "\\b.txt"), 53);
  world_->SetLastModified(path, {2026, 11, 21, 10, 15, 30});
  EXPECT_EQ(files().LastModified(path), (platform::LocalTime{2026, 11, 21, 10, 15, 30}));
}

TEST_P(FilesContract, AFolderOfSomebodyElseRefusesFilesAndOnesOwnDoesNot) {
  EXPECT_TRUE(files().RefusesFiles(world_->OthersFolder()));
  EXPECT_FALSE(files().RefusesFiles(world_->folder()));
  EXPECT_FALSE(files().RefusesFiles(world_->folder() + "\\"));
  EXPECT_TRUE(world_->Names(world_->folder()).empty());
}

TEST_P(FilesContract, WhatIsNoFolderRefusesNothing) {
  files().Create(In("file"), "1");
  EXPECT_FALSE(files().RefusesFiles(In("missing")));
  EXPECT_FALSE(files().RefusesFiles(In("file")));
  EXPECT_FALSE(files().RefusesFiles(""));
}

TEST_P(FilesContract, InAFolderOfSomebodyElseNothingIsWritten) {
  EXPECT_EQ(CreateFailure(world_->OthersFolder() + "\\new.txt"), 70);
  EXPECT_EQ(ReplaceFailure(world_->OthersFolder() + "\\new.txt"), 70);
  EXPECT_EQ(FailureNumber([&] { files().CreateFolder(world_->OthersFolder() + "\\new"); }), 70);
}

}  // namespace kitbay::contract
