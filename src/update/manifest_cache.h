#pragma once

#include <cstdint>
#include <string>

#include "base/error_log.h"
#include "base/settings.h"
#include "catalog/manifest_trust.h"
#include "platform/files.h"
#include "update/update_source_file.h"

namespace kitbay::update {

/// The manifests on disk while their sources are asked. The download object writes an answer over
/// the previous manifest, so a copy of that is made first. The copy replaces the answer again, with
/// its own time, if the answer is not a manifest or the transfer fails. Sources are written as in
/// the user's list. Failures are those of `Files`.
class ManifestCache {
 public:
  ManifestCache(base::ErrorLog& log, platform::Files& files, const base::Settings& settings,
                const catalog::ManifestTrust& trust, UpdateSourceFile& source_file)
      : log_(log), files_(files), settings_(settings), trust_(trust), source_file_(source_file) {}

  /// Before `source` is asked: copies its manifest, if there is one. If the program ended before it
  /// checked an answer that is not a manifest, restores the previous manifest first.
  void PutAside(const std::string& source);

  /// Accepts what has arrived from `source`. If that is not a manifest, or not an acceptable one of
  /// a source that signs, restores the previous one, or deletes the answer if there was none, and
  /// throws a `base::Failure` whose description tells the user why. Without any file there is
  /// nothing to check.
  void Take(const std::string& source);

  /// After a failed transfer: restores the previous manifest.
  void PutBack(const std::string& source);

  /// Whether the file of `source` is an answer that the program has not checked, and not a
  /// manifest.
  bool IsUnusable(const std::string& source) const;

 private:
  std::uint64_t Demand(const std::string& source) const;
  bool MayCount(const std::string& source) const;
  void NoteSerial(const std::string& source, std::uint64_t serial);
  std::string Path(const std::string& source) const;
  std::string CopyPath(const std::string& source) const { return Path(source) + ".before"; }
  void Copy(const std::string& from, const std::string& to);

  base::ErrorLog& log_;
  platform::Files& files_;
  const base::Settings& settings_;
  const catalog::ManifestTrust& trust_;
  UpdateSourceFile& source_file_;
};

}  // namespace kitbay::update
