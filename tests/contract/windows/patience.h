#pragma once

namespace kitbay::contract {

/// How many milliseconds a test waits for what must happen: enough on a busy machine, and less than
/// its program has for all tests.
constexpr unsigned long kPatienceMs = 300'000;

}  // namespace kitbay::contract
