#include "update/source_address.h"

namespace kitbay::update {

Address SplitSource(const std::string& source) {
  const std::size_t slash = source.find('/');
  if (slash == std::string::npos) {
    return {.server = source, .file_path = source};
  }
  return {.server = source.substr(0, slash), .file_path = source.substr(slash)};
}

}  // namespace kitbay::update
