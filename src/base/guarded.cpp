#include "base/guarded.h"

#include <new>

#include "base/failure.h"

namespace kitbay::base {
namespace {

Failure AsFailure(const std::exception_ptr& error) {
  try {
    std::rethrow_exception(error);
  } catch (const Failure& failure) {
    return failure;
  } catch (const std::bad_alloc&) {
    return Failure(RuntimeError::kOutOfMemory);
  } catch (const std::exception& other) {
    return {static_cast<std::int32_t>(RuntimeError::kInvalidProcedureCall), other.what()};
  } catch (...) {
    return Failure(RuntimeError::kInvalidProcedureCall);
  }
}

}  // namespace

void LogFailure(ErrorLog& log, const char* procedure, const std::exception_ptr& error) noexcept {
  try {
    const Failure failure = AsFailure(error);
    log.LogError(log.TimeText(), procedure, failure.number(), failure.description());
  } catch (...) {  // NOLINT(bugprone-empty-catch): a log that cannot be written has no log
  }
}

}  // namespace kitbay::base
