#pragma once

#include <string>

namespace kitbay::base {

/// Whether `name` names a file in a folder and can lead nowhere else: no separator, no drive or
/// stream, no device, no control character, no blank or full stop at its end.
bool IsPlainFileName(const std::string& name);

}  // namespace kitbay::base
