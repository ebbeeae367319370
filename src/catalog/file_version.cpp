#include "catalog/file_version.h"

#include <array>
#include <cstdint>

#include "base/guarded.h"

namespace kitbay::catalog {
namespace {

using base::ComponentKind;

std::string SignedPart(std::uint32_t word) {
  return std::to_string(static_cast<std::int16_t>(static_cast<std::uint16_t>(word)));
}

std::string VersionText(const platform::FileVersion& version) {
  const std::array words = {version.most_significant >> 16U, version.most_significant & 0xFFFFU,
                            version.least_significant >> 16U, version.least_significant & 0xFFFFU};
  std::string text;
  for (const std::uint32_t word : words) {
    text.append(text.empty() ? "" : ".").append(SignedPart(word));
  }
  return text;
}

}  // namespace

std::string FileVersions::GetVersionInfo(const std::string& path) const {
  std::string version = kNoVersion;
  base::guarded(log_, "Kitbay::GetVersionInfo", [&] {
    if (const auto file_version = resources_.Read(path)) {
      version = VersionText(*file_version);
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
  if (entry.version_of_library.empty()) {
    entry.version_of_library =
        kind == ComponentKind::kAddon ? OfAddon(Needed(entry.id), filename) : OfTransport(filename);
  }
  return entry.version_of_library;
}

}  // namespace kitbay::catalog
