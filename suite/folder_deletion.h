#pragma once

#include <string>

namespace ovalink {

/// Deletes the folder at `path` (a full path) and everything below it, without following links.
/// Unless `force`, the first read-only entry stops the deletion with 70; what was deleted by then
/// stays deleted. Fails with 76 if there is no such folder.
void DeleteFolderTree(const std::wstring& path, bool force);

}  // namespace ovalink
