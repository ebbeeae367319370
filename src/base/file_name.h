#pragma once

#include <string>

namespace kitbay::base {

/// Whether `name` can only name a file in the current folder: it contains no separator, drive,
/// stream, device or control character, and does not end in a blank or a full stop.
bool IsPlainFileName(const std::string& name);

/// Whether `name` is plain and contains no "~", so it cannot be the short name of another file or
/// folder.
bool IsPlainLongName(const std::string& name);

}  // namespace kitbay::base
