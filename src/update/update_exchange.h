#pragma once

#include "base/error_log.h"
#include "base/settings.h"
#include "platform/clock.h"
#include "platform/desktop.h"
#include "platform/files.h"
#include "platform/main_window.h"
#include "update/manifest_cache.h"
#include "update/package_receiver.h"
#include "update/transfer_events.h"
#include "update/update_driver.h"
#include "update/update_requests.h"
#include "update/update_source_file.h"
#include "view/component_page.h"

namespace kitbay::update {

/// What `UpdateExchange` works with.
struct ExchangeParts {
  base::ErrorLog& log;
  platform::Files& files;
  const base::Settings& settings;
  const platform::Clock& clock;
  platform::Desktop& desktop;
  platform::MainWindow& window;
  view::ComponentPage& page;
  PackageReceiver& packages;
};

/// The assembled exchange with the update sources: requests, what their answers do to the page, and
/// the packages on their way.
struct UpdateExchange {
  explicit UpdateExchange(const ExchangeParts& parts);
  UpdateExchange(const UpdateExchange&) = delete;
  UpdateExchange& operator=(const UpdateExchange&) = delete;

  PendingPackages pending_packages;
  UpdateSourceFile source_file;
  ManifestCache manifests;
  UpdateRequests requests;
  TransferEvents transfer_events;
  UpdateDriver driver;
};

}  // namespace kitbay::update
