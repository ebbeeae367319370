#include "catalog/manifest_trust.h"

#include <chrono>

#include "base/text.h"
#include "catalog/manifest_signature.h"

namespace kitbay::catalog {
namespace {

// NTE_BAD_SIGNATURE
constexpr auto kBadSignature = static_cast<std::int32_t>(0x80090006);

[[noreturn]] void Refuse(const std::string& manifest, const std::string& why) {
  throw base::Failure(kBadSignature, manifest + " " + why);
}

std::chrono::sys_days DayOf(const platform::LocalTime& time) {
  return std::chrono::year(time.year) / std::chrono::month(static_cast<unsigned>(time.month)) /
         std::chrono::day(static_cast<unsigned>(time.day));
}

ManifestSignature SignatureOf(const std::string& manifest, std::string_view bytes) {
  try {
    if (const auto signature = FindSignature(bytes)) {
      return *signature;
    }
  } catch (const base::Failure&) {
    Refuse(manifest, "has a signature that cannot be read");
  }
  Refuse(manifest, "is not signed");
}

}  // namespace

std::uint64_t ManifestTrust::CheckSignature(const std::string& manifest,
                                            std::string_view bytes) const {
  const SourceKey* const source = sources_.KeyOf(manifest);
  if (source == nullptr) {
    return 0;
  }
  const auto key = ReadKey(source->key);
  if (!key) {
    Refuse(manifest, "cannot be checked: the key of its source is not a key");
  }
  const ManifestSignature signature = SignatureOf(manifest, bytes);
  if (signature.key_id != KeyId(*key)) {
    Refuse(manifest, "is signed with another key");
  }
  if (!IsSignedWith(bytes, signature, *key)) {
    Refuse(manifest, "was changed after it was signed");
  }
  if (base::ToLower(signature.file) != base::ToLower(manifest)) {
    Refuse(manifest, "is signed as " + signature.file);
  }
  if (signature.serial < source->serial) {
    Refuse(manifest, "is number " + std::to_string(signature.serial) +
                         " of its source, older than number " + std::to_string(source->serial) +
                         " seen before");
  }
  if (DayOf(clock_.Now()) > signature.until) {
    Refuse(manifest, "held until " + DateText(signature.until) + " only");
  }
  return signature.serial;
}

void ManifestTrust::LogRefusal(const base::Failure& refusal) const {
  log_.LogError(log_.TimeText(), "Kitbay::CheckSignature", refusal.number(), refusal.description());
}

}  // namespace kitbay::catalog
