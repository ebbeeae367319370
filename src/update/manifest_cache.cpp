#include "update/manifest_cache.h"

#include <cstdint>
#include <string_view>

#include "base/failure.h"
#include "base/text.h"
#include "catalog/manifest_file.h"
#include "catalog/xml_document.h"
#include "catalog/xml_file.h"

namespace kitbay::update {
namespace {

// HRESULT_FROM_WIN32(ERROR_INVALID_DATA)
constexpr std::int32_t kInvalidData = static_cast<std::int32_t>(0x8007000D);

constexpr std::uint64_t kMostBytes = std::uint64_t{64} * 1024 * 1024;

// Throws the failure that tells the user why the file at `path` is no manifest.
void DemandManifest(const platform::Files& files, const std::string& path) {
  if (files.Open(path)->Size() > kMostBytes) {
    throw base::Failure(kInvalidData, "The server's list of components is larger than 64 MB");
  }
  catalog::XmlDocument document;
  const bool is_xml = catalog::TryLoadXml(files, path, document);
  if (!is_xml || std::string_view("components") != catalog::FirstElement(document).name()) {
    throw base::Failure(kInvalidData, "The server's answer is not a list of components");
  }
}

bool IsManifest(const platform::Files& files, const std::string& path) {
  if (!files.Exists(path)) {
    return false;
  }
  try {
    DemandManifest(files, path);
    return true;
  } catch (const base::Failure&) {
    return false;
  }
}

}  // namespace

void ManifestCache::PutAside(const std::string& source) {
  if (IsManifest(files_, Path(source))) {
    Copy(Path(source), CopyPath(source));
  } else {
    PutBack(source);
  }
}

void ManifestCache::Take(const std::string& source) {
  if (!files_.Exists(Path(source))) {
    return;
  }
  try {
    DemandManifest(files_, Path(source));
  } catch (const base::Failure&) {
    files_.Delete(Path(source));
    PutBack(source);
    throw;
  }
  if (files_.Exists(CopyPath(source))) {
    files_.Delete(CopyPath(source));
  }
}

void ManifestCache::PutBack(const std::string& source) {
  if (!files_.Exists(CopyPath(source))) {
    return;
  }
  if (!files_.Exists(Path(source)) || files_.Read(Path(source)) != files_.Read(CopyPath(source))) {
    Copy(CopyPath(source), Path(source));
  }
  files_.Delete(CopyPath(source));
}

bool ManifestCache::IsUnusable(const std::string& source) const {
  return files_.Exists(CopyPath(source)) && !IsManifest(files_, Path(source));
}

void ManifestCache::Copy(const std::string& from, const std::string& to) {
  const platform::LocalTime written = files_.LastModified(from);
  files_.Replace(to, files_.Read(from));
  files_.Redate(to, written);
}

std::string ManifestCache::Path(const std::string& source) const {
  return catalog::ManifestPath(settings_, base::AfterLastSlash(source));
}

}  // namespace kitbay::update
