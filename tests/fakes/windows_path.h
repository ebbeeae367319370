#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kitbay::fakes {

/// `text` (UTF-8) as the file system and the registry compare names: small letters, those with the
/// accents of Western Europe included.
std::string FoldCase(std::string_view text);

/// A path as Windows takes it apart.
struct WindowsPath {
  std::string drive;               ///< "C:"; the current drive when the path names none
  std::vector<std::string> parts;  ///< without empty, "." and ".." parts

  WindowsPath Parent() const;

  /// The path in one spelling: folded, with "\" between parts; "c:" is a drive's root.
  std::string Key() const;
};

/// Takes `path` apart: both separators, "." and "..", a leading separator or a missing drive for
/// the root of the current drive C:.
WindowsPath ParsePath(std::string_view path);

/// Whether `name` matches `pattern` with "*" and "?", letter case aside.
bool MatchesPattern(std::string_view name, std::string_view pattern);

/// Whether a file or folder may bear this name.
bool IsValidName(std::string_view name);

}  // namespace kitbay::fakes
