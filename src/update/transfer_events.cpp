#include "update/transfer_events.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>
#include <vector>

#include "base/component_kind.h"
#include "base/failure.h"
#include "base/guarded.h"
#include "base/text.h"
#include "catalog/version_rule.h"
#include "update/source_address.h"

namespace kitbay::update {
namespace {

using base::guarded;
using base::ToLower;

bool SameText(const std::string& one, const std::string& other) {
  return ToLower(one) == ToLower(other);
}

constexpr base::PerKind<void (PackageReceiver::*)(const PendingPackage&, const std::string&)>
    kUnpack = {.addon = &PackageReceiver::Unpack,
               .transport = &PackageReceiver::UnpackTransport,
               .channel = &PackageReceiver::UnpackChannel};

constexpr const char* kException = "Kitbay::OvTransportEvents_Exception";

// Rounds to the nearest whole number, ties to even.
std::string Kilobytes(double bytes) { return std::to_string(std::llrint(bytes / 1024)); }

}  // namespace

void TransferEvents::Message(const std::string& file_path, const std::string& field_name,
                             const std::string& field_value) {
  guarded(parts_.log, " Kitbay::OvTransportEvents_Message", [&] {
    if (SameText(field_value, "true")) {
      EndTransfer(file_path);
    } else if (SameText(field_name, "Total-Length")) {
      BeginTransfer(file_path, field_value);
    } else {
      ShowProgress(field_value);
    }
  });
}

void TransferEvents::BeginTransfer(const std::string& file_path, const std::string& total_length) {
  parts_.window.progress_bar().SetValue(0);
  parts_.window.progress_bar().SetVisible(true);
  total_length_ = total_length;
  parts_.requests.unanswered().Begin(file_path);
  saved_status_ = parts_.window.status_bar().PanelText(platform::kStatusPanel);
}

void TransferEvents::ShowProgress(const std::string& received) {
  const double total_bytes = catalog::LeadingNumber(total_length_);
  const double received_bytes = catalog::LeadingNumber(received);
  if (total_bytes == 0) {
    throw base::Failure(base::RuntimeError::kDivisionByZero);
  }
  const double percent = std::clamp(received_bytes / total_bytes * 100, 0.0, 100.0);
  parts_.window.progress_bar().SetValue(static_cast<int>(std::lrint(percent)));
  if (total_bytes > received_bytes) {
    parts_.window.status_bar().SetPanelText(
        platform::kStatusPanel, saved_status_ + " Completed " + Kilobytes(received_bytes) +
                                    "Kb of " + Kilobytes(total_bytes) + "Kb");
  }
}

// The request is recorded as ended before anything may fail, because the next one must not wait for
// it.
void TransferEvents::EndTransfer(const std::string& file_path) {
  parts_.requests.unanswered().End(file_path);
  parts_.window.progress_bar().SetValue(100);
  parts_.window.status_bar().Announce(platform::kStatusPanel);
  if (const auto source = TakePending(file_path)) {
    TakeManifest(*source, file_path);
  }
  TakePackage(file_path);
  parts_.requests.unanswered().ShowStatus();
}

// Only one entry is removed: two equal sources are two requests.
std::optional<std::string> TransferEvents::TakePending(const std::string& file_path) {
  std::vector<std::string>& pending = parts_.sources.PendingSources;
  const auto entry = std::find_if(pending.begin(), pending.end(), [&](const std::string& other) {
    return SameText(SplitSource(other).file_path, file_path);
  });
  if (entry == pending.end()) {
    return std::nullopt;
  }
  std::string source = std::move(*entry);
  pending.erase(entry);
  return source;
}

void TransferEvents::TakeManifest(const std::string& source, const std::string& file_path) {
  try {
    parts_.manifests.Take(source);
  } catch (const base::Failure& failure) {
    TellOfFailure(file_path, failure.description());
    DropSource(source);
    ShowWhatIsThere();
    return;
  }
  parts_.sources.UsedCachedManifest = true;
  if (parts_.requests.CheckPreferences()) {
    ShowAnswers();
  }
}

void TransferEvents::TakePackage(const std::string& file_path) {
  for (const base::ComponentKind kind : base::kComponentKinds) {
    const PendingPackage package = parts_.pending_packages[kind];
    if (!package.name.empty() && SameText(package.file_path, file_path)) {
      parts_.pending_packages[kind] = {};
      std::invoke(kUnpack[kind], parts_.packages, package,
                  PackagePath(parts_.settings, package.name));
      parts_.packages.InstallProcess();
      return;
    }
  }
}

void TransferEvents::Exception(const std::string& file_path, const std::string& message) {
  guarded(parts_.log, kException, [&] {
    parts_.requests.unanswered().End(file_path);
    TellOfFailure(file_path, message);
    Recover(file_path);
    parts_.requests.unanswered().ShowStatus();
  });
}

// The exchange goes on even if a step fails, such as the log entry on a full disk.
void TransferEvents::TellOfFailure(const std::string& file_path, const std::string& message) {
  guarded(parts_.log, kException, [&] { throw base::Failure(0, message); });
  guarded(parts_.log, kException, [&] { parts_.buttons.DisableStatus(); });
  guarded(parts_.log, kException, [&] {
    const bool is_time_out = SameText(message, "connection timed out");
    parts_.desktop.ShowMessage(is_time_out ? message : file_path + "      " + message,
                               platform::kMessageTitle, platform::kInformation);
  });
}

void TransferEvents::Recover(const std::string& file_path) {
  if (DropFailedPackage(file_path)) {
    EnableButtons();
  }
  DropFailedSource(file_path);
  ShowWhatIsThere();
}

void TransferEvents::ShowWhatIsThere() {
  if (!parts_.sources.PendingSources.empty()) {
    return;
  }
  if (parts_.sources.UsedCachedManifest) {
    ShowAnswers();
  } else {
    parts_.buttons.DisableStatus();
    if (!IsPackagePending()) {
      EnableButtons();
    }
  }
}

bool TransferEvents::DropFailedPackage(const std::string& file_path) {
  bool was_pending = false;
  for (const base::ComponentKind kind : base::kComponentKinds) {
    PendingPackage& package = parts_.pending_packages[kind];
    if (!package.name.empty() && SameText(package.file_path, file_path)) {
      package = {};
      was_pending = true;
    }
  }
  return was_pending;
}

void TransferEvents::DropFailedSource(const std::string& file_path) {
  const std::vector<std::string>& pending = parts_.sources.PendingSources;
  if (pending.empty()) {
    return;
  }
  const std::string source = pending.front();
  if (source.find('/') == std::string::npos || SameText(SplitSource(source).file_path, file_path)) {
    guarded(parts_.log, kException, [&] { parts_.manifests.PutBack(source); });
    DropSource(source);
  }
}

// A failed source is not asked again in this run, even if it is pending more than once.
void TransferEvents::DropSource(const std::string& source) {
  std::erase_if(parts_.sources.PendingSources,
                [&](const std::string& entry) { return SameText(entry, source); });
  parts_.requests.CheckPreferences();
}

void TransferEvents::ShowAnswers() {
  parts_.categories.OfferUpdates();
  // A second package requested now would replace the pending one.
  if (IsPackagePending()) {
    parts_.buttons.DisableOtherDownload();
    parts_.buttons.DisableOtherUpdatedDownload();
  } else {
    EnableButtons();
  }
}

bool TransferEvents::IsPackagePending() const {
  return std::any_of(
      base::kComponentKinds.begin(), base::kComponentKinds.end(),
      [&](base::ComponentKind kind) { return !parts_.pending_packages[kind].name.empty(); });
}

void TransferEvents::EnableButtons() {
  parts_.buttons.EnableOtherDownload();
  parts_.buttons.EnableOtherUpdatedDownload();
}

}  // namespace kitbay::update
