#include "catalog/file_version.h"

#include <cstdint>

#include "base/guarded.h"

namespace kitbay::catalog {
namespace {

using base::ComponentKind;

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

std::string FileVersions::OfAddon(std::string_view id, std::string_view filename) const {
  std::string path = settings_.InstallFolder;
  path.append("\\addons\\").append(id).append("\\").append(filename);
  std::string version = GetVersionInfo(path);
  return version == kNoVersion ? OfTransport(filename) : version;
}

std::string FileVersions::OfTransport(std::string_view filename) const {
  std::string path = settings_.InstallFolder;
  path.append("\\").append(filename);
  return GetVersionInfo(path);
}

std::string_view FileVersions::Of(ComponentKind kind, InstalledEntry& entry) const {
  if (kind == ComponentKind::kChannel) {
    return Needed(entry.version);
  }
  const std::string_view filename = Needed(entry.filename);
  if (entry.library_version.empty()) {
    entry.library_version =
        kind == ComponentKind::kAddon ? OfAddon(Needed(entry.id), filename) : OfTransport(filename);
  }
  return entry.library_version;
}

}  // namespace kitbay::catalog
