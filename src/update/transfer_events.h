#pragma once

#include <optional>
#include <string>

#include "base/error_log.h"
#include "base/settings.h"
#include "catalog/update_source_list.h"
#include "platform/desktop.h"
#include "platform/main_window.h"
#include "platform/suite_objects.h"
#include "update/manifest_cache.h"
#include "update/package_receiver.h"
#include "update/update_requests.h"
#include "view/page_buttons.h"
#include "view/page_categories.h"

namespace kitbay::update {

/// What `TransferEvents` works with.
struct TransferParts {
  base::ErrorLog& log;
  const base::Settings& settings;
  platform::Desktop& desktop;
  platform::MainWindow& window;
  view::PageCategories& categories;
  view::PageButtons& buttons;
  catalog::UpdateSourceList& sources;
  ManifestCache& manifests;
  PendingPackages& pending_packages;
  UpdateRequests& requests;
  PackageReceiver& packages;
};

/// Shows the progress of transfers and continues the update exchange when one ends.
class TransferEvents : public platform::OvTransportEvents {
 public:
  explicit TransferEvents(const TransferParts& parts) : parts_(parts) {}

  void Message(const std::string& file_path, const std::string& field_name,
               const std::string& field_value) override;
  void Exception(const std::string& file_path, const std::string& message) override;

 private:
  void BeginTransfer(const std::string& file_path, const std::string& total_length);
  void ShowProgress(const std::string& received);
  void EndTransfer(const std::string& file_path);
  std::optional<std::string> TakePending(const std::string& file_path);
  void TakeManifest(const std::string& source, const std::string& file_path);
  void TakePackage(const std::string& file_path);
  bool IsPackagePending() const;
  void TellOfFailure(const std::string& file_path, const std::string& message);
  void Recover(const std::string& file_path);
  void ShowWhatIsThere();
  bool DropFailedPackage(const std::string& file_path);
  void DropFailedSource(const std::string& file_path);
  void DropSource(const std::string& source);
  void ShowAnswers();
  void EnableButtons();

  TransferParts parts_;
  std::string total_length_;
  std::string saved_status_;
};

}  // namespace kitbay::update
