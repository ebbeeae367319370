#pragma once

#include <cstdint>

#include "base/failure.h"

namespace kitbay::platform::win32 {

/// What a file operation that ended with the system's `error` fails with: 53, 76, 70, 61 or 75.
base::Failure FileFailure(std::uint32_t error);

}  // namespace kitbay::platform::win32
