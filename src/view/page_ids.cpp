#include "view/page_ids.h"

#include <algorithm>

namespace kitbay::view {
namespace {

bool IsOneOf(const base::PerKind<const char*>& ids, std::string_view id) {
  return std::any_of(base::kComponentKinds.begin(), base::kComponentKinds.end(),
                     [&](base::ComponentKind kind) { return id == ids[kind]; });
}

}  // namespace

bool IsTab(std::string_view id) { return IsOneOf(kTabs, id); }

bool IsContainer(std::string_view id) {
  return IsOneOf(kInstalledContainers, id) || IsOneOf(kUpdatedContainers, id);
}

}  // namespace kitbay::view
