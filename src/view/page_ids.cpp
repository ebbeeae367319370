#include "view/page_ids.h"

#include <algorithm>

namespace kitbay::view {
namespace {

std::optional<base::ComponentKind> KindWith(const base::PerKind<const char*>& ids,
                                            std::string_view id) {
  const auto* const kind = std::ranges::find_if(
      base::kComponentKinds, [&](base::ComponentKind candidate) { return id == ids[candidate]; });
  return kind == base::kComponentKinds.end() ? std::nullopt : std::optional(*kind);
}

}  // namespace

std::optional<base::ComponentKind> KindOfTab(std::string_view id) { return KindWith(kTabs, id); }

bool IsContainer(std::string_view id) {
  return KindWith(kInstalledContainers, id) || KindWith(kUpdatedContainers, id);
}

}  // namespace kitbay::view
