#include "base/failure.h"

#include <utility>

namespace kitbay::base {
namespace {

const char* ClassicDescription(RuntimeError error) {
  switch (error) {
    case RuntimeError::kInvalidProcedureCall:
      return "Invalid procedure call or argument";
    case RuntimeError::kOverflow:
      return "Overflow";
    case RuntimeError::kOutOfMemory:
      return "Out of memory";
    case RuntimeError::kSubscriptOutOfRange:
      return "Subscript out of range";
    case RuntimeError::kDivisionByZero:
      return "Division by zero";
    case RuntimeError::kTypeMismatch:
      return "Type mismatch";
    case RuntimeError::kFileNotFound:
      return "File not found";
    case RuntimeError::kFileAlreadyExists:
      return "File already exists";
    case RuntimeError::kDiskFull:
      return "Disk full";
    case RuntimeError::kInputPastEndOfFile:
      return "Input past end of file";
    case RuntimeError::kPermissionDenied:
      return "Permission denied";
    case RuntimeError::kPathFileAccessError:
      return "Path/File access error";
    case RuntimeError::kPathNotFound:
      return "Path not found";
    case RuntimeError::kObjectVariableNotSet:
      return "Object variable or With block variable not set";
    case RuntimeError::kCannotCreateObject:
      return "ActiveX component can't create object";
    case RuntimeError::kMemberNotFound:
      return "Object doesn't support this property or method";
  }
  return "Application-defined or object-defined error";
}

}  // namespace

Failure::Failure(std::int32_t number, std::string description)
    : number_(number), description_(std::move(description)) {}

Failure::Failure(RuntimeError error)
    : Failure(static_cast<std::int32_t>(error), ClassicDescription(error)) {}

Failure::Failure(RuntimeError error, const std::string& detail)
    : Failure(static_cast<std::int32_t>(error),
              std::string(ClassicDescription(error)) + ": " + detail) {}

}  // namespace kitbay::base
