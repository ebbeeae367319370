#include "update/manifest_cache.h"

#include <cstdint>
#include <string_view>

#include "base/failure.h"
#include "base/guarded.h"
#include "base/text.h"
#include "catalog/manifest_file.h"
#include "catalog/xml_document.h"
#include "catalog/xml_file.h"

namespace kitbay::update {
namespace {

// HRESULT_FROM_WIN32(ERROR_INVALID_DATA)
constexpr std::int32_t kInvalidData = static_cast<std::int32_t>(0x8007000D);

constexpr std::uint64_t kMostBytes = std::uint64_t{64} * 1024 * 1024;

bool IsListOfComponents(const std::string& bytes, const std::string& path) {
  try {
    catalog::XmlDocument document;
    catalog::ParseXml(bytes, path, document);
    return std::string_view("components") == catalog::FirstElement(document).name();
  } catch (const base::Failure&) {
    return false;
  }
}

}  // namespace

// Throws a failure that tells the user why the file of the source is not accepted as its manifest.
// Returns its serial number.
std::uint64_t ManifestCache::Demand(const std::string& source) const {
  const std::string path = Path(source);
  if (files_.Open(path)->Size() > kMostBytes) {
    throw base::Failure(kInvalidData, "The server's list of components is larger than 64 MB");
  }
  const std::string bytes = files_.Read(path);
  if (!IsListOfComponents(bytes, path)) {
    throw base::Failure(kInvalidData, "The server's answer is not a list of components");
  }
  return trust_.CheckSignature(base::AfterLastSlash(source), bytes);
}

bool ManifestCache::MayCount(const std::string& source) const {
  if (!files_.Exists(Path(source))) {
    return false;
  }
  try {
    Demand(source);
    return true;
  } catch (const base::Failure&) {
    return false;
  }
}

void ManifestCache::PutAside(const std::string& source) {
  if (MayCount(source)) {
    Copy(Path(source), CopyPath(source));
  } else {
    PutBack(source);
  }
}

void ManifestCache::Take(const std::string& source) {
  if (!files_.Exists(Path(source))) {
    return;
  }
  std::uint64_t serial = 0;
  try {
    serial = Demand(source);
  } catch (const base::Failure& refusal) {
    if (trust_.IsDemandedOf(base::AfterLastSlash(source))) {
      trust_.LogRefusal(refusal);
    }
    files_.Delete(Path(source));
    PutBack(source);
    throw;
  }
  if (files_.Exists(CopyPath(source))) {
    files_.Delete(CopyPath(source));
  }
  NoteSerial(source, serial);
}

// The manifest itself is good, even if its number cannot be stored for the next run.
void ManifestCache::NoteSerial(const std::string& source, std::uint64_t serial) {
  base::guarded(log_, "Kitbay::CheckSignature",
                [&] { source_file_.NoteSerial(base::AfterLastSlash(source), serial); });
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
  return files_.Exists(CopyPath(source)) && !MayCount(source);
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
