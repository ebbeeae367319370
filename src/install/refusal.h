#pragma once

#include <string>

#include "base/failure.h"
#include "platform/desktop.h"

namespace kitbay::install {

/// Tells the user that something `could_not` be done to the file at `path`, and why, if `failure`
/// says that the system refused to write it: disk full (61), access denied or file in use (70), or
/// another error of the file system (75). Does not report other failures.
void TellRefusal(platform::Desktop& desktop, const std::string& could_not, const std::string& path,
                 const base::Failure& failure);

}  // namespace kitbay::install
