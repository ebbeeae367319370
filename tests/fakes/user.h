#pragma once

namespace kitbay::fakes {

/// Who runs the program. Every fake that Windows' rights bear on takes a standard user for granted
/// until a test says otherwise.
enum class User {
  kStandard,       ///< reads the machine's keys and the suite's folder, writes neither
  kAdministrator,  ///< with an administrator's rights in force
};

}  // namespace kitbay::fakes
