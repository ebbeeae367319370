#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "fakes/windows_path.h"
#include "platform/version_resource.h"

namespace kitbay::fakes {

/// The version resources of libraries that a test names; all other paths have none.
class FakeVersionResource : public platform::VersionResource {
 public:
  /// Gives the library at `path` the file version `major.minor.build.revision`.
  void Add(const std::string& path, std::uint16_t major, std::uint16_t minor, std::uint16_t build,
           std::uint16_t revision) {
    versions_[ParsePath(path).Key()] = {(std::uint32_t{major} << 16) | minor,
                                        (std::uint32_t{build} << 16) | revision};
  }

  void Remove(const std::string& path) { versions_.erase(ParsePath(path).Key()); }

  std::optional<platform::FileVersion> Read(const std::string& path) const override {
    const auto version = versions_.find(ParsePath(path).Key());
    if (path.empty() || version == versions_.end()) {
      return std::nullopt;
    }
    return version->second;
  }

 private:
  std::map<std::string, platform::FileVersion> versions_;  ///< by `WindowsPath::Key`
};

}  // namespace kitbay::fakes
