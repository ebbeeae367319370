#pragma once

namespace kitbay::platform::win32 {

/// Whether the user's windows have light text on a dark background.
bool AreColoursDark();

}  // namespace kitbay::platform::win32
