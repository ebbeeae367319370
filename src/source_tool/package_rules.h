#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/files.h"
#include "source_tool/finding.h"
#include "source_tool/manifest_rules.h"

namespace kitbay::source_tool {

/// A file in a package.
struct PackageFile {
  std::string name;  ///< with "\" between its parts
  std::uint64_t size = 0;
};

/// A library in a package.
struct PackageLibrary {
  std::string name;
  int bits = 0;
  std::string version;  ///< empty if it has none
};

/// What a package contains.
struct PackageContents {
  std::vector<PackageFile> files;  ///< files and folders, as the directory lists them
  std::vector<PackageLibrary> libraries;
  std::string refusal;  ///< why Kitbay would not expand it; empty if it would
};

/// Receives the part of the work that is done, from 0 to 1.
using Progress = std::function<void(double done)>;

/// Reads the package at `path`. Throws `base::Failure` if it is missing or not an archive.
PackageContents ReadPackage(const platform::Files& files, const std::string& path);

/// What is wrong with the manifest's packages, which lie in `folder` under the file names of their
/// URLs. `bits` is the bitness that their libraries must have.
std::vector<Finding> CheckPackages(const platform::Files& files, const ManifestText& manifest,
                                   const std::string& folder, int bits, const Progress& progress);

}  // namespace kitbay::source_tool
