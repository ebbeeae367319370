#include "update/update_exchange.h"

namespace kitbay::update {

UpdateExchange::UpdateExchange(const ExchangeParts& parts)
    : source_file(parts.log, parts.files, parts.settings, parts.page.sources),
      manifests(parts.log, parts.files, parts.settings, parts.page.trust, source_file),
      requests(parts.log, parts.settings, parts.window, parts.page.sources,
               parts.page.new_components, manifests, pending_packages),
      transfer_events({parts.log, parts.settings, parts.desktop, parts.window,
                       parts.page.categories, parts.page.buttons, parts.page.sources, manifests,
                       pending_packages, requests, parts.packages}),
      driver({parts.log, parts.settings, parts.files, parts.clock, parts.page.lists,
              parts.page.tabs, parts.page.categories, source_file, parts.page.sources, manifests,
              requests, parts.page.trust, parts.desktop}) {}

}  // namespace kitbay::update
