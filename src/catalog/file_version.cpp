#include "catalog/file_version.h"

#include <cstdint>

#include "base/guarded.h"

namespace kitbay::catalog {
namespace {

std::string SignedPart(std::uint32_t word) {
  return std::to_string(static_cast<std::int16_t>(static_cast<std::uint16_t>(word)));
}

std::string TwoParts(std::uint32_t words) {
  return SignedPart(words >> 16U) + "." + SignedPart(words & 0xFFFFU);
}

}  // namespace

std::string FileVersions::GetVersionInfo(const std::string& path) const {
  std::string version = kNoVersion;
  base::guarded(log_, "Kitbay::GetVersionInfo", [&] {
    if (const auto file_version = resources_.Read(path)) {
      version = TwoParts(file_version->most_significant) + "." +
                TwoParts(file_version->least_significant);
    }
  });
  return version;
}

std::string FileVersions::VersionInThisRefresh(const std::string& path) const {
  const CatalogFiles::Refresh refresh(files_);
  const auto known = files_.versions().find(path);
  if (known != files_.versions().end()) {
    return known->second;
  }
  return files_.versions().emplace(path, GetVersionInfo(path)).first->second;
}

std::string FileVersions::OfAddon(const std::string& id, const std::string& filename) const {
  const std::string version =
      VersionInThisRefresh(settings_.InstallFolder + "\\addons\\" + id + "\\" + filename);
  return version == kNoVersion ? OfTransport(filename) : version;
}

std::string FileVersions::OfTransport(const std::string& filename) const {
  return VersionInThisRefresh(settings_.InstallFolder + "\\" + filename);
}

}  // namespace kitbay::catalog
