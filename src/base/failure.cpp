#include "base/failure.h"

#include <array>
#include <utility>

namespace kitbay::base {
namespace {

struct Classic {
  RuntimeError error;
  const char* description;
};

constexpr auto kClassics = std::to_array<Classic>({
    {RuntimeError::kInvalidProcedureCall, "Invalid procedure call or argument"},
    {RuntimeError::kOverflow, "Overflow"},
    {RuntimeError::kOutOfMemory, "Out of memory"},
    {RuntimeError::kSubscriptOutOfRange, "Subscript out of range"},
    {RuntimeError::kDivisionByZero, "Division by zero"},
    {RuntimeError::kTypeMismatch, "Type mismatch"},
    {RuntimeError::kFileNotFound, "File not found"},
    {RuntimeError::kFileAlreadyExists, "File already exists"},
    {RuntimeError::kDiskFull, "Disk full"},
    {RuntimeError::kInputPastEndOfFile, "Input past end of file"},
    {RuntimeError::kPermissionDenied, "Permission denied"},
    {RuntimeError::kPathFileAccessError, "Path/File access error"},
    {RuntimeError::kPathNotFound, "Path not found"},
    {RuntimeError::kObjectVariableNotSet, "Object variable or With block variable not set"},
    {RuntimeError::kCannotCreateObject, "ActiveX component can't create object"},
    {RuntimeError::kMemberNotFound, "Object doesn't support this property or method"},
});

const char* ClassicDescription(std::int32_t number) {
  for (const Classic& classic : kClassics) {
    if (static_cast<std::int32_t>(classic.error) == number) {
      return classic.description;
    }
  }
  return "Application-defined or object-defined error";
}

}  // namespace

Failure::Failure(std::int32_t number, std::string description)
    : number_(number), description_(std::move(description)) {}

Failure::Failure(std::int32_t number) : Failure(number, ClassicDescription(number)) {}

Failure::Failure(RuntimeError error) : Failure(static_cast<std::int32_t>(error)) {}

Failure::Failure(RuntimeError error, const std::string& detail)
    : Failure(static_cast<std::int32_t>(error),
              ClassicDescription(static_cast<std::int32_t>(error)) + (": " + detail)) {}

}  // namespace kitbay::base
