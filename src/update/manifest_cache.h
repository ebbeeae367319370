#pragma once

#include <cstdint>
#include <string>

#include "base/error_log.h"
#include "base/settings.h"
#include "catalog/manifest_trust.h"
#include "platform/files.h"
#include "update/update_source_file.h"

namespace kitbay::update {

/// The manifests on disk while their sources are asked. Whoever transfers an answer writes it over
/// the manifest of before, so a copy of that is put aside first. It takes its place again, with its
/// own time, when the answer is no manifest or the transfer fails. Sources are written as in the
/// user's list. Failures are those of `Files`.
class ManifestCache {
 public:
  ManifestCache(base::ErrorLog& log, platform::Files& files, const base::Settings& settings,
                const catalog::ManifestTrust& trust, UpdateSourceFile& source_file)
      : log_(log), files_(files), settings_(settings), trust_(trust), source_file_(source_file) {}

  /// Before `source` is asked: puts its manifest aside, if there is one. Where the program ended
  /// before it looked at an answer that is none, puts the manifest of before back.
  void PutAside(const std::string& source);

  /// Takes what has arrived from `source`. When that is no manifest, or none that may count for a
  /// source that signs, puts the one of before back, or deletes the answer where there was none,
  /// and throws a `base::Failure` whose description tells the user why. Without any file there is
  /// nothing to judge.
  void Take(const std::string& source);

  /// After a transfer that failed: puts the manifest of before back.
  void PutBack(const std::string& source);

  /// Whether the file of `source` is an answer that the program has not looked at, and no manifest.
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
