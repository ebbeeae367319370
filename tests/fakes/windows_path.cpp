#include "fakes/windows_path.h"

namespace kitbay::fakes {
namespace {

bool MatchesFolded(std::string_view name, std::string_view pattern) {
  if (pattern.empty()) {
    return name.empty();
  }
  if (pattern.front() == '*') {
    return MatchesFolded(name, pattern.substr(1)) ||
           (!name.empty() && MatchesFolded(name.substr(1), pattern));
  }
  return !name.empty() && (pattern.front() == '?' || pattern.front() == name.front()) &&
         MatchesFolded(name.substr(1), pattern.substr(1));
}

}  // namespace

std::string FoldCase(std::string_view text) {
  std::string folded(text);
  for (std::size_t i = 0; i < folded.size(); ++i) {
    const auto byte = static_cast<unsigned char>(folded[i]);
    if (byte >= 'A' && byte <= 'Z') {
      folded[i] = static_cast<char>(byte + ('a' - 'A'));
    }
    // U+00C0 to U+00DE except the multiplication sign: À to Þ.
    const bool after_c3 = i > 0 && static_cast<unsigned char>(folded[i - 1]) == 0xC3;
    if (after_c3 && byte >= 0x80 && byte <= 0x9E && byte != 0x97) {
      folded[i] = static_cast<char>(byte + 0x20);
    }
  }
  return folded;
}

WindowsPath WindowsPath::Parent() const {
  WindowsPath parent = *this;
  if (!parent.parts.empty()) {
    parent.parts.pop_back();
  }
  return parent;
}

std::string WindowsPath::Key() const {
  std::string key = drive;
  for (const std::string& part : parts) {
    key += "\\" + part;
  }
  return FoldCase(key);
}

WindowsPath ParsePath(std::string_view path) {
  WindowsPath parsed{"C:", {}};
  if (path.size() >= 2 && path[1] == ':') {
    parsed.drive = path.substr(0, 2);
    path.remove_prefix(2);
  }
  while (!path.empty()) {
    const auto end = path.find_first_of("\\/");
    const std::string_view part = path.substr(0, end);
    path = end == std::string_view::npos ? std::string_view{} : path.substr(end + 1);
    if (part == "..") {
      parsed = parsed.Parent();
    } else if (!part.empty() && part != ".") {
      parsed.parts.emplace_back(part);
    }
  }
  return parsed;
}

bool MatchesPattern(std::string_view name, std::string_view pattern) {
  return MatchesFolded(FoldCase(name), FoldCase(pattern));
}

bool IsValidName(std::string_view name) {
  for (const char letter : name) {
    if (static_cast<unsigned char>(letter) < 0x20 ||
        std::string_view("<>\"|*?:").find(letter) != std::string_view::npos) {
      return false;
    }
  }
  return !name.empty();
}

}  // namespace kitbay::fakes
