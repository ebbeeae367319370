#include "catalog/xml_change.h"

#include "base/failure.h"
#include "catalog/xml_file.h"
#include "platform/patience.h"

namespace kitbay::catalog {
namespace {

constexpr int kMostAttempts = 3;

// Returns false if somebody else changed the file meanwhile.
bool ChangeOnce(platform::Files& files, const std::string& path, const XmlChange& change) {
  const std::string before = files.Read(path);
  XmlDocument document;
  ParseXmlToChange(before, path, document);
  return !change(document) || files.ReplaceUnchanged(path, before, XmlBytes(document));
}

}  // namespace

void ChangeXml(platform::Files& files, const std::string& path, const XmlChange& change) {
  for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
    if (platform::WithPatience(files, [&] { return ChangeOnce(files, path, change); })) {
      return;
    }
  }
  throw base::Failure(base::RuntimeError::kPermissionDenied,
                      path + " is being changed by another program");
}

bool TryChangeXml(platform::Files& files, const std::string& path, const XmlChange& change) {
  bool is_loaded = false;
  try {
    ChangeXml(files, path, [&](XmlDocument& document) {
      is_loaded = true;
      return change(document);
    });
  } catch (const base::Failure&) {
    if (is_loaded) {
      throw;
    }
  }
  return is_loaded;
}

}  // namespace kitbay::catalog
