#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/error_log.h"
#include "base/failure.h"
#include "catalog/update_source_list.h"
#include "platform/clock.h"

namespace kitbay::catalog {

/// Checks the manifests of sources that sign them.
class ManifestTrust {
 public:
  ManifestTrust(base::ErrorLog& log, const platform::Clock& clock, const UpdateSourceList& sources)
      : log_(log), clock_(clock), sources_(sources) {}

  /// Whether the manifest with that file name must be signed.
  bool IsDemandedOf(const std::string& manifest) const {
    return sources_.KeyOf(manifest) != nullptr;
  }

  /// Throws `base::Failure`, whose description says what is wrong, unless `bytes` may count as the
  /// manifest of that file name: signed with its source's key under that name, not older than one
  /// seen before, not past its last day. A source without a key may give any bytes. Returns the
  /// serial number; 0 where none is demanded.
  std::uint64_t CheckSignature(const std::string& manifest, std::string_view bytes) const;

  /// Logs the failure of `CheckSignature`.
  void LogRefusal(const base::Failure& refusal) const;

 private:
  base::ErrorLog& log_;
  const platform::Clock& clock_;
  const UpdateSourceList& sources_;
};

}  // namespace kitbay::catalog
