#pragma once

#include <cstdint>
#include <string>

#include "base/failure.h"

namespace kitbay::platform::win32 {

/// What a file operation that ended with the system's `error` fails with: 53, 76, 70, 61 or 75.
base::Failure FileFailure(std::uint32_t error);

/// Throws that failure, as a `FileInUse` where the error says that another program holds the file.
[[noreturn]] void RaiseFileFailure(std::uint32_t error);

/// The system's own number and description of `error`. `subject` is what the description may name.
base::Failure SystemFailure(std::uint32_t error, const std::string& subject);

}  // namespace kitbay::platform::win32
