#pragma once

namespace kitbay::platform::win32 {

/// Whether the user's windows have light writing on a dark ground.
bool AreColoursDark();

}  // namespace kitbay::platform::win32
