#pragma once

#include <cstdint>
#include <limits>

#include "base/failure.h"

namespace kitbay::catalog {

/// Counts the rows of one container, from 1.
class RowNumber {
 public:
  /// The next row's number. Throws 6 (overflow) past 32767.
  std::int16_t Next() {
    if (last_ == std::numeric_limits<std::int16_t>::max()) {
      throw base::Failure(base::RuntimeError::kOverflow);
    }
    return ++last_;
  }

  /// The number given last; 0 before the first.
  std::int16_t Last() const { return last_; }

 private:
  std::int16_t last_ = 0;
};

}  // namespace kitbay::catalog
