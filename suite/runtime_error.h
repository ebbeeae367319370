#pragma once

#include "base/failure.h"

namespace ovalink {

/// Run-time errors that only the suite's objects raise.
kitbay::base::Failure BadFileName();  ///< 52: also of a stream that is closed
kitbay::base::Failure BadFileMode();  ///< 54

}  // namespace ovalink
