#pragma once

#include <string>

namespace kitbay::contract {

/// Makes `path` a symbolic link to the folder `target`. Returns whether it is one now: some systems
/// reserve links for administrators.
bool MakeFolderLink(const std::wstring& path, const std::wstring& target);

}  // namespace kitbay::contract
