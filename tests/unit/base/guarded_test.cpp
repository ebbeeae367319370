#include "base/guarded.h"

#include <gmock/gmock.h>

#include <new>
#include <stdexcept>

#include "base/failure.h"
#include "fakes/recording_error_log.h"

namespace kitbay::base {
namespace {

using fakes::Entry;
using fakes::RecordingErrorLog;
using testing::ElementsAre;
using testing::IsEmpty;

class Guarded : public testing::Test {
 protected:
  template <typename Thrown>
  bool RunThrowing(const Thrown& thrown) {
    return guarded(log_, "Kitbay::Procedure", [&] { throw thrown; });
  }

  RecordingErrorLog log_;
};

TEST_F(Guarded, BodyThatRunsToItsEndLogsNothing) {
  bool ran = false;
  EXPECT_TRUE(guarded(log_, "Kitbay::Procedure", [&] { ran = true; }));
  EXPECT_TRUE(ran);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(Guarded, FailureIsLoggedOnceUnderTheProceduresText) {
  EXPECT_FALSE(RunThrowing(Failure(RuntimeError::kPathNotFound)));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::Procedure", 76, "Path not found")));
}

TEST_F(Guarded, FailureEndsTheBodyWhereItHappened) {
  bool went_on = false;
  guarded(log_, "Kitbay::Procedure", [&] {
    throw Failure(RuntimeError::kOverflow);
    went_on = true;
  });
  EXPECT_FALSE(went_on);
}

TEST_F(Guarded, TextOfTheProcedureIsKeptAsItIs) {
  guarded(log_, " Kitbay::odd ", [] { throw Failure(RuntimeError::kOverflow); });
  EXPECT_THAT(log_.entries, ElementsAre(Entry(" Kitbay::odd ", 6, "Overflow")));
}

TEST_F(Guarded, HresultIsLoggedAsANegativeNumber) {
  RunThrowing(Failure(static_cast<std::int32_t>(0x80004005), ""));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::Procedure", -2147467259, "")));
}

TEST_F(Guarded, LackOfMemoryIsErrorSeven) {
  EXPECT_FALSE(RunThrowing(std::bad_alloc()));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::Procedure", 7, "Out of memory")));
}

TEST_F(Guarded, OtherStandardExceptionIsErrorFiveWithItsOwnText) {
  EXPECT_FALSE(RunThrowing(std::out_of_range("index 3 of 2")));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::Procedure", 5, "index 3 of 2")));
}

TEST_F(Guarded, ExceptionOfUnknownTypeIsErrorFive) {
  EXPECT_FALSE(RunThrowing(42));
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::Procedure", 5, "Invalid procedure call or argument")));
}

TEST_F(Guarded, FailureOfAnInnerProcedureDoesNotEndTheOuterOne) {
  bool went_on = false;
  EXPECT_TRUE(guarded(log_, "Kitbay::Outer", [&] {
    guarded(log_, "Kitbay::Inner", [] { throw Failure(RuntimeError::kOverflow); });
    went_on = true;
  }));
  EXPECT_TRUE(went_on);
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::Inner", 6, "Overflow")));
}

TEST_F(Guarded, WhatWasSetBeforeTheFailureStays) {
  std::string result = "before";
  guarded(log_, "Kitbay::Procedure", [&] {
    result = "set";
    throw Failure(RuntimeError::kOverflow);
  });
  EXPECT_EQ(result, "set");
}

TEST_F(Guarded, UnwritableLogIsNotAFailure) {
  log_.failure = std::make_exception_ptr(Failure(RuntimeError::kDiskFull));
  EXPECT_FALSE(RunThrowing(Failure(RuntimeError::kOverflow)));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(Guarded, UnreadableClockIsNotAFailure) {
  log_.time_failure = std::make_exception_ptr(42);
  EXPECT_FALSE(RunThrowing(Failure(RuntimeError::kOverflow)));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(Guarded, LogTakesEntriesAgainOnceItCanBeWritten) {
  log_.failure = std::make_exception_ptr(Failure(RuntimeError::kDiskFull));
  RunThrowing(Failure(RuntimeError::kOverflow));
  log_.failure = nullptr;
  RunThrowing(Failure(RuntimeError::kTypeMismatch));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::Procedure", 13, "Type mismatch")));
}

}  // namespace
}  // namespace kitbay::base
