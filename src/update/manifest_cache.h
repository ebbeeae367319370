#pragma once

#include <string>

#include "base/settings.h"
#include "platform/files.h"

namespace kitbay::update {

/// The manifests on disk while their sources are asked. Whoever transfers an answer writes it over
/// the manifest of before, so a copy of that is put aside first. It takes its place again, with its
/// own time, when the answer is no manifest or the transfer fails. Sources are written as in the
/// user's list. Failures are those of `Files`.
class ManifestCache {
 public:
  ManifestCache(platform::Files& files, const base::Settings& settings)
      : files_(files), settings_(settings) {}

  /// Before `source` is asked: puts its manifest aside, if there is one. Where the program ended
  /// before it looked at an answer that is none, puts the manifest of before back.
  void PutAside(const std::string& source);

  /// Takes what has arrived from `source`. When that is no manifest, puts the one of before back,
  /// or deletes the answer where there was none, and throws a `base::Failure` whose description
  /// tells the user why. Without any file there is nothing to judge.
  void Take(const std::string& source);

  /// After a transfer that failed: puts the manifest of before back.
  void PutBack(const std::string& source);

  /// Whether the file of `source` is an answer that the program has not looked at, and no manifest.
  bool IsUnusable(const std::string& source) const;

 private:
  std::string Path(const std::string& source) const;
  std::string CopyPath(const std::string& source) const { return Path(source) + ".before"; }
  void Copy(const std::string& from, const std::string& to);

  platform::Files& files_;
  const base::Settings& settings_;
};

}  // namespace kitbay::update
