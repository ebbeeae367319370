#pragma once

#include <string>

namespace ovalink {

/// Deletes the folder at `path` (a full path) and all below it, without following links. Unless
/// `force`, what is read-only ends the deletion with 70; what was deleted by then stays deleted.
/// Fails with 76 when there is no such folder.
void DeleteFolderTree(const std::wstring& path, bool force);

}  // namespace ovalink
