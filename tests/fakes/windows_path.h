#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kitbay::fakes {

/// `text` (UTF-8) as the file system and the registry compare names: in lower case, including
/// letters with the accents of Western Europe.
std::string FoldCase(std::string_view text);

/// A path, parsed as Windows does.
struct WindowsPath {
  std::string drive;               ///< "C:"; the current drive if the path names none
  std::vector<std::string> parts;  ///< without empty, "." and ".." parts

  WindowsPath Parent() const;

  /// The path in a single spelling: folded, with "\" between parts; "c:" is a drive's root.
  std::string Key() const;
};

/// Parses `path`: both separators, "." and ".."; a leading separator or a missing drive stands for
/// the root of the current drive C:.
WindowsPath ParsePath(std::string_view path);

/// Whether `name` matches `pattern` with "*" and "?", ignoring case.
bool MatchesPattern(std::string_view name, std::string_view pattern);

/// Whether a file or folder may have this name.
bool IsValidName(std::string_view name);

}  // namespace kitbay::fakes
