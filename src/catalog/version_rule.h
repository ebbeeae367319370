#pragma once

#include <string>
#include <string_view>

namespace kitbay::catalog {

/// The value of the number at the start of `part`; 0 if there is none. Throws 6 (overflow) for a
/// number beyond a double.
double LeadingNumber(std::string_view part);

/// Whether the version `offered` counts as newer than `installed`. Both are parts joined by ".";
/// only the last installed part is compared. Throws 9 (subscript out of range) if `offered` has
/// fewer parts than `installed`.
bool IsNewer(const std::string& installed, const std::string& offered);

}  // namespace kitbay::catalog
