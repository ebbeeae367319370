#include "base/failure.h"

#include <gmock/gmock.h>

namespace kitbay::base {
namespace {

struct Classic {
  RuntimeError error;
  std::int32_t number;
  const char* description;
};

class ClassicFailure : public testing::TestWithParam<Classic> {};

TEST_P(ClassicFailure, HasItsNumberAndDescription) {
  const Failure failure(GetParam().error);
  EXPECT_EQ(failure.number(), GetParam().number);
  EXPECT_EQ(failure.description(), GetParam().description);
}

INSTANTIATE_TEST_SUITE_P(
    All, ClassicFailure,
    testing::Values(
        Classic{RuntimeError::kInvalidProcedureCall, 5, "Invalid procedure call or argument"},
        Classic{RuntimeError::kOverflow, 6, "Overflow"},
        Classic{RuntimeError::kOutOfMemory, 7, "Out of memory"},
        Classic{RuntimeError::kSubscriptOutOfRange, 9, "Subscript out of range"},
        Classic{RuntimeError::kDivisionByZero, 11, "Division by zero"},
        Classic{RuntimeError::kTypeMismatch, 13, "Type mismatch"},
        Classic{RuntimeError::kFileNotFound, 53, "File not found"},
        Classic{RuntimeError::kFileAlreadyExists, 58, "File already exists"},
        Classic{RuntimeError::kDiskFull, 61, "Disk full"},
        Classic{RuntimeError::kInputPastEndOfFile, 62, "Input past end of file"},
        Classic{RuntimeError::kPermissionDenied, 70, "Permission denied"},
        Classic{RuntimeError::kPathFileAccessError, 75, "Path/File access error"},
        Classic{RuntimeError::kPathNotFound, 76, "Path not found"},
        Classic{RuntimeError::kObjectVariableNotSet, 91,
                "Object variable or With block variable not set"},
        Classic{RuntimeError::kCannotCreateObject, 429, "ActiveX component can't create object"},
        Classic{RuntimeError::kMemberNotFound, 438,
                "Object doesn't support this property or method"}),
    [](const auto& info) { return "Error" + std::to_string(info.param.number); });

TEST(Failure, NumberThatIsNotClassicHasTheGeneralDescription) {
  EXPECT_EQ(Failure(4711).number(), 4711);
  EXPECT_EQ(Failure(4711).description(), "Application-defined or object-defined error");
}

TEST(Failure, NumberAloneHasItsClassicDescription) {
  EXPECT_EQ(Failure(53).number(), 53);
  EXPECT_EQ(Failure(53).description(), "File not found");
}

TEST(Failure, DetailFollowsTheDescription) {
  const Failure failure(RuntimeError::kFileNotFound, "C:\\Suite\\a.xml");
  EXPECT_EQ(failure.number(), 53);
  EXPECT_EQ(failure.description(), "File not found: C:\\Suite\\a.xml");
}

TEST(Failure, CarriesAnHresultAsANegativeNumber) {
  const Failure failure(static_cast<std::int32_t>(0x80070005), "Access is denied.");
  EXPECT_EQ(failure.number(), -2147024891);
  EXPECT_STREQ(failure.what(), "Access is denied.");
}

}  // namespace
}  // namespace kitbay::base
