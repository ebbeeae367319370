#pragma once

#include <string_view>

namespace kitbay::catalog {

/// The value of the number at the start of `part`; 0 if there is none. Throws 6 (overflow) for a
/// number beyond a double.
double LeadingNumber(std::string_view part);

/// Whether the version `offered` counts as newer than `installed`. Both are parts joined by ".";
/// only the last installed part is compared. Throws 9 (subscript out of range) if `offered` has
/// fewer parts than `installed`.
bool IsNewer(std::string_view installed, std::string_view offered);

}  // namespace kitbay::catalog
