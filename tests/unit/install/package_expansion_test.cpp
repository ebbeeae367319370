#include "install/package_expansion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

#include "fakes/memory_files.h"
#include "fakes/recording_error_log.h"
#include "fakes/zip_bytes.h"

namespace kitbay::install {
namespace {

using namespace std::string_literals;
using base::RuntimeError;
using fakes::RecordingErrorLog;
using fakes::ZipFile;
using fakes::ZipOf;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kProcedure = "Kitbay...ExpandZipFile";
constexpr const char* kArchive = "C:\\S\\Temp\\skins.zip";

class PackageExpansionTest : public testing::Test {
 protected:
  PackageExpansionTest() {
    files_.AddFolder("C:\\S\\Temp");
    files_.AddFolder("C:\\S\\addons\\skins");
  }

  bool Expand(const std::string& archive) {
    files_.AddFile(kArchive, archive);
    return ExpandZipFile();
  }
  bool ExpandZipFile() {
    return PackageExpansion(log_, files_).ExpandZipFile(destination_, kArchive);
  }
  std::string Bytes(const std::string& path) const {
    return files_.Bytes("C:\\S\\addons\\skins\\" + path).value_or("(missing)");
  }
  std::vector<std::string> Names(const std::string& folder = "") const {
    return files_.Names("C:\\S\\addons\\skins" + folder);
  }
  static fakes::LogEntry Entry(int number, const std::string& description) {
    return fakes::Entry(kProcedure, number, description);
  }

  fakes::MemoryFiles files_;
  RecordingErrorLog log_;
  std::string destination_ = "C:\\S\\addons\\skins";
};

TEST_F(PackageExpansionTest, FolderOfConsecutiveEntriesIsLookedForOnce) {
  const auto looks = [&](const std::string& archive) {
    const std::size_t before = files_.operation_count();
    EXPECT_TRUE(Expand(archive));
    return std::ranges::count(files_.operations().begin() + static_cast<std::ptrdiff_t>(before),
                              files_.operations().end(), "Exists C:\\S\\addons\\skins\\one");
  };
  const auto of_one = looks(ZipOf({{"one/a.txt", "a"}}));
  EXPECT_EQ(looks(ZipOf({{"one/a.txt", "a"}, {"one/b.txt", "b"}, {"one/c.txt", "c"}})), of_one);
  EXPECT_EQ(looks(ZipOf({{"one/a.txt", "a"}, {"b.txt", "b"}, {"one/c.txt", "c"}})), of_one + 1);
}

TEST_F(PackageExpansionTest, FilesGetTheBytesOfTheirEntries) {
  const std::string text(100'000, 'x');
  EXPECT_TRUE(Expand(ZipOf({{"stored.txt", "stored\r\n"}, {"deflated.txt", text, true}})));
  EXPECT_EQ(Bytes("stored.txt"), "stored\r\n");
  EXPECT_EQ(Bytes("deflated.txt"), text);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(PackageExpansionTest, ASlashSeparatesFolders) {
  EXPECT_TRUE(Expand(ZipOf({{"bin/en/a.txt", "1"}, {"bin\\b.txt", "2"}})));
  EXPECT_EQ(Bytes("bin\\en\\a.txt"), "1");
  EXPECT_EQ(Bytes("bin\\b.txt"), "2");
}

TEST_F(PackageExpansionTest, NamesOfOtherScriptsAreKept) {
  EXPECT_TRUE(Expand(ZipOf({{"Größe/設定.xml", "1"}})));
  EXPECT_THAT(Names(), ElementsAre("Größe"));
  EXPECT_THAT(Names("\\Größe"), ElementsAre("設定.xml"));
}

TEST_F(PackageExpansionTest, FoldersAreMadeLevelByLevelAndNamesAreJudgedFirst) {
  files_.AddFolder("C:\\S\\addons\\skins\\a");
  EXPECT_TRUE(Expand(ZipOf({{"a/b/c/1.txt", "1"}, {"2.txt", "2"}})));
  EXPECT_THAT(
      files_.operations(),
      ElementsAre("Exists C:\\S\\Temp\\skins.zip", "Open C:\\S\\Temp\\skins.zip",
                  "ReadAt C:\\S\\Temp\\skins.zip", "IsLink C:\\S\\addons\\skins\\a",
                  "Exists C:\\S\\addons\\skins\\a", "IsLink C:\\S\\addons\\skins\\a\\b",
                  "Exists C:\\S\\addons\\skins\\a\\b", "IsLink C:\\S\\addons\\skins\\2.txt",
                  "Exists C:\\S\\addons\\skins\\a", "Exists C:\\S\\addons\\skins\\a\\b",
                  "CreateFolder C:\\S\\addons\\skins\\a\\b", "Exists C:\\S\\addons\\skins\\a\\b\\c",
                  "CreateFolder C:\\S\\addons\\skins\\a\\b\\c",
                  "Create C:\\S\\addons\\skins\\a\\b\\c\\1.txt",
                  "Create C:\\S\\addons\\skins\\2.txt"));
}

TEST_F(PackageExpansionTest, EmptyFilesAndFoldersAreLeftOut) {
  EXPECT_TRUE(Expand(ZipOf({{"folder/"}, {"empty.txt"}, {"only/empty/a.txt"}, {"b.txt", "b"}})));
  EXPECT_THAT(Names(), ElementsAre("b.txt"));
}

TEST_F(PackageExpansionTest, AnExistingFileIsReplaced) {
  files_.AddFile("C:\\S\\addons\\skins\\a.txt", "a longer text than the new one");
  files_.AddFile("C:\\S\\addons\\skins\\own.txt", "stays");
  EXPECT_TRUE(Expand(ZipOf({{"a.txt", "new"}})));
  EXPECT_EQ(Bytes("a.txt"), "new");
  EXPECT_EQ(Bytes("own.txt"), "stays");
}

TEST_F(PackageExpansionTest, TheCallersDestinationGetsItsSeparatorAndKeepsIt) {
  EXPECT_TRUE(Expand(ZipOf({{"a.txt", "a"}})));
  EXPECT_EQ(destination_, "C:\\S\\addons\\skins\\");
  EXPECT_TRUE(ExpandZipFile());
  EXPECT_EQ(destination_, "C:\\S\\addons\\skins\\");
}

TEST_F(PackageExpansionTest, AMissingArchiveIsReportedOnlyByTheResult) {
  EXPECT_FALSE(ExpandZipFile());
  EXPECT_THAT(log_.entries, IsEmpty());
  EXPECT_EQ(destination_, "C:\\S\\addons\\skins\\");
  EXPECT_THAT(files_.operations(), ElementsAre("Exists C:\\S\\Temp\\skins.zip"));
}

TEST_F(PackageExpansionTest, WhatIsNoArchiveIsLogged) {
  for (const std::string& bytes : {""s, "<html>log in first</html>"s, std::string(200'000, 'x')}) {
    log_.entries.clear();
    EXPECT_FALSE(Expand(bytes));
    EXPECT_THAT(log_.entries, ElementsAre(Entry(0, "Source file is currept")));
  }
  EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(PackageExpansionTest, AnArchiveCutShortIsLogged) {
  const std::string archive = ZipOf({{"a.txt", std::string(1000, 'a')}, {"b.txt", "b"}});
  for (std::size_t length = 0; length < archive.size(); ++length) {
    log_.entries.clear();
    EXPECT_FALSE(Expand(archive.substr(0, length))) << length;
    EXPECT_THAT(log_.entries, ElementsAre(Entry(0, "Source file is currept"))) << length;
  }
  EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(PackageExpansionTest, AnArchiveThatCannotBeOpenedIsLogged) {
  files_.AddFile(kArchive, ZipOf({{"a.txt", "a"}}));
  files_.SetInUse(kArchive);
  EXPECT_FALSE(ExpandZipFile());
  EXPECT_THAT(log_.entries, ElementsAre(Entry(0, "Source file is currept")));
}

TEST_F(PackageExpansionTest, AnArchiveWithoutEntriesIsExpandedToNothing) {
  EXPECT_TRUE(Expand("some bytes" + ZipOf({})));
  EXPECT_THAT(log_.entries, IsEmpty());
  EXPECT_THAT(Names(), IsEmpty());
}

// Older versions of the library do not find a directory at the very start of a file; newer ones do.
TEST_F(PackageExpansionTest, AnArchiveThatIsOnlyADirectoryWritesNothing) {
  Expand(ZipOf({}));
  EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(PackageExpansionTest, BytesBeforeTheArchiveDoNotMatter) {
  EXPECT_TRUE(Expand(std::string(70'000, 'x') + ZipOf({{"a.txt", "a"}})));
  EXPECT_EQ(Bytes("a.txt"), "a");
}

TEST_F(PackageExpansionTest, AWrongChecksumIsNotNoticed) {
  EXPECT_TRUE(Expand(ZipOf(
      {{.name = "a.txt", .bytes = "as it came", .declared_crc = 1},
       {.name = "b.txt", .bytes = std::string(5000, 'b'), .deflated = true, .declared_crc = 1}})));
  EXPECT_EQ(Bytes("a.txt"), "as it came");
  EXPECT_EQ(Bytes("b.txt"), std::string(5000, 'b'));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(PackageExpansionTest, WhatTheArchiveDoesNotGiveIsZero) {
  EXPECT_TRUE(Expand(ZipOf({{"first.txt", std::string(5000, '#')},
                            {.name = "short.txt", .bytes = "12345", .declared_size = 12},
                            {.name = "deflated.txt",
                             .bytes = std::string(100, 'd'),
                             .deflated = true,
                             .declared_size = 105}})));
  EXPECT_EQ(Bytes("short.txt"), "12345"s + std::string(7, '\0'));
  EXPECT_EQ(Bytes("deflated.txt"), std::string(100, 'd') + std::string(5, '\0'));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(PackageExpansionTest, ADamagedEntryHasTheBytesUpToItsDamage) {
  std::string text;
  for (int number = 0; number < 40'000; ++number) {
    text += std::to_string(number * 7919 % 104'729) + " ";
  }
  std::string archive = ZipOf({{"a.txt", text, true}, {"b.txt", "b"}});
  archive.replace(archive.size() / 2, 200, 200, '\xFF');
  EXPECT_TRUE(Expand(archive));
  const std::string found = Bytes("a.txt");
  ASSERT_EQ(found.size(), text.size());
  EXPECT_EQ(found.substr(0, text.size() / 4), text.substr(0, text.size() / 4));
  EXPECT_NE(found, text);
  EXPECT_EQ(Bytes("b.txt"), "b");
}

TEST_F(PackageExpansionTest, AnEntryThatCannotBeOpenedIsZeroThroughout) {
  EXPECT_TRUE(Expand(ZipOf({{"first.txt", std::string(50, '#')},
                            {.name = "b.txt", .bytes = "123", .local_name = "other name"},
                            {"c.txt", "c"}})));
  EXPECT_EQ(Bytes("b.txt"), std::string(3, '\0'));
  EXPECT_EQ(Bytes("c.txt"), "c");
}

TEST_F(PackageExpansionTest, AMethodOtherThanStoredAndDeflatedIsRefusedBeforeTheFirstByte) {
  constexpr std::uint16_t kDeflated64 = 9;
  constexpr std::uint16_t kBzip2 = 12;
  constexpr std::uint16_t kEncrypted = 99;
  for (const std::uint16_t method : {kDeflated64, kBzip2, kEncrypted, std::uint16_t{65535}}) {
    log_.entries.clear();
    EXPECT_FALSE(Expand(ZipOf({{"first.txt", "1"},
                               {.name = "bin/a.txt", .bytes = "12345", .declared_method = method},
                               {"last.txt", "3"}})));
    EXPECT_THAT(log_.entries,
                ElementsAre(Entry(
                    5, "Invalid procedure call or argument: bin\\a.txt is compressed by method " +
                           std::to_string(method) +
                           ", and only stored (0) and deflated (8) entries can be expanded")));
    EXPECT_THAT(Names(), IsEmpty());
  }
}

TEST_F(PackageExpansionTest, TheMethodOfAnEntryWithoutBytesDoesNotMatter) {
  EXPECT_TRUE(Expand(ZipOf({{.name = "folder/", .declared_method = 12},
                            {.name = "empty.txt", .declared_method = 99},
                            {"a.txt", "a"}})));
  EXPECT_THAT(Names(), ElementsAre("a.txt"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(PackageExpansionTest, SizesThatTheLibraryLeavesInTheirZip64FieldAreSaidToBe) {
  constexpr std::uint32_t kElsewhere = 0xFFFFFFFF;
  EXPECT_FALSE(Expand(
      ZipOf({{"first.txt", "1"}, {.name = "a.txt", .bytes = "12", .declared_size = kElsewhere}})));
  EXPECT_FALSE(Expand(
      ZipOf({{.name = "bin/b.txt", .bytes = "12", .declared_compressed_size = kElsewhere}})));
  constexpr const char* kStart = "Invalid procedure call or argument: ";
  constexpr const char* kReason = " has its sizes in a zip64 field that cannot be read";
  EXPECT_THAT(log_.entries, ElementsAre(Entry(5, kStart + "a.txt"s + kReason),
                                        Entry(5, kStart + "bin\\b.txt"s + kReason)));
  EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(PackageExpansionTest, ASizeThatNoPieceCanHaveIsOutOfMemory) {
  EXPECT_FALSE(Expand(
      ZipOf({{"a.txt", "a"}, {.name = "b\n.txt", .bytes = "b", .declared_size = 0x80000000}})));
  EXPECT_FALSE(Expand(
      ZipOf({{"a.txt", "a"}, {.name = "huge.txt", .bytes = "b", .declared_size = 0x80000000}})));
  EXPECT_FALSE(Expand(
      ZipOf({{"a.txt", "a"}, {.name = "more.txt", .bytes = "b", .declared_size = 0xFFFFFFFE}})));
  EXPECT_THAT(log_.entries, ElementsAre(Entry(75, "Path/File access error: b?.txt"),
                                        Entry(7, "Out of memory: huge.txt"),
                                        Entry(7, "Out of memory: more.txt")));
  EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(PackageExpansionTest, ANameAsLongAsTheBufferHasNoEnd) {
  const std::string folder = std::string(120, 'f') + "/" + std::string(120, 'g') + "/";
  EXPECT_TRUE(Expand(ZipOf({{folder + std::string(17, 'n'), "259 characters"}})));
  EXPECT_THAT(log_.entries, IsEmpty());
  files_.AddFile(kArchive, ZipOf({{"a.txt", "a"}, {folder + std::string(18, 'n'), "260"}}));
  EXPECT_FALSE(ExpandZipFile());
  EXPECT_THAT(log_.entries, ElementsAre(Entry(5, "Invalid procedure call or argument: " + folder +
                                                     std::string(18, 'n'))));
  EXPECT_EQ(Bytes("a.txt"), "(missing)");
}

TEST_F(PackageExpansionTest, ANameEndsAtItsFirstZeroByte) {
  EXPECT_TRUE(Expand(ZipOf({{"a.txt\0/../../b.txt"s, "a"}})));
  EXPECT_EQ(Bytes("a.txt"), "a");
  EXPECT_THAT(Names(), ElementsAre("a.txt"));
}

struct Hostile {
  const char* what;
  std::string name;
  std::string logged;
};

void PrintTo(const Hostile& hostile, std::ostream* out) { *out << hostile.what; }

class HostileEntries : public PackageExpansionTest, public testing::WithParamInterface<Hostile> {};

TEST_P(HostileEntries, LeaveNothingBehind) {
  files_.AddFile("C:\\S\\addons\\skins\\kept.txt", "kept");
  const std::vector<std::string> around = files_.Names("C:\\S");
  for (const std::string& bytes : {"evil"s, ""s}) {
    log_.entries.clear();
    EXPECT_FALSE(Expand(
        ZipOf({{"bin/first.txt", "1"}, {"kept.txt", "2"}, {GetParam().name, bytes}, {"z", "3"}})));
    EXPECT_THAT(log_.entries,
                ElementsAre(Entry(75, "Path/File access error: " + GetParam().logged)));
  }
  EXPECT_THAT(Names(), ElementsAre("kept.txt"));
  EXPECT_EQ(Bytes("kept.txt"), "kept");
  EXPECT_EQ(files_.Names("C:\\S"), around);
  EXPECT_THAT(files_.Names("C:\\S\\addons"), ElementsAre("skins"));
  EXPECT_THAT(files_.Names("C:\\"), ElementsAre("S"));
}

INSTANTIATE_TEST_SUITE_P(
    All, HostileEntries,
    testing::Values(Hostile{"parent", "../evil.txt", "..\\evil.txt"},
                    Hostile{"parent written the other way", "..\\evil.txt", "..\\evil.txt"},
                    Hostile{"parent inside", "bin/../../evil.txt", "bin\\..\\..\\evil.txt"},
                    Hostile{"drive", "C:/evil.txt", "C:\\evil.txt"},
                    Hostile{"drive without a folder", "D:evil.txt", "D:evil.txt"},
                    Hostile{"rooted", "/evil.txt", "\\evil.txt"},
                    Hostile{"UNC", "//server/share/evil.txt", "\\\\server\\share\\evil.txt"},
                    Hostile{"device path", "//./C:/evil.txt", "\\\\.\\C:\\evil.txt"},
                    Hostile{"alternate stream", "kept.txt:evil", "kept.txt:evil"},
                    Hostile{"reserved device", "bin/con", "bin\\con"},
                    Hostile{"reserved device with an ending", "nul.txt", "nul.txt"},
                    Hostile{"reserved device as a folder", "com1/evil.txt", "com1\\evil.txt"},
                    Hostile{"control character", "evil\n.txt", "evil?.txt"},
                    Hostile{"full stop at the end", "evil.txt.", "evil.txt."},
                    Hostile{"blank at the end", "evil.txt ", "evil.txt "},
                    Hostile{"blank at the end of a folder", "bin /evil.txt", "bin \\evil.txt"},
                    Hostile{"empty part", "bin//evil.txt", "bin\\\\evil.txt"},
                    Hostile{"no name", "", ""},
                    Hostile{"no UTF-8", "\xC0\xAE\xC0\xAE/evil.txt", "????\\evil.txt"}));

TEST_F(PackageExpansionTest, AFileWithTheNameOfAFolderIsRefused) {
  EXPECT_FALSE(Expand(ZipOf({{"a.txt", "a"}, {"bin/", "bytes"}})));
  EXPECT_THAT(log_.entries, ElementsAre(Entry(75, "Path/File access error: bin\\")));
  EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(PackageExpansionTest, NothingIsWrittenThroughALink) {
  files_.AddFolder("C:\\S\\addons\\skins\\bin\\link");
  files_.SetLink("C:\\S\\addons\\skins\\bin\\link");
  EXPECT_FALSE(Expand(ZipOf({{"a.txt", "a"}, {"bin/link/evil.txt", "evil"}})));
  EXPECT_THAT(log_.entries, ElementsAre(Entry(75, "Path/File access error: bin\\link\\evil.txt")));
  EXPECT_EQ(Bytes("a.txt"), "(missing)");
  EXPECT_TRUE(Expand(ZipOf({{"a.txt", "a"}, {"bin/link/"}, {"bin/link/empty.txt"}})));
  EXPECT_EQ(Bytes("a.txt"), "a");
}

TEST_F(PackageExpansionTest, AFolderThatCannotBeMadeEndsTheExpansion) {
  files_.SetUnwritable("C:\\S\\addons\\skins");
  files_.AddFile(kArchive, ZipOf({{"bin/a.txt", "a"}, {"b.txt", "b"}}));
  EXPECT_FALSE(ExpandZipFile());
  EXPECT_THAT(log_.entries, ElementsAre(Entry(70, "Permission denied")));
  EXPECT_EQ(destination_, "C:\\S\\addons\\skins\\");
}

TEST_F(PackageExpansionTest, AFileThatCannotBeWrittenIsLoggedAndTheWalkGoesOn) {
  files_.AddFile("C:\\S\\addons\\skins\\b.txt", "in use");
  files_.SetInUse("C:\\S\\addons\\skins\\b.txt");
  EXPECT_EQ(files_.waited(), 0U);
  files_.FailWritesTo("C:\\S\\addons\\skins\\bin\\c.txt", RuntimeError::kDiskFull);
  EXPECT_TRUE(Expand(ZipOf({{"a.txt", "a"}, {"b.txt", "b"}, {"bin/c.txt", "c"}, {"d.txt", "d"}})));
  EXPECT_THAT(log_.entries, ElementsAre(Entry(70, "Permission denied: b.txt"),
                                        Entry(61, "Disk full: bin\\c.txt")));
  EXPECT_EQ(Bytes("a.txt"), "a");
  EXPECT_EQ(Bytes("b.txt"), "in use");
  EXPECT_EQ(Bytes("d.txt"), "d");
  EXPECT_EQ(files_.waited(), 1000U);
}

TEST_F(PackageExpansionTest, TheFilesThatCouldNotBeWrittenAreNamed) {
  files_.AddFile("C:\\S\\addons\\skins\\bin\\b.txt", "in use");
  files_.SetHeld("C:\\S\\addons\\skins\\bin\\b.txt", fakes::MemoryFiles::Hold::kReading);
  files_.AddFile(kArchive, ZipOf({{"a.txt", "a"}, {"bin/b.txt", "b"}}));
  PackageExpansion expansion(log_, files_);
  EXPECT_TRUE(expansion.ExpandZipFile(destination_, kArchive));
  EXPECT_THAT(expansion.unwritten(), ElementsAre("bin\\b.txt"));
  files_.SetHeld("C:\\S\\addons\\skins\\bin\\b.txt", fakes::MemoryFiles::Hold::kNone);
  EXPECT_TRUE(expansion.ExpandZipFile(destination_, kArchive));
  EXPECT_THAT(expansion.unwritten(), IsEmpty());
  EXPECT_EQ(Bytes("bin\\b.txt"), "b");
}

TEST_F(PackageExpansionTest, AFileThatIsHeldForAMomentIsTriedAgain) {
  const std::string path = "C:\\S\\addons\\skins\\a.txt";
  files_.AddFile(path, "old");
  files_.SetHeld(path, fakes::MemoryFiles::Hold::kReading);
  files_.while_waiting = [&] {
    if (files_.waited() == 300) {
      files_.SetHeld(path, fakes::MemoryFiles::Hold::kNone);
    }
  };
  EXPECT_TRUE(Expand(ZipOf({{"a.txt", "new"}})));
  EXPECT_EQ(Bytes("a.txt"), "new");
  EXPECT_EQ(files_.waited(), 300U);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(PackageExpansionTest, ALibraryThatIsLoadedIsSetAsideAndSweptOnceItIsNot) {
  files_.AddFile("C:\\S\\addons\\skins\\bin\\a.dll", "old");
  files_.SetHeld("C:\\S\\addons\\skins\\bin\\a.dll", fakes::MemoryFiles::Hold::kLoaded);
  EXPECT_TRUE(Expand(ZipOf({{"bin/a.dll", "new"}})));
  EXPECT_EQ(Bytes("bin\\a.dll"), "new");
  EXPECT_EQ(Bytes("bin\\~kb1-1.tmp"), "old");
  EXPECT_EQ(files_.waited(), 0U);
  EXPECT_THAT(log_.entries, IsEmpty());
  files_.SweepReplacements("C:\\S");
  EXPECT_EQ(Bytes("bin\\~kb1-1.tmp"), "old");
  files_.SetHeld("C:\\S\\addons\\skins\\bin\\~kb1-1.tmp", fakes::MemoryFiles::Hold::kNone);
  files_.SweepReplacements("C:\\S");
  EXPECT_THAT(Names("\\bin"), ElementsAre("a.dll"));
}

TEST_F(PackageExpansionTest, AnArchiveThatTheDownloadObjectStillHoldsIsRead) {
  files_.AddFile(kArchive, ZipOf({{"a.txt", "a"}}));
  files_.SetHeld(kArchive, fakes::MemoryFiles::Hold::kWriting);
  EXPECT_TRUE(ExpandZipFile());
  EXPECT_EQ(Bytes("a.txt"), "a");
}

TEST_F(PackageExpansionTest, AFileInPlaceOfAFolderIsNotAFolder) {
  EXPECT_TRUE(Expand(ZipOf({{"a", "file"}, {"a/b.txt", "b"}, {"c.txt", "c"}})));
  EXPECT_THAT(log_.entries, ElementsAre(Entry(76, "Path not found: a\\b.txt")));
  EXPECT_EQ(Bytes("a"), "file");
  EXPECT_EQ(Bytes("c.txt"), "c");
}

TEST_F(PackageExpansionTest, EveryFailureEndsItOrIsOnlyLogged) {
  const std::string archive = ZipOf({{"a/b/1.txt", "1"}, {"2.txt", "2"}});
  files_.AddFile(kArchive, archive);
  ASSERT_TRUE(ExpandZipFile());
  const std::size_t operations = files_.operation_count();
  for (std::size_t nth = 1; nth <= operations; ++nth) {
    fakes::MemoryFiles files;
    files.AddFolder("C:\\S\\addons\\skins");
    files.AddFile(kArchive, archive);
    files.FailAt(nth, RuntimeError::kPathFileAccessError);
    RecordingErrorLog log;
    std::string destination = "C:\\S\\addons\\skins";
    const bool expanded = PackageExpansion(log, files).ExpandZipFile(destination, kArchive);
    EXPECT_EQ(log.entries.size(), 1U) << nth;
    const bool was_writing = files.operations().at(nth - 1).starts_with("Create C:");
    EXPECT_EQ(expanded, was_writing) << files.operations().at(nth - 1);
    EXPECT_FALSE(files.Bytes(kArchive) != archive) << nth;
  }
}

TEST_F(PackageExpansionTest, AnArchiveThatCanNoLongerBeReadEndsTheExpansion) {
  const std::string archive =
      ZipOf({{"a.txt", "a"}, {"b.txt", std::string(200'000, 'b')}, {"c.txt", "c"}});
  files_.AddFile(kArchive, archive);
  ASSERT_TRUE(ExpandZipFile());
  const auto last = std::ranges::find(files_.operations().rbegin(), files_.operations().rend(),
                                      "ReadAt C:\\S\\Temp\\skins.zip");
  fakes::MemoryFiles files;
  files.AddFolder(destination_);
  files.AddFile(kArchive, archive);
  files.FailAt(static_cast<std::size_t>(files_.operations().rend() - last),
               RuntimeError::kPermissionDenied);
  EXPECT_FALSE(PackageExpansion(log_, files).ExpandZipFile(destination_, kArchive));
  EXPECT_THAT(log_.entries, ElementsAre(Entry(70, "Permission denied")));
  EXPECT_THAT(files.Names(destination_), ElementsAre("a.txt"));
}

}  // namespace
}  // namespace kitbay::install
