#pragma once

#include <functional>

#include "base/failure.h"

namespace kitbay::contract {

/// The number of the failure that `step` ends with; 0 if it does not fail.
inline int FailureNumber(const std::function<void()>& step) {
  try {
    step();
  } catch (const base::Failure& failure) {
    return failure.number();
  }
  return 0;
}

}  // namespace kitbay::contract
