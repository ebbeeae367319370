#include "app/error_log_file.h"

#include <gmock/gmock.h>

#include <limits>

#include "base/failure.h"
#include "base/guarded.h"
#include "contract/failure_number.h"
#include "fakes/fake_clock.h"
#include "fakes/memory_files.h"

namespace kitbay::app {
namespace {

using base::Failure;
using base::RuntimeError;
using contract::FailureNumber;
using ::testing::StartsWith;

constexpr const char* kPath = "C:\\Ovalink\\KitbayLog.log";
constexpr const char* kSeparatorLine =
    "=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-="
    "\r\n";

class ErrorLogFileTest : public ::testing::Test {
 protected:
  ErrorLogFileTest() {
    files_.SetEverybodys("C:\\Ovalink");
    files_.AddFolder("C:\\Ovalink");
  }

  std::string Bytes() const { return files_.Bytes(kPath).value_or("(none)"); }

  /// The contents of the log after its header.
  std::string Entries() const {
    const std::string bytes = Bytes();
    return bytes.substr(bytes.find("\r\n") + 2);
  }

  fakes::FakeClock clock_{{2026, 11, 21, 10, 15, 30}};
  fakes::MemoryFiles files_;
  fakes::MemoryFileSystemObject file_system_{files_};
  ErrorLogFile log_{clock_};
};

TEST_F(ErrorLogFileTest, TheHeaderFollowsItsColonWithoutABlank) {
  log_.Open(file_system_, kPath);
  EXPECT_EQ(Bytes(), "Log Date :11/21/2026 10:15:30 AM\r\n");
}

TEST_F(ErrorLogFileTest, TheHeaderAtMidnightIsTheDateAlone) {
  clock_.SetNow({2026, 11, 21, 0, 0, 0});
  log_.Open(file_system_, kPath);
  EXPECT_EQ(Bytes(), "Log Date :11/21/2026\r\n");
}

TEST_F(ErrorLogFileTest, AnEntryHasFourLines) {
  log_.Open(file_system_, kPath);
  log_.LogError("3/4/2027 1:02:03 PM", "Kitbay::CheckPreferences", 91, "Not set");
  EXPECT_EQ(
      Entries(),
      "=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-="
      "-=\r\n"
      "[3/4/2027 1:02:03 PM]   [91]\r\n"
      "                         [Source:-  Kitbay::CheckPreferences]\r\n"
      "                         [Description:-  Not set]\r\n");
}

TEST_F(ErrorLogFileTest, TheSeparatorHas91Characters) {
  log_.Open(file_system_, kPath);
  log_.LogError("T", "P", 1, "D");
  const std::string separator = Entries().substr(0, Entries().find("\r\n"));
  std::string expected;
  for (int i = 0; i < 45; ++i) {
    expected += "=-";
  }
  expected += "=";
  EXPECT_EQ(expected.size(), 91U);
  EXPECT_EQ(separator, expected);
}

TEST_F(ErrorLogFileTest, AnEntryHasFourLinesWhateverItsDescriptionHolds) {
  log_.Open(file_system_, kPath);
  log_.LogError("now", "Kitbay::x", 5, "one\r\ntwo\tthree");
  EXPECT_THAT(Entries(), ::testing::EndsWith("[Source:-  Kitbay::x]\r\n                         "
                                             "[Description:-  one  two three]\r\n"));
}

TEST_F(ErrorLogFileTest, ANegativeNumberHasAMinusSign) {
  log_.Open(file_system_, kPath);
  log_.LogError("T", "P", static_cast<std::int32_t>(0x80070005), "D");
  log_.LogError("T", "P", std::numeric_limits<std::int32_t>::min(), "D");
  const std::string rest =
      "                         [Source:-  P]\r\n"
      "                         [Description:-  D]\r\n";
  EXPECT_EQ(Entries(), std::string(kSeparatorLine) + "[T]   [-2147024891]\r\n" + rest +
                           kSeparatorLine + "[T]   [-2147483648]\r\n" + rest);
}

TEST_F(ErrorLogFileTest, AnEmptyDescriptionStillHasItsLine) {
  log_.Open(file_system_, kPath);
  log_.LogError("T", "P", 1, "");
  EXPECT_EQ(Entries(), std::string(kSeparatorLine) +
                           "[T]   [1]\r\n"
                           "                         [Source:-  P]\r\n"
                           "                         [Description:-  ]\r\n");
}

TEST_F(ErrorLogFileTest, BlanksOfTheProcedureTextAreKept) {
  log_.Open(file_system_, kPath);
  log_.LogError("T", " Kitbay::doc_ondragstart", 1, "D");
  log_.LogError("T", "Kitbay::ShowOnlyInstalled ", 1, "D");
  EXPECT_THAT(Entries(), ::testing::HasSubstr("[Source:-   Kitbay::doc_ondragstart]\r\n"));
  EXPECT_THAT(Entries(), ::testing::HasSubstr("[Source:-  Kitbay::ShowOnlyInstalled ]\r\n"));
}

TEST_F(ErrorLogFileTest, EntriesStandInTheOrderInWhichTheyWereMade) {
  log_.Open(file_system_, kPath);
  log_.LogError("T", "First", 1, "D");
  const std::string first = Entries();
  log_.LogError("T", "Second", 2, "D");
  EXPECT_THAT(Entries(), StartsWith(first + kSeparatorLine + "[T]   [2]\r\n"));
}

TEST_F(ErrorLogFileTest, TextIsWrittenByteForByte) {
  log_.Open(file_system_, kPath);
  log_.LogError("T", "P", 1, "gr\xC3\xBC\xC3\x9F");
  EXPECT_THAT(Entries(), ::testing::EndsWith("[Description:-  gr\xC3\xBC\xC3\x9F]\r\n"));
}

TEST_F(ErrorLogFileTest, EachStartTruncatesTheLogBefore) {
  log_.Open(file_system_, kPath);
  log_.LogError("T", "P", 1, "D");
  log_.Close();
  clock_.SetNow({2026, 11, 22, 23, 0, 1});
  ErrorLogFile next(clock_);
  next.Open(file_system_, kPath);
  EXPECT_EQ(Bytes(), "Log Date :11/22/2026 11:00:01 PM\r\n");
}

TEST_F(ErrorLogFileTest, NothingIsWrittenBeforeTheLogIsOpen) {
  log_.LogError("T", "P", 1, "D");
  EXPECT_EQ(files_.operation_count(), 0U);
  log_.Open(file_system_, kPath);
  EXPECT_EQ(Entries(), "");
}

TEST_F(ErrorLogFileTest, NothingIsWrittenOnceTheLogIsClosed) {
  log_.Open(file_system_, kPath);
  log_.Close();
  const std::size_t operations = files_.operation_count();
  log_.LogError("T", "P", 1, "D");
  log_.Close();
  EXPECT_EQ(files_.operation_count(), operations);
  EXPECT_EQ(Entries(), "");
}

TEST_F(ErrorLogFileTest, CloseClosesTheFile) {
  log_.Open(file_system_, kPath);
  log_.Close();
  EXPECT_EQ(files_.operations().back(), std::string("fso.Close ") + kPath);
}

TEST_F(ErrorLogFileTest, ALogThatCannotBeCreatedIsNotOpen) {
  EXPECT_EQ(FailureNumber([&] { log_.Open(file_system_, "C:\\Gone\\KitbayLog.log"); }), 76);
  files_.SetUnwritable("C:\\Ovalink");
  EXPECT_EQ(FailureNumber([&] { log_.Open(file_system_, kPath); }), 70);
  const std::size_t operations = files_.operation_count();
  log_.LogError("T", "P", 1, "D");
  EXPECT_EQ(files_.operation_count(), operations);
}

TEST_F(ErrorLogFileTest, ALogWithoutItsHeaderIsNotOpen) {
  files_.FailAt(2, RuntimeError::kDiskFull);
  EXPECT_EQ(FailureNumber([&] { log_.Open(file_system_, kPath); }), 61);
  log_.LogError("T", "P", 1, "D");
  EXPECT_EQ(Bytes(), "");
}

TEST_F(ErrorLogFileTest, AFailedWriteRaisesToTheCaller) {
  log_.Open(file_system_, kPath);
  files_.FailWritesTo(kPath, RuntimeError::kDiskFull);
  EXPECT_EQ(FailureNumber([&] { log_.LogError("T", "P", 1, "D"); }), 61);
}

TEST_F(ErrorLogFileTest, OnlyTheFirstErrorOfAProcedureIsLogged) {
  log_.Open(file_system_, kPath);
  base::guarded(log_, "Kitbay::Sample", [] {
    throw Failure(5, "first");
    throw Failure(6, "second");
  });
  EXPECT_EQ(Entries(), std::string(kSeparatorLine) +
                           "[11/21/2026 10:15:30 AM]   [5]\r\n"
                           "                         [Source:-  Kitbay::Sample]\r\n"
                           "                         [Description:-  first]\r\n");
}

TEST_F(ErrorLogFileTest, AnEntryHasTheTimeOfItsError) {
  log_.Open(file_system_, kPath);
  clock_.SetNow({2026, 11, 21, 12, 0, 5});
  base::guarded(log_, "Kitbay::Sample", [] { throw Failure(5, ""); });
  EXPECT_THAT(Entries(),
              StartsWith(std::string(kSeparatorLine) + "[11/21/2026 12:00:05 PM]   [5]\r\n"));
}

}  // namespace
}  // namespace kitbay::app
