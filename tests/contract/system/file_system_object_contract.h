#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "contract/failure_number.h"
#include "platform/file_system_object.h"

namespace kitbay::contract {

/// A file-system object to test, and the tree on which it works.
class FileSystemObjectWorld {
 public:
  virtual ~FileSystemObjectWorld() = default;
  virtual platform::FileSystemObject& object() = 0;

  /// An empty folder for the test, on drive C:, without a separator at its end.
  virtual std::string folder() const = 0;
  virtual std::string Bytes(const std::string& path) const = 0;
  virtual void AddFile(const std::string& path, const std::string& bytes) = 0;
  virtual void SetReadOnly(const std::string& path, bool read_only) = 0;
};

class FileSystemObjectContract
    : public testing::TestWithParam<std::unique_ptr<FileSystemObjectWorld> (*)()> {
 protected:
  std::string In(const std::string& name) const { return world_->folder() + "\\" + name; }
  platform::FileSystemObject& object() { return world_->object(); }

  std::unique_ptr<FileSystemObjectWorld> world_ = GetParam()();
};

TEST_P(FileSystemObjectContract, FilesAndFoldersAreDistinguished) {
  world_->AddFile(In("Größe.txt"), "");
  object().CreateFolder(In("Ordner"));
  EXPECT_TRUE(object().FileExists(In("GRÖßE.TXT")));
  EXPECT_FALSE(object().FolderExists(In("Größe.txt")));
  EXPECT_TRUE(object().FolderExists(world_->folder() + "/ordner"));
  EXPECT_FALSE(object().FileExists(In("Ordner")));
  EXPECT_FALSE(object().FileExists(In("missing")));
  EXPECT_FALSE(object().FolderExists(In("missing\\missing")));
  EXPECT_FALSE(object().FileExists(""));
  EXPECT_FALSE(object().FolderExists(""));
}

TEST_P(FileSystemObjectContract, CreateFolderReportsWhyItFails) {
  object().CreateFolder(world_->folder() + "/Temp");
  EXPECT_EQ(FailureNumber([&] { object().CreateFolder(In("temp")); }), 58);
  EXPECT_EQ(FailureNumber([&] { object().CreateFolder(In("missing\\sub")); }), 76);
}

TEST_P(FileSystemObjectContract, DeleteFolderTakesAllBelowIt) {
  object().CreateFolder(In("Temp"));
  object().CreateFolder(In("Temp\\sub"));
  world_->AddFile(In("Temp\\a.txt"), "1");
  world_->AddFile(In("Temp\\sub\\ä.txt"), "1");
  object().DeleteFolder(In("Temp"), false);
  EXPECT_FALSE(object().FolderExists(In("Temp")));
  EXPECT_TRUE(object().FolderExists(world_->folder()));
}

TEST_P(FileSystemObjectContract, AReadOnlyFileEndsTheDeletionUnlessItIsForced) {
  object().CreateFolder(In("Temp"));
  world_->AddFile(In("Temp\\kept.txt"), "1");
  world_->SetReadOnly(In("Temp\\kept.txt"), true);
  EXPECT_EQ(FailureNumber([&] { object().DeleteFolder(In("Temp"), false); }), 70);
  EXPECT_EQ(world_->Bytes(In("Temp\\kept.txt")), "1");
  object().DeleteFolder(In("Temp"), true);
  EXPECT_FALSE(object().FolderExists(In("Temp")));
}

TEST_P(FileSystemObjectContract, DeletingAMissingFolderFails) {
  world_->AddFile(In("a.txt"), "1");
  EXPECT_EQ(FailureNumber([&] { object().DeleteFolder(In("missing"), true); }), 76);
  EXPECT_EQ(FailureNumber([&] { object().DeleteFolder(In("a.txt"), true); }), 76);
  EXPECT_EQ(world_->Bytes(In("a.txt")), "1");
}

TEST_P(FileSystemObjectContract, WrittenLinesEndInCrLf) {
  const auto log = object().CreateTextFile(In("Kitbay.log"), true);
  log->WriteLine("first");
  log->Write("sec");
  log->WriteLine("ond");
  log->WriteLine("");
  log->Close();
  EXPECT_EQ(world_->Bytes(In("Kitbay.log")), "first\r\nsecond\r\n\r\n");
}

TEST_P(FileSystemObjectContract, EveryLineIsInTheFileAtOnce) {
  const auto log = object().CreateTextFile(In("Kitbay.log"), true);
  log->WriteLine("first");
  EXPECT_EQ(world_->Bytes(In("Kitbay.log")), "first\r\n");
}

TEST_P(FileSystemObjectContract, CreateTextFileReplacesAnOlderFileOnlyWhenToldTo) {
  world_->AddFile(In("a.txt"), "old and long");
  EXPECT_EQ(FailureNumber([&] { object().CreateTextFile(In("A.txt"), false); }), 58);
  EXPECT_EQ(world_->Bytes(In("a.txt")), "old and long");
  object().CreateTextFile(In("a.txt"), true)->Write("new");
  EXPECT_EQ(world_->Bytes(In("a.txt")), "new");
}

TEST_P(FileSystemObjectContract, CreateTextFileReportsWhyItFails) {
  world_->AddFile(In("a.txt"), "old");
  world_->SetReadOnly(In("a.txt"), true);
  object().CreateFolder(In("sub"));
  const auto failure = [&](const std::string& path) {
    return FailureNumber([&] { object().CreateTextFile(path, true); });
  };
  EXPECT_EQ(failure(In("a.txt")), 70);
  EXPECT_EQ(failure(In("sub")), 70);
  EXPECT_EQ(failure(In("missing\\a.txt")), 76);
  world_->SetReadOnly(In("a.txt"), false);
}

TEST_P(FileSystemObjectContract, LinesAreReadOneByOneToTheEnd) {
  world_->AddFile(In("install.txt"), "1\r\n\r\nTessel 2\nlast");
  const auto text = object().OpenTextFile(In("INSTALL.txt"));
  EXPECT_EQ(text->ReadLine(), "1");
  EXPECT_EQ(text->ReadLine(), "");
  EXPECT_EQ(text->ReadLine(), "Tessel 2");
  EXPECT_EQ(text->ReadLine(), "last");
  EXPECT_EQ(FailureNumber([&] { text->ReadLine(); }), 62);
}

TEST_P(FileSystemObjectContract, AnEmptyTextFileHasNoLine) {
  world_->AddFile(In("install.txt"), "");
  const auto text = object().OpenTextFile(In("install.txt"));
  EXPECT_EQ(FailureNumber([&] { text->ReadLine(); }), 62);
}

TEST_P(FileSystemObjectContract, OpenTextFileReportsWhatIsMissing) {
  EXPECT_EQ(FailureNumber([&] { object().OpenTextFile(In("missing.txt")); }), 53);
  EXPECT_EQ(FailureNumber([&] { object().OpenTextFile(In("missing\\a.txt")); }), 76);
}

}  // namespace kitbay::contract
