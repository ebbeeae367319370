#pragma once

namespace kitbay::fakes {

/// Who runs the program. Every fake that Windows' rights affect assumes a standard user until a
/// test says otherwise.
enum class User {
  kStandard,       ///< can read, but not write, the machine's keys and the suite's folder
  kAdministrator,  ///< elevated
};

}  // namespace kitbay::fakes
