#pragma once

#include <string>

namespace kitbay::base {

/// Whether `name` can only name a file in the folder at hand: it has no separator, drive, stream,
/// device or control character, and no blank or full stop at its end.
bool IsPlainFileName(const std::string& name);

/// Whether, besides, `name` has no "~": it cannot be the short name of another file or folder.
bool IsPlainLongName(const std::string& name);

}  // namespace kitbay::base
