#pragma once

#include <cstdint>
#include <string>

#include "base/failure.h"

namespace kitbay::platform::win32 {

/// The failure of a file operation that ended with the system's `error`: 53, 76, 70, 61 or 75.
base::Failure FileFailure(std::uint32_t error);

/// Throws that failure, as a `FileInUse` if the error says that another program holds the file.
[[noreturn]] void RaiseFileFailure(std::uint32_t error);

/// The system's own number and description of `error`. The description may name `subject`.
base::Failure SystemFailure(std::uint32_t error, const std::string& subject);

}  // namespace kitbay::platform::win32
