#pragma once

namespace kitbay::contract {

/// How many milliseconds a test waits for what has to come: enough on a machine that is kept busy,
/// and less than its program has for all tests.
constexpr unsigned long kPatienceMs = 300'000;

}  // namespace kitbay::contract
