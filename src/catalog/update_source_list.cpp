#include "catalog/update_source_list.h"

#include "base/text.h"

namespace kitbay::catalog {

const SourceKey* UpdateSourceList::KeyOf(const std::string& manifest) const {
  const auto found = keys.find(base::ToLower(manifest));
  return found == keys.end() ? nullptr : &found->second;
}

}  // namespace kitbay::catalog
