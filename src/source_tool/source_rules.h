#pragma once

#include <string>
#include <vector>

#include "platform/files.h"
#include "source_tool/finding.h"

namespace kitbay::source_tool {

/// What is wrong with the sources in a file such as DirectoryPreference.xml. Throws `base::Failure`
/// if it cannot be read.
std::vector<Finding> CheckSources(const platform::Files& files, const std::string& path);

}  // namespace kitbay::source_tool
