#include "catalog/xml_change.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "contract/failure_number.h"
#include "fakes/memory_files.h"

namespace kitbay::catalog {
namespace {

using contract::FailureNumber;
using fakes::MemoryFiles;

constexpr const char* kChanged = "C:\\S\\a.xml";

class XmlChanges : public testing::Test {
 protected:
  XmlChanges() { files_.AddFile(kChanged, "<root><a/></root>"); }

  /// Appends an element to the file's root.
  int Append(const char* name) {
    return FailureNumber([&] {
      ChangeXml(files_, kChanged, [&](XmlDocument& document) {
        ++calls_;
        document.child("root").append_child(name);
        return true;
      });
    });
  }
  std::string File() const { return files_.Bytes(kChanged).value_or("(none)"); }

  MemoryFiles files_;
  int calls_ = 0;
};

TEST_F(XmlChanges, AreSaved) {
  EXPECT_EQ(Append("b"), 0);
  EXPECT_EQ(File(), "<root><a/><b/></root>");
  EXPECT_EQ(calls_, 1);
}

TEST_F(XmlChanges, ThatChangeNothingAreNotSaved) {
  files_.SetReadOnly(kChanged);
  ChangeXml(files_, kChanged, [](XmlDocument& /*document*/) { return false; });
  EXPECT_EQ(File(), "<root><a/></root>");
}

TEST_F(XmlChanges, KeepWhatAnotherProgramChangedInTheMeantime) {
  files_.before_replacing = [&] {
    if (calls_ < 3) {
      files_.AddFile(kChanged, "<root><theirs n='" + std::to_string(calls_) + "'/></root>");
    }
  };
  EXPECT_EQ(Append("b"), 0);
  EXPECT_EQ(File(), "<root><theirs n=\"2\"/><b/></root>");
  EXPECT_EQ(calls_, 3);
}

TEST_F(XmlChanges, EndAfterTheThirdTimeWithTheOthersFile) {
  files_.before_replacing = [&] {
    files_.AddFile(kChanged, "<root><theirs n='" + std::to_string(calls_) + "'/></root>");
  };
  EXPECT_EQ(Append("b"), 70);
  EXPECT_EQ(File(), "<root><theirs n='3'/></root>");
  EXPECT_EQ(calls_, 3);
}

TEST_F(XmlChanges, WaitForWhoHoldsTheFileAndMakeTheChangeToWhatTheyLeft) {
  files_.SetHeld(kChanged, MemoryFiles::Hold::kWriting);
  files_.while_waiting = [&] {
    if (files_.waited() == 500) {
      files_.AddFile(kChanged, "<root><theirs/></root>");
      files_.SetHeld(kChanged, MemoryFiles::Hold::kNone);
    }
  };
  EXPECT_EQ(Append("b"), 0);
  EXPECT_EQ(File(), "<root><theirs/><b/></root>");
  EXPECT_EQ(files_.waited(), 500U);
}

TEST_F(XmlChanges, WaitForASecondAndNoLonger) {
  files_.SetInUse(kChanged);
  EXPECT_EQ(Append("b"), 70);
  EXPECT_EQ(files_.waited(), 1000U);
  EXPECT_EQ(calls_, 0);
}

TEST_F(XmlChanges, DoNotWaitWhereWritingIsForbidden) {
  files_.SetReadOnly(kChanged);
  EXPECT_EQ(Append("b"), 70);
  EXPECT_EQ(files_.waited(), 0U);
}

TEST_F(XmlChanges, AreTriedOnlyOnAFileThatLoads) {
  const auto change = [](XmlDocument& document) {
    document.child("root").append_child("b");
    return true;
  };
  EXPECT_TRUE(TryChangeXml(files_, kChanged, change));
  EXPECT_FALSE(TryChangeXml(files_, "C:\\S\\missing.xml", change));
  files_.FailWritesTo(kChanged, base::RuntimeError::kDiskFull);
  EXPECT_EQ(FailureNumber([&] { TryChangeXml(files_, kChanged, change); }), 61);
}

}  // namespace
}  // namespace kitbay::catalog
