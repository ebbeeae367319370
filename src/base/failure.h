#pragma once

#include <cstdint>
#include <exception>
#include <string>

namespace kitbay::base {

/// The classic run-time error numbers that Kitbay raises itself. Failures that come from COM carry
/// their HRESULT instead.
enum class RuntimeError : std::int32_t {
  kInvalidProcedureCall = 5,
  kOverflow = 6,
  kOutOfMemory = 7,
  kSubscriptOutOfRange = 9,
  kDivisionByZero = 11,
  kTypeMismatch = 13,
  kFileNotFound = 53,
  kFileAlreadyExists = 58,
  kDiskFull = 61,
  kInputPastEndOfFile = 62,
  kPermissionDenied = 70,
  kPathFileAccessError = 75,
  kPathNotFound = 76,
  kObjectVariableNotSet = 91,
  kCannotCreateObject = 429,
  kMemberNotFound = 438,
};

/// A failed step: the number and the description that the error log shows for it.
class Failure : public std::exception {
 public:
  /// `description` is UTF-8; `number` is a run-time error number or an HRESULT.
  Failure(std::int32_t number, std::string description);

  /// A failure with the classic description of a run-time error number, or, for a number that has
  /// none, that of an error which an application defines.
  explicit Failure(std::int32_t number);

  /// A failure with the classic description of `error`.
  explicit Failure(RuntimeError error);

  /// A failure with the classic description of `error`, followed by ": " and `detail`.
  Failure(RuntimeError error, const std::string& detail);

  std::int32_t number() const { return number_; }
  const std::string& description() const { return description_; }
  const char* what() const noexcept override { return description_.c_str(); }

 private:
  std::int32_t number_;
  std::string description_;
};

}  // namespace kitbay::base
